#pragma once

#include <QProcess>
#include <string>

/// A process that ends with this object, at the latest.
class Child {
public:
    /// std::runtime_error if it can't be started.
    Child(const QString& program, const QStringList& arguments, const QProcessEnvironment& environment);
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child();

    /// The first line of its output, without the end. std::runtime_error if none comes.
    [[nodiscard]] QString FirstLine();

    /// Resident memory, kB.
    [[nodiscard]] double Memory() const;

    /// Waits until it has ended by itself. std::runtime_error if it doesn't.
    void WaitForEnd();

private:
    QProcess process_;
};

/// Waits until the condition holds. std::runtime_error, which names `what`, if that takes too long.
void WaitFor(const std::string& what, const std::function<bool()>& condition);

void Sleep(double seconds);
