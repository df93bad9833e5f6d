#include "ui/window/ProgramIcon.h"

/// Without this the linker leaves the resources of a static library out. It can't stand in a namespace.
static void TakeResources() {
    Q_INIT_RESOURCE(tarnwick);
}

QIcon ProgramIcon() {
    TakeResources();
    return QIcon(QStringLiteral(":/icons/com.ostrel.Tarnwick2x.svg"));
}
