#include "support/Cases.h"
#include "support/TestPart.h"
#include "ui/RegistersFixture.h"

// What the rows of the Registers page show, and what the user does in them.

const QColor kDataBit(255, 0, 0);
const QColor kControlBit(0, 0, 255);

class RegistersPageTest : public RegistersFixture {};

TEST_F(RegistersPageTest, RowsAndRulersReadFromTheEndThatTheButtonNames) {
    const auto reversed = [](QString text) {
        std::reverse(text.begin(), text.end());
        return text;
    };
    const Cases<int, double, const char*, const char*, const char*> cases = {
        {8, 5, "0  0  0  0  0  1  0  1", "7  6  5  4  3  2  1  0", "0  0  0  0  0  0  0  0"},
        {12, 2049, "1  0  0  0  0  0  0  0  0  0  0  1", "1  0  9  8  7  6  5  4  3  2  1  0",
         "1  1  0  0  0  0  0  0  0  0  0  0"},
        {1, 1, "1", "0", "0"},
        {4, 19, "0  0  1  1", "3  2  1  0", "0  0  0  0"},
        {4, -3, "0  0  0  0", "3  2  1  0", "0  0  0  0"}};
    for (const auto& [length, value, text, ones, tens] : cases) {
        SCOPED_TRACE(text);
        Open(length, 0, {value});
        Order(false);
        EXPECT_EQ(Text("txtRegBits(0)"), text);
        EXPECT_EQ(Text("lblOnes(0)"), ones);
        EXPECT_EQ(Text("lblTens(0)"), tens);
        Click("cmdBitOrder");
        EXPECT_EQ(Text("cmdBitOrder"), "LSB -->");
        EXPECT_EQ(Text("txtRegBits(0)"), reversed(text));
        EXPECT_EQ(Text("lblOnes(0)"), reversed(ones));
        EXPECT_EQ(Text("lblTens(0)"), reversed(tens));
    }
    Open(12, 0, {1});   // The order outlasts the device.
    EXPECT_EQ(Text("lblTens(0)"), "0  0  0  0  0  0  0  0  0  0  1  1");
    EXPECT_TRUE(Text("txtRegBits(0)").startsWith("1  0"));
}

TEST_F(RegistersPageTest, ClickTellsControlBitsFromDataBits) {
    Open(8, 2, {0xA5, 0x2C});
    const QColor normal = NameColour(0);
    // Eight bits, of which two are control bits: at the right end with the high bit first, else at the left.
    const Cases<bool, int, bool> cases = {{false, 0, false}, {false, 15, false}, {false, 18, true}, {false, 21, true},
                                          {true, 0, true},   {true, 3, true},    {true, 6, false},  {true, 21, false}};
    for (const auto& [lowFirst, position, control] : cases) {
        SCOPED_TRACE(testing::Message() << "position " << position << (lowFirst ? ", low first" : ", high first"));
        Order(lowFirst);
        EXPECT_FALSE(lowFirst && position == 0 && (Shown("lblHexDisplay") || Shown("shpBitHiLite"))) << "just turned";
        ClickDigit(0, position);
        ClickDigit(1, position);
        EXPECT_EQ(NameColour(0), normal);
        EXPECT_EQ(NameColour(1), control ? kControlBit : kDataBit);
        EXPECT_EQ(Box(1)->selectionLength(), control ? 0 : 1);
        EXPECT_EQ(SelectionStart(1), position);
        ASSERT_TRUE(Shown("shpBitHiLite"));
        const QWidget* mark = Child("shpBitHiLite");
        const int digit = InWindow("txtRegBits(1)", {DigitMiddle(1, position), 0}).x();
        EXPECT_NEAR(InWindow("shpBitHiLite", mark->rect().center()).x(), digit, 1);
        EXPECT_EQ(mark->palette().color(QPalette::WindowText), control ? kControlBit : kDataBit);
        EXPECT_EQ(mark->accessibleDescription().contains("control bit"), control);
        EXPECT_EQ(Text("lblHexDisplay"), "2C");
        EXPECT_GE(InWindow("lblHexDisplay").x(), InWindow("cmdLoadReg(1)", {Child("cmdLoadReg(1)")->width(), 0}).x());
        EXPECT_EQ(InWindow("lblHexDisplay").y(), InWindow("txtRegBits(1)").y());
    }
    Page(0);
    Page(1);
    EXPECT_FALSE(Shown("shpBitHiLite"));
    EXPECT_FALSE(Shown("lblHexDisplay"));
    EXPECT_EQ(NameColour(1), normal);
    Open(32, 3, {2882400189.0});
    ClickDigit(0, 30);
    EXPECT_EQ(Text("lblHexDisplay"), "ABCDEFBD") << "all 32 bits";
}

