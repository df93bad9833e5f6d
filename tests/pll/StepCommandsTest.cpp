#include "pll/StepCommands.h"

#include <gtest/gtest.h>

#include "core/Numbers.h"
#include "pll/PLLSpinners.h"
#include "pll/TestLoop.h"

namespace {

TEST(StepCommands, MoveNThroughTheFrequencyAndTheNumeratorByItsField) {
    struct Case {
        int denominator;
        const char* before;
        StepCommand command;
        const char* fpd;
        const char* counters;
        bool handled = true;
        bool refused = false;
    };
    using enum StepCommand;
    const Case cases[] = {
        {0, "n=10000", NDec, "100", "9999/100/0/0"},
        {0, "n=10000", IncN, "100", "10001/100/0/0"},
        {0, "n=10000", NDec10, "100", "9990/100/0/0"},
        {0, "n=10000", NInc10, " 100 ", "10010/100/0/0"},
        {4, "n=1000.75", IncN, "100", "1001/100/3/4"},
        {0, "N.min=996 n=1000", NDec10, "100", "996/100/0/0"},
        {4, "N.min=996 n=1000.25", NDec10, "100", "996/100/4/4"},
        {0, "n=1000", IncN, "250", "1002/100/0/0"},   // The step is what the box says.
        {4, "n=1000.25", IncN, "abc", "1000/100/1/4", true, true},
        {4, "n=1000.25", DecFrac, "", "1000/100/0/4"},
        {4, "n=1000", DecFrac, "", "1000/100/0/4"},      // Doesn't borrow,
        {4, "n=1000.75", IncFrac, "", "1000/100/4/4"},   // doesn't carry.
        {0, "n=1000", IncFrac, "", "1000/100/0/0", false},
    };
    for (const Case& c : cases) {
        const std::string where = c.before + std::string(", ") + c.fpd;
        TestLoop t(c.denominator);
        t.Do(c.before);
        const Outcome outcome = RunStep(t.part, 0, c.command, c.fpd);
        EXPECT_EQ(t.Counters(), c.counters) << where;
        EXPECT_EQ(outcome.handled, c.handled) << where;
        EXPECT_EQ(outcome.Refused(), c.refused) << where << outcome.refusal;
        EXPECT_FALSE(RunStep(t.part, 1, c.command, c.fpd).handled) << "there is no such loop";
        t.part.ID("");
        EXPECT_FALSE(RunStep(t.part, 0, StepCommand::IncN, "100").handled) << "without a device";
        EXPECT_EQ(t.Counters(), c.counters) << where;
    }
}

TEST(StepCommands, SetAppliesTheBoxesAsTheyStand) {
    TestLoop t(4);
    EXPECT_TRUE(SetFrequency(t.part, 0, EntryBox::VCO, "1000.25").written);
    EXPECT_TRUE(SetFrequency(t.part, 0, EntryBox::Fpd, "200").written);
    EXPECT_TRUE(SetFrequency(t.part, 0, EntryBox::Osc, "-10").written);
    const EntryResult letters = SetFrequency(t.part, 0, EntryBox::Osc, "ten");
    EXPECT_TRUE(letters.handled && !letters.written && !letters.Refused());
    EXPECT_TRUE(SetFrequency(t.part, 0, EntryBox::Fpd, "0").Refused());
    t.part.ID("");
    EXPECT_FALSE(SetFrequency(t.part, 0, EntryBox::Osc, "20").handled);
    EXPECT_EQ(t.Loop().XtalFrequency(), -10);
    EXPECT_EQ(t.Counters(), "10002/50/2/4");
}

TEST(StepCommands, ThreeLoopsAreApart) {
    TestLoop t(4);
    for (const std::string name : {"A", "B"}) {
        t.Register("REG" + name);
        t.part.AddCounter("N" + name, "REG" + name, 0, 16, false);
        t.part.AddCounter("R" + name, "REG" + name, 16, 8, false);
        t.part.AddPLL(name, "N" + name, "R" + name);
        t.part.PLLs().At(name).XtalFrequency(10);
        t.Do("R" + name + "=10 N" + name + "=500");
    }
    RunStep(t.part, 2, StepCommand::IncN, "1000");
    Enter(t.part, 1, EntryBox::RCounter, "20", true);
    EXPECT_EQ(t.Counters(), "0/100/0/4");
    EXPECT_EQ(t.part.PLLs().At("A").VCOFrequency(), 250);
    EXPECT_EQ(t.part.PLLs().At("B").VCOFrequency(), 501);
}

TEST(Spinners, StepTheirFieldTheirWay) {
    struct Case {
        PLLSpinner spinner;
        SpinButton button;
        double r;
        const char* counters;
        const char* text = "";
    };
    using enum SpinButton;
    const Case cases[] = {
        // Starting at N 1000 and 3/4.
        {PLLSpinner::RCounter, Up, 100, "1000/101/3/4"},
        {PLLSpinner::RCounter, Down, 100, "1000/99/3/4"},
        {PLLSpinner::Fpd, Up, 100, "1000/99/3/4"},
        {PLLSpinner::Fpd, Down, 1, "1000/2/3/4"},
        {PLLSpinner::Fpd, Up, 1, "1000/0/3/4"},
        {PLLSpinner::NCounter, Up, 100, "1001/100/3/4"},
        {PLLSpinner::NCounter, Down, 100, "999/100/3/4"},
        {PLLSpinner::FractNum, Up, 100, "1000/100/4/4", "4"},
        {PLLSpinner::FractNum, Down, 100, "1000/100/2/4", "2"},
        {PLLSpinner::FractDen, Up, 100, "1000/100/3/5", "5"},
        {PLLSpinner::FractDen, Down, 100, "1000/100/3/3", "3"},
    };
    for (const Case& c : cases) {
        TestLoop t(4, 10, c.r);
        t.Do("n=1000.75");
        const SpinResult result = Spin(t.part, 0, c.spinner, c.button, GeneralText(t.Loop().PDFrequency()));
        EXPECT_TRUE(result.handled && !result.Refused()) << c.counters << result.refusal;
        EXPECT_EQ(t.Counters(), c.counters);
        EXPECT_EQ(result.text.value_or(""), c.text) << c.counters;
    }
    TestLoop integer;
    const std::string before = integer.Counters();
    EXPECT_FALSE(Spin(integer.part, 0, PLLSpinner::FractNum, Up, "100").handled);
    EXPECT_FALSE(Spin(integer.part, 1, PLLSpinner::RCounter, Up, "100").handled);
    EXPECT_TRUE(Spin(integer.part, 0, PLLSpinner::NCounter, Up, "1,000").Refused());
    integer.part.ID("");
    EXPECT_FALSE(Spin(integer.part, 0, PLLSpinner::RCounter, Up, "100").handled);
    EXPECT_EQ(integer.Counters(), before);
}

TEST(Spinners, LabelsToggleTheirField) {
    TestLoop t;
    t.Fields("POL 48+1 texts=-,+; ICP 49+2 texts=1,2,4,8");
    std::string shown;
    for (const char* field : {"POL", "POL", "ICP", "ICP", "ICP", "ICP"}) {
        EXPECT_TRUE(ToggleLabel(t.part, field).handled);
        shown += t.Field(field).Text() + ' ';
    }
    EXPECT_EQ(shown, "+ - 2 4 8 1 ");
    EXPECT_FALSE(ToggleLabel(t.part, "").handled);
    EXPECT_TRUE(ToggleLabel(t.part, "GONE").Refused());
}

}   // namespace
