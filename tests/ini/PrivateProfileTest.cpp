#include "ini/PrivateProfile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>
#include <random>
#include <vector>

#include "ini/ProfileEncoding.h"
#include "support/FailingCalls.h"
#include "support/TempFolder.h"

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

constexpr uid_t Nobody = 65534;

// Cases whose answer isn't ours, with what is.
const std::string nul(1, '\0');
const std::map<std::string, Json> ownAnswers = {
    {"set-017", {{"ret", 0}, {"after", "[s]\r\nk=v\r\n"}}},        // A save needs a new file beside the old one.
    {"get-382", {{"out", "\u00c3\u00a9\u00c3"}, {"tail", nul}}},   // Letters of UTF-8 are cut sooner.
    {"get-452", {{"out", "a\u00ce\u00a9b"}, {"tail", nul}}},       // UTF-8 has them all.
    {"get-455", {{"out", "value"}, {"tail", nul}}}};               // The mark of UTF-16 BE is one too.

void Put(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

std::string Bytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// A byte stands as the character U+0000 to U+00FF, in UTF-8.
std::string Bytes(const Json& text) {
    std::string bytes;
    for (const char c : text.get<std::string>()) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0xC0) {
            bytes.push_back(static_cast<char>(byte << 6));
        } else if (byte >= 0x80) {
            bytes.back() = static_cast<char>(bytes.back() | (byte & 0x3F));
        } else {
            bytes.push_back(c);
        }
    }
    return bytes;
}

// The recorded strings are in code page 1252, and their changed lines end in CRLF: here all text is UTF-8, and a file
// keeps its line ends.
std::string Text(const std::string& bytes) {
    return DecodedText(bytes, EncodingOf(bytes));
}

std::string WithLineEndsOf(const std::string& before, std::string text) {
    const bool cr = before.find('\r') != std::string::npos;
    const bool lf = before.find('\n') != std::string::npos;
    if (cr != lf) {
        std::erase(text, cr ? '\n' : '\r');
    }
    return text;
}

// A string or NULL, as the calls take it.
class Argument {
public:
    explicit Argument(const Json& text) : isNull_(text.is_null()), bytes_(isNull_ ? "" : Text(Bytes(text))) {}
    [[nodiscard]] const char* Get() const { return isNull_ ? nullptr : bytes_.c_str(); }

private:
    bool isNull_;
    std::string bytes_;
};

std::string GetStep(const Json& step, const Json& answer, bool own, const std::string& path) {
    constexpr char untouched = '\xA5';
    const auto size = step["size"].get<std::uint32_t>();
    std::string buffer(size + 16, untouched);
    const std::uint32_t n =
        GetPrivateProfileStringA(Argument(step["section"]).Get(), Argument(step["key"]).Get(),
                                 Argument(step["default"]).Get(), buffer.data(), size, path.c_str());
    const std::string out = own ? Bytes(answer["out"]) : Text(Bytes(answer["out"]));
    std::string expected = out + Bytes(answer["tail"]);
    expected.resize(buffer.size(), untouched);
    return n == out.size() && buffer == expected ? "" : std::to_string(n) + " " + buffer;
}

std::string SetStep(const Json& step, const Json& answer, const std::string& path) {
    const std::string before = fs::is_regular_file(path) ? Text(Bytes(path)) : "";
    const bool ret = WritePrivateProfileStringA(Argument(step["section"]).Get(), Argument(step["key"]).Get(),
                                                Argument(step["value"]).Get(), path.c_str());
    const bool exists = fs::is_regular_file(path);
    const bool same = answer["after"].is_null()
                          ? !exists
                          : exists && Text(Bytes(path)) == WithLineEndsOf(before, Text(Bytes(answer["after"])));
    return same && ret == (answer["ret"] == 1) ? "" : (ret ? "1 " : "0 ") + (exists ? Bytes(path) : "no file");
}

std::string RunStep(const std::string& id, const Json& step, const std::string& path) {
    const bool own = ownAnswers.contains(id);
    const Json& answer = own ? ownAnswers.at(id) : step.value("alt", step);
    if (step["op"] == "GET") {
        return GetStep(step, answer, own, path);
    }
    if (step["op"] == "SET") {
        return SetStep(step, answer, path);
    }
    if (step["op"] == "PUT") {
        Put(path, Bytes(step["bytes"]));
    } else if (step["op"] == "REMOVE") {
        fs::remove(path);
    }   // PAUSE: nothing here depends on time.
    return "";
}

