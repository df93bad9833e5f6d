#include <cstdint>

#include "ui/controls/Colours.h"
#include "ui/registers/RegistersPage.h"

// What the user does on the page, and how the selected bit shows.

namespace {

/// Red for a data bit, blue for a control bit, to be read on the window and in the boxes.
QColor BitColour(bool control, const QPalette& palette) {
    const QColor& window = palette.color(QPalette::Window);
    const QColor& base = palette.color(QPalette::Base);
    return Legible(control ? Qt::blue : Qt::red, Luminance(window) > Luminance(base) ? window : base);
}

/// An invalid colour gives the normal one back.
void ColourName(QLabel* name, const QColor& colour) {
    QPalette colours;
    if (colour.isValid()) {
        colours.setColor(QPalette::ButtonText, colour);
        colours.setColor(QPalette::WindowText, colour);
    }
    name->setPalette(colours);
}

void Describe(QWidget* control, const QString& state) {
    control->setToolTip(state);
    control->setAccessibleDescription(state);
}

}   // namespace

void RegistersPage::txtRegBits_Click(int index, int position) {
    if (designState_) {
        return;
    }
    SelectBit(index, position, Bits().IsControl(position) ? 0 : 1);
    ShowHex(index);
}

void RegistersPage::txtRegBits_DblClick(int index) {
    RegisterBitsBox* box = RowAt(index).bits;
    box->Select(box->Start(), 0);
}

void RegistersPage::txtRegBits_KeyDown(int index, int key) {
    if (host_.Device().ID().empty()) {
        return;
    }
    const int position = RowAt(index).bits->Start();
    if (key == Qt::Key_Up || key == Qt::Key_Down) {
        MoveToRow(key == Qt::Key_Up ? index - 1 : index + 1, position);
        return;
    }
    const int moved = key == Qt::Key_Left ? Bits().Left(position) : Bits().Right(position);
    if (moved != position) {
        SelectBit(index, moved, 1);
    }
}

void RegistersPage::MoveToRow(int index, int position) {
    if (index < 0 || index >= Count()) {
        return;
    }
    EnsureVisible(DigitPlace(index, position));
    RowAt(index).bits->setFocus(Qt::OtherFocusReason);
    SelectBit(index, position, 1);
    ShowHex(index);
}

void RegistersPage::txtRegBits_KeyPress(int index, QChar key) {
    const RegisterBitsBox* box = RowAt(index).bits;
    const int position = box->Start();
    if (host_.Device().ID().empty() || Bits().IsControl(position)) {
        return;
    }
    if (box->Selected() == 1) {
        WriteBit(index, position, key);
    }
    SelectBit(index, Bits().Higher(position), 1);
}

void RegistersPage::WriteBit(int index, int position, QChar key) {
    if (key != QLatin1Char('0') && key != QLatin1Char('1')) {
        return;
    }
    cPart& device = host_.Device();
    cRegister& changed = device.Registers().At(RowAt(index).key);
    const auto bit = static_cast<std::int16_t>(Bits().BitAt(position));
    if (key == QLatin1Char('0')) {
        changed.ClrBit(bit);
    } else {
        changed.SetBits(1, bit, 1);
    }
    device.UpdatePLLDisplay();
    device.UpdateBitDisplay();
    device.UpdateRegisterDisplay();
}

void RegistersPage::cmdLoadReg_MouseDown(int index, Qt::MouseButton button, Qt::KeyboardModifiers shift) {
    const bool held = (shift & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier)) != Qt::NoModifier;
    if (button == Qt::MiddleButton || (button == Qt::LeftButton && held)) {
        ReadBack(index);
    } else if (button == Qt::LeftButton) {
        host_.Device().LoadRegisterNumber(static_cast<std::int16_t>(index + 1));
    } else if (button == Qt::RightButton) {
        host_.Asking().MessageBox(
            "This command button will load only the specified register. Click on this button to load the register "
            "after changing specific bits or to reload the register.",
            {}, MessageIcon::None);
    }
}

