#include <QInputDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScreen>

#include "burst/cBurst.h"
#include "settings/Modes.h"
#include "support/TextTable.h"
#include "ui/WindowFixture.h"
#include "ui/window/Documents.h"
#include "ui/window/WindowPlace.h"

namespace {

constexpr auto kOneRegister =
    "[SETUP]|REGISTER_LENGTH=8|VERSION=1.7|[REGISTERS]|COUNT=1|NAME00=A|MASK00=0|VALUE00=165|";

class MainWindow : public WindowFixture {
protected:
    QAction* Item(const QString& name) { return Child<QAction>(name); }
    QString Captions(const QString& array, int count) {
        QStringList captions;
        for (int i = 0; i < count; ++i) {
            captions << Item(Member(array, i))->text();
        }
        return captions.join(QLatin1Char(' '));
    }
};

}   // namespace

TEST_F(MainWindow, StartsEmptyWithMenusFromTheSettingsFile) {
    folder.File("tarnwick.ini",
                "[MENUSINGPLL]\nCOUNT=2\nITEM00=ONE\nITEM01=R&D\n[RECENTPARTS]\nCOUNT=7\nITEM00=ONE\nITEM06=LAST\n");
    EXPECT_EQ(Window().windowTitle(), "QRV");
    EXPECT_EQ(Window().Pages().count(), 5);
    EXPECT_EQ(Captions("mnuSingQRVxxxx", 2), "ONE R&&D") << "a device's name is no mnemonic";
    EXPECT_EQ(Captions("mnuRecent", 7), "ONE .......... .......... .......... .......... .......... LAST");
    // An item, whether it is visible and checked, and its short-cut.
    for (const TextRow& row : TextTable(R"(mnuQRVxxxx(0) hidden '';  mnuVCO hidden '';  mnuSingPLL visible ''
        mnuEngineering hidden '';  mnuMode(0) hidden '';  mnuNoCheck visible '';  mnuAutoReload visible Ctrl+A
        mnuAutoReloadChange checked Ctrl+W;  mnuSaveDeviceSettings checked '';  mnuIncFrac(0) visible F6
        mnuNDec visible F1;  mnuLoadPLL(0) visible Ctrl+L)")) {
        QAction* item = Item(QString::fromStdString(row[0]));
        EXPECT_EQ(item->isVisible(), row[1] != "hidden") << row[0];
        EXPECT_EQ(item->isChecked(), row[1] == "checked") << row[0];
        EXPECT_EQ(item->shortcut().toString().toStdString(), row[2]) << row[0];
    }
}

TEST_F(MainWindow, SaysThatTheSettingsFileIsMissing) {
    Window();
    EXPECT_TRUE(Note().contains("tarnwick.ini")) << Note().toStdString();
    EXPECT_EQ(Captions("mnuRecent", 5), ".... .... .... .... ....");
}

TEST_F(MainWindow, PickingADeviceKeepsTheRecentListAndTheOldDevicesSettings) {
    folder.File("tarnwick.ini",
                "[MENUSINGPLL]\nCOUNT=2\nITEM00=ONE\nITEM01=TWO\n[RECENTPARTS]\nCOUNT=2\nITEM00=OLD\nITEM01=TWO\n");
    WritePart("ONE", kOneRegister);
    WritePart("TWO", kOneRegister);
    Window();
    Item("mnuDualCheck")->setChecked(true);
    Choose("mnuSingQRVxxxx(0)");
    EXPECT_EQ(Window().windowTitle(), "ONE");
    EXPECT_EQ(Window().txtINIVersion, "1.7");
    EXPECT_TRUE(Checked("mnuNoCheck") && !Checked("mnuDualCheck"));
    EXPECT_EQ(Captions("mnuRecent", 3), "ONE OLD ....");
    EXPECT_TRUE(Shown("cmdLoop")) << "a device of a family shows the burst controls";

    Register("A").Value(90);
    Choose("mnuSingQRVxxxx(0)");   // Picked again: saved, and read back.
    EXPECT_EQ(Register("A").Value(), 90);
    Register("A").Value(91);
    Item("mnuSaveDeviceSettings")->setChecked(false);
    const std::string before = folder.Read("ONE.ini");
    Item("mnuDualCheck")->setChecked(true);
    Choose("mnuRecent(1)");
    EXPECT_EQ(Window().windowTitle(), "OLD") << "a recent device without a file comes up empty";
    EXPECT_EQ(folder.Read("ONE.ini"), before) << "the setting is off: not a byte changes";
    EXPECT_TRUE(Checked("mnuDualCheck")) << "a recent device leaves the check as it is";
    EXPECT_EQ(Captions("mnuRecent", 2), "ONE OLD") << "nor does it move up";
    EXPECT_NE(folder.Read("tarnwick.ini").find("ITEM00=ONE"), std::string::npos);
}

