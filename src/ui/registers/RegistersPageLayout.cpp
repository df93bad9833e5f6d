#include <QFontMetrics>
#include <QResizeEvent>
#include <QStyle>
#include <algorithm>

#include "ui/controls/Margins.h"
#include "ui/registers/RegistersPage.h"

// Where everything on the page stands. The content is laid out at fixed places and shifted as a whole by the values
// of the scroll bars; rulers and bit order button follow it sideways only.

namespace {

constexpr int kNameGap = 6;   // Between a row's name and its bits.
constexpr int kLoadGap = 3;   // Between the bits and the button.
constexpr int kHexGap = 7;    // Between the button and the hexadecimal value.
constexpr int kColumnGap = 20;
constexpr int kEdgeGap = 20;   // Beyond the last button, before the page counts as too narrow.
constexpr int kRowGap = 1;
constexpr int kFewestRows = 35;   // A further column opens only behind that many rows.

int RoundedUp(int value, int step) {
    return (value + step - 1) / step * step;
}

}   // namespace

int RegistersPage::RowPitch() const {
    return rowHeight_ + kRowGap;
}

QSize RegistersPage::View() const {
    const int bar = std::max(kPageMargin, style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, vscRegisters_));
    return {width() - bar, height() - headerHeight_ - bar};
}

int RegistersPage::RowsPerColumn() const {
    return std::max(kFewestRows, View().height() / RowPitch());
}

int RegistersPage::Columns() const {
    return ColumnOf(Count() - 1) + 1;
}

int RegistersPage::ColumnWidth() const {
    return nameWidth_ + kNameGap + boxWidth_ + kLoadGap + loadWidth_ + kHexGap + hexWidth_ + kColumnGap;
}

int RegistersPage::LoadRight(int column) const {
    return kPageMargin + column * ColumnWidth() + nameWidth_ + kNameGap + boxWidth_ + kLoadGap + loadWidth_;
}

QPoint RegistersPage::PlaceOf(int index) const {
    return {kPageMargin + ColumnOf(index) * ColumnWidth(), index % RowsPerColumn() * RowPitch()};
}

QRect RegistersPage::DigitPlace(int index, int position) const {
    const int digit = position / BitRow::kStep * RegisterBitsBox::Pitch();
    const int left = nameWidth_ + kNameGap + RowAt(index).bits->TextLeft() + digit;
    return {PlaceOf(index) + QPoint(left, 0), QSize(RegisterBitsBox::DigitWidth(), rowHeight_)};
}

void RegistersPage::Measure() {
    const QFontMetrics face(RegisterBitsBox::Face());
    const Row& first = rows_.front();
    nameWidth_ = cmdBitOrder_->sizeHint().width();
    for (const Row& row : rows_) {
        nameWidth_ = std::max(nameWidth_, row.name->sizeHint().width());
    }
    boxWidth_ = first.bits->WidthFor(designState_ ? first.bits->text() : Bits().Ones());
    loadWidth_ = first.load->fontMetrics().horizontalAdvance(first.load->text()) + 2 * kPageMargin;
    const int hexDigits = RoundedUp(Bits().Count(), 4) / 4;
    hexWidth_ = std::max(lblHexValue_->sizeHint().width(), (hexDigits + 1) * RegisterBitsBox::DigitWidth());
    lineHeight_ = face.ascent() + 1;
    rowHeight_ = face.height() + 4;
    headerHeight_ = kPageMargin + std::max(2 * lineHeight_, cmdBitOrder_->sizeHint().height()) + kLoadGap;
}

void RegistersPage::Arrange() {
    Measure();
    for (int i = 0; i < Count(); ++i) {
        PlaceRow(i);
    }
    FitContent();
}

/// Brings all that depends on the number of rows and the size of the page into line. The rows before the first one
/// stand where they stood.
void RegistersPage::FitContent(int firstRow) {
    for (int column = lblOnes_.Count(); column < Columns(); ++column) {
        MakeRulers(column);
    }
    lblOnes_.DropFrom(Columns());
    lblTens_.DropFrom(Columns());
    view_->setGeometry(0, headerHeight_, width(), height() - headerHeight_);
    content_->resize(LoadRight(Columns() - 1) + kEdgeGap, std::min(Count(), RowsPerColumn()) * RowPitch());
    UpdateBars();
    ShiftContent(firstRow);
}

