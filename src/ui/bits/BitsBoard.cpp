#include "ui/bits/BitsBoard.h"
#include "ui/controls/Margins.h"

#include <QCoreApplication>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>

namespace {

constexpr int kGap = 9;

}   // namespace

BitsBoard::BitsBoard(QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);   // Moving through the controls scrolls to each.
    setWidget(new QWidget);
    widget()->setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
}

void BitsBoard::Frames(std::vector<BitsFrame*> frames) {
    frames_ = std::move(frames);
    ArrangeSoon();
}

void BitsBoard::ArrangeSoon() {
    QCoreApplication::postEvent(this, new QEvent(QEvent::LayoutRequest));
}

void BitsBoard::Arrange() {
    const QSize room = maximumViewportSize();
    QSize size = Place(FlowInto(room.height()));
    if (size.width() > room.width()) {
        size = Place(FlowInto(room.height() - horizontalScrollBar()->sizeHint().height()));
    }
    widget()->resize(size);
}

std::vector<BitsBoard::Column> BitsBoard::FlowInto(int height) const {
    std::vector<Column> columns;
    int top = kPageMargin;
    for (BitsFrame* frame : frames_) {
        if (frame->isHidden()) {
            continue;
        }
        const QSize size = frame->Flow(height - 2 * kPageMargin);
        const bool below = !columns.empty() && frame != frames_.back() && top + size.height() + kPageMargin <= height;
        if (!below) {
            columns.emplace_back();
            top = kPageMargin;
        }
        columns.back().push_back({frame, size});
        top += size.height() + kGap;
    }
    std::for_each(columns.begin(), columns.end(), Align);
    return columns;
}

/// The labels and boxes of frames below each other line up.
void BitsBoard::Align(Column& column) {
    BitsFrame::Widths widths;
    for (const Placed& placed : column) {
        const auto natural = placed.frame->NaturalWidths();
        widths = {std::max(widths.labels, natural.labels), std::max(widths.boxes, natural.boxes)};
    }
    for (Placed& placed : column) {
        placed.frame->ShareWidths(widths);
        placed.size.setWidth(placed.frame->NeededSize().width());
    }
}

/// Frames of one column are as wide as the widest of them.
QSize BitsBoard::Place(const std::vector<Column>& columns) {
    int left = kPageMargin;
    int bottom = 0;
    for (const Column& column : columns) {
        const auto wider = [](const Placed& one, const Placed& two) { return one.size.width() < two.size.width(); };
        const int width = std::max_element(column.begin(), column.end(), wider)->size.width();
        int top = kPageMargin;
        for (const Placed& placed : column) {
            placed.frame->setGeometry(left, top, width, placed.size.height());
            top += placed.size.height() + kGap;
        }
        left += width + kGap;
        bottom = std::max(bottom, top - kGap);
    }
    return {left - kGap + kPageMargin, bottom + kPageMargin};
}

bool BitsBoard::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::FontChange ||
        event->type() == QEvent::StyleChange) {
        Arrange();
    }
    return QScrollArea::event(event);
}

void BitsBoard::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    Arrange();
}

/// Where there is nothing to scroll up and down, the wheel scrolls sideways.
void BitsBoard::wheelEvent(QWheelEvent* event) {
    if (verticalScrollBar()->maximum() == 0) {
        QCoreApplication::sendEvent(horizontalScrollBar(), event);
    } else {
        QScrollArea::wheelEvent(event);
    }
}