TEST_F(MainWindow, CountsProblemsAndListsThemOnAClick) {
    OpenPart("BAD", "[SETUP]|REGISTER_LENGTH=many|[REGISTERS]|COUNT=2|NAME00=A|NAME01=A|");
    EXPECT_TRUE(Shown("staProblems"));
    EXPECT_TRUE(Text("staProblems").contains("2 problems"));
    Click("staProblems");
    const QString list = Child<QPlainTextEdit>("frmProblemsText")->toPlainText();
    EXPECT_TRUE(list.contains("BAD.ini:2: error: [SETUP] REGISTER_LENGTH")) << list.toStdString();
    EXPECT_TRUE(list.contains("BAD.ini:6: error: [REGISTERS] NAME01")) << list.toStdString();
    OpenPart("GOOD", kOneRegister);
    EXPECT_FALSE(Shown("staProblems"));
}

TEST_F(MainWindow, ModesAreAddedAndRestored) {
    OpenPart("ONE", kOneRegister);
    const auto name = [this](const char* text) {
        Answer<QInputDialog>([text](QInputDialog& box) {
            EXPECT_EQ(box.windowTitle(), "Menu Name");
            EXPECT_EQ(box.labelText(), "Enter Name of Mode for pulldown menu item");
            EXPECT_EQ(box.textValue(), "Recieve Mode");
            box.setTextValue(QString::fromLatin1(text));
            box.accept();
        });
        Choose("mnuAddMode");
    };
    name("Low & slow");
    std::string error;
    AddMode(part, folder.Path(""), "Another program's", {}, error);
    Register("A").Value(3);
    name("Fast");
    EXPECT_EQ(Captions("mnuMode", 2), "Low && slow Fast");
    Register("A").Value(4);
    Choose("mnuMode(1)");
    EXPECT_EQ(Register("A").Value(), 3);
    Answer<QInputDialog>([](QInputDialog& box) { box.reject(); });
    Choose("mnuAddMode");
    EXPECT_EQ(Window().findChild<QAction*>("mnuMode(2)"), nullptr);

    port.Clear();
    Choose("mnuMode(0)");
    EXPECT_EQ(Register("A").Value(), 165);
    EXPECT_TRUE(port.Writes().empty()) << "a mode is restored, not loaded";
    EXPECT_EQ(Text("txtRegBits(0)").remove(' '), "10100101");
    SelectDevice("ONE");
    EXPECT_EQ(Captions("mnuMode", 3), "Low && slow Another program's Fast") << "read back from the part file";
    WritePart("TWO", kOneRegister);
    Answer<QInputDialog>([this](QInputDialog& box) {   // Another program selects a device meanwhile.
        std::string two = "TWO";
        Window().SelectDevice(two);
        box.accept();
    });
    Choose("mnuAddMode");
    EXPECT_TRUE(Note().contains("Another device was selected")) << Note().toStdString();
    EXPECT_FALSE(Item("mnuMode(0)")->isVisible());
    EXPECT_EQ(Window().findChild<QAction*>("mnuMode(1)"), nullptr);
}

TEST_F(MainWindow, ClosesByItsRules) {
    folder.File("tarnwick.ini", "");
    WritePart("ONE", kOneRegister);
    SelectDevice("ONE", "SingleInteger");
    Register("A").Value(7);
    Window().bOLEServer = true;
    EXPECT_FALSE(Window().close()) << "held by another program";
    Window().bOLEServer = false;

    part.AddBurstCommand("0", BurstKind::Delay);
    bool closed = true;
    QTimer::singleShot(0, &Window(), [&] { closed = Window().close(); });
    part.RunBurstCommands();   // Goes round until the close, in the middle of it, stops it.
    EXPECT_FALSE(closed) << "the first close only stops the run";
    EXPECT_TRUE(Window().isVisible());
    EXPECT_TRUE(Window().close());
    EXPECT_EQ(part.ID(), "");
    EXPECT_NE(folder.Read("ONE.ini").find("VALUE00=7"), std::string::npos) << "closing saves as a device change does";
}

