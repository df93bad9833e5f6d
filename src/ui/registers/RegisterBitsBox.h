#pragma once

#include <QColor>
#include <QLineEdit>

/// The box with the bits of one register. It never edits itself: it tells what the user does in it, and shows the
/// text and the selection that it is given. The selection outlasts a change of the text and of the focus.
class RegisterBitsBox : public QLineEdit {
    Q_OBJECT

public:
    explicit RegisterBitsBox(QWidget* parent = nullptr);

    /// The face of rows and rulers: fixed-width, the blanks narrowed so that two take the room of one. A text in it
    /// that starts at TextLeft() stands exactly over the box's own.
    [[nodiscard]] static QFont Face();
    [[nodiscard]] static QFont PlainFace();   ///< The same with blanks of the usual width.
    [[nodiscard]] static int DigitWidth();
    [[nodiscard]] static int Pitch();                        ///< From one digit to the next.
    [[nodiscard]] int TextLeft() const;                      ///< Where the text starts within the box.
    [[nodiscard]] int WidthFor(const QString& bits) const;   ///< Of a box in which that text fits.

    void ShowBits(const QString& bits);

    /// The text position and length of the selection. A length of 0 is the place of the caret.
    [[nodiscard]] int Start() const { return start_; }
    [[nodiscard]] int Selected() const { return length_; }
    void Select(int start, int length);

    /// Draws a rectangle round the digit at Start(), and a selection, in that colour; an invalid one ends it.
    void Mark(const QColor& colour);

signals:
    void Clicked(int position);   ///< The left button, on the digit at that text position.
    void DoubleClicked();
    void KeyDown(int key);      ///< An arrow key.
    void KeyPress(QChar key);   ///< A key that stands for a character.
    void TabbedInto();          ///< The focus came by the Tab key.

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] int PositionAt(int x) const;
    void ApplySelection();

    int start_ = 0;
    int length_ = 0;
    bool pressed_ = false;   ///< A click has begun.
    QColor mark_;
};
