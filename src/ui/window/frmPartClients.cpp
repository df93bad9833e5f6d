#include "ui/window/frmPart.h"

// What other programs do with the window.

/// In front, and no longer minimised: as it was before, maximised or not.
void frmPart::RestoreWindow() {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
}

/// Every page becomes current on the way, so that each sees the change.
void frmPart::SelectTab(const std::string& caption) {
    int found = 0;
    for (int page = 0; page < tabPart_->count(); ++page) {
        Turn(page);
        const QString shown = tabPart_->tabText(page).replace(QLatin1String("&&"), QLatin1String("&"));
        if (shown == Qt8(caption)) {
            found = page;
        }
    }
    constexpr int kBitsPage = 2;
    SelectPage(caption == "Bits/Pins" ? kBitsPage : found);
}

void frmPart::AutoReloadChange(bool on) {
    menu_.Item(QStringLiteral("mnuAutoReloadChange"))->setChecked(on);
}

bool frmPart::SaveSettings() const {
    return menu_.Item(QStringLiteral("mnuSaveDeviceSettings"))->isChecked();
}

void frmPart::SaveSettings(bool on) {
    menu_.Item(QStringLiteral("mnuSaveDeviceSettings"))->setChecked(on);
}
