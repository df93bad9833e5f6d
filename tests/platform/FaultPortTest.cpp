#include <gtest/gtest.h>

#include <bit>
#include <map>
#include <utility>

#include "FakePortCalls.h"
#include "platform/FaultPort.h"
#include "platform/PortDrivers.h"

namespace {

// What came through, in order.
class Arrivals final : public Port {
public:
    explicit Arrivals(std::vector<std::pair<int, int>>& writes) : writes_(writes) {}
    bool OpenTVicPort() override { return true; }
    void WritePort(std::uint16_t port, std::uint8_t value) override { writes_.emplace_back(port, value); }
    void CloseTVicPort() override {}
    [[nodiscard]] PortStatus Status() const override { return {true, "inner", "Inner.", 1000}; }

private:
    std::vector<std::pair<int, int>>& writes_;
};

struct Playing {
    FakePortCalls calls;
    std::vector<std::pair<int, int>> arrived;
    FaultPort port;
    // What became of each write: "." arrived, "L" lost, "F" failed, "S" slow, "A" altered.
    std::string fates;

    explicit Playing(const std::string& seed) : port(std::make_unique<Arrivals>(arrived), seed, calls) {}

    void Write(int count) {
        for (int i = 0; i < count; ++i) {
            const std::size_t before = arrived.size();
            const std::size_t slept = calls.done.size();
            const std::pair<int, int> sent(i % 2 == 0 ? 0x378 : 0x37A, i * 7 & 0xFF);
            port.WritePort(static_cast<std::uint16_t>(sent.first), static_cast<std::uint8_t>(sent.second));
            fates += arrived.size() == before    ? (HasFailed() ? 'F' : 'L')
                     : arrived.back() != sent    ? 'A'
                     : calls.done.size() > slept ? 'S'
                                                 : '.';
        }
    }

private:
    bool HasFailed() {
        const std::uint64_t before = std::exchange(failed_, port.Status().failedWrites);
        return failed_ != before;
    }

    std::uint64_t failed_ = port.Status().failedWrites;
};

std::ptrdiff_t Count(const std::string& fates, char fate) {
    return std::ranges::count(fates, fate);
}

}   // namespace

TEST(FaultPort, TheSameSeedGivesTheSameFaultsAnywhereAndAgain) {
    std::map<std::string, std::string> fates;
    for (const std::string seed : {"1", "2", "loose cable", ""}) {
        Playing first(seed), second(seed);
        first.Write(5000);
        second.Write(5000);
        EXPECT_EQ(first.fates, second.fates) << seed;
        EXPECT_EQ(first.arrived, second.arrived) << seed;
        first.port.OpenTVicPort();
        first.arrived.clear();
        first.Write(5000);
        EXPECT_EQ(first.arrived, second.arrived) << seed << ": opening begins anew";
        for (const auto& [other, otherFates] : fates) {
            EXPECT_NE(second.fates, otherFates) << seed << " and " << other;
        }
        fates[seed] = second.fates;
    }
    std::string begin;
    for (std::size_t i = 0; i <= 1413; ++i) {
        if (const char fate = fates["1"][i]; fate == 'L' || fate == 'F') {
            begin += fate + std::to_string(i) + " ";
        }
    }
    EXPECT_EQ(begin, "L232 L323 L441 F493 F528 F580 L598 F724 L825 F867 F891 L929 L935 F1236 L1331 F1380 F1413 ");
    EXPECT_EQ(fates["1"].substr(1413, 337), std::string(336, 'F') + ".") << "the device goes away and comes back";
}

TEST(FaultPort, EachFaultIsAsFrequentAsTheTableSaysAndIsCounted) {
    Playing run("7");
    constexpr int kWrites = 200'000;
    run.Write(kWrites);
    struct {
        char fate;
        std::ptrdiff_t least, most;   // Five deviations round the mean, of the time that the device was there.
    } const shares[] = {{'L', 600, 920}, {'S', 110, 270}, {'A', 1500, 4000}, {'F', 5000, 18000}};
    for (const auto& [fate, least, most] : shares) {
        EXPECT_GE(Count(run.fates, fate), least) << fate;
        EXPECT_LE(Count(run.fates, fate), most) << fate;
    }
    EXPECT_EQ(kWrites - Count(run.fates, 'L') - Count(run.fates, 'F'), std::ssize(run.arrived));
    const PortStatus status = run.port.Status();
    EXPECT_EQ(status.failedWrites, 1000U + static_cast<std::uint64_t>(Count(run.fates, 'F')));
    const std::string lost = std::to_string(Count(run.fates, 'L'));
    EXPECT_EQ(status.summary.find("Faults of seed 7: " + lost + " lost, "), 0U) << status.summary;
    EXPECT_NE(status.summary.find(" gone; inner"), std::string::npos) << status.summary;
    const std::string altered = "  " + std::to_string(Count(run.fates, 'A')) + " came out otherwise";
    EXPECT_NE(status.story.find(altered), std::string::npos) << status.story;
    EXPECT_EQ(status.story.substr(status.story.size() - 6), "Inner.");
}

TEST(FaultPort, AStuckLineIsOneLineThatKeepsItsLevel) {
    Playing run("stuck");
    std::map<std::pair<int, int>, int> stuckLines;   // Register and difference, how often.
    for (int i = 0; i < 100'000; ++i) {
        const std::size_t before = run.arrived.size();
        const int port = i % 2 == 0 ? 0x378 : 0x37A;
        const int sent = (i / 2 % 2 == 0 ? 0xF5 : 0x0A) & (port == 0x378 ? 0xFF : 0x0F);
        run.port.WritePort(static_cast<std::uint16_t>(port), static_cast<std::uint8_t>(sent));
        if (run.arrived.size() > before && run.arrived.back().second != sent) {
            ASSERT_EQ(run.arrived.back().first, port);
            ++stuckLines[{port, run.arrived.back().second ^ sent}];
        }
    }
    EXPECT_EQ(stuckLines.size(), 12U) << "each of the twelve lines gets stuck some time";
    for (const auto& [line, times] : stuckLines) {
        EXPECT_TRUE(std::has_single_bit(static_cast<unsigned>(line.second))) << line.second;
        EXPECT_GE(times, 5) << "a line is stuck for a while";
    }
}

TEST(FaultPort, WrapsAnyDriverButItself) {
    struct {
        PortSettings settings;
        std::string summary;
        std::string message;
    } const cases[] = {
        {{.driver = "fault"}, "; Simulated port", ""},
        {{.driver = "fault", .device = "/dev/none", .backend = "parport"}, "; Parallel port /dev/none: closed", ""},
        {{.driver = "fault", .backend = "rawio"}, "; Direct port access", ""},
        {{.driver = "fault", .backend = "fault"},
         "; Simulated port",
         "BACKEND in tarnwick.ini can't be 'fault' itself; the simulated port is used"},
        {{.driver = "fault", .backend = "prport"},
         "; Simulated port",
         "unknown port driver 'prport' in tarnwick.ini: known are " + KnownDrivers() + "; the simulated port is used"},
    };
    for (const auto& c : cases) {
        const MadePort made = MakePort(c.settings, "/nowhere/");
        const std::string summary = made.port->Status().summary;
        EXPECT_EQ(summary, "Faults of seed 1: 0 lost, 0 failing, 0 slow, 0 stuck lines, 0 times gone" + c.summary);
        EXPECT_EQ(made.message, c.message);
    }
}
