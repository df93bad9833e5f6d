#include "automation/Factory.h"

#include "automation/ModelInterface.h"
#include "automation/Paths.h"
#include "machine/ProgramWindow.h"

Factory::Factory(cPart& part, ProgramWindow& window) : part_(part), window_(window) {}

Factory::~Factory() = default;

QDBusObjectPath Factory::CreateApplication() {
    const QString client = client_;
    window_.ShowWindow();
    window_.HeldByClient(true);
    const bool first = ++clients_[client] == 1;
    const int number = ++lastNumber_;
    const auto release = [this, number] { ReleaseWhere([number](int one, const Served&) { return one == number; }); };
    served_.emplace(number, std::make_shared<Served>(Served{client, Application(part_, window_, release)}));
    emit StatusChanged();
    if (first) {
        emit ClientCame(client);
    }
    return QDBusObjectPath(QStringLiteral("%1/%2/%3").arg(kRootPath, kApplications).arg(number));
}

std::shared_ptr<Factory::Served> Factory::Find(int number) const {
    const auto found = served_.find(number);
    return found == served_.end() ? nullptr : found->second;
}

QList<int> Factory::Numbers() const {
    QList<int> numbers;
    for (const auto& one : served_) {
        numbers << one.first;
    }
    return numbers;
}

void Factory::ReleaseClient(const QString& client) {
    ReleaseWhere([&](int, const Served& one) { return one.client == client; });
}

void Factory::ReleaseAll() {
    ReleaseWhere([](int, const Served&) { return true; });
}

/// The window that is asked to close may refuse, for a burst that has to end first; the objects are gone all the same.
void Factory::ReleaseWhere(const std::function<bool(int, const Served&)>& ends) {
    QStringList gone;
    const auto ended = std::erase_if(served_, [&](const auto& one) {
        const bool goes = ends(one.first, *one.second);
        if (const QString& client = one.second->client; goes && --clients_[client] == 0) {
            clients_.remove(client);
            gone << client;
        }
        return goes;
    });
    if (ended == 0) {
        return;
    }
    for (const QString& client : gone) {
        emit ClientWent(client);
    }
    window_.HeldByClient(false);
    emit StatusChanged();
    window_.UnloadWindow();
}

QString Factory::Status() const {
    if (clients_.isEmpty()) {
        return tr("Automation ready");
    }
    return clients_.size() == 1 ? tr("Held by 1 client") : tr("Held by %1 clients").arg(clients_.size());
}

Interface FactoryInterface() {
    ModelInterface<Factory> face("com.ostrel.Tarnwick2x.Factory");
    face.Method("CreateApplication", "", "application", &Factory::CreateApplication);
    return face;
}
