#include "ui/port/ConnectorDiagram.h"

#include <QEvent>
#include <algorithm>

#include "ui/port/LineOptions.h"

namespace {

// The colours of the roles, and of ground, in the order of the legend; what isn't used has none there.
constexpr QColor kUnused(0x80, 0x80, 0x80);
constexpr QColor kGround(0, 0, 0);

constexpr QColor ColorOf(LineRole role) {
    switch (role) {
        case LineRole::Clock:
            return {0, 255, 255};
        case LineRole::Data:
            return {0, 255, 0};
        case LineRole::LE:
            return {255, 0, 255};
        case LineRole::Pin:
            return {0, 0, 255};
        case LineRole::Conflict:
            return {255, 0, 0};
        case LineRole::None:
            break;
    }
    return kUnused;
}

struct LegendRow {
    const char* name;
    const char* text;
    QColor color;
};

constexpr std::array<LegendRow, 6> kLegendRows{{
    {"Label4", "Clock", ColorOf(LineRole::Clock)},
    {"Label5", "Data", ColorOf(LineRole::Data)},
    {"Label6", "LE ( Latch Enable )", ColorOf(LineRole::LE)},
    {"Label7", "Other Pins", ColorOf(LineRole::Pin)},
    {"Label8", "Ground", kGround},
    {"Label9", "Address Conflict", ColorOf(LineRole::Conflict)},
}};

/// "C2: LE"; with a mark in front of two jobs and more: the colour alone would not reach every eye.
QString UseText(int line, const LineUse& use) {
    if (use.names.empty()) {
        return LineCaption(line);
    }
    QStringList names;
    for (const std::string& name : use.names) {
        names << QString::fromStdString(name);
    }
    const QString mark = use.role == LineRole::Conflict ? QStringLiteral("\u26A0 ") : QString();
    return LineCaption(line) + QStringLiteral(": ") + mark + names.join(QStringLiteral(" + "));
}

QLabel* MakeLabel(const char* name, const char* text, QWidget* parent) {
    auto* label = new QLabel(QString::fromLatin1(text), parent);
    label->setObjectName(QString::fromLatin1(name));
    return label;
}

}   // namespace

ConnectorDiagram::ConnectorDiagram(QWidget* parent)
    : QWidget(parent),
      connectorLabel_(MakeLabel("Label2", "DB 25 Connector", this)),
      headerLabel_(MakeLabel("PinConnectorLabel", "10/14 Pin Connector ( Top View )", this)) {
    setFocusPolicy(Qt::TabFocus);   // Brings the diagram into view and to the ears of a screen reader.
    setAccessibleName(tr("Port setup diagram"));
    connectorLabel_->setAlignment(Qt::AlignCenter);
    headerLabel_->setAlignment(Qt::AlignCenter);
    MakeWires();
    MakePins();
    MakeLegend();
    Place();
    for (int line = 0; line < kPortLines; ++line) {
        ShowLine(line, {});
    }
}

void ConnectorDiagram::MakeWires() {
    for (const DiagramWire& wire : kWires) {
        int line = 0;
        while (ConnectorPin(line) != wire.pin) {
            ++line;
        }
        LineShapes& made = lines_[static_cast<std::size_t>(line)];
        made.wire = &wire;
        for (std::size_t i = 0; i < wire.segments; ++i) {
            auto* segment = new ConnectorShape(ConnectorShape::Form::Square, kUnused, this);
            segment->setObjectName(QStringLiteral("line%1(%2)").arg(QChar('a' + static_cast<int>(i))).arg(wire.pin));
            made.shapes.push_back(segment);
        }
    }
}

/// The pins lie over the ends of their wires.
void ConnectorDiagram::MakePins() {
    for (int n = 1; n <= kConnectorPins; ++n) {
        db_.Add(n, new ConnectorShape(ConnectorShape::Form::Round, n == kGroundPin ? kGround : kUnused, this));
        db_[n]->setAccessibleName(tr("Pin %1 of the 25-way connector").arg(n));
    }
    for (LineShapes& line : lines_) {
        const int pin = line.wire->pin;
        auto* header = new ConnectorShape(ConnectorShape::Form::Square, kUnused, this);
        line.shapes.insert(line.shapes.begin(), {db_[pin], pinheader_.Add(pin, header)});
    }
    pinheader_.Add(kGroundPin, new ConnectorShape(ConnectorShape::Form::Square, kGround, this));
    db_[kGroundPin]->setToolTip(tr("Pin %1: ground").arg(kGroundPin));
    pinheader_[kGroundPin]->setToolTip(tr("Ground"));
    pinheader_[kGroundPin]->setAccessibleName(tr("Ground"));
}

