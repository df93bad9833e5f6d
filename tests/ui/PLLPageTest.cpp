#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QTabBar>
#include <QToolButton>
#include <functional>

#include "support/TestPart.h"
#include "ui/Spinner.h"
#include "ui/WindowFixture.h"

namespace {

constexpr std::array kRegisters{"", "N1", "R1", "F1", "C1", "N2", "R2", "N3", "R3"};
constexpr std::array kBoxes{"txtOsc", "txtFpd", "txtVCO", "txtRCounter", "txtNCounter", "txtFractNum", "txtFractDen"};
constexpr auto kStart = "10 100 1000 100 10000 0 4";

struct Field {
    const char* name;
    int reg;   ///< Counted from 1.
    int position;
    int length;
    QStringList texts = {};
};

/// Three loops at 10 MHz, R 100, N 10000: the first fractional, over 4, with both prescalers; the second an integer
/// loop with an N prescaler; the third bare. Bits 16 up of each register hold its number, so that what goes to the
/// port tells which register it is.
QString ThreeLoops() {
    const std::array kContents{10000, 100, 4 << 8, 0, 10000, 100, 10000, 100};
    const std::vector<Field> fields{{"N1", 1, 0, 16},
                                    {"R1", 2, 0, 14},
                                    {"NUM", 3, 0, 8},
                                    {"DEN", 3, 8, 8},
                                    {"POL", 4, 0, 1, {"-", "+"}},
                                    {"ICP", 4, 1, 1, {"LOW", "HIGH"}},
                                    {"TRI", 4, 2, 1, {"Active", "Tristate"}},
                                    {"NP1", 4, 3, 1, {"32", "64"}},
                                    {"RP1", 4, 4, 1, {"1", "2"}},
                                    {"N2", 5, 0, 16},
                                    {"R2", 6, 0, 14},
                                    {"NP2", 6, 14, 2, {"32", "30", "0", "8/9"}},
                                    {"N3", 7, 0, 16},
                                    {"R3", 8, 0, 14}};
    QString text =
        "[SETUP]\nREGISTER_LENGTH=20\nCONTROL_LENGTH=0\nADDRESS=&H378\nCLOCK=1\nDATA=2\nLE=4\n"
        "[REGISTERS]\nCOUNT=8\n";
    for (int i = 0; i < 8; ++i) {
        const int value = (i + 1) << 16 | kContents.at(static_cast<std::size_t>(i));
        text += QString("NAME0%1=%2\nMASK0%1=0\nVALUE0%1=%3\n")
                    .arg(i)
                    .arg(kRegisters.at(static_cast<std::size_t>(i) + 1))
                    .arg(value);
    }
    text += QString("[BITS]\nCOUNT=%1\nMINIMUMVALUE00=20\n").arg(fields.size());
    for (int i = 0; const auto& [name, reg, position, length, texts] : fields) {
        const QString n = QString("%1").arg(i++, 2, 10, QChar('0'));
        text += QString("NAME%1=%2\nREG%1=%3\nPOS%1=%4\nLEN%1=%5\n")
                    .arg(n, name, kRegisters.at(static_cast<std::size_t>(reg)))
                    .arg(position)
                    .arg(length);
        text += texts.isEmpty() ? QString() : QString("COUNT%1=%2\nFORMAT%1=String\n").arg(n).arg(texts.size());
        for (int k = 0; k < texts.size(); ++k) {
            text += QString("VAL%1%2=%3\n").arg(n).arg(k, 2, 10, QChar('0')).arg(texts[k]);
        }
    }
    return text +
           "[PLLS]\nCOUNT=3\nNAME00=RF\nN00=N1\nR00=R1\nPD00=POL\nIPO00=ICP\nTRI00=TRI\nNP00=NP1\nRP00=RP1\n"
           "FRACTNUM00=NUM\nFRACTDEN00=DEN\nNAME01=IF\nN01=N2\nR01=R2\nNP01=NP2\nNAME02=LO\nN02=N3\nR02=R3\n";
}

QString Member(const QString& array, int index) {
    return QStringLiteral("%1(%2)").arg(array).arg(index);
}

}   // namespace

