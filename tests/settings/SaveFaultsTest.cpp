#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <set>
#include <sstream>

#include "burst/SetupFile.h"
#include "burst/cBurst.h"
#include "core/cPart.h"
#include "pll/cPLL.h"
#include "settings/DeviceSetup.h"
#include "settings/Modes.h"
#include "settings/SettingsFile.h"
#include "support/FailingCalls.h"
#include "support/TempFolder.h"

// Every file that the program writes, on a disk that fails and in a process that is killed, at each file call in turn.

namespace {

namespace fs = std::filesystem;

std::string Contents(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

/// A folder with a device, its settings file and a set-up file.
class Bench {
public:
    Bench() {
        fs::copy_file(PARTS_DIR "/QRV1150.ini", folder.Path("QRV1150.ini"));
        folder.File("tarnwick.ini", "[RECENTPARTS]\nCOUNT=2\nITEM00=a\nITEM01=b\n");
        folder.File("bench.mac", "[SETUP]\r\nPART=OTHER\r\n");
        std::string name = "QRV1150";
        SetupPartForm(part, AppPath(), name, true);
        part.AddBurstCommand("MAIN", BurstKind::Load);
        part.Registers().At("MAIN").Value(1234);
    }
    [[nodiscard]] std::string AppPath() const { return folder.Path(""); }
    [[nodiscard]] std::size_t Files() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(AppPath()), {}));
    }

    TempFolder folder;
    cPart part;
};

const ReferenceTexts kReferences{"12.8"};

struct Save {
    const char* name;
    const char* file;
    std::function<std::string(Bench&)> run;   ///< Returns the error.
};

const std::vector<Save> kSaves{
    {"device settings", "QRV1150.ini",
     [](Bench& bench) { return SaveDeviceSettings(bench.part, bench.AppPath(), kReferences); }},
    {"mode", "QRV1150.ini",
     [](Bench& bench) {
         std::string error;
         AddMode(bench.part, bench.AppPath(), "Another", kReferences, error);
         return error;
     }},
    {"recent list", "tarnwick.ini",
     [](Bench& bench) {
         return SettingsFile(bench.AppPath()).SaveRecentParts({"c", "a"});
     }},
    {"set-up", "bench.mac", [](Bench& bench) { return SaveBurstCommands(bench.part, bench.folder.Path("bench.mac")); }},
};

constexpr int kReadingCalls = 5;   // Open, look and read, before anything is written.

// An administrator may write anywhere: rights are checked through the calls.
TEST(SaveFaults, AnyFailingCallLeavesTheOldFileAndNamesIt) {
    for (const Save& save : kSaves) {
        Bench well;
        ASSERT_EQ(save.run(well), "");
        const std::string after = Contents(well.folder.Path(save.file));
        std::string failed = "first";
        int refused = 0;
        for (int n = 0; !failed.empty(); ++n) {
            Bench bench;
            const std::string path = bench.folder.Path(save.file);
            const std::string before = Contents(path);
            FailingCalls calls(n);
            std::string error;
            {
                const FileCallsInPlace inPlace(calls);
                error = save.run(bench);
            }
            failed = calls.Failed();
            SCOPED_TRACE(std::string(save.name) + ", call " + std::to_string(n) + ", " + failed + ": " + error);
            // A settings file that can't be read has no recent list, and nothing is to be saved.
            const bool unread = std::string(save.file) == "tarnwick.ini" && n < kReadingCalls;
            if (!unread) {
                EXPECT_TRUE(Contents(path) == (error.empty() ? after : before));
            }
            if (!error.empty()) {
                ++refused;
                EXPECT_NE(error.find(path), std::string::npos);
            }
            if (failed != "unlink") {   // What it leaves goes at the next save.
                EXPECT_EQ(bench.Files(), 3U);
            }
        }
        EXPECT_GE(refused, 8) << save.name;
    }
}

TEST(SaveFaults, AFolderThatIsGoneIsTold) {
    for (const Save& save : kSaves) {
        Bench bench;
        fs::remove_all(bench.AppPath());
        const std::string error = save.run(bench);
        // The settings file alone tells how long the recent list is: without it there is none.
        if (std::string(save.file) != "tarnwick.ini") {
            EXPECT_NE(error.find(bench.folder.Path(save.file)), std::string::npos) << save.name << ": " << error;
        }
        EXPECT_FALSE(fs::exists(bench.AppPath())) << save.name;
    }
}

