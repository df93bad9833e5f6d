#include <gtest/gtest.h>

#include <bit>
#include <map>

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

struct Run {
    FakePortCalls calls;
    std::vector<std::pair<int, int>> arrived;
    FaultPort port;
    // What became of each write: "." arrived, "L" lost, "F" failed, "S" slow, "A" altered.
    std::string fates;

    explicit Run(const std::string& seed) : port(std::make_unique<Arrivals>(arrived), seed, calls) {}

    void Write(int count) {
        for (int i = 0; i < count; ++i) {
            const std::uint64_t failed = port.Status().failedWrites;
            const std::size_t before = arrived.size(), slept = calls.done.size();
            const std::pair<int, int> sent(i % 2 == 0 ? 0x378 : 0x37A, i * 7 & 0xFF);
            port.WritePort(static_cast<std::uint16_t>(sent.first), static_cast<std::uint8_t>(sent.second));
            fates += port.Status().failedWrites > failed ? 'F'
                     : arrived.size() == before          ? 'L'
                     : arrived.back() != sent            ? 'A'
                     : calls.done.size() > slept         ? 'S'
                                                         : '.';
        }
    }
};

std::ptrdiff_t Count(const std::string& fates, char fate) {
    return std::ranges::count(fates, fate);
}

}   // namespace

TEST(FaultPort, TheSameSeedGivesTheSameFaultsAnywhereAndAgain) {
    std::map<std::string, std::string> fates;
    for (const std::string seed : {"1", "2", "loose cable", ""}) {
        Run first(seed), second(seed);
        first.Write(5000);
        second.Write(5000);
        EXPECT_EQ(first.fates, second.fates) << seed;
        EXPECT_EQ(first.arrived, second.arrived) << seed;
        first.fates.clear();
        first.port.OpenTVicPort();
        first.Write(5000);
        EXPECT_EQ(first.fates, second.fates) << seed << ": opening begins anew";
        for (const auto& [other, otherFates] : fates) {
            EXPECT_NE(second.fates, otherFates) << seed << " and " << other;
        }
        fates[seed] = second.fates;
    }
    GOLDEN
}
