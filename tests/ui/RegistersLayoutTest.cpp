#include <QScrollBar>
#include <cmath>
#include <set>

#include "support/Cases.h"
#include "ui/RegistersFixture.h"

// Where things stand on the Registers page: rulers, columns, scrolling.

namespace {

/// The pixel columns of which dark ink takes a clear share. The background is the colour of the upper left corner, and
/// not the same behind ruler and row.
std::set<int> Ink(const QImage& image, QRect inWindow) {
    const auto scale = image.devicePixelRatio();
    const QRect place = QRectF(inWindow.topLeft() * scale, inWindow.size() * scale).toAlignedRect();
    const int background = qGray(image.pixel(place.topLeft()));
    std::set<int> columns;
    for (int x = place.left(); x <= place.right(); ++x) {
        for (int y = place.top(); y <= place.bottom(); ++y) {
            if (3 * std::abs(qGray(image.pixel(x, y)) - background) > background) {
                columns.insert(x);
            }
        }
    }
    return columns;
}

}   // namespace

class RegistersLayoutTest : public RegistersFixture {};

/// Ruler and row show the same digits wherever a bit's number ends in 0 or 1; their ink must stand in the same columns
/// of the screen.
TEST_F(RegistersLayoutTest, RulersStandExactlyOverTheDigits) {
    Resize(2600, 620);
    for (const int length : {8, 24, 32, 53}) {
        double value = 0;
        for (int bit = 1; bit < length; bit += 10) {
            value += std::exp2(bit);
        }
        Open(length, 0, std::vector<double>(length == 24 ? 71 : 1, value));
        for (const bool lowFirst : {false, true}) {
            Order(lowFirst);
            const QImage image = Window().grab().toImage();
            for (int bit = 0; bit < length; bit += bit % 10 == 0 ? 1 : 9) {
                for (int column = 0; Has(Member("lblOnes", column)); ++column) {
                    const int row = column * 35;
                    const int place = 3 * (lowFirst ? bit : length - 1 - bit);
                    const QPoint digit = InWindow(Member("txtRegBits", row), {DigitMiddle(row, place) - 5, 3});
                    const QPoint ruler(digit.x(), InWindow(Member("lblOnes", column)).y());
                    const auto inRow = Ink(image, {digit, QSize(11, Box(row)->height() - 6)});
                    EXPECT_FALSE(inRow.empty());
                    EXPECT_EQ(inRow, Ink(image, {ruler, QSize(11, Child(Member("lblOnes", column))->height())}))
                        << length << " bits, bit " << bit << ", column " << column;
                }
            }
        }
        Order(false);
    }
}

TEST_F(RegistersLayoutTest, RowsOpenFurtherColumnsBehindTheThirtyFifth) {
    const auto values = [](std::size_t count) { return std::vector<double>(count, 1); };
    Resize(900, 620);
    Open(8, 2, values(35));
    EXPECT_FALSE(Has("lblOnes(1)"));
    Open(8, 2, values(71));
    EXPECT_TRUE(Has("lblTens(1)") && Has("lblOnes(2)"));
    EXPECT_FALSE(Has("lblOnes(3)"));
    for (const auto& [row, column] : {std::pair{35, 1}, std::pair{70, 2}}) {
        EXPECT_EQ(InWindow(Member("lblRegName", row)).y(), InWindow("lblRegName(0)").y());
        EXPECT_EQ(Text(Member("lblOnes", column)), Text("lblOnes(0)"));
        EXPECT_GT(InWindow(Member("lblRegName", row)).x(),
                  InWindow(Member("cmdLoadReg", row - 35), {Child(Member("cmdLoadReg", row - 35))->width(), 0}).x());
        ClickDigit(row - 1, 3);
        KeyClick(Qt::Key_Down);   // From the foot of a column to the head of the next.
        EXPECT_EQ(FocusName(), Member("txtRegBits", row));
        const QRect mark(InWindow("shpBitHiLite"), Child("shpBitHiLite")->size());
        const QRect ruler(InWindow(Member("lblOnes", column)), Child(Member("lblOnes", column))->size());
        EXPECT_TRUE(mark.intersects(ruler));
    }
    part.ClearPLL();
    Settle();
    EXPECT_FALSE(Has("lblOnes(1)") || Has("txtRegBits(1)") || Shown("vscRegisters") || Shown("shpBitHiLite"));
    EXPECT_EQ(Text("lblRegName(0)"), "RegName");
    EXPECT_EQ(Text("txtRegBits(0)"), "1 1 1");
    EXPECT_EQ(Text("lblTens(0)"), "0 0 0");
    EXPECT_EQ(Text("lblOnes(0)"), "0 1 2");
}

