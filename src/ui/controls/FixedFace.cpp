#include "ui/controls/FixedFace.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QStringList>
#include <algorithm>

namespace {

QFont Found() {
    QFont face = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (QFontInfo(face).fixedPitch()) {
        return face;
    }
    face.setStyleHint(QFont::Monospace);
    face.setFamily(QStringLiteral("monospace"));
    if (!QFontInfo(face).fixedPitch()) {
        const QStringList families = QFontDatabase::families();
        const auto fixed = std::find_if(families.begin(), families.end(),
                                        [](const QString& family) { return QFontDatabase::isFixedPitch(family); });
        if (fixed != families.end()) {
            face.setFamily(*fixed);
        }
    }
    return face;
}

}   // namespace

QFont FixedFace() {
    static const QFont face = Found();
    return face;
}
