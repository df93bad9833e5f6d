#include "ui/pll/PLLPage.h"

#include <QScrollArea>
#include <QVBoxLayout>

#include "pll/DeviceState.h"
#include "pll/EntryTexts.h"
#include "pll/PLLSpinners.h"

struct PLLPage::BoxEvents {
    EntryBox box;
    void (PLLPage::*keyPress)();
    void (PLLPage::*lostFocus)();
};

struct PLLPage::BlockEvents {
    DiagramBlock block;
    void (PLLPage::*click)();
};

const std::array<PLLPage::BoxEvents, kBoxRows.size()> PLLPage::kBoxEvents{{
    {EntryBox::Osc, &PLLPage::txtOsc_KeyPress, &PLLPage::txtOsc_LostFocus},
    {EntryBox::VCO, &PLLPage::txtVCO_KeyPress, &PLLPage::txtVCO_LostFocus},
    {EntryBox::Fpd, &PLLPage::txtFpd_KeyPress, &PLLPage::txtFpd_LostFocus},
    {EntryBox::RCounter, &PLLPage::txtRCounter_KeyPress, &PLLPage::txtRCounter_LostFocus},
    {EntryBox::NCounter, &PLLPage::txtNCounter_KeyPress, &PLLPage::txtNCounter_LostFocus},
    {EntryBox::FractNum, &PLLPage::txtFractNum_KeyPress, &PLLPage::txtFractNum_LostFocus},
    {EntryBox::FractDen, &PLLPage::txtFractDen_KeyPress, &PLLPage::txtFractDen_LostFocus},
}};

const std::array<PLLPage::BlockEvents, kBlockRows.size()> PLLPage::kBlockEvents{{
    {DiagramBlock::RPrescale, &PLLPage::lblRPrescale_Click},
    {DiagramBlock::NPrescale, &PLLPage::lblNPrescale_Click},
    {DiagramBlock::PDPol, &PLLPage::lblPDPol_Click},
    {DiagramBlock::CPGain, &PLLPage::lblCPGain_Click},
    {DiagramBlock::CPState, &PLLPage::lblCPState_Click},
}};

PLLPage::PLLPage(PageHost& host, int index, QWidget* parent)
    : QWidget(parent),
      host_(host),
      index_(index),
      scroll_(new QScrollArea(this)),
      diagram_(new PLLDiagramView(index, scroll_)) {
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setFocusPolicy(Qt::ClickFocus);   // A click beside the boxes leaves the one that is being edited.
    scroll_->setWidget(diagram_);
    scroll_->viewport()->setAutoFillBackground(false);
    diagram_->setAutoFillBackground(false);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(scroll_);
    Wire();
}

void PLLPage::Wire() {
    for (const BoxEvents& row : kBoxEvents) {
        connect(&diagram_->Box(row.box), &TextBox::EnterPressed, this,
                [this, &row] { host_.Event([&] { (this->*row.keyPress)(); }); });
        connect(&diagram_->Box(row.box), &TextBox::LeftByUser, this,
                [this, &row] { host_.Event([&] { (this->*row.lostFocus)(); }); });
    }
    for (const BlockEvents& row : kBlockEvents) {
        connect(&diagram_->Block(row.block), &BlockLabel::Clicked, this,
                [this, &row] { host_.Event([&] { (this->*row.click)(); }); });
    }
    connect(diagram_, &PLLDiagramView::Stepped, this,
            [this](int which, bool up) { host_.Event([&] { SpinnerStepped(which, up); }); });
}

void PLLPage::txtOsc_KeyPress() {
    TakeEntry(EntryBox::Osc, EntryEvent::Enter);
}
void PLLPage::txtOsc_LostFocus() {
    TakeEntry(EntryBox::Osc, EntryEvent::LostFocus);
}
void PLLPage::txtVCO_KeyPress() {
    TakeEntry(EntryBox::VCO, EntryEvent::Enter);
}
void PLLPage::txtVCO_LostFocus() {
    TakeEntry(EntryBox::VCO, EntryEvent::LostFocus);
}
void PLLPage::txtFpd_KeyPress() {
    TakeEntry(EntryBox::Fpd, EntryEvent::Enter);
}
void PLLPage::txtFpd_LostFocus() {
    TakeEntry(EntryBox::Fpd, EntryEvent::LostFocus);
}
void PLLPage::txtRCounter_KeyPress() {
    TakeEntry(EntryBox::RCounter, EntryEvent::Enter);
}
void PLLPage::txtRCounter_LostFocus() {
    TakeEntry(EntryBox::RCounter, EntryEvent::LostFocus);
}
void PLLPage::txtNCounter_KeyPress() {
    TakeEntry(EntryBox::NCounter, EntryEvent::Enter);
}
void PLLPage::txtNCounter_LostFocus() {
    TakeEntry(EntryBox::NCounter, EntryEvent::LostFocus);
}
void PLLPage::txtFractNum_KeyPress() {
    TakeEntry(EntryBox::FractNum, EntryEvent::Enter);
}
void PLLPage::txtFractNum_LostFocus() {
    TakeEntry(EntryBox::FractNum, EntryEvent::LostFocus);
}
void PLLPage::txtFractDen_KeyPress() {
    TakeEntry(EntryBox::FractDen, EntryEvent::Enter);
}
void PLLPage::txtFractDen_LostFocus() {
    TakeEntry(EntryBox::FractDen, EntryEvent::LostFocus);
}
void PLLPage::lblRPrescale_Click() {
    Toggle(DiagramBlock::RPrescale);
}
void PLLPage::lblNPrescale_Click() {
    Toggle(DiagramBlock::NPrescale);
}
void PLLPage::lblPDPol_Click() {
    Toggle(DiagramBlock::PDPol);
}
void PLLPage::lblCPGain_Click() {
    Toggle(DiagramBlock::CPGain);
}
void PLLPage::lblCPState_Click() {
    Toggle(DiagramBlock::CPState);
}

