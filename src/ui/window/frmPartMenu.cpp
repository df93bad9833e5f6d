#include <QCoreApplication>
#include <QDesktopServices>
#include <QUrl>

#include "burst/SetupFile.h"
#include "settings/Modes.h"
#include "ui/pll/PLLPage.h"
#include "ui/window/Documents.h"
#include "ui/window/frmAboutBox.h"
#include "ui/window/frmPart.h"

// What the menu items do.

namespace {

constexpr auto kWebPage = "https://wireless.ostrel.example/";
constexpr int kFirstPLLPage = 4;

}   // namespace

void frmPart::OnMenu(const char* item, void (frmPart::*answer)()) {
    connect(menu_.Item(QString::fromLatin1(item)), &QAction::triggered, this,
            [this, answer] { Event([&] { (this->*answer)(); }); });
}

void frmPart::WireMenu() {
    menu_.Item(QStringLiteral("mnuAutoReloadChange"))->setChecked(true);
    menu_.Item(QStringLiteral("mnuSaveDeviceSettings"))->setChecked(true);
    menu_.devicePicked = [this](std::size_t group, const std::string& device) {
        Event([&] { PickDevice(group, device); });
    };
    menu_.recentPicked = [this](const std::string& device) { Event([&] { mnuRecent_Click(device); }); };
    menu_.modePicked = [this](int index) { Event([&] { mnuMode_Click(index); }); };
    OnMenu("mnuSave", &frmPart::mnuSave_Click);
    OnMenu("mnuRestore", &frmPart::mnuRestore_Click);
    OnMenu("mnuAddMode", &frmPart::mnuAddMode_Click);
    OnMenu("mnuAutoReload", &frmPart::mnuAutoReload_Click);
    OnMenu("mnuAutoReloadChange", &frmPart::mnuAutoReloadChange_Click);
    OnMenu("mnuDocuments", &frmPart::mnuDocuments_Click);
    OnMenu("mnuOstrelWireless", &frmPart::mnuOstrelWireless_Click);
    OnMenu("mnuAbout", &frmPart::mnuAbout_Click);
    connect(menu_.Item(QStringLiteral("mnuExit")), &QAction::triggered, this, &frmPart::close);
    for (const char* choice : {"mnuNoCheck", "mnuDualCheck", "mnuQuadCheck"}) {
        connect(menu_.Item(QString::fromLatin1(choice)), &QAction::triggered, this,
                [this, choice] { Event([&] { mnuPreCheck_Click(choice); }); });
    }
    WireStepCommands();
}

void frmPart::WireStepCommands() {
    const auto wire = [this](const char* item, auto step) {
        QAction* action = menu_.Item(QString::fromLatin1(item));
        connect(action, &QAction::triggered, this, [this, action, step] {
            Event([&] {
                if (PLLPage* page = CurrentPLLPage()) {
                    step(*page);
                } else {
                    Note(tr("%1 works on a PLL page").arg(action->shortcut().toString()));
                }
            });
        });
    };
    connect(menu_.Item(QStringLiteral("mnuLoadPLL(0)")), &QAction::triggered, this,
            [this] { Event([&] { part_.LoadAll(); }); });
    wire("mnuIncN", [](PLLPage& page) { page.StepN(1); });
    wire("mnuNDec", [](PLLPage& page) { page.StepN(-1); });
    wire("mnuNInc10", [](PLLPage& page) { page.StepN(10); });
    wire("mnuNDec10", [](PLLPage& page) { page.StepN(-10); });
    wire("mnuIncFrac(0)", [](PLLPage& page) { page.StepNumerator(true); });
    wire("mnuDecFrac", [](PLLPage& page) { page.StepNumerator(false); });
    wire("mnuVCOFreq", [](PLLPage& page) { page.SetFrequency(EntryBox::VCO); });
    wire("mnuFcomp", [](PLLPage& page) { page.SetFrequency(EntryBox::Fpd); });
    wire("mnuXtal", [](PLLPage& page) { page.SetFrequency(EntryBox::Osc); });
}

/// The PLL's page that is current, or null: without a device, and on the pages that belong to no PLL.
PLLPage* frmPart::CurrentPLLPage() const {
    const auto index = static_cast<std::size_t>(tabPart_->currentIndex() - kFirstPLLPage);
    return part_.ID().empty() || index >= pllPages_.size() ? nullptr : pllPages_[index];
}

void frmPart::BuildDeviceMenus() {
    for (std::size_t group = 0; group < kDeviceGroups.size(); ++group) {
        menu_.ShowDevices(group, settings_.Devices(kDeviceGroups[group].section));
    }
    menu_.ShowRecent(settings_.RecentParts());
}

