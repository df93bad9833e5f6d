#include "ui/registers/RegisterBitsBox.h"

#include <QFontMetricsF>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionFrame>
#include <algorithm>

#include "ui/bits/BitRow.h"
#include "ui/controls/Colours.h"
#include "ui/controls/FixedFace.h"

namespace {

constexpr int kSideMargin = 3;
constexpr int kInnerMargin = 2;   // What a line edit keeps free at the sides of its text by itself.

struct BitsFace {
    QFont plain = FixedFace();
    QFont font = plain;
    double digit = QFontMetricsF(font).horizontalAdvance(QLatin1Char('0'));
    int pitch = qRound(2 * digit);   // Whole pixels, so that all digits look alike.

    // The spacing counts once for a run of blanks.
    BitsFace() { font.setWordSpacing(pitch - BitRow::kStep * digit); }
};

const BitsFace& TheFace() {
    static const BitsFace face;
    return face;
}

QColor TextOn(const QColor& colour) {
    constexpr int kLight = 140;
    return qGray(colour.rgb()) > kLight ? Qt::black : Qt::white;
}

}   // namespace

RegisterBitsBox::RegisterBitsBox(QWidget* parent) : QLineEdit(parent) {
    setReadOnly(true);
    setFrame(false);   // A frame of the style is too thick for narrow rows; a thin one is drawn below.
    setTextMargins(kSideMargin, 0, kSideMargin, 0);
    setFont(Face());
    setContextMenuPolicy(Qt::PreventContextMenu);
}

QFont RegisterBitsBox::Face() {
    return TheFace().font;
}

QFont RegisterBitsBox::PlainFace() {
    return TheFace().plain;
}

int RegisterBitsBox::DigitWidth() {
    return qRound(TheFace().digit);
}

int RegisterBitsBox::Pitch() {
    return TheFace().pitch;
}

int RegisterBitsBox::TextLeft() const {
    QStyleOptionFrame option;
    initStyleOption(&option);
    const QRect contents = style()->subElementRect(QStyle::SE_LineEditContents, &option, this);
    return contents.left() + textMargins().left() + kInnerMargin;
}

int RegisterBitsBox::WidthFor(const QString& bits) const {
    return 2 * TextLeft() + qRound(QFontMetricsF(font()).horizontalAdvance(bits)) + 1;
}

void RegisterBitsBox::ShowBits(const QString& bits) {
    setText(bits);
    ApplySelection();
}

void RegisterBitsBox::Select(int start, int length) {
    start_ = start;
    length_ = length;
    ApplySelection();
    update();
}

void RegisterBitsBox::ApplySelection() {
    if (length_ > 0) {
        setSelection(start_, length_);
    } else {
        deselect();
        setCursorPosition(start_);
    }
}

void RegisterBitsBox::Mark(const QColor& colour) {
    mark_ = colour;
    QPalette colours;   // Without colours of its own it takes those of the window.
    if (colour.isValid()) {
        colours.setColor(QPalette::Highlight, colour);
        colours.setColor(QPalette::HighlightedText, TextOn(colour));
    }
    setPalette(colours);
    update();
}

int RegisterBitsBox::PositionAt(int x) const {
    const int gap = Pitch() - DigitWidth();
    const int last = std::max(0, static_cast<int>(text().size() + 2) / BitRow::kStep - 1);
    return BitRow::kStep * std::clamp((x - TextLeft() + gap / 2) / Pitch(), 0, last);
}

void RegisterBitsBox::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    const auto commands = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down) {
        emit KeyDown(key);
    } else if (!event->text().isEmpty() && commands == Qt::NoModifier) {
        emit KeyPress(event->text().front());
    } else {
        event->ignore();
    }
}

void RegisterBitsBox::mousePressEvent(QMouseEvent* event) {
    pressed_ = event->button() == Qt::LeftButton;
}

void RegisterBitsBox::mouseMoveEvent(QMouseEvent* /*event*/) {}

void RegisterBitsBox::mouseReleaseEvent(QMouseEvent* event) {
    if (pressed_ && event->button() == Qt::LeftButton && rect().contains(event->pos())) {
        emit Clicked(PositionAt(event->pos().x()));
    }
    pressed_ = false;
}

void RegisterBitsBox::mouseDoubleClickEvent(QMouseEvent* event) {
    pressed_ = false;
    if (event->button() == Qt::LeftButton) {
        emit DoubleClicked();
    }
}

void RegisterBitsBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    ApplySelection();   // The Tab key has selected all.
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason) {
        emit TabbedInto();
    }
}

void RegisterBitsBox::focusOutEvent(QFocusEvent* event) {
    pressed_ = false;
    QLineEdit::focusOutEvent(event);   // Hides the selection, which comes back with the focus.
    update();
}

void RegisterBitsBox::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    const QPalette& window = parentWidget()->palette();
    painter.setPen(hasFocus() ? FocusColour(window) : window.color(QPalette::Mid));
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));   // Whole lines at broken scales too.
    if (mark_.isValid()) {
        painter.setPen(mark_);
        const int left = TextLeft() + start_ / BitRow::kStep * Pitch();
        const double gap = length_ > 0 ? 0.5 : 1.5;   // Close to the selection, which is filled.
        painter.drawRect(QRectF(left - gap, 2.5, DigitWidth() + 2 * gap, height() - 5));
    }
}
