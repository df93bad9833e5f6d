#include <QGroupBox>
#include <QScrollBar>
#include <map>

#include "burst/cBurst.h"
#include "support/Cases.h"
#include "ui/WindowFixture.h"
#include "ui/controls/TextBox.h"
#include "ui/port/ConnectorShape.h"

namespace {

constexpr auto kWarning =
    "Changes in the port setup will not be reflected in the Burst Commands. You will have to delete all Burst "
    "Commands and rebuild them.";

const QColor kGrey(0x80, 0x80, 0x80);
const QColor kClock(0, 255, 255);
const QColor kData(0, 255, 0);
const QColor kLE(255, 0, 255);
const QColor kPin(0, 0, 255);
const QColor kConflict(255, 0, 0);
const QColor kBlack(0, 0, 0);

/// The wire segments of a pin of the 25-way connector.
QString Segments(int pin) {
    const int longer = pin == 16 ? 5 : pin > 9 ? 6 : pin == 2 || pin == 5 || pin == 6 || pin == 8 ? 2 : 3;
    return QStringLiteral("abcdef").left(longer);
}

constexpr int kWired[] = {2, 3, 4, 5, 6, 7, 8, 9, 1, 14, 16, 17};   // In the order of the lines.

}   // namespace

class PortPageTest : public WindowFixture {
protected:
    /// Selects a new device with these lines of the section SETUP and with pins on those lines. Each has a name of its
    /// own: on leaving, the settings of the one before are saved into its file.
    void Open(const std::string& setup, const std::vector<int>& pins = {}) {
        std::string text = "[SETUP]|REGISTER_LENGTH=8|" + setup + "|[PINS]|COUNT=" + std::to_string(pins.size()) + "|";
        for (int i = 0; const int line : pins) {
            text += Item(i, "NAME=P&" + std::to_string(i) + "|LOCATION=" + std::to_string(line) + "|ENABLED=TRUE");
            ++i;
        }
        text += "[REGISTERS]|COUNT=1|NAME00=R|[BITS]|COUNT=1|REG00=R|NAME00=F|LEN00=1|";
        OpenPart("X" + std::to_string(++opened_), text);
        Page(0);
        port.Clear();
    }

    /// Which option of a group is selected; -1 for none.
    int Selected(const char* array, int first = 0, int count = 12) {
        for (int i = 0; i < count; ++i) {
            if (Checked(Member(array, first + i))) {
                return i;
            }
        }
        return -1;
    }

    QColor Color(const QString& shape) { return Child<ConnectorShape>(shape)->Color(); }
    ConnectorShape* Segment(QChar letter, int pin) {
        return Child<ConnectorShape>(QStringLiteral("line%1(%2)").arg(letter).arg(pin));
    }

    /// A line's pins and its whole wire are of that colour.
    void ExpectLine(int line, const QColor& color) {
        const int pin = kWired[line];
        EXPECT_EQ(Color(Member("DB", pin)), color) << "line " << line;
        EXPECT_EQ(Color(Member("Pinheader", pin)), color) << "line " << line;
        for (const QChar letter : Segments(pin)) {
            EXPECT_EQ(Segment(letter, pin)->Color(), color) << "line " << line << ", segment " << letter.toLatin1();
        }
        EXPECT_FALSE(
            Has(QStringLiteral("line%1(%2)").arg(QChar('a' + static_cast<int>(Segments(pin).size()))).arg(pin)));
    }

private:
    int opened_ = 0;
};

TEST_F(PortPageTest, DiagramShowsWhatEachLineDoes) {
    // The set-up, lines of pins, and the lines that aren't grey.
    const Cases<const char*, const char*, std::vector<int>, std::map<int, QColor>> cases = {
        {"each alone", "CLOCK=1|DATA=2|LE=4", {}, {{0, kClock}, {1, kData}, {2, kLE}}},
        {"two on one line", "CLOCK=8|DATA=8|LE=4", {}, {{3, kConflict}, {2, kLE}}},
        {"all control lines", "CLOCK=256|DATA=1024|LE=2048", {9}, {{8, kClock}, {10, kData}, {11, kLE}, {9, kPin}}},
        {"zeros", "CLOCK=0|DATA=0|LE=0", {}, {{0, kClock}, {1, kData}, {2, kLE}}},
        {"a word of two lines", "CLOCK=3|DATA=4|LE=8", {}, {{2, kData}, {3, kLE}}}};
    for (const auto& [what, setup, pins, used] : cases) {
        SCOPED_TRACE(what);
        Open(setup, pins);
        for (int line = 0; line < 12; ++line) {
            ExpectLine(line, used.contains(line) ? used.at(line) : kGrey);
        }
        for (const int pin : {10, 11, 12, 13, 15, 19, 25}) {
            EXPECT_EQ(Color(Member("DB", pin)), kGrey);
        }
        EXPECT_EQ(Color("DB(18)"), kBlack);
    }
    EXPECT_EQ(part.ClockPosition(), 3) << "a word that is no single line must stay in use";
    EXPECT_EQ(Selected("optClockBit"), -1);
}

