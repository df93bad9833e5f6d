#pragma once

#include <cstdint>

// How a port word, a bit for each of the twelve output lines, stands in the two registers of a parallel port.

/// The control lines that the hardware inverts between register and connector: C1, C2 and C4. Undone here, so
/// that a 1 in a port word is a high level on every line.
inline constexpr int kInvertedControls = 0x0B;

inline constexpr int kPortLines = 12;
inline constexpr std::uint16_t kControlOffset = 2;   ///< The control register's address, from the data register's.

constexpr std::uint8_t DataByte(int word) {
    return static_cast<std::uint8_t>(word & 0xFF);
}

constexpr std::uint8_t ControlByte(int word) {
    return static_cast<std::uint8_t>(((word & 0xF00) >> 8) ^ kInvertedControls);
}
