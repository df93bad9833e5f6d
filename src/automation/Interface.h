#pragma once

#include <QList>
#include <QString>
#include <QVariant>
#include <functional>

#include "core/Errors.h"

/// A call that isn't one: something unknown was called, or with wrong arguments. `name` is that of the error.
class CallError : public UserError {
public:
    CallError(const char* name, const QString& text) : UserError(text.toStdString()), name_(name) {}
    [[nodiscard]] const char* Name() const noexcept { return name_; }

private:
    const char* name_;
};

inline constexpr auto kEmitsChanged = "org.freedesktop.DBus.Property.EmitsChangedSignal";

/// An interface of the automation: its members as rows of a table, which says what introspection shows, what
/// arguments are taken, and what is done with them. The object that a member works on is handed over with each call.
class Interface {
public:
    struct Argument {
        QString name;
        QString type;   ///< As D-Bus writes it.
    };
    /// What introspection says of a member, or of the whole, beside its types.
    struct Annotation {
        QString name;
        QString value;
    };
    struct MethodRow {
        QString name;
        QList<Argument> in;
        QList<Argument> out;
        std::function<QVariantList(void* object, const QVariantList& arguments)> run;
        QList<Annotation> annotations = {};
    };
    struct PropertyRow {
        QString name;
        QString type;
        std::function<QVariant(void* object)> get;                      ///< Empty: it can only be written.
        std::function<void(void* object, const QVariant& value)> set;   ///< Empty: it can only be read.
        QList<Annotation> annotations = {};
    };

    explicit Interface(const char* name) : name_(QString::fromLatin1(name)) {}

    [[nodiscard]] const QString& Name() const noexcept { return name_; }
    void Annotate(const char* name, const char* value) { annotations_ << Annotation{name, value}; }
    [[nodiscard]] QString Introspection() const;

    [[nodiscard]] bool HasMethod(const QString& name) const;

    // All throw CallError for what the interface doesn't have, and whatever the model throws. The arguments are those
    // of a message.
    [[nodiscard]] QVariantList Call(void* object, const QString& method, QVariantList arguments) const;
    [[nodiscard]] QVariant Get(void* object, const QString& property) const;
    void Set(void* object, const QString& property, QVariant value) const;
    [[nodiscard]] QVariantMap All(void* object) const;   ///< What can be read of this object just now.

protected:
    QList<MethodRow> methods_;
    QList<PropertyRow> properties_;

private:
    [[nodiscard]] const MethodRow& FindMethod(const QString& name, const QString& signature,
                                              const QVariantList& arguments) const;
    [[nodiscard]] const PropertyRow& FindProperty(const QString& name) const;

    QString name_;
    QList<Annotation> annotations_;
};
