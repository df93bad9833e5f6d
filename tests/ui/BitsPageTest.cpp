#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QWheelEvent>

#include "core/DeviceDisplay.h"
#include "core/Numbers.h"
#include "support/TestPart.h"
#include "ui/WindowFixture.h"

namespace {

constexpr int kBitsPage = 2;

/// Two registers of 8 bits, a field of each kind in two groups, a PLL, and pins on the lines D3 and C4.
constexpr auto kDevice = R"([SETUP]
REGISTER_LENGTH=8
CONTROL_LENGTH=0
[PINS]
COUNT=3
NAME00=CE & PD
LOCATION00=3
NAME01=TRIG
LOCATION01=11
NAME02=SAME
LOCATION02=3
[REGISTERS]
COUNT=2
NAME00=A
MASK00=0
VALUE00=0
NAME01=B
MASK01=0
VALUE01=32
[BITS]
COUNT=9
NAME00=ON
REG00=A
POS00=0
TYPE00=Bit
DISPLAY00=TRUE
FRAME00=First
DESCRIPTION00=Switches <b>on</b>
NAME01=HIDDEN
REG01=A
TYPE01=Bit
DISPLAY01=FALSE
NAME02=N
REG02=A
POS02=1
LEN02=4
TYPE02=Counter
DISPLAY02=TRUE
FRAME02=Second & last
STEPVALUE02=2
UNITS02=" kHz"
DESCRIPTION02=Counts
NAME03=GAIN
REG03=B
POS03=0
LEN03=3
TYPE03=List
FRAME03=First
COUNT03=3
VAL0300=low
VAL0301=mid & more
VAL0302=high
NAME04=WIDE
REG04=B
POS04=3
LEN04=2
TYPE04=Bit
DISPLAY04=TRUE
FRAME04=First
NAME05=M
REG05=B
POS05=5
LEN05=3
TYPE05=Counter
DISPLAY05=TRUE
FRAME05=First
NAME06=MODE
REG06=A
POS06=5
LEN06=2
TYPE06=List
FRAME06=Second & last
COUNT06=4
VAL0600=0
VAL0601=1
VAL0602=2
VAL0603=3
NAME07=LOST
REG07=NOWHERE
LEN07=1
TYPE07=Counter
DISPLAY07=TRUE
FRAME07=First
NAME08=LEADS
REG08=A
POS08=7
TYPE08=Bit
DISPLAY08=TRUE
FRAME08=First
MIRRORBITS08=NOBODY
[PLLS]
COUNT=1
NAME00=RF
N00=N
R00=M
)";

/// Notes which displays are refreshed, and how much had gone to the port by then.
class RefreshLog : public DeviceDisplay {
public:
    explicit RefreshLog(const FakePort& port) : port_(port) {}
    void ShowPLLs() override { Log('P'); }
    void ShowBits() override { Log('B'); }
    void ShowRegisters() override { Log('R'); }

    std::string order;

private:
    void Log(char display) { order += port_.Writes().empty() ? std::string(1, display) : "(after the load)"; }

    const FakePort& port_;
};

class BitsPageTest : public WindowFixture {
protected:
    void Open() {
        OpenPart("DEV", kDevice);
        Page(kBitsPage);
        part.LoadChanges();
        port.Clear();
    }

    QString Note() { return Window().Status().NoteText(); }
    QString CounterText(int i) { return Child<QLineEdit>(QStringLiteral("txtCntrVal(%1)").arg(i))->text(); }

    void Enter(const QString& box, const QString& text) {
        Child<QLineEdit>(box)->selectAll();
        KeyClicks(box, text);
        KeyClick(box, Qt::Key_Return);
    }

    /// The array members that stand for something, as "chkPrgmBit(0)=ON".
    QStringList Used(const QString& array) {
        QStringList used;
        for (int i = 0; Has(QStringLiteral("%1(%2)").arg(array).arg(i)); ++i) {
            const QString name = QStringLiteral("%1(%2)").arg(array).arg(i);
            if (Shown(name)) {
                used << name.mid(array.size()) + "=" + Child(name)->accessibleName();
            }
        }
        return used;
    }
};

}   // namespace

