#pragma once

#include <QIcon>

/// The program's own icon, sharp at every size.
QIcon ProgramIcon();