void Prepare(const Json& file, const std::string& path) {
    const std::string kind = file["kind"];
    if (kind == "directory") {
        fs::create_directory(path);
    } else if (file.contains("bytes") && !file["bytes"].is_null()) {
        Put(path, Bytes(file["bytes"]));
    }
    if (kind == "readonly") {
        fs::permissions(path, fs::perms::owner_read);
    } else if (kind.ends_with("readonly_folder")) {
        fs::permissions(fs::path(path).parent_path(), fs::perms::owner_read | fs::perms::owner_exec);
    }
}

// What went wrong, or nothing.
std::string RunCase(const Json& test) {
    const TempFolder folder;
    const std::string path = folder.Path(test["file"]["kind"] == "absent_no_folder" ? "none/case.ini" : "case.ini");
    Prepare(test["file"], path);
    std::string faults;
    int number = 0;
    for (const Json& step : test["steps"]) {
        ++number;
        const std::string got = RunStep(test["id"], step, path);
        if (!got.empty()) {
            faults += "step " + std::to_string(number) + ": got " +
                      Json(got).dump(-1, ' ', true, Json::error_handler_t::replace) + "\n";
        }
    }
    fs::permissions(folder.Path(""), fs::perms::owner_all);
    return faults;
}

// Runs it in a process that isn't an administrator's: an administrator may write everywhere.
std::string RunCaseAsNobody(const Json& test) {
    const pid_t child = ::fork();
    if (child == 0) {
        const bool changed = ::geteuid() != 0 || (::setgid(Nobody) == 0 && ::setuid(Nobody) == 0);
        const std::string faults = changed ? RunCase(test) : "the rights couldn't be given up\n";
        std::cerr << faults;
        ::_exit(faults.empty() ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return status == 0 ? "" : "the process of the case failed";
}

TEST(PrivateProfile, AnswersTheRecordedCases) {
    NoFlush calls;
    const FileCallsInPlace inPlace(calls);
    std::ifstream in(TEST_DATA_DIR "/ini_cases.json");
    const Json cases = Json::parse(in)["cases"];
    EXPECT_EQ(cases.size(), 468U);
    for (const Json& test : cases) {
        const std::string kind = test["file"]["kind"];
        const bool needsNobody = kind.find("readonly") != std::string::npos;
        EXPECT_EQ(needsNobody ? RunCaseAsNobody(test) : RunCase(test), "") << test["id"] << " " << test["note"] << "\n"
                                                                           << test["steps"].dump(1);
    }
}

struct Edit {
    const char* fault;
    std::string before;
    const char* section;
    const char* key;
    const char* value;
    std::string after;
};

TEST(PrivateProfile, ChangesOnlyWhatItIsTold) {
    using std::string_literals::operator""s;
    const std::vector<Edit> edits = {
        {"UTF-16 letters outside the code page are lost", "\xFF\xFE[\0s\0]\0\n\0\xA9\x03=\0x\0\n\0"s, "s", "\xCE\xA9",
         "\xF0\x9F\x98\x80", "\xFF\xFE[\0s\0]\0\n\0\xA9\x03=\0\x3D\xD8\0\xDE\n\0"s},
        {"half a UTF-16 character shifts the text, half a pair is lost", "\xFF\xFE[\0s\0]\0\n\0;\0\x3D\xD8\n\0!"s, "s",
         "k", "", "\xFF\xFE[\0s\0]\0\n\0k\0=\0\n\0;\0\x3D\xD8\n\0!"s},
        {"UTF-16 is taken for the other one", "\xFE\xFF\0[\0s\0]\0\n"s, "s", "k", "\xE2\x82\xAC",
         "\xFE\xFF\0[\0s\0]\0\n\0k\0=\x20\xAC\0\n"s},
        {"a letter outside the code page is lost", "[s]\nk=\xE4\n", "s", "j", "\xCE\xA9",
         "\xEF\xBB\xBF[s]\nk=\xC3\xA4\nj=\xCE\xA9\n"},
        {"a text in the code page reads as UTF-8", "[s]\nk=\xE4\n", "s", "k", "\xC3\x83\xC2\xA4",
         "\xEF\xBB\xBF[s]\nk=\xC3\x83\xC2\xA4\n"},
        {"one line end becomes that of all", "[s]\r\na=1\nk=1\n", "s", "k", "2", "[s]\r\na=1\nk=2\r\n"},
        {"CR isn't kept", "[s]\ra=1", "s", "k", "2", "[s]\ra=1\rk=2\r"},
        {"the mark of UTF-8 is lost", "\xEF\xBB\xBF[s]\r\nk=1\r\n", "s", "k", "2", "\xEF\xBB\xBF[s]\r\nk=2\r\n"},
        {"a word is repeated as a key", "[s]\n k \nj=1\n", "s", "k", "2", "[s]\n k=2\nj=1\n"},
        {"words and comments go with their section", "[s]\nword\n;c\nk=1\n[t]\n", "s", nullptr, nullptr,
         "word\n;c\n[t]\n"},
        {"a word that comes first makes the file one in UTF-16", "[s]\nk=1\n\xFF\xFE\n[t]\n", "s", nullptr, nullptr,
         "\xEF\xBB\xBF\xC3\xBF\xC3\xBE\n[t]\n"},
        {"a comment takes a key's value", "[s]\n;k=1\n", "s", ";k", "2", "[s]\n;k=2\n;k=1\n"},
        {"a key in no section is changed", "k=1\n[]\nk=2\n", "", "k", "3", "k=1\n[]\nk=3\n"},
        {"the key after a section with an open bracket is missed", "[s\nk=1", "s", "k", "2", "[s\nk=2\n"},
        {"letters of the code page differ by case, or its signs don't", "[\x8A\x9F\xC4]\n\xD7=1\n\xF7=2\n",
         "\xC5\xA1\xC3\xBF\xC3\xA4", "\xC3\xB7", "3", "[\x8A\x9F\xC4]\n\xD7=1\n\xF7=3\n"},
        {"a line end in a name hides the key after it", "[s]\na=1\n[t]\n", "s", "x\n[u]\ny", "2",
         "[s]\na=1\nx\n[u]\ny=2\n[t]\n"}};
    for (const Edit& edit : edits) {
        const TempFolder folder;
        Put(folder.Path("a.ini"), edit.before);
        EXPECT_TRUE(WritePrivateProfileStringA(edit.section, edit.key, edit.value, folder.Path("a.ini").c_str()));
        EXPECT_EQ(folder.Read("a.ini"), edit.after) << edit.fault;
    }
}

std::string Value(const std::string& path, const std::string& section, const std::string& key) {
    std::array<char, 256> buffer{};
    GetPrivateProfileStringA(section.c_str(), key.c_str(), "none", buffer.data(), buffer.size(), path.c_str());
    return buffer.data();
}

TEST(PrivateProfile, TellsTheLineOfWhatAReadFinds) {
    const TempFolder folder;
    const std::string path = folder.Path("a.ini");
    Put(path, "; c\r\n\r\n[one]\rword\nk=1\r\nk=2\r\n[Two]\n[one]\nj=1");
    const std::vector<std::tuple<const char*, const char*, int>> lines = {
        {"ONE", " K ", 5}, {"one", "j", 3}, {"one", "word", 3}, {"two", "k", 7}, {"three", "k", 0}};
    for (const auto& [section, key, line] : lines) {
        EXPECT_EQ(PrivateProfileLine(section, key, path), line) << section << " " << key;
    }
    ASSERT_TRUE(WritePrivateProfileStringA("one", "new", "v", path.c_str()));
    EXPECT_EQ(PrivateProfileLine("one", "new", path), 7);
    EXPECT_EQ(PrivateProfileLine("two", "k", path), 8);
}

TEST(PrivateProfile, SeesAChangeByOthersAtOnce) {
    const TempFolder folder;
    const std::string path = folder.Path("a.ini");
    // Of the same length, in the same inode, and in a file system that counts whole seconds.
    for (int i = 100; i < 120; ++i) {
        const timespec second = {std::time(nullptr), 0};
        const std::array<timespec, 2> times = {second, second};
        Put(path, "[s]\nk=" + std::to_string(i) + "\n");
        ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times.data(), 0), 0);
        ASSERT_EQ(Value(path, "s", "k"), std::to_string(i));
    }
}