void frmPart::PickDevice(std::size_t group, const std::string& device) {
    constexpr std::size_t kPlainGroup = 0;
    ChoosePrescalerCheck("mnuNoCheck");
    std::string name = device;
    SetupPartForm(name, group == kPlainGroup ? std::nullopt : std::optional<std::string>(kDeviceGroups[group].section));
    UpdateRecentParts(device);
}

void frmPart::mnuRecent_Click(const std::string& device) {
    std::string name = device;
    SetupPartForm(name, GetPartType(device));
}

void frmPart::UpdateRecentParts(const std::string& device) {
    auto captions = menu_.Recent();
    MoveToTop(captions, settings_.RecentCount(), device);
    menu_.ShowRecent(captions);
}

void frmPart::mnuMode_Click(int index) {
    RestoreMode(part_, appPath_, index);
}

void frmPart::mnuAddMode_Click() {
    if (part_.ID().empty()) {
        Note(tr("Select a device first: a mode belongs to one."));
        return;
    }
    dialogs_.InputBox("Enter Name of Mode for pulldown menu item", "Menu Name", "Recieve Mode",
                      [this](const std::string& name) { AddNewMode(name); });
}

void frmPart::AddNewMode(const std::string& name) {
    if (name.empty()) {
        return;
    }
    std::string error;
    const int number = ::AddMode(part_, appPath_, name, ReferenceTexts(), error);
    if (error.empty()) {
        menu_.AddMode(number, name);
    } else {
        dialogs_.MessageBox(error, "", MessageIcon::Exclamation);
    }
}

void frmPart::mnuSave_Click() {
    SaveWithDialog(part_, Asking(), "Save Part Setup");
}

void frmPart::mnuRestore_Click() {
    LoadWithDialog(part_, Asking(), "Restore Part Setup");
}

bool frmPart::AutoReloadChange() const {
    return menu_.Item(QStringLiteral("mnuAutoReloadChange"))->isChecked();
}

/// The action has inverted its check mark already; while the program itself changes controls it goes back.
void frmPart::mnuAutoReload_Click() {
    QAction* item = menu_.Item(QStringLiteral("mnuAutoReload"));
    if (part_.Updating()) {
        item->setChecked(!item->isChecked());
        return;
    }
    tmrAutoReload_.Enabled(item->isChecked());
}

void frmPart::mnuAutoReloadChange_Click() {
    if (part_.Updating()) {
        QAction* item = menu_.Item(QStringLiteral("mnuAutoReloadChange"));
        item->setChecked(!item->isChecked());
    }
}

void frmPart::tmrAutoReload_Timer() {
    IgnoringFailures([&] { part_.LoadAll(); });
}

PrescalerMode frmPart::PrescalerCheck() const {
    const auto checked = [this](const char* item) { return menu_.Item(QString::fromLatin1(item))->isChecked(); };
    if (checked("mnuNoCheck")) {
        return PrescalerMode::None;
    }
    return checked("mnuDualCheck")   ? PrescalerMode::Dual
           : checked("mnuQuadCheck") ? PrescalerMode::Quad
                                     : PrescalerMode::Unset;
}

void frmPart::ChoosePrescalerCheck(const char* chosen) {
    for (const char* item : {"mnuNoCheck", "mnuDualCheck", "mnuQuadCheck"}) {
        menu_.Item(QString::fromLatin1(item))->setChecked(qstrcmp(item, chosen) == 0);
    }
}

void frmPart::mnuPreCheck_Click(const char* chosen) {
    if (part_.Updating()) {
        QAction* item = menu_.Item(QString::fromLatin1(chosen));
        item->setChecked(!item->isChecked());
        return;
    }
    ChoosePrescalerCheck(chosen);
    part_.UpdatePLLDisplay();
}

void frmPart::mnuDocuments_Click() {
    const QString place = FindDocuments(QCoreApplication::applicationDirPath());
    if (place.isEmpty()) {
        Note(tr(
            "No documents found: they lie in share/doc/tarnwick of the installation, or in docs beside the program"));
    } else if (!QDesktopServices::openUrl(QUrl::fromLocalFile(place))) {
        Note(tr("No program here opens %1: read it with one of your own").arg(place));
    }
}

void frmPart::mnuOstrelWireless_Click() {
    dialogs_.OpenWebPage(kWebPage);
}

void frmPart::mnuAbout_Click() {
    if (aboutBox_ == nullptr || !aboutBox_->isVisible()) {
        aboutBox_ = new frmAboutBox(Qt8(txtINIVersion), this);
    }
    aboutBox_->show();
    aboutBox_->raise();
    aboutBox_->activateWindow();
}
