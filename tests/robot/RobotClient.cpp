#include "RobotClient.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>

#include "automation/Paths.h"
#include "burst/cBurst.h"
#include "core/cPart.h"
#include "pll/cPLL.h"

namespace {

const QString kPrefix = kServiceName + QLatin1Char('.');

}   // namespace

/// Without an interface it leaves the bus and comes again. Of an item of the device the path has the name of its list,
/// and `=` stands before a property that is set. Arguments, a letter each: names of a Register, Field, Pin, Loop,
/// Device, Tab, Set-up file; d a number, n a small one, k a kind of command, a digit that kind, w the passes of a
/// delay, b a Boolean, mostly true. What stands here twice is called twice as often.
struct RobotClient::Member {
    QString interface;
    QString list;
    QString name;
    const char* arguments;
};

const std::vector<RobotClient::Member> RobotClient::kMembers{
    {"_Application", "", "SelectTab", "T"},
    {"_Application", "", "SelectPart", "D"},
    {"_Application", "", "SetMode", "n"},
    {"_Application", "", "SetVCOFrequency", "Ld"},
    {"_Application", "", "SetPDFrequency", "Ld"},
    {"_Application", "", "SetOSCinFrequency", "Ld"},
    {"_Application", "", "GetVCOFrequency", "L"},
    {"_Application", "", "SetPrgmBits", "Fd"},
    {"_Application", "", "SetPrgmBitValue", "Fd"},
    {"_Application", "", "GetPrgmBits", "F"},
    {"_Application", "", "SetPrgmPins", "Pb"},
    {"_Application", "", "SetPrgmPins", "Pbb"},
    {"_Application", "", "LoadPart", ""},
    {"_Application", "", "LoadReg", "n"},
    {"_Application", "", "RestoreSetup", "S"},
    {"_Application", "", "RunBurstMode", ""},
    {"_Application", "", "StopBurstMode", ""},
    {"_Application", "", "Maximize", ""},
    {"_Application", "", "Minimize", ""},
    {"_Application", "", "ShowTarnwick", ""},
    {"_Application", "", "SetAutoReload", "b"},
    {"_Application", "", "SetSaveSettings", "b"},
    {"_Application", "", "NoSuchMember", ""},
    {"Object", "", "Release", ""},
    {"", "", "Leave", ""},
    {"Part", "", "AddBurstCommand", "R0"},
    {"Part", "", "AddBurstCommand", "R0"},
    {"Part", "", "AddBurstCommand", "R0n"},
    {"Part", "", "AddBurstCommand", "R1n"},
    {"Part", "", "AddBurstCommand", "w2"},
    {"Part", "", "AddBurstCommand", "Rk"},
    {"Part", "", "ChangeBurstCommand", "nRk"},
    {"Part", "", "DeleteBurstCommand", "n"},
    {"Part", "", "DeleteBurstCommands", ""},
    {"Part", "", "RestoreBurstCommand", "n"},
    {"Part", "", "RunBurstCommands", ""},
    {"Part", "", "LoadAll", ""},
    {"Part", "", "LoadChanges", ""},
    {"Part", "", "LoadRegister", "R"},
    {"Part", "", "ReadRegister", "n"},
    {"Register", "Registers", "=Value", "d"},
    {"Register", "Registers", "ToggleBit", "n"},
    {"Register", "Registers", "SetBits", "dnn"},
    {"PrgmBits", "PrgmBits", "=Value", "d"},
    {"PrgmPin", "PrgmPins", "Toggle", ""},
    {"PLL", "PLLs", "=VCOFrequency", "d"},
    {"PLL", "PLLs", "=PDFrequency", "d"},
    {"PLL", "PLLs", "=NValue", "d"},
};

RobotClient::RobotClient(const QString& name, cPart& part, std::vector<std::string> devices, RobotRandom& random)
    : name_(name),
      part_(part),
      devices_(std::move(devices)),
      random_(random),
      bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)) {}

void RobotClient::Leave() {
    const QString left = bus_.baseService();
    QDBusConnection::disconnectFromBus(name_);
    bus_ = QDBusConnection::connectToBus(QDBusConnection::SessionBus, name_);
    application_.clear();
    while (bus_.interface()->isServiceRegistered(left)) {
    }
    // Is answered after the program has heard of it.
    Call(kPartPath, kPrefix + QLatin1String("Part"), QStringLiteral("UpdateDisplays"), {});
}

