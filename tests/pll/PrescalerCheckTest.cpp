#include "pll/PrescalerCheck.h"

#include <gtest/gtest.h>

#include <map>

#include "support/TextTable.h"

namespace {

/// "A B C", "-" for what isn't shown, "!" behind what is red; without any of them "frame" or "hidden".
std::string Shown(const PrescalerResult& r) {
    const std::string shown =
        r.a.value_or("-") + (r.aBroken ? "! " : " ") + r.b.value_or("-") + (r.bBroken ? "! " : " ") + r.c.value_or("-");
    const bool values = r.view == PrescalerResult::View::Values;
    EXPECT_EQ(values, shown != "- - -");
    return values ? shown : r.view == PrescalerResult::View::Frame ? "frame" : "hidden";
}

TEST(PrescalerCheck, SplitsNAndMarksWhatBreaksTheRule) {
    static const std::map<std::string, PrescalerMode> modes = {{"dual", PrescalerMode::Dual},
                                                               {"quad", PrescalerMode::Quad},
                                                               {"none", PrescalerMode::None},
                                                               {"unset", PrescalerMode::Unset}};
    // Mode, N and prescaler; what is shown. N and B are rounded with halves to even: 1000.5 counts as 1000, a B of 2.5
    // as 2. Of a negative N the remainder is negative and B is rounded down.
    for (const TextRow& row : TextTable(R"(
        dual 1000 32 '8 31 -';  dual 63 32 '31! 1 -';  dual 63 '32 ' '31! 1 -';  dual -63 32 '-31 -2 -'
        dual 64 8 '0 8 -';  dual 72 8 '0 9 -';  dual 9 8 '1 1 -';  dual 0 8 '0 0 -'
        dual 1000.5 32 '8 31 -';  dual 1001.5 32 '10 31 -';  dual 2147483647 8 '7 268435455 -'
        quad 1000 32 '0 2 31';  quad 30 32 '2! 7! 0';  quad 1001 30 '1 2.5 33';  quad 75 30 '3! 3! 2'
        quad 70 30 '2 2 2';  quad 75.6 30 '0 4! 2';  quad 73 31 '1 2.5 2';  quad 77 31 '1 3.5! 2'
        quad 2147483647 16 '3 3 134217727'
        none 1000 32 hidden;  dual 1000 8/9 hidden;  dual 1000 '' hidden;  quad 1000 0.4 hidden;  quad NaN 32 hidden
        dual 1E+300 32 hidden;  unset 1000 32 frame)")) {
        EXPECT_EQ(Shown(CheckPrescaler(modes.at(row[0]), row[1], row[2])), row[3]) << row[1] << " / " << row[2];
    }
}

}   // namespace