TEST_F(BitsPageTest, OnlyTheFirstControlOfTheDeviceTakesMemberZero) {
    Open();
    EXPECT_EQ(Used("fraPrgmBits"), QStringList({"(0)=First", "(1)=Second & last"}));
    EXPECT_EQ(Used("chkPrgmBit"), QStringList({"(0)=ON", "(1)=WIDE", "(2)=LEADS"})) << "HIDDEN has no check box";
    EXPECT_EQ(Used("txtCntrVal"), QStringList({"(1)=N", "(2)=M", "(3)=LOST"}));
    EXPECT_EQ(Used("cmbBits"), QStringList({"(1)=GAIN", "(2)=MODE"}));
    EXPECT_EQ(Used("chkPrgmPin"), QStringList({"(0)=CE & PD", "(1)=TRIG", "(2)=SAME"}));
    EXPECT_EQ(Child<QLabel>("lblCntr(1)")->text(), "N");
    EXPECT_EQ(Child("txtCntrVal(1)")->parentWidget()->objectName(), "fraPrgmBits(1)");
    EXPECT_EQ(Child("txtCntrVal(2)")->parentWidget()->objectName(), "fraPrgmBits(0)");
    EXPECT_EQ(Child<QCheckBox>("chkPrgmPin(0)")->text(), "CE && PD") << "'&' must show as itself";
    EXPECT_EQ(Child<QGroupBox>("fraPrgmBits(1)")->title(), "Second && last");

    OpenPart("NEXT", "[SETUP]\n[REGISTERS]\nCOUNT=1\nNAME00=A\n[BITS]\nCOUNT=1\nNAME00=ONLY\nREG00=A\nTYPE00=List\n");
    EXPECT_EQ(Used("fraPrgmBits") + Used("cmbBits"), QStringList({"(0)=Frame", "(0)=ONLY"}));
    for (const char* array :
         {"chkPrgmBit", "lblCntr", "txtCntrVal", "spnCntr", "lblCmbBits", "cmbBits", "chkPrgmPin", "fraPrgmBits"}) {
        EXPECT_FALSE(Has(QString(array) + "(1)")) << array;
    }
    EXPECT_TRUE(Used("chkPrgmBit").isEmpty() && Used("txtCntrVal").isEmpty());
    EXPECT_FALSE(Shown("fraPrgmPins(0)"));
}

TEST_F(BitsPageTest, TheTabKeyGoesThroughAFrameBeforeTheNext) {
    Open();
    Focus("chkPrgmBit(0)");
    QStringList order;
    for (int i = 0; i < 10; ++i) {
        KeyClick(Qt::Key_Tab);
        order << FocusName();
    }
    EXPECT_EQ(order, QStringList({"cmbBits(1)", "chkPrgmBit(1)", "txtCntrVal(2)", "spnCntr(2)", "chkPrgmBit(2)",
                                  "txtCntrVal(1)", "spnCntr(1)", "cmbBits(2)", "chkPrgmPin(0)", "chkPrgmPin(1)"}));
}

