#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

#include "automation/Factory.h"
#include "automation/ObjectTree.h"

class cPart;
class ProgramWindow;

/// The program as a service on the session bus, for other programs to drive. Without a bus, and where another program
/// has the name already, there is no service, and the window says so.
class Automation : public QObject {
    Q_OBJECT

public:
    Automation(cPart& part, ProgramWindow& window, QDBusConnection bus = QDBusConnection::sessionBus());
    ~Automation() override;

    /// Takes the service's name. Calls are served from then on, by the event loop and the event pump of a burst.
    void Start();

    /// Gives the name back, for the window is gone: a client that comes now starts the program anew.
    void Stop();

private slots:
    void BusLost();

private:
    void WatchClient(const QString& client);
    void Off(const QString& why);

    ProgramWindow& window_;
    QDBusConnection bus_;
    Factory factory_;
    ObjectTree tree_;
    QDBusServiceWatcher watcher_;
    bool serving_ = false;
};
