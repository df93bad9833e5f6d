#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// One of the twelve output lines of a parallel port: where it stands in the port's registers, and where it leaves the
/// 25-way connector. In a port word line n has the weight 2^n, a 1 being a high level at the connector.
struct ConnectorLine {
    const char* name;      ///< In traces.
    const char* caption;   ///< On screen: a data line by its weight.
    std::uint16_t reg;     ///< Address of its register, from the data register's.
    unsigned bit;          ///< In that register.
    bool inverted;         ///< The hardware inverts it between register and connector.
    int pin;
};

inline constexpr std::uint16_t kControlOffset = 2;   ///< The control register's address, from the data register's.

inline constexpr std::array<ConnectorLine, 12> kConnector{{
    {"D0", "1", 0, 0, false, 2},
    {"D1", "2", 0, 1, false, 3},
    {"D2", "4", 0, 2, false, 4},
    {"D3", "8", 0, 3, false, 5},
    {"D4", "16", 0, 4, false, 6},
    {"D5", "32", 0, 5, false, 7},
    {"D6", "64", 0, 6, false, 8},
    {"D7", "128", 0, 7, false, 9},
    {"C1", "C1", kControlOffset, 0, true, 1},
    {"C2", "C2", kControlOffset, 1, true, 14},
    {"C3", "C3", kControlOffset, 2, false, 16},
    {"C4", "C4", kControlOffset, 3, true, 17},
}};

inline constexpr int kPortLines = static_cast<int>(kConnector.size());
inline constexpr auto kLinesInWords = "the lines are 0 to 7 (data) and 8 to 11 (C1 to C4)";

/// The lines of one register, as a port word.
constexpr unsigned LinesOf(std::uint16_t reg) {
    unsigned lines = 0;
    for (std::size_t line = 0; line < kConnector.size(); ++line) {
        lines |= kConnector[line].reg == reg ? 1U << line : 0U;
    }
    return lines;
}
inline constexpr unsigned kDataLines = LinesOf(0);
inline constexpr unsigned kControlLines = LinesOf(kControlOffset);

/// The bits of the control register that the hardware inverts.
inline constexpr int kInvertedControls = [] {
    unsigned bits = 0;
    for (const ConnectorLine& line : kConnector) {
        bits |= line.inverted ? 1U << line.bit : 0U;
    }
    return static_cast<int>(bits);
}();

constexpr std::uint8_t DataByte(int word) {
    return static_cast<std::uint8_t>(word & 0xFF);
}

constexpr std::uint8_t ControlByte(int word) {
    return static_cast<std::uint8_t>((word & static_cast<int>(kControlLines)) >> 8 ^ kInvertedControls);
}

/// The levels that a byte in the control register gives its lines, as a port word.
constexpr unsigned ControlLevels(std::uint8_t value) {
    return (static_cast<unsigned>(value ^ kInvertedControls) << 8U) & kControlLines;
}
