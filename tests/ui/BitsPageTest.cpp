#include <QComboBox>
#include <QGroupBox>
#include <QHelpEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include "support/Cases.h"
#include "support/OrderDisplay.h"
#include "support/TestPart.h"
#include "ui/WindowFixture.h"

namespace {

constexpr int kBitsPage = 2;

/// Two registers of 8 bits, a field of each kind in two groups, a PLL, and pins on the lines D3 and C4.
constexpr auto kDevice = R"([SETUP]|REGISTER_LENGTH=8|CONTROL_LENGTH=0
[PINS]|COUNT=3|NAME00=CE & PD|LOCATION00=3|NAME01=TRIG|LOCATION01=11|NAME02=SAME|LOCATION02=3
[REGISTERS]|COUNT=2|NAME00=A|MASK00=0|VALUE00=0|NAME01=B|MASK01=0|VALUE01=32
[BITS]|COUNT=9
NAME00=ON|REG00=A|POS00=0|TYPE00=Bit|DISPLAY00=TRUE|FRAME00=First|DESCRIPTION00=Switches <b>on</b>
NAME01=HIDDEN|REG01=A|TYPE01=Bit|DISPLAY01=FALSE
NAME02=N|REG02=A|POS02=1|LEN02=4|TYPE02=Counter|DISPLAY02=TRUE|FRAME02=Second & last
STEPVALUE02=2|UNITS02=" kHz"|DESCRIPTION02=Counts
NAME03=GAIN|REG03=B|POS03=0|LEN03=3|TYPE03=List|FRAME03=First|COUNT03=3|VAL0300=low|VAL0301=mid & more|VAL0302=high
NAME04=WIDE|REG04=B|POS04=3|LEN04=2|TYPE04=Bit|DISPLAY04=TRUE|FRAME04=First
NAME05=M|REG05=B|POS05=5|LEN05=3|TYPE05=Counter|DISPLAY05=TRUE|FRAME05=First
NAME06=MODE|REG06=A|POS06=5|LEN06=2|TYPE06=List|FRAME06=Second & last|COUNT06=4
NAME07=LOST|REG07=NOWHERE|LEN07=1|TYPE07=Counter|DISPLAY07=TRUE|FRAME07=First
NAME08=LEADS|REG08=A|POS08=7|TYPE08=Bit|DISPLAY08=TRUE|FRAME08=First|MIRRORBITS08=NOBODY
[PLLS]|COUNT=1|NAME00=RF|N00=N|R00=M
)";

class BitsPageTest : public WindowFixture {
protected:
    void Open() {
        OpenPart("DEV", kDevice);
        Page(kBitsPage);
        part.LoadChanges();
        port.Clear();
    }