TEST(PrivateProfile, ASnapshotHoldsTheFileAndTakesOwnWrites) {
    const TempFolder folder;
    const std::string path = folder.Path("a.ini");
    const std::string other = folder.Path("") + "./a.ini";
    Put(path, "[s]\na=1\nb=1\n");
    {
        const ProfileSnapshot snapshot(path);
        Put(path, "[s]\na=2\nb=2\n");
        FailingCalls calls(-1);
        const FileCallsInPlace inPlace(calls);
        for (int i = 0; i < 100; ++i) {
            EXPECT_EQ(Value(path, "s", "a"), "1");
        }
        EXPECT_EQ(calls.Count(), 0);
        EXPECT_EQ(Value(other, "s", "a"), "2");
        EXPECT_TRUE(WritePrivateProfileStringA("s", "b", "3", other.c_str()));
        EXPECT_EQ(Bytes(path), "[s]\na=2\nb=3\n");   // Nothing of what others wrote is lost.
        EXPECT_EQ(Value(path, "s", "b"), "3") << "written under another name of the file";
        EXPECT_TRUE(WritePrivateProfileStringA("s", "b", "4", path.c_str()));
        EXPECT_EQ(Value(path, "s", "b"), "4");
        for (int i = 0; i < 20; ++i) {
            EXPECT_EQ(Value(folder.Path(std::to_string(i)), "s", "a"), "none");
        }
        Put(path, "[s]\na=5\n");
        EXPECT_EQ(Value(path, "s", "b"), "4") << "pushed out by reads of other files";
    }
    EXPECT_EQ(Value(path, "s", "a"), "5");
}