TEST_F(BitsPageTest, EachControlChangesRefreshesAndLoads) {
    Open();
    const struct {
        const char* what;
        std::function<void()> act;
        const char* order;   // Of the refreshed displays.
        const char* sent;    // Bits that the device took in, "|" a rising LE.
    } cases[] = {
        {"check box, mouse", [&] { Click("chkPrgmBit(0)"); }, "RBP", "00000001|"},
        {"check box, Space", [&] { KeyClick("chkPrgmBit(0)", Qt::Key_Space); }, "RBP", "00000000|"},
        {"wide field goes one up", [&] { Click("chkPrgmBit(1)"); }, "RBP", "00101000|"},
        {"spinner up", [&] { KeyClick("spnCntr(1)", Qt::Key_Up); }, "BRP", "00000010|"},
        {"spinner down", [&] { KeyClick("spnCntr(1)", Qt::Key_Down); }, "BRP", "00000000|"},
        {"spinner at 0 writes nothing", [&] { KeyClick("spnCntr(1)", Qt::Key_Down); }, "BRP", ""},
        {"typed number", [&] { Enter("txtCntrVal(1)", "12"); }, "BRP", "00001100|"},
        {"the same again goes out again", [&] { Enter("txtCntrVal(1)", "12"); }, "BRP", "00001100|"},
        {"list", [&] { KeyClick("cmbBits(1)", Qt::Key_Down); }, "BRP", "00101001|"},
        {"pin", [&] { Click("chkPrgmPin(0)"); }, "B", ""},
    };
    for (const bool reload : {true, false}) {
        Child<QAction>("mnuAutoReloadChange")->setChecked(reload);
        for (const auto& c : cases) {
            RefreshLog log(port);
            part.UseDisplay(log);
            c.act();
            part.UseDisplay(Window());
            EXPECT_EQ(log.order, c.order) << c.what;
            const bool pin = c.sent == std::string() && std::string(c.what) == "pin";
            const auto words = port.TakeWords();
            EXPECT_EQ(Shifted(words), reload ? c.sent : "") << c.what << ", reload " << reload;
            EXPECT_EQ(words.empty(), !reload || (!pin && c.sent == std::string())) << c.what;
            if (pin && reload) {
                EXPECT_EQ(words, std::vector<int>({0x008})) << "the pins' word alone";
            }
            part.UpdateDisplays();
        }
        // Back to the start: everything as it was sent.
        part.OutputPinValue(0);
        Register("A").Value(0);
        Register("B").Value(32);
        part.UpdateDisplays();
        part.LoadChanges();
        port.Clear();
    }
}

TEST_F(BitsPageTest, NothingIsTakenForTheUsersWhileTheProgramChangesControls) {
    Open();
    part.Updating(true);
    for (const char* control : {"chkPrgmBit(0)", "chkPrgmPin(0)"}) {
        Click(control);
        EXPECT_FALSE(Child<QCheckBox>(control)->isChecked()) << control;
    }
    KeyClick("cmbBits(1)", Qt::Key_Down);
    EXPECT_EQ(Child<QComboBox>("cmbBits(1)")->currentIndex(), 0);
    EXPECT_EQ(Register("A").Value(), 0);
    EXPECT_EQ(Register("B").Value(), 32);
    EXPECT_EQ(part.OutputPinValue(), 0);
    EXPECT_TRUE(port.Writes().empty());
    part.Updating(false);
}

TEST_F(BitsPageTest, TypedNumbersCountAtEnterAndSayWhatWasStored) {
    Open();
    const struct {
        const char* typed;
        const char* shown;
        const char* note;   // Part of the status bar's text.
    } cases[] = {
        {"6", "6 kHz", ""},
        {"  8 kHz ", "8 kHz", ""},
        {"20kHz", "20 kHz", ""},
        {"9", "8 kHz", "asked 9 kHz, stored 8 kHz"},
        {"99", "30 kHz", "asked 99 kHz, stored 30 kHz"},
        {"-4", "0 kHz", "asked -4 kHz, stored 0 kHz"},
        {"4", "4 kHz", ""},
        {"5 MHz", "4 kHz", "'5 MHz' is no number: 'N' stays at 4 kHz"},
        {"", "4 kHz", "is no number"},
    };
    for (const auto& c : cases) {
        const double before = Register("A").Value();
        Child<QLineEdit>("txtCntrVal(1)")->clear();
        KeyClicks("txtCntrVal(1)", c.typed);
        EXPECT_EQ(Register("A").Value(), before) << "taken before Enter: " << c.typed;
        KeyClick("txtCntrVal(1)", Qt::Key_Enter);
        EXPECT_EQ(CounterText(1), c.shown) << c.typed;
        EXPECT_TRUE(*c.note == '\0' ? Note().isEmpty() : Note().contains(c.note))
            << c.typed << ": " << Note().toStdString();
    }
    KeyClick("txtCntrVal(1)", Qt::Key_Return);   // As it stands, units and all.
    EXPECT_EQ(CounterText(1), "4 kHz");
    EXPECT_EQ(Note(), "");
}

