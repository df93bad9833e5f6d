#include <QCheckBox>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include "automation/Automation.h"
#include "burst/SetupFile.h"
#include "pll/cPLL.h"
#include "settings/Modes.h"
#include "support/Cases.h"
#include "ui/WindowFixture.h"

// Two windows side by side, one worked by hand and one by calls that come in over the bus: after each step both must
// look the same and have written the same to their ports.

namespace {

void CopyParts(const TempFolder& folder) {
    for (const auto& file : std::filesystem::directory_iterator(PARTS_DIR)) {
        std::filesystem::copy(file, folder.Path(""));
    }
}

QString Number(double v) {
    return QString::fromStdString(GeneralText(v));
}

/// All that a window shows but its status bar, a line a control, and what its device holds.
std::string State(frmPart& window, const TempFolder& folder) {
    QStringList lines;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        const auto* box = qobject_cast<const QAbstractButton*>(widget);
        QString line = widget->objectName() + ": ";
        for (const char* shown : {"text", "plainText", "currentText"}) {
            line += widget->property(shown).toString();
        }
        line += box != nullptr && box->isCheckable() && box->isChecked() ? " on" : "";
        if (!line.startsWith("sta") && !line.startsWith("qt_")) {
            lines << line.remove(QString::fromStdString(folder.Path("")));
        }
    }
    for (const QAction* action : window.findChildren<QAction*>()) {
        lines << action->objectName() + (action->isChecked() ? ": checked" : ":");
    }
    lines.sort();
    for (const cRegister& one : window.Device().Registers()) {
        lines << QString::fromStdString(one.ID()) + "=" + Number(one.Value());
    }
    lines << QString::number(window.Device().OutputPinValue()) << window.windowTitle()
          << QString::number(int(window.windowState() & (Qt::WindowMaximized | Qt::WindowMinimized)));
    return lines.join('\n').toStdString();
}

/// A program that drives the desk's window from outside, with a connection of its own.
class Client {
public:
    explicit Client(const QString& name)
        : bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name)), name_(name) {}
    ~Client() { Leave(); }
    /// Ends the connection, as the bus sees the end of a program.
    void Leave() {
        bus_ = QDBusConnection(QString());
        QDBusConnection::disconnectFromBus(name_);
    }

    QDBusPendingCall Start(const QString& path, const QString& interface, const QString& member,
                           const QVariantList& arguments = {}) {
        auto call =
            QDBusMessage::createMethodCall("com.ostrel.Tarnwick2x", path, "com.ostrel.Tarnwick2x." + interface, member);
        call.setArguments(arguments);
        return bus_.asyncCall(call, 300'000);
    }
    static QDBusMessage Finish(const QDBusPendingCall& call) {
        const QDBusPendingCallWatcher wakes(call);
        while (!wakes.isFinished()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return call.reply();
    }

    /// The first result of a call; its failure fails the test.
    QVariant Call(const QString& member, const QVariantList& arguments = {}) {
        const QDBusMessage reply = Finish(Start(application_, "_Application", member, arguments));
        EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage)
            << member.toStdString() << ": " << reply.errorMessage().toStdString();
        return reply.arguments().value(0);
    }
    void Create() {
        application_ = Finish(Start("/com/ostrel/Tarnwick2x", "Factory", "CreateApplication"))
                           .arguments()
                           .value(0)
                           .value<QDBusObjectPath>()
                           .path();
    }
    QDBusMessage Release() { return Finish(Start(application_, "Object", "Release")); }
    [[nodiscard]] const QString& Path() const { return application_; }

private:
    QDBusConnection bus_;
    QString name_;
    QString application_;
};

/// A window that is served on the bus.
struct Served {
    TempFolder folder;
    FakePort port;
    cPart part;
    frmPart window{part, port, folder.Path("")};
    Automation automation;