    /// The array members that stand for something, as "chkPrgmBit(0)=ON".
    QStringList Used(const QString& array) {
        QStringList used;
        for (int i = 0; Has(Member(array, i)); ++i) {
            if (Shown(Member(array, i))) {
                used << QStringLiteral("(%1)=").arg(i) + Child(Member(array, i))->accessibleName();
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
    EXPECT_EQ(Text("lblCntr(1)"), "N");
    EXPECT_EQ(Child("txtCntrVal(1)")->parentWidget()->objectName(), "fraPrgmBits(1)");
    EXPECT_EQ(Child("txtCntrVal(2)")->parentWidget()->objectName(), "fraPrgmBits(0)");
    EXPECT_EQ(Text("chkPrgmPin(0)"), "CE && PD") << "'&' must show as itself";
    EXPECT_EQ(Child<QGroupBox>("fraPrgmBits(1)")->title(), "Second && last");

    OpenPart("NEXT", "[SETUP]|[REGISTERS]|COUNT=1|NAME00=A|[BITS]|COUNT=1|NAME00=ONLY|REG00=A|TYPE00=List|");
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
    EXPECT_EQ(TabStops(10),
              QStringList({"cmbBits(1)", "chkPrgmBit(1)", "txtCntrVal(2)", "spnCntr(2)", "chkPrgmBit(2)",
                           "txtCntrVal(1)", "spnCntr(1)", "cmbBits(2)", "chkPrgmPin(0)", "chkPrgmPin(1)"}));
}

TEST_F(BitsPageTest, EachControlChangesRefreshesAndLoads) {
    Open();
    constexpr auto kBits = "registers bits plls ";
    constexpr auto kOthers = "bits registers plls ";
    // What is done, the displays that are refreshed, the bits that the device takes in.
    const Cases<const char*, std::function<void()>, const char*, const char*> cases = {
        {"check box, mouse", [&] { Click("chkPrgmBit(0)"); }, kBits, "00000001|"},
        {"check box, Space", [&] { KeyClick("chkPrgmBit(0)", Qt::Key_Space); }, kBits, "00000000|"},
        {"wide field goes one up", [&] { Click("chkPrgmBit(1)"); }, kBits, "00101000|"},
        {"spinner up", [&] { KeyClick("spnCntr(1)", Qt::Key_Up); }, kOthers, "00000010|"},
        {"spinner down", [&] { KeyClick("spnCntr(1)", Qt::Key_Down); }, kOthers, "00000000|"},
        {"spinner at 0 writes nothing", [&] { KeyClick("spnCntr(1)", Qt::Key_Down); }, kOthers, ""},
        {"typed number", [&] { EnterInto("txtCntrVal(1)", "12"); }, kOthers, "00001100|"},
        {"the same again goes out again", [&] { EnterInto("txtCntrVal(1)", "12"); }, kOthers, "00001100|"},
        {"list", [&] { KeyClick("cmbBits(1)", Qt::Key_Down); }, kOthers, "00101001|"}};
    for (const bool reload : {true, false}) {
        Child<QAction>("mnuAutoReloadChange")->setChecked(reload);
        const auto acts = [&](const std::function<void()>& act) {
            OrderDisplay log(port);
            part.UseDisplay(log);
            act();
            part.UseDisplay(Window());
            part.UpdateDisplays();
            return log.Order();
        };
        for (const auto& [what, act, order, sent] : cases) {
            SCOPED_TRACE(testing::Message() << what << ", reload " << reload);
            EXPECT_EQ(acts(act), order + std::string(reload && *sent != '\0' ? "load " : ""));
            EXPECT_EQ(Shifted(port.TakeWords()), reload ? sent : "");
        }
        EXPECT_EQ(acts([&] { Click("chkPrgmPin(0)"); }), reload ? "bits load " : "bits ");
        EXPECT_EQ(port.TakeWords(), reload ? std::vector<int>{0x008} : std::vector<int>()) << "the pins' word alone";
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
        EXPECT_FALSE(Checked(control)) << control;
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
    const Cases<const char*, const char*, const char*> cases = {
        {"  8 kHz ", "8 kHz", ""},
        {"9", "8 kHz", "asked 9 kHz, stored 8 kHz"},
        {"4", "4 kHz", ""},
        {"5 MHz", "4 kHz", "'5 MHz' is no number: 'N' stays at 4 kHz"},
        {"", "4 kHz", "is no number"}};
    for (const auto& [typed, shown, note] : cases) {
        const double before = Register("A").Value();
        TypeInto("txtCntrVal(1)", typed);
        EXPECT_EQ(Register("A").Value(), before) << "taken before Enter: " << typed;
        KeyClick("txtCntrVal(1)", Qt::Key_Enter);
        EXPECT_EQ(Text("txtCntrVal(1)"), shown) << typed;
        EXPECT_TRUE(*note == '\0' ? Note().isEmpty() : Note().contains(note)) << typed << ": " << Note().toStdString();
    }
    KeyClick("txtCntrVal(1)", Qt::Key_Return);   // As it stands, units and all.
    EXPECT_EQ(Text("txtCntrVal(1)"), "4 kHz");
    EXPECT_EQ(Note(), "");
}

TEST_F(BitsPageTest, TheRightButtonGivesHelpAndChangesNothing) {
    Open();
    for (const auto& [control, text] : Cases<const char*, const char*>{{"chkPrgmBit(0)", "Switches <b>on</b>"},
                                                                       {"chkPrgmBit(1)", "No Description Available"},
                                                                       {"txtCntrVal(1)", "Counts"},
                                                                       {"cmbBits(1)", "No Description Available"}}) {
        Answer<QMessageBox>([help = text](QMessageBox& box) {
            EXPECT_EQ(box.text(), help);
            EXPECT_EQ(box.windowTitle(), "Help");
            box.button(QMessageBox::Ok)->click();
        });
        Click(control, Qt::RightButton);
        EXPECT_EQ(AnswersLeft(), 0U) << control;
    }
    EXPECT_FALSE(Checked("chkPrgmBit(0)"));
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
    for (const auto& [bits, message] : Cases<int, bool>{{5, true}, {5, false}, {7, true}, {2, false}, {7, true}}) {
        gain.BitValue(bits);
        Window().Note({});
        if (message) {
            AnswerMessageBox("Unable to set ListIndex");
        }
        part.UpdateBitDisplay();
        Settle();
        const bool fits = bits < 3;
        EXPECT_EQ(AnswersLeft(), 0U) << bits;
        EXPECT_EQ(Note().contains("GAIN"), !fits) << Note().toStdString();
        EXPECT_EQ(Child<QComboBox>("cmbBits(1)")->currentIndex(), fits ? bits : -1);
        EXPECT_EQ(Child<QComboBox>("cmbBits(2)")->currentIndex(), 2) << "the next list is still filled";
        EXPECT_FALSE(part.Updating());
    }
}

TEST_F(BitsPageTest, AFaultyFieldLeavesTheRestAlone) {
    Open();
    EXPECT_FALSE(Child("txtCntrVal(3)")->isEnabled());
    EXPECT_TRUE(Child("spnCntr(3)")->toolTip().contains("NOWHERE"));
    EXPECT_EQ(Text("txtCntrVal(3)"), "?");
    EXPECT_TRUE(Child("txtCntrVal(2)")->isEnabled());
    part.PrgmBits().At("LOST").Register("B");
    part.UpdateBitDisplay();
    EXPECT_TRUE(Child("txtCntrVal(3)")->isEnabled()) << "mended, it can be used";

    Click("chkPrgmBit(2)");   // Its mirror field isn't found: then its own bit doesn't change either.
    EXPECT_TRUE(Note().contains("NOBODY")) << Note().toStdString();
    EXPECT_FALSE(Checked("chkPrgmBit(2)"));
    EXPECT_EQ(Shifted(port.TakeWords()), "");
}

TEST_F(BitsPageTest, PinsOnOneLineShowTheSameLevelAlsoWithoutFields) {
    Open();
    Click("chkPrgmPin(2)");
    EXPECT_TRUE(Checked("chkPrgmPin(0)"));
    Click("chkPrgmPin(0)");
    EXPECT_FALSE(Checked("chkPrgmPin(2)"));

    Page(0);
    OpenPart("PINS", "[PINS]|COUNT=2|NAME00=A|NAME01=B|ENABLED01=TRUE|");   // Both on the default line.
    Page(kBitsPage);
    EXPECT_TRUE(Checked("chkPrgmPin(0)"));
    Click("chkPrgmPin(1)");
    EXPECT_FALSE(Checked("chkPrgmPin(0)"));
}

TEST_F(BitsPageTest, NeitherTheWheelNorATypedTextChangesAClosedList) {
    Open();
    Resize(641, 427);
    auto* bar = Child<QScrollBar>("hscPrgmBits");
    bar->setMaximum(100);
    QWheelEvent wheel({20, 20}, {20, 20}, {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&wheel);   // Only what comes from the mouse itself goes on to the parents.
    qApp->notify(Child("cmbBits(1)"), &wheel);
    EXPECT_GT(bar->value(), 0) << "the wheel scrolls on over a list";
    KeyClicks("cmbBits(1)", "high");
    KeyClicks("cmbBits(2)", "2");
    EXPECT_EQ(Register("A").Value() + Register("B").Value(), 32);
    EXPECT_TRUE(port.Writes().empty());
}

TEST_F(BitsPageTest, APageIsFreshWhenItIsEnteredAndNothingStaleIsWrittenBack) {
    Open();
    const auto enter = [&](int page) {
        Window().Pages().setCurrentIndex(page);
        Settle();
    };
    cPrgmBits& r = part.PrgmBits().At("M");
    enter(4);
    EnterInto("txtRCounter(0)", "3");   // Doesn't refresh the fields.
    enter(kBitsPage);
    EXPECT_EQ(Text("txtCntrVal(2)"), "3");
    r.Value(5);
    KeyClick("txtCntrVal(2)", Qt::Key_Return);
    EXPECT_EQ(r.Value(), 5) << "set by somebody else meanwhile";
    r.Value(6);
    part.PortAddress(0x278);
    TypeInto("txtCntrVal(1)", "12");
    for (const int page : {0, 1, 4, kBitsPage}) {
        enter(page);
    }
    EXPECT_EQ(Text("txtPortAdr"), "278");
    EXPECT_EQ(Text("txtRegBits(1)"), "1  1  0  0  0  0  0  0");
    EXPECT_EQ(Text("txtRCounter(0)"), "6");
    EXPECT_EQ(Text("txtCntrVal(2)"), "6");
    EXPECT_EQ(Text("txtCntrVal(1)"), "12") << "is being edited";
    r.Value(7);
    part.PortAddress(0x3BC);
    KeyClick("txtRCounter(0)", Qt::Key_Return);
    KeyClick("txtPortAdr", Qt::Key_Return);
    EXPECT_EQ(r.Value(), 7);
    EXPECT_EQ(part.PortAddress(), 0x3BC);
}