TEST_F(BitsPageTest, TheRightButtonGivesHelpAndChangesNothing) {
    Open();
    const struct {
        const char* control;
        const char* text;
    } cases[] = {
        {"chkPrgmBit(0)", "Switches <b>on</b>"},
        {"chkPrgmBit(1)", "No Description Available"},
        {"txtCntrVal(1)", "Counts"},
        {"cmbBits(1)", "No Description Available"},
    };
    for (const auto& c : cases) {
        Answer<QMessageBox>([&](QMessageBox& box) {
            EXPECT_EQ(box.text(), c.text);
            EXPECT_EQ(box.windowTitle(), "Help");
            box.button(QMessageBox::Ok)->click();
        });
        Click(c.control, Qt::RightButton);
        EXPECT_EQ(AnswersLeft(), 0U) << c.control;
    }
    EXPECT_FALSE(Child<QCheckBox>("chkPrgmBit(0)")->isChecked());
    EXPECT_TRUE(port.Writes().empty());
    EXPECT_EQ(Child("txtCntrVal(1)")->toolTip(), "Counts\n0 to 30 kHz in steps of 2 kHz");
    EXPECT_EQ(Child("chkPrgmBit(0)")->toolTip(), "<qt>Switches &lt;b&gt;on&lt;/b&gt;</qt>") << "no markup";
    part.PrgmBits().At("N").StepValueBitName("M");   // The tool tip follows when it is about to show.
    QHelpEvent hover(QEvent::ToolTip, {}, {});
    QCoreApplication::sendEvent(Child("txtCntrVal(1)"), &hover);
    EXPECT_EQ(Child("txtCntrVal(1)")->toolTip(), "Counts\n0 to 15 kHz in steps of 1 kHz");
}

TEST_F(BitsPageTest, AnIndexThatAListRefusesIsReportedOnceAndTheOthersGoOn) {
    Open();
    cPrgmBits& gain = part.PrgmBits().At("GAIN");
    part.PrgmBits().At("MODE").BitValue(2);
    const struct {
        int bits;
        bool message;
    } steps[] = {{5, true}, {5, false}, {7, true}, {2, false}, {7, true}};
    for (const auto& step : steps) {
        gain.BitValue(step.bits);
        Window().Note({});
        if (step.message) {
            AnswerMessageBox("Unable to set ListIndex");
        }
        part.UpdateBitDisplay();
        const bool fits = step.bits < 3;
        EXPECT_EQ(AnswersLeft(), 0U) << step.bits;
        EXPECT_EQ(Note().contains("GAIN"), !fits) << Note().toStdString();
        EXPECT_EQ(Child<QComboBox>("cmbBits(1)")->currentIndex(), fits ? step.bits : -1);
        EXPECT_EQ(Child<QComboBox>("cmbBits(2)")->currentIndex(), 2) << "the next list is still filled";
        EXPECT_FALSE(part.Updating());
    }
}

TEST_F(BitsPageTest, AFaultyFieldLeavesTheRestAlone) {
    Open();
    EXPECT_FALSE(Child("txtCntrVal(3)")->isEnabled());
    EXPECT_TRUE(Child("spnCntr(3)")->toolTip().contains("NOWHERE"));
    EXPECT_EQ(CounterText(3), "?");
    EXPECT_TRUE(Child("txtCntrVal(2)")->isEnabled());
    part.PrgmBits().At("LOST").Register("B");
    part.UpdateBitDisplay();
    EXPECT_TRUE(Child("txtCntrVal(3)")->isEnabled()) << "mended, it can be used";

    Click("chkPrgmBit(2)");   // Its own bit changes, then its mirror field isn't found.
    EXPECT_TRUE(Note().contains("NOBODY")) << Note().toStdString();
    EXPECT_TRUE(Child<QCheckBox>("chkPrgmBit(2)")->isChecked());
    EXPECT_EQ(Shifted(port.TakeWords()), "10000000|");
}

