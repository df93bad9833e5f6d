#include "core/Errors.h"
#include "core/PartLimits.h"
#include "pll/cPLL.h"
#include "settings/Modes.h"
#include "ui/bits/BitsPage.h"
#include "ui/burst/BurstPage.h"
#include "ui/pll/PLLPage.h"
#include "ui/port/PortPage.h"
#include "ui/registers/RegistersPage.h"
#include "ui/window/frmPart.h"

// What the model shows on the screen: each operation goes to the page that it concerns.

namespace {

constexpr int kRegistersPage = 1;
constexpr int kBitsPage = 2;
constexpr int kFirstPLLPage = 4;

}   // namespace

/// Reading a frequency repairs an R of 0. All are read before anything is drawn: the field may be another PLL's N.
void frmPart::ShowPLLs() {
    for (cPLL& pll : part_.PLLs()) {
        IgnoringFailures([&] { static_cast<void>(pll.PDFrequency()); });
    }
    for (PLLPage* page : pllPages_) {
        page->ShowPLL();
    }
}

void frmPart::ShowBits() {
    ForDevice().bits->ShowBits();
}

void frmPart::ShowRegisters() {
    ForDevice().registers->ShowRegisters();
}

void frmPart::ShowPort() {
    portPage_->ShowPort();
}

void frmPart::ShowBurst(bool vectors) {
    ForDevice().burst->ShowBurst(vectors);
}

void frmPart::ClearForm() {
    if (!part_.ID().empty()) {
        // One note: the next would hide the one before.
        std::string errors = SaveDevice();
        if (const std::string recent = settings_.SaveRecentParts(menu_.Recent()); !recent.empty()) {
            errors += (errors.empty() ? "" : "; ") + recent;
        }
        if (!errors.empty()) {
            Note(Qt8(errors));
        }
    }
    portPage_->ClearPins();
    ForDevice().burst->ClearRegisters();
    Turn(kBitsPage);
    ForDevice().bits->ClearControls();
    Turn(kRegistersPage);
    ForDevice().registers->ClearRows();
    for (PLLPage* page : pllPages_) {
        page->Unbind();
    }
    workedPages_.clear();
    menu_.ClearModes();
    status_->ShowProblems({}, {});
}

/// Saves the device's settings where that is wanted. Empty, or why it failed.
std::string frmPart::SaveDevice() {
    const bool wanted = menu_.Item(QStringLiteral("mnuSaveDeviceSettings"))->isChecked();
    return wanted ? SaveDeviceSettings(part_, appPath_, ReferenceTexts()) : std::string();
}

void frmPart::RemovePLLPages() {
    if (pllPages_.size() > 1 || !freePages_.empty()) {
        Turn(kFirstPLLPage);
    }
    const auto shorten = [&](std::vector<PLLPage*>& pages, std::size_t left) {
        while (pages.size() > left) {
            tabPart_->removeTab(tabPart_->indexOf(pages.back()));
            delete pages.back();
            pages.pop_back();
        }
    };
    shorten(freePages_, 0);
    shorten(pllPages_, 1);
}

void frmPart::RebuildRulers() {
    if (devicePages_) {   // They come up with the right ones.
        devicePages_->registers->RebuildRulers();
    }
}

void frmPart::AddRegisterRow(const cRegister& added) {
    if (part_.Registers().Count() > 1) {
        Turn(kRegistersPage);
    }
    ForDevice().registers->AddRow(added);
    ForDevice().burst->AddRegister(added);
}

void frmPart::AddPinBox(const cPrgmPin& added) {
    ForDevice().bits->AddPinBox(added);
    portPage_->AddPin(added);
}

void frmPart::AddCheckBox(const cPrgmBits& added, std::string_view group) {
    ForDevice().bits->AddCheckBox(added, group);
}

void frmPart::AddCounterBox(const cPrgmBits& added, std::string_view group) {
    ForDevice().bits->AddCounterBox(added, group);
}

void frmPart::AddListBox(const cPrgmBits& field, std::string_view group) {
    ForDevice().bits->AddListBox(field, group);
}

void frmPart::AddPLLPage(int index, const std::string& name) {
    ForDevice();
    const auto place = static_cast<std::size_t>(index);
    if (place == pllPages_.size()) {
        pllPages_.push_back(new PLLPage(*this, index));
        tabPart_->insertTab(kFirstPLLPage + index, pllPages_.back(), QString());
    }
    if (place < pllPages_.size()) {
        NamePLLPage(kFirstPLLPage + index, name);
        pllPages_[place]->Bind(Qt8(name));
    }
}

void frmPart::AddFreePLLPage(const std::string& name) {
    ForDevice();
    // Its controls are members behind those of all PLLs that a part file can have.
    freePages_.push_back(new PLLPage(*this, kMostPLLs + static_cast<int>(freePages_.size())));
    NamePLLPage(tabPart_->addTab(freePages_.back(), QString()), name);
}

void frmPart::NamePLLPage(int page, const std::string& name) {
    tabPart_->setTabText(page, WithoutMnemonics(Qt8(name)));
    Turn(page);
}

void frmPart::BindPLLBlocks(int index, const PLLBlocks& blocks) {
    if (const auto place = static_cast<std::size_t>(index); place < pllPages_.size()) {
        pllPages_[place]->BindBlocks(blocks);
    }
}

void frmPart::BindFraction(int index, const std::string& numerator, const std::string& denominator) {
    if (const auto place = static_cast<std::size_t>(index); place < pllPages_.size()) {
        pllPages_[place]->BindFraction(numerator, denominator);
    }
}

void frmPart::ShowBurstRunning(bool running) {
    ForDevice().burst->ShowRunning(running);
    if (running) {
        burstProgress_ = {};
        sinceProgress_.start();
    } else if (burstProgress_.passes > 0) {
        NoteProgress();
    }
}

/// The text changes a few times a second, however short a pass is: showing it must not slow the run.
void frmPart::ShowBurstProgress(std::uint64_t passes, std::uint64_t writes) {
    constexpr qint64 kShownEvery = 100;
    burstProgress_ = {passes, writes};
    if (sinceProgress_.elapsed() >= kShownEvery) {
        sinceProgress_.restart();
        NoteProgress();
    }
}

void frmPart::NoteProgress() {
    Note(tr("Burst: %1 passes, %2 port writes").arg(burstProgress_.passes).arg(burstProgress_.writes));
}

bool frmPart::BurstLoops() const {
    return devicePages_ && devicePages_->burst->Loops();
}

void frmPart::ShowDeviceName(const std::string& name) {
    setWindowTitle(Qt8(name));
}

void frmPart::ShowVersion(const std::string& version, const std::string& description) {
    txtINIVersion = version;
    txtINIVerDescr = description;
}

void frmPart::ShowSBIButtons() {
    ForDevice().burst->ShowSBIButtons();
}

void frmPart::ShowBurstControls() {
    ForDevice().burst->ShowBurstControls();
}

void frmPart::AddMode(int index, const std::string& caption) {
    menu_.AddMode(index, caption);
}

std::vector<std::string> frmPart::ReferenceTexts() const {
    std::vector<std::string> texts;
    for (const PLLPage* page : pllPages_) {
        texts.push_back(page->OscText());
    }
    return texts;
}
