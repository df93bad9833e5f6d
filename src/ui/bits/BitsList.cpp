#include "ui/bits/BitsList.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QWheelEvent>

BitsList::BitsList(QWidget* parent) : QComboBox(parent) {
    constexpr int kLongest = 480;
    setMaximumWidth(kLongest);
}

void BitsList::showPopup() {
    constexpr int kFrame = 12;
    const int entries = view()->sizeHintForColumn(0);
    view()->setMinimumWidth(entries + view()->verticalScrollBar()->sizeHint().width() + kFrame);
    QComboBox::showPopup();
}

void BitsList::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

void BitsList::keyPressEvent(QKeyEvent* event) {
    const QString text = event->text();
    if (event->key() != Qt::Key_Space && !text.isEmpty() && text.front().isPrint()) {
        event->ignore();
    } else {
        QComboBox::keyPressEvent(event);
    }
}