class PLLPageTest : public WindowFixture {
protected:
    /// All registers sent, page of the loop current, no prescaler check.
    void Open(int loop) {
        Child<QAction>("mnuSaveDeviceSettings")->setChecked(false);
        OpenPart("THREE", ThreeLoops().toStdString());
        Choose("mnuNoCheck");
        part.LoadChanges();
        Page(4 + loop);
        port.Clear();
    }

    QString Text(const QString& name) { return Child<QLineEdit>(name)->text(); }
    QString Label(const QString& name) { return Child<QLabel>(name)->text(); }

    /// What the boxes of a loop show: reference, phase detector, VCO, R, N and, on a fractional loop, the fraction.
    QString Shows(int loop) {
        QStringList texts;
        for (const char* box : kBoxes) {
            if (const QString name = Member(box, loop); Shown(name)) {
                texts << Text(name);
            }
        }
        return texts.join(' ');
    }

    /// The registers that went out since the last call, by name.
    QString Sent() {
        QStringList sent;
        const auto registers = QString::fromStdString(Shifted(port.TakeWords())).split('|', Qt::SkipEmptyParts);
        for (const QString& bits : registers) {
            sent << kRegisters.at(static_cast<std::size_t>(bits.toInt(nullptr, 2) >> 16));
        }
        return sent.join(' ');
    }

    /// Puts the caret in a box without a move that counts, and types over what it holds.
    void TypeInto(const QString& box, const QString& text) {
        auto* edit = Child<QLineEdit>(box);
        edit->setFocus(Qt::OtherFocusReason);
        edit->selectAll();
        QTest::keyClicks(edit, text);
    }

    void EnterInto(const QString& box, const QString& text) {
        TypeInto(box, text);
        KeyClick(Qt::Key_Return);
    }

    void Press(const QString& spinner, bool up) {
        auto* pair = Child<Spinner>(spinner);
        QTest::mouseClick(up ? pair->UpButton() : pair->DownButton(), Qt::LeftButton);
        Settle();
    }

    QColor Background(const QString& box) { return Child(box)->palette().color(QPalette::Base); }
};

TEST_F(PLLPageTest, AnEntryShowsWhatTheLoopReallyDoes) {
    const struct {
        int loop;
        const char* box;
        const char* typed;
        const char* shows;
    } kCases[] = {
        {0, "txtVCO", "1000.25", "10 100 1000.25 100 10002.5 2 4"},
        {1, "txtVCO", "1000.25", "10 100 1000.2 100 10002"},
        {1, "txtVCO", "1000.06", "10 100 1000.1 100 10001"},
        {1, "txtVCO", "  1e3 ", "10 100 1000 100 10000"},
        {0, "txtVCO", "1,000.5", kStart},
        {0, "txtVCO", "", kStart},
        {0, "txtVCO", "1", "10 100 2.1 100 21 4 4"},
        {1, "txtVCO", "1e300", "10 100 100 100 1000"},
        {1, "txtFpd", "300", "10 303.030303030303 3030.30303030303 33 10000"},
        {1, "txtFpd", "0", "10 100 1000 100 10000"},
        {0, "txtOsc", "-10", kStart},
        {0, "txtOsc", " 20 ", "20 200 2000 100 10000 0 4"},
        {1, "txtOsc", "0", "0.000001 0.00001 0.0001 100 10000"},
        {1, "txtRCounter", "50", "10 200 2000 50 10000"},
        {1, "txtNCounter", "10000.7", "10 100 1000.1 100 10001"},
        {0, "txtNCounter", "10001.5", "10 100 1000.15 100 10001.5 2 4"},
        {0, "txtFractNum", "7", "10 100 1000.175 100 10001.75 7 4"},
        {0, "txtFractNum", "300", "10 100 1006.375 100 10063.75 255 4"},
        {0, "txtFractDen", "0", "10 100 1000 100 10000 0 0"},
    };
    for (const auto& [loop, box, typed, shows] : kCases) {
        for (const auto key : {Qt::Key_Return, Qt::Key_Tab}) {
            SCOPED_TRACE(testing::Message() << box << " \"" << typed << "\" key " << key);
            Open(loop);
            TypeInto(Member(box, loop), typed);
            KeyClick(key);
            EXPECT_EQ(Shows(loop), shows);
            EXPECT_EQ(FocusName() == Member(box, loop), key == Qt::Key_Return);
        }
    }
}

