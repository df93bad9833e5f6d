#include <QAbstractEventDispatcher>
#include <QMenuBar>
#include <QTabBar>

#include "support/Cases.h"
#include "support/TestPart.h"
#include "support/TextTable.h"
#include "ui/WindowFixture.h"
#include "ui/controls/Spinner.h"

namespace {

constexpr std::array kRegisters{"", "N1", "R1", "F1", "C1", "N2", "R2", "N3", "R3"};
constexpr std::array kBoxes{"txtOsc", "txtFpd", "txtVCO", "txtRCounter", "txtNCounter", "txtFractNum", "txtFractDen"};
constexpr auto kStart = "10 100 1000 100 10000 0 4";

/// Three loops at 10 MHz, R 100, N 10000: the first fractional, over 4, with both prescalers; the second an integer
/// loop with an N prescaler; the third bare. Bits 16 up of each register hold its number, so that what goes to the
/// port tells which register it is.
constexpr auto kThreeLoops = R"([SETUP]|REGISTER_LENGTH=20|CONTROL_LENGTH=0|ADDRESS=&H378|CLOCK=1|DATA=2|LE=4
[REGISTERS]|COUNT=8
NAME00=N1|MASK00=0|VALUE00=&H12710|NAME01=R1|MASK01=0|VALUE01=&H20064|NAME02=F1|MASK02=0|VALUE02=&H30400
NAME03=C1|MASK03=0|VALUE03=&H40000|NAME04=N2|MASK04=0|VALUE04=&H52710|NAME05=R2|MASK05=0|VALUE05=&H60064
NAME06=N3|MASK06=0|VALUE06=&H72710|NAME07=R3|MASK07=0|VALUE07=&H80064
[BITS]|COUNT=14
NAME00=N1|REG00=N1|POS00=0|LEN00=16|MINIMUMVALUE00=20|NAME01=R1|REG01=R1|POS01=0|LEN01=14
NAME02=NUM|REG02=F1|POS02=0|LEN02=8|NAME03=DEN|REG03=F1|POS03=8|LEN03=8
NAME04=POL|REG04=C1|POS04=0|COUNT04=2|VAL0400=-|VAL0401=+
NAME05=ICP|REG05=C1|POS05=1|COUNT05=2|VAL0500=LOW|VAL0501=HIGH
NAME06=TRI|REG06=C1|POS06=2|COUNT06=2|VAL0600=Active|VAL0601=Tristate
NAME07=NP1|REG07=C1|POS07=3|COUNT07=2|VAL0700=32|VAL0701=64
NAME08=RP1|REG08=C1|POS08=4|COUNT08=2|VAL0800=1|VAL0801=2
NAME09=N2|REG09=N2|POS09=0|LEN09=16|NAME10=R2|REG10=R2|POS10=0|LEN10=14
NAME11=NP2|REG11=R2|POS11=14|LEN11=2|COUNT11=4|VAL1100=32|VAL1101=30|VAL1102=0|VAL1103=8/9
NAME12=N3|REG12=N3|POS12=0|LEN12=16|NAME13=R3|REG13=R3|POS13=0|LEN13=14
[PLLS]|COUNT=3|NAME00=RF|N00=N1|R00=R1|PD00=POL|IPO00=ICP|TRI00=TRI|NP00=NP1|RP00=RP1|FRACTNUM00=NUM|FRACTDEN00=DEN
NAME01=IF|N01=N2|R01=R2|NP01=NP2|NAME02=LO|N02=N3|R02=R3
)";

}   // namespace