void PLLPage::SpinnerStepped(int which, bool up) {
    const auto spinner = static_cast<PLLSpinner>(which);
    Freshen();   // A step goes by what the boxes say.
    const SpinResult result = Spin(host_.Device(), index_, spinner, up ? SpinButton::Up : SpinButton::Down, FpdText());
    if (result.text) {
        diagram_->Box(spinner == PLLSpinner::FractNum ? EntryBox::FractNum : EntryBox::FractDen)
            .ShowText(Qt8(*result.text));
    }
    Follow(result, FollowUpOf(spinner));
}

void PLLPage::TakeEntry(EntryBox box, EntryEvent event) {
    const TextBox& from = diagram_->Box(box);
    if (!from.Edited()) {
        Freshen();   // What somebody else has set meanwhile isn't taken back.
    }
    const bool typed = from.UserChanged();
    const EntryResult result = Enter(host_.Device(), index_, box, from.text().toStdString(), typed);
    Follow(result, FollowUpOf(box, event), typed || event == EntryEvent::Enter);
}

void PLLPage::Toggle(DiagramBlock block) {
    const Outcome outcome = ToggleLabel(host_.Device(), diagram_->Block(block).Tag());
    if (!outcome.handled) {
        return;
    }
    RunFollowUp(host_.Device(), kAfterLabel, host_.AutoReloadChange());
    if (outcome.Refused()) {
        host_.Note(Qt8(outcome.refusal));
    }
}

/// What became of an entry or a step is said, at its box too, as long as it holds.
void PLLPage::Follow(const EntryResult& result, const FollowUp& followUp, bool say) {
    if (!result.handled) {
        return;
    }
    if (say) {
        miss_.reset();
        hintsStale_ = true;
        if (result.Refused() || (result.asked && !Met(result))) {
            miss_ = {result.box, Qt8(EntryNote(result)), DeviceState(host_.Device())};
        }
    }
    const Sent sent = RunFollowUp(host_.Device(), followUp, host_.AutoReloadChange());
    if (say) {
        host_.NoteState(Qt8(EntryNote(result, sent)), !sent.allowed);
    }
}

void PLLPage::RunStepCommand(StepCommand command) {
    Freshen();   // A step goes by what the boxes say.
    Follow(RunStep(host_.Device(), index_, command, FpdText()), kAfterStep);
}

void PLLPage::StepN(int steps) {
    constexpr int kByTen = 10;
    const bool byTen = steps == kByTen || steps == -kByTen;
    if (steps > 0) {
        RunStepCommand(byTen ? StepCommand::NInc10 : StepCommand::IncN);
    } else {
        RunStepCommand(byTen ? StepCommand::NDec10 : StepCommand::NDec);
    }
}

void PLLPage::StepNumerator(bool up) {
    RunStepCommand(up ? StepCommand::IncFrac : StepCommand::DecFrac);
}

void PLLPage::SetFrequency(SetBox target) {
    const EntryBox box = target == SetBox::VCO          ? EntryBox::VCO
                         : target == SetBox::Comparison ? EntryBox::Fpd
                                                        : EntryBox::Osc;
    TextBox& to = diagram_->Box(box);
    to.setFocus(Qt::ShortcutFocusReason);   // Another box that the user was in is thereby left.
    scroll_->ensureWidgetVisible(&to);
    if (!to.Edited()) {
        Freshen();
    }
    const bool typed = to.UserChanged();
    const EntryResult result = ::SetFrequency(host_.Device(), index_, box, to.text().toStdString());
    Follow(result, kAfterSet, typed || !host_.StateIsNoted());   // What leaving another box came to stays.
    to.selectAll();                                              // Last: what was read back may be another text.
}

std::string PLLPage::FpdText() const {
    return diagram_->Box(EntryBox::Fpd).text().toStdString();
}

QSize PLLPage::sizeHint() const {
    return diagram_->size();
}
