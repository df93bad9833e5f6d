#include "ui/registers/RegistersPage.h"

#include <algorithm>

RegistersPage::RegistersPage(PageHost& host, QWidget* parent)
    : QWidget(parent),
      host_(host),
      view_(new QWidget(this)),
      content_(new QWidget(view_)),
      cmdBitOrder_(new QPushButton(QStringLiteral("MSB -->"), this)),
      label10_(new QLabel(tr("Bit"), this)),
      shpBitHiLite_(new RegisterBitMark(this)),
      lblHexValue_(new QLabel(QStringLiteral("Hex Value"), this)),
      lblHexDisplay_(new QLabel(this)),
      hscRegisters_(new QScrollBar(Qt::Horizontal, this)),
      vscRegisters_(new QScrollBar(Qt::Vertical, this)),
      cmdBoxRegisters_(new QWidget(this)) {
    BuildControls();
    ClearRows();
    ShowRulers();
}

void RegistersPage::BuildControls() {
    const auto name = [](QWidget* control, const char* given, const QString& words) {
        control->setObjectName(QString::fromLatin1(given));
        control->setAccessibleName(words);
    };
    name(cmdBitOrder_, "cmdBitOrder", tr("Bit order: highest bit at the left"));
    name(label10_, "Label10", tr("Bit numbers"));
    name(shpBitHiLite_, "shpBitHiLite", tr("Selected bit"));
    name(lblHexValue_, "lblHexValue", tr("Heading of the hexadecimal value"));
    name(lblHexDisplay_, "lblHexDisplay", tr("Value of the selected register, hexadecimal"));
    name(hscRegisters_, "hscRegisters", tr("Scroll the registers sideways"));
    name(vscRegisters_, "vscRegisters", tr("Scroll the registers up and down"));
    name(cmdBoxRegisters_, "cmdBoxRegisters", tr("Corner"));
    cmdBitOrder_->setToolTip(tr("Which end of the registers stands at the left. Click to turn them round."));
    cmdBoxRegisters_->setAutoFillBackground(true);
    lblHexDisplay_->setFont(RegisterBitsBox::Face());
    for (QScrollBar* bar : {hscRegisters_, vscRegisters_}) {
        bar->setFocusPolicy(Qt::TabFocus);
        bar->hide();
    }
    for (QWidget* hidden :
         std::initializer_list<QWidget*>{shpBitHiLite_, lblHexValue_, lblHexDisplay_, cmdBoxRegisters_}) {
        hidden->hide();
    }
    MakeRow();
    MakeRulers(0);
    connect(cmdBitOrder_, &QPushButton::clicked, this, [this] { host_.Event([this] { cmdBitOrder_Click(); }); });
    connect(hscRegisters_, &QScrollBar::valueChanged, this, &RegistersPage::hscRegisters_Change);
    connect(vscRegisters_, &QScrollBar::valueChanged, this, &RegistersPage::vscRegisters_Change);
    // A drag stops at whole rows, so that the first one is never half under the rulers.
    connect(vscRegisters_, &QScrollBar::actionTriggered, this, [this] {
        const int pitch = vscRegisters_->singleStep();
        vscRegisters_->setSliderPosition((vscRegisters_->sliderPosition() + pitch / 2) / pitch * pitch);
    });
}

/// The Tab key takes the rows in the order in which they are made.
void RegistersPage::MakeRow() {
    const int index = Count();
    rows_.push_back({lblRegName_.Add(index, new QLabel(content_)),
                     txtRegBits_.Add(index, new RegisterBitsBox(content_)),
                     cmdLoadReg_.Add(index, new RegisterLoadButton(QStringLiteral("Load"), content_)),
                     {}});
    const Row& row = rows_.back();
    row.name->setTextFormat(Qt::PlainText);
    row.name->setForegroundRole(QPalette::ButtonText);
    row.name->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    row.bits->setToolTip(tr("Click a bit, or go to it with the arrow keys, and type 0 or 1. The next bit follows."));
    row.load->setToolTip(
        tr("Loads this register to the device. On an SBI device, with Shift, Ctrl or Alt, or with the middle button: "
           "reads it back."));
    WireRow(index);
}