class PLLPageTest : public WindowFixture {
protected:
    /// All registers sent, page of the loop current, no prescaler check.
    void Open(int loop) {
        Child<QAction>("mnuSaveDeviceSettings")->setChecked(false);
        OpenPart("THREE", kThreeLoops);
        Choose("mnuNoCheck");
        part.LoadChanges();
        Page(4 + loop);
        port.Clear();
    }

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
        Child(box)->setFocus(Qt::OtherFocusReason);
        WindowFixture::TypeInto(box, text);
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
    // The loop, its box, what is typed and the key; what the boxes show then.
    for (const TextRow& row : TextTable(R"(
        0 txtVCO 1000.25 Enter '10 100 1000.25 100 10002.5 2 4';  1 txtVCO '  1e3 ' Tab '10 100 1000 100 10000'
        0 txtVCO 1,000.5 Enter '10 100 1000 100 10000 0 4';  0 txtVCO '' Tab '10 100 1000 100 10000 0 4'
        1 txtFpd 300 Tab '10 303.030303030303 3030.30303030303 33 10000';  0 txtOsc -10 Enter '10 100 1000 100 10000 0 4'
        1 txtRCounter 50 Enter '10 200 2000 50 10000';  0 txtNCounter 10001.5 Tab '10 100 1000.15 100 10001.5 2 4'
        0 txtFractNum 300 Enter '10 100 1006.375 100 10063.75 255 4'
        0 txtFractDen 0 Tab '10 100 1000 100 10000 0 0')")) {
        const int loop = CellShort(row[0]);
        const QString box = Member(QString::fromStdString(row[1]), loop);
        SCOPED_TRACE(testing::Message() << row[1] << " \"" << row[2] << "\" " << row[3]);
        Open(loop);
        TypeInto(box, QString::fromStdString(row[2]));
        KeyClick(row[3] == "Enter" ? Qt::Key_Return : Qt::Key_Tab);
        EXPECT_EQ(Shows(loop).toStdString(), row[4]);
        EXPECT_EQ(FocusName() == box, row[3] == "Enter");
    }
}