TEST_F(MainWindow, AutoReloadRunsByItsMark) {
    OpenPart("ONE", kOneRegister);
    auto* timer = Child<QTimer>("tmrAutoReload");
    EXPECT_FALSE(timer->isActive());
    EXPECT_EQ(timer->interval(), 10000);
    Choose("mnuAutoReload");
    EXPECT_TRUE(timer->isActive());
    timer->setInterval(1);
    port.Clear();
    EXPECT_TRUE(QTest::qWaitFor([this] { return port.Words().size() >= 2U * 8 + 3; }, kPatience)) << "each tick loads";
    Choose("mnuAutoReload");
    EXPECT_FALSE(timer->isActive());
    part.Updating(true);
    Choose("mnuAutoReload");
    EXPECT_FALSE(Checked("mnuAutoReload")) << "while the program updates, a click does nothing";
}

TEST_F(MainWindow, TellsWhatCouldNotBeSaved) {
    folder.File("tarnwick.ini", "");
    WritePart("ONE", kOneRegister);
    SelectDevice("ONE");
    std::filesystem::remove(folder.Path("ONE.ini"));
    std::filesystem::create_directory(folder.Path("ONE.ini"));
    part.ClearPLL();
    EXPECT_TRUE(Note().contains(QString::fromStdString(folder.Path("ONE.ini")))) << Note().toStdString();
}

TEST_F(MainWindow, TheStatusBarLeavesMostOfItsRoomToTheNote) {
    Resize(1280, 700);
    PortStatus status = port.Status();
    status.summary = "Firmata 2.5 on /dev/serial/by-id/usb-Arduino__www.arduino.cc__0043_55731323736351611260-if00";
    Window().Status().ShowPort(status);
    Window().Status().ShowAutomation("Held by 1 client");
    Window().Note("asked 2400.05 MHz, reached 2400.04999 MHz: -10 Hz, -0.0042 ppm; sent R0, R1");
    Settle();
    const auto* note = Child<QLabel>("staNote");
    EXPECT_GE(note->width(), note->fontMetrics().horizontalAdvance(Note()));
    EXPECT_TRUE(Child("staPort")->toolTip().contains(QString::fromStdString(status.summary)));
    Resize(641, 427);
    EXPECT_EQ(Window().width(), 641) << "nor does a long text widen the window";
}

TEST_F(MainWindow, TheWindowComesBackWhereItWas) {
    const QString file = QString::fromStdString(folder.Path("config/window.ini"));
    const QRect screen = Window().screen()->availableGeometry();
    const QRect usual(40, 50, 500, 300);
    for (const auto& [left, maximised] :
         {std::pair{usual, false}, {usual, true}, {usual.translated(9000, 9000), false}}) {
        std::filesystem::remove_all(folder.Path("config"));
        QWidget window;
        {
            const WindowPlace place(window, file);
            window.setGeometry(left);
            maximised ? window.showMaximized() : window.show();
        }
        QWidget next;
        const WindowPlace place(next, file);
        EXPECT_EQ(next.isMaximized(), maximised);
        EXPECT_TRUE(left == usual ? next.normalGeometry() == usual : screen.intersects(next.geometry()));
    }
    folder.File("config/window.ini", "[window]\nplace=@ByteArray(no place)\n");
    for (const char* faulty : {"", "/under/a/file"}) {
        QWidget window;
        const QSize before = window.size();
        const WindowPlace place(window, file + faulty);
        EXPECT_EQ(window.size(), before) << faulty;
    }
}

TEST_F(MainWindow, TheDocumentsAreFoundBesideTheProgramOrWhereTheyAreInstalled) {
    const QString programs = QString::fromStdString(folder.Path("bin"));
    const auto found = [&] { return QString(FindDocuments(programs)).remove(QString::fromStdString(folder.Path(""))); };
    EXPECT_EQ(found(), "");
    for (const auto& [made, opens] : {std::pair{"share/doc/tarnwick/ports.md", "share/doc/tarnwick"},
                                      {"share/doc/tarnwick/README.md", "share/doc/tarnwick/README.md"},
                                      {"bin/docs/README.md", "bin/docs/README.md"}}) {
        std::filesystem::create_directories(std::filesystem::path(folder.Path(made)).parent_path());
        folder.File(made, "");
        EXPECT_EQ(found(), opens);
    }
    Choose("mnuDocuments");
    EXPECT_NE(Note(), "") << "none lie beside the tests";
}
