#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// The port addresses that a user chooses from.

/// The addresses of the usual three parallel ports, and the one that the choice of another port begins with.
inline constexpr std::array<std::int16_t, 4> kPortAddresses{0x378, 0x278, 0x3BC, 0x2BC};
inline constexpr int kOtherPort = 3;

/// Which of the choices an address belongs to, counted from 0; kOtherPort if it is none of the usual three.
int PortChoice(std::int16_t address);

/// The address as hexadecimal digits without a prefix: "378". A negative one is its 16-bit pattern.
std::string PortAddressText(std::int16_t address);

/// Reads hexadecimal digits without a prefix, blanks round them allowed; nothing for any other text and for a number
/// of more than 16 bits.
std::optional<std::int16_t> ReadPortAddress(std::string_view text);