TEST_F(PLLPageTest, EverySourceLoadsByItsOwnRule) {
    const auto leave = [&](const char* box) { Focus(box), KeyClick(Qt::Key_Tab); };
    // What is done, what is sent, and whether always or only with the automatic reload of changes.
    constexpr bool kAlways = true;
    constexpr bool kIfReloading = false;
    const Cases<const char*, std::function<void()>, const char*, bool> cases = {
        {"txtOsc Enter", [&] { EnterInto("txtOsc(0)", "20"); }, "R3", kIfReloading},
        {"txtOsc left", [&] { leave("txtOsc(0)"); }, "R3", kIfReloading},
        {"txtVCO Enter", [&] { EnterInto("txtVCO(0)", "1001"); }, "N1 F1 R3", kIfReloading},
        {"txtVCO letters", [&] { EnterInto("txtVCO(0)", "abc"); }, "R3", kIfReloading},
        {"txtVCO left", [&] { leave("txtVCO(0)"); }, "N1 F1 R3", kAlways},
        {"txtVCO left by a click", [&] { Focus("txtVCO(0)"), Click("txtOsc(0)"); }, "N1 F1 R3", kAlways},
        {"txtFpd Enter", [&] { EnterInto("txtFpd(0)", "300"); }, "R1 R3", kAlways},
        {"txtFpd left", [&] { leave("txtFpd(0)"); }, "R1 R3", kAlways},
        {"txtRCounter Enter", [&] { EnterInto("txtRCounter(0)", "9"); }, "R1 R3", kAlways},
        {"txtRCounter left", [&] { leave("txtRCounter(0)"); }, "R1 R3", kAlways},
        {"txtNCounter Enter", [&] { EnterInto("txtNCounter(1)", "9"); }, "N2 R3", kAlways},
        {"txtNCounter left, fractional", [&] { leave("txtNCounter(0)"); }, "R3", kAlways},
        {"txtFractNum Enter", [&] { EnterInto("txtFractNum(0)", "1"); }, "F1 R3", kAlways},
        {"txtFractNum left", [&] { leave("txtFractNum(0)"); }, "F1 R3", kAlways},
        {"txtFractDen left", [&] { leave("txtFractDen(0)"); }, "F1 R3", kAlways},
        {"spnRCounter", [&] { Press("spnRCounter(0)", true); }, "R1 R3", kAlways},
        {"SpnFpd", [&] { Press("SpnFpd(0)", false); }, "R1 R3", kAlways},
        {"spnNCounter", [&] { Press("spnNCounter(0)", true); }, "N1 F1 R3", kAlways},
        {"SpnFractNum", [&] { Press("SpnFractNum(0)", true); }, "F1 R3", kAlways},
        {"spnFractDen", [&] { Press("spnFractDen(0)", false); }, "F1 R3", kAlways},
        {"lblPDPol", [&] { Click("lblPDPol(0)"); }, "C1 R3", kAlways},
        {"lblCPGain", [&] { KeyClick("lblCPGain(0)", Qt::Key_Space); }, "C1 R3", kAlways},
        {"lblCPState", [&] { KeyClick("lblCPState(0)", Qt::Key_Return); }, "C1 R3", kAlways},
        {"lblNPrescale", [&] { Click("lblNPrescale(0)"); }, "C1 R3", kAlways},
        {"lblRPrescale", [&] { Click("lblRPrescale(0)"); }, "C1 R3", kAlways},
        {"lblRPrescale, right button", [&] { Click("lblRPrescale(0)", Qt::RightButton); }, "", kAlways},
        {"lblPDPol without a field", [&] { Click("lblPDPol(1)"); }, "", kAlways},
        {"F2", [&] { KeyClick(Qt::Key_F2); }, "N1 F1 R3", kAlways},
        {"F5", [&] { KeyClick(Qt::Key_F5); }, "R3", kAlways},
        {"F6", [&] { KeyClick(Qt::Key_F6); }, "F1 R3", kAlways},
        {"Ctrl+F", [&] { KeyClick(Qt::Key_F, Qt::ControlModifier); }, "N1 F1 R3", kAlways},
        {"Ctrl+C", [&] { KeyClick(Qt::Key_C, Qt::ControlModifier); }, "R1 R3", kAlways},
        {"Ctrl+X", [&] { KeyClick(Qt::Key_X, Qt::ControlModifier); }, "R3", kAlways},
        {"Ctrl+L", [&] { KeyClick(Qt::Key_L, Qt::ControlModifier); }, "N1 R1 F1 C1 N2 R2 N3 R3", kAlways}};
    for (const auto& [what, act, sent, always] : cases) {
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
    // The key; what the loop shows after the text "250" was typed into the phase detector's box; the focus, if it
    // moves.
    for (const auto& [key, with, shows, focus] : Cases<Qt::Key, Qt::KeyboardModifiers, const char*, const char*>{
             {Qt::Key_F1, {}, "10 100 999.75 100 9997.5 2 4", ""},
             {Qt::Key_F2, {}, "10 100 1000.25 100 10002.5 2 4", ""},
             {Qt::Key_F4, {}, "10 100 1002.5 100 10025 0 4", ""},
             {Qt::Key_F6, {}, "10 100 1000.025 100 10000.25 1 4", ""},
             {Qt::Key_C, Qt::ControlModifier, "10 250 2500 40 10000 0 4", "txtFpd(0)"},
             {Qt::Key_F, Qt::ControlModifier, "10 250 2500 40 10000 0 4", "txtVCO(0)"},
             {Qt::Key_X, Qt::ControlModifier, "10 250 2500 40 10000 0 4", "txtOsc(0)"},
             {Qt::Key_L, Qt::ControlModifier, "10 250 1000 100 10000 0 4", ""}}) {
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
    Page(1);
    KeyClick(Qt::Key_F2);
    EXPECT_EQ(Sent(), "");
    EXPECT_TRUE(Note().contains("F2 ")) << "why nothing happened";
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

    for (const auto& [member, loops] : Cases<const char*, int>{{"lblRPrescale", 1},
                                                               {"lblNPrescale", 2},
                                                               {"SpnFractNum", 1},
                                                               {"spnFractDen", 1},
                                                               {"txtFractDen", 1},
                                                               {"lblPDPol", 3}}) {
        for (int loop = 0; loop < 3; ++loop) {
            EXPECT_EQ(Shown(Member(member, loop)), loop < loops) << member << loop;
        }
    }
}

TEST_F(PLLPageTest, ThePrescalerCheckTellsWhichRuleIsBroken) {
    // The check, N, clicks on the prescaler from 32 to 30, 0 and "8/9"; C, B and A: "-" for a box that is hidden,
    // "!" before one that is red.
    const Cases<const char*, int, int, const char*> cases = {{"mnuDualCheck", 63, 0, "- 1 !31"},
                                                             {"mnuQuadCheck", 1001, 1, "33 2.5 1"},
                                                             {"mnuNoCheck", 63, 0, "- - -"},
                                                             {"mnuQuadCheck", 63, 3, "- - -"}};
    for (const auto& [menu, n, clicks, cba] : cases) {
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
    Open(1);
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
    const auto goToAnotherWindow = [] {
        QWidget other;
        other.show();
        other.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&other, kPatience));
    };
    const auto readMessage = [&] {
        AnswerMessageBox("stop");
        Window().Asking().MessageBox("stop", "", MessageIcon::None);
        Settle();
    };
    const auto openMenu = [&] {
        QMenuBar* bar = Window().menuBar();
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(bar->actions().front()).center());
        ASSERT_NE(QApplication::activePopupWidget(), nullptr);
        QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
        Settle();
    };
    for (const auto& [move, act, counts] : Cases<const char*, std::function<void()>, bool>{
             {"Tab", [&] { KeyClick(Qt::Key_Tab); }, true},
             {"Shift+Tab", [&] { KeyClick(Qt::Key_Backtab); }, true},
             {"another box", [&] { Click("txtOsc(0)"); }, true},
             {"beside the boxes", [&] { Click("lblPLL(13)"); }, true},
             {"another page's tab", clickTab, true},
             {"page changed by program", [&] { Page(0); }, false},
             {"focus moved by program", [&] { Child("txtOsc(0)")->setFocus(Qt::OtherFocusReason); }, false},
             {"another window", goToAnotherWindow, false},
             {"message", readMessage, false},
             {"menu", openMenu, false}}) {
        Open(0);
        TypeInto("txtVCO(0)", "2000");
        act();
        EXPECT_EQ(Register("N1").Value(), counts ? 65536 + 20000 : 65536 + 10000) << move;
    }
}

