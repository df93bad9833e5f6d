#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/Connector.h"
#include "platform/Port.h"

/// The end of the cable: keeps the writes since the last look, and a sum over all of them to compare a log with.
class RobotPort final : public Port {
public:
    struct Write {
        std::uint16_t port;
        std::uint8_t value;
    };

    bool OpenTVicPort() override {
        count_ = sum_ = 0;
        return true;
    }
    void WritePort(std::uint16_t port, std::uint8_t value) override {
        writes_.push_back({port, value});
        ++count_;
        sum_ = Added(sum_, port, value);
    }
    void CloseTVicPort() override {}
    [[nodiscard]] PortStatus Status() const override { return {true, "robot", "A port that is watched.", 0}; }

    static std::uint64_t Added(std::uint64_t sum, unsigned port, unsigned value) {
        constexpr std::uint64_t kPrime = 1099511628211U;
        return (sum * kPrime) ^ (port << 8U | value);
    }
    [[nodiscard]] std::uint64_t Count() const { return count_; }
    [[nodiscard]] std::uint64_t Sum() const { return sum_; }
    std::vector<Write> Take() { return std::exchange(writes_, {}); }

private:
    std::vector<Write> writes_;
    std::uint64_t count_ = 0;
    std::uint64_t sum_ = 0;
};

/// The wiring that a device has, as its serial input sees it.
struct RobotWiring {
    unsigned clock = 0;
    unsigned data = 0;
    unsigned le = 0;
    int bits = 0;
    bool inverted = false;
};

/// A shift register on the cable: the numbers that each rise of LE latches.
class RobotReceiver {
public:
    explicit RobotReceiver(const RobotWiring& wiring) : wiring_(wiring) {}

    void Word(unsigned word) {
        const bool edge =
            wiring_.inverted ? (last_ & ~word & wiring_.clock) != 0 : (word & ~last_ & wiring_.clock) != 0;
        if (edge) {
            shifted_ = shifted_ << 1U | ((word & wiring_.data) != 0 ? 1U : 0U);
        }
        if ((word & ~last_ & wiring_.le) != 0) {
            const std::uint64_t mask = (std::uint64_t{1} << static_cast<unsigned>(wiring_.bits)) - 1;
            latched_.push_back(shifted_ & mask);
        }
        last_ = word;
    }
    [[nodiscard]] const std::vector<std::uint64_t>& Latched() const { return latched_; }

private:
    RobotWiring wiring_;
    unsigned last_ = 0;
    std::uint64_t shifted_ = 0;
    std::vector<std::uint64_t> latched_;
};
