#pragma once

#include <QDBusConnection>
#include <QVariant>

/// A client of the program: a connection of its own to the bus, and the calls that are made on it. It leaves the bus
/// at its end. Calls throw std::runtime_error when an error is the answer.
class Client {
public:
    /// `bus` is the address of one.
    explicit Client(const QString& bus);
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;
    ~Client();

    void WaitForProgram() const;

    /// Makes an Application object. Its calls then go through it, and its end ends the program.
    void Attach();

    /// Calls a member of the Application object.
    void Call(const char* member, const QVariantList& arguments) const;
    void CallAt(const QString& application, const char* member, const QVariantList& arguments) const;

    /// What a call costs that needs nothing of the program: the library answers it.
    void Ping() const;

    /// Ends the object, and with it the program, which saves nothing.
    void Release() const;

    [[nodiscard]] const QString& Application() const noexcept { return application_; }

private:
    QVariant Send(const QString& path, const QString& interface, const char* member,
                  const QVariantList& arguments) const;

    QDBusConnection bus_;
    QString application_;
};
