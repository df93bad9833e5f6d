#include <stdlib.h>
#include <sys/wait.h>

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "support/Cases.h"
#include "support/Patterns.h"
#include "support/TempFolder.h"

// The checker of part files as its users call it.

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

struct Ran {
    int status = -1;
    std::string out;
    std::string err;
};

/// Runs the program with arguments as a shell takes them; what it prints goes to a file of its own or another place.
Ran Tool(const std::string& arguments, const std::string& out = {}) {
    const TempFolder folder;
    const std::string command = PART_TOOL " " + arguments + " > " + (out.empty() ? folder.Path("out") : out) + " 2> " +
                                folder.Path("err") + " < /dev/null";
    const int status = ::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, folder.Read("out"), folder.Read("err")};
}

Json Check(const std::string& files) {
    return Json::parse(Tool("check --json " + files).out);
}

std::string Part(const std::string& name) {
    return PARTS_DIR "/" + name + ".ini";
}

std::string Message(const Json& problem) {
    return std::to_string(problem["line"].get<int>()) + ' ' + problem["severity"].get<std::string>() + ' ' +
           problem["key"].get<std::string>() + ' ' + problem["text"].get<std::string>();
}

/// What a faulty file says of itself: a comment ";! SEVERITY KEY TEXT" stands before the line that it is about. Two
/// such comments can stand before one line.
std::vector<std::string> Expected(const fs::path& file) {
    std::vector<std::string> waiting;
    std::vector<std::string> expected;
    std::ifstream in(file);
    int number = 0;
    for (std::string line; std::getline(in, line);) {
        ++number;
        if (line.starts_with(";! ")) {
            waiting.push_back(line.substr(3));
            continue;
        }
        for (const std::string& one : waiting) {
            expected.push_back(std::to_string(number) + ' ' + one);
        }
        waiting.clear();
    }
    EXPECT_TRUE(waiting.empty()) << "a comment about no line";
    return expected;
}

std::string Contents(const std::string& name) {
    std::ifstream in(SOURCE_DIR "/" + name);
    std::string contents{std::istreambuf_iterator<char>(in), {}};
    for (std::size_t at = 0; (at = contents.find("\\-", at)) != std::string::npos;) {
        contents.erase(at, 1);   // A hyphen of a manual page.
    }
    return contents;
}

TEST(PartTool, NamesEachFaultWithItsLine) {
    int files = 0;
    for (const auto& entry : fs::directory_iterator(TEST_DATA_DIR "/part-faults")) {
        SCOPED_TRACE(entry.path().filename().string());
        ++files;
        const std::vector<std::string> expected = Expected(entry.path());
        EXPECT_FALSE(expected.empty());
        std::vector<std::string> said;
        for (const Json& problem : Check(entry.path().string())) {
            said.push_back(Message(problem));
        }
        EXPECT_EQ(said.size(), expected.size()) << Json(said).dump(1);
        for (std::size_t i = 0; i < std::min(said.size(), expected.size()); ++i) {
            EXPECT_EQ(said[i].substr(0, expected[i].size()), expected[i]);
        }
        const bool onlyNotes = std::all_of(expected.begin(), expected.end(), [](const std::string& line) {
            return line.find(" note ") != std::string::npos;
        });
        EXPECT_EQ(Tool("check " + entry.path().string()).status, onlyNotes ? 0 : 1);
    }
    EXPECT_GT(files, 60) << "the faulty files weren't found";
}

/// The part files that the document gives in full, written into the folder.
std::vector<std::string> Examples(const TempFolder& folder) {
    std::istringstream document(Contents("docs/part-file.md"));
    std::vector<std::string> files;
    for (std::string line; std::getline(document, line);) {
        std::string text;
        for (bool inside = line == "```ini"; inside && std::getline(document, line) && line != "```";) {
            text += line + '\n';
        }
        if (text.find("[PLLS]") != std::string::npos) {
            files.push_back(folder.File("example" + std::to_string(files.size()) + ".ini", text));
        }
    }
    return files;
}

TEST(PartTool, FindsNothingInWhatShips) {
    const TempFolder folder;
    std::vector<std::string> files = Examples(folder);
    EXPECT_EQ(files.size(), 2U);
    for (const auto& entry : fs::directory_iterator(PARTS_DIR)) {
        if (entry.path().filename() != "tarnwick.ini") {
            files.push_back(entry.path().string());
        }
    }
    EXPECT_GE(files.size(), 22U);
    for (const std::string& file : files) {
        for (const Json& problem : Check(file)) {
            EXPECT_EQ(problem["severity"], "note") << file << ':' << Message(problem);
            EXPECT_EQ(problem["text"].get<std::string>().find("not read"), std::string::npos) << Message(problem);
        }
        EXPECT_EQ(Tool("check " + file).out.find("FRACTCARRY"), std::string::npos) << file;
        EXPECT_EQ(Tool("show " + file).status, 0) << file;
        EXPECT_EQ(Tool("words " + file).err, "") << file;
    }
}