TEST_F(BitsPageTest, PinsOnOneLineShowTheSameLevelAlsoWithoutFields) {
    Open();
    Click("chkPrgmPin(2)");
    EXPECT_TRUE(Child<QCheckBox>("chkPrgmPin(0)")->isChecked());
    Click("chkPrgmPin(0)");
    EXPECT_FALSE(Child<QCheckBox>("chkPrgmPin(2)")->isChecked());

    Page(0);
    OpenPart("PINS", "[PINS]\nCOUNT=2\nNAME00=A\nNAME01=B\nENABLED01=TRUE\n");   // Both on the default line.
    Page(kBitsPage);
    EXPECT_TRUE(Child<QCheckBox>("chkPrgmPin(0)")->isChecked());
    Click("chkPrgmPin(1)");
    EXPECT_FALSE(Child<QCheckBox>("chkPrgmPin(0)")->isChecked());
}

TEST_F(BitsPageTest, ThreeHundredFieldsAreReachedWithoutOverlap) {
    std::string text = "[PINS]\nCOUNT=1\nNAME00=LAST\n[REGISTERS]\nCOUNT=1\nNAME00=A\n[BITS]\nCOUNT=300\n";
    const char* types[] = {"Bit", "Counter", "List"};
    for (int i = 0; i < 300; ++i) {
        const std::string n = ItemNumber(i);
        const std::string name = "F" + std::to_string(i) + (i % 50 == 0 ? std::string(56, 'W') : "");
        text += "NAME" + n + "=" + name + "\nREG" + n + "=A\nTYPE" + n + "=" + types[i % 3] + "\nDISPLAY" + n +
                "=TRUE\nFRAME" + n + "=G" + std::to_string(i / 70) + "\nCOUNT" + n + "=2\n";
    }
    OpenPart("BIG", text);
    Page(kBitsPage);
    auto* area = qobject_cast<QScrollArea*>(Child("fraPrgmBits(0)")->parentWidget()->parentWidget()->parentWidget());
    ASSERT_NE(area, nullptr);
    auto* bar = Child<QScrollBar>("hscPrgmBits");
    for (const QSize size : {QSize(641, 427), QSize(1600, 1000)}) {
        Resize(size.width(), size.height());
        std::vector<QRect> taken;
        int frames = 0;
        for (const auto* frame : area->widget()->findChildren<QGroupBox*>(Qt::FindDirectChildrenOnly)) {
            frames += frame->isHidden() ? 0 : 1;
            for (const auto* control : frame->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
                if (!control->isHidden()) {
                    EXPECT_TRUE(frame->rect().contains(control->geometry())) << control->objectName().toStdString();
                    EXPECT_GE(control->width(), std::min(control->sizeHint().width(), control->minimumWidth()));
                    taken.push_back(control->geometry().translated(frame->pos()));
                }
            }
        }
        EXPECT_EQ(frames, 6);
        EXPECT_EQ(taken.size(), 300U + 100 * 2 + 100 + 1);   // The counters have three controls, the lists two.
        for (std::size_t i = 0; i < taken.size(); ++i) {
            EXPECT_TRUE(area->widget()->rect().contains(taken[i]));
            EXPECT_TRUE(std::none_of(taken.begin(), taken.begin() + static_cast<std::ptrdiff_t>(i),
                                     [&](const QRect& other) { return other.intersects(taken[i]); }));
        }
        EXPECT_TRUE(bar->isVisible());
        EXPECT_FALSE(area->verticalScrollBar()->isVisible()) << "the columns end where the page ends";
        bar->setValue(bar->maximum());
        EXPECT_FALSE(Child("chkPrgmPin(0)")->visibleRegion().isEmpty()) << "the pins stand at the far right";
    }
    bar->setValue(0);
    QWheelEvent wheel({20, 20}, {20, 20}, {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&wheel);   // Only what comes from the mouse itself goes on to the parents.
    qApp->notify(Child("cmbBits(1)"), &wheel);
    EXPECT_GT(bar->value(), 0) << "the wheel scrolls on over a list and doesn't change it";
    EXPECT_EQ(Child<QComboBox>("cmbBits(1)")->currentIndex(), 0);
    OpenPart("SMALL", "[SETUP]\n");
    EXPECT_EQ(bar->value(), 0);
    EXPECT_FALSE(bar->isVisibleTo(area));
}
