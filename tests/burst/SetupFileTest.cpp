#include <optional>

#include "burst/BurstText.h"
#include "burst/SetupFile.h"
#include "burst/cBurst.h"
#include "machine/Dialogs.h"
#include "partfile/PLLSection.h"
#include "partfile/PartFile.h"
#include "partfile/PartFileReader.h"
#include "pll/cPLL.h"
#include "support/Cases.h"
#include "support/FailingCalls.h"
#include "support/PartText.h"
#include "support/TempFolder.h"
#include "support/TestPart.h"

namespace {

/// All that a set-up file holds, as the device has it.
std::string State(cPart& part) {
    std::ostringstream text;
    text << HexText(static_cast<std::uint16_t>(part.PortAddress())) << ' ' << part.ClockPosition();
    for (const cPrgmPin& pin : part.PrgmPins()) {
        text << " | " << pin.ID() << ' ' << pin.Position() << (pin.Enabled() ? " on" : " off");
    }
    for (const cRegister& stored : part.Registers()) {
        text << " | " << stored.ID() << ' ' << FileText(stored.Value());
    }
    text << " | " << FileText(part.PLLs().At(1).XtalFrequency());
    for (const cBurst& command : part.BurstCmds()) {
        text << " | " << command.Description();
    }
    return text.str();
}

/// Two registers of 40 bits, a pin and a loop.
struct Device : TestPart {
    Device() : TestPart(40) {
        Register("A", 5);
        Register("B", 6);
        part.AddProgramPin("CE", 4);
        part.AddPLL("LOOP", "N", "R");
        part.PLLs().At(1).XtalFrequency(10);
    }
};

const std::string kStart = "378 1 | CE 4 off | A 5 | B 6 | 10";

const std::string kWhole =
    "[SETUP]\r\nADDRESS=888\r\nCLOCK=1\r\nDATA=2\r\nLE=4\r\nPART=TEST\r\nPINPOSITION00=4\r\n"
    "[MODES]\r\nNAME00=A\r\nVALUE00=1099511627775\r\nNAME01=B\r\nVALUE01=6\r\nOSCIN00=12.8\r\nPINS=16\r\n"
    "[BURST]\r\nCOUNT=3\r\nCOMMAND00=0\r\nREGISTER00=1099511627775\r\nREGISTERNAME00=A\r\nPINS00=0\r\n"
    "COMMAND01=2\r\nREGISTER01=1000\r\nCOMMAND02=1\r\nREGISTER02=0\r\nREGISTERNAME02=\r\nPINS02=16\r\n";

TEST(SetupFile, HoldsAllKeysInTheirOrderOrStaysAsItWas) {
    const TempFolder folder;
    Device device;
    device.part.Registers().At("A").Value(1099511627775.0);
    device.part.PLLs().At(1).XtalFrequency(12.8);
    device.part.AddBurstCommand("A", BurstKind::Load);
    device.part.AddBurstCommand("1000", BurstKind::Delay);
    device.part.PrgmPins().At("CE").Enabled(true);
    device.part.AddBurstCommand("", BurstKind::Pins);
    const std::string file = folder.File("set-up", "[OLD]\nKEY=1\n");
    {
        FailingCalls full(-1, "write");
        const FileCallsInPlace place(full);
        const std::string error = SaveBurstCommands(device.part, file);
        EXPECT_NE(error.find(file), std::string::npos) << error;
        EXPECT_NE(error.find("No space left"), std::string::npos) << error;
    }
    EXPECT_EQ(folder.Read("set-up"), "[OLD]\nKEY=1\n");
    EXPECT_EQ(SaveBurstCommands(device.part, file), "");
    EXPECT_EQ(folder.Read("set-up"), kWhole);
}

/// A device as it ships.
struct Shipped {
    FakePort port;
    cPart part;

    explicit Shipped(const std::filesystem::path& path) {
        part.UsePort(port);
        part.ID(path.stem().string());
        PartFile file(path.string(), part.FileProblems());
        PartFileReader reader(part, file);
        reader.ReadSetup();
        reader.ReadPins();
        reader.ReadRegisters();
        reader.ReadBits();
        ReadPLLs(part, file);
    }