TEST(PartTool, SaysWhatIsNoPartFile) {
    const Ran missing = Tool("check none.ini");
    EXPECT_EQ(missing.status, 1);
    EXPECT_TRUE(missing.out.starts_with("none.ini: error: the part file can't be read: No such file")) << missing.out;
    const Ran settings = Tool("check " + Part("tarnwick"));
    EXPECT_EQ(settings.status, 1);
    EXPECT_NE(settings.out.find("tarnwick.ini: warning: none of the sections"), std::string::npos) << settings.out;
    const TempFolder folder;
    std::string wide = "\xFF\xFE";
    for (const char c : std::string("[SETUP]\r\nCLOK=1\r\n")) {
        wide += {c, '\0'};
    }
    wide = folder.File("wide.ini", wide);
    EXPECT_NE(Tool("check " + wide)
                  .out.find("wide.ini:2: warning: [SETUP] CLOK: no such key, and not read: did you "
                            "mean 'CLOCK'?"),
              std::string::npos);
}

/// Whatever bytes a file holds, the array is JSON in UTF-8.
TEST(PartTool, JsonHoldsAnyBytes) {
    const TempFolder folder;
    const std::string odd = "\"\\\t\x01\x7F caf\xE9 \xC3\xA9 \xE2\x82\xAC \xED\xA0\x80 \xF4\x90\x80\x80 \xC0\xAF";
    const Json problems =
        Check(folder.File("x.ini", "\xEF\xBB\xBF[REGISTERS]\nCOUNT=1\nNAME00=" + odd + "\nMASK00=x" + odd + "\n"));
    ASSERT_FALSE(problems.empty());
    const std::string text = problems[0]["text"];
    EXPECT_NE(text.find("\"\\\t\x01\x7F caf\uFFFD \u00E9 \u20AC \uFFFD\uFFFD\uFFFD"), std::string::npos) << text;
    EXPECT_EQ(Check(Part("QRV9000")).size(), 3U);
    EXPECT_EQ(Check(Part("QRV9000") + ' ' + Part("QRV9000")).size(), 6U) << "several files, one array";
}

TEST(PartTool, WordsFollowTheSettings) {
    // The part file and the settings; a line of the output, what the standard error says, the status.
    for (const auto& [file, settings, word, note, status] :
         Cases<std::string, std::string, std::string, const char*, int>{
             {"ADF4351", "", "R5  0x00580005", "", 0},
             {"ADF4351", "CP_CURRENT=5mA", "R2  0x18005E42", "", 0},
             {"ADF4351", "CP_CURRENT=15", "R2  0x18005E42", "", 0},
             {"ADF4351", "CP_CURRENT=5.1mA", "R2  0x18004E42",
              "\"5.1mA\" is no value of 'CP_CURRENT': it takes 0.31 mA", 1},
             {"ADF4351", "FEEDBACK_SELECT=divided", "R4  0x000C803C", "", 0},
             {"ADF4351", "MOD=625 pll.vco=3471.36", "R0  0x004510B0", "", 0},
             {"ADF4351", "pll.osc=19.2 'RF PLL.vco=2400'", "R0  0x003E8000", "", 0},
             {"ADF4351", "pll.vco=2400.003", "R0  0x00300000", "asked 2400.003 MHz, reached 2400 MHz", 0},
             {"ADF4351", "pll.vco=100", "R0  0x00258000", "asked 100 MHz, reached 1875 MHz", 1},
             {"ADF4351", "pll.fpd=12500", "R2  0x18008E42", "", 0},
             {"ADF4351", "INTT=1", "R0  0x00300000", "no bit field called 'INTT': did you mean 'INT'?", 1},
             {"ADF4351", "XY.vco=1", "R0  0x00300000", "no PLL called 'XY'", 1},
             {"ADF4351", "pll.vco=fast", "R0  0x00300000", "VCO frequency: \"fast\" is no frequency; it takes MHz", 1},
             {"ADF4351", "pll.vco=2,4G", "R0  0x00300000", "", 0},
             {"ADF7021", "pll.fpd=19680 pll.vco=4152.48", "R0   0x16980000", "", 0},   // Carries into N.
             {"Si4133", "RF1.vco=1300 IF.vco=100", "RF1_N  0x00A283", "", 0},
             {"Si4133", "pll.vco=1300", "RF1_N  0x009E23", "no PLL called 'pll'", 1},
             {"ADF4106", "PRESCALER=8 pll.vco=2400.2", "AB    0x05DC05", "", 0},
             {"ADF4153", "LOW_NOISE=0 LOWEST_NOISE=0", "R3  0x000003", "", 0}}) {
        SCOPED_TRACE(file + ' ' + settings);
        const Ran ran = Tool("words " + Part(file) + ' ' + settings);
        EXPECT_NE(('\n' + ran.out).find('\n' + word + '\n'), std::string::npos) << ran.out;
        EXPECT_EQ(ran.status, status);
        EXPECT_EQ(ran.err.empty(), *note == '\0') << ran.err;
        EXPECT_NE(ran.err.find(note), std::string::npos) << ran.err;
    }
}