TEST_F(PortPageTest, WordsStandBesideTheColours) {
    Open("CLOCK=8|DATA=8|LE=4", {2});
    for (const auto& [pin, words] :
         Cases<int, const char*>{{5, "8: \u26A0 Clock + Data"}, {4, "4: \u26A0 LE + P&0"}, {14, "C2"}}) {
        const QString tip = Child(Member("DB", pin))->toolTip();
        EXPECT_TRUE(tip.endsWith(words)) << tip.toStdString();
    }
    for (const char* name : {"Label2", "Label4", "Label6", "Label9", "PinConnectorLabel"}) {
        EXPECT_GE(Child(name)->width(), Child(name)->sizeHint().width()) << name << " is cut";
    }
}

TEST_F(PortPageTest, EachWireLeadsFromPinToPinAndMeetsNoOther) {
    Open("CLOCK=1");
    std::vector<std::pair<int, QRect>> before;
    for (const int pin : kWired) {
        QRect last = Child(Member("DB", pin))->geometry();
        std::vector<std::pair<int, QRect>> own{{pin, last}};
        for (const QChar letter : Segments(pin)) {
            const QRect segment = Segment(letter, pin)->geometry();
            EXPECT_TRUE(segment.intersects(last)) << "pin " << pin << " breaks before " << letter.toLatin1();
            own.emplace_back(pin, last = segment);
        }
        const QRect header = Child(Member("Pinheader", pin))->geometry();
        EXPECT_TRUE(header.intersects(last)) << "pin " << pin << " isn't connected";
        own.emplace_back(pin, header);
        for (const auto& [otherPin, other] : before) {
            for (const auto& [itself, rect] : own) {
                EXPECT_FALSE(rect.intersects(other)) << "pin " << pin << " touches pin " << otherPin;
            }
        }
        before.insert(before.end(), own.begin(), own.end());
    }
}

TEST_F(PortPageTest, OptionsMoveTheSerialLinesAndAreShownAtOnce) {
    Open("CLOCK=1|DATA=2|LE=4");
    int number = 0;
    int before = 0;
    for (const auto& [options, color, word] :
         Cases<const char*, QColor, std::int16_t (cPart::*)() const>{{"optClockBit", kClock, &cPart::ClockPosition},
                                                                     {"optDataBit", kData, &cPart::DataPosition},
                                                                     {"optLEBit", kLE, &cPart::LEPosition}}) {
        for (int line = 3; line < 12; before = line++) {
            Click(Member(options, line));
            EXPECT_EQ((part.*word)(), 1 << line);
            EXPECT_EQ(Selected(options), line);
            ExpectLine(line, color);
            ExpectLine(before, kGrey);
        }
        Click(Member(options, 0));
        ExpectLine(0, number == 0 ? color : kConflict);
        before = ++number;
    }
    EXPECT_FALSE(part.Updating());
    EXPECT_TRUE(port.Writes().empty()) << "this page must not touch the port";
}

TEST_F(PortPageTest, MovingAPinSwitchesAllPinsOff) {
    Open("CLOCK=1|DATA=2|LE=4", {5, 6, 9});
    EXPECT_EQ(Selected("optPrgmBit", 24), 9);
    EXPECT_EQ(part.OutputPinValue(), 0x260);
    Click("optPrgmBit(23)");
    EXPECT_EQ(part.PrgmPins().At("P&1").Position(), 11) << "the caption names the pin, also with an \"&\"";
    EXPECT_EQ(part.OutputPinValue(), 0);
    ExpectLine(6, kGrey);
    ExpectLine(11, kPin);
    ExpectLine(9, kPin);
    EXPECT_FALSE(part.Updating());
    EXPECT_TRUE(port.Writes().empty());

    part.Updating(true);
    Click("optPrgmBit(0)");
    EXPECT_EQ(part.PrgmPins().At("P&0").Position(), 5) << "no user's action while the program updates";
    part.Updating(false);
}