TEST_F(PLLPageTest, LeavingWhatNobodyTypedMovesNothing) {
    Open(0);
    EnterInto("txtVCO(0)", "1000.05");   // 10000.5: read back and split anew a trace could be lost.
    EnterInto("txtFpd(0)", "300");
    const QString shown = Shows(0);
    EXPECT_EQ(shown, "10 303.030303030303 3030.45454545455 33 10000.5 2 4");
    for (int i = 0; i < 40; ++i) {   // Round the whole page, over every box, spinner and label.
        KeyClick(Qt::Key_Tab);
    }
    EXPECT_EQ(Shows(0), shown);
}

TEST_F(PLLPageTest, EverySourceLoadsByItsOwnRule) {
    const auto leave = [&](const char* box) { Focus(box), KeyClick(Qt::Key_Tab); };
    const struct {
        const char* what;
        std::function<void()> act;
        const char* sent;
        bool always = true;   ///< Or only with the automatic reload of changes.
    } kCases[] = {
        {"txtOsc Enter", [&] { EnterInto("txtOsc(0)", "20"); }, "R3", false},
        {"txtOsc left", [&] { leave("txtOsc(0)"); }, "R3", false},
        {"txtOsc letters", [&] { EnterInto("txtOsc(0)", "x"); }, "R3", false},
        {"txtVCO Enter", [&] { EnterInto("txtVCO(0)", "1001"); }, "N1 F1 R3", false},
        {"txtVCO letters", [&] { EnterInto("txtVCO(0)", "abc"); }, "R3", false},
        {"txtVCO left", [&] { leave("txtVCO(0)"); }, "N1 F1 R3"},
        {"txtVCO left by a click", [&] { Focus("txtVCO(0)"), Click("txtOsc(0)"); }, "N1 F1 R3"},
        {"txtFpd Enter", [&] { EnterInto("txtFpd(0)", "300"); }, "R1 R3"},
        {"txtFpd letters", [&] { EnterInto("txtFpd(0)", "?"); }, "R3"},
        {"txtFpd left", [&] { leave("txtFpd(0)"); }, "R1 R3"},
        {"txtRCounter Enter", [&] { EnterInto("txtRCounter(0)", "9"); }, "R1 R3"},
        {"txtRCounter left", [&] { leave("txtRCounter(0)"); }, "R1 R3"},
        {"txtNCounter Enter", [&] { EnterInto("txtNCounter(1)", "9"); }, "N2 R3"},
        {"txtNCounter left, fractional", [&] { leave("txtNCounter(0)"); }, "R3"},
        {"txtFractNum Enter", [&] { EnterInto("txtFractNum(0)", "1"); }, "F1 R3"},
        {"txtFractNum left", [&] { leave("txtFractNum(0)"); }, "F1 R3"},
        {"txtFractDen left", [&] { leave("txtFractDen(0)"); }, "F1 R3"},
        {"spnRCounter", [&] { Press("spnRCounter(0)", true); }, "R1 R3"},
        {"SpnFpd", [&] { Press("SpnFpd(0)", false); }, "R1 R3"},
        {"spnNCounter", [&] { Press("spnNCounter(0)", true); }, "N1 F1 R3"},
        {"SpnFractNum", [&] { Press("SpnFractNum(0)", true); }, "F1 R3"},
        {"spnFractDen", [&] { Press("spnFractDen(0)", false); }, "F1 R3"},
        {"lblPDPol", [&] { Click("lblPDPol(0)"); }, "C1 R3"},
        {"lblCPGain", [&] { KeyClick("lblCPGain(0)", Qt::Key_Space); }, "C1 R3"},
        {"lblCPState", [&] { KeyClick("lblCPState(0)", Qt::Key_Return); }, "C1 R3"},
        {"lblNPrescale", [&] { Click("lblNPrescale(0)"); }, "C1 R3"},
        {"lblRPrescale", [&] { Click("lblRPrescale(0)"); }, "C1 R3"},
        {"lblRPrescale, right button", [&] { Click("lblRPrescale(0)", Qt::RightButton); }, ""},
        {"lblPDPol without a field", [&] { Click("lblPDPol(1)"); }, ""},
        {"F2", [&] { KeyClick(Qt::Key_F2); }, "N1 F1 R3"},
        {"F3", [&] { KeyClick(Qt::Key_F3); }, "N1 F1 R3"},
        {"F5", [&] { KeyClick(Qt::Key_F5); }, "R3"},
        {"F6", [&] { KeyClick(Qt::Key_F6); }, "F1 R3"},
        {"Ctrl+F", [&] { KeyClick(Qt::Key_F, Qt::ControlModifier); }, "N1 F1 R3"},
        {"Ctrl+C", [&] { KeyClick(Qt::Key_C, Qt::ControlModifier); }, "R1 R3"},
        {"Ctrl+X", [&] { KeyClick(Qt::Key_X, Qt::ControlModifier); }, "R3"},
        {"Ctrl+L", [&] { KeyClick(Qt::Key_L, Qt::ControlModifier); }, "N1 R1 F1 C1 N2 R2 N3 R3"},
    };
    for (const auto& [what, act, sent, always] : kCases) {
        for (const bool automatic : {true, false}) {
            SCOPED_TRACE(testing::Message() << what << (automatic ? "" : " without automatic reload"));
            Open(0);
            Window().setFocus(Qt::OtherFocusReason);
            Child<QAction>("mnuAutoReloadChange")->setChecked(automatic);
            Register("R3").Change(true);   // Left from elsewhere: any load takes it along.
            act();
            EXPECT_EQ(Sent(), automatic || always ? sent : "");
        }
    }
}

