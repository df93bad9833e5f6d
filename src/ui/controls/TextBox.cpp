#include "ui/controls/TextBox.h"

#include <QContextMenuEvent>
#include <QKeyEvent>

bool IsUserMove(Qt::FocusReason reason) {
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::MouseFocusReason ||
           reason == Qt::ShortcutFocusReason;
}

TextBox::TextBox(QWidget* parent) : QLineEdit(parent) {}

void TextBox::ShowText(const QString& text) {
    if (this->text() != text) {
        setText(text);
        setCursorPosition(0);   // A long number shows its first digits.
    }
    setModified(false);
    shown_ = text;
}

void TextBox::Freshen(const QString& text) {
    if (!Edited()) {
        ShowText(text);
    }
}

void TextBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        event->accept();
        emit EnterPressed();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void TextBox::focusOutEvent(QFocusEvent* event) {
    const bool byUser = IsUserMove(event->reason());
    QLineEdit::focusOutEvent(event);
    if (byUser) {
        emit LeftByUser();
    }
}

void TextBox::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::RightButton) {
        event->accept();
        emit RightPressed();
        return;
    }
    QLineEdit::mousePressEvent(event);
}

void TextBox::contextMenuEvent(QContextMenuEvent* event) {
    event->accept();   // The right button is taken by the box's own answer to it.
}