TEST(PartTool, ShowListsEveryBitOnceWithItsField) {
    const Ran ran = Tool("show " + Part("QRV8320"));
    EXPECT_EQ(ran.status, 0);
    std::string text = '\n' + ran.out;
    text.erase(std::unique(text.begin(), text.end(), [](char a, char b) { return a == ' ' && b == ' '; }), text.end());
    for (const char* row :
         {"REF 0x00894014", " 31..25 - 0x0", " 21 CP_TRI Active 0 = Active, 1 = Tristate",
          " 20..17 ICP 1.5 mA 0 = 0.3 mA, 1 = 0.6 mA", " 5..4 OUTA_EN 1 one of 0, 1", " 11 TRIM sign: 1 = -",
          " 21..4 NUM 25000000 0 to 268435455, limited by 'DEN'; higher bits in NUM_HIGH", "constant PRESC 8",
          "RF PLL: reference 100 MHz / R * (N + NUM / DEN) = 5012.5 MHz"}) {
        EXPECT_NE(text.find(std::string("\n") + row), std::string::npos) << row << '\n' << ran.out;
    }
    int bits = 0;
    for (const auto& run : AllMatches(text, "^ ([0-9]+)(\\.\\.([0-9]+))? ")) {
        bits += std::stoi(run[1]) - std::stoi(run[3].empty() ? run[1] : run[3]) + 1;
    }
    EXPECT_EQ(bits, 8 * 32) << "this device has no fields that share bits";
}

TEST(PartTool, TellsWhenItsOutputIsLost) {
    for (const std::string command : {"check --json ", "show ", "words "}) {
        const Ran ran = Tool(command + Part("QRV1150"), "/dev/full");
        EXPECT_EQ(ran.status, 1) << command;
        EXPECT_EQ(ran.err, "tarnwick-part: can't write the output: No space left on device\n") << command;
    }
}

TEST(PartTool, RefusesWhatItDoesNotUnderstand) {
    const std::string file = Part("QRV1150");
    for (const std::string& arguments :
         {std::string(), std::string("chek"), std::string("check"), std::string("show"), std::string("words"),
          "show " + file + ' ' + file, "check --quiet " + file, "show --json " + file, "words " + file + " INT"}) {
        const Ran ran = Tool(arguments);
        EXPECT_EQ(ran.status, 2) << arguments;
        EXPECT_TRUE(ran.err.starts_with("tarnwick-part: ")) << ran.err;
    }
    EXPECT_EQ(AllMatches(Tool("--version").out, "^tarnwick-part [0-9.]+$").size(), 1U);
}

/// The words of a text that match: commands, options, frequencies.
std::set<std::string> Mentioned(const std::string& text, const std::string& pattern) {
    std::set<std::string> words;
    for (const auto& match : AllMatches(text, pattern)) {
        words.insert(match[1]);
    }
    return words;
}

TEST(PartTool, DocumentsAgreeWithItsHelp) {
    const Ran help = Tool("--help");
    EXPECT_EQ(help.status, 0);
    const std::string manual = Contents("packaging/man/tarnwick-part.1");
    const std::string document = Contents("docs/part-file.md");
    const std::string completion = Contents("packaging/completions/tarnwick-part");
    const auto chapter = document.substr(document.find("## Checking the file"));
    const std::string checking = chapter.substr(0, chapter.find("\n## "));

    const std::string command = "tarnwick-part (--[a-z]+|[a-z]+)";
    const std::string frequency = "(\\.[a-z]{2,3})[=`]";
    const std::set<std::string> commands{"check", "show", "words", "--help", "--version"};
    EXPECT_EQ(Mentioned(help.out, command), commands);
    EXPECT_EQ(Mentioned(manual, command), commands);
    EXPECT_EQ(Mentioned(checking, command), commands);
    for (const std::string& each : commands) {
        EXPECT_NE(completion.find(each), std::string::npos) << each;
        EXPECT_FALSE(Tool(each).err.starts_with("tarnwick-part: no command")) << each << " is told and doesn't exist";
    }
    for (const std::string& text : {manual, checking, completion}) {
        EXPECT_EQ(Mentioned(text, "(--[a-z]+)"), Mentioned(help.out, "(--[a-z]+)"));
        EXPECT_EQ(Mentioned(text, frequency), Mentioned(help.out, frequency));
    }
}

/// The example of the document is what the program prints.
TEST(PartTool, DocumentedWordsAreItsOwn) {
    std::istringstream document(Contents("docs/part-file.md"));
    std::string expected;
    std::string arguments;
    for (std::string line; std::getline(document, line);) {
        if (line.starts_with("    $ tarnwick-part ")) {
            arguments = line.substr(20);
        } else if (!arguments.empty() && line.starts_with("    ")) {
            expected += line.substr(4) + '\n';
        } else if (!expected.empty()) {
            break;
        }
    }
    ASSERT_FALSE(expected.empty());
    const auto file = arguments.find("ADF4351.ini");
    EXPECT_EQ(Tool(arguments.insert(file, PARTS_DIR "/")).out, expected);
}

}   // namespace
