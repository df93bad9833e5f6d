#include "ui/port/PortPage.h"

#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSignalBlocker>

#include "core/LineUse.h"
#include "core/PortAddress.h"
#include "core/ReloadPeriod.h"
#include "ui/controls/TextBox.h"
#include "ui/port/ConnectorDiagram.h"
#include "ui/port/LineOptions.h"

namespace {

/// Marks the time in which the program itself changes controls.
class WhileUpdating {
public:
    explicit WhileUpdating(cPart& part) : part_(part) { part_.Updating(true); }
    WhileUpdating(const WhileUpdating&) = delete;
    WhileUpdating& operator=(const WhileUpdating&) = delete;
    ~WhileUpdating() { part_.Updating(false); }

private:
    cPart& part_;
};

/// The word of a line.
std::int16_t Word(int line) {
    return static_cast<std::int16_t>(1 << line);
}

}   // namespace

void PortPage::AddPin(const cPrgmPin& added) {
    const int index = host_.Device().PrgmPins().Count() - 1;
    LineOptions* frame = index < fraExternalPin_.Count() ? fraExternalPin_[index] : AddPinFrame();
    frame->Caption(Qt8(added.ID()));
    const QSignalBlocker quiet(frame);
    frame->Select(LineOf(added.Value()));
    frame->show();
}

void PortPage::ClearPins() {
    scroll_->horizontalScrollBar()->setValue(0);
    scroll_->verticalScrollBar()->setValue(0);
    optPrgmBit_.DropFrom(kPortLines);
    fraExternalPin_.DropFrom(1);
    LineOptions* first = fraExternalPin_[0];
    const QSignalBlocker quiet(first);
    first->Select({});
    first->Caption(QString::fromLatin1(kUnusedCaption));
    first->hide();
}

void PortPage::ShowPort() {
    ShowPins();
    ShowAddress();
    ShowSerialLines();
    UpdatePortDiagram();
}

void PortPage::ShowSerialLines() {
    const cPart& device = host_.Device();
    fraClockBit_->Select(LineOf(device.ClockPosition()));
    fraDataBit_->Select(LineOf(device.DataPosition()));
    fraLEBit_->Select(LineOf(device.LEPosition()));
}

void PortPage::Freshen() {
    if (host_.Device().ID().empty()) {
        return;
    }
    const QScopedValueRollback<bool> keep(quiet_, true);
    ShowPins();
    ShowSerialLines();
    const std::int16_t address = host_.Device().PortAddress();
    const int choice = PortChoice(address);
    ports_->button(choice)->setChecked(true);
    txtPortAdr_->setEnabled(choice == kOtherPort);
    txtPortAdr_->Freshen(Qt8(PortAddressText(address)));
    UpdatePortDiagram();
}

/// A restored set-up may have moved the pins. Their options follow in silence: a pin's click switches all pins off.
void PortPage::ShowPins() {
    int index = 0;
    for (const cPrgmPin& pin : host_.Device().PrgmPins()) {
        if (LineOptions* frame = fraExternalPin_[index++]) {
            const QSignalBlocker quiet(frame);
            frame->Select(LineOf(pin.Value()));
        }
    }
}

/// Selecting a port gives the device that port's address; here the device's own one stays in force.
void PortPage::ShowAddress() {
    cPart& device = host_.Device();
    const std::int16_t address = device.PortAddress();
    const int choice = PortChoice(address);
    ports_->button(choice)->setChecked(true);
    device.PortAddress(address);
    txtPortAdr_->setEnabled(choice == kOtherPort);
    txtPortAdr_->ShowText(Qt8(PortAddressText(address)));
}

void PortPage::optPortAdr_Click(int index) {
    cPart& device = host_.Device();
    const WhileUpdating mark(device);
    const std::int16_t address = kPortAddresses[static_cast<std::size_t>(index)];
    txtPortAdr_->ShowText(Qt8(PortAddressText(address)));
    device.PortAddress(address);
    txtPortAdr_->setEnabled(index >= kOtherPort);
    WarnOfBurst();
}

void PortPage::txtPortAdr_Entered() {
    cPart& device = host_.Device();
    // Only what was typed counts: the address may have been set elsewhere meanwhile.
    const auto typed = txtPortAdr_->Edited() ? ReadPortAddress(txtPortAdr_->text().toStdString()) : std::nullopt;
    const bool changed = typed && *typed != device.PortAddress();
    if (changed) {
        device.PortAddress(*typed);
    }
    txtPortAdr_->ShowText(Qt8(PortAddressText(device.PortAddress())));
    if (changed) {
        WarnOfBurst();
    }
}

void PortPage::optClockBit_Click(int line) {
    cPart& device = host_.Device();
    {
        const WhileUpdating mark(device);
        device.ClockPosition(Word(line));
        WarnOfBurst();
    }
    UpdatePortDiagram();
}

void PortPage::optDataBit_Click(int line) {
    host_.Device().DataPosition(Word(line));
    UpdatePortDiagram();
}

void PortPage::optLEBit_Click(int line) {
    host_.Device().LEPosition(Word(line));
    UpdatePortDiagram();
}

void PortPage::optPrgmBit_Click(int index) {
    cPart& device = host_.Device();
    if (device.Updating()) {
        return;
    }
    {
        const WhileUpdating mark(device);
        const std::string pin = fraExternalPin_[index / kPortLines]->Caption().toStdString();
        device.PrgmPins().At(pin).Position(static_cast<std::int16_t>(index % kPortLines));
        WarnOfBurst();
        device.ResetOutputPins();   // The word still holds the bit of the line that the pin left.
        device.UpdateBitDisplay();
    }
    UpdatePortDiagram();
}

void PortPage::txtAutoReload_Enter() {
    if (host_.Device().Updating()) {
        return;
    }
    const WhileUpdating mark(host_.Device());
    const ReloadPeriod period = ReadReloadPeriod(txtAutoReload_->text().toStdString());
    txtAutoReload_->ShowText(Qt8(period.text));
    if (period.milliseconds) {
        reload_.Interval(*period.milliseconds);
    }
}

void PortPage::UpdatePortDiagram() {
    diagram_->Show(LineUses(host_.Device()));
}

void PortPage::WarnOfBurst() {
    constexpr int kRebuilt = 2;
    if (host_.Device().BurstCmds().Count() >= kRebuilt) {
        host_.Asking().MessageBox(
            "Changes in the port setup will not be reflected in the Burst Commands. You will have "
            "to delete all Burst Commands and rebuild them.",
            "WARNING", MessageIcon::Exclamation);
    }
}