// Another program replaces the file after the device was read, and the clock goes back an hour.
TEST(SaveFaults, AFileReplacedMeanwhileKeepsItsOtherContents) {
    for (const Save& save : kSaves) {
        if (std::string(save.file) == "bench.mac") {
            continue;   // Is replaced as a whole.
        }
        Bench bench;
        const std::string path = bench.folder.Path(save.file);
        const auto time = fs::last_write_time(path);
        const std::string added = "; from elsewhere\r\n[ELSEWHERE]\r\nKEY=1\r\n";
        const std::string replaced = Contents(path) + added;
        fs::rename(bench.folder.File("new", replaced), path);
        fs::last_write_time(path, time - std::chrono::hours(1));
        EXPECT_EQ(save.run(bench), "") << save.name;
        EXPECT_NE(Contents(path).find(added), std::string::npos) << save.name;
        EXPECT_NE(Contents(path), replaced) << save.name;
    }
}

TEST(SaveFaults, TheDefaultsOfAnUnreadableFileNeverReplaceWhatItHolds) {
    Bench bench;
    const std::string path = bench.folder.Path("QRV1150.ini");
    const std::string before = Contents(path);
    fs::rename(path, path + ".away");
    std::string name = "QRV1150";
    bench.part.ClearPLL();
    SetupPartForm(bench.part, bench.AppPath(), name, true);
    fs::rename(path + ".away", path);
    EXPECT_NE(SaveDeviceSettings(bench.part, bench.AppPath(), kReferences).find(path), std::string::npos);
    EXPECT_TRUE(Contents(path) == before);
}

// It does so in the middle of the save, before each of its calls. A rename can't be told to look first.
TEST(SaveFaults, AFileReplacedDuringTheSaveIsLeftAlone) {
    for (const Save& save : kSaves) {
        std::string call = "first";
        int refused = 0;
        for (int n = 0; !call.empty(); ++n) {
            Bench bench;
            const std::string path = bench.folder.Path(save.file);
            const std::string replaced = Contents(path) + "; from elsewhere\r\n";
            FailingCalls calls(n, [&] { fs::rename(bench.folder.File("new", replaced), path); });
            std::string error;
            {
                const FileCallsInPlace inPlace(calls);
                error = save.run(bench);
            }
            call = calls.Failed();
            SCOPED_TRACE(std::string(save.name) + ", call " + std::to_string(n) + ", " + call + ": " + error);
            const bool lies = Contents(path).find("; from elsewhere") != std::string::npos;
            EXPECT_TRUE(lies || call == "rename" || call.empty() || std::string(save.name) == "set-up");
            if (!error.empty()) {
                ++refused;
                EXPECT_EQ(Contents(path), replaced);
                EXPECT_NE(error.find(path + ": Another program changed it"), std::string::npos);
            }
            EXPECT_EQ(bench.Files(), 3U);
        }
        EXPECT_EQ(refused > 8, std::string(save.name) != "set-up") << "a set-up file is replaced as a whole";
    }
}

TEST(SaveFaults, AKillBeforeAnyCallLeavesTheOldOrTheNewFileWhole) {
    for (const Save& save : kSaves) {
        Bench bench;
        const std::string path = bench.folder.Path(save.file);
        const std::string before = Contents(path);
        std::set<std::string> seen;
        for (int n = 0; KilledInCall(n, [&] { save.run(bench); }); ++n) {
            seen.insert(Contents(path));
            EXPECT_LE(bench.Files(), 5U) << "the new file and the second name of the old one: " << save.name;
            bench.folder.File(save.file, before);
        }
        // The last one came to its end.
        EXPECT_EQ(seen, (std::set{before, Contents(path)})) << save.name;
        EXPECT_NE(Contents(path), before) << save.name;
        EXPECT_EQ(bench.Files(), 3U) << "what a kill left stays: " << save.name;
    }
}

}   // namespace
