#include "ports/FaultPort.h"

#include <utility>

#include "files/Hash.h"
#include "ports/Connector.h"

// Which faults there are, how often one begins, and how long it lasts.
enum class Fault { None, Lost, Failing, Slow, Stuck, Gone };

struct FaultRate {
    Fault fault;
    std::uint64_t share;   ///< Of ten thousand writes.
};

static constexpr FaultRate kRates[] = {
    {Fault::Lost, 40}, {Fault::Failing, 40}, {Fault::Slow, 10}, {Fault::Stuck, 5}, {Fault::Gone, 2},
};
static constexpr std::uint64_t kAllWrites = 10'000;
static constexpr std::uint64_t kShortestStuck = 20, kLongestStuck = 200;       // writes
static constexpr std::uint64_t kShortestGone = 50, kLongestGone = 500;         // writes
static constexpr std::uint64_t kShortestDelay = 1000, kLongestDelay = 10000;   // microseconds

// The output function of SplitMix64: numbers that follow on each other come out without any likeness.
static std::uint64_t Mix(std::uint64_t number) {
    number = (number ^ number >> 30) * 0xBF58476D1CE4E5B9;
    number = (number ^ number >> 27) * 0x94D049BB133111EB;
    return number ^ number >> 31;
}

static std::uint64_t Between(std::uint64_t dice, std::uint64_t least, std::uint64_t most) {
    return least + dice % (most - least + 1);
}

static Fault Choose(std::uint64_t dice) {
    std::uint64_t place = dice % kAllWrites;
    for (const auto& [fault, share] : kRates) {
        if (place < share) {
            return fault;
        }
        place -= share;
    }
    return Fault::None;
}

FaultPort::FaultPort(std::unique_ptr<Port> inner, std::string seed, PortCalls& calls)
    : inner_(std::move(inner)), seed_(std::move(seed)), calls_(calls), start_(Hash::Of(seed_)) {}

bool FaultPort::OpenTVicPort() {
    writes_ = goneEnd_ = 0;
    stuck_ = {};
    counts_ = {};
    return inner_->OpenTVicPort();
}

void FaultPort::WritePort(std::uint16_t port, std::uint8_t value) {
    if (!MeetsFault()) {
        inner_->WritePort(port, Altered(port, value));
    }
    ++writes_;
}

/// True if the write that comes next doesn't reach the port.
bool FaultPort::MeetsFault() {
    if (IsGone()) {
        ++counts_.missed;
        return true;
    }
    constexpr std::uint64_t kStep = 0x9E3779B97F4A7C15;
    const std::uint64_t choice = Mix(start_ + writes_ * kStep);
    const std::uint64_t dice = Mix(choice);
    switch (Choose(choice)) {
        case Fault::Lost:
            ++counts_.lost;
            return true;
        case Fault::Failing:
            ++counts_.failing;
            return true;
        case Fault::Gone:
            ++counts_.gone;
            ++counts_.missed;
            goneEnd_ = writes_ + Between(dice, kShortestGone, kLongestGone);
            return true;
        case Fault::Slow:
            ++counts_.slow;
            calls_.Sleep(std::chrono::microseconds(Between(dice, kShortestDelay, kLongestDelay)));
            return false;
        case Fault::Stuck:
            GetStuck(dice);
            return false;
        case Fault::None:
            break;
    }
    return false;
}

void FaultPort::GetStuck(std::uint64_t dice) {
    if (IsStuck()) {
        return;
    }
    const ConnectorLine& line = kConnector[static_cast<unsigned>(dice >> 32) % kConnector.size()];
    ++counts_.stuck;
    stuck_ = {.end = writes_ + Between(dice, kShortestStuck, kLongestStuck),
              .offset = line.reg,
              .mask = static_cast<std::uint8_t>(1U << line.bit),
              .one = dice >> 63 != 0};
}

std::uint8_t FaultPort::Altered(std::uint16_t port, std::uint8_t value) {
    if (!IsStuck() || port % 4 != stuck_.offset) {
        return value;
    }
    const auto altered = static_cast<std::uint8_t>(stuck_.one ? value | stuck_.mask : value & ~stuck_.mask);
    counts_.altered += altered != value ? 1 : 0;
    return altered;
}

PortStatus FaultPort::Status() const {
    const PortStatus inner = inner_->Status();
    return {.ready = inner.ready && !IsGone(),
            .summary = Summary() + "; " + inner.summary,
            .story = Story() + inner.story,
            .failedWrites = counts_.failing + counts_.missed + inner.failedWrites};
}

std::string FaultPort::Summary() const {
    const auto count = [](std::uint64_t number, const char* what) { return std::to_string(number) + what; };
    return "Faults of seed " + seed_ + ": " + count(counts_.lost, " lost, ") + count(counts_.failing, " failing, ") +
           count(counts_.slow, " slow, ") + count(counts_.stuck, " stuck lines, ") +
           count(counts_.gone, " times gone") + (IsGone() ? " and gone now" : "");
}

std::string FaultPort::Story() const {
    const auto row = [](std::uint64_t number, const std::string& what) {
        return "  " + std::to_string(number) + " " + what + "\n";
    };
    return "The driver \"fault\" lets writes go wrong on purpose; BACKEND in tarnwick.ini names the driver that does "
           "the "
           "rest. Of " +
           std::to_string(writes_) + " writes, with the seed " + seed_ + ":\n" +
           row(counts_.lost, "were lost without a trace") + row(counts_.failing, "failed") +
           row(counts_.slow, "were slow") +
           row(counts_.altered, "came out otherwise, by a line stuck " + std::to_string(counts_.stuck) + " times" +
                                    (IsStuck() ? ", and now" : "")) +
           row(counts_.missed, "failed since the device was gone, " + std::to_string(counts_.gone) + " times" +
                                   (IsGone() ? ", and is now" : ""));
}