TEST_F(PLLPageTest, WhatBecameOfAnEntryIsSaidAsLongAsItIsTrue) {
    Open(1);
    // As an event loop that has nothing left to do.
    const auto idle = [] { QMetaObject::invokeMethod(QAbstractEventDispatcher::instance(), "aboutToBlock"); };
    const auto tip = [&] { return Child("txtVCO(1)")->toolTip(); };
    const QString hint = tip();
    const QString missed = "asked 1000.06 MHz, reached 1000.1 MHz: +40000 Hz, +40 ppm";
    const auto miss = [&] {
        part.LoadChanges();
        EnterInto("txtVCO(1)", "1000.06");
        EXPECT_EQ(Note(), missed + "; sent N2");
        EXPECT_EQ(tip(), hint + '\n' + missed);
    };
    miss();
    KeyClick(Qt::Key_Tab);   // Applied once more, now met: no entry of the user's.
    KeyClick(Qt::Key_F, Qt::ControlModifier);
    idle();
    EXPECT_EQ(Note(), missed + "; sent N2");
    EnterInto("txtVCO(1)", "1G");
    EXPECT_EQ(Note(), "1000 MHz exact, sent N2");
    EXPECT_EQ(tip(), hint);
    for (const auto& [change, goes] :
         Cases<std::function<void()>, bool>{{[&] { Register("N1").Value(70000); }, true},   // As a client's call does.
                                            {[&] { part.OutputPinValue(part.OutputPinValue()); }, false},
                                            {[&] { part.LoadAll(); }, false}}) {
        miss();
        change();
        part.UpdatePLLDisplay();
        idle();
        EXPECT_EQ(Note() == "", goes) << Note().toStdString();
        EXPECT_EQ(tip() == hint, goes) << tip().toStdString();
    }
    Choose("mnuAutoReloadChange");
    EnterInto("txtVCO(1)", "1001");
    EXPECT_EQ(Note(), "1001 MHz exact, not sent: AutoReload with Changes is off");
    KeyClick(Qt::Key_L, Qt::ControlModifier);
    idle();
    EXPECT_EQ(Note(), "") << "sent after all";
    for (const auto& [act, note] : Cases<std::function<void()>, const char*>{
             {[&] { Press("spnRCounter(1)", true); }, "R: 101 exact, sent R2"},
             {[&] { KeyClick(Qt::Key_F2); }, "sent N2"},
             {[&] { EnterInto("txtOsc(1)", "20"); }, "20 MHz exact, not sent"},
             {[&] { EnterInto("txtFpd(1)", "0"); }, "can't compare"},
             {[&] { EnterInto("txtRCounter(1)", "5k"); }, "Value of the R counter: \"5k\""}}) {
        act();
        EXPECT_TRUE(Note().contains(note)) << Note().toStdString();
    }
}

