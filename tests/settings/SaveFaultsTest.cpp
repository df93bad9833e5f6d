#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <set>
#include <sstream>
#include <thread>

#include "../platform/FailingCalls.h"
#include "burst/SetupFile.h"
#include "burst/cBurst.h"
#include "core/cPart.h"
#include "pll/cPLL.h"
#include "settings/DeviceSetup.h"
#include "settings/Modes.h"
#include "settings/SettingsFile.h"
#include "support/TempFolder.h"

// Every file that the program writes, on a disk that fails and in a process that is killed.

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
                EXPECT_EQ(Contents(path) == before, !error.empty());
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

/// Saves two states in turn until it is killed.
[[noreturn]] void SaveForever(Bench& bench) {
    for (int turn = 0;; ++turn) {
        bench.part.Registers().At("MAIN").Value(turn % 2 == 0 ? 80001 : 1234);
        SaveDeviceSettings(bench.part, bench.AppPath(), kReferences);
        SaveBurstCommands(bench.part, bench.folder.Path("bench.mac"));
    }
}

TEST(SaveFaults, AKillLeavesOneStateWhole) {
    Bench bench;
    std::set<std::string> states;
    std::set<std::string> setups;
    for (const double value : {80001.0, 1234.0}) {
        bench.part.Registers().At("MAIN").Value(value);
        ASSERT_EQ(SaveDeviceSettings(bench.part, bench.AppPath(), kReferences), "");
        ASSERT_EQ(SaveBurstCommands(bench.part, bench.folder.Path("bench.mac")), "");
        states.insert(Contents(bench.folder.Path("QRV1150.ini")));
        setups.insert(Contents(bench.folder.Path("bench.mac")));
    }
    ASSERT_EQ(states.size(), 2U);
    std::mt19937 random(5);
    std::set<std::string> seen;
    for (int round = 0; round < 100; ++round) {
        const pid_t child = ::fork();
        if (child == 0) {
            SaveForever(bench);
        }
        std::this_thread::sleep_for(std::chrono::microseconds(500 + random() % 5000));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        seen.insert(Contents(bench.folder.Path("QRV1150.ini")));
        EXPECT_TRUE(setups.contains(Contents(bench.folder.Path("bench.mac")))) << round;
        EXPECT_LE(bench.Files(), 7U) << "files pile up";
    }
    EXPECT_EQ(seen, states) << "one of the two states each time, and both of them";
}

// A mode is several keys: a kill leaves all of it or nothing.
TEST(SaveFaults, AKillLeavesNoHalfMode) {
    for (int round = 0; round < 20; ++round) {
        Bench bench;
        const pid_t child = ::fork();
        if (child == 0) {
            for (std::string error;;) {
                AddMode(bench.part, bench.AppPath(), "Another", kReferences, error);
            }
        }
        std::this_thread::sleep_for(std::chrono::microseconds(500 + 300 * round));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        cPart read;
        std::string name = "QRV1150";
        SetupPartForm(read, bench.AppPath(), name, true);
        EXPECT_EQ(read.FileProblems().Count(Severity::Warning), 0) << read.FileProblems().All().front().Message();
    }
}

}   // namespace