    explicit Served(const QDBusConnection& bus = QDBusConnection::sessionBus()) : automation(part, window, bus) {
        CopyParts(folder);
        window.Form_Load();
        window.show();
        automation.Start();
    }
    [[nodiscard]] QString Status() const { return window.findChild<QLabel*>("staAutomation")->text(); }
    [[nodiscard]] QString Note() const { return window.Status().NoteText(); }
};

struct Device {
    const char* name;
    const char* pll;
    const char* counter;   // A field with a counter box,
    double counted;        // and a value for it.
    const char* bit;       // A field with a check box.
    const char* pin;
    double vco, comparison, reference;
};

/// The window of the fixture is the one that is worked by hand.
class MembersTest : public WindowFixture, public testing::WithParamInterface<Device> {
protected:
    MembersTest() { CopyParts(folder); }

    /// The member of a control array that belongs to a field or pin, found by the caption of its own or of its label.
    QString MemberOf(const QString& array, const QString& captions, const QString& caption) {
        for (const QWidget* widget : Window().findChildren<QWidget*>()) {
            const QString name = widget->objectName();
            if (name.startsWith(captions + "(") && widget->property("text").toString() == caption) {
                return array + name.mid(captions.size());
            }
        }
        throw std::runtime_error("no control for " + caption.toStdString());
    }
    QString CounterBox() { return MemberOf("txtCntrVal", "lblCntr", GetParam().counter); }
    QString CheckBox() { return MemberOf("chkPrgmBit", "chkPrgmBit", GetParam().bit); }
    QString PinBox() { return MemberOf("chkPrgmPin", "chkPrgmPin", GetParam().pin); }

    /// Gives a window a mode, a set-up file with a burst that ends by itself, and another state than theirs.
    static void Prepare(frmPart& window) {
        cPart& part = window.Device();
        std::string error;
        window.Menu().AddMode(AddMode(part, window.AppPath(), "Mode A", {}, error), "Mode A");
        part.AddBurstCommand(part.Registers().At(2).ID(), 0);
        part.AddBurstCommand("", 1);
        EXPECT_EQ(error + SaveBurstCommands(part, window.AppPath() + "setup.mac"), "");
        window.findChild<QPushButton*>("cmdLoop")->click();
        part.PLLs().At(1).VCOFrequency(2 * GetParam().vco);
    }
};

