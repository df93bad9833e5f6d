#pragma once

#include <QFocusEvent>
#include <QMouseEvent>
#include <QPushButton>

/// A button that tells of each mouse button that goes down on it, beside its clicks.
class RegisterLoadButton : public QPushButton {
    Q_OBJECT

public:
    using QPushButton::QPushButton;

signals:
    void MouseDown(Qt::MouseButton button, Qt::KeyboardModifiers shift);
    void TabbedInto();   ///< The focus came by the Tab key.

protected:
    void mousePressEvent(QMouseEvent* event) override {
        QPushButton::mousePressEvent(event);
        emit MouseDown(event->button(), event->modifiers());
        event->accept();
    }

    void focusInEvent(QFocusEvent* event) override {
        QPushButton::focusInEvent(event);
        if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason) {
            emit TabbedInto();
        }
    }
};
