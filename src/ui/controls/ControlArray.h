#pragma once

#include <QObject>
#include <QString>
#include <map>
#include <utility>

/// A family of controls under one name, told apart by an index. Each member carries the object name "name(index)".
/// The members belong to their parent widgets; one that is dropped is deleted once its events have been handled.
template <class Control>
class ControlArray {
public:
    explicit ControlArray(QString name) : name_(std::move(name)) {}

    /// Takes a control in as the member of that index.
    Control* Add(int index, Control* control) {
        control->setObjectName(ObjectName(index));
        members_[index] = control;
        return control;
    }

    /// The member of that index, or null.
    [[nodiscard]] Control* operator[](int index) const {
        const auto found = members_.find(index);
        return found == members_.end() ? nullptr : found->second;
    }

    [[nodiscard]] int Count() const { return static_cast<int>(members_.size()); }
    [[nodiscard]] QString ObjectName(int index) const { return QStringLiteral("%1(%2)").arg(name_).arg(index); }

    /// Unloads all members from that index upward.
    void DropFrom(int index) {
        for (auto at = members_.lower_bound(index); at != members_.end(); at = members_.erase(at)) {
            at->second->setObjectName({});
            if constexpr (requires { at->second->hide(); }) {
                at->second->hide();
            }
            at->second->deleteLater();
        }
    }

    auto begin() const { return members_.begin(); }
    auto end() const { return members_.end(); }

private:
    QString name_;
    std::map<int, Control*> members_;
};
