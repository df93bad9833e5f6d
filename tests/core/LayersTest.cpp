#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>

namespace {

namespace fs = std::filesystem;

/// The folders that each inner folder may include.
const std::map<std::string, std::string> kInner = {
    {"files", "files"},
    {"ini", "ini files"},
    {"ports", "ports files"},
    {"machine", "machine"},
    {"core", "core ports machine"},
    {"pll", "pll core ports machine"},
    {"burst", "burst pll core ini ports machine"},
    {"partfile", "partfile pll core ini ports machine"},
    {"settings", "settings partfile burst pll core ini files ports machine"}};

/// What the line includes that the folder may not; empty if nothing.
std::string Objection(const std::string& folder, const std::string& line) {
    std::string text = line;
    std::erase_if(text, [](char c) { return c == ' ' || c == '\t'; });
    if (!text.starts_with("#include")) {
        return {};
    }
    const std::string name = text.substr(9, text.find_first_of(">\"", 9) - 9);
    const std::string first = name.substr(0, name.find('/'));
    const bool qt = name.size() > 1 && name[0] == 'Q' && (name[1] == 't' || (name[1] >= 'A' && name[1] <= 'Z'));
    const bool ours = first != name && fs::is_directory(fs::path(SOURCE_DIR) / "src" / first);
    return qt || (ours && kInner.at(folder).find(first) == std::string::npos) ? name : "";
}

// Installed headers of Qt are found without its libraries, so that the linker alone doesn't see them.
TEST(Layers, InnerFoldersIncludeNeitherQtNorWhatLiesFurtherOut) {
    int files = 0;
    for (const auto& [folder, allowed] : kInner) {
        for (const auto& entry : fs::recursive_directory_iterator(fs::path(SOURCE_DIR) / "src" / folder)) {
            if (entry.is_directory()) {
                continue;
            }
            ++files;
            std::ifstream in(entry.path());
            for (std::string line; std::getline(in, line);) {
                EXPECT_EQ(Objection(folder, line), "") << entry.path();
            }
        }
    }
    EXPECT_GT(files, 30) << "the sources weren't found";
    EXPECT_EQ(Objection("core", "#include <QString>"), "QString");
    EXPECT_EQ(Objection("core", "  #  include <QtCore/qstring.h>   // x"), "QtCore/qstring.h");
    EXPECT_EQ(Objection("core", "#include \"pll/cPLL.h\""), "pll/cPLL.h");
    EXPECT_EQ(Objection("burst", "#include \"settings/Modes.h\""), "settings/Modes.h");
    EXPECT_EQ(Objection("core", "// #include \"pll/cPLL.h\""), "");
}

}   // namespace
