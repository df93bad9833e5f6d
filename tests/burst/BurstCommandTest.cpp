#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "burst/cBurst.h"
#include "support/TestPart.h"

namespace {

/// How the device is set, a letter for each: s SBI, i inverted clock, h LE high, T the trigger pin on at line 3, P
/// another pin on at line 4, C the serial lines moved to control lines, H register pairs.
void Prepare(cPart& part, const std::string& letters) {
    const auto has = [&](char letter) { return letters.find(letter) != std::string::npos; };
    part.SBIEnable(has('s'));
    part.InvertClock(has('i'));
    part.LEModeHigh(has('h'));
    part.HighByte(has('H'));
    if (has('C')) {
        part.ClockPosition(256);
        part.LEPosition(2048);
    }
    part.AddProgramPin("Trigger", 3);
    part.AddProgramPin("CE", 4);
    part.OutputPinValue(static_cast<std::int16_t>((has('T') ? 8 : 0) | (has('P') ? 16 : 0)));
}

TEST(BurstCommand, WordsOfEachKindAndFraming) {
    const struct {
        const char* setting;
        std::int16_t kind;
        const char* name;
        std::vector<int> words;   // Clock 1, Data 2, LE 4, three bits, every register 5.
    } cases[] = {
        {"", 0, "B", {2, 3, 0, 1, 2, 3, 0, 4, 0}},
        {"h", 0, "B", {2, 3, 0, 1, 2, 3, 0, 4, 4}},
        {"i", 0, "B", {3, 2, 1, 0, 3, 2, 0, 4, 0}},
        {"s", 0, "B", {1, 0, 3, 2, 1, 0, 0, 1, 0, 3, 2, 1, 0, 3, 2, 0, 1, 0}},
        {"s", 4, "ADR", {3, 2, 3, 2, 1, 0, 3, 2, 0, 1, 0}},
        {"s", 5, "ADR", {3, 7}},
        {"", 2, "0", {0}},
        {"", 0, "HIGH", {2, 3, 0, 1, 2, 3, 0, 0, 0}},
        {"h", 0, "HIGH", {2, 3, 0, 1, 2, 3, 0, 0, 0}},
        {"P", 0, "B", {18, 19, 16, 17, 18, 19, 16, 20, 16}},
        {"T", 0, "B", {2, 3, 0, 1, 2, 3, 0, 12, 0}},
        {"iTP", 0, "B", {19, 18, 17, 16, 19, 18, 16, 28, 16}},
        {"T", 0, "HIGH", {2, 3, 0, 1, 2, 3, 0, 8, 0}},
        {"sTP", 5, "", {19, 31}},
        {"TP", 1, "", {16, 0}},
        {"hTP", 1, "", {20, 0}},
        {"sTP", 1, "", {23, 0}},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(std::string(test.setting) + ", kind " + std::to_string(test.kind) + ", " + test.name);
        TestPart device(3);
        device.Register("A", 5);
        device.Register("B", 5);
        device.Half("HIGH", 5, false, "B");
        Prepare(device.part, test.setting);
        device.part.AddBurstCommand(test.name, test.kind);
        const cBurst& built = device.part.BurstCmds().At(1);
        EXPECT_EQ(std::vector<int>(built.BurstPattern().begin(), built.BurstPattern().end()), test.words);
        EXPECT_EQ(built.OutputPinValue(), device.part.OutputPinValue());
        built.Execute();
        const std::size_t played = test.kind == 2 ? 0 : test.kind == 1 ? 1 : test.words.size();
        EXPECT_EQ(device.port.Words(), std::vector<int>(test.words.begin(), test.words.begin() + played));
        EXPECT_EQ(built.PortWrites(), 2 * played);
    }
}

// Every bit up to the 53 that a register holds arrives, and the word counts are 2N+3, 4N+6 and 2N+5.
TEST(BurstCommand, AllBitsOfWideValuesAreShifted) {
    for (const int length : {1, 24, 32, 53}) {
        const struct {
            const char* setting;
            std::int16_t kind;
            int before;   // Words before the value's bits; three stand behind them.
        } forms[] = {{"", 0, 0}, {"i", 0, 0}, {"s", 4, 2}, {"s", 0, 2 * length + 3}};
        for (const auto& form : forms) {
            for (const double v : {0.0, 5.5, 2147483647.0, 2147483648.0, 4294967297.0, 9007199254740991.0}) {
                TestPart device(length);
                device.Register("A", v);
                Prepare(device.part, form.setting);
                device.part.AddBurstCommand("A", form.kind);
                const auto words = device.part.BurstCmds().At(1).BurstPattern();
                ASSERT_EQ(words.size(), static_cast<std::size_t>(form.before + 2 * length + 3));
                double sent = 0;
                for (int i = form.before; i < form.before + 2 * length; i += 2) {
                    sent = 2 * sent + ((words[static_cast<std::size_t>(i)] & 2) != 0 ? 1 : 0);
                }
                EXPECT_EQ(sent, std::fmod(std::trunc(v), std::ldexp(1, length))) << length << " bits of " << v;
            }
        }
    }
}

TEST(BurstCommand, PlaysTheWritesOfTheSameLoadAtOnce) {
    void (*const load)(cPart&) = [](cPart& part) {
        std::string name = "B";
        part.LoadRegister(name);
    };
    void (*const stop)(cPart&) = [](cPart& part) { part.StopSBILoad(); };
    void (*const pins)(cPart&) = [](cPart& part) { part.UpdateOutputPins(); };
    const struct {
        const char* setting;
        std::vector<std::pair<std::string, std::int16_t>> commands;
        void (*atOnce)(cPart&);
    } cases[] = {{"", {{"B", 0}}, load},   {"i", {{"B", 0}}, load},   {"P", {{"B", 0}}, load},
                 {"T", {{"B", 0}}, load},  {"iTP", {{"B", 0}}, load}, {"CTP", {{"B", 0}}, load},
                 {"iC", {{"B", 0}}, load}, {"sP", {{"", 5}}, stop},   {"HP", {{"HIGH", 0}, {"B", 0}}, load},
                 {"P", {{"", 1}}, pins},   {"sP", {{"", 1}}, pins},   {"iHC", {{"HIGH", 0}, {"B", 0}}, load}};
    for (const auto& test : cases) {
        SCOPED_TRACE(std::string(test.setting) + ", kind " + std::to_string(test.commands[0].second));
        TestPart device(24);
        device.Half("HIGH", 0xA5C3E1, false, "B");
        device.Half("B", 0x9E3779, true, "HIGH");
        Prepare(device.part, test.setting);
        test.atOnce(device.part);
        const std::vector<PortWrite> wanted = device.port.Writes();
        device.port.Clear();
        for (const auto& [name, kind] : test.commands) {
            device.part.AddBurstCommand(name, kind);
        }
        device.part.RunBurstCommands();
        EXPECT_FALSE(wanted.empty());
        EXPECT_EQ(device.port.Writes(), wanted);
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
    cBurst delay(device.part);
    delay.Command(BurstKind::Delay);
    delay.Register(std::numeric_limits<std::int32_t>::min());
    delay.Execute();   // No pass.
    delay.Register(20'000'000);
    const auto start = std::chrono::steady_clock::now();
    delay.Execute();
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(1)) << "20 passes in a nanosecond";
    delay.Register(3e9);
    EXPECT_EQ(delay.Delay(), 20'000'000) << "a count beyond 32 bits changes nothing";
}

}   // namespace