TEST_F(PLLPageTest, AFaultyPartFileEmptiesOnlyWhatItBreaks) {
    QString text = kThreeLoops;
    text.replace("NP00=NP1", "NP00=NP9").replace("R01=R2", "R01=NOWHERE").replace("FRACTDEN00=DEN", "");
    OpenPart("FAULTY", text.toStdString());
    EXPECT_EQ(Text("lblNPrescale(0)"), "");
    EXPECT_TRUE(Child("lblNPrescale(0)")->toolTip().contains("NP9"));
    EXPECT_EQ(Shows(0), "10 100  100  0 ") << "N needs the denominator";
    EXPECT_EQ(Text("lblPDPol(0)"), "-");
    EXPECT_EQ(Shows(1), "10    10000");
    EXPECT_TRUE(Child("txtFpd(1)")->toolTip().contains("NOWHERE"));
    EXPECT_EQ(Shows(2), "10 100 1000 100 10000");
    for (const char* box : kBoxes) {   // Whatever is tried, the program stays up and says why.
        EnterInto(Member(box, 0), "77");
    }
    Press("spnRCounter(1)", true);
    EXPECT_TRUE(Note().contains("NOWHERE"));
}

TEST_F(PLLPageTest, AnotherDeviceStartsAfresh) {
    Open(0);
    EXPECT_EQ(Window().Pages().count(), 7);
    part.AddPLLTab("FREE", 19, 9, 22);   // A page of no PLL, the current one now.
    EXPECT_EQ(Window().Pages().tabText(6) + Window().Pages().tabText(7), "LOFREE");
    KeyClick(Qt::Key_F2);
    EXPECT_EQ(Sent(), "");
    OpenPart("NONE", "[PLLS]|COUNT=0|");
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
             "[REGISTERS]|COUNT=1|NAME00=A|MASK00=0|[BITS]|COUNT=1|NAME00=N|REG00=A|LEN00=9|"
             "[PLLS]|COUNT=1|NAME00=SOLE|N00=N|R00=N|");
    EXPECT_EQ(Window().Pages().tabText(4), "SOLE");
    EXPECT_FALSE(Shown("txtFractNum(0)"));
    EXPECT_FALSE(Child("lblPDPol(0)")->isEnabled());
    EXPECT_EQ(Shows(0), "10 10000 10 1 1");
    EnterInto("txtRCounter(0)", "0");
    EXPECT_EQ(Shows(0), "10 10000 10 1 1") << "an R of 0 is repaired, and so the N in the same field";
    EXPECT_EQ(Text("txtRegBits(0)").right(4), "1  0") << "and its register's row shows that";
}
