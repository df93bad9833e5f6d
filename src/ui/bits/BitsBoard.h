#pragma once

#include <QScrollArea>
#include <vector>

#include "ui/bits/BitsFrame.h"

/// Lays frames out from top to bottom and, where the height ends, in further columns to the right, and scrolls to
/// what doesn't fit. Hidden frames take no room. The frame of the pins stands to the right of all others.
class BitsBoard : public QScrollArea {
    Q_OBJECT

public:
    explicit BitsBoard(QWidget* parent);

    BitsFrame* MakeFrame() { return new BitsFrame(widget()); }

    /// The frames to lay out, in their order; the last is that of the pins.
    void Frames(std::vector<BitsFrame*> frames);

    void Arrange();       ///< Lays out now.
    void ArrangeSoon();   ///< Once, when the window next handles events.

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    struct Placed {
        BitsFrame* frame;
        QSize size;
    };
    using Column = std::vector<Placed>;

    [[nodiscard]] std::vector<Column> FlowInto(int height) const;
    static void Align(Column& column);
    static QSize Place(const std::vector<Column>& columns);

    std::vector<BitsFrame*> frames_;
};
