#include "ui/bits/BitsPage.h"

#include <QScrollBar>
#include <QVBoxLayout>
#include <QWheelEvent>

#include "ui/bits/BitsList.h"
#include "ui/bits/FieldHelp.h"

// How the page is built and emptied. What it shows is in BitsPageShow.cpp, what its controls do in BitsPageEvents.cpp.

namespace {

const auto kFreeFrame = QStringLiteral("Program Bits");

QLabel* MakeLabel(QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    return label;
}

/// A box that shows 15 digits, and grows with the boxes above and below it as far as that looks well.
TextBox* MakeCounterBox(QWidget* parent) {
    constexpr int kDigits = 15;
    constexpr int kFrame = 14;
    auto* box = new TextBox(parent);
    box->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    const int width = box->fontMetrics().horizontalAdvance(QString(kDigits, QLatin1Char('0'))) + kFrame;
    box->setMinimumWidth(width);
    box->setMaximumWidth(2 * width);
    return box;
}

/// Lets the Tab key go from one control of a page to another. Unlike QWidget::setTabOrder, which walks round all
/// controls of the window, it costs next to nothing where the key goes there already: other pages, which may have
/// controls in between, are hidden when these two are seen.
void TabFromTo(const QWidget& page, QWidget* first, QWidget* second) {
    const QWidget* next = first->nextInFocusChain();
    while (next != second && next != first && (next->focusPolicy() == Qt::NoFocus || !page.isAncestorOf(next))) {
        next = next->nextInFocusChain();
    }
    if (next != second) {
        QWidget::setTabOrder(first, second);
    }
}

}   // namespace

BitsPage::BitsPage(PageHost& host, QWidget* parent) : QWidget(parent), host_(host), board_(new BitsBoard(this)) {
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addWidget(board_);
    board_->horizontalScrollBar()->setObjectName(QStringLiteral("hscPrgmBits"));
    board_->horizontalScrollBar()->setAccessibleName(tr("Scroll the bit fields sideways"));
    board_->verticalScrollBar()->setAccessibleName(tr("Scroll the bit fields up and down"));
    BitsFrame* frame = fraPrgmBits_.Add(0, board_->MakeFrame());
    BitsFrame* pins = fraPrgmPins_.Add(0, board_->MakeFrame());
    pins->Caption(QStringLiteral("Program Pins"));
    for (const Kind kind : {Kind::Bit, Kind::Counter, Kind::List, Kind::Pin}) {
        Make(kind, 0, kind == Kind::Pin ? pins : frame);
    }
    ResetDesign();
}

/// The first members as they stand without a device.
void BitsPage::ResetDesign() {
    for (const Kind kind : {Kind::Bit, Kind::Counter, Kind::List, Kind::Pin}) {
        Members(kind).assign(1, {});
        for (QWidget* control : ControlsOf(kind, 0)) {
            control->setEnabled(true);
            control->setToolTip({});
            control->hide();
        }
    }
    chkPrgmBit_[0]->setText(QStringLiteral("PrgmBit"));
    lblCntr_[0]->setText(QStringLiteral("Counter"));
    txtCntrVal_[0]->ShowText(QStringLiteral("0"));
    lblCmbBits_[0]->setText(QStringLiteral(" List Box"));
    cmbBits_[0]->clear();
    chkPrgmPin_[0]->setText(QStringLiteral("Program Pin"));
    fraPrgmBits_[0]->Caption(kFreeFrame);
    for (BitsFrame* frame : {fraPrgmBits_[0], fraPrgmPins_[0]}) {
        frame->RemoveRows();
        frame->hide();
    }
    ListFrames();
}

void BitsPage::ClearControls() {
    board_->horizontalScrollBar()->setValue(0);
    board_->verticalScrollBar()->setValue(0);
    chkPrgmBit_.DropFrom(1);
    lblCntr_.DropFrom(1);
    txtCntrVal_.DropFrom(1);
    spnCntr_.DropFrom(1);
    lblCmbBits_.DropFrom(1);
    cmbBits_.DropFrom(1);
    chkPrgmPin_.DropFrom(1);
    fraPrgmBits_.DropFrom(1);
    ResetDesign();
}

void BitsPage::AddCheckBox(const cPrgmBits& added, std::string_view group) {
    const Place place = FrameFor(group);
    const int index = NextMember(Kind::Bit, place, added.ID());
    chkPrgmBit_[index]->setText(WithoutMnemonics(Qt8(added.ID())));
    place.frame->AddRow(chkPrgmBit_[index]);
}

void BitsPage::AddCounterBox(const cPrgmBits& added, std::string_view group) {
    const Place place = FrameFor(group);
    const int index = NextMember(Kind::Counter, place, added.ID());
    lblCntr_[index]->setText(Qt8(added.ID()));
    place.frame->AddRow(lblCntr_[index], txtCntrVal_[index], spnCntr_[index]);
}

void BitsPage::AddListBox(const cPrgmBits& field, std::string_view group) {
    const Place place = FrameFor(group);
    const int index = NextMember(Kind::List, place, field.ID());
    lblCmbBits_[index]->setText(Qt8(field.ID()));
    std::vector<std::string> texts;
    field.GetStringArray(texts);
    for (const std::string& text : texts) {
        cmbBits_[index]->addItem(Qt8(text));
    }
    place.frame->AddRow(lblCmbBits_[index], cmbBits_[index]);
}

void BitsPage::AddPinBox(const cPrgmPin& added) {
    const Place place{fraPrgmPins_[0], true};
    place.frame->show();
    const int index = NextMember(Kind::Pin, place, added.ID());
    chkPrgmPin_[index]->setText(WithoutMnemonics(Qt8(added.ID())));
    place.frame->AddRow(chkPrgmPin_[index]);
}

