#pragma once

#include <QPainter>
#include <QWidget>

/// The rectangle round the number of the selected bit: a solid line round a data bit, a dashed one round a control
/// bit, which can't be changed here.
class RegisterBitMark : public QWidget {
    Q_OBJECT

public:
    explicit RegisterBitMark(QWidget* parent = nullptr) : QWidget(parent) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

    void Line(const QColor& colour, bool dashed) {
        QPalette colours;
        colours.setColor(QPalette::WindowText, colour);
        setPalette(colours);
        dashed_ = dashed;
        update();
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        constexpr int kWidth = 2;
        QPen pen(palette().color(QPalette::WindowText), kWidth);
        if (dashed_) {
            pen.setCapStyle(Qt::FlatCap);
            pen.setDashPattern({1.5, 1});
        }
        QPainter painter(this);
        painter.setPen(pen);
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }

private:
    bool dashed_ = false;
};
