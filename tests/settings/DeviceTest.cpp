#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "core/Errors.h"
#include "core/cPart.h"
#include "pll/cPLL.h"
#include "settings/DeviceSetup.h"
#include "settings/Modes.h"
#include "settings/SettingsFile.h"
#include "support/FakePort.h"
#include "support/TempFolder.h"

namespace {

namespace fs = std::filesystem;

/// The text of a file, with plain line ends: lines that were written end as the INI calls write them.
std::string Contents(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    std::string contents = text.str();
    std::erase(contents, '\r');
    return contents;
}

constexpr auto kPart = R"(; A device for these tests.
[SETUP]
REGISTER_LENGTH=40
CONTROL_LENGTH=2
; The lines of this board.
DATA=8
[PINS]
COUNT=2
NAME00=CE
LOCATION00=4
ENABLED00=True
NAME01=Mute
LOCATION01=5
[REGISTERS]
COUNT=3
NAME00=A
VALUE00=5
NAME01=A
VALUE01=77
NAME02=B
MASK02=0
VALUE02=1
[BITS]
COUNT=2
REG00=B
NAME00=R
POS00=0
LEN00=14
REG01=B
NAME01=N
POS01=16
LEN01=18
[PLLS]
COUNT=1
NAME00=RF
N00=N
R00=R
OSCIN00=13
[MODES]
COUNT=3
MODE00=Receive
NAME0000=A
VALUE0000=8.6
NAME0001=B
VALUE0001=549755813887
OSCIN0000=26
PINS00=32
MODE01=Broken
NAME0100=C
MODE02=Beyond a double in hertz
NAME0200=A
NAME0201=B
OSCIN0200=1E+308
)";

struct Device {
    TempFolder folder;
    FakePort port;
    cPart part;
    std::string path;

    Device() {
        path = folder.File("DEV.ini", kPart);
        part.UsePort(port);
        Select();
    }
    void Select() {
        std::string name = "DEV";
        SetupPartForm(part, folder.Path(""), name, true);
        EXPECT_EQ(name, path);
    }
    [[nodiscard]] std::string State() {
        std::ostringstream text;
        text << part.Registers().At("A").Value() << ' ' << std::fixed << part.Registers().At("B").Value() << ' '
             << part.PLLs().At("RF").XtalFrequency() << ' ' << part.OutputPinValue() << ' ' << part.ClockPosition();
        return text.str();
    }
};

}   // namespace

TEST(DeviceSetup, BuildsTheDeviceAndSendsNothing) {
    Device device;
    EXPECT_EQ(device.part.ID(), "DEV");
    EXPECT_FALSE(device.part.Updating());
    EXPECT_EQ(device.part.Registers().Count(), 2) << "the second register called A is left out";
    std::string faults;
    for (const Problem& problem : device.part.FileProblems().All()) {
        faults += problem.severity == Severity::Error ? ' ' + problem.key : "";
    }
    EXPECT_EQ(faults, " NAME01 MODE01 NAME0100 OSCIN0200");
    EXPECT_EQ(device.part.DataPosition(), 8);
    EXPECT_TRUE(device.port.Writes().empty());
    for (cRegister& each : device.part.Registers()) {
        EXPECT_TRUE(each.Change()) << each.ID();
    }
    std::string missing = "NONE";
    SetupPartForm(device.part, device.folder.Path(""), missing, false);
    EXPECT_EQ(device.part.Registers().Count(), 0);
    EXPECT_EQ(device.part.RegisterLength(), 24);
    ASSERT_EQ(device.part.FileProblems().Count(), 1);
    EXPECT_NE(device.part.FileProblems().All().front().text.find("can't be read"), std::string::npos);
    std::string error;
    EXPECT_EQ(AddMode(device.part, device.folder.Path(""), "x", {}, error), -1);
    EXPECT_EQ(SaveDeviceSettings(device.part, device.folder.Path(""), {}), "");
    EXPECT_FALSE(fs::exists(missing)) << "a mistyped name makes no file";
}

TEST(DeviceSetup, ShippedDevicesOpenWithoutProblems) {
    int devices = 0;
    for (const DeviceGroup& group : kDeviceGroups) {
        for (const std::string& name : SettingsFile(PARTS_DIR "/").Devices(group.section)) {
            cPart part;
            std::string path = name;
            SetupPartForm(part, PARTS_DIR "/", path, true);
            ++devices;
            EXPECT_GT(part.Registers().Count(), 0) << name;
            for (const Problem& problem : part.FileProblems().All()) {
                EXPECT_EQ(problem.severity, Severity::Note) << problem.Message();
            }
        }
    }
    EXPECT_GE(devices, 8);
}

