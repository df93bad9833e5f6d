#include <QComboBox>
#include <QFileDialog>
#include <QFontInfo>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextBlock>
#include <QTimer>

#include "burst/SetupFile.h"
#include "burst/cBurst.h"
#include "ui/WindowFixture.h"

namespace {

constexpr auto kTwoRegisters = R"([SETUP]|REGISTER_LENGTH=3|CONTROL_LENGTH=0|[PINS]|COUNT=1|NAME00=CE|LOCATION00=3
[REGISTERS]|COUNT=2|NAME00=A|MASK00=0|VALUE00=5|NAME01=B|MASK01=0|VALUE01=2
)";

class BurstTab : public WindowFixture {
protected:
    void Open() {
        WritePart("ONE", kTwoRegisters);
        SelectDevice("ONE", "SingleInteger");
        constexpr int kBurstPage = 3;
        Page(kBurstPage);
    }
    QPlainTextEdit* List() { return Child<QPlainTextEdit>("txtBurstCmds"); }
    QStringList Shows() { return List()->toPlainText().split('\n'); }

    void Load(int entry) {
        auto* box = Child<QComboBox>("cmbLdBurst");
        box->setFocus();
        box->setCurrentIndex(entry);
        emit box->activated(entry);
        Settle();
    }
    void ClickLine(int line, bool twice = false) {
        const int half = List()->cursorRect().height() / 2;
        List()->setTextCursor(QTextCursor(List()->document()->findBlockByNumber(line - 1)));
        const QPoint target = List()->cursorRect().topLeft() + QPoint(2, half);
        if (twice) {
            QTest::mouseDClick(List()->viewport(), Qt::LeftButton, {}, target);
        } else {
            QTest::mouseClick(List()->viewport(), Qt::LeftButton, {}, target);
        }
        Settle();
    }
};

}   // namespace

TEST_F(BurstTab, ListIsBuiltInsertedOverwrittenAndDeleted) {
    Open();
    EXPECT_FALSE(Shown("cmdStrtSBI"));
    Load(0);
    Load(1);
    Click("cmdSetPins");
    TypeInto("txtDelay", " 7 ");
    Click("cmdDelay");
    EXPECT_EQ(Shows(), (QStringList{"Load A = 101; CE= False", "Load B = 010; CE= False", "Change Pin State; CE= False",
                                    "Delay of 7", ""}));
    ClickLine(2);
    EXPECT_EQ(Window().SelectedBurstLine, 2);
    EXPECT_EQ(List()->textCursor().selectedText(), "Load B = 010; CE= False");
    Click("cmdDelay");   // Goes in before the selected line; then the selection is gone.
    EXPECT_EQ(Shows()[1], "Delay of 7");
    Click("cmdInsert");
    EXPECT_EQ(Text("cmdInsert"), "Overwrite");
    ClickLine(1);
    Load(1);
    EXPECT_EQ(Shows()[0], "Load B = 010; CE= False");
    Load(0);
    EXPECT_EQ(Shows().size(), 7) << "without a selected line a command goes to the end, also in overwrite mode";
    ClickLine(7);   // Below the last command.
    EXPECT_EQ(Window().SelectedBurstLine, 7);
    EXPECT_FALSE(List()->textCursor().hasSelection());
    Click("cmdDelete");
    EXPECT_EQ(part.BurstCmds().Count(), 5);
    EXPECT_EQ(Shows()[4], "Delay of 7") << "the last one went";
    Click("cmdDeleteAll");
    EXPECT_EQ(Shows(), QStringList{""});
}

TEST_F(BurstTab, ADelayThatIsNoNumberIsToldAndAddsNothing) {
    Open();
    TypeInto("txtDelay", "soon");
    Answer<QMessageBox>([](QMessageBox& box) {
        EXPECT_TRUE(box.text().contains("soon")) << box.text().toStdString();
        box.accept();
    });
    Click("cmdDelay");
    EXPECT_EQ(part.BurstCmds().Count(), 0);
}

TEST_F(BurstTab, PatternShowsWaveformsUnderEachOther) {
    Open();
    Load(0);
    Click("cmdDelay");
    Click("Command1");
    Window().Pages().setCurrentIndex(0);
    Window().Pages().setCurrentIndex(3);   // Stays what it is.
    EXPECT_EQ(Shows(), (QStringList{"clk010101000", "dat110011000", "le  000000010", "Delay of 1000000", ""}));
    EXPECT_TRUE(QFontInfo(List()->font()).fixedPitch());
    const auto levelAt = [this](int line, int place) {
        QTextCursor caret(List()->document()->findBlockByNumber(line));
        caret.setPosition(caret.position() + place);
        return List()->cursorRect(caret).x();
    };
    for (const int level : {0, 8}) {
        EXPECT_NEAR(levelAt(0, 3 + level), levelAt(2, 4 + level), 1);
        EXPECT_NEAR(levelAt(1, 3 + level), levelAt(2, 4 + level), 1);
    }
    Click("cmdDelay");
    EXPECT_EQ(Shows()[0], "Load A = 101; CE= False") << "a change brings the descriptions back";
    Click("cmdLEMode");
    EXPECT_EQ(Text("cmdLEMode"), "LE High");
    Load(0);
    Click("Command1");
    EXPECT_EQ(Shows()[2], "le  000000010") << "only what is built from now on changes";
    EXPECT_EQ(Shows()[7], "le  000000011");
}

