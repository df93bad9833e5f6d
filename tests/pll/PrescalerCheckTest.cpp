#include "pll/PrescalerCheck.h"

#include <gtest/gtest.h>

namespace {

using View = PrescalerResult::View;

/// "A B C", "-" for what isn't shown, "!" behind what is red.
std::string Shown(const PrescalerResult& r) {
    return r.a.value_or("-") + (r.aBroken ? "! " : " ") + r.b.value_or("-") + (r.bBroken ? "! " : " ") +
           r.c.value_or("-");
}

TEST(PrescalerCheck, SplitsNAndMarksWhatBreaksTheRule) {
    struct Case {
        PrescalerMode mode;
        const char* n;
        const char* p;
        View view;
        const char* shown;
    };
    constexpr auto kDual = PrescalerMode::Dual;
    constexpr auto kQuad = PrescalerMode::Quad;
    const Case cases[] = {
        {kDual, "1000", "32", View::Values, "8 31 -"},
        {kDual, "63", "32", View::Values, "31! 1 -"},
        {kDual, "64", "8", View::Values, "0 8 -"},
        {kDual, "72", "8", View::Values, "0 9 -"},
        {kDual, "9", "8", View::Values, "1 1 -"},
        {kDual, "1000.5", "32", View::Values, "8 31 -"},    // Counts as 1000,
        {kDual, "1001.5", "32", View::Values, "10 31 -"},   // and this as 1002.
        {kDual, "0", "8", View::Values, "0 0 -"},
        {kDual, "-63", "32", View::Values, "-31 -2 -"},   // The remainder has the sign of N; B is rounded down.
        {kDual, "2147483647", "8", View::Values, "7 268435455 -"},
        {kDual, "63", "32 ", View::Values, "31! 1 -"},
        {kQuad, "1000", "32", View::Values, "0 2 31"},
        {kQuad, "30", "32", View::Values, "2! 7! 0"},
        {kQuad, "1001", "30", View::Values, "1 2.5 33"},
        {kQuad, "75", "30", View::Values, "3! 3! 2"},
        {kQuad, "70", "30", View::Values, "2 2 2"},
        {kQuad, "75.6", "30", View::Values, "0 4! 2"},
        {kQuad, "73", "31", View::Values, "1 2.5 2"},    // 2.5 reads back as 2,
        {kQuad, "77", "31", View::Values, "1 3.5! 2"},   // 3.5 as 4.
        {kQuad, "2147483647", "16", View::Values, "3 3 134217727"},
        {PrescalerMode::None, "1000", "32", View::Hidden, "- - -"},
        {PrescalerMode::Unset, "1000", "32", View::Frame, "- - -"},
        {kDual, "1000", "8/9", View::Hidden, "- - -"},
        {kDual, "1000", "", View::Hidden, "- - -"},
        {kQuad, "1000", "0.4", View::Hidden, "- - -"},
        {kQuad, "NaN", "32", View::Hidden, "- - -"},
        {kDual, "1E+300", "32", View::Hidden, "- - -"},
    };
    for (const Case& c : cases) {
        const PrescalerResult result = CheckPrescaler(c.mode, c.n, c.p);
        EXPECT_EQ(Shown(result), c.shown) << c.n << " / " << c.p;
        EXPECT_EQ(result.view, c.view) << c.n << " / " << c.p;
    }
}

}   // namespace
