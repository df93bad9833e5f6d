#include "ui/controls/ShortenedText.h"

#include <QPainter>
#include <QStyleOptionToolButton>
#include <QStylePainter>

namespace {

/// Of a control that may become narrower than its text.
QSize Narrowed(const QWidget& control, QSize hint) {
    constexpr int kLetters = 4;
    return {std::min(hint.width(), kLetters * control.fontMetrics().maxWidth()), hint.height()};
}

}   // namespace

ShortenedLabel::ShortenedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

QSize ShortenedLabel::minimumSizeHint() const {
    return Narrowed(*this, QLabel::minimumSizeHint());
}

void ShortenedLabel::paintEvent(QPaintEvent* /*event*/) {
    QString line = text();
    line.replace(QLatin1Char('\n'), QLatin1Char(' '));
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter, fontMetrics().elidedText(line, Qt::ElideRight, width()));
}

QSize ShortenedButton::minimumSizeHint() const {
    return Narrowed(*this, QToolButton::minimumSizeHint());
}

void ShortenedButton::paintEvent(QPaintEvent* /*event*/) {
    QStyleOptionToolButton option;
    initStyleOption(&option);
    const int margins = sizeHint().width() - fontMetrics().horizontalAdvance(text());
    option.text = fontMetrics().elidedText(text(), Qt::ElideRight, width() - margins);
    QStylePainter(this).drawComplexControl(QStyle::CC_ToolButton, option);
}
