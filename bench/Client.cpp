#include "Client.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <stdexcept>

#include "Child.h"

namespace {

const QString kService = QStringLiteral("com.ostrel.Tarnwick2x");
const QString kRoot = QStringLiteral("/com/ostrel/Tarnwick2x");

QDBusConnection Connect(const QString& bus) {
    static int number = 0;
    auto made = QDBusConnection::connectToBus(bus, QStringLiteral("client %1").arg(++number));
    if (!made.isConnected()) {
        throw std::runtime_error("no way to the bus: " + made.lastError().message().toStdString());
    }
    return made;
}

}   // namespace

Client::Client(const QString& bus) : bus_(Connect(bus)) {}

Client::~Client() {
    QDBusConnection::disconnectFromBus(bus_.name());
}

void Client::WaitForProgram() const {
    WaitFor("the program's service", [this] { return bus_.interface()->isServiceRegistered(kService).value(); });
}

void Client::Attach() {
    application_ =
        Send(kRoot, kService + QStringLiteral(".Factory"), "CreateApplication", {}).value<QDBusObjectPath>().path();
}

void Client::Call(const char* member, const QVariantList& arguments) const {
    CallAt(application_, member, arguments);
}

void Client::CallAt(const QString& application, const char* member, const QVariantList& arguments) const {
    static const QString interface = kService + QStringLiteral("._Application");
    Send(application, interface, member, arguments);
}

void Client::Ping() const {
    static const QString interface = QStringLiteral("org.freedesktop.DBus.Peer");
    Send(kRoot, interface, "Ping", {});
}

void Client::Release() const {
    Call("SetSaveSettings", {false});
    Send(application_, kService + QStringLiteral(".Object"), "Release", {});
}

QVariant Client::Send(const QString& path, const QString& interface, const char* member,
                      const QVariantList& arguments) const {
    auto call = QDBusMessage::createMethodCall(kService, path, interface, QString::fromLatin1(member));
    call.setArguments(arguments);
    const QDBusMessage reply = bus_.call(call, QDBus::Block);
    if (reply.type() != QDBusMessage::ReplyMessage) {
        throw std::runtime_error(std::string(member) + ": " + reply.errorMessage().toStdString());
    }
    return reply.arguments().value(0);
}
