#include "ui/controls/Spinner.h"

#include <QKeyEvent>
#include <QPainter>

#include "ui/controls/Colours.h"

namespace {

constexpr int kFocusFrame = 2;

}   // namespace

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

/// The frame that shows the focus needs room beside the buttons, which cover the rest.
void Spinner::Place() {
    const int frame = hasFocus() ? kFocusFrame : 0;
    const QRect inside = rect().adjusted(frame, frame, -frame, -frame);
    const int half = inside.height() / 2;
    up_->setGeometry(inside.left(), inside.top(), inside.width(), half);
    down_->setGeometry(inside.left(), inside.top() + half, inside.width(), inside.height() - half);
    update();
}

void Spinner::resizeEvent(QResizeEvent* /*event*/) {
    Place();
}

void Spinner::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    Place();
}

void Spinner::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    Place();
}

void Spinner::paintEvent(QPaintEvent* /*event*/) {
    if (hasFocus()) {
        QPainter(this).fillRect(rect(), FocusColour(palette()));
    }
}