void RegistersPage::WireRow(int index) {
    const Row& row = RowAt(index);
    connect(row.bits, &RegisterBitsBox::Clicked, this,
            [this, index](int position) { host_.Event([&] { txtRegBits_Click(index, position); }); });
    connect(row.bits, &RegisterBitsBox::DoubleClicked, this,
            [this, index] { host_.Event([&] { txtRegBits_DblClick(index); }); });
    connect(row.bits, &RegisterBitsBox::KeyDown, this,
            [this, index](int key) { host_.Event([&] { txtRegBits_KeyDown(index, key); }); });
    connect(row.bits, &RegisterBitsBox::KeyPress, this,
            [this, index](QChar key) { host_.Event([&] { txtRegBits_KeyPress(index, key); }); });
    connect(row.load, &RegisterLoadButton::MouseDown, this,
            [this, index](Qt::MouseButton button, Qt::KeyboardModifiers shift) {
                host_.Event([&] { cmdLoadReg_MouseDown(index, button, shift); });
            });
    connect(row.load, &RegisterLoadButton::clicked, this,
            [this, index] { host_.Event([&] { cmdLoadReg_Click(index); }); });
    connect(row.bits, &RegisterBitsBox::TabbedInto, this,
            [this, index] { EnsureVisible(DigitPlace(index, RowAt(index).bits->Start())); });
    connect(row.load, &RegisterLoadButton::TabbedInto, this,
            [this, index] { EnsureVisible(RowAt(index).load->geometry()); });
}

void RegistersPage::NameRow(Row& row, const std::string& name) {
    row.key = name;
    row.name->setText(Qt8(name));
    row.bits->setAccessibleName(tr("Bits of register %1").arg(Qt8(name)));
    row.load->setAccessibleName(tr("Load register %1").arg(Qt8(name)));
}

void RegistersPage::AddRow(const cRegister& added) {
    if (designState_) {
        designState_ = false;
        RowAt(0).bits->setFont(RegisterBitsBox::Face());
        RowAt(0).bits->ShowBits({});
    } else {
        MakeRow();
    }
    NameRow(rows_.back(), added.ID());
    const int width = rows_.back().name->sizeHint().width();
    if (Count() == 1 || width > nameWidth_) {
        Arrange();
    } else {
        PlaceRow(Count() - 1);
        FitContent(Count() - 1);
    }
}

void RegistersPage::ClearRows() {
    HideSelection();
    vscRegisters_->setValue(0);
    hscRegisters_->setValue(0);
    lblRegName_.DropFrom(1);
    txtRegBits_.DropFrom(1);
    cmdLoadReg_.DropFrom(1);
    lblOnes_.DropFrom(1);
    lblTens_.DropFrom(1);
    rows_.erase(rows_.begin() + 1, rows_.end());
    designState_ = true;
    Row& first = rows_.front();
    first.shown = std::numeric_limits<double>::quiet_NaN();
    NameRow(first, "RegName");
    first.bits->Select(0, 0);
    first.bits->ShowBits(QStringLiteral("1 1 1"));
    // These texts have one blank between the digits.
    for (QWidget* design : std::initializer_list<QWidget*>{first.bits, lblTens_[0], lblOnes_[0]}) {
        design->setFont(RegisterBitsBox::PlainFace());
    }
    lblTens_[0]->setText(QStringLiteral("0 0 0"));
    lblOnes_[0]->setText(QStringLiteral("0 1 2"));
    Arrange();
}

BitRow RegistersPage::Bits() const {
    return {host_.Device().RegisterLength(), host_.Device().ControlLength(), order_};
}

void RegistersPage::RebuildRulers() {
    for (Row& row : rows_) {
        row.shown = std::numeric_limits<double>::quiet_NaN();   // The texts no longer have the right length.
    }
    ShowRulers();
    Arrange();
}

void RegistersPage::ShowRulers() {
    const BitRow bits = Bits();
    for (const auto& [column, ones] : lblOnes_) {
        QLabel* tens = lblTens_[column];
        ones->setFont(RegisterBitsBox::Face());
        tens->setFont(RegisterBitsBox::Face());
        ones->setText(bits.Ones());
        tens->setText(bits.Tens());
    }
}

void RegistersPage::ReverseRulers() {
    for (const ControlArray<QLabel>* lines : {&lblOnes_, &lblTens_}) {
        for (const auto& [column, label] : *lines) {
            QString text = label->text();
            std::reverse(text.begin(), text.end());
            label->setText(text);
        }
    }
}

void RegistersPage::ShowRegisters() {
    const BitRow bits = Bits();
    for (Row& row : rows_) {
        const cRegister* shown = host_.Device().Registers().Find(row.key);
        if (shown != nullptr && shown->Value() != row.shown) {
            row.shown = shown->Value();
            row.bits->ShowBits(bits.Text(row.shown));
        }
    }
    MarkHex();
}

void RegistersPage::Entered() {
    HideSelection();
    UpdateBars();
}