    /// Every kind of command, values up to 41 bits, pins that change. Ends in the state that loading ends in.
    void FillList() {
        part.AddBurstCommand("ADR", BurstKind::StartSBI);
        double value = 2147483647;
        for (cRegister& loaded : part.Registers()) {
            loaded.Value(1);
            part.AddBurstCommand(loaded.ID(), BurstKind::Load);
            loaded.Value(value);
            value = 2 * value + 1;
            for (cPrgmPin& pin : part.PrgmPins()) {
                pin.Toggle();
            }
            part.AddBurstCommand(loaded.ID(), BurstKind::Load);
        }
        part.PrgmPins().At(1).Toggle();
        part.AddBurstCommand("ADR", BurstKind::StopSBI);
        part.AddBurstCommand("7", BurstKind::Delay);
        part.PrgmPins().At(1).Toggle();
        part.AddBurstCommand("", BurstKind::Pins);
    }
};

TEST(SetupFile, SavedLoadedAndSavedAgainIsTheSameForEveryShippedDevice) {
    const TempFolder folder;
    int devices = 0;
    for (const auto& entry : std::filesystem::directory_iterator(PARTS_DIR)) {
        if (entry.path().extension() != ".ini" || entry.path().stem() == "tarnwick") {
            continue;
        }
        SCOPED_TRACE(entry.path().stem().string());
        ++devices;
        Shipped first(entry.path());
        Shipped second(entry.path());
        first.FillList();
        EXPECT_EQ(SaveBurstCommands(first.part, folder.Path("1")), "");
        EXPECT_EQ(LoadBurstCommands(second.part, folder.Path("1")).Message(), "");
        EXPECT_EQ(SaveBurstCommands(second.part, folder.Path("2")), "");
        EXPECT_EQ(folder.Read("1"), folder.Read("2"));
        EXPECT_EQ(BurstText(first.part, false), BurstText(second.part, false));
        first.part.RunBurstCommands();
        second.part.RunBurstCommands();
        EXPECT_EQ(first.port.Writes(), second.port.Writes());
    }
    EXPECT_GE(devices, 8);
}

TEST(SetupFile, LoadingTakesWhatItCanAndTellsTheRest) {
    const TempFolder folder;
    const std::string endless(1000000, 'x');
    const std::string head = "[SETUP]\nPART=TEST\nPINPOSITION00=4\n";
    const std::string state = "[MODES]\nNAME00=A\nVALUE00=4.6\nNAME01=B\nVALUE01=6\nOSCIN00=10\nPINS=0\n";
    const std::string burst = head + state + "[BURST]\n";
    const std::string whole = "378 1 | CE 4 on | A 1099511627775 | B 6 | 12.8 | Load A = " + std::string(40, '1') +
                              "; CE= False | Delay of 1000 | Change Pin State; CE= True";
    const std::string refused = "This BurstCommand File was built for the ";
    const std::string select = ". Select the correct device before loading this file.";
    std::string lf = kWhole;
    std::erase(lf, '\r');
    // The contents, the state that they leave, and parts of the message: without any there is none.
    const Cases<std::string, std::string, std::vector<std::string>> cases = {
        {kWhole, whole, {}},
        {lf, whole, {}},
        {"[X]\nA=1\n" + kWhole + "COLOUR=red\r\n[Y]\r\n", whole, {}},
        {kWhole + endless + "=1\r\n[" + endless, whole, {}},
        {"[BURST]\nPINS00=16\nCOMMAND00=1\nCOUNT=1\n" + state + head,
         "378 1 | CE 4 on | A 5 | B 6 | 10 | Change Pin State; CE= True",
         {}},
        {head + state, kStart + " | Delay of 1000", {}},
        {burst, kStart + " | Delay of 1000", {"The file breaks off: 3 keys are missing, the first is [BURST] COUNT"}},
        {burst + "COUNT=99999999999\n", kStart, {"[BURST] COUNT: "}},
        {burst + "COUNT=-5\n", kStart, {}},
        {head + "ADDRESS=&H278\nCLOCK=0\n" + state + "[BURST]\nCOUNT=0\n", "278 1 | CE 4 off | A 5 | B 6 | 10", {}},
        {"[SETUP]\nPART=test\n", kStart, {refused + "test" + select}},
        {"[SETUP]\nPART=" + endless, kStart, {refused + "xxx"}},
        {"", kStart, {refused + "QRV" + select}},
        {std::string("\x7F\0[SETUP]\0PART=TEST\xFF\xFE\r\0\n", 24), kStart, {refused + "QRV" + select}},
        {"[SETUP]\nADDRESS=40000\nCLOCK=one\nPART=TEST\nPINPOSITION00=12\n[MODES]\nNAME00=A\nVALUE00=" + endless +
             "\nNAME01=b\nVALUE01=1\nOSCIN00=\nPINS=16\n[BURST]\nCOUNT=0",
         "378 1 | CE 4 on | A 5 | B 6 | 10",
         {"Not all of ", "line 2, [SETUP] ADDRESS: ", "line 3, [SETUP] CLOCK: \"one\"",
          "line 5, [SETUP] PINPOSITION00: pin 'CE' can't lie on line 12", "line 8, [MODES] VALUE00: \"xxx",
          "line 9, [MODES] NAME01: ", "line 11, [MODES] OSCIN00: "}},
        {burst + "COUNT=7\nCOMMAND00=3\nCOMMAND01=0\nREGISTERNAME01=C\nREGISTER01=1\nPINS01=16\nCOMMAND02=2\n"
                 "REGISTER02=1.5\nCOMMAND03=1\nPINS03=\nCOMMAND04=two\nCOMMAND05=0\nREGISTERNAME05=A\nREGISTER05=x\n"
                 "PINS05=16\nCOMMAND06=2\nREGISTER06=7\n",
         kStart + " | Delay of 7",
         {"[BURST] COMMAND00: no burst command has the kind 3",
          "[BURST] REGISTERNAME01: ", "[BURST] REGISTER02: \"1.5\" is no delay",
          "[BURST] PINS03: ", "[BURST] COMMAND04: \"two\"", "[BURST] REGISTER05: \"x\""}}};
    for (const auto& [contents, after, parts] : cases) {
        SCOPED_TRACE(contents.substr(0, 200));
        Device device;
        const std::string told = LoadBurstCommands(device.part, folder.File("set-up", contents)).Message();
        EXPECT_EQ(State(device.part), after);
        EXPECT_EQ(told.empty(), parts.empty()) << told;
        EXPECT_LT(told.size(), 3000U);
        for (const std::string& text : parts) {
            EXPECT_NE(told.find(text), std::string::npos) << text << " is missing in " << told;
        }
    }
}

TEST(SetupFile, NamesComeBackAsTheyAre) {
    const TempFolder folder;
    for (const char* name : {" A\t", "\"A\"", "'A'", "'", "\xC3\x84", "QRV"}) {
        TestPart device(3);
        device.part.ID(name);
        device.Register(name, 5);
        device.part.AddBurstCommand(name, BurstKind::Load);
        EXPECT_EQ(SaveBurstCommands(device.part, folder.Path("set-up")), "");
        EXPECT_EQ(LoadBurstCommands(device.part, folder.Path("set-up")).Message(), "");
        EXPECT_EQ(device.part.BurstCmds().Count(), 2) << name;
        EXPECT_FALSE(LoadBurstCommands(device.part, folder.Path("none")).applied) << name;
    }
}

TEST(SetupFile, StartAndStopComeBackWithTheirOwnValueAndPins) {
    const TempFolder folder;
    Device device;
    const std::string file = folder.File("sbi",
                                         "[SETUP]\nPART=TEST\nPINPOSITION00=4\n[BURST]\nCOUNT=3\nCOMMAND00=4\n"
                                         "REGISTERNAME00=ADR\nREGISTER00=1\nPINS00=0\nCOMMAND01=4\n"
                                         "REGISTERNAME01=ADR\nPINS01=0\nCOMMAND02=5\nPINS02=16\n");
    EXPECT_EQ(LoadBurstCommands(device.part, file).Message(), "");
    ASSERT_EQ(device.part.BurstCmds().Count(), 3);
    EXPECT_EQ(device.part.BurstCmds().At(1).Register(), 1);
    EXPECT_EQ(device.part.BurstCmds().At(2).Register(), 5) << "without a value the first register's counts";
    EXPECT_EQ(device.part.BurstCmds().At(3).BurstPattern().back(), 16 + 7);
    EXPECT_EQ(device.part.Registers().At("A").Value(), 5);
    EXPECT_EQ(device.part.OutputPinValue(), 0) << "a stop leaves the device's pins alone";
}

TEST(SetupFile, CutAnywhereItIsRefusedOrTold) {
    const TempFolder folder;
    const std::size_t named = kWhole.find("PART=TEST") + 9;
    for (std::size_t size = 0; size < kWhole.size(); ++size) {
        SCOPED_TRACE(kWhole.substr(0, size));
        Device device;
        const SetupReport report = LoadBurstCommands(device.part, folder.File("set-up", kWhole.substr(0, size)));
        EXPECT_EQ(report.applied, size >= named);
        EXPECT_TRUE(report.applied || State(device.part) == kStart) << State(device.part);
        const bool inBurst = size > kWhole.find("[BURST]") + 6 && size < kWhole.rfind("PINS02=") + 7;
        EXPECT_TRUE((report.applied && !inBurst) || !report.Message().empty());
    }
}

TEST(SetupFile, LongListsAndLongMessagesEndAtTheirLimits) {
    const TempFolder folder;
    Device device;
    for (int i = 0; i < kMostBurstCommands; ++i) {
        device.part.AddBurstCommand("A", BurstKind::Load);
    }
    EXPECT_EQ(SaveBurstCommands(device.part, folder.Path("full")), "");
    Device other;
    other.part.AddBurstCommand("1", BurstKind::Delay);
    std::string told = LoadBurstCommands(other.part, folder.Path("full")).Message();
    EXPECT_EQ(other.part.BurstCmds().Count(), kMostBurstCommands);
    EXPECT_NE(told.find("COUNT: the burst list is full with 32767 commands; the last 1 "), std::string::npos) << told;

    std::string text = "[SETUP]\nPART=TEST\n[BURST]\nCOUNT=30\n";
    for (int i = 0; i < 30; ++i) {
        text += Item(i, "COMMAND=9");
    }
    Device third;
    told = LoadBurstCommands(third.part, folder.File("set-up", text)).Message();
    EXPECT_NE(told.find("[BURST] COMMAND19: "), std::string::npos) << told;
    EXPECT_EQ(told.find("[BURST] COMMAND20: "), std::string::npos) << told;
    EXPECT_NE(told.find("and 10 more."), std::string::npos) << told;
}

/// A user who chooses that file in each dialog.
class User final : public Dialogs {
public:
    void MessageBox(const std::string& text, const std::string& title, MessageIcon /*icon*/) override {
        told.push_back(title + ": " + text);
    }
    [[nodiscard]] bool Attended() const override { return true; }
    void InputBox(const std::string&, const std::string&, const std::string&, Answered) override {}
    void FileDialog(const FileRequest& request, Answered use) override {
        asked.push_back(request);
        if (chosen) {
            use(*chosen);
        }
    }
    void OpenWebPage(const std::string&) override {}

