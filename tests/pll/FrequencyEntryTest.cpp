#include "pll/FrequencyEntry.h"

#include "pll/EntryTexts.h"
#include "pll/PLLSpinners.h"
#include "pll/StepCommands.h"
#include "pll/TestLoop.h"
#include "support/Cases.h"

namespace {

/// What the box shows after a refresh.
std::string Shown(TestLoop& t, EntryBox box) {
    const double values[] = {t.Loop().XtalFrequency(), t.Loop().VCOFrequency(), t.Loop().PDFrequency(),
                             t.Loop().RValue(),        t.Loop().NValue(),       t.Field("NUM").Value(),
                             t.Field("DEN").Value()};
    return GeneralText(values[static_cast<std::size_t>(box)]);
}

TEST(FrequencyEntry, ShowsWhatWasReachedAndSaysWhatWasAsked) {
    using enum EntryBox;
    const Cases<int, EntryBox, const char*, const char*, const char*, const char*> cases = {
        // Starting at N 1000, R 100, 10 MHz.
        {4, VCO, "1000.25", "1000.25", "10002/100/2/4", "1000.25 MHz exact"},
        {0, VCO, " 1000.06 ", "1000.1", "10001/100/0/0", "asked 1000.06 MHz, reached 1000.1 MHz: +40000 Hz, +40 ppm"},
        {0, VCO, "1.0001G", "1000.1", "10001/100/0/0", "1000.1 MHz exact"},
        {0, VCO, "-5", "0", "0/100/0/0", "asked -5 MHz, reached 0 MHz: +5000000 Hz, +1000000 ppm"},
        {0, VCO, "abc", "100", "1000/100/0/0",
         "VCO frequency: \"abc\" is no frequency; it takes MHz, or a number with its unit, as 433.5MHz, 2.4G or 200 "
         "kHz"},
        {0, Fpd, "0.3MHz", "303.030303030303", "1000/33/0/0",
         "asked 300 kHz, reached 303.030303030303 kHz: +3030.3 Hz, +10100 ppm"},
        {0, Fpd, "1E-9", "100", "1000/100/0/0", "PLL 'RF' can't compare at 1E-09 kHz: R would not fit 32 bits"},
        {0, Osc, "-12.5", "12.5", "1000/100/0/0", "12.5 MHz exact"},
        {0, Osc, "0", "0.000001", "1000/100/0/0", "asked 0 MHz, reached 0.000001 MHz: +1 Hz"},
        {0, RCounter, "33.4", "33", "1000/33/0/0", "R: asked 33.4, reached 33: -0.4"},
        {0, RCounter, "33k", "100", "1000/100/0/0",
         "Value of the R counter: \"33k\" is no plain number, as 100 or 0.5"},
        {0, NCounter, "2000,5", "2000", "2000/100/0/0", "N: asked 2000.5, reached 2000: -0.5, -50000 Hz, -249.9 ppm"},
        {4, NCounter, "2000.7", "2000.75", "2000/100/3/4",
         "N: asked 2000.7, reached 2000.75: +0.05, +5000 Hz, +24.99 ppm"},
        {4, FractNum, "999", "255", "1000/100/255/4", "numerator: asked 999, reached 255: -744, -18600000 Hz"},
        {4, FractDen, "0", "0", "1000/100/1/0", "denominator: 0 exact"}};
    for (const auto& [denominator, box, text, shown, counters, note] : cases) {
        TestLoop t(denominator);
        t.Do(denominator > 0 ? "n=1000.25" : "n=1000");
        const std::string where = std::string(text) + " -> " + shown;
        const EntryResult result = Enter(t.part, 0, box, text, true);
        EXPECT_TRUE(result.handled) << where;
        EXPECT_EQ(Shown(t, box), shown) << where;
        EXPECT_EQ(t.Counters(), counters) << where;
        EXPECT_EQ(EntryNote(result), note) << where;
    }
}

TEST(FrequencyEntry, SaysWhatWasSent) {
    EntryResult met;
    met.asked = met.reached = 2400.05;
    EntryResult refused;
    refused.refusal = "no";
    const Cases<EntryResult, Sent, const char*> cases = {
        {met, {true, {}}, "2400.05 MHz exact, nothing to send"},
        {met, {true, std::vector<std::string>(9, "R")}, "2400.05 MHz exact, sent 9 registers"},
        {{}, {true, {"R0"}}, "sent R0"},
        {refused, {true, {"R0", "R1"}}, "no; sent R0, R1"},
        {refused, {true, {}}, "no"}};
    for (const auto& [result, sent, note] : cases) {
        EXPECT_EQ(EntryNote(result, sent), note);
    }
}

TEST(FrequencyEntry, LeavingABoxThatShowsTheReadBackValueMovesNothing) {
    using enum EntryBox;
    for (const double reference : {10.0, 19.2, 12.345678}) {
        for (const double n : {77.0, 12345.0, 130000.0, 10002.25, 9999.75}) {
            TestLoop t(4, reference, 33);
            t.Loop().NValue(n);
            const std::string before = t.Counters();
            for (const EntryBox box : {VCO, Osc, NCounter, Fpd, RCounter, FractNum, FractDen}) {
                Enter(t.part, 0, box, Shown(t, box), false);
                EXPECT_EQ(t.Counters(), before) << reference << " MHz, N " << n << ", box " << static_cast<int>(box);
            }
        }
    }
}

TEST(FrequencyEntry, TheNBoxOfAFractionalLoopIsWrittenOnlyIfItWasChanged) {
    TestLoop t(4);
    t.Loop().NValue(1000.75);
    t.part.Registers().At("R").Change(false);
    EXPECT_FALSE(Enter(t.part, 0, EntryBox::NCounter, "1000.75", false).written);
    EXPECT_FALSE(t.part.Registers().At("R").Change());
    EXPECT_TRUE(Enter(t.part, 0, EntryBox::NCounter, "1000.75", true).written);
    EXPECT_EQ(t.Counters(), "1000/100/3/4");
}

TEST(FrequencyEntry, WhatWasWrittenIsNotRefusedWhereItCannotBeReadBack) {
    TestLoop t(4);
    t.Loop().Denominator("nobody");
    const EntryResult result = Enter(t.part, 0, EntryBox::FractNum, "3", true);
    EXPECT_TRUE(result.written && !result.Refused()) << result.refusal;
    EXPECT_EQ(t.Field("NUM").Value(), 3);
}

TEST(FrequencyEntry, GuardsOfTheBoxes) {
    using enum EntryBox;
    // The box, the device and its denominator, the loop; what becomes of an entry.
    const Cases<EntryBox, const char*, int, int, std::string> cases = {
        {Osc, "", 4, 0, "not handled"},          {VCO, "TEST", 4, 0, "taken"},
        {FractNum, "TEST", 0, 0, "not handled"}, {FractDen, "TEST", 4, 0, "taken"},
        {FractNum, "TEST", 4, 1, "not handled"}, {NCounter, "TEST", 4, 1, "refused"},
        {VCO, "TEST", 4, -1, "refused"}};
    for (const auto& [box, device, denominator, pll, becomes] : cases) {
        SCOPED_TRACE("box " + std::to_string(static_cast<int>(box)) + " of loop " + std::to_string(pll));
        TestLoop t(denominator);
        t.part.ID(device);
        const std::string before = t.Counters();
        const EntryResult result = Enter(t.part, pll, box, "7", true);
        EXPECT_EQ(!result.handled ? "not handled" : result.Refused() ? "refused" : "taken", becomes);
        EXPECT_EQ(t.Counters() != before, becomes == "taken");
    }
}

TEST(FrequencyEntry, HintsTellUnitResolutionAndRange) {
    using enum EntryBox;
    const Cases<int, EntryBox, const char*> cases = {
        {0, Osc, "Reference frequency in MHz, above 0"},
        {0, VCO, "VCO frequency in MHz, in steps of 100 kHz, 5.6 to 13107.1 MHz"},
        {8, VCO, "VCO frequency in MHz, in steps of 12.5 kHz, 5.6 to 13107.1875 MHz"},
        {0, Fpd,
         "Phase detector frequency in kHz: the reference over R, here in steps of 990.099 Hz, 0.610388818 to 10000 "
         "kHz"},
        {0, NCounter, "Value of the N counter, in steps of 1, 56 to 131071"},
        {8, NCounter, "Value of the N counter, in steps of 1/8, 56 to 131071.875"},
        {8, FractNum, "Numerator of the fraction, in steps of 1, 0 to 255; one count is 12.5 kHz at the VCO"},
        {8, FractDen, "Denominator of the fraction, in steps of 1, 0 to 200"},
        {0, FractDen, "Denominator of the fraction"}};
    for (const auto& [denominator, box, hint] : cases) {
        TestLoop t(denominator);
        t.Field("N").MinimumValue(56);
        t.Field("DEN").MaximumValue(200);
        EXPECT_EQ(EntryHint(t.part, 0, box), hint);
        EXPECT_EQ(std::string(hint).rfind(EntryHint(t.part, 7, box), 0), 0U) << "without its PLL";
    }
    TestLoop ruled(100);
    ruled.Fields("LESS 50+3 texts=5,6");
    ruled.Field("NUM").GreaterBitName("LESS");
    EXPECT_EQ(EntryHint(ruled.part, 0, FractNum).find("0 to 5;") != std::string::npos, true);
    EXPECT_EQ(EntryHint(ruled.part, 0, NCounter), "Value of the N counter, in steps of 1/100, 0 to 131071.05");
    TestLoop list;
    list.Field("RDIV").SetValueArray({8, 1, 2, 4});
    list.Field("N").StepValue(2);
    EXPECT_EQ(EntryHint(list.part, 0, RCounter), "Value of the R counter, 1 to 8");
    list.Field("RDIV").SetValueArray({0});
    EXPECT_EQ(list.Loop().Resolution(), 200000);
}

TEST(FrequencyEntry, FrequenciesInReadableUnits) {
    EXPECT_EQ(HertzText(999999.9), "1 MHz") << "rounded across a unit";
    EXPECT_EQ(HertzText(-1234567), "-1.23457 MHz");
    EXPECT_EQ(HertzText(0.0125), "12.5 mHz");
}

}   // namespace
