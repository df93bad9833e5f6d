#include "ui/bits/BitsFrame.h"
#include "ui/controls/Margins.h"
#include "ui/controls/Texts.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <algorithm>

namespace {

constexpr int kSpacing = 6;
constexpr int kColumnGap = 18;

// What one column of rows takes in the grid. The filler lets a long check box reach over without pulling the labels
// and boxes of the other rows apart.
enum GridColumn { kLabel, kBox, kFiller, kGridColumns };

/// A box asks for its smallest width, a list for what its entries need.
int WidthOf(const QWidget& control) {
    const bool ignoresHint = control.sizePolicy().horizontalPolicy() == QSizePolicy::Ignored;
    const int wanted = ignoresHint ? control.minimumWidth() : control.sizeHint().width();
    return std::min(wanted, control.maximumWidth());
}

}   // namespace

BitsFrame::BitsFrame(QWidget* parent) : QGroupBox(parent) {}

void BitsFrame::Caption(const QString& text) {
    caption_ = text;
    setTitle(WithoutMnemonics(text));
    setAccessibleName(text);
}

void BitsFrame::AddRow(QWidget* label, QWidget* box, QWidget* spinner) {
    rows_.push_back({label, box, spinner});
    for (QWidget* control : {label, box, spinner}) {
        if (control != nullptr) {
            if (control->parentWidget() != this) {
                control->setParent(this);
            }
            control->show();
        }
    }
    rowsPerColumn_ = 0;
}

void BitsFrame::RemoveRows() {
    delete layout();
    rows_.clear();
    rowsPerColumn_ = 0;
}

QSize BitsFrame::Flow(int height) {
    const int fitting = RowsThatFit(height);
    const int count = std::max(1, static_cast<int>(rows_.size()));
    const int columns = (count + fitting - 1) / fitting;
    if (const int even = (count + columns - 1) / columns; even != rowsPerColumn_) {
        Arrange(even);
    }
    return NeededSize();
}

/// Frames of several columns and those of check boxes alone have no edges in common with others.
bool BitsFrame::Shares() const {
    const bool labelled = std::any_of(rows_.begin(), rows_.end(), [](const Row& row) { return row.label != nullptr; });
    return labelled && rowsPerColumn_ >= static_cast<int>(rows_.size());
}

BitsFrame::Widths BitsFrame::NaturalWidths() const {
    constexpr int kLongLabel = 30;   // In letters. A longer one would push the boxes of other frames too far away.
    Widths widths;
    if (Shares()) {
        for (const Row& row : rows_) {
            if (row.label != nullptr) {
                widths.labels = std::max(widths.labels, row.label->sizeHint().width());
                widths.boxes =
                    std::max(widths.boxes, WidthOf(*row.box) + (row.spinner == nullptr ? 0 : WidthOf(*row.spinner)));
            }
        }
    }
    return widths.labels <= kLongLabel * fontMetrics().averageCharWidth() ? widths : Widths{};
}

void BitsFrame::ShareWidths(const Widths& widths) {
    auto* grid = static_cast<QGridLayout*>(layout());
    if (Shares() &&
        (grid->columnMinimumWidth(kLabel) != widths.labels || grid->columnMinimumWidth(kBox) != widths.boxes)) {
        grid->setColumnMinimumWidth(kLabel, widths.labels);
        grid->setColumnMinimumWidth(kBox, widths.boxes);
    }
}

int BitsFrame::RowHeight() const {
    int height = 1;
    for (const Row& row : rows_) {
        for (const QWidget* control : {row.label, row.box, row.spinner}) {
            height = std::max(height, control == nullptr ? 0 : control->sizeHint().height());
        }
    }
    return height;
}

int BitsFrame::RowsThatFit(int height) const {
    const QMargins frame = contentsMargins();
    const int room = height - frame.top() - frame.bottom() - kSpacing - kPageMargin;
    return std::max(1, (room + kSpacing) / (RowHeight() + kSpacing));
}

/// A check box reaches into the filler of its column. The grid adds its spacing to the last one only then.
bool BitsFrame::LastFillerTaken(int rowsPerColumn) const {
    const int last = std::max(0, static_cast<int>(rows_.size()) - 1);
    const int head = last / rowsPerColumn * rowsPerColumn;
    return std::any_of(rows_.begin() + head, rows_.end(), [](const Row& row) { return row.label == nullptr; });
}

void BitsFrame::Arrange(int rowsPerColumn) {
    delete layout();
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(kPageMargin, kSpacing,
                             LastFillerTaken(rowsPerColumn) ? kPageMargin - kSpacing : kPageMargin, kPageMargin);
    grid->setSpacing(kSpacing);
    for (int i = 0; i < static_cast<int>(rows_.size()); ++i) {
        const int first = i / rowsPerColumn * kGridColumns;
        if (i % rowsPerColumn == 0) {
            grid->setColumnStretch(first + kFiller, 1);
            if (first > 0) {
                grid->setColumnMinimumWidth(first - kGridColumns + kFiller, kColumnGap - kSpacing);
            }
        }
        Place(rows_[static_cast<std::size_t>(i)], i % rowsPerColumn, first);
    }
    grid->setRowStretch(rowsPerColumn, 1);
    rowsPerColumn_ = rowsPerColumn;
}

void BitsFrame::Place(const Row& row, int line, int column) {
    auto* grid = static_cast<QGridLayout*>(layout());
    if (row.label == nullptr) {
        // No wider than its text: a click on empty ground beside it must not switch anything.
        grid->addWidget(row.box, line, column, 1, kGridColumns, Qt::AlignLeft | Qt::AlignVCenter);
        return;
    }
    grid->addWidget(row.label, line, column + kLabel);
    if (row.spinner == nullptr) {
        grid->addWidget(row.box, line, column + kBox);
        return;
    }
    auto* pair = new QHBoxLayout;
    pair->setSpacing(0);
    pair->addWidget(row.box, 1);
    pair->addWidget(row.spinner);
    pair->addStretch();
    grid->addLayout(pair, line, column + kBox);
}

std::vector<QWidget*> BitsFrame::FocusOrder() const {
    std::vector<QWidget*> order;
    for (const Row& row : rows_) {
        order.push_back(row.box);
        if (row.spinner != nullptr) {
            order.push_back(row.spinner);
        }
    }
    return order;
}
