#include "ui/frmPart.h"

// What other programs do with the window.

void NoteDialogs::MessageBox(const std::string& text, const std::string& /*title*/, MessageIcon /*icon*/) {
    host_.Note(Qt8(text));
}

std::optional<std::string> NoteDialogs::InputBox(const std::string& /*prompt*/, const std::string& /*title*/,
                                                 const std::string& /*defaultText*/) {
    return std::nullopt;
}

std::optional<std::string> NoteDialogs::FileDialog(const FileRequest& /*request*/) {
    return std::nullopt;
}

Dialogs& frmPart::Asking() {
    if (unattended_ > 0) {
        return noted_;
    }
    return dialogs_;
}

/// Calls can nest: while one plays a burst others are served.
void frmPart::Unattended(bool unattended) {
    unattended_ += unattended ? 1 : -1;
}

void frmPart::ShowWindow() {
    if (isMinimized()) {
        showNormal();
    }
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