TEST(Modes, RestoreIsWholeOrNothing) {
    Device device;
    RestoreMode(device.part, device.folder.Path(""), 0);
    EXPECT_EQ(device.State(), "9 549755813887.000000 26.000000 32 1");
    const std::string before = device.State();
    for (const int index : {1, 2, 3, -1, 99}) {
        EXPECT_THROW(RestoreMode(device.part, device.folder.Path(""), index), UserError) << index;
        EXPECT_EQ(device.State(), before) << index;
    }
    EXPECT_TRUE(device.port.Writes().empty()) << "restoring loads nothing";
}

TEST(Modes, AddedModeComesBack) {
    Device device;
    device.part.Registers().At("B").Value(1099511627775.0);   // 2^40 - 1: all bits, more than 15 digits with fractions.
    device.part.OutputPinValue(0x20);
    std::string error;
    EXPECT_EQ(AddMode(device.part, device.folder.Path(""), "Full", {"19.2"}, error), 3);
    EXPECT_EQ(error, "");
    device.Select();
    RestoreMode(device.part, device.folder.Path(""), 3);
    EXPECT_EQ(device.State(), "5 1099511627775.000000 19.200000 32 1");
    EXPECT_NE(Contents(device.path).find("MODE03=Full"), std::string::npos);
    EXPECT_EQ(Contents(device.path).find(std::string(kPart).substr(0, 60)), 0U) << "what was there stays";
}

TEST(Modes, CountThatCanGoNoFurtherIsKept) {
    Device device;
    device.folder.File("DEV.ini", "[MODES]\nCOUNT=32767\n");
    std::string error;
    EXPECT_EQ(AddMode(device.part, device.folder.Path(""), "x", {}, error), -1);
    EXPECT_NE(error.find(device.path + ":2: [MODES] COUNT: "), std::string::npos) << error;
    EXPECT_EQ(Contents(device.path), "[MODES]\nCOUNT=32767\n");
}

TEST(DeviceSettings, DeviceComesBackAsItWasLeft) {
    Device device;
    device.part.ClockPosition(256);
    device.part.PortAddress(0x278);
    device.part.Registers().At("A").Value(6);
    device.part.Registers().At("B").Value(9007199254740991.0);
    device.part.PrgmPins().At("CE").Position(6);
    device.part.ResetOutputPins();   // As a moved pin does: its old line would stay high.
    device.part.OutputPinValue(64);
    EXPECT_EQ(SaveDeviceSettings(device.part, device.folder.Path(""), {"26.5"}), "");
    device.Select();
    EXPECT_EQ(device.State(), "6 9007199254740991.000000 26.500000 64 256");
    EXPECT_EQ(device.part.PortAddress(), 0x278);
    const std::string text = Contents(device.path);
    for (const char* kept :
         {"; A device for these tests.\n", "; The lines of this board.\nDATA=8\n", "VALUE01=77\n", "MODE01=Broken\n"}) {
        EXPECT_NE(text.find(kept), std::string::npos) << kept;
    }
}

TEST(DeviceSettings, WhatCouldNotBeReadStaysUntilItIsChanged) {
    Device device;
    const std::string unread =
        "[SETUP]\nADDRESS=0x378\nCLOCK=1\nDATA=2\nLE=4\n[PINS]\nCOUNT=1\nLOCATION00=12\nENABLED00=yes\n"
        "[REGISTERS]\nCOUNT=2\nVALUE00=0x4B0001\nVALUE01=x\n[PLLS]\nCOUNT=2\nOSCIN00=1E+308\nOSCIN01=13\n";
    device.folder.File("DEV.ini", unread);
    device.Select();
    EXPECT_EQ(SaveDeviceSettings(device.part, device.folder.Path(""), {"abc", "1E+308"}), "");
    EXPECT_EQ(Contents(device.path), unread);
    device.part.PortAddress(0x278);
    device.part.Registers().At(2).Value(7);
    device.part.PrgmPins().At(1).Enabled(true);
    EXPECT_EQ(SaveDeviceSettings(device.part, device.folder.Path(""), {"26", "abc"}), "");
    std::string changed = unread;
    for (const auto& [before, after] :
         {std::pair("0x378", "632"), {"01=x", "01=7"}, {"yes", "True"}, {"1E+308", "26"}}) {
        changed.replace(changed.find(before), std::string(before).size(), after);
    }
    EXPECT_EQ(Contents(device.path), changed);
}

TEST(DeviceSettings, FailedSaveNamesFileAndReasonAndKeepsIt) {
    Device device;
    fs::remove(device.path);
    fs::create_directory(device.path);   // Nothing can replace a folder.
    const std::string error = SaveDeviceSettings(device.part, device.folder.Path(""), {});
    EXPECT_NE(error.find(device.path), std::string::npos) << error;
    std::string modeError;
    EXPECT_EQ(AddMode(device.part, device.folder.Path(""), "x", {}, modeError), -1);
    EXPECT_NE(modeError.find(device.path), std::string::npos) << modeError;
}
