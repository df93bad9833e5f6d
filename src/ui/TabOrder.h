#pragma once

#include <QWidget>

/// Lets the Tab key go from one control of a page to another. Unlike QWidget::setTabOrder, which walks round all
/// controls of the window, it costs next to nothing where the key goes there already: other pages, which may have
/// controls in between, are hidden when these two are seen.
inline void TabFromTo(const QWidget& page, QWidget* first, QWidget* second) {
    const QWidget* next = first->nextInFocusChain();
    while (next != second && next != first && (next->focusPolicy() == Qt::NoFocus || !page.isAncestorOf(next))) {
        next = next->nextInFocusChain();
    }
    if (next != second) {
        QWidget::setTabOrder(first, second);
    }
}