TEST_F(BurstTab, RunsOnceOrUntilStopped) {
    Open();
    Load(0);
    Click("cmdLoop");
    EXPECT_EQ(Text("cmdLoop"), "Single");
    port.Clear();
    Click("cmdRun");
    EXPECT_EQ(port.TakeWords(), (std::vector<int>{2, 3, 0, 1, 2, 3, 0, 4, 0}));
    EXPECT_EQ(Text("cmdRun"), "Run");
    EXPECT_TRUE(Note().contains("1 passes, 18 port writes")) << Note().toStdString();

    const std::string file = folder.Path("set-up.mac");
    SaveWithDialog(part, Window().Asking(), "Save");   // Is answered when the run has begun.
    Answer<QFileDialog>([&](QFileDialog& box) {
        box.findChild<QLineEdit*>()->setText(QString::fromStdString(file));
        QMetaObject::invokeMethod(&box, "accept");
    });
    AnswerMessageBox("The burst list is being played: stop it first. Nothing was done.");
    Child<QPushButton>("cmdLoop")->click();
    QTimer::singleShot(0, &Window(), [this] {
        EXPECT_EQ(Text("cmdRun"), "Stop");
        Click("cmdDelay");
        Click("cmdDelete");
        Click("cmdDeleteAll");
        Click("cmdSave");   // No dialog comes either.
        Click("cmdLoad");
        Choose("mnuSave");
        Choose("mnuRestore");
        EXPECT_EQ(part.BurstCmds().Count(), 1) << "no edit during a run";
        Click("cmdRun");
    });
    Child<QPushButton>("cmdRun")->click();
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_FALSE(part.BurstRunning());
    EXPECT_EQ(port.Words().size() % 9, 0U) << "always to the end of a pass";
}

TEST_F(BurstTab, DoubleClickGivesTheValueBack) {
    Open();
    Load(0);
    Register("A").Value(0);
    port.Clear();
    ClickLine(1);
    QTest::keyRelease(List(), Qt::Key_Return);   // Of a key that was pressed in a menu.
    EXPECT_EQ(Register("A").Value(), 0);
    ClickLine(1, true);
    EXPECT_EQ(Register("A").Value(), 5);
    Register("A").Value(0);
    QTest::keyPress(List(), Qt::Key_Return);
    EXPECT_EQ(Register("A").Value(), 5);
    EXPECT_TRUE(port.Writes().empty());
}

TEST_F(BurstTab, SBIDeviceHasItsButtons) {
    Open();
    OpenPart("SBI", "[SETUP]|SBI=TRUE|REGISTER_LENGTH=3|[REGISTERS]|COUNT=1|NAME00=ADR|MASK00=0|VALUE00=5|");
    EXPECT_TRUE(Shown("cmdStrtSBI") && Shown("cmdStopSBI"));
    Click("cmdStrtSBI");
    Click("cmdStopSBI");
    EXPECT_EQ(Shows(), (QStringList{"Start SBI Load Sequence", "Stop SBI Load Sequence", ""}));
    SelectDevice("ONE");
    EXPECT_FALSE(Shown("cmdStrtSBI"));
    EXPECT_EQ(Child<QComboBox>("cmbLdBurst")->count(), 2);
    EXPECT_EQ(Shows(), QStringList{""}) << "a list never survives its device";
}

TEST_F(BurstTab, SavesAndLoadsThroughTheDialog) {
    Open();
    Load(1);
    const QString file = QString::fromStdString(folder.Path("set-up.mac"));
    const auto choose = [&](const char* title, const QString& typed) {
        Answer<QFileDialog>([=](QFileDialog& box) {
            EXPECT_EQ(box.windowTitle(), QString::fromLatin1(title));
            EXPECT_EQ(box.nameFilters().size(), 3);
            EXPECT_TRUE(box.selectedNameFilter().contains("*.mac")) << box.selectedNameFilter().toStdString();
            box.findChild<QLineEdit*>()->setText(typed);
            QMetaObject::invokeMethod(&box, "accept");
        });
    };
    choose("Save BurstCommands", file.chopped(4));
    Click("cmdSave");
    ASSERT_TRUE(std::filesystem::exists(file.toStdString()));
    Answer<QFileDialog>([&file](QFileDialog& box) {
        box.findChild<QLineEdit*>()->setText(file.chopped(4));
        QTimer::singleShot(0, &box, [] {   // The question is asked inside the accepting.
            auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            EXPECT_TRUE(question->text().contains("set-up.mac")) << "asks about the name with its ending";
            question->button(QMessageBox::No)->click();
        });
        QMetaObject::invokeMethod(&box, "accept");
        box.reject();
    });
    Click("cmdSave");
    Register("B").Value(7);
    choose("Restore Part Setup", file);
    Choose("mnuRestore");
    EXPECT_EQ(part.BurstCmds().Count(), 2) << "added behind those of the list";
    EXPECT_EQ(Register("B").Value(), 2);

    OpenPart("TWO", kTwoRegisters);
    choose("Load BurstCommands", file);
    AnswerMessageBox(
        "This BurstCommand File was built for the ONE. Select the correct device before loading this file.");
    Click("cmdLoad");
    EXPECT_EQ(part.BurstCmds().Count(), 0);
    Answer<QFileDialog>([](QFileDialog& box) { box.reject(); });
    Choose("mnuSave");   // Cancelled: nothing is said.
}