TEST_F(RegistersPageTest, DigitsAreEnteredFromTheLowEndUpward) {
    Open(8, 2, {0xF0, 0});
    // The digit that is clicked, the keys; from 0xF0 on the value, and where the selection stands.
    const Cases<const char*, bool, int, const char*, int, int> cases = {
        {"third from the right", false, 15, "1", 0xF4, 12},
        {"several digits", false, 15, "1010", 0xD4, 3},
        {"highest bit stays", false, 0, "01", 0xF0, 0},
        {"highest bit cleared", false, 0, "0", 0x70, 0},
        {"letters only move", false, 15, "x2 0", 0xD0, 3},
        {"control bit", false, 18, "11", 0xF0, 18},
        {"low first", true, 6, "11", 0xFC, 12},
        {"low first, highest bit stays", true, 21, "01", 0xF0, 21},
        {"low first, control bit", true, 3, "1", 0xF0, 3}};
    for (const auto& [what, lowFirst, click, keys, value, position] : cases) {
        SCOPED_TRACE(what);
        Order(lowFirst);
        Register(1).Value(0xF0);
        part.UpdateRegisterDisplay();
        Register(1).Change(false);
        ClickDigit(0, click);
        port.Clear();
        KeyClicks("txtRegBits(0)", keys);
        EXPECT_EQ(Register(1).Value(), value);
        EXPECT_EQ(SelectionStart(0), position);
        EXPECT_EQ(Register(1).Change(), value != 0xF0 || QString(keys) == "01");
        EXPECT_TRUE(port.Writes().empty()) << "typing must not load";
        EXPECT_EQ(Text("lblHexDisplay"), "F0");
        EXPECT_EQ(Child("lblHexDisplay")->toolTip().isEmpty(), value == 0xF0) << "whether it says that it is stale";
    }
    EXPECT_EQ(Register(2).Value(), 0);
}

TEST_F(RegistersPageTest, NothingIsTypedWithoutASelectedDigit) {
    Open(8, 2, {0});
    ClickDigit(0, 9);
    QTest::mouseDClick(Child("txtRegBits(0)"), Qt::LeftButton, {}, {DigitMiddle(0, 9), 5});
    EXPECT_EQ(Box(0)->selectionLength(), 0);
    KeyClicks("txtRegBits(0)", "1");
    EXPECT_EQ(Register(1).Value(), 0);
    EXPECT_EQ(SelectionStart(0), 6) << "the key still moves on";
    KeyClicks("txtRegBits(0)", "1");
    EXPECT_EQ(Register(1).Value(), 0x20);
    for (const Qt::Key key : {Qt::Key_Delete, Qt::Key_Home, Qt::Key_End}) {
        KeyClick("txtRegBits(0)", key);
    }
    EXPECT_EQ(Box(0)->text(), "0  0  1  0  0  0  0  0");
    EXPECT_EQ(SelectionStart(0), 3);
}

