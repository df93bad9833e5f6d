#include "ui/BitsList.h"

#include <QAbstractItemView>
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