std::string RobotClient::Step() {
    constexpr int kAttachEvery = 4;
    if (application_.isEmpty() && random_.Below(kAttachEvery) == 0) {
        application_ = Call(kRootPath, kPrefix + QLatin1String("Factory"), QStringLiteral("CreateApplication"), {})
                           .value<QDBusObjectPath>()
                           .path();
        return name_.toStdString() + ": CreateApplication";
    }
    const Member& member = random_.Of(kMembers);
    if (member.interface.isEmpty()) {
        Leave();
        return name_.toStdString() + ": leaves";
    }
    const QString interface = kPrefix + member.interface;
    const QString path = Path(member);
    QVariantList arguments;
    QString told;
    for (const char* kind = member.arguments; *kind != 0; ++kind) {
        arguments << Argument(*kind);
        told += QLatin1Char(' ') + arguments.back().toString();
    }
    if (member.name.startsWith('=')) {
        const QVariant value = QVariant::fromValue(QDBusVariant(arguments[0]));
        Call(path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Set"),
             {interface, member.name.mid(1), value});
    } else {
        Call(path, interface, member.name, arguments);
    }
    if (path.startsWith(kPartPath) || member.name == QLatin1String("SetPrgmPins")) {
        // A change of the device shows when it is asked for, and so does a pin that is set for later.
        Call(kPartPath, kPrefix + QLatin1String("Part"), QStringLiteral("UpdateDisplays"), {});
    }
    if (member.name == QLatin1String("Release")) {
        application_.clear();
    }
    return (name_ + ": " + path + ' ' + member.name + told).toStdString();
}

QString RobotClient::Path(const Member& member) {
    const QString& list = member.list;
    if (!list.isEmpty()) {
        const int position = list == QLatin1String("Registers")  ? PositionIn(part_.Registers())
                             : list == QLatin1String("PrgmBits") ? PositionIn(part_.PrgmBits())
                             : list == QLatin1String("PrgmPins") ? PositionIn(part_.PrgmPins())
                                                                 : PositionIn(part_.PLLs());
        return QStringLiteral("%1/%2/%3").arg(kPartPath, list).arg(position);
    }
    if (member.interface == QLatin1String("Part")) {
        return kPartPath;
    }
    return application_.isEmpty() ? kRootPath + QLatin1String("/Application/1") : application_;   // Of long ago.
}

QVariant RobotClient::Argument(char kind) {
    const auto nameOf = [this](const auto& items) {
        const int position = PositionIn(items);
        return position > items.Count() ? QStringLiteral("none of them")
                                        : QString::fromStdString(items.At(position).ID());
    };
    static const QStringList kTabs{"Registers", "Bits/Pins", "BurstMode", "RF PLL", "Port Setup", "no such page"};
    constexpr int kSmall = 8;
    constexpr int kKinds = 10;
    switch (kind) {
        case 'R':
            return nameOf(part_.Registers());
        case 'F':
            return nameOf(part_.PrgmBits());
        case 'P':
            return nameOf(part_.PrgmPins());
        case 'L':
            return nameOf(part_.PLLs());
        case 'D':
            return QString::fromStdString(random_.Of(devices_));
        case 'T':
            return random_.Of(kTabs);
        case 'S':
            return QStringLiteral("set%1.mac").arg(random_.Below(4));
        case 'b':
            return random_.Below(4) != 0;
        case 'w':
            return QStringLiteral("20");
        case '0':
        case '1':
        case '2':
            return QVariant::fromValue(static_cast<short>(kind - '0'));
        case 'd':
            return random_.Number().toDouble();
        case 'k':
            return QVariant::fromValue(static_cast<short>(random_.Below(kKinds)));
        default:
            return QVariant::fromValue(static_cast<short>(random_.Below(kSmall)));
    }
}

QVariant RobotClient::Call(const QString& path, const QString& interface, const QString& member,
                           const QVariantList& arguments) {
    auto call = QDBusMessage::createMethodCall(kServiceName, path, interface, member);
    call.setArguments(arguments);
    const QDBusPendingCallWatcher reply(bus_.asyncCall(call));
    while (!reply.isFinished()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    const QDBusMessage answer = reply.reply();
    ++calls_;
    if (answer.type() == QDBusMessage::ReplyMessage) {
        return answer.arguments().value(0);
    }
    ++refused_;
    if (!answer.errorName().startsWith(kPrefix + QLatin1String("Error."))) {
        fault_ += "  " + member.toStdString() + " is answered with " + answer.errorName().toStdString() + ": " +
                  answer.errorMessage().toStdString() + "\n";
    }
    return {};
}
