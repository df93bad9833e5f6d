#include "ui/window/WindowPlace.h"

#include <QSettings>
#include <QWidget>
#include <utility>

namespace {

const auto kKey = QStringLiteral("window/place");

}   // namespace

WindowPlace::WindowPlace(QWidget& window, QString file) : window_(window), file_(std::move(file)) {
    window_.restoreGeometry(QSettings(file_, QSettings::IniFormat).value(kKey).toByteArray());
}

WindowPlace::~WindowPlace() {
    QSettings(file_, QSettings::IniFormat).setValue(kKey, window_.saveGeometry());
}
