#pragma once

#include <QDBusObjectPath>
#include <QString>

// Where the objects are. Positions count from 1, and a name of the device's is no part of a path: names may hold
// anything.

inline const QString kServiceName = QStringLiteral("com.ostrel.Tarnwick2x");
inline const QString kRootPath = QStringLiteral("/com/ostrel/Tarnwick2x");
inline const QString kApplications = QStringLiteral("Application");
inline const QString kPartPath = kRootPath + QStringLiteral("/Part");

/// An object of one of the device's collections.
inline QDBusObjectPath ItemPath(const char* collection, int position) {
    return QDBusObjectPath(QStringLiteral("%1/%2/%3").arg(kPartPath, QString::fromLatin1(collection)).arg(position));
}
