#include "pll/FrequencyEntry.h"

#include <gtest/gtest.h>

#include <vector>

#include "core/DeviceDisplay.h"
#include "core/Numbers.h"
#include "pll/EntryTexts.h"
#include "pll/PLLSpinners.h"
#include "pll/StepCommands.h"
#include "pll/TestLoop.h"

namespace {

/// Notes what is drawn, and "load" where the port was written in between.
class OrderDisplay final : public DeviceDisplay {
public:
    explicit OrderDisplay(const FakePort& port) : port_(port) {}
    void ShowPLLs() override { Note("plls"); }
    void ShowBits() override { Note("bits"); }
    void ShowRegisters() override { Note("registers"); }
    void ShowPort() override { Note("port"); }
    void ShowBurst(bool /*vectors*/) override { Note("burst"); }

    [[nodiscard]] std::string Order() {
        NoteLoad();
        return order_;
    }

private:
    void Note(const std::string& what) {
        NoteLoad();
        order_ += what + ' ';
    }
    void NoteLoad() {
        if (port_.Writes().size() != seen_) {
            seen_ = port_.Writes().size();
            order_ += "load ";
        }
    }

    const FakePort& port_;
    std::size_t seen_ = 0;
    std::string order_;
};

/// What the box shows after a refresh.
std::string Shown(TestLoop& t, EntryBox box) {
    switch (box) {
        case EntryBox::Osc:
            return GeneralText(t.Loop().XtalFrequency());
        case EntryBox::VCO:
            return GeneralText(t.Loop().VCOFrequency());
        case EntryBox::Fpd:
            return GeneralText(t.Loop().PDFrequency());
        case EntryBox::RCounter:
            return GeneralText(t.Loop().RValue());
        case EntryBox::NCounter:
            return GeneralText(t.Loop().NValue());
        case EntryBox::FractNum:
            return GeneralText(t.Field("NUM").Value());
        case EntryBox::FractDen:
            return GeneralText(t.Field("DEN").Value());
    }
    return {};
}

TEST(FrequencyEntry, ShowsWhatWasReachedAndSaysWhatWasAsked) {
    struct Case {
        int denominator;
        EntryBox box;
        const char* text;
        const char* shown;
        const char* counters;
        const char* note;
    };
    using enum EntryBox;
    const Case cases[] = {
        // Starting at N 1000, R 100, 10 MHz.
        {4, VCO, "1000.25", "1000.25", "10002/100/2/4", ""},
        {0, VCO, " 1000.06 ", "1000.1", "10001/100/0/0", "asked 1000.06 MHz, reached 1000.1 MHz: +40000 Hz, +40 ppm"},
        {0, VCO, "1e3", "1000", "10000/100/0/0", ""},
        {0, VCO, "-5", "0", "0/100/0/0", "asked -5 MHz, reached 0 MHz: +5000000 Hz, +1000000 ppm"},
        {0, VCO, "abc", "100", "1000/100/0/0", ""},
        {0, VCO, "", "100", "1000/100/0/0", ""},
        {0, Fpd, "300", "303.030303030303", "1000/33/0/0",
         "asked 300 kHz, reached 303.030303030303 kHz: +3030.3 Hz, +10100 ppm"},
        {0, Fpd, "0", "100", "1000/100/0/0", "PLL 'RF' can't compare at 0 kHz"},
        {0, Fpd, "1E-9", "100", "1000/100/0/0", "PLL 'RF' can't compare at 1E-09 kHz: R would not fit 32 bits"},
        {0, Osc, "-12.5", "12.5", "1000/100/0/0", ""},
        {0, Osc, "0", "0.000001", "1000/100/0/0", "asked 0 MHz, reached 0.000001 MHz: +1 Hz"},
        {0, RCounter, "33.4", "33", "1000/33/0/0", "asked 33.4, reached 33: -0.4"},
        {0, NCounter, "2000.5", "2000", "2000/100/0/0", "asked 2000.5, reached 2000: -0.5, -50000 Hz, -249.9 ppm"},
        {4, NCounter, "2000.7", "2000.75", "2000/100/3/4",
         "asked 2000.7, reached 2000.75: +0.05, +5000 Hz, +24.99 ppm"},
        {4, FractNum, "999", "255", "1000/100/255/4", "asked 999, reached 255: -744, -18600000 Hz"},
        {4, FractDen, "0", "0", "1000/100/1/0", ""},
        {4, FractDen, "8", "8", "1000/100/1/8", ""},
    };
    for (const Case& c : cases) {
        TestLoop t(c.denominator);
        t.Do(c.denominator > 0 ? "n=1000.25" : "n=1000");
        const std::string where = std::string(c.text) + " -> " + c.shown;
        const EntryResult result = Enter(t.part, 0, c.box, c.text, true);
        EXPECT_TRUE(result.handled) << where;
        EXPECT_EQ(Shown(t, c.box), c.shown) << where;
        EXPECT_EQ(t.Counters(), c.counters) << where;
        EXPECT_EQ(EntryNote(result, c.box), c.note) << where;
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

TEST(FrequencyEntry, GuardsOfTheBoxes) {
    struct Case {
        EntryBox box;
        bool loaded;
        int denominator;
        int pll;
        bool handled;
        bool swallows;
        bool refused;
    };
    using enum EntryBox;
    for (const Case& c : {Case{Osc, false, 4, 0, false, false, false}, Case{VCO, true, 4, 0, true, true, false},
                          Case{FractNum, true, 0, 0, false, true, false}, Case{FractDen, true, 4, 0, true, true, false},
                          Case{FractNum, true, 4, 1, false, true, false}, Case{NCounter, true, 4, 1, true, true, true},
                          Case{VCO, true, 4, -1, true, true, true}}) {
        TestLoop t(c.denominator);
        t.part.ID(c.loaded ? "TEST" : "");
        const std::string before = t.Counters();
        const EntryResult result = Enter(t.part, c.pll, c.box, "7", true);
        const std::string where = "box " + std::to_string(static_cast<int>(c.box));
        EXPECT_EQ(result.handled, c.handled) << where;
        EXPECT_EQ(SwallowsEnter(c.box, result), c.swallows) << where;
        EXPECT_EQ(result.Refused(), c.refused) << where;
        EXPECT_EQ(t.Counters() != before, c.handled && !c.refused) << where;
    }
}

TEST(FrequencyEntry, OrderOfDisplayAndLoadAfterEachSource) {
    struct Case {
        std::vector<FollowUp> sources;
        const char* withAutoReload;
        const char* without;
    };
    using enum EntryBox;
    constexpr auto kEnter = EntryEvent::Enter;
    constexpr auto kLeft = EntryEvent::LostFocus;
    const Case cases[] = {
        {{FollowUpOf(Osc, kEnter), FollowUpOf(Osc, kLeft), FollowUpOf(VCO, kEnter)},
         "plls bits registers port burst load ",
         "plls bits registers port burst "},
        {{FollowUpOf(VCO, kLeft)}, "plls bits registers port burst load ", "plls bits registers port burst load "},
        {{FollowUpOf(Fpd, kEnter), FollowUpOf(Fpd, kLeft), FollowUpOf(FractNum, kEnter), FollowUpOf(FractNum, kLeft),
          FollowUpOf(FractDen, kEnter), FollowUpOf(FractDen, kLeft), kAfterLabel},
         "plls registers load ",
         "plls registers load "},
        {{FollowUpOf(RCounter, kEnter), FollowUpOf(RCounter, kLeft), FollowUpOf(NCounter, kEnter),
          FollowUpOf(NCounter, kLeft), FollowUpOf(PLLSpinner::RCounter), FollowUpOf(PLLSpinner::Fpd),
          FollowUpOf(PLLSpinner::NCounter), kAfterStep},
         "registers plls load ",
         "registers plls load "},
        {{FollowUpOf(PLLSpinner::FractNum), FollowUpOf(PLLSpinner::FractDen)},
         "load registers plls ",
         "load registers plls "},
        {{kAfterSet}, "plls load ", "plls load "},
    };
    for (const Case& c : cases) {
        for (const FollowUp& source : c.sources) {
            for (const bool autoReload : {true, false}) {
                TestLoop t;
                OrderDisplay display(t.port);
                t.part.UseDisplay(display);
                t.Do("n=5");   // Marks the register.
                RunFollowUp(t.part, source, autoReload);
                EXPECT_EQ(display.Order(), autoReload ? c.withAutoReload : c.without)
                    << "source " << &source - c.sources.data() << ", auto reload " << autoReload;
            }
        }
    }
}

TEST(FrequencyEntry, HintsTellUnitResolutionAndRange) {
    struct Case {
        int denominator;
        EntryBox box;
        const char* hint;
    };
    using enum EntryBox;
    const Case cases[] = {
        {0, Osc, "Reference frequency in MHz, above 0"},
        {0, VCO, "VCO frequency in MHz, in steps of 100 kHz, 5.6 to 13107.1 MHz"},
        {8, VCO, "VCO frequency in MHz, in steps of 12.5 kHz, 5.6 to 13107.1875 MHz"},
        {0, Fpd,
         "Phase detector frequency in kHz: the reference over R, here in steps of 990.099 Hz, 0.610388818 to 10000 "
         "kHz"},
        {0, RCounter, "Value of the R counter, in steps of 1, 0 to 16383"},
        {0, NCounter, "Value of the N counter, in steps of 1, 56 to 131071"},
        {8, NCounter, "Value of the N counter, in steps of 1/8, 56 to 131071.875"},
        {8, FractNum, "Numerator of the fraction, in steps of 1, 0 to 255; one count is 12.5 kHz at the VCO"},
        {8, FractDen, "Denominator of the fraction, in steps of 1, 0 to 200"},
        {0, FractDen, "Denominator of the fraction"},
    };
    for (const Case& c : cases) {
        TestLoop t(c.denominator);
        t.Field("N").MinimumValue(56);
        t.Field("DEN").MaximumValue(200);
        EXPECT_EQ(EntryHint(t.part, 0, c.box), c.hint);
        EXPECT_EQ(std::string(c.hint).rfind(EntryHint(t.part, 7, c.box), 0), 0U) << "without its PLL";
    }
    TestLoop list;
    list.Field("RDIV").SetValueArray({8, 1, 2, 4});
    list.Field("N").StepValue(2);
    EXPECT_EQ(EntryHint(list.part, 0, RCounter), "Value of the R counter, 1 to 8");
    list.Field("RDIV").SetValueArray({0});
    EXPECT_EQ(list.Loop().Resolution(), 200000);
}

TEST(FrequencyEntry, FrequenciesInReadableUnits) {
    EXPECT_EQ(HertzText(2.5e9), "2.5 GHz");
    EXPECT_EQ(HertzText(999.9996), "1000 Hz");
    EXPECT_EQ(HertzText(-1234567), "-1.23457 MHz");
    EXPECT_EQ(HertzText(0.0125), "12.5 mHz");
    EXPECT_EQ(HertzText(1.5e-9), "0.0015 uHz");
    EXPECT_EQ(HertzText(0), "0 Hz");
}

}   // namespace