TEST(PrivateProfile, SaysWhyAFileCannotBeRead) {
    const TempFolder folder;
    Put(folder.Path("a.ini"), "");
    ASSERT_EQ(::mkfifo(folder.Path("pipe").c_str(), 0666), 0);
    EXPECT_EQ(PrivateProfileReadError(folder.Path("a.ini")), std::nullopt);
    EXPECT_EQ(PrivateProfileReadError(folder.Path("b.ini")), FileErrorText(ENOENT));
    EXPECT_EQ(PrivateProfileReadError(folder.Path("")), FileErrorText(EISDIR));
    EXPECT_EQ(PrivateProfileReadError(folder.Path("pipe")), "Not a regular file");   // And doesn't wait for it.
}

TEST(ProfileTransaction, GivesWhatSingleWritesGive) {
    NoFlush calls;
    const FileCallsInPlace inPlace(calls);
    const TempFolder folder;
    const std::vector<std::string> starts = {"", "x=0\n[a]\nk=1\nK=2\nword\n\n; c\n[b]\n[A]\nl=3", "\xEF\xBB\xBF",
                                             "\xFF\xFE", "[b\nword\nk = 1\n\n[a]x\n;k=1"};
    const std::vector<std::string> sections = {"a", " B ", "c", "[d]", "", "e\nk=1"};
    const std::vector<std::string> keys = {"k", "L", "word", ";k", "[b]", "k=l", "", "\tm", "n\r[a]"};
    const std::vector<std::string> values = {"", "1", "two", "x\n", "y\nk=5", "z\n[a]\nl=6"};
    std::mt19937 random(1);
    const auto pick = [&](const std::vector<std::string>& from) { return from[random() % from.size()]; };
    for (int round = 0; round < 300; ++round) {
        const std::string& start = starts[static_cast<std::size_t>(round) % starts.size()];
        Put(folder.Path("one"), start);
        Put(folder.Path("all"), start);
        ProfileTransaction transaction(folder.Path("all"));
        std::string log;
        for (int i = 0; i < 12; ++i) {
            const std::string section = pick(sections);
            const std::string key = pick(keys);
            const std::string value = pick(values);
            log += Json({section, key, value}).dump();
            WritePrivateProfileStringA(section.c_str(), key.c_str(), value.c_str(), folder.Path("one").c_str());
            transaction.Write(section, key, value);
        }
        ASSERT_EQ(folder.Read("all"), start) << "written before its end";
        ASSERT_TRUE(transaction.Commit());
        ASSERT_EQ(folder.Read("all"), folder.Read("one")) << log;
    }
}

TEST(ProfileTransaction, TouchesNothingWithoutAChangeAndCanStartEmpty) {
    const TempFolder folder;
    const std::string path = folder.Path("a.ini");
    EXPECT_TRUE(ProfileTransaction(path).Commit());
    EXPECT_FALSE(fs::exists(path));
    Put(path, "[s]\nk=1\r\n");
    FailingCalls calls(-1, "open");
    {
        ProfileTransaction same(path);
        same.Write("s", "k", "2");
        same.Write("s", "k", "1");
        const FileCallsInPlace inPlace(calls);
        EXPECT_TRUE(same.Commit());
        same.Write("s", "k", "3");
        EXPECT_FALSE(same.Commit());
    }
    EXPECT_EQ(Bytes(path), "[s]\nk=1\r\n");
    ProfileTransaction empty(path, ProfileTransaction::Start::Empty);
    empty.Write("t", "a", "1");
    empty.Write("s", "k", "2");
    empty.Write("t", "b", "3");
    EXPECT_TRUE(empty.Commit());
    EXPECT_EQ(Bytes(path), "[t]\r\na=1\r\nb=3\r\n[s]\r\nk=2\r\n");
}

}   // namespace
