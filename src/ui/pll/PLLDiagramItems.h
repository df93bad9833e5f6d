#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QWidget>
#include <string>

// What the block diagram of a PLL is drawn with. All positions are pixels of the diagram.

/// A straight signal line between two points. An arrow head stands where the signal enters a block; its tip touches
/// the end point. Corners close where lines share an end point.
class DiagramLine : public QWidget {
    Q_OBJECT

public:
    enum class Arrow : unsigned char { None, AtStart, AtEnd };

    explicit DiagramLine(QWidget* parent) : QWidget(parent) { setAttribute(Qt::WA_TransparentForMouseEvents); }

    /// Lays the line, level or upright. Thickness and the head's length come from `unit`, the diagram's grid.
    void Run(QPoint start, QPoint end, Arrow arrow, double unit);
    [[nodiscard]] QPoint Start() const { return start_; }
    [[nodiscard]] QPoint End() const { return end_; }
    [[nodiscard]] Arrow Head() const { return arrow_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QPoint start_;
    QPoint end_;
    Arrow arrow_ = Arrow::None;
    int thickness_ = 2;
    int headLength_ = 10;
};

/// The figure of a block.
class DiagramShape : public QWidget {
    Q_OBJECT

public:
    enum class Figure : unsigned char {
        Circle,     ///< In the button colour.
        Box,        ///< In the colour of text boxes.
        RoundBox,   ///< In the button colour.
        Outline,    ///< Rounded, not filled, pale: encloses other blocks.
        Frame       ///< Plain, not filled.
    };

    DiagramShape(Figure figure, QWidget* parent);
    void Place(const QRect& at, double unit);   ///< Line width and corners come from the diagram's grid.

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Figure figure_;
    double unit_ = 4;
};

/// The text in a block, which a click, Space or Enter switches on. Its tag names the bit field that it shows. A text
/// too long for its place is wrapped, or shortened with dots.
class BlockLabel : public QLabel {
    Q_OBJECT

public:
    explicit BlockLabel(QWidget* parent);

    [[nodiscard]] const std::string& Tag() const noexcept { return tag_; }
    void Tag(std::string field) { tag_ = std::move(field); }

signals:
    void Clicked();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    std::string tag_;
};

/// A value of the prescaler check, green while its rule holds. Once it is broken the box is red, has a heavy border
/// and an exclamation mark, so that nobody has to tell the colours apart.
class CheckValueBox : public QLineEdit {
    Q_OBJECT

public:
    explicit CheckValueBox(QWidget* parent);
    void Broken(bool broken);
    [[nodiscard]] bool Broken() const noexcept { return broken_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void Paint(const QColor& background);

    bool broken_ = false;
};