TEST_F(RegistersPageTest, ArrowKeysLeaveControlBitsButNeverEnterThem) {
    const Cases<bool, int, int, const char*, int, int> cases = {
        {false, 0, 12, "L", 0, 9},   {false, 0, 0, "L", 0, 0},    {false, 0, 12, "RR", 0, 15},
        {false, 0, 21, "L", 0, 18},  {false, 0, 21, "LL", 0, 15}, {false, 0, 18, "R", 0, 18},
        {true, 0, 6, "L", 0, 6},     {true, 0, 9, "L", 0, 6},     {true, 0, 3, "R", 0, 6},
        {true, 0, 18, "RR", 0, 21},  {true, 0, 3, "L", 0, 3},     {true, 2, 9, "U", 1, 9},
        {false, 0, 9, "U", 0, 9},    {false, 2, 9, "D", 2, 9},    {false, 0, 9, "DDL", 2, 6},
        {false, 2, 9, "UURU", 0, 12}};
    const std::map<char, Qt::Key> keys{
        {'L', Qt::Key_Left}, {'R', Qt::Key_Right}, {'U', Qt::Key_Up}, {'D', Qt::Key_Down}};
    Open(8, 2, {1, 2, 3});
    for (const auto& [lowFirst, row, click, moves, toRow, to] : cases) {
        SCOPED_TRACE(testing::Message() << moves << " from " << click << (lowFirst ? ", low first" : ""));
        Order(lowFirst);
        ClickDigit(row, click);
        for (const char move : std::string(moves)) {
            KeyClick(keys.at(move));
        }
        EXPECT_EQ(FocusName(), Member("txtRegBits", toRow));
        EXPECT_EQ(SelectionStart(toRow), to);
        const bool control = lowFirst ? to < 6 : to > 15;
        for (int each = 0; each < 3; ++each) {
            EXPECT_EQ(NameColour(each) == (control ? kControlBit : kDataBit), each == toRow) << "row " << each;
        }
        if (row != toRow) {
            EXPECT_EQ(Text("lblHexDisplay"), QStringLiteral("0%1").arg(toRow + 1));
            EXPECT_EQ(InWindow("lblHexDisplay").y(), InWindow(Member("txtRegBits", toRow)).y());
        }
    }
}

TEST_F(RegistersPageTest, LoadButtonSendsAtThePressAndAtTheClick) {
    const std::string once = "00000101|";
    Open(8, 2, {3, 5});
    ClickDigit(1, 0);
    port.Clear();
    const auto shifted = [&] { return Shifted(port.TakeWords()); };
    Click("cmdLoadReg(1)");
    EXPECT_EQ(shifted(), once + once);
    EXPECT_FALSE(Shown("shpBitHiLite") || Shown("lblHexDisplay") || Shown("lblHexValue"));
    EXPECT_NE(NameColour(1), kDataBit);
    KeyClick("cmdLoadReg(1)", Qt::Key_Space);
    EXPECT_EQ(shifted(), once);
    QTest::mousePress(Child("cmdLoadReg(1)"), Qt::LeftButton);
    EXPECT_EQ(shifted(), once);
    QTest::mouseRelease(Child("cmdLoadReg(1)"), Qt::LeftButton, {}, {-20, 5});
    EXPECT_EQ(shifted(), "") << "released beside the button";
    Click("cmdLoadReg(1)", Qt::MiddleButton);
    EXPECT_EQ(shifted(), "") << "only an SBI device reads back";
    AnswerMessageBox(
        "This command button will load only the specified register. Click on this button to load the "
        "register after changing specific bits or to reload the register.");
    Click("cmdLoadReg(0)", Qt::RightButton);
    EXPECT_EQ(shifted(), "");
}

TEST_F(RegistersPageTest, LoadButtonReadsBackWithAModifierOrTheMiddleButton) {
    Open(8, 2, {3, 5}, "SBI=TRUE|");
    port.Clear();
    part.ReadRegister(2);
    const auto readCycle = port.TakeWords();
    for (const auto modifier : {Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier}) {
        AnswerMessageBox("Register = 0 = 00000000");
        Click("cmdLoadReg(1)", modifier == Qt::NoModifier ? Qt::MiddleButton : Qt::LeftButton, modifier);
        EXPECT_EQ(port.TakeWords(), readCycle) << "read back, and not loaded";
    }
    EXPECT_FALSE(Child<QPushButton>("cmdLoadReg(1)")->isDown());
}

TEST_F(RegistersPageTest, ARefreshKeepsTheSelection) {
    Open(8, 2, {1, 2, 3});
    ClickDigit(1, 9);
    Register(2).Value(255);
    part.UpdateDisplays();
    EXPECT_EQ(Box(1)->text(), "1  1  1  1  1  1  1  1");
    EXPECT_EQ(Box(1)->selectionStart(), 9);
    EXPECT_EQ(Box(1)->selectionLength(), 1);
    Focus("cmdBitOrder");
    Focus("txtRegBits(1)");
    EXPECT_EQ(Box(1)->selectionStart(), 9);
    EXPECT_EQ(Box(1)->selectionLength(), 1) << "the Tab key must not select all";
    KeyClicks("txtRegBits(1)", "0");
    EXPECT_EQ(Register(2).Value(), 0xEF);
}
