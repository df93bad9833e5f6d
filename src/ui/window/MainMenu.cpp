#include "ui/window/MainMenu.h"
#include "ui/controls/Texts.h"

#include <QMenu>
#include <QScreen>
#include <array>

enum class Kind { Menu, Item, Checkable, Separator, DeviceArray, RecentArray, ModeArray };

struct MenuRow {
    int level;
    const char* name;
    const char* caption;
    const char* shortcut;
    Kind kind;
};

namespace {

// The whole tree, in order. A menu owns the rows of a higher level behind it.
constexpr std::array kRows{
    MenuRow{1, "mnuFile", "&File", "", Kind::Menu},
    MenuRow{2, "mnuSave", "&Save", "", Kind::Item},
    MenuRow{2, "mnuRestore", "&Restore", "", Kind::Item},
    MenuRow{2, "mnuLine1", "-", "", Kind::Separator},
    MenuRow{2, "mnuRecent", "....", "", Kind::RecentArray},
    MenuRow{2, "mnuLine2", "-", "", Kind::Separator},
    MenuRow{2, "mnuExit", "E&xit", "", Kind::Item},
    MenuRow{1, "mnuLoad", "&Keyboard Controls", "", Kind::Menu},
    MenuRow{2, "mnuLoadPLL(0)", "Load PLL", "Ctrl+L", Kind::Item},
    MenuRow{2, "mnuStepFreq(0)", "Step Frequency", "", Kind::Menu},
    MenuRow{3, "mnuIncN", "Increase N By 1", "F2", Kind::Item},
    MenuRow{3, "mnuNDec", "Decrease N by 1", "F1", Kind::Item},
    MenuRow{3, "mnuNInc10", "Increase N by 10", "F4", Kind::Item},
    MenuRow{3, "mnuNDec10", "Decrease N by 10", "F3", Kind::Item},
    MenuRow{3, "mnuIncFrac(0)", "Increase Fractional Numerator ", "F6", Kind::Item},
    MenuRow{3, "mnuDecFrac", "Decrease Fractional Numerator", "F5", Kind::Item},
    MenuRow{2, "mnuVCOFreq", "Set VCO Frequency", "Ctrl+F", Kind::Item},
    MenuRow{2, "mnuFcomp", "Set Comparison Frequency", "Ctrl+C", Kind::Item},
    MenuRow{2, "mnuXtal", "Set Crystal Frequency", "Ctrl+X", Kind::Item},
    MenuRow{1, "mnuDevice", "&Select Device", "", Kind::Menu},
    MenuRow{2, "mnuQRVxxxx", "QRVxxxxxxxx", "", Kind::DeviceArray},
    MenuRow{2, "mnuVCO", "VCO", "", Kind::Menu},
    MenuRow{3, "mnuVCOQRVxxxx", "QRVxxxxxxxx", "", Kind::DeviceArray},
    MenuRow{2, "mnuSingPLL", "PLL - Single Integer", "", Kind::Menu},
    MenuRow{3, "mnuSingQRVxxxx", "QRVxxxxxxxx", "", Kind::DeviceArray},
    MenuRow{2, "mnuDualPLL", "PLL - Dual Integer", "", Kind::Menu},
    MenuRow{3, "mnuDualQRVxxxx", "QRVxxxxxxxx", "", Kind::DeviceArray},
    MenuRow{2, "mnuFracPLL", "PLL - Fractional", "", Kind::Menu},
    MenuRow{3, "mnuFracQRVxxxx", "QRVxxxxxxxx", "", Kind::DeviceArray},
    MenuRow{2, "mnuVCOPLL", "PLL + VCO", "", Kind::Menu},
    MenuRow{3, "mnuPLLVCOQRVxxxx", "QRVxxxxxxxx", "", Kind::DeviceArray},
    MenuRow{2, "mnuTrans", "Transceiver", "", Kind::Menu},
    MenuRow{3, "mnuTransQRVxxxx", "QRVxxxxxxxx", "", Kind::DeviceArray},
    MenuRow{2, "mnuEngineering", "Engineering", "", Kind::Menu},
    MenuRow{3, "mnuEngineeringQRVxxxx", "QRVxxxxxxxx", "", Kind::DeviceArray},
    MenuRow{1, "mnuOptions", "&Options", "", Kind::Menu},
    MenuRow{2, "mnuPreCheck", "Prescaler Check", "", Kind::Menu},
    MenuRow{3, "mnuNoCheck", "Disable", "", Kind::Checkable},
    MenuRow{3, "mnuDualCheck", "Dual Modulus Prescaler Check", "", Kind::Checkable},
    MenuRow{3, "mnuQuadCheck", "Quadruple Modulus Prescaler Check", "", Kind::Checkable},
    MenuRow{2, "mnuAutoReload", "&AutoReload on Interval", "Ctrl+A", Kind::Checkable},
    MenuRow{2, "mnuAutoReloadChange", "AutoReload &with Changes", "Ctrl+W", Kind::Checkable},
    MenuRow{2, "mnuSaveDeviceSettings", "Save Device Settings", "", Kind::Checkable},
    MenuRow{1, "mnuModes", "&Mode", "", Kind::Menu},
    MenuRow{2, "mnuMode", "Mode", "", Kind::ModeArray},
    MenuRow{2, "mnuAddMode", "&Add", "", Kind::Item},
    MenuRow{1, "mnuBench", "&Bench", "", Kind::Menu},
    MenuRow{2, "mnuDocuments", "&Documents", "Shift+F1", Kind::Item},
    MenuRow{1, "mnuHelp", "&Help", "", Kind::Menu},
    MenuRow{2, "mnuOstrelWireless", "Ostrel &Wireless Webpage", "", Kind::Item},
    MenuRow{2, "mnuAbout", "&About", "", Kind::Item},
};

constexpr int kDesignRecents = 5;
constexpr auto kEmptyRecent = "....";

}   // namespace

