#include <functional>
#include <optional>
#include <stdexcept>

#include "burst/BurstLines.h"
#include "burst/BurstText.h"
#include "burst/cBurst.h"
#include "core/DeviceDisplay.h"
#include "core/Errors.h"
#include "machine/EventPump.h"
#include "support/Cases.h"
#include "support/TestPart.h"

namespace {

/// A screen and its user: `user` acts each time that events are handled, told how many passes there were.
class Bench final : public DeviceDisplay, public EventPump {
public:
    explicit Bench(cPart& part) {
        part.UseDisplay(*this);
        part.UseEventPump(*this);
    }
    void ShowBurst(bool /*vectors*/) override { ++redraws; }
    void ShowBurstRunning(bool running) override { story += running ? "run " : "ready"; }
    void ShowBurstProgress(std::uint64_t passes, std::uint64_t writes) override {
        story += std::to_string(passes) + ":" + std::to_string(writes) + " ";
        passed = passes;
    }
    [[nodiscard]] bool BurstLoops() const override { return loops; }
    void DoEvents() override { user(passed); }

    std::function<void(std::uint64_t)> user;
    std::string story;
    std::uint64_t passed = 0;
    int redraws = 0;
    bool loops = false;
};

TEST(BurstList, EditsKeepTheOrderThatIsAskedFor) {
    const Cases<void (*)(cPart&), const char*> cases = {
        {[](cPart& part) { part.AddBurstCommand("9", 2, std::int16_t{1}); }, "9123"},
        {[](cPart& part) { part.AddBurstCommand("9", 2, std::int16_t{3}); }, "1293"},
        {[](cPart& part) { part.ChangeBurstCommand(2, "9", 2); }, "193"},
        {[](cPart& part) { part.DeleteBurstCommand(2); }, "13"},
        {[](cPart& part) { part.DeleteBurstCommand(0); }, "23"},
        {[](cPart& part) { part.DeleteBurstCommand(300); }, "12"},
        {[](cPart& part) {
             part.DeleteBurstCommands();
             part.DeleteBurstCommand(1);
         },
         ""},
        {[](cPart& part) { EditBurstList(part, BurstEdit::Append, 1, "9", 2); }, "1239"},
        {[](cPart& part) { EditBurstList(part, BurstEdit::Insert, 2, "9", 2); }, "1923"},
        {[](cPart& part) { EditBurstList(part, BurstEdit::Overwrite, 1, "9", 2); }, "923"}};
    for (const auto& [edit, expected] : cases) {
        TestPart device(3);
        for (const char* delay : {"1", "2", "3"}) {
            device.part.AddBurstCommand(delay, BurstKind::Delay);
        }
        edit(device.part);
        std::string list;
        for (const cBurst& command : device.part.BurstCmds()) {
            list += std::to_string(command.Delay());
        }
        EXPECT_EQ(list, expected);
    }
}

TEST(BurstList, DelayTextIsAWholeNumber) {
    const std::string endless(1000000, '7');
    const Cases<std::string, std::optional<std::int32_t>> cases = {
        {"1000000", 1000000}, {" 7 ", 7},   {"1e3", 1000}, {"&H10", 16}, {"2147483647", 2147483647},
        {"-1", -1},           {"", {}},     {"abc", {}},   {"10.5", {}}, {"2147483648", {}},
        {"1,5", {}},          {"12 3", {}}, {endless, {}}};
    for (const auto& [text, passes] : cases) {
        SCOPED_TRACE(text.substr(0, 20));
        TestPart device(3);
        device.part.AddBurstCommand("3", BurstKind::Delay);
        std::string error;
        try {
            device.part.ChangeBurstCommand(1, text, BurstKind::Delay);
        } catch (const ConversionError& refused) {
            error = refused.what();
        }
        const cBurst& command = device.part.BurstCmds().At(1);
        EXPECT_EQ(command.Delay(), passes.value_or(3));
        EXPECT_EQ(command.Description(), "Delay of " + (passes ? text : "3"));
        EXPECT_EQ(error.empty(), passes.has_value());
        EXPECT_LT(error.size(), 200U);
    }
}

TEST(BurstList, WhatCantBeBuiltLeavesTheListAlone) {
    TestPart device(3);
    device.part.AddBurstCommand("1", BurstKind::Delay);
    EXPECT_THROW(device.part.AddBurstCommand("", BurstKind::StartSBI), LookupError) << "no register";
    device.Register("A", 5);
    EXPECT_THROW(device.part.AddBurstCommand("B", BurstKind::Load), LookupError);
    EXPECT_THROW(device.part.AddBurstCommand("1.5", BurstKind::Delay), ConversionError);
    EXPECT_THROW(device.part.ChangeBurstCommand(1, "B", BurstKind::Load), LookupError);
    EXPECT_THROW(device.part.ChangeBurstCommand(2, "A", BurstKind::Load), LookupError);
    EXPECT_THROW(device.part.AddBurstCommand("A", BurstKind::Load, std::int16_t{2}), LookupError);
    EXPECT_THROW(device.part.AddBurstCommand("A", 3), RefusedError);
    EXPECT_EQ(BurstText(device.part, false), "Delay of 1\r\n");
    EXPECT_EQ(device.part.BurstCmds().At(1).Command(), BurstKind::Delay);
}

TEST(BurstList, OverwrittenAndRestoredCommands) {
    TestPart device(3);
    cRegister& low = device.Half("LOW", 5, true, "HIGH");
    device.Half("HIGH", 5, false, "LOW");
    device.part.AddProgramPin("CE", 5);
    device.part.AddBurstCommand("1", BurstKind::Delay);
    const cBurst& command = device.part.BurstCmds().At(1);
    device.part.ChangeBurstCommand(1, "HIGH", BurstKind::Load);
    EXPECT_EQ(command.BurstPattern()[7], 0) << "the high part doesn't latch";
    device.part.ChangeBurstCommand(1, "LOW", BurstKind::Load);
    EXPECT_EQ(command.BurstPattern()[7], 4) << "the low part does";
    EXPECT_EQ(command.Description(), "Load LOW = 101; CE= False");

    low.Value(2);
    Bench bench(device.part);
    device.part.RestoreBurstCommand(7);
    EXPECT_EQ(bench.redraws, 1);
    EXPECT_EQ(low.Value(), 2);
    device.part.RestoreBurstCommand(1);
    EXPECT_EQ(low.Value(), 5);

    device.part.PrgmPins().At("CE").Enabled(true);
    device.part.ChangeBurstCommand(1, "", BurstKind::Pins);
    EXPECT_EQ(command.Description(), "Change Pin State; CE= True");
    EXPECT_EQ(command.RegisterName(), "") << "nothing of the old kind is left";
    EXPECT_TRUE(device.port.Writes().empty());
}

TEST(BurstRun, EndsAsTheUserAsks) {
    using User = void (*)(cPart&, Bench&, bool firstPass);
    // Whether it loops, what the user does; passes and writes, of a stop command and a delay four in each pass.
    const Cases<const char*, bool, User, const char*> cases = {
        {"single", false, [](cPart&, Bench&, bool) {}, "run 1:4 ready"},
        {"stopped", true, [](cPart& part, Bench&, bool first) { first ? void() : part.StopBurstCommands(); },
         "run 1:4 2:8 ready"},
        {"switched to single", true, [](cPart&, Bench& bench, bool first) { bench.loops = first; },
         "run 1:4 2:8 3:12 ready"},
        {"another run", false, [](cPart& part, Bench&, bool) { part.RunBurstCommands(); }, "run 1:4 ready"},
        {"device changed", true,
         [](cPart& part, Bench&, bool first) { first ? part.ClearPLL() : part.StopBurstCommands(); },
         "run 1:4 2:4 ready"},
        {"edited", true,
         [](cPart& part, Bench&, bool first) {
             EditBurstList(part, BurstEdit::Append, 0, "", BurstKind::StopSBI);   // The page does nothing.
             first ? part.AddBurstCommand("", BurstKind::StopSBI) : part.StopBurstCommands();
         },
         "run 1:4 2:12 ready"},
        {"failed", true, [](cPart&, Bench&, bool) { throw std::runtime_error("broken"); }, "run 1:4 ready"}};
    for (const auto& [name, loops, user, story] : cases) {
        SCOPED_TRACE(name);
        TestPart device(3);
        Bench bench(device.part);
        device.part.RunBurstCommands();
        EXPECT_EQ(bench.story, "") << "an empty list doesn't run";
        device.part.AddBurstCommand("", BurstKind::StopSBI);
        device.part.AddBurstCommand("0", BurstKind::Delay);
        bench.loops = loops;
        bench.user = [&, act = user](std::uint64_t pass) {
            EXPECT_TRUE(device.part.BurstRunning());
            act(device.part, bench, pass == 1);
        };
        device.part.StopBurstCommands();   // Without a run it leaves nothing behind.
        try {
            device.part.RunBurstCommands();
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "broken");
        }
        EXPECT_EQ(bench.story, story);
        EXPECT_FALSE(device.part.BurstRunning());
        bench.user = [&](std::uint64_t) { device.part.StopBurstCommands(); };
        device.part.AddBurstCommand("0", BurstKind::Delay);
        device.part.RunBurstCommands();
        EXPECT_EQ(bench.story.find(story + std::string("run 1:")), 0U) << "the next run runs";
    }
}

