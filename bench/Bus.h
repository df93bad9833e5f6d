#pragma once

#include "Child.h"

/// A message bus of its own.
class Bus {
public:
    /// std::runtime_error if there is no dbus-daemon.
    Bus();

    [[nodiscard]] const QString& Address() const noexcept { return address_; }

    /// This process's environment with that bus as the session's, and with a screen: `display` of an X server, or
    /// none, when windows are drawn into memory.
    [[nodiscard]] QProcessEnvironment Environment(const QString& display = {}) const;

private:
    Child daemon_;
    QString address_;
};