TEST_P(MembersTest, DoTheSameAsByHand) {
    const Device d = GetParam();
    Served served;
    Client client("driving");
    client.Create();
    Window();
    const QString pll = d.pll;
    const Cases<std::string, QVariantList, std::function<void()>> steps = {
        {"SelectPart", {d.name}, [&] { SelectDevice(d.name); }},
        {"LoadPart", {}, [&] { Choose("mnuLoadPLL(0)"); }},
        {"SetVCOFrequency", {pll, d.vco}, [&] { EnterInto("txtVCO(0)", Number(d.vco)); }},
        {"SetPDFrequency",
         {pll, d.comparison},
         [&] {
             EnterInto("txtFpd(0)", Number(d.comparison));
             part.UpdateDisplays();   // By hand only the PLL and the registers are drawn anew.
         }},
        {"SetOSCinFrequency", {pll, d.reference}, [&] { EnterInto("txtOsc(0)", Number(d.reference)); }},
        {"SetPrgmBitValue", {d.counter, d.counted}, [&] { EnterInto(CounterBox(), Number(d.counted)); }},
        {"SetPrgmBits", {d.bit, 1.0}, [&] { Click(CheckBox()); }},
        {"SetPrgmPins", {d.pin, false}, [&] { Click(PinBox()); }},
        {"SetPrgmPins", {d.pin, true, true}, [&] { Click(PinBox()); }},
        {"LoadReg", {QVariant::fromValue(short{1})}, [&] { KeyClick("cmdLoadReg(1)", Qt::Key_Space); }},
        {"SetMode", {QVariant::fromValue(short{0})}, [&] { Choose("mnuMode(0)"); }},
        {"RestoreSetup", {"setup.mac"}, [&] { LoadBurstCommands(part, folder.Path("setup.mac")); }},
        {"RunBurstMode", {}, [&] { Click("cmdRun"); }},
        {"StopBurstMode", {}, [] {}},
        {"SetAutoReload", {false}, [&] { Choose("mnuAutoReloadChange"); }},
        {"SetSaveSettings", {false}, [&] { Choose("mnuSaveDeviceSettings"); }},
        {"SelectTab", {"BurstMode"}, [&] { Page(3); }},
        {"SelectTab", {"Bits/Pins"}, [&] { Page(2); }},
        {"SelectTab", {"Nowhere"}, [&] { Page(0); }},
        {"Maximize", {}, [&] { Window().showMaximized(); }},
        {"Minimize", {}, [&] { Window().showMinimized(); }},
        {"ShowTarnwick", {}, [&] { Window().showMaximized(); }}};
    for (const auto& [member, arguments, byHand] : steps) {
        SCOPED_TRACE(member);
        if (member == "SetMode") {
            Prepare(served.window);
            Prepare(Window());
        }
        served.port.Clear();
        port.Clear();
        client.Call(QString::fromStdString(member), arguments);
        byHand();
        Settle();
        EXPECT_EQ(State(served.window, served.folder), State(Window(), folder));
        EXPECT_EQ(served.port.Writes(), port.Writes());
        if (member == "SelectTab") {
            EXPECT_EQ(served.window.Pages().currentIndex(), Window().Pages().currentIndex());
        }
    }
    // What can be read is what the screen shows.
    EXPECT_EQ(Number(client.Call("GetVCOFrequency", {pll}).toDouble()), Text("txtVCO(0)"));
    EXPECT_EQ(Number(client.Call("GetOSCinFrequency", {pll}).toDouble()), Text("txtOsc(0)"));
    EXPECT_EQ(client.Call("GetPDFrequency", {pll}).toString(), Text("txtFpd(0)"));
    EXPECT_EQ(client.Call("GetPrgmBitValue", {d.counter}).toString(), Text(CounterBox()));
    EXPECT_EQ(client.Call("GetPrgmBits", {d.bit}).toInt(), Checked(CheckBox()));
    EXPECT_TRUE(client.Call("GetPrgmPins", {d.pin}).toBool());
    EXPECT_FALSE(client.Call("GetAutoReload").toBool());
    EXPECT_FALSE(client.Call("GetSaveSettings").toBool());
}

INSTANTIATE_TEST_SUITE_P(Devices, MembersTest,
                         testing::Values(Device{"QRV3320", "RF PLL", "R", 20, "CNT_RST", "CE", 1899.26, 4000, 40},
                                         Device{"QRV6180", "RF PLL", "R", 50, "CP_TRI", "XRES", 869.5, 50, 20},
                                         Device{"QRV7240", "PLL + VCO", "R", 13, "CP_TRI", "CE", 2402, 500, 26}),
                         [](const auto& one) { return std::string(one.param.name); });

TEST(AutomationTest, TheWindowIsHeldUntilTheFirstObjectEnds) {
    Served served;
    EXPECT_EQ(served.Status(), "Automation ready");
    Client one("one");
    Client two("two");
    one.Create();
    EXPECT_EQ(served.Status(), "Held by 1 client");
    served.window.showMinimized();
    two.Create();
    two.Create();
    EXPECT_TRUE(served.window.isMinimized()) << "a client that comes leaves the window as it is";
    EXPECT_EQ(served.Status(), "Held by 2 clients");
    EXPECT_FALSE(served.window.close()) << "the user closed a held window";
    EXPECT_TRUE(served.window.isVisible());

    // A burst run is asked to stop first, and that close is cancelled; the user's next one isn't.
    one.Call("SelectPart", {"QRV3320"});
    served.part.AddBurstCommand("INT", 0);
    const QDBusPendingCall run = one.Start(one.Path(), "_Application", "RunBurstMode");
    two.Leave();
    EXPECT_EQ(Client::Finish(run).type(), QDBusMessage::ReplyMessage);
    EXPECT_FALSE(served.part.BurstRunning());
    EXPECT_TRUE(served.window.isVisible());
    EXPECT_EQ(served.Status(), "Held by 1 client");
    served.window.Asking().MessageBox("still open", "", MessageIcon::None);
    EXPECT_TRUE(served.window.close());
    EXPECT_FALSE(served.window.isVisible());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "the message outlives the window";
    one.Release();
    EXPECT_EQ(served.Status(), "Automation ready");
}

