#pragma once

#include <QDBusObjectPath>
#include <QHash>
#include <QObject>
#include <QString>
#include <functional>
#include <map>
#include <memory>

#include "automation/Application.h"

class cPart;
class ProgramWindow;

/// Makes the clients' Application objects and keeps them until they are released. The window is held from the first
/// one on; the first one to end closes it by the rules that hold for the user too, whoever holds others still.
class Factory : public QObject {
    Q_OBJECT

public:
    /// An Application object as it stands on the bus. Whoever calls it keeps it alive meanwhile.
    struct Served {
        QString client;   ///< Unique name of the client that made it.
        Application application;
    };

    Factory(cPart& part, ProgramWindow& window);
    ~Factory() override;

    /// The unique name of the client whose call is beginning.
    void Calling(const QString& client) { client_ = client; }

    QDBusObjectPath CreateApplication();

    /// The object of that number, or null.
    [[nodiscard]] std::shared_ptr<Served> Find(int number) const;
    [[nodiscard]] QList<int> Numbers() const;

    /// Ends all objects of a client that left the bus, or of all clients.
    void ReleaseClient(const QString& client);
    void ReleaseAll();

    /// How it stands, in the words of the status bar.
    [[nodiscard]] QString Status() const;

signals:
    /// A client made its first object.
    void ClientCame(const QString& client);
    /// A client's last object ended.
    void ClientWent(const QString& client);
    void StatusChanged();

private:
    void ReleaseWhere(const std::function<bool(int number, const Served&)>& ends);

    cPart& part_;
    ProgramWindow& window_;
    QString client_;
    std::map<int, std::shared_ptr<Served>> served_;
    QHash<QString, int> clients_;   ///< How many objects each client has.
    int lastNumber_ = 0;            // Numbers aren't used again.
};

Interface FactoryInterface();
