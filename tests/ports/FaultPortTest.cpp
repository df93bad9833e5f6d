#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "FakePortCalls.h"
#include "ports/FaultPort.h"
#include "ports/PortDrivers.h"
#include "support/FakePort.h"

namespace {

struct Playing {
    FakePortCalls calls;
    FakePort* inner = new FakePort;   // Belongs to the port.
    FaultPort port;
    // What became of each write: "." arrived, "L" lost, "F" failed, "S" slow, "A" altered.
    std::string fates;

    explicit Playing(const std::string& seed) : port(std::unique_ptr<Port>(inner), seed, calls) {}

    void Write(int count) {
        for (int i = 0; i < count; ++i) {
            const std::size_t before = inner->Writes().size();
            const std::size_t slept = calls.done.size();
            const std::uint64_t failed = port.Status().failedWrites;
            const PortWrite sent{static_cast<std::uint16_t>(i % 2 == 0 ? 0x378 : 0x37A),
                                 static_cast<std::uint8_t>(i * 7)};
            port.WritePort(sent.port, sent.value);
            fates += inner->Writes().size() == before ? (port.Status().failedWrites != failed ? 'F' : 'L')
                     : inner->Writes().back() != sent ? 'A'
                     : calls.done.size() > slept      ? 'S'
                                                      : '.';
        }
    }
    [[nodiscard]] std::ptrdiff_t Count(char fate) const { return std::ranges::count(fates, fate); }
};

}   // namespace

TEST(FaultPort, TheSameSeedGivesTheSameFaultsAnywhereAndAgain) {
    Playing play("1"), other("loose cable");
    play.Write(2000);
    other.Write(2000);
    EXPECT_NE(play.fates, other.fates);
    std::string begin;
    for (std::size_t i = 0; i <= 1413; ++i) {
        if (const char fate = play.fates[i]; fate == 'L' || fate == 'F') {
            begin += fate + std::to_string(i) + " ";
        }
    }
    EXPECT_EQ(begin, "L232 L323 L441 F493 F528 F580 L598 F724 L825 F867 F891 L929 L935 F1236 L1331 F1380 F1413 ");
    EXPECT_EQ(play.fates.substr(1413, 337), std::string(336, 'F') + ".") << "the device goes away and comes back";
    const std::string first = std::exchange(play.fates, "");
    play.port.OpenTVicPort();
    play.Write(2000);
    EXPECT_EQ(play.fates, first) << "opening begins anew";
}

TEST(FaultPort, EachFaultIsAsFrequentAsTheTableSaysAndIsCounted) {
    Playing play("7");
    constexpr int kWrites = 200'000;
    play.Write(kWrites);
    struct {
        char fate;
        std::ptrdiff_t least, most;   // Five deviations round the mean, of the time that the device was there.
    } const shares[] = {{'L', 600, 920}, {'S', 110, 270}, {'A', 1500, 4000}, {'F', 5000, 18000}};
    for (const auto& [fate, least, most] : shares) {
        EXPECT_GE(play.Count(fate), least) << fate;
        EXPECT_LE(play.Count(fate), most) << fate;
    }
    const PortStatus status = play.port.Status();
    EXPECT_EQ(status.failedWrites, static_cast<std::uint64_t>(play.Count('F')));
    const std::string lost = std::to_string(play.Count('L'));
    EXPECT_EQ(status.summary.find("Faults of seed 7: " + lost + " lost, "), 0U) << status.summary;
    const std::string altered = "  " + std::to_string(play.Count('A')) + " came out otherwise";
    EXPECT_NE(status.story.find(altered), std::string::npos) << status.story;
    EXPECT_TRUE(status.story.ends_with(play.inner->Status().story));
}

TEST(FaultPort, AStuckLineIsOneLineThatKeepsItsLevel) {
    Playing play("stuck");
    std::map<std::pair<int, int>, int> stuckLines;   // Register and difference, how often.
    for (int i = 0; i < 100'000; ++i) {
        const std::size_t before = play.inner->Writes().size();
        const int port = i % 2 == 0 ? 0x378 : 0x37A;
        const int sent = (i / 2 % 2 == 0 ? 0xF5 : 0x0A) & (port == 0x378 ? 0xFF : 0x0F);
        play.port.WritePort(static_cast<std::uint16_t>(port), static_cast<std::uint8_t>(sent));
        if (play.inner->Writes().size() > before && play.inner->Writes().back().value != sent) {
            ASSERT_EQ(play.inner->Writes().back().port, port);
            ++stuckLines[{port, play.inner->Writes().back().value ^ sent}];
        }
    }
    EXPECT_EQ(stuckLines.size(), 12U) << "each of the twelve lines gets stuck some time";
    for (const auto& [line, times] : stuckLines) {
        EXPECT_TRUE(std::has_single_bit(static_cast<unsigned>(line.second))) << line.second;
        EXPECT_GE(times, 5) << "a line is stuck for a while";
    }
}

TEST(FaultPort, WrapsAnyDriverButItself) {
    for (const auto& [backend, inner, message] : std::vector<std::tuple<std::string, std::string, std::string>>{
             {"simulated", "; Simulated port", ""},
             {"parport", "; Parallel port /dev/parport0: closed", ""},
             {"fault", "; Simulated port", "BACKEND in tarnwick.ini can't be 'fault' itself"},
             {"prport", "; Simulated port", "unknown port driver 'prport' in tarnwick.ini"}}) {
        const MadePort made = MakePort({.driver = "fault", .backend = backend}, "/nowhere/");
        const std::string summary = made.port->Status().summary;
        EXPECT_TRUE(summary.starts_with("Faults of seed 1: ") && summary.ends_with(inner)) << summary;
        EXPECT_TRUE(made.message.starts_with(message) && made.message.empty() == message.empty()) << made.message;
    }
}
