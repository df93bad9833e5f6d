#include "pll/StepCommands.h"

#include "pll/EntryTexts.h"
#include "pll/PLLSpinners.h"
#include "pll/TestLoop.h"
#include "support/Cases.h"

namespace {

TEST(StepCommands, MoveNThroughTheFrequencyAndTheNumeratorByItsField) {
    // The step of N, or one of the numerator.
    constexpr int kUp = 101;
    constexpr int kDown = 99;
    const Cases<int, const char*, int, const char*, const char*, const char*> cases = {
        {0, "n=10000", 1, "100", "10001/100/0/0", "1000.1 MHz exact"},
        {0, "n=10000", -10, "100", "9990/100/0/0", "999 MHz exact"},
        {0, "n=10000", 10, " 100 ", "10010/100/0/0", "1001 MHz exact"},
        {4, "n=1000.75", 1, "100", "1001/100/3/4", "100.175 MHz exact"},
        {0, "N.min=996 n=1000", -10, "100", "996/100/0/0", "asked 99 MHz, reached 99.6 MHz: +600000 Hz, +6061 ppm"},
        {4, "N.min=996 n=1000.25", -10, "100", "996/100/4/4",
         "asked 99.025 MHz, reached 99.7 MHz: +675000 Hz, +6816 ppm"},
        {0, "n=1000", 1, "250", "1002/100/0/0",
         "asked 100.25 MHz, reached 100.2 MHz: -50000 Hz, -498.8 ppm"},   // The step is what the box says.
        {4, "n=1000.25", 1, "abc", "1000/100/1/4",
         "the step is unknown: Phase detector frequency: \"abc\" is no frequency; it takes kHz, or a number with its "
         "unit, as 433.5MHz, 2.4G or 200 kHz"},
        {4, "n=1000", kDown, "", "1000/100/0/4", "numerator: asked -1, reached 0: +1, +25000 Hz"},   // Doesn't borrow,
        {4, "n=1000.75", kUp, "", "1000/100/4/4", "numerator: 4 exact"},                             // doesn't carry.
        {0, "n=1000", kUp, "", "1000/100/0/0", "not handled"}};
    for (const auto& [denominator, before, command, fpd, counters, told] : cases) {
        SCOPED_TRACE(before + std::string(", ") + fpd);
        TestLoop t(denominator);
        t.Do(before);
        const auto step = [&t, by = command, text = fpd](int loop) {
            return by > 10 ? StepNumerator(t.part, loop, by == kUp) : StepN(t.part, loop, by, text);
        };
        const EntryResult outcome = step(0);
        EXPECT_EQ(t.Counters(), counters);
        EXPECT_EQ(outcome.handled ? EntryNote(outcome) : "not handled", told);
        EXPECT_FALSE(step(1).handled) << "there is no such loop";
        t.part.ID("");
        EXPECT_FALSE(step(0).handled) << "without a device";
        EXPECT_EQ(t.Counters(), counters);
    }
}

TEST(Spinners, StepTheirFieldTheirWay) {
    constexpr bool Up = true;
    constexpr bool Down = false;
    // From N 1000 and 3/4: the box's spinner, its button and R; the counters, and the text of a box of the fraction.
    const Cases<PLLSpinner, bool, double, const char*, const char*> cases = {
        {PLLSpinner::RCounter, Up, 100, "1000/101/3/4", ""},  {PLLSpinner::Fpd, Down, 1, "1000/2/3/4", ""},
        {PLLSpinner::Fpd, Up, 1, "1000/0/3/4", ""},           {PLLSpinner::NCounter, Up, 100, "1001/100/3/4", ""},
        {PLLSpinner::NCounter, Down, 100, "999/100/3/4", ""}, {PLLSpinner::FractNum, Up, 100, "1000/100/4/4", "4"},
        {PLLSpinner::FractDen, Up, 100, "1000/100/3/5", "5"}, {PLLSpinner::FractDen, Down, 100, "1000/100/3/3", "3"}};
    for (const auto& [spinner, button, r, counters, text] : cases) {
        TestLoop t(4, 10, r);
        t.Do("n=1000.75");
        const SpinResult result = Spin(t.part, 0, spinner, button, GeneralText(t.Loop().PDFrequency()));
        EXPECT_TRUE(result.handled && !result.Refused()) << counters << result.refusal;
        EXPECT_EQ(t.Counters(), counters);
        EXPECT_EQ(result.text.value_or(""), text) << counters;
    }
    TestLoop integer;
    const std::string before = integer.Counters();
    EXPECT_FALSE(Spin(integer.part, 0, PLLSpinner::FractNum, Up, "100").handled);
    EXPECT_TRUE(Spin(integer.part, 0, PLLSpinner::NCounter, Up, "1,000").Refused());
    integer.part.ID("");
    EXPECT_FALSE(Spin(integer.part, 0, PLLSpinner::RCounter, Up, "100").handled);
    EXPECT_EQ(integer.Counters(), before);
}

}   // namespace
