#include "ui/pll/PLLPage.h"

#include <QScrollArea>
#include <QVBoxLayout>

#include "pll/DeviceState.h"
#include "pll/EntryTexts.h"
#include "pll/PLLSpinners.h"

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
    for (std::size_t i = 0; i < kBoxRows.size(); ++i) {
        const auto box = static_cast<EntryBox>(i);
        connect(&diagram_->Box(box), &TextBox::EnterPressed, this,
                [this, box] { host_.Event([&] { TakeEntry(box, true); }); });
        connect(&diagram_->Box(box), &TextBox::LeftByUser, this,
                [this, box] { host_.Event([&] { TakeEntry(box, false); }); });
    }
    for (const DiagramBlock block : kDiagramBlocks) {
        connect(&diagram_->Block(block), &BlockLabel::Clicked, this,
                [this, block] { host_.Event([&] { Toggle(block); }); });
    }
    connect(diagram_, &PLLDiagramView::Stepped, this,
            [this](int which, bool up) { host_.Event([&] { SpinnerStepped(which, up); }); });
}

void PLLPage::SpinnerStepped(int which, bool up) {
    const auto spinner = static_cast<PLLSpinner>(which);
    Freshen();   // A step goes by what the boxes say.
    const SpinResult result = Spin(host_.Device(), index_, spinner, up, FpdText());
    if (result.text) {
        diagram_->Box(spinner == PLLSpinner::FractNum ? EntryBox::FractNum : EntryBox::FractDen)
            .ShowText(Qt8(*result.text));
    }
    Follow(result, FollowUpOf(spinner));
}

void PLLPage::TakeEntry(EntryBox box, bool byEnter) {
    const TextBox& from = diagram_->Box(box);
    if (!from.Edited()) {
        Freshen();   // What somebody else has set meanwhile isn't taken back.
    }
    const bool typed = from.UserChanged();
    const EntryResult result = Enter(host_.Device(), index_, box, from.text().toStdString(), typed);
    Follow(result, byEnter ? RowOf(box).onEnter : RowOf(box).onLostFocus, typed || byEnter);
}

void PLLPage::Toggle(DiagramBlock block) {
    const Outcome outcome = ToggleLabel(host_.Device(), diagram_->Block(block).Tag());
    if (!outcome.handled) {
        return;
    }
    kAfterLabel(host_.Device(), host_.AutoReloadChange());
    if (outcome.Refused()) {
        host_.Note(Qt8(outcome.refusal));
    }
}

/// What became of an entry or a step is said, at its box too, as long as it holds.
void PLLPage::Follow(const EntryResult& result, FollowUp followUp, bool say) {
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
    const Sent sent = followUp(host_.Device(), host_.AutoReloadChange());
    if (say) {
        host_.NoteState(Qt8(EntryNote(result, sent)), !sent.allowed);
    }
}

void PLLPage::StepN(int steps) {
    Freshen();   // A step goes by what the boxes say.
    Follow(::StepN(host_.Device(), index_, steps, FpdText()), kAfterStep);
}

void PLLPage::StepNumerator(bool up) {
    Freshen();
    Follow(::StepNumerator(host_.Device(), index_, up), kAfterStep);
}

void PLLPage::SetFrequency(EntryBox box) {
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