TEST(AutomationTest, SaysInTheStatusBarWhyItIsOff) {
    const Served first;
    EXPECT_EQ(Served(QDBusConnection("never connected")).Status(), "Automation off: no session bus");
    EXPECT_EQ(Served(QDBusConnection::connectToBus(QDBusConnection::SessionBus, "second")).Status(),
              "Automation off: another Tarnwick has it");
    QDBusConnection::disconnectFromBus("second");
    EXPECT_EQ(first.Status(), "Automation ready");
}

TEST(AutomationTest, NoMessageWaitsForAClick) {
    Served served;
    Client client("client");
    client.Create();
    client.Call("SelectPart", {"QRV3320"});
    const std::string file = served.folder.Path("half.mac");
    std::ofstream(file) << "[SETUP]\nPART=QRV3320\n[MODES]\nNAME00=INTT\nVALUE00=7\n";
    SetupReport byHand = LoadBurstCommands(served.part, file);
    ASSERT_FALSE(byHand.skipped.empty());
    EXPECT_EQ(client.Call("RestoreSetup", {"half.mac"}).toString().toStdString(), file);
    EXPECT_EQ(served.Note().toStdString(), byHand.Message());
    std::ofstream(file) << "[SETUP]\nPART=QRV6180\n";
    const QDBusMessage refused =
        Client::Finish(client.Start(client.Path(), "_Application", "RestoreSetup", {QString::fromStdString(file)}));
    EXPECT_EQ(refused.errorName(), "com.ostrel.Tarnwick2x.Error.Refused");
    EXPECT_EQ(refused.errorMessage(),
              "This BurstCommand File was built for the QRV6180. Select the correct device before loading this file.");
}

/// The text of the message that is open, which is closed.
QString OpenMessage() {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    const QString text = box == nullptr ? QString() : box->text();
    if (box != nullptr) {
        box->accept();
    }
    return text;
}

TEST(AutomationTest, MessagesWaitUntilTheUserIsThereAndReachHimDuringAClientsRun) {
    Served served;
    Client client("client");
    client.Create();
    served.folder.File("LIST.ini",
                       Lines("[SETUP]|REGISTER_LENGTH=8|[REGISTERS]|COUNT=1|NAME00=A|MASK00=0|VALUE00=6|"
                             "[BITS]|COUNT=2|REG00=A|NAME00=L|TYPE00=List|POS00=1|LEN00=2|COUNT00=2|"
                             "VAL0000=a|VAL0001=b|REG01=A|NAME01=ON|TYPE01=Bit|DISPLAY01=TRUE|POS01=0|LEN01=1|"));
    client.Call("SelectPart", {"LIST"});
    EXPECT_EQ(OpenMessage(), "") << "during a call";
    served.part.UpdateBitDisplay();
    EXPECT_EQ(OpenMessage(), "Unable to set ListIndex");
    served.part.UpdateBitDisplay();
    EXPECT_EQ(OpenMessage(), "") << "a second time";

    served.part.AddBurstCommand("A", 0);
    QString help;
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, [&] {
        if (served.part.BurstRunning()) {
            QTest::mouseClick(served.window.findChild<QCheckBox*>("chkPrgmBit(1)"), Qt::RightButton);
            help = OpenMessage();
            served.part.StopBurstCommands();
        }
    });
    user.start(0);
    client.Call("RunBurstMode");
    EXPECT_EQ(help, "No Description Available");
}

}   // namespace
