#include "automation/Automation.h"

#include <QDBusConnectionInterface>
#include <QDBusError>

#include "automation/Paths.h"
#include "machine/ProgramWindow.h"

Automation::Automation(cPart& part, ProgramWindow& window, QDBusConnection bus)
    : window_(window), bus_(std::move(bus)), factory_(part, window), tree_(part, factory_, window) {
    watcher_.setConnection(bus_);
    watcher_.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&watcher_, &QDBusServiceWatcher::serviceUnregistered, &factory_, &Factory::ReleaseClient);
    connect(&factory_, &Factory::ClientCame, this, &Automation::WatchClient);
    connect(&factory_, &Factory::ClientWent, &watcher_, &QDBusServiceWatcher::removeWatchedService);
    connect(&factory_, &Factory::StatusChanged, this,
            [this] { window_.TellAutomation(factory_.Status().toStdString()); });
}

Automation::~Automation() {
    Stop();
    if (bus_.isConnected()) {
        // The bus answers only after all that was sent before: the last reply is out then.
        bus_.interface()->isServiceRegistered(kServiceName);
    }
}

void Automation::Off(const QString& why) {
    window_.TellAutomation(tr("Automation off: %1").arg(why).toStdString());
}

void Automation::Start() {
    if (!bus_.isConnected()) {
        Off(tr("no session bus"));
        return;
    }
    // The objects come first: who sees the name finds them.
    const bool placed = bus_.registerVirtualObject(kRootPath, &tree_, QDBusConnection::SubPath);
    serving_ = placed && bus_.registerService(kServiceName);
    if (!serving_) {
        bus_.unregisterObject(kRootPath, QDBusConnection::UnregisterTree);
        Off(placed ? tr("another Tarnwick has it") : bus_.lastError().message());
        return;
    }
    bus_.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"), QStringLiteral("org.freedesktop.DBus.Local"),
                 QStringLiteral("Disconnected"), this, SLOT(BusLost()));
    window_.TellAutomation(factory_.Status().toStdString());
}

void Automation::Stop() {
    if (std::exchange(serving_, false)) {
        bus_.unregisterService(kServiceName);
    }
}

/// The client may have left before the bus knew that its end is of interest: so the bus is asked.
void Automation::WatchClient(const QString& client) {
    watcher_.addWatchedService(client);
    if (!bus_.interface()->isServiceRegistered(client)) {
        QMetaObject::invokeMethod(
            &factory_, [this, client] { factory_.ReleaseClient(client); }, Qt::QueuedConnection);
    }
}

void Automation::BusLost() {
    serving_ = false;
    factory_.ReleaseAll();
    Off(tr("the session bus has gone"));
}