MainMenu::MainMenu(QMenuBar& bar) : bar_(bar) {
    Build();
}

void MainMenu::Build() {
    devices_.reserve(kRows.size());   // Rows point into these while the tree grows.
    recent_.reserve(1);
    modes_.reserve(1);
    for (const MenuRow& row : kRows) {
        AddRow(row);
    }
    for (int i = 1; i < kDesignRecents; ++i) {
        AddMember(recent_.front(), QString::fromLatin1(kEmptyRecent));
    }
    modes_.front().members[0]->setVisible(false);
}

void MainMenu::AddRow(const MenuRow& row) {
    const auto level = static_cast<std::size_t>(row.level);
    open_.resize(level);
    QMenu* into = open_.back();
    const QString name = QString::fromLatin1(row.name);
    const QString caption = QString::fromLatin1(row.caption);
    QAction* action = nullptr;
    if (row.kind == Kind::Menu) {
        QMenu* menu = into == nullptr ? bar_.addMenu(caption) : into->addMenu(caption);
        open_.push_back(menu);
        action = menu->menuAction();
    } else if (row.kind == Kind::Separator) {
        action = into->addSeparator();
    } else if (row.kind == Kind::Item || row.kind == Kind::Checkable) {
        action = into->addAction(caption);
        action->setShortcut(QKeySequence(QString::fromLatin1(row.shortcut)));
        action->setCheckable(row.kind == Kind::Checkable);
    } else {
        auto& arrays = row.kind == Kind::DeviceArray ? devices_ : row.kind == Kind::RecentArray ? recent_ : modes_;
        arrays.push_back({ControlArray<QAction>(name), into});
        AddMember(arrays.back(), caption);
        unfinished_ = &arrays.back();
        return;
    }
    action->setObjectName(name);
    if (unfinished_ != nullptr && unfinished_->menu == into) {
        unfinished_->behind = action;
    }
    unfinished_ = nullptr;
}

QAction* MainMenu::AddMember(Repeated& array, const QString& caption) {
    const int index = array.members.Count();
    auto* action = array.members.Add(index, new QAction(caption, array.menu));
    array.menu->insertAction(array.behind, action);
    const auto group = static_cast<std::size_t>(&array - devices_.data());
    QObject::connect(action, &QAction::triggered, array.menu, [this, &array, index, group] {
        const std::string name = array.members[index]->data().toString().toStdString();
        if (&array == recent_.data()) {
            recentPicked(name);
        } else if (&array == modes_.data()) {
            modePicked(modeNumbers_.at(static_cast<std::size_t>(index)));
        } else {
            devicePicked(group, name);
        }
    });
    action->setData(caption);
    return action;
}

/// Gives member `index` a caption, makes it if need be, and shows it.
void MainMenu::ShowMember(Repeated& array, int index, const std::string& caption) {
    QAction* action = array.members[index];
    if (action == nullptr) {
        action = AddMember(array, {});
    }
    action->setText(WithoutMnemonics(Qt8(caption)));
    action->setData(QString::fromStdString(caption));
    action->setVisible(true);
}

QAction* MainMenu::Item(const QString& name) const {
    return bar_.findChild<QAction*>(name);
}

void MainMenu::ShowDevices(std::size_t group, const std::vector<std::string>& devices) {
    Repeated& array = devices_[group];
    if (devices.empty()) {
        const bool ownMenu = group > 0;
        (ownMenu ? array.menu->menuAction() : array.members[0])->setVisible(false);
    }
    for (std::size_t i = 0; i < devices.size(); ++i) {
        ShowMember(array, static_cast<int>(i), devices[i]);
    }
    // Many devices stand in columns. What is wider than the screen scrolls in one column instead.
    if (array.menu->sizeHint().width() > array.menu->screen()->availableSize().width()) {
        array.menu->setStyleSheet(QStringLiteral("QMenu { menu-scrollable: 1 }"));
    }
}

void MainMenu::ShowRecent(const std::vector<std::string>& captions) {
    for (std::size_t i = 0; i < captions.size(); ++i) {
        ShowMember(recent_.front(), static_cast<int>(i), captions[i]);
    }
}

std::vector<std::string> MainMenu::Recent() const {
    std::vector<std::string> captions;
    for (const auto& [index, action] : recent_.front().members) {
        captions.push_back(action->data().toString().toStdString());
    }
    return captions;
}

void MainMenu::AddMode(int number, const std::string& caption) {
    ShowMember(modes_.front(), static_cast<int>(modeNumbers_.size()), caption);
    modeNumbers_.push_back(number);
}

void MainMenu::ClearModes() {
    modeNumbers_.clear();
    modes_.front().members.DropFrom(1);
    modes_.front().members[0]->setVisible(false);
}
