#pragma once

#include <QWidget>

/// A piece of the connector diagram: a pin or a segment of a wire, filled with one colour.
class ConnectorShape : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QColor color READ Color WRITE Color)

public:
    enum class Form { Round, Square };

    ConnectorShape(Form form, QColor color, QWidget* parent);

    [[nodiscard]] QColor Color() const { return color_; }
    void Color(QColor color);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Form form_;
    QColor color_;
};
