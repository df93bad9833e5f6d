#include "core/LineUse.h"

#include <gtest/gtest.h>

#include "support/TestPart.h"

namespace {

std::string Joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "" : "+") + name;
    }
    return text;
}

}   // namespace

TEST(LineUse, TellsTheJobsOfALineAndMarksTwoOrMore) {
    const struct {
        const char* what;
        std::int16_t clock, data, le;
        std::vector<std::int16_t> pins;   ///< Their lines; they are called "P0", "P1" and so on.
        int line;
        LineRole role;
        const char* names;
    } cases[] = {
        {"each alone", 1, 2, 4, {}, 0, LineRole::Clock, "Clock"},
        {"each alone", 1, 2, 4, {}, 1, LineRole::Data, "Data"},
        {"each alone", 1, 2, 4, {}, 2, LineRole::LE, "LE"},
        {"a line without a job", 1, 2, 4, {}, 3, LineRole::None, ""},
        {"a pin alone, and the last line", 1, 2, 4, {11}, 11, LineRole::Pin, "P0"},
        {"a control line", 256, 2, 4, {}, 8, LineRole::Clock, "Clock"},
        {"two serial lines", 8, 8, 4, {}, 3, LineRole::Conflict, "Clock+Data"},
        {"two pins", 1, 2, 4, {9, 9}, 9, LineRole::Conflict, "P0+P1"},
        {"LE and a pin", 1, 2, 4, {5, 2}, 2, LineRole::Conflict, "LE+P1"},
        {"four jobs", 16, 16, 16, {4}, 4, LineRole::Conflict, "Clock+Data+LE+P0"},
        {"five jobs", 16, 16, 16, {4, 4}, 4, LineRole::Conflict, "Clock+Data+LE+P0+P1"},
        {"seven jobs", 1, 1, 1, {0, 0, 0, 0}, 0, LineRole::Conflict, "Clock+Data+LE+P0+P1+P2+P3"},
        {"a word of two lines", 3, 4, 8, {}, 0, LineRole::None, ""},
        {"a word of two lines", 3, 4, 8, {}, 1, LineRole::None, ""},
        {"a word beyond the lines, and none", 4096, 0, 1, {}, 0, LineRole::LE, "LE"},
        {"a pin beyond the lines", 1, 2, 4, {12, 14}, 11, LineRole::None, ""},
    };
    for (const auto& c : cases) {
        TestPart device(8);
        device.part.ClockPosition(c.clock);
        device.part.DataPosition(c.data);
        device.part.LEPosition(c.le);
        for (const std::int16_t line : c.pins) {
            device.part.AddProgramPin("P" + std::to_string(device.part.PrgmPins().Count()), line);
        }
        const auto uses = LineUses(device.part);
        const LineUse& use = uses[static_cast<std::size_t>(c.line)];
        EXPECT_EQ(use.role, c.role) << c.what << ", line " << c.line;
        EXPECT_EQ(Joined(use.names), c.names) << c.what << ", line " << c.line;
    }
}

TEST(LineUse, OnlyTheTwelveWeightsAreLines) {
    for (int line = 0; line < kPortLines; ++line) {
        EXPECT_EQ(LineOf(static_cast<std::int16_t>(1 << line)), line);
    }
    for (const int word : {0, 3, 6, 2049, 4096, 16384, -1, -32768}) {
        EXPECT_EQ(LineOf(static_cast<std::int16_t>(word)), std::nullopt) << word;
    }
}
