#pragma once

#include <QLabel>
#include <QToolButton>

/// A label whose text is cut short where it doesn't fit, and never widens what it stands in. On one line.
class ShortenedLabel : public QLabel {
    Q_OBJECT

public:
    explicit ShortenedLabel(QWidget* parent);
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// A button for a text alone, which is cut short where it doesn't fit.
class ShortenedButton : public QToolButton {
    Q_OBJECT

public:
    using QToolButton::QToolButton;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};
