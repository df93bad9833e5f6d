#include "ui/Spinner.h"

#include <QKeyEvent>
#include <QStyle>
#include <QStyleOptionFocusRect>
#include <QStylePainter>

Spinner::Spinner(QWidget* parent)
    : QWidget(parent), up_(MakeButton(Qt::UpArrow, &Spinner::Up)), down_(MakeButton(Qt::DownArrow, &Spinner::Down)) {
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QToolButton* Spinner::MakeButton(Qt::ArrowType arrow, void (Spinner::*step)()) {
    auto* button = new QToolButton(this);
    button->setArrowType(arrow);
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::NoFocus);   // A click gives the focus to the spinner; a proxy would be a Tab stop.
    connect(button, &QToolButton::clicked, this, step);
    return button;
}

void Spinner::Name(const QString& what) {
    setAccessibleName(tr("Step %1").arg(what));
    up_->setAccessibleName(tr("%1 up").arg(what));
    down_->setAccessibleName(tr("%1 down").arg(what));
}

QSize Spinner::sizeHint() const {
    const int height = fontMetrics().height() + 10;
    return {height * 3 / 4, height};
}

void Spinner::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Up) {
        emit Up();
    } else if (event->key() == Qt::Key_Down) {
        emit Down();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void Spinner::resizeEvent(QResizeEvent* /*event*/) {
    const int half = height() / 2;
    up_->setGeometry(0, 0, width(), half);
    down_->setGeometry(0, half, width(), height() - half);
}

void Spinner::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    update();
}

void Spinner::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    update();
}

void Spinner::paintEvent(QPaintEvent* /*event*/) {
    if (hasFocus()) {
        QStylePainter painter(this);
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    }
}