void ConnectorDiagram::MakeLegend() {
    for (const LegendRow& row : kLegendRows) {
        swatches_.push_back(new ConnectorShape(ConnectorShape::Form::Square, row.color, this));
        legend_.push_back(MakeLabel(row.name, row.text, this));
    }
}

void ConnectorDiagram::Show(const std::array<LineUse, kPortLines>& uses) {
    if (uses == uses_) {
        return;
    }
    for (std::size_t line = 0; line < uses.size(); ++line) {
        if (uses[line] != uses_[line]) {
            ShowLine(static_cast<int>(line), uses[line]);
        }
    }
    uses_ = uses;
    QStringList texts;
    for (const LineShapes& line : lines_) {
        texts << line.text;
    }
    setAccessibleDescription(texts.join(QStringLiteral("; ")));
    update();
}

void ConnectorDiagram::ShowLine(int line, const LineUse& use) {
    LineShapes& shown = lines_[static_cast<std::size_t>(line)];
    shown.text = UseText(line, use);
    const QString tip = tr("Pin %1 of the 25-way connector, line %2").arg(shown.wire->pin).arg(shown.text);
    for (ConnectorShape* shape : shown.shapes) {
        shape->Color(ColorOf(use.role));
        shape->setToolTip(tip);
        shape->setAccessibleName(tip);
    }
}

QRect ConnectorDiagram::Box(const DiagramBox& box) const {
    return {box.x * unit_, box.y * unit_, box.width * unit_, box.height * unit_};
}

/// The ends overlap the next segment's, so that corners are full.
QRect ConnectorDiagram::Segment(const DiagramPoint& from, const DiagramPoint& to) const {
    const int half = unit_ / 2;
    const int left = std::min(from.x, to.x) * unit_ - half;
    const int top = std::min(from.y, to.y) * unit_ - half;
    return {left, top, std::abs(from.x - to.x) * unit_ + unit_, std::abs(from.y - to.y) * unit_ + unit_};
}

void ConnectorDiagram::Place(QWidget& widget, const DiagramPoint& centre) const {
    const int size = kPinSize * unit_;
    widget.setGeometry(centre.x * unit_ - size / 2, centre.y * unit_ - size / 2, size, size);
}

/// Everything follows the size of the font: the texts stand between the wires.
int ConnectorDiagram::FittingUnit() const {
    constexpr int kSmallest = 3;
    constexpr int kPitch = 8;
    constexpr int kClearance = 6;
    const auto fitting = [](int pixels, int units) { return (pixels + units - 1) / units; };
    int unit = std::max(kSmallest, fitting(fontMetrics().height() + kClearance, kPitch));
    unit = std::max(unit, fitting(headerLabel_->sizeHint().width(), kHeaderLabel.width));
    for (const QLabel* label : legend_) {
        unit = std::max(unit, fitting(label->sizeHint().width(), kLegend.width - kLegendText));
    }
    return unit;
}

void ConnectorDiagram::Place() {
    unit_ = FittingUnit();
    setFixedSize(kDiagramWidth * unit_, kDiagramHeight * unit_);
    for (const auto& [n, pin] : db_) {
        Place(*pin, PinPlace(n));
    }
    for (const LineShapes& line : lines_) {
        DiagramPoint from = PinPlace(line.wire->pin);
        for (std::size_t i = 0; i < line.wire->segments; ++i) {
            line.shapes[i + 2]->setGeometry(Segment(from, line.wire->bends[i]));
            from = line.wire->bends[i];
        }
        Place(*line.shapes[1], from);
    }
    Place(*pinheader_[kGroundPin], kHeaderGround);
    connectorLabel_->setGeometry(Box(kConnectorLabel));
    headerLabel_->setGeometry(Box(kHeaderLabel));
    DiagramBox row = kLegend;
    for (std::size_t i = 0; i < legend_.size(); ++i, row.y += row.height) {
        Place(*swatches_[i], {row.x + kPinSize / 2, row.y + row.height / 2});
        legend_[i]->setGeometry(Box({row.x + kLegendText, row.y, row.width - kLegendText, row.height}));
    }
}

void ConnectorDiagram::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        Place();
    }
}
