#pragma once

#include <QToolButton>
#include <QWidget>

/// A pair of small buttons, one above the other, that steps a value up and down. Held down, they repeat; with the
/// keyboard the arrow keys do the same.
class Spinner : public QWidget {
    Q_OBJECT

public:
    explicit Spinner(QWidget* parent = nullptr);

    /// What is stepped, in words, for screen readers and tests: "VCO frequency".
    void Name(const QString& what);
    [[nodiscard]] QSize sizeHint() const override;

    [[nodiscard]] QToolButton* UpButton() const { return up_; }
    [[nodiscard]] QToolButton* DownButton() const { return down_; }

signals:
    void Up();
    void Down();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void Place();
    QToolButton* MakeButton(Qt::ArrowType arrow, void (Spinner::*step)());

    QToolButton* up_;
    QToolButton* down_;
};