TEST_F(PortPageTest, FramesOfPinsComeAndGoWithTheDevice) {
    EXPECT_FALSE(Shown("fraExternalPin(0)"));
    Open("CLOCK=1", {3, 4, 5});
    EXPECT_TRUE(Shown("fraExternalPin(2)"));
    part.PrgmPins().At("P&2").Position(10);
    part.UpdatePortDisplay();
    EXPECT_EQ(Selected("optPrgmBit", 24), 10) << "a pin that a set-up file moved";
    EXPECT_EQ(part.OutputPinValue(), 0x38) << "which is no user's click";
    Open("CLOCK=1");
    EXPECT_FALSE(Has("fraExternalPin(1)"));
    EXPECT_FALSE(Has("optPrgmBit(12)"));
    EXPECT_FALSE(Shown("fraExternalPin(0)"));
    EXPECT_EQ(Child<QGroupBox>("fraExternalPin(0)")->title(), "Prgm Pin");
    ExpectLine(3, kGrey);
    Open("CLOCK=1", {11});
    EXPECT_TRUE(Shown("fraExternalPin(0)"));
    EXPECT_EQ(Selected("optPrgmBit"), 11);
}

TEST_F(PortPageTest, TheKeyboardReachesAndWorksAllGroups) {
    Open("ADDRESS=&H300|CLOCK=1|DATA=2|LE=4", {5, 6});
    Focus("optPortAdr(3)");
    EXPECT_EQ(TabStops(8).join(' '),
              "txtPortAdr txtAutoReload optClockBit(0) optDataBit(1) optLEBit(2) optPrgmBit(5) optPrgmBit(18) "
              "Port setup diagram");
    Focus("optDataBit(1)");
    KeyClick(Qt::Key_Right);
    EXPECT_EQ(part.DataPosition(), 4);
    ExpectLine(2, kConflict);
}

TEST_F(PortPageTest, AddressOptions) {
    for (const auto& [address, option, shown] :
         Cases<const char*, int, const char*>{{"&H378", 0, "378"}, {"956", 2, "3BC"}, {"&HD010", 3, "D010"}}) {
        Open(std::string("ADDRESS=") + address);
        EXPECT_EQ(Selected("optPortAdr", 0, 4), option) << address;
        EXPECT_EQ(Text("txtPortAdr"), shown);
        EXPECT_EQ(Child("txtPortAdr")->isEnabled(), option == 3);
        EXPECT_EQ(part.PortAddress() & 0xFFFF, std::stoi(shown, nullptr, 16)) << "the file's own address stays";
    }
    for (const auto& [option, address, shown] :
         Cases<int, int, const char*>{{0, 0x378, "378"}, {3, 0x2BC, "2BC"}, {2, 0x3BC, "3BC"}, {1, 0x278, "278"}}) {
        Click(Member("optPortAdr", option));
        EXPECT_EQ(part.PortAddress(), address);
        EXPECT_EQ(Text("txtPortAdr"), shown);
        EXPECT_EQ(Child("txtPortAdr")->isEnabled(), option == 3) << option;
    }
}

TEST_F(PortPageTest, AddressIsTypedInHexadecimal) {
    Open("ADDRESS=&H300");
    const Cases<const char*, bool, int, const char*> cases = {
        {"e010", true, 0xE010, "E010"}, {"2f8", false, 0x2F8, "2F8"}, {"xyz", true, 0x2F8, "2F8"}};
    for (const auto& [typed, enter, address, shown] : cases) {
        Focus("txtPortAdr");
        TypeInto("txtPortAdr", typed);
        KeyClick(enter ? Qt::Key_Return : Qt::Key_Tab);
        EXPECT_EQ(part.PortAddress() & 0xFFFF, address) << typed;
        EXPECT_EQ(Text("txtPortAdr"), shown) << typed;
    }
    EXPECT_TRUE(port.Writes().empty());
}