void RegistersPage::MakeRulers(int column) {
    for (ControlArray<QLabel>* lines : {&lblTens_, &lblOnes_}) {
        QLabel* line = lines->Add(column, new QLabel(this));
        line->setFont(RegisterBitsBox::Face());
        line->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
        line->setAccessibleName(lines == &lblTens_ ? tr("Bit numbers, tens") : tr("Bit numbers, ones"));
        line->setText(column == 0 ? QString() : (*lines)[0]->text());
        line->stackUnder(shpBitHiLite_);
        line->show();
    }
}

void RegistersPage::PlaceRow(int index) {
    const Row& row = RowAt(index);
    const QPoint place = PlaceOf(index);
    const int bits = place.x() + nameWidth_ + kNameGap;
    row.name->setGeometry(place.x(), place.y(), nameWidth_, rowHeight_);
    row.bits->setGeometry(bits, place.y(), boxWidth_, rowHeight_);
    row.load->setGeometry(bits + boxWidth_ + kLoadGap, place.y(), loadWidth_, rowHeight_);
}

void RegistersPage::PlaceHeader() {
    const int shift = hscRegisters_->value();
    const int bottom = headerHeight_ - kLoadGap;
    const QSize button = cmdBitOrder_->sizeHint();
    cmdBitOrder_->setGeometry(kPageMargin + nameWidth_ - button.width() - shift, bottom - button.height(),
                              button.width(), button.height());
    for (const auto& [column, ones] : lblOnes_) {
        const int left = DigitPlace(column * RowsPerColumn(), 0).left() - shift;
        ones->setGeometry(left, bottom - lineHeight_, ones->sizeHint().width(), lineHeight_);
        lblTens_[column]->setGeometry(left, bottom - 2 * lineHeight_, ones->sizeHint().width(), lineHeight_);
    }
    const int rulerEnd = lblOnes_[0]->geometry().right() + kHexGap;
    label10_->setGeometry(std::max(LoadRight(0) - loadWidth_ - shift, rulerEnd), bottom - 2 * lineHeight_, loadWidth_,
                          2 * lineHeight_);
}

/// Puts the highlight round the bit's number in the ruler of the row's own column.
void RegistersPage::PlaceMark() {
    if (selectedRow_ < 0) {
        return;
    }
    const QRect digit = DigitPlace(selectedRow_, RowAt(selectedRow_).bits->Start());
    const int top = headerHeight_ - kLoadGap - 2 * lineHeight_;
    shpBitHiLite_->setGeometry(digit.left() - 3 - hscRegisters_->value(), top - 2, digit.width() + 6,
                               2 * lineHeight_ + 4);
    shpBitHiLite_->show();
}

void RegistersPage::PlaceHex() {
    const bool shown = hexRow_ >= 0 && PlaceOf(hexRow_).y() >= vscRegisters_->value();
    lblHexValue_->setVisible(shown);
    lblHexDisplay_->setVisible(shown);
    if (shown) {
        const int left = LoadRight(ColumnOf(hexRow_)) + kHexGap - hscRegisters_->value();
        const int top = headerHeight_ + PlaceOf(hexRow_).y() - vscRegisters_->value();
        lblHexDisplay_->setGeometry(left, top, hexWidth_, rowHeight_);
        lblHexValue_->setGeometry(left, top - lineHeight_ - 1, hexWidth_, lineHeight_ + 2);
    }
}

/// How far the content reaches beyond the page; nothing or less if it fits.
QSize RegistersPage::Excess() const {
    const int hex = hexRow_ < 0 ? 0 : LoadRight(ColumnOf(hexRow_)) + kHexGap + hexWidth_ - View().width();
    return {std::max(LoadRight(Columns() - 1) + kEdgeGap - width(), hex), content_->height() - View().height()};
}

