#include <QFontInfo>
#include <QPainter>
#include <algorithm>

#include "ui/controls/Colours.h"
#include "ui/port/ConnectorDiagram.h"

// What the diagram paints itself, under its pins and wires: connector bodies, outlines and texts.

namespace {

QFont SmallFont(const QFont& font) {
    constexpr double kSmaller = 0.85;
    QFont small = font;
    small.setPointSizeF(QFontInfo(font).pointSizeF() * kSmaller);
    return small;
}

}   // namespace

/// Stands out against the background and against all colours of the lines.
QColor ConnectorDiagram::Outline() const {
    constexpr double kPaleness = 1.0 / 3;
    return Between(palette().color(QPalette::Text), palette().color(QPalette::Base), kPaleness);
}

void ConnectorDiagram::PaintBodies(QPainter& painter) const {
    painter.setPen(QPen(Outline(), 1, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(palette().color(QPalette::Window));
    QPolygonF shell;
    for (const DiagramPoint& corner : kShell) {
        shell << QPointF(corner.x * unit_ + 0.5, corner.y * unit_ + 0.5);
    }
    painter.drawPolygon(shell);
    painter.drawRect(QRectF(Box(kHeader)).adjusted(0.5, 0.5, 0.5, 0.5));
}

/// A line of one pixel round every pin and wire, under them.
void ConnectorDiagram::PaintOutlines(QPainter& painter) const {
    painter.setPen(Qt::NoPen);
    painter.setBrush(Outline());
    for (const auto& [n, pin] : db_) {
        painter.drawEllipse(pin->geometry().adjusted(-1, -1, 1, 1));
    }
    const auto frame = [&painter](const QWidget* shape) { painter.drawRect(shape->geometry().adjusted(-1, -1, 1, 1)); };
    for (const LineShapes& line : lines_) {
        std::for_each(line.shapes.begin() + 1, line.shapes.end(), frame);
    }
    frame(pinheader_[kGroundPin]);
    std::for_each(swatches_.begin(), swatches_.end(), frame);
    painter.setPen(QPen(Outline(), 1, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.setBrush(Qt::NoBrush);
    const int size = kPinSize * unit_;
    const QPoint corner = QPoint(kHeaderFree.x, kHeaderFree.y) * unit_ - QPoint(size, size) / 2;
    painter.drawRect(QRectF(corner, QSize(size, size)).adjusted(-0.5, -0.5, 0.5, 0.5));   // As large as its neighbours.
}

void ConnectorDiagram::PaintNumbers(QPainter& painter) const {
    constexpr int kLongRow = 13;
    painter.setFont(SmallFont(font()));
    painter.setPen(palette().color(QPalette::WindowText));
    for (int n = 1; n <= kConnectorPins; ++n) {
        const auto [x, y] = PinPlace(n);
        const bool longRow = n <= kLongRow;
        constexpr int kRoom = 8;
        const DiagramBox beside{longRow ? x - kRoom - 3 : x + 3, y - 3, kRoom, 6};
        painter.drawText(Box(beside), Qt::AlignVCenter | (longRow ? Qt::AlignRight : Qt::AlignLeft),
                         QString::number(n));
    }
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(Box(kGroundText), Qt::AlignVCenter | Qt::AlignRight, tr("Ground"));
    painter.drawText(Box(kHeaderGroundText), Qt::AlignCenter, tr("GND"));
}

void ConnectorDiagram::PaintUses(QPainter& painter) const {
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        const QRect room = Box(lines_[i].wire->text);
        const bool used = uses_[i].role != LineRole::None;
        QFont shown = font();
        shown.setBold(uses_[i].role == LineRole::Conflict);
        painter.setFont(shown);
        painter.setPen(used ? palette().color(QPalette::Text) : PaleText(palette()));
        painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft,
                         painter.fontMetrics().elidedText(lines_[i].text, Qt::ElideRight, room.width()));
    }
}

void ConnectorDiagram::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    painter.setRenderHint(QPainter::Antialiasing);
    PaintBodies(painter);
    PaintOutlines(painter);
    PaintNumbers(painter);
    PaintUses(painter);
    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(palette().color(QPalette::Highlight));
        painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    }
}
