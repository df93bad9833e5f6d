#include "settings/ProgramFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "support/FailingCalls.h"
#include "support/TempFolder.h"

namespace {

namespace fs = std::filesystem;

using Files = std::map<std::string, std::string>;

constexpr auto oldSettings = "[MENU]\nCOUNT=1\n[RECENTPARTS]\nCOUNT=2\nITEM00=...\nITEM01=...\n";
constexpr auto newSettings = "; 2\n[MENU]\nCOUNT=2\n[RECENTPARTS]\nCOUNT=2\nITEM00=...\nITEM01=...\n[PORT]\n";
constexpr auto usedSettings = "[MENU]\nCOUNT=1\n[RECENTPARTS]\nCOUNT=2\nITEM00=A\r\nItem01=B\r\n";
constexpr auto mergedSettings = "; 2\n[MENU]\nCOUNT=2\n[RECENTPARTS]\nCOUNT=2\nITEM00=A\nItem01=B\n[PORT]\n";

// A place with an installed program in one folder and a user's data in another.
class Place {
public:
    Place() {
        fs::create_directories(At("usr/bin"));
        fs::create_directories(At("usr/share/tarnwick"));
    }

    [[nodiscard]] std::string At(const std::string& name) const { return folder_.Path(name); }
    [[nodiscard]] std::string Start() const {
        const ProgramFolder opened = OpenProgramFolder({At("usr/bin"), At("home"), At("compiled-in")});
        EXPECT_EQ(opened.appPath, At("home/tarnwick/"));
        return opened.message;
    }
    // A text of "-" removes the file.
    void Write(const std::string& where, const Files& files) const {
        for (const auto& [name, text] : files) {
            text == "-" ? static_cast<void>(fs::remove(At(where + name)))
                        : static_cast<void>(folder_.File(where + name, text));
        }
    }
    void Ship(const Files& files) const { Write("usr/share/tarnwick/", files); }
    void Edit(const Files& files) const { Write("home/tarnwick/", files); }
    // All that can be seen.
    [[nodiscard]] Files Own() const {
        Files files;
        for (const auto& entry : fs::directory_iterator(At("home/tarnwick"))) {
            const std::string name = entry.path().filename().string();
            if (name.front() != '.') {
                files[name] = folder_.Read("home/tarnwick/" + name);
            }
        }
        return files;
    }

private:
    TempFolder folder_;
};

// Changes of files, in each case against P.ini with "old" and the old settings.
struct Update {
    const char* what;
    Files edited;    // By the user, after the first start.
    Files shipped;   // Then, with the new version.
    Files expected;
    const char* told;   // The end of "you changed ..."; empty for no message.
};

const std::vector<Update> kUpdates = {
    {"left alone", {}, {{"P.ini", "new"}}, {{"P.ini", "new"}}, ""},
    {"changed", {{"P.ini", "u"}}, {{"P.ini", "new"}}, {{"P.ini", "u"}, {"P.ini.new", "new"}}, "P.ini"},
    {"changed to just that", {{"P.ini", "new"}}, {{"P.ini", "new"}}, {{"P.ini", "new"}}, ""},
    {"changed, shipped as before", {{"P.ini", "u"}}, {}, {{"P.ini", "u"}}, ""},
    {"removed", {{"P.ini", "-"}}, {{"P.ini", "new"}}, {{"P.ini", "-"}}, ""},
    {"new", {}, {{"Q.ini", "q"}}, {{"Q.ini", "q"}}, ""},
    {"the user has one", {{"Q.ini", "u"}}, {{"Q.ini", "q"}}, {{"Q.ini", "u"}, {"Q.ini.new", "q"}}, "Q.ini"},
    {"no longer shipped", {}, {{"P.ini", "-"}}, {}, ""},
    {"emptied folder", {{"P.ini", "-"}, {"tarnwick.ini", "-"}}, {}, {}, ""},
    {"recent devices only",
     {{"tarnwick.ini", usedSettings}},
     {{"tarnwick.ini", newSettings}},
     {{"tarnwick.ini", mergedSettings}},
     ""},
    {"edited settings",
     {{"tarnwick.ini", "u"}},
     {{"tarnwick.ini", "t"}},
     {{"tarnwick.ini", "u"}, {"tarnwick.ini.new", "t"}},
     "tarnwick.ini"}};

void Check(const Update& update) {
    const auto& [what, edited, shipped, expected, told] = update;
    SCOPED_TRACE(what);
    const Place place;
    const Place wanted;
    for (const Place* each : {&place, &wanted}) {
        each->Ship({{"P.ini", "old"}, {"tarnwick.ini", oldSettings}, {"README", "not a part"}});
        EXPECT_EQ(each->Start(), "");
    }
    wanted.Edit(expected);
    place.Edit(edited);
    place.Ship(shipped);
    const std::string message = place.Start();
    EXPECT_EQ(place.Own(), wanted.Own());
    EXPECT_EQ(message.substr(0, message.find(':')), *told == '\0' ? "" : std::string("you changed ") + told);
    EXPECT_EQ(place.Start(), "") << "told once";
    EXPECT_EQ(place.Own(), wanted.Own()) << "a further start changes nothing";
}

TEST(ProgramFolder, UpdatesOnlyWhatTheUserLeftAlone) {
    for (const Update& update : kUpdates) {
        Check(update);
    }
}

/// A first start, or one that has updates, for a user who changed a file.
struct Interrupted {
    Files old{{"P.ini", "old"}, {"tarnwick.ini", "t"}};
    Files next{{"P.ini", "new"}, {"tarnwick.ini", "t2"}};
    Files expected = old;
    Place place;

