#include "Bus.h"

Bus::Bus()
    : daemon_(QStringLiteral("dbus-daemon"),
              {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")},
              QProcessEnvironment::systemEnvironment()),
      address_(daemon_.FirstLine()) {}

QProcessEnvironment Bus::Environment(const QString& display) const {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), address_);
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    environment.insert(QStringLiteral("DISPLAY"), display);
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"),
                       display.isEmpty() ? QStringLiteral("offscreen") : QStringLiteral("xcb"));
    return environment;
}
