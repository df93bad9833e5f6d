#include "core/PortAddress.h"

#include <algorithm>
#include <charconv>

#include "core/Numbers.h"

int PortChoice(std::int16_t address) {
    const auto* const end = kPortAddresses.begin() + kOtherPort;
    return static_cast<int>(std::find(kPortAddresses.begin(), end, address) - kPortAddresses.begin());
}

std::string PortAddressText(std::int16_t address) {
    return HexText(static_cast<std::uint16_t>(address));
}

std::optional<std::int16_t> ReadPortAddress(std::string_view text) {
    constexpr int kHexadecimal = 16;
    const std::string_view digits = Trimmed(text);
    std::uint16_t address = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), address, kHexadecimal);
    if (error != std::errc() || end != digits.data() + digits.size()) {
        return std::nullopt;
    }
    return static_cast<std::int16_t>(address);
}