TEST_F(PLLPageTest, TheKeyboardControlsWorkWhereverTheFocusIs) {
    const struct {
        Qt::Key key;
        Qt::KeyboardModifiers with;
        const char* shows;   ///< After the text "250" was typed into the phase detector's box.
        const char* focus;
    } kCases[] = {
        {Qt::Key_F1, {}, "10 100 999.75 100 9997.5 2 4", ""},
        {Qt::Key_F2, {}, "10 100 1000.25 100 10002.5 2 4", ""},
        {Qt::Key_F3, {}, "10 100 997.5 100 9975 0 4", ""},
        {Qt::Key_F4, {}, "10 100 1002.5 100 10025 0 4", ""},
        {Qt::Key_F5, {}, kStart, ""},
        {Qt::Key_F6, {}, "10 100 1000.025 100 10000.25 1 4", ""},
        {Qt::Key_C, Qt::ControlModifier, "10 250 2500 40 10000 0 4", "txtFpd(0)"},
        {Qt::Key_F, Qt::ControlModifier, "10 250 2500 40 10000 0 4", "txtVCO(0)"},
        {Qt::Key_X, Qt::ControlModifier, "10 250 2500 40 10000 0 4", "txtOsc(0)"},
        {Qt::Key_L, Qt::ControlModifier, "10 250 1000 100 10000 0 4", ""},
    };
    for (const auto& [key, with, shows, focus] : kCases) {
        SCOPED_TRACE(testing::Message() << key);
        Open(0);
        TypeInto("txtFpd(0)", "250");   // Its text is the step; a short-cut that leaves it applies it first.
        KeyClick(key, with);
        EXPECT_EQ(Shows(0), shows);
        EXPECT_EQ(FocusName(), *focus == '\0' ? "txtFpd(0)" : focus);
        if (*focus != '\0') {
            EXPECT_EQ(Child<QLineEdit>(focus)->selectedText(), Text(focus));
        }
    }
    for (const char* name : {"SpnFractNum(0)", "lblPDPol(0)", "tabPart"}) {
        Open(0);
        Focus(name);
        KeyClick(Qt::Key_F2);
        EXPECT_EQ(Text("txtNCounter(0)"), "10001") << name;
    }
    Open(0);
    TypeInto("txtOsc(0)", "-10");
    KeyClick(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(Text("txtOsc(0)"), "-10") << "applied as it stands";
    Open(0);
    TypeInto("txtFpd(0)", "x");
    KeyClick(Qt::Key_F2);
    EXPECT_EQ(Shows(0), kStart);
    EXPECT_NE(Window().Status().NoteText(), "") << "the step was unknown";
    Page(1);
    KeyClick(Qt::Key_F2);
    EXPECT_EQ(Sent(), "");
}

TEST_F(PLLPageTest, EachLoopHasItsOwnControls) {
    Open(2);
    KeyClick(Qt::Key_F2);
    EXPECT_EQ(Shows(2), "10 100 1000.1 100 10001");
    KeyClick(Qt::Key_F6);
    EnterInto("txtRCounter(2)", "10");
    Page(5);
    Press("SpnFpd(1)", false);
    EXPECT_EQ(Shows(0), kStart);
    EXPECT_EQ(Shows(1), "10 99.009900990099 990.09900990099 101 10000");
    EXPECT_EQ(Shows(2), "10 1000 10001 10 10001");
    EXPECT_EQ(Sent(), "N3 R3 R2");

    const struct {
        const char* member;
        bool shown[3];
    } kShown[] = {{"lblRPrescale(%1)", {true, false, false}}, {"lblNPrescale(%1)", {true, true, false}},
                  {"SpnFractNum(%1)", {true, false, false}},  {"spnFractDen(%1)", {true, false, false}},
                  {"txtFractDen(%1)", {true, false, false}},  {"lblPDPol(%1)", {true, true, true}}};
    for (const auto& [member, shown] : kShown) {
        for (int loop = 0; loop < 3; ++loop) {
            EXPECT_EQ(Shown(QString(member).arg(loop)), shown[loop]) << member << loop;
        }
    }
    EXPECT_EQ(Label("lblPDPol(0)") + Label("lblPDPol(1)"), "-+");
    EXPECT_EQ(Label("lblCPGain(0)") + Label("lblCPGain(1)"), "LOWIcp");
    EXPECT_TRUE(Child("lblCPState(0)")->isEnabled());
    EXPECT_FALSE(Child("lblCPState(1)")->isEnabled());
}

TEST_F(PLLPageTest, ThePrescalerCheckTellsWhichRuleIsBroken) {
    const struct {
        const char* menu;
        int n;
        int clicks;        ///< On the prescaler, from 32 to 30, 0 and "8/9".
        const char* cba;   ///< "-" for a box that is hidden, "!" before one that is red.
    } kCases[] = {
        {"mnuDualCheck", 1000, 0, "- 31 8"},     {"mnuDualCheck", 63, 0, "- 1 !31"},
        {"mnuQuadCheck", 1000, 0, "31 2 0"},     {"mnuQuadCheck", 30, 0, "0 !7 !2"},
        {"mnuQuadCheck", 1001, 1, "33 2.5 1"},   {"mnuNoCheck", 63, 0, "- - -"},
        {"mnuDualCheck", 63, 2, "- - -"},        {"mnuQuadCheck", 63, 3, "- - -"},
        {"mnuDualCheck", 65535, 0, "- 2047 31"},
    };
    for (const auto& [menu, n, clicks, cba] : kCases) {
        SCOPED_TRACE(testing::Message() << menu << " N " << n);
        Open(1);
        Choose("mnuDualCheck");   // Something red to start from.
        EnterInto("txtNCounter(1)", "63");
        Choose(menu);
        EnterInto("txtNCounter(1)", QString::number(n));
        for (int i = 0; i < clicks; ++i) {
            Click("lblNPrescale(1)");
        }
        QStringList shown;
        for (const char* box : {"txtCvalue(1)", "txtBvalue(1)", "txtAvalue(1)"}) {
            const bool red = Background(box) == QColor(0xFF, 0, 0);
            EXPECT_TRUE(red || Background(box) == QColor(0, 0xFF, 0)) << box;
            EXPECT_EQ(Child(box)->toolTip().isEmpty(), !red) << box << ": not by colour alone";
            EXPECT_LT(Child(box)->palette().color(QPalette::Text).lightness(), 64) << box;
            EXPECT_EQ(Shown(QString(box).replace("txt", "lbl")), Shown(box));
            shown << (!Shown(box) ? "-" : (red ? "!" : "") + Text(box));
        }
        EXPECT_EQ(shown.join(' '), cba);
        EXPECT_EQ(Shown("shpPreChk(1)"), QString(cba) != "- - -");
        EXPECT_FALSE(Shown("shpPreChk(2)")) << "has no prescaler";
    }
    for (const char* menu : {"mnuNoCheck", "mnuDualCheck"}) {   // On the pages that aren't current as well.
        Page(0);
        Choose(menu);
        EXPECT_EQ(Shown("txtBvalue(0)") && Shown("lblAvalue(1)"), QString(menu) == "mnuDualCheck");
    }
}

TEST_F(PLLPageTest, OnlyTheUsersOwnMovesLeaveABox) {
    const auto clickTab = [&] {
        auto* bar = Child<QTabBar>("qt_tabwidget_tabbar");
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(1).center());
    };
    const auto goToAnotherWindow = [&] {
        QWidget other;
        other.show();
        other.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&other));
    };
    const auto readMessage = [&] {
        AnswerMessageBox("stop");
        Window().Asking().MessageBox("stop", "", MessageIcon::None);
    };
    const auto openMenu = [&] {
        QMenuBar* bar = Window().menuBar();
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(bar->actions().front()).center());
        ASSERT_NE(QApplication::activePopupWidget(), nullptr);
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
        Settle();
    };
    const struct {
        const char* move;
        std::function<void()> act;
        bool counts;
    } kCases[] = {
        {"Tab", [&] { KeyClick(Qt::Key_Tab); }, true},
        {"Shift+Tab", [&] { KeyClick(Qt::Key_Backtab); }, true},
        {"another box", [&] { Click("txtOsc(0)"); }, true},
        {"beside the boxes", [&] { Click("lblPLL(13)"); }, true},
        {"another page's tab", clickTab, true},
        {"page changed by program", [&] { Page(0); }, false},
        {"focus moved by program", [&] { Child("txtOsc(0)")->setFocus(Qt::OtherFocusReason); }, false},
        {"another window", goToAnotherWindow, false},
        {"message", readMessage, false},
        {"menu", openMenu, false},
    };
    for (const auto& [move, act, counts] : kCases) {
        Open(0);
        TypeInto("txtVCO(0)", "2000");
        act();
        EXPECT_EQ(Register("N1").Value(), counts ? 65536 + 20000 : 65536 + 10000) << move;
    }
}

