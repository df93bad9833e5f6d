#include "settings/SettingsFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "settings/PartFilePath.h"
#include "support/TempFolder.h"

namespace {

std::string Contents(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

}   // namespace

TEST(PartFilePath, CutsTheNameAndASlashAtItsEnd) {
    const std::string thirty(30, 'x');
    const std::string slash = std::string(29, 'x') + "/";
    std::string umlauts;
    for (int i = 0; i < 31; ++i) {
        umlauts += "\xC3\xA4";
    }
    const struct {
        std::string device;
        std::string file;
    } cases[] = {
        {"QRV1", "QRV1"},
        {"", ""},
        {thirty, thirty},
        {thirty + "y", thirty},
        {slash, std::string(29, 'x')},         // Exactly thirty characters, the last a slash.
        {slash + "y", std::string(29, 'x')},   // Thirty-one, the thirtieth a slash.
        {"QRV1/", "QRV1/"},                    // A slash elsewhere stays.
        {"a/b", "a/b"},
        {umlauts, umlauts.substr(0, 60)},   // Characters count, not bytes.
    };
    for (const auto& c : cases) {
        EXPECT_EQ(PartFilePath("/f/", c.device), "/f/" + c.file + ".ini") << c.device;
    }
}

TEST(SettingsFile, ListsDevicesFamiliesAndRecentParts) {
    const TempFolder folder;
    folder.File("tarnwick.ini",
                "[MENU]\nCOUNT=1\nITEM00=PLAIN\n[MENUVCO]\nCOUNT=many\nITEM00=V\n"
                "[MENUDUALPLL]\nCOUNT=2\nITEM00=D1\nITEM01=BOTH\n[MENUFRACPLL]\nCOUNT=3\nITEM00=BOTH\nITEM02=f\n"
                "[MENUENGINEERING]\nCOUNT=1\nITEM00=E\n[RECENTPARTS]\nCOUNT=7\nITEM00=D1\n");
    const SettingsFile file(folder.Path(""));
    using List = std::vector<std::string>;
    EXPECT_EQ(file.Devices("MENU"), List{"PLAIN"});
    EXPECT_EQ(file.Devices("MENUVCO"), List{}) << "a count that is no number counts as none";
    EXPECT_EQ(file.Devices("MENUFRACPLL"), (List{"BOTH", "QRV", "f"})) << "a missing item has its default";
    EXPECT_EQ(file.RecentCount(), 7);
    EXPECT_EQ(file.RecentParts(),
              (List{"D1", "..........", "..........", "..........", "..........", "..........", ".........."}));
    const struct {
        const char* device;
        const char* family;
    } families[] = {{"D1", "DualInteger"},
                    {"BOTH", "DualInteger"},
                    {"f", "Fractional"},
                    {"F", ""},
                    {"PLAIN", ""},
                    {"E", ""},
                    {"", ""}};
    for (const auto& c : families) {
        EXPECT_EQ(file.GetPartType(c.device), c.family) << c.device;
    }
    EXPECT_EQ(file.ReadError(), "");

    const SettingsFile missing(folder.Path("nowhere/"));
    EXPECT_EQ(missing.RecentCount(), 0);
    EXPECT_NE(missing.ReadError().find("nowhere/tarnwick.ini"), std::string::npos) << missing.ReadError();
    EXPECT_EQ(missing.SaveRecentParts({"a"}), "") << "without a COUNT there is nothing to save";
    std::filesystem::create_directories(folder.Path("held/tarnwick.ini"));
    const std::string held = SettingsFile(folder.Path("held/")).SaveRecentParts({"a"});
    EXPECT_NE(held.find(folder.Path("held/tarnwick.ini")), std::string::npos) << "what can't be read is told: " << held;
}

TEST(SettingsFile, WritesTheRecentListAndNothingElse) {
    const TempFolder folder;
    const std::string path =
        folder.File("tarnwick.ini", "; kept\n\n[RECENTPARTS]\nCOUNT=2 \nITEM00=a\n; inside\nITEM01=b\n[PORT]\n");
    const SettingsFile file(folder.Path(""));
    EXPECT_EQ(file.SaveRecentParts({"new", "a", "b", "...."}), "");
    EXPECT_EQ(Contents(path), "; kept\n\n[RECENTPARTS]\nCOUNT=2 \nITEM00=new\n; inside\nITEM01=a\n[PORT]\n");
}

TEST(RecentParts, MovesAPickedDeviceToTheTop) {
    using List = std::vector<std::string>;
    const struct {
        List before;
        int count;
        std::string device;
        List after;
    } cases[] = {
        {{"a", "b", "c"}, 3, "a", {"a", "b", "c"}},
        {{"a", "b", "c"}, 3, "c", {"c", "a", "b"}},
        {{"a", "b", "c"}, 3, "B", {"B", "a", "b"}},                   // Names compare exactly; the oldest drops out.
        {{"a", "b", "c", "...."}, 3, "d", {"d", "a", "b", "...."}},   // Beyond the count stands no list.
        {{"a", "b", "...."}, 2, "....", {"....", "a", "...."}},
        {{"....", "...."}, 0, "d", {"....", "...."}},
        {{"a"}, 5, "d", {"d"}},
    };
    for (const auto& c : cases) {
        List list = c.before;
        MoveToTop(list, c.count, c.device);
        EXPECT_EQ(list, c.after) << c.device << " of " << c.count;
    }
}

TEST(SettingsFile, ReadsThePort) {
    const TempFolder folder;
    folder.File("tarnwick.ini", "[PORT]\nDRIVER=parport\nDEVICE=/dev/parport1\nLOG=a.log\n");
    const PortSettings port = SettingsFile(folder.Path("")).ReadPort();
    EXPECT_EQ(
        port.driver + "|" + port.device + "|" + port.backend + "|" + port.seed + "|" + port.log + "|" + port.trace,
        "parport|/dev/parport1|simulated|1|a.log|");
}
