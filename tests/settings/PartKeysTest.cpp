#include "partfile/PartKeys.h"

#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <string>

#include "core/DeviceDisplay.h"
#include "core/cPart.h"
#include "settings/DeviceSetup.h"
#include "support/Patterns.h"
#include "support/TempFolder.h"

namespace {

/// Everything that reading a part file makes visible, as one text.
class TextDisplay final : public DeviceDisplay {
public:
    std::string text;
    void AddPinBox(const cPrgmPin& pin) override { Note("pin " + pin.ID()); }
    void AddCheckBox(const cPrgmBits&, std::string_view group) override { Note("check " + std::string(group)); }
    void AddCounterBox(const cPrgmBits&, std::string_view group) override { Note("count " + std::string(group)); }
    void AddListBox(const cPrgmBits&, std::string_view group) override { Note("list " + std::string(group)); }
    void AddPLLPage(int, const std::string& name) override { Note("page " + name); }
    void ShowVersion(const std::string& version, const std::string& more) override { Note(version + '/' + more); }
    void AddMode(int, const std::string& caption) override { Note("mode " + caption); }

private:
    void Note(const std::string& line) { text += line + '\n'; }
};

/// What a device is and what is wrong with its file.
std::string Outcome(const std::string& path) {
    TextDisplay display;
    cPart part;
    part.UseDisplay(display);
    ReadPartFile(part, path);
    std::string text = display.text;
    for (const cPrgmBits& field : part.PrgmBits()) {
        text += field.ID() + field.Description();
        IgnoringFailures([&] { text += field.Text(); });
    }
    for (const Problem& problem : part.FileProblems().All()) {
        text += problem.text + '\n';
    }
    return text;
}

/// A value of each key that says something, or else "1"; the second field has texts, the first numbers and codes.
const std::map<std::string, std::string> kValues = {
    {"SETUP REGISTER_LENGTH", "16"},
    {"SETUP CONTROL_LENGTH", "0"},
    {"SETUP DATA", "2"},
    {"SETUP LE", "4"},
    {"SETUP SBI", "FALSE"},
    {"REGISTERS NAME", "A"},
    {"REGISTERS MASK", "0"},
    {"REGISTERS HIGHLOWREGISTER", "A"},
    {"BITS REG", "A"},
    {"BITS NAME", "F"},
    {"BITS POS", "4"},
    {"BITS TYPE", "Counter"},
    {"BITS FORMAT", "Number"},
    {"BITS COUNT", "2"},
    {"BITS COUNTB", "2"},
    {"BITS DISPLAY", "TRUE"},
    {"PLLS N", "F"},
    {"MODES NAME", "A"},
};

/// A file in which every key stands once, with `changed` having another value.
std::string FileWith(const PartKey* changed) {
    std::string text;
    std::string section;
    for (const PartKey& key : PartKeys()) {
        if (key.section != section) {
            section = key.section;
            text += '[' + section + "]\n";
        }
        const std::array suffixes{"", "00", "0000"};
        const auto value = kValues.find(section + ' ' + key.name);
        const bool names = section == "PLLS" && key.kind == PartKey::Kind::Item && std::string(key.name) != "OSCIN";
        std::string usual = names ? "F" : "1";
        usual = value == kValues.end() ? usual : value->second;
        if (section == "BITS" && std::string(key.name).ends_with("BITS")) {
            usual = "F";
        }
        text += std::string(key.name) + suffixes[static_cast<std::size_t>(key.kind)] + '=' +
                (&key == changed ? (std::string(key.name) == "FORMAT" ? "String" : "?") : usual) + '\n';
    }
    return text;
}

TEST(PartKeys, TheReaderReadsEachOfThem) {
    const TempFolder folder;
    const std::string usual = Outcome(folder.File("x.ini", FileWith(nullptr)));
    EXPECT_EQ(usual.find("not read"), std::string::npos) << usual;
    for (const PartKey& key : PartKeys()) {
        if (std::string(key.name) != "UNITS") {   // They show behind a plain number only.
            EXPECT_NE(Outcome(folder.File("x.ini", FileWith(&key))), usual) << key.section << ' ' << key.name;
        }
    }
    const std::string plain = "[REGISTERS]\nCOUNT=1\nNAME00=A\n[BITS]\nCOUNT=1\nREG00=A\nPOS00=4\n";
    EXPECT_NE(Outcome(folder.File("x.ini", plain + "UNITS00=dB\n")), Outcome(folder.File("x.ini", plain)));
}

using Keys = std::multiset<std::string>;

std::string KindName(std::size_t digits) {
    return digits == 0 ? " once" : digits == 2 ? " for each item" : " for each entry";
}

Keys KnownKeys() {
    Keys keys;
    for (const PartKey& key : PartKeys()) {
        keys.insert(std::string(key.section) + ' ' + key.name + KindName(2 * static_cast<std::size_t>(key.kind)));
    }
    return keys;
}

/// Calls with each line of a document and the section of a part file that the line is about, if there is one.
void ForLines(const std::string& document, const std::string& heading,
              const std::function<void(const std::string&, const std::string&)>& visit) {
    std::ifstream in(SOURCE_DIR "/" + document);
    ASSERT_TRUE(in) << document;
    std::string section;
    for (std::string line; std::getline(in, line);) {
        for (const auto& found : AllMatches(line, heading)) {
            section.clear();
            for (const char* known : PartSections()) {
                section = found[1] == known ? known : section;
            }
        }
        visit(section, line);
    }
}

TEST(PartKeys, TheDocumentTellsEachOfThemAndNoOther) {
    Keys told;
    bool inKeys = false;
    ForLines("docs/part-file.md", "^## ([A-Z]*)", [&](const std::string& section, const std::string& line) {
        inKeys = line.starts_with("| Key |") || (inKeys && line.starts_with('|'));
        const std::string cell = inKeys && !section.empty() ? line.substr(0, line.find('|', 1)) : "";
        for (const auto& found : AllMatches(cell, "`([A-Z_]+)`(\\*([nm]+)\\*)?")) {
            told.insert(section + ' ' + found[1] + KindName(found[3].size()));
        }
    });
    EXPECT_EQ(told, KnownKeys());
}

TEST(PartKeys, TheManualPageTellsEachOfThemAndNoOther) {
    Keys told;
    ForLines("packaging/man/tarnwick-part.5", "^\\.S[SH] ([A-Z]*)",
             [&](const std::string& section, const std::string& line) {
                 for (const auto& found : AllMatches(line, "^\\.BI? ([A-Z_]+)( ([nm]+))?$")) {
                     if (!section.empty()) {
                         told.insert(section + ' ' + found[1] + KindName(found[3].size()));
                     }
                 }
             });
    EXPECT_EQ(told, KnownKeys());
}

TEST(PartKeys, ReadsTheDigitsAsItemAndEntry) {
    struct Case {
        const char* section;
        const char* key;
        const char* readings;   // "item/entry", those possible.
    };
    for (const Case& c :
         {Case{"BITS", "VAL0312", "3/12 "}, Case{"bits", "val0312", "3/12 "}, Case{"BITS", "VAL03", ""},
          Case{"BITS", "VAL10099", "100/99 "}, Case{"BITS", "VAL10100", "10/100 101/0 "},
          Case{"BITS", "VAL100100", "100/100 1001/0 "}, Case{"BITS", "POS7", ""}, Case{"BITS", "POS007", ""},
          Case{"BITS", "POS100", "100/-1 "}, Case{"BITS", "COUNT", "-1/-1 "}, Case{"BITS", "COUNT05", "5/-1 "},
          Case{"SETUP", "CLOCK", "-1/-1 "}, Case{"SETUP", "CLOCK00", ""}, Case{"PINS", "POS00", ""},
          Case{"MODES", "NAME0102", "1/2 "}, Case{"MODES", "NAME01", ""}, Case{"BITS", "", ""}}) {
        std::string readings;
        for (const KeyReading& reading : ReadingsOf(c.section, c.key)) {
            readings += std::to_string(reading.item) + '/' + std::to_string(reading.entry) + ' ';
        }
        EXPECT_EQ(readings, c.readings) << c.section << ' ' << c.key;
    }
}

}   // namespace