TEST_F(PLLPageTest, AMissedEntryIsSaidUntilTheNextEntry) {
    Open(1);
    const auto tip = [&] { return Child("txtVCO(1)")->toolTip(); };
    const auto note = [&] { return Window().Status().NoteText(); };
    const QString hint = tip();
    EXPECT_TRUE(hint.contains("MHz") && hint.contains("100 kHz")) << hint.toStdString();
    EnterInto("txtVCO(1)", "1000.06");
    for (const char* said : {"1000.06 MHz", "1000.1 MHz", "40000 Hz", "ppm"}) {
        EXPECT_TRUE(tip().contains(said) && note().contains(said)) << said << " in " << note().toStdString();
    }
    KeyClick(Qt::Key_Tab);   // Applied once more, now met: no entry of the user's.
    KeyClick(Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(note().contains("1000.06"));
    EnterInto("txtVCO(1)", "1000");
    EXPECT_EQ(note(), "");
    EXPECT_EQ(tip(), hint);
    EnterInto("txtFpd(1)", "0");
    EXPECT_NE(note(), "") << "why it was refused";
}

TEST_F(PLLPageTest, AFaultyPartFileEmptiesOnlyWhatItBreaks) {
    QString text = ThreeLoops();
    text.replace("NP00=NP1", "NP00=NP9").replace("R01=R2", "R01=NOWHERE").replace("FRACTDEN00=DEN", "");
    OpenPart("FAULTY", text.toStdString());
    EXPECT_EQ(Label("lblNPrescale(0)"), "");
    EXPECT_TRUE(Child("lblNPrescale(0)")->toolTip().contains("NP9"));
    EXPECT_EQ(Shows(0), "10 100  100  0 ") << "N needs the denominator";
    EXPECT_EQ(Label("lblPDPol(0)"), "-");
    EXPECT_EQ(Shows(1), "10    10000");
    EXPECT_TRUE(Child("txtFpd(1)")->toolTip().contains("NOWHERE"));
    EXPECT_EQ(Shows(2), "10 100 1000 100 10000");
    for (const char* box : kBoxes) {   // Whatever is tried, the program stays up and says why.
        EnterInto(Member(box, 0), "77");
    }
    Press("spnRCounter(1)", true);
    EXPECT_TRUE(Window().Status().NoteText().contains("NOWHERE"));
}

TEST_F(PLLPageTest, AnotherDeviceStartsAfresh) {
    Open(0);
    EXPECT_EQ(Window().Pages().count(), 7);
    OpenPart("NONE", "[PLLS]\nCOUNT=0\n");
    EXPECT_EQ(Window().Pages().count(), 5);
    EXPECT_FALSE(Has("linPLL(19)"));
    Page(4);
    EXPECT_EQ(Shows(0), kStart) << "stays as it was";
    EnterInto("txtFractNum(0)", "3");
    Click("lblPDPol(0)");
    Press("spnRCounter(0)", true);
    KeyClick(Qt::Key_F2);
    EXPECT_EQ(Sent(), "");
    OpenPart("ONE",
             "[REGISTERS]\nCOUNT=1\nNAME00=A\nMASK00=0\n[BITS]\nCOUNT=1\nNAME00=N\nREG00=A\nLEN00=9\n"
             "[PLLS]\nCOUNT=1\nNAME00=SOLE\nN00=N\nR00=N\n");
    EXPECT_EQ(Window().Pages().tabText(4), "SOLE");
    EXPECT_FALSE(Shown("txtFractNum(0)"));
    EXPECT_FALSE(Child("lblPDPol(0)")->isEnabled());
    EXPECT_EQ(Shows(0), "10 10000 10 1 0");
    EnterInto("txtRCounter(0)", "0");
    EXPECT_EQ(Shows(0), "10 10000 10 1 0") << "an R of 0 is repaired";
    EXPECT_EQ(Child<QLineEdit>("txtRegBits(0)")->text().right(4), "1  0") << "and its register's row shows that";
}
