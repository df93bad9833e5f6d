#include "files/AtomicFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <system_error>

#include "support/FailingCalls.h"
#include "support/TempFolder.h"

namespace {

namespace fs = std::filesystem;

const std::string oldText = "old contents\n";
const std::string newText = "new contents, and more of them\n";

void Put(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

std::vector<std::string> FilesIn(const TempFolder& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder.Path(""))) {
        names.push_back(entry.path().filename().string());
    }
    return names;
}

struct Situation {
    bool exists;
    std::string always;   ///< Kind of call that fails every time.
};

// Replaces with the n-th call failing. Returns its kind, nothing if there was no n-th call.
std::string ReplaceWithFault(int n, const Situation& given) {
    const TempFolder folder;
    const std::string path = folder.Path("a.ini");
    if (given.exists) {
        Put(path, oldText);
    }
    FailingCalls calls(n, given.always);
    std::string error;
    {
        const FileCallsInPlace inPlace(calls);
        error = ReplaceFile(path, newText);
    }
    SCOPED_TRACE("call " + std::to_string(n) + ", " + calls.Failed() + ", failed: " + error);
    // Without a second name for the old file, only the flush of the folder can't be taken back.
    const std::string text = folder.Read("a.ini");
    const bool mayStand = given.always == "link" && calls.Failed() == "fsync" && text == newText;
    EXPECT_EQ(text, error.empty() || mayStand ? newText : given.exists ? oldText : "");
    if (calls.Failed().empty()) {
        EXPECT_EQ(error, "");   // An owner that can't be kept and a second name that can't be had are no failures.
    } else if (!error.empty()) {
        EXPECT_EQ(error, "cannot write " + path + ": " + std::generic_category().message(calls.Error()));
        EXPECT_EQ(fs::exists(path), given.exists);
    }
    if (calls.Failed() == "unlink") {
        EXPECT_EQ(ReplaceFile(path, newText), "");   // What it left is removed by the next save.
    }
    EXPECT_EQ(FilesIn(folder).size(), fs::exists(path) ? 1U : 0U);
    return calls.Failed();
}

TEST(AtomicFile, AnyFailingCallLeavesTheOldOrTheNewFileAloneInItsFolder) {
    for (const Situation& given : {Situation{true, ""}, {false, ""}, {true, "link"}, {true, "fchown"}}) {
        SCOPED_TRACE((given.exists ? "old file, " : "no old file, ") + given.always);
        int flushes = 0;
        std::string failed = "first";
        for (int n = 0; !failed.empty(); ++n) {
            failed = ReplaceWithFault(n, given);
            flushes += failed == "fsync" ? 1 : 0;
        }
        EXPECT_EQ(flushes, 2);   // Of the file and of its folder.
    }
}

TEST(AtomicFile, KeepsModeAndOwner) {
    const TempFolder folder;
    const std::string path = folder.Path("a.ini");
    const bool administrator = ::geteuid() == 0;
    for (const mode_t mode : {0600, 0644, 0666, 0751}) {
        Put(path, oldText);
        ASSERT_EQ(::chmod(path.c_str(), mode), 0);
        if (administrator) {
            ASSERT_EQ(::chown(path.c_str(), 12345, 54321), 0);
        }
        EXPECT_EQ(ReplaceFile(path, newText), "");
        struct stat info = {};
        ASSERT_EQ(::stat(path.c_str(), &info), 0);
        EXPECT_EQ(info.st_mode & 07777, mode);
        EXPECT_EQ(info.st_uid, administrator ? 12345 : ::geteuid());
        EXPECT_EQ(info.st_gid, administrator ? 54321 : ::getegid());
    }
}

TEST(AtomicFile, FollowsLinks) {
    const TempFolder folder;
    fs::create_directory(folder.Path("sub"));
    fs::create_symlink("sub/second", folder.Path("first"));
    fs::create_symlink("../target.ini", folder.Path("sub/second"));
    fs::create_symlink("circle", folder.Path("circle"));
    for (const char* text : {"made through a dangling link", "replaced through it"}) {
        EXPECT_EQ(ReplaceFile(folder.Path("first"), text), "");
        EXPECT_EQ(folder.Read("target.ini"), text);
        EXPECT_TRUE(fs::is_symlink(folder.Path("first")) && fs::is_symlink(folder.Path("sub/second")));
    }
    EXPECT_EQ(ReplaceFile(folder.Path("circle"), "x"),
              "cannot write " + folder.Path("circle") + ": " + std::generic_category().message(ELOOP));
}

TEST(AtomicFile, RefusesWhatIsNoFile) {
    const TempFolder folder;
    fs::create_directory(folder.Path("sub"));
    ASSERT_EQ(::mkfifo(folder.Path("pipe").c_str(), 0666), 0);
    const std::vector<std::pair<std::string, std::string>> refused = {
        {folder.Path("sub"), FileErrorText(EISDIR)},
        {folder.Path("pipe"), "Not a regular file"},
        {"/dev/null", "Not a regular file"},
        {folder.Path("none/a.ini"), FileErrorText(ENOENT)},
        {folder.Path(std::string(300, 'n')), FileErrorText(ENAMETOOLONG)}};
    for (const auto& [path, reason] : refused) {
        std::string expected = "cannot write ";
        EXPECT_EQ(ReplaceFile(path, "x"), expected.append(path).append(": ").append(reason));
    }
    EXPECT_EQ(FilesIn(folder).size(), 2U);
    EXPECT_EQ(ReplaceFile(folder.Path(std::string(255, 'n')), "x"), "");
}

}   // namespace
