#pragma once

#include <QDBusConnection>
#include <QString>
#include <QVariant>
#include <string>
#include <utility>
#include <vector>

#include "RobotRandom.h"

class cPart;

/// Another program, which drives the window over the bus: sensible calls and senseless ones.
class RobotClient {
public:
    /// `name` is that of its connection; `devices` can be selected.
    RobotClient(const QString& name, cPart& part, std::vector<std::string> devices, RobotRandom& random);

    [[nodiscard]] bool Connected() const { return bus_.isConnected(); }
    std::string Step();   ///< Makes a call, and tells which.
    /// What was answered against the interface's word since the last look; empty if nothing was.
    [[nodiscard]] std::string TakeFault() { return std::exchange(fault_, {}); }
    [[nodiscard]] int Calls() const { return calls_; }       ///< Made so far,
    [[nodiscard]] int Refused() const { return refused_; }   ///< and answered with an error.

private:
    struct Member;
    static const std::vector<Member> kMembers;

    /// A position among the device's items, or the next after the last.
    template <class Items>
    [[nodiscard]] int PositionIn(const Items& items) {
        return 1 + random_.Below(items.Count() + 1);
    }
    [[nodiscard]] QVariant Argument(char kind);
    [[nodiscard]] QString Path(const Member& member);
    /// The first result; of a call that failed none.
    QVariant Call(const QString& path, const QString& interface, const QString& member, const QVariantList& arguments);
    void Leave();

    QString name_;
    cPart& part_;
    std::vector<std::string> devices_;
    RobotRandom& random_;
    QDBusConnection bus_;
    QString application_;   ///< The object that it holds, if any.
    std::string fault_;
    int calls_ = 0;
    int refused_ = 0;
};