    std::optional<std::string> chosen;
    std::vector<FileRequest> asked;
    std::vector<std::string> told;
};

TEST(SetupDialogs, AskForAFileAndTellWhatWentWrong) {
    const TempFolder folder;
    Device device;
    User user;
    SaveWithDialog(device.part, user, "Save Part Setup");
    LoadWithDialog(device.part, user, "Restore Part Setup");
    EXPECT_TRUE(user.told.empty()) << "cancelling isn't told";
    ASSERT_EQ(user.asked.size(), 2U);
    EXPECT_TRUE(user.asked[0].save && !user.asked[1].save);
    EXPECT_EQ(user.asked[1].title, "Restore Part Setup");
    EXPECT_EQ(user.asked[1].filterIndex, 3);
    EXPECT_EQ(user.asked[1].filter, "All Files (*.*)|*.*|Text Files (*.txt)|*.txt|BurstCommand Files (*.mac)|*.mac");

    user.chosen = folder.Path("name as given");
    SaveWithDialog(device.part, user, "Save Part Setup");
    EXPECT_TRUE(std::filesystem::exists(*user.chosen));
    device.part.ID("OTHER");
    LoadWithDialog(device.part, user, "Load BurstCommands");
    user.chosen = folder.Path("");   // A folder.
    LoadWithDialog(device.part, user, "Load BurstCommands");
    SaveWithDialog(device.part, user, "Save BurstCommands");
    ASSERT_EQ(user.told.size(), 3U);
    EXPECT_EQ(user.told[0].rfind("Load BurstCommands: This BurstCommand File was built for the TEST. Select ", 0), 0U);
    EXPECT_NE(user.told[1].find(*user.chosen), std::string::npos) << user.told[1];
    EXPECT_NE(user.told[2].find(*user.chosen), std::string::npos) << user.told[2];
}

}   // namespace