/// The frame of that group. The first group takes over frame 0, and each further one gets a frame of its own.
BitsPage::Place BitsPage::FrameFor(std::string_view group) {
    const QString caption = QString::fromUtf8(group.data(), static_cast<qsizetype>(group.size()));
    for (const auto& [index, frame] : fraPrgmBits_) {
        if (!frame->isHidden() && frame->Caption() == caption) {
            return {frame, false};
        }
    }
    const bool first = fraPrgmBits_[0]->isHidden();
    BitsFrame* frame = first ? fraPrgmBits_[0] : fraPrgmBits_.Add(fraPrgmBits_.Count(), board_->MakeFrame());
    frame->Caption(caption);
    frame->show();
    ListFrames();
    return {frame, first};
}

/// The index of the control for a new field or pin; made if it isn't there.
int BitsPage::NextMember(Kind kind, const Place& place, const std::string& name) {
    auto& members = Members(kind);
    const bool takesFirst = place.first && !members.front().used;
    if (!takesFirst) {
        Make(kind, static_cast<int>(members.size()), place.frame);
        members.emplace_back();
    }
    Member& member = takesFirst ? members.front() : members.back();
    member.name = name;
    member.used = true;
    const int index = takesFirst ? 0 : static_cast<int>(members.size()) - 1;
    for (QWidget* control : ControlsOf(kind, index)) {
        control->setAccessibleName(Qt8(name));
    }
    if (kind == Kind::Counter) {
        spnCntr_[index]->Name(Qt8(name));
    } else if (kind == Kind::List) {
        cmbBits_[index]->setAccessibleDescription(Qt8(name));   // Screen readers take the chosen entry for its name.
    }
    unfinished_ = true;
    board_->ArrangeSoon();
    return index;
}

void BitsPage::Make(Kind kind, int index, BitsFrame* frame) {
    switch (kind) {
        case Kind::Bit:
            chkPrgmBit_.Add(index, new QCheckBox(frame));
            break;
        case Kind::Counter:
            lblCntr_.Add(index, MakeLabel(frame));
            txtCntrVal_.Add(index, MakeCounterBox(frame));
            spnCntr_.Add(index, new Spinner(frame));
            break;
        case Kind::List:
            lblCmbBits_.Add(index, MakeLabel(frame));
            cmbBits_.Add(index, new BitsList(frame));
            break;
        case Kind::Pin:
            chkPrgmPin_.Add(index, new QCheckBox(frame));
            break;
    }
    Wire(kind, index);
}

/// What each control's events lead to.
void BitsPage::Wire(Kind kind, int index) {
    const auto answer = [this, index](void (BitsPage::*handler)(int)) {
        return [this, index, handler] { host_.Event([&] { (this->*handler)(index); }); };
    };
    const auto help = [&](void (BitsPage::*handler)(int)) {
        for (QWidget* control : ControlsOf(kind, index)) {
            new FieldHelp(*control, answer(handler), [this, kind, index] { Explain(kind, index); });
        }
    };
    switch (kind) {
        case Kind::Bit:
            connect(chkPrgmBit_[index], &QCheckBox::clicked, this, answer(&BitsPage::chkPrgmBit_Click));
            help(&BitsPage::chkPrgmBit_MouseDown);
            break;
        case Kind::Counter:
            connect(txtCntrVal_[index], &TextBox::EnterPressed, this, answer(&BitsPage::txtCntrVal_KeyPress));
            connect(spnCntr_[index], &Spinner::Up, this, answer(&BitsPage::spnCntr_UpClick));
            connect(spnCntr_[index], &Spinner::Down, this, answer(&BitsPage::spnCntr_DownClick));
            help(&BitsPage::txtCntrVal_MouseDown);
            break;
        case Kind::List:
            connect(cmbBits_[index], &QComboBox::activated, this, answer(&BitsPage::cmbBits_Click));
            help(&BitsPage::cmbBits_MouseDown);
            break;
        case Kind::Pin:
            connect(chkPrgmPin_[index], &QCheckBox::clicked, this, answer(&BitsPage::chkPrgmPin_Click));
            break;
    }
}

/// Gives the board the frames in their order, that of the pins last.
void BitsPage::ListFrames() {
    std::vector<BitsFrame*> frames;
    for (const auto& [index, frame] : fraPrgmBits_) {
        frames.push_back(frame);
    }
    frames.push_back(fraPrgmPins_[0]);
    board_->Frames(std::move(frames));
}

/// The Tab key goes through a frame before it goes to the next.
void BitsPage::OrderTabs() {
    QWidget* last = nullptr;
    const auto append = [this, &last](const BitsFrame& frame) {
        for (QWidget* control : frame.FocusOrder()) {
            if (last != nullptr) {
                TabFromTo(*this, last, control);
            }
            last = control;
        }
    };
    for (const auto& [index, frame] : fraPrgmBits_) {
        append(*frame);
    }
    append(*fraPrgmPins_[0]);
}

std::vector<QWidget*> BitsPage::ControlsOf(Kind kind, int index) const {
    switch (kind) {
        case Kind::Bit:
            return {chkPrgmBit_[index]};
        case Kind::Counter:
            return {txtCntrVal_[index], spnCntr_[index], lblCntr_[index]};
        case Kind::List:
            return {cmbBits_[index], lblCmbBits_[index]};
        case Kind::Pin:
            return {chkPrgmPin_[index]};
    }
    return {};
}
