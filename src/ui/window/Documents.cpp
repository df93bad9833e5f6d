#include "ui/window/Documents.h"

#include <QDir>

QString FindDocuments(const QString& programs) {
    for (const char* place : {"docs", "../share/doc/tarnwick"}) {
        const QDir folder(QDir::cleanPath(programs + QLatin1Char('/') + QLatin1String(place)));
        if (folder.exists(QStringLiteral("README.md"))) {
            return folder.filePath(QStringLiteral("README.md"));
        }
        if (!folder.entryList({QStringLiteral("*.md")}, QDir::Files).isEmpty()) {
            return folder.path();
        }
    }
    return {};
}