void RegistersPage::UpdateBars() {
    const QSize excess = Excess();
    const QSize view = View();
    const int sideways = LoadRight(Columns() - 1) + kHexGap + hexWidth_ - view.width();
    vscRegisters_->setSingleStep(RowPitch());
    vscRegisters_->setPageStep(std::max(1, view.height() / RowPitch()) * RowPitch());
    hscRegisters_->setSingleStep(RegisterBitsBox::Pitch());
    hscRegisters_->setPageStep(view.width());
    // Where all fits again the content stays where it was scrolled to, and the bar with it.
    const bool rowsFit = excess.height() <= 0;
    vscRegisters_->setMaximum(rowsFit ? vscRegisters_->value() : RoundedUp(excess.height(), RowPitch()));
    hscRegisters_->setMaximum(excess.width() <= 0 ? hscRegisters_->value() : std::max(excess.width(), sideways));
    ShowBars();
}

/// A bar shows where something doesn't fit, and as long as it is scrolled.
void RegistersPage::ShowBars() {
    const QSize excess = Excess();
    const bool across = excess.width() > 0 || hscRegisters_->value() != 0;
    const bool down = excess.height() > 0 || vscRegisters_->value() != 0;
    const int wide = vscRegisters_->sizeHint().width();
    const int high = hscRegisters_->sizeHint().height();
    vscRegisters_->setGeometry(width() - wide, 0, wide, height() - (across ? high : 0));
    hscRegisters_->setGeometry(0, height() - high, width() - (down ? wide : 0), high);
    cmdBoxRegisters_->setGeometry(width() - wide, height() - high, wide, high);
    vscRegisters_->setVisible(down);
    hscRegisters_->setVisible(across);
    cmdBoxRegisters_->setVisible(across && down);
}

void RegistersPage::hscRegisters_Change() {
    ShiftContent();
    ShowBars();
}

void RegistersPage::vscRegisters_Change() {
    ShiftContent();
    ShowBars();
}

void RegistersPage::ShiftContent(int firstRow) {
    content_->move(-hscRegisters_->value(), -vscRegisters_->value());
    HideRowsAbove(firstRow);
    PlaceHeader();
    PlaceMark();
    PlaceHex();
}

/// Rows that are scrolled above the lower edge of the rulers don't show, not even in part.
void RegistersPage::HideRowsAbove(int firstRow) {
    for (int i = firstRow; i < Count(); ++i) {
        const Row& row = RowAt(i);
        const bool shown = PlaceOf(i).y() >= vscRegisters_->value();
        if (!shown && (row.bits->hasFocus() || row.load->hasFocus())) {
            vscRegisters_->setFocus(Qt::OtherFocusReason);   // Not to a row that the user didn't choose.
        }
        row.name->setVisible(shown);
        row.bits->setVisible(shown);
        row.load->setVisible(shown);
    }
}

/// Scrolls as little as needed to bring a place of the content into view, up and down by whole rows.
void RegistersPage::EnsureVisible(const QRect& place) {
    const QSize view = View();
    const int below = place.bottom() + 1 - view.height();
    if (place.top() < vscRegisters_->value()) {
        vscRegisters_->setValue(place.top());
    } else if (below > vscRegisters_->value()) {
        vscRegisters_->setValue(RoundedUp(below, RowPitch()));
    }
    const int beyond = place.right() + kPageMargin - view.width();
    if (place.left() - kPageMargin < hscRegisters_->value()) {
        hscRegisters_->setValue(beyond <= 0 ? 0
                                            : place.left() - kPageMargin);   // With the name, where that is possible.
    } else if (beyond > hscRegisters_->value()) {
        hscRegisters_->setValue(beyond);
    }
}

void RegistersPage::resizeEvent(QResizeEvent* /*event*/) {
    Arrange();
}

void RegistersPage::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange && selectedRow_ >= 0) {
        MarkSelection();
        MarkHex();
    } else if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        Arrange();
    }
    QWidget::changeEvent(event);
}

void RegistersPage::wheelEvent(QWheelEvent* event) {
    constexpr int kTurnOfRow = 40;   // Of a wheel's 120 a notch.
    wheel_ += event->angleDelta().y();
    const int rows = wheel_ / kTurnOfRow;
    wheel_ -= rows * kTurnOfRow;
    vscRegisters_->setValue(vscRegisters_->value() - rows * RowPitch());
    hscRegisters_->setValue(hscRegisters_->value() - event->angleDelta().x());
    event->accept();
}