TEST_F(RegistersLayoutTest, BarsShowWhereRowsDoNotFit) {
    const Cases<int, int, std::size_t, int, bool, bool> cases = {
        {641, 427, 1, 24, false, false},  {641, 427, 6, 28, false, false},  {641, 427, 30, 24, true, false},
        {641, 427, 6, 53, false, true},   {641, 427, 60, 32, true, true},   {900, 620, 20, 24, false, false},
        {900, 620, 60, 24, true, true},   {1300, 620, 60, 24, true, false}, {1300, 1000, 60, 24, false, false},
        {641, 1000, 30, 24, false, false}};
    for (const auto& [width, height, rows, bits, down, across] : cases) {
        SCOPED_TRACE(testing::Message() << width << "x" << height << ", " << rows << " of " << bits);
        Resize(width, height);
        Open(bits, 2, std::vector<double>(rows, 1));
        EXPECT_EQ(Shown("vscRegisters"), down);
        EXPECT_EQ(Shown("hscRegisters"), across);
        EXPECT_EQ(Shown("cmdBoxRegisters"), down && across);
    }
}

TEST_F(RegistersLayoutTest, RowsScrollUnderTheRulersAndTheRulersStay) {
    Resize(641, 427);
    Open(53, 2, std::vector<double>(60, 1));
    auto* down = Child<QScrollBar>("vscRegisters");
    auto* across = Child<QScrollBar>("hscRegisters");
    const QPoint ruler = InWindow("lblOnes(0)");
    const QPoint row = InWindow("lblRegName(9)");
    down->setValue(2 * down->singleStep() + 1);
    across->setValue(40);
    Settle();
    EXPECT_EQ(InWindow("lblOnes(0)"), ruler - QPoint(40, 0));
    EXPECT_EQ(InWindow("lblRegName(9)"), row - QPoint(40, down->value()));
    EXPECT_EQ(InWindow("cmdBitOrder", {Child("cmdBitOrder")->width(), 0}).x(),
              InWindow("lblRegName(9)", {Child("lblRegName(9)")->width(), 0}).x());
    for (const char* control : {"lblRegName", "txtRegBits", "cmdLoadReg"}) {
        EXPECT_FALSE(Shown(Member(control, 2))) << "the third row stands partly under the rulers";
        EXPECT_TRUE(Shown(Member(control, 3)));
    }
    down->setValue(0);
    across->setValue(0);
    EXPECT_EQ(InWindow("lblRegName(9)"), row);
    EXPECT_TRUE(Shown("lblRegName(0)"));
}

TEST_F(RegistersLayoutTest, ABarStaysUntilItIsScrolledBack) {
    Resize(900, 620);
    Open(24, 2, std::vector<double>(18, 1));
    EXPECT_FALSE(Shown("vscRegisters"));
    auto* bar = Child<QScrollBar>("vscRegisters");
    for (const int scrolled : {0, 44}) {
        Resize(641, 427);
        EXPECT_TRUE(Shown("vscRegisters"));
        bar->setValue(scrolled);
        const int shift = bar->value();
        EXPECT_EQ(shift > 0, scrolled > 0);
        Resize(900, 620);
        EXPECT_EQ(Shown("vscRegisters"), shift > 0);
        EXPECT_EQ(Shown("lblRegName(0)"), shift == 0);
        bar->setValue(0);
        EXPECT_FALSE(Shown("vscRegisters"));
        EXPECT_TRUE(Shown("lblRegName(0)"));
    }
}

TEST_F(RegistersLayoutTest, KeysBringRowsIntoView) {
    Resize(641, 427);
    Open(53, 2, std::vector<double>(60, 1));
    const auto inView = [&](int row, int position) {
        const QRect page(Child("cmdBitOrder")->parentWidget()->mapTo(&Window(), QPoint()),
                         Child("cmdBitOrder")->parentWidget()->size());
        const QPoint digit = InWindow(Member("txtRegBits", row), {DigitMiddle(row, position), 0});
        const int bottom = InWindow("hscRegisters").y();
        return Shown(Member("txtRegBits", row)) && page.contains(digit) && digit.y() + Box(row)->height() <= bottom;
    };
    ClickDigit(0, 0);
    for (int row = 1; row < 17; ++row) {
        KeyClick(Qt::Key_Down);
        ASSERT_TRUE(inView(row, 0)) << "row " << row;
    }
    EXPECT_EQ(Child<QScrollBar>("vscRegisters")->value() % Child<QScrollBar>("vscRegisters")->singleStep(), 0);
    for (int digit = 1; digit < 51; ++digit) {
        KeyClick(Qt::Key_Right);
        ASSERT_TRUE(inView(16, 3 * digit)) << "digit " << digit;
    }
    Child<QScrollBar>("vscRegisters")->setValue(10000);   // The row with the focus is scrolled away.
    EXPECT_EQ(FocusName(), "vscRegisters");
    Focus("txtRegBits(34)");
    KeyClick(Qt::Key_Tab);
    EXPECT_EQ(FocusName(), "cmdLoadReg(34)");
    KeyClick(Qt::Key_Tab);   // The next row stands at the head of the next column.
    EXPECT_EQ(FocusName().left(11), "txtRegBits(");
    EXPECT_TRUE(inView(FocusName().mid(11).chopped(1).toInt(), 0)) << FocusName().toStdString();
}