void RegistersPage::ReadBack(int index) {
    cPart& device = host_.Device();
    const std::int32_t number = device.ReadRegister(static_cast<std::int16_t>(index + 1));
    if (number == -1) {
        return;
    }
    const BitRow bits(device.RegisterLength(), 0, BitRow::Order::HighFirst);
    host_.Asking().MessageBox("Register = " + std::to_string(number) + " = " + bits.Digits(bits.Text(number)), {},
                              MessageIcon::None);
    RowAt(index).load->setDown(false);   // The message takes the button's release.
}

void RegistersPage::cmdLoadReg_Click(int index) {
    host_.Device().LoadRegisterNumber(static_cast<std::int16_t>(index + 1));
    HideSelection();
}

void RegistersPage::cmdBitOrder_Click() {
    const bool lowFirst = order_ == BitRow::Order::HighFirst;
    order_ = lowFirst ? BitRow::Order::LowFirst : BitRow::Order::HighFirst;
    cmdBitOrder_->setText(lowFirst ? QStringLiteral("LSB -->") : QStringLiteral("MSB -->"));
    cmdBitOrder_->setAccessibleName(lowFirst ? tr("Bit order: lowest bit at the left")
                                             : tr("Bit order: highest bit at the left"));
    HideSelection();
    for (Row& row : rows_) {
        row.bits->Select(0, 0);   // The places now stand for other bits.
        row.shown = std::numeric_limits<double>::quiet_NaN();
    }
    ReverseRulers();
    host_.Device().UpdateRegisterDisplay();
}

void RegistersPage::SelectBit(int index, int position, int length) {
    if (selectedRow_ != index) {
        UnmarkRow();
        selectedRow_ = index;
    }
    RowAt(index).bits->Select(position, length);
    MarkSelection();
    EnsureVisible(DigitPlace(index, position));
}

/// Colours the selected bit, and tells the same without colour.
void RegistersPage::MarkSelection() {
    const Row& row = RowAt(selectedRow_);
    const BitRow bits = Bits();
    const int bit = bits.BitAt(row.bits->Start());
    const bool control = bits.IsControl(row.bits->Start());
    const QColor colour = BitColour(control, palette());
    const QString state = control ? tr("Bit %1 is selected: a control bit, which can't be changed here").arg(bit)
                                  : tr("Bit %1 is selected: a data bit, which can be changed").arg(bit);
    ColourName(row.name, colour);
    row.bits->Mark(colour);
    shpBitHiLite_->Line(colour, control);
    Describe(row.name, state);
    Describe(shpBitHiLite_, state);
    row.bits->setAccessibleDescription(state);
    PlaceMark();
}

void RegistersPage::UnmarkRow() {
    if (selectedRow_ < 0) {
        return;
    }
    const Row& row = RowAt(selectedRow_);
    ColourName(row.name, {});
    Describe(row.name, {});
    row.bits->setAccessibleDescription({});
    row.bits->Mark({});
    selectedRow_ = -1;
}

void RegistersPage::HideSelection() {
    UnmarkRow();
    shpBitHiLite_->hide();
    hexRow_ = -1;
    PlaceHex();
    UpdateBars();
}

void RegistersPage::ShowHex(int index) {
    std::string digits = Bits().Digits(RowAt(index).bits->text());
    hexDigits_ = digits;
    lblHexDisplay_->setText(Qt8(host_.Device().ConvertBinaryToHex(digits)));
    hexRow_ = index;
    MarkHex();
    PlaceHex();
    UpdateBars();
}

/// The value stays as it was when the row was chosen. It turns pale once it is no longer that of the bits beside it.
void RegistersPage::MarkHex() {
    if (hexRow_ < 0) {
        return;
    }
    const bool stale = Bits().Digits(RowAt(hexRow_).bits->text()) != hexDigits_;
    QPalette colours;
    if (stale) {
        colours.setColor(QPalette::WindowText, PaleText(palette()));
    }
    lblHexDisplay_->setPalette(colours);
    Describe(lblHexDisplay_,
             stale ? tr("The value before the last change. Click a bit of the row for the present one.") : QString());
}
