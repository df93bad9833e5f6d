#include "ui/pll/PLLDiagramItems.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>
#include <algorithm>
#include <cmath>

#include "ui/controls/Colours.h"

namespace {

int AtLeastOne(double pixels) {
    return std::max(1, static_cast<int>(std::lround(pixels)));
}

}   // namespace

void DiagramLine::Run(QPoint start, QPoint end, Arrow arrow, double unit) {
    constexpr double kThickness = 0.45;
    constexpr double kHeadLength = 2.6;
    start_ = start;
    end_ = end;
    arrow_ = arrow;
    thickness_ = AtLeastOne(unit * kThickness);
    headLength_ = AtLeastOne(unit * kHeadLength);
    const int margin = headLength_ / 2 + thickness_;
    const int left = std::min(start.x(), end.x());
    const int top = std::min(start.y(), end.y());
    setGeometry(left - margin, top - margin, std::abs(end.x() - start.x()) + 2 * margin,
                std::abs(end.y() - start.y()) + 2 * margin);
    update();
}

void DiagramLine::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.translate(-pos());
    const QColor colour = palette().color(QPalette::WindowText);
    const bool level = start_.y() == end_.y();
    QPoint tip = arrow_ == Arrow::AtStart ? start_ : end_;
    QPoint tail = arrow_ == Arrow::AtStart ? end_ : start_;
    const QPoint along = level ? QPoint(tip.x() > tail.x() ? 1 : -1, 0) : QPoint(0, tip.y() > tail.y() ? 1 : -1);
    if (arrow_ != Arrow::None) {
        const QPoint base = tip - along * headLength_;
        const QPoint across = QPoint(along.y(), along.x()) * (headLength_ / 2);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(colour);
        painter.drawPolygon(QPolygon({tip, base + across, base - across}));
        painter.setRenderHint(QPainter::Antialiasing, false);
        tip = base;
    }
    // Whole pixels, half the thickness beyond the ends: sharp at every scale, and corners close.
    const int half = thickness_ / 2;
    const QPoint low(std::min(tip.x(), tail.x()), std::min(tip.y(), tail.y()));
    const QSize size(std::abs(tip.x() - tail.x()), std::abs(tip.y() - tail.y()));
    painter.fillRect(QRect(low - QPoint(half, half), size + QSize(thickness_, thickness_)), colour);
}

DiagramShape::DiagramShape(Figure figure, QWidget* parent) : QWidget(parent), figure_(figure) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void DiagramShape::Place(const QRect& at, double unit) {
    unit_ = unit;
    setGeometry(at);
    update();
}

void DiagramShape::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const bool filled = figure_ != Figure::Outline && figure_ != Figure::Frame;
    const QColor window = palette().color(QPalette::Window);
    const QColor ink = palette().color(QPalette::WindowText);
    const double width = AtLeastOne(unit_ * (figure_ == Figure::Outline ? 0.5 : 0.3));
    painter.setPen(QPen(Between(ink, window, filled ? 0.15 : 0.5), width));
    painter.setBrush(!filled ? QBrush(Qt::NoBrush)
                             : palette().brush(figure_ == Figure::Box ? QPalette::Base : QPalette::Button));
    const QRectF inside = QRectF(rect()).adjusted(width / 2, width / 2, -width / 2, -width / 2);
    painter.setRenderHint(QPainter::Antialiasing);
    switch (figure_) {
        case Figure::Circle:
            painter.drawEllipse(inside);
            break;
        case Figure::Box:
        case Figure::Frame:
            painter.drawRect(inside);
            break;
        case Figure::RoundBox:
        case Figure::Outline:
            painter.drawRoundedRect(inside, 3 * unit_, 3 * unit_);
            break;
    }
}

BlockLabel::BlockLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setForegroundRole(QPalette::Text);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
}

void BlockLabel::mousePressEvent(QMouseEvent* event) {
    event->setAccepted(event->button() == Qt::LeftButton);
}

void BlockLabel::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) {
        emit Clicked();
    }
}

void BlockLabel::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Space || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (!event->isAutoRepeat()) {
            emit Clicked();
        }
    } else {
        QLabel::keyPressEvent(event);
    }
}

void BlockLabel::focusInEvent(QFocusEvent* event) {
    QLabel::focusInEvent(event);
    update();
}

void BlockLabel::focusOutEvent(QFocusEvent* event) {
    QLabel::focusOutEvent(event);
    update();
}

void BlockLabel::changeEvent(QEvent* event) {
    if (event->type() == QEvent::EnabledChange) {
        setCursor(isEnabled() ? Qt::PointingHandCursor : Qt::ArrowCursor);
    }
    QLabel::changeEvent(event);
}

void BlockLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const int flags = Qt::AlignCenter | Qt::TextWordWrap;
    const bool fits = rect().contains(fontMetrics().boundingRect(rect(), flags, text()));
    const QString shown = fits ? text() : fontMetrics().elidedText(text(), Qt::ElideRight, width());
    painter.setPen(isEnabled() ? palette().color(foregroundRole()) : PaleText(palette()));
    painter.drawText(rect(), flags, shown);
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.backgroundColor = palette().color(QPalette::Base);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

CheckValueBox::CheckValueBox(QWidget* parent) : QLineEdit(parent) {
    setReadOnly(true);
    setAlignment(Qt::AlignRight);
    Paint(Qt::green);
}

void CheckValueBox::Broken(bool broken) {
    if (broken != broken_) {
        broken_ = broken;
        QFont weight = font();
        weight.setBold(broken);
        setFont(weight);
        Paint(broken ? Qt::red : Qt::green);
    }
}

/// Both colours are bright in any theme, so the text is black in any theme.
void CheckValueBox::Paint(const QColor& background) {
    QPalette colours = palette();
    colours.setColor(QPalette::Base, background);
    colours.setColor(QPalette::Text, Qt::black);
    setPalette(colours);
}

void CheckValueBox::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    if (!broken_) {
        return;
    }
    QPainter painter(this);
    const int border = AtLeastOne(fontMetrics().height() / 6.0);
    painter.setPen(QPen(Qt::black, border, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(QRectF(rect()).adjusted(border / 2.0, border / 2.0, -border / 2.0, -border / 2.0));
    painter.drawText(rect().adjusted(3 * border, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("!"));
}