TEST_F(PortPageTest, WarnsFromTwoBurstCommandsUp) {
    Open("CLOCK=1|DATA=2|LE=4", {5});
    part.AddBurstCommand("5", BurstKind::Delay);
    for (const char* option : {"optPortAdr(3)", "optClockBit(8)", "optPrgmBit(6)"}) {
        Click(option);   // A message box that nobody foresaw fails the test.
    }
    part.AddBurstCommand("5", BurstKind::Delay);
    Click("optDataBit(9)");
    Click("optLEBit(9)");
    for (const char* option : {"optPortAdr(1)", "optClockBit(7)", "optPrgmBit(4)"}) {
        Answer<QMessageBox>([&](QMessageBox& box) {
            EXPECT_EQ(box.text(), kWarning) << option;
            EXPECT_EQ(box.windowTitle(), "WARNING");
            EXPECT_EQ(box.icon(), QMessageBox::Warning);
            EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
            box.accept();
        });
        Click(option);
        EXPECT_EQ(AnswersLeft(), 0U) << option << " didn't warn";
        Click(option);   // It is selected already: nothing happens.
    }
    EXPECT_EQ(part.ClockPosition(), 128) << "the change is made all the same";
    part.ClockPosition(2);
    AnswerMessageBox(kWarning);
    part.UpdatePortDisplay();
    EXPECT_EQ(Selected("optClockBit"), 1);
}

TEST_F(PortPageTest, ReloadPeriodCountsWithEnter) {
    auto* timer = Child<QTimer>("tmrAutoReload");
    EXPECT_EQ(Text("txtAutoReload"), "10");
    const Cases<const char*, const char*, int> cases = {{"0", "1", 1000}, {"abc", "65", 65000}, {"3", "3", 3000}};
    for (const auto& [typed, shown, interval] : cases) {
        TypeInto("txtAutoReload", typed);
        EXPECT_EQ(Text("txtAutoReload"), typed) << "typing alone changes nothing";
        KeyClick("txtAutoReload", Qt::Key_Return);
        EXPECT_EQ(Text("txtAutoReload"), shown) << typed;
        EXPECT_EQ(timer->interval(), interval) << typed;
        EXPECT_FALSE(timer->isActive());
        EXPECT_FALSE(part.Updating());
    }
    Choose("mnuAutoReload");
    Child<TextBox>("txtAutoReload")->setText("7");
    part.Updating(true);
    KeyClick("txtAutoReload", Qt::Key_Return);
    part.Updating(false);
    EXPECT_EQ(timer->interval(), 3000) << "no user's action while the program updates";
    KeyClick("txtAutoReload", Qt::Key_Return);
    EXPECT_EQ(timer->interval(), 7000);
    EXPECT_TRUE(timer->isActive());
}

TEST_F(PortPageTest, BarsComeWhenSomethingDoesNotFit) {
    Open("CLOCK=1", {0, 1, 2, 3, 4, 5, 6, 7});
    auto* across = Child<QScrollBar>("hscPort");
    auto* down = Child<QScrollBar>("vscPort");
    const auto frame = [&](const char* name) {
        QWidget* page = Window().Pages().currentWidget();
        return QRect(Child(name)->mapTo(page, QPoint()), Child(name)->size());
    };
    Resize(641, 427);
    EXPECT_TRUE(across->isVisible() && down->isVisible() && Child("cmdBoxPort")->isVisible());
    const int clock = frame("fraClockBit").x();
    across->setValue(30);
    EXPECT_EQ(frame("fraClockBit").x(), clock - 30);
    across->setValue(across->maximum());
    EXPECT_LE(frame("Frame1").right(), Window().Pages().currentWidget()->width())
        << "the diagram's end is out of reach";
    down->setValue(down->maximum());
    const int pageHeight = Window().Pages().currentWidget()->height();
    EXPECT_LE(frame("fraExternalPin(7)").bottom(), pageHeight);
    EXPECT_LE(frame("Frame1").bottom(), pageHeight);

    Resize(1500, 560);
    EXPECT_FALSE(across->isVisible() || Child("cmdBoxPort")->isVisible());
    EXPECT_TRUE(down->isVisible());
    down->setValue(0);
    const QRect diagram = frame("Frame1");
    down->setValue(down->maximum());
    EXPECT_EQ(frame("Frame1"), diagram) << "the diagram stays in view while the frames scroll";
    EXPECT_LT(frame("fraClockBit").y(), 0);

    Resize(1600, 1000);
    EXPECT_FALSE(across->isVisible() || down->isVisible());
    EXPECT_GT(frame("Frame1").x(), frame("fraClockBit").right());
}
