#include "ports/PortLog.h"

#include <string_view>

static void AppendHex(std::string& text, unsigned value, int digits) {
    constexpr std::string_view hexDigits = "0123456789ABCDEF";
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        text += hexDigits[(value >> shift) & 0xF];
}

void PortLog::Write(std::uint64_t microseconds, std::uint16_t port, std::uint8_t value, std::string& text) {
    text += std::to_string(microseconds);
    text += ' ';
    AppendHex(text, port, 4);
    text += ' ';
    AppendHex(text, value, 2);
    text += '\n';
}