TEST(BurstList, HoldsAsManyCommandsAsAPositionCanCount) {
    TestPart device(24);
    Bench bench(device.part);
    device.Register("A", 0x9E3779);
    for (int i = 0; i < kMostBurstCommands; ++i) {
        device.part.AddBurstCommand("A", BurstKind::Load);
    }
    EXPECT_THROW(device.part.AddBurstCommand("A", BurstKind::Load), RefusedError);
    EXPECT_EQ(bench.redraws, 0) << "adding draws nothing";
    const std::string line = "Load A = 100111100011011101111001\r\n";
    EXPECT_EQ(BurstText(device.part, false).size(), line.size() * static_cast<std::size_t>(kMostBurstCommands));
    device.part.DeleteBurstCommand(kMostBurstCommands);
    EXPECT_EQ(bench.redraws, 1);
}

TEST(BurstLines, AClickSelectsTheLineUnderTheCaret) {
    const std::string crlf = "Load A = 101\r\nDelay of 5\r\n";
    const std::string lf = "Load A = 101\nDelay of 5\n";
    for (const auto& [text, caret, number, selection] :
         Cases<std::string, std::size_t, int, std::optional<BurstLine::Selection>>{{crlf, 0, 1, {{0, 12}}},
                                                                                   {crlf, 12, 1, {{0, 12}}},
                                                                                   {crlf, 14, 2, {{14, 10}}},
                                                                                   {crlf, 24, 2, {{14, 10}}},
                                                                                   {crlf, 26, 3, {}},
                                                                                   {crlf, 999, 3, {}},
                                                                                   {lf, 12, 1, {{0, 12}}},
                                                                                   {lf, 13, 2, {{13, 10}}},
                                                                                   {lf, 23, 2, {{13, 10}}},
                                                                                   {lf, 24, 3, {}}}) {
        const auto line = BurstLineAt(text, caret);
        ASSERT_TRUE(line);
        EXPECT_EQ(line->number, number) << "caret at " << caret;
        EXPECT_EQ(line->selection, selection) << "caret at " << caret;
    }
    EXPECT_FALSE(BurstLineAt("", 0));
    EXPECT_EQ(BurstEditFor(4, 2, 2, true), BurstEdit::Insert);
    EXPECT_EQ(BurstEditFor(4, 1, 2, false), BurstEdit::Overwrite);
    EXPECT_EQ(BurstEditFor(3, 1, 2, false), BurstEdit::Append);
    EXPECT_EQ(BurstEditFor(9, 3, 2, true), BurstEdit::Append) << "below the last command";
    EXPECT_EQ(BurstEditFor(9, 0, 2, false), BurstEdit::Append) << "no line was ever clicked";
}

}   // namespace
