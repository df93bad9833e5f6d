#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "ports/Connector.h"
#include "ports/Port.h"

struct PortWrite {
    std::uint16_t port = 0;
    std::uint8_t value = 0;
    bool operator==(const PortWrite&) const = default;
};

inline void PrintTo(const PortWrite& write, std::ostream* out) {
    *out << std::hex << "0x" << write.port << " := 0x" << int{write.value} << std::dec;
}

/// A port that keeps every write, in order.
class FakePort final : public Port {
public:
    bool OpenTVicPort() override { return true; }
    void WritePort(std::uint16_t port, std::uint8_t value) override { writes_.push_back({port, value}); }
    void CloseTVicPort() override {}
    [[nodiscard]] PortStatus Status() const override { return {true, "fake", "A port of the tests.", 0}; }

    [[nodiscard]] const std::vector<PortWrite>& Writes() const noexcept { return writes_; }
    void Clear() noexcept { writes_.clear(); }

    /// The port words that were put out. Fails the test where a word isn't a write to the data register followed
    /// by one to the control register, or carries bits above the four control lines.
    [[nodiscard]] std::vector<int> Words(std::uint16_t address = 0x378) const {
        std::vector<int> words;
        EXPECT_EQ(writes_.size() % 2, 0U) << "half a word was written";
        for (std::size_t i = 0; i + 1 < writes_.size(); i += 2) {
            EXPECT_EQ(writes_[i].port, address) << "write " << i;
            EXPECT_EQ(writes_[i + 1].port, static_cast<std::uint16_t>(address + kControlOffset)) << "write " << i + 1;
            EXPECT_EQ(writes_[i + 1].value & 0xF0, 0) << "write " << i + 1;
            words.push_back((writes_[i + 1].value ^ kInvertedControls) << 8 | writes_[i].value);
        }
        return words;
    }

    /// What was put out since the last call.
    std::vector<int> TakeWords(std::uint16_t address = 0x378) {
        std::vector<int> words = Words(address);
        Clear();
        return words;
    }

private:
    std::vector<PortWrite> writes_;
};
