#include <chrono>
#include <cmath>
#include <limits>

#include "burst/cBurst.h"
#include "support/Cases.h"
#include "support/TestPart.h"

namespace {

TEST(BurstCommand, WordsOfEachKindAndFraming) {
    // The setting, the command and its register; the words of three bits with Clock 1, Data 2, LE 4 and a 5 in it.
    for (const auto& [setting, kind, name, words] : Cases<const char*, std::int16_t, const char*, std::vector<int>>{
             {"", 0, "B", {2, 3, 0, 1, 2, 3, 0, 4, 0}},
             {"lehigh", 0, "B", {2, 3, 0, 1, 2, 3, 0, 4, 4}},
             {"inverted", 0, "B", {3, 2, 1, 0, 3, 2, 0, 4, 0}},
             {"sbi", 0, "B", {1, 0, 3, 2, 1, 0, 0, 1, 0, 3, 2, 1, 0, 3, 2, 0, 1, 0}},
             {"sbi", 4, "ADR", {3, 2, 3, 2, 1, 0, 3, 2, 0, 1, 0}},
             {"sbi", 5, "ADR", {3, 7}},
             {"", 2, "0", {0}},
             {"", 0, "HIGH", {2, 3, 0, 1, 2, 3, 0, 0, 0}},
             {"lehigh", 0, "HIGH", {2, 3, 0, 1, 2, 3, 0, 0, 0}},
             {"CE=4", 0, "B", {18, 19, 16, 17, 18, 19, 16, 20, 16}},
             {"Trigger=3", 0, "B", {2, 3, 0, 1, 2, 3, 0, 12, 0}},
             {"inverted Trigger=3 CE=4", 0, "B", {19, 18, 17, 16, 19, 18, 16, 28, 16}},
             {"clock=256 le=2048", 0, "B", {2, 258, 0, 256, 2, 258, 0, 2048, 0}},
             {"inverted clock=256 le=2048 pairs Trigger=3 CE=4", 0, "B", {274, 18, 272, 16, 274, 18, 16, 2072, 16}},
             {"Trigger=3", 0, "HIGH", {2, 3, 0, 1, 2, 3, 0, 8, 0}},
             {"sbi Trigger=3 CE=4", 5, "", {19, 31}},
             {"Trigger=3 CE=4", 1, "", {16, 0}},
             {"lehigh Trigger=3 CE=4", 1, "", {20, 0}},
             {"sbi Trigger=3 CE=4", 1, "", {23, 0}}}) {
        SCOPED_TRACE(std::string(setting) + ", kind " + std::to_string(kind) + ", " + name);
        TestPart device(3);
        device.Register("A", 5);
        device.Register("B", 5);
        device.Half("HIGH", 5, false, "B");
        device.part.AddProgramPin("Trigger", 3);   // Off, where the setting doesn't switch it on.
        device.Wire(setting);
        device.part.AddBurstCommand(name, kind);
        const cBurst& built = device.part.BurstCmds().At(1);
        EXPECT_EQ(std::vector<int>(built.BurstPattern().begin(), built.BurstPattern().end()), words);
        EXPECT_EQ(built.OutputPinValue(), device.part.OutputPinValue());
        built.Execute();
        const std::size_t played = kind == 2 ? 0 : kind == 1 ? 1 : words.size();
        EXPECT_EQ(device.port.Words(), std::vector<int>(words.begin(), words.begin() + played));
        EXPECT_EQ(built.PortWrites(), 2 * played);
    }
}

// Every bit up to the 53 that a register holds arrives, and the word counts are 2N+3, 4N+6 and 2N+5.
TEST(BurstCommand, AllBitsOfWideValuesAreShifted) {
    for (const int length : {1, 24, 32, 53}) {
        // The last: words before the value's bits. Three stand behind them.
        for (const auto& [setting, kind, before] : Cases<const char*, std::int16_t, int>{
                 {"", 0, 0}, {"inverted", 0, 0}, {"sbi", 4, 2}, {"sbi", 0, 2 * length + 3}}) {
            for (const double v : {0.0, 5.5, 2147483647.0, 2147483648.0, 4294967297.0, 9007199254740991.0}) {
                TestPart device(length);
                device.Register("A", v);
                device.Wire(setting);
                device.part.AddBurstCommand("A", kind);
                const auto words = device.part.BurstCmds().At(1).BurstPattern();
                ASSERT_EQ(words.size(), static_cast<std::size_t>(before + 2 * length + 3));
                double sent = 0;
                for (int i = before; i < before + 2 * length; i += 2) {
                    sent = 2 * sent + ((words[static_cast<std::size_t>(i)] & 2) != 0 ? 1 : 0);
                }
                EXPECT_EQ(sent, std::fmod(std::trunc(v), std::ldexp(1, length))) << length << " bits of " << v;
            }
        }
    }
}

TEST(BurstCommand, KeepsItsWordsWhenTheWiringChanges) {
    TestPart device(3);
    device.Register("A", 5);
    device.part.AddBurstCommand("A", BurstKind::Load);
    device.part.AddBurstCommand("7", BurstKind::Delay);
    const cBurst& load = device.part.BurstCmds().At(1);
    EXPECT_EQ(load.Pattern(), "clk010101000\r\ndat110011000\r\nle  000000010");
    EXPECT_EQ(device.part.BurstCmds().At(2).Pattern(), "Delay of 7");
    device.part.ClockPosition(2);
    device.part.DataPosition(0);
    device.part.PortAddress(0x278);
    device.part.Registers().At("A").Value(2);
    load.Execute();
    EXPECT_EQ(device.port.Words(0x278), (std::vector<int>{2, 3, 0, 1, 2, 3, 0, 4, 0})) << "only the address is new";
    EXPECT_EQ(load.Pattern(), "clk110011000\r\ndat000000000\r\nle  000000010") << "the picture follows the wiring";
}

TEST(BurstCommand, DelayLoopIsNotOptimisedAway) {
    TestPart device(3);
    cBurst delay(device.part, BurstKind::Delay, "", std::numeric_limits<std::int32_t>::min());
    delay.Execute();   // No pass.
    delay.Register(20'000'000);
    const auto start = std::chrono::steady_clock::now();
    delay.Execute();
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1)) << "20 passes in a nanosecond";
    delay.Register(3e9);
    EXPECT_EQ(delay.Delay(), 20'000'000) << "a count beyond 32 bits changes nothing";
}

}   // namespace
