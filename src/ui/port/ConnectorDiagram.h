#pragma once

#include <QLabel>
#include <QWidget>
#include <array>
#include <vector>

#include "core/LineUse.h"
#include "ui/controls/ControlArray.h"
#include "ui/port/ConnectorGeometry.h"
#include "ui/port/ConnectorShape.h"

/// The wiring between the 25-way connector of the port and the board connector, as one sees them on the bench. Pins
/// and wires take the colour of what their line does, and the same stands beside them in words.
class ConnectorDiagram : public QWidget {
    Q_OBJECT

public:
    explicit ConnectorDiagram(QWidget* parent = nullptr);

    void Show(const std::array<LineUse, kPortLines>& uses);

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    /// What has the colour of one line.
    struct LineShapes {
        const DiagramWire* wire = nullptr;
        std::vector<ConnectorShape*> shapes;   ///< Both pins, then the segments.
        QString text;
    };

    void MakePins();
    void MakeWires();
    void MakeLegend();
    void ShowLine(int line, const LineUse& use);
    [[nodiscard]] int FittingUnit() const;
    void Place();
    void Place(QWidget& widget, const DiagramPoint& centre) const;
    [[nodiscard]] QRect Box(const DiagramBox& box) const;
    [[nodiscard]] QRect Segment(const DiagramPoint& from, const DiagramPoint& to) const;
    [[nodiscard]] QColor Outline() const;
    void PaintBodies(QPainter& painter) const;
    void PaintOutlines(QPainter& painter) const;
    void PaintNumbers(QPainter& painter) const;
    void PaintUses(QPainter& painter) const;

    int unit_ = 0;   ///< Pixels of a unit of the geometry.
    ControlArray<ConnectorShape> db_{QStringLiteral("DB")};
    ControlArray<ConnectorShape> pinheader_{QStringLiteral("Pinheader")};
    std::array<LineShapes, kPortLines> lines_;
    std::array<LineUse, kPortLines> uses_;
    std::vector<ConnectorShape*> swatches_;
    std::vector<QLabel*> legend_;
    QLabel* connectorLabel_;
    QLabel* headerLabel_;
};