    explicit Interrupted(bool first) {
        place.Ship(old);
        if (!first) {
            EXPECT_EQ(place.Start(), "");
            place.Edit({{"P.ini", "mine"}});
            place.Ship(next);
            expected = {{"P.ini", "mine"}, {"P.ini.new", "new"}, {"tarnwick.ini", "t2"}};
        }
    }
};

// One call of the system fails in a start: it says so unless it did everything, and the next one does the rest.
TEST(ProgramFolder, IsCompletedByTheNextStartWhateverFails) {
    for (const bool first : {true, false}) {
        int told = 0;
        std::string failed = "first";
        for (int n = 0; !failed.empty(); ++n) {
            const Interrupted start(first);
            FailingCalls calls(n);
            std::string message;
            {
                const FileCallsInPlace inPlace(calls);
                message = start.place.Start();
            }
            failed = calls.Failed();
            const bool tells =
                message.find("can't") != std::string::npos || message.find("cannot") != std::string::npos;
            EXPECT_TRUE(tells || start.place.Own() == start.expected) << n << ", " << failed << ": " << message;
            told += tells ? 1 : 0;
            EXPECT_EQ(start.place.Start().find("cannot"), std::string::npos);
            EXPECT_EQ(start.place.Own(), start.expected) << failed;
            EXPECT_EQ(start.place.Start(), "");
        }
        EXPECT_GT(told, 10);
    }
}

// Each file is the old or the new one meanwhile.
TEST(ProgramFolder, IsCompletedByTheNextStartAfterAKillBeforeAnyCall) {
    for (const bool first : {true, false}) {
        std::size_t done = 0;
        bool killed = true;
        for (int n = 0; killed; ++n) {
            Interrupted start(first);
            killed = KilledInCall(n, [&start] { static_cast<void>(start.place.Start()); });
            const bool exists = fs::exists(start.place.At("home/tarnwick"));
            std::size_t whole = 0;
            for (const auto& [name, text] : exists ? start.place.Own() : Files()) {
                whole += text == start.expected[name] ? 1U : 0U;
                EXPECT_TRUE(text == start.expected[name] || (!first && text == start.old[name])) << n << ", " << name;
            }
            done = std::max(done, whole < start.expected.size() ? whole : 0);
            static_cast<void>(start.place.Start());
            EXPECT_EQ(start.place.Own(), start.expected) << n;
            EXPECT_EQ(start.place.Start(), "");
        }
        EXPECT_GT(done, 0U) << "never between two files";
    }
}

TEST(ProgramFolder, LeavesTheFolderOfACopiedProgramAlone) {
    const Place place;
    place.Ship({{"P.ini", "new"}, {"tarnwick.ini", newSettings}});
    place.Write("usr/bin/", {{"tarnwick.ini", oldSettings}});
    const ProgramFolder opened = OpenProgramFolder({place.At("usr/bin"), place.At("home"), place.At("compiled-in")});
    EXPECT_EQ(opened.appPath, place.At("usr/bin/"));
    EXPECT_EQ(opened.message, "");
    EXPECT_FALSE(fs::exists(place.At("home")) || fs::exists(place.At("usr/bin/P.ini")));
}

TEST(ProgramFolder, SaysWhereItLookedInVain) {
    const Place place;
    EXPECT_NE(place.Start().find("no part files were found in " + place.At("compiled-in")), std::string::npos);
    place.Edit({{"tarnwick.ini", oldSettings}});
    EXPECT_EQ(place.Start(), "") << "the user's own files will do";
}

}   // namespace
