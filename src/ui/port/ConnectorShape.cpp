#include "ui/port/ConnectorShape.h"

#include <QPainter>

ConnectorShape::ConnectorShape(Form form, QColor color, QWidget* parent)
    : QWidget(parent), form_(form), color_(color) {}

void ConnectorShape::Color(QColor color) {
    if (color_ != color) {
        color_ = color;
        update();
    }
}

void ConnectorShape::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (form_ == Form::Square) {
        painter.fillRect(rect(), color_);
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color_);
    painter.drawEllipse(rect());
}
