#include "platform/ProfileEncoding.h"

#include <algorithm>
#include <array>

namespace {

// Code page 1252 from 0x80 on; below and from 0xA0 on it is Unicode's first page. Five places stand for themselves.
constexpr std::array<char16_t, 32> upperControls = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr unsigned firstUpperControl = 0x80;
constexpr unsigned endOfUpperControls = firstUpperControl + upperControls.size();

char FromUnit(char16_t unit) {
    if (unit < firstUpperControl || (unit >= endOfUpperControls && unit <= 0xFF)) {
        return static_cast<char>(unit);
    }
    const auto* const found = std::find(upperControls.begin(), upperControls.end(), unit);
    return found == upperControls.end()
               ? '?'
               : static_cast<char>(firstUpperControl + static_cast<unsigned>(found - upperControls.begin()));
}

char16_t ToUnit(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= firstUpperControl && byte < endOfUpperControls ? upperControls[byte - firstUpperControl] : byte;
}

}   // namespace

ProfileEncoding ProfileEncoding::Of(std::string_view bytes) noexcept {
    if (bytes.starts_with("\xFF\xFE")) {
        return {2, 2};
    }
    return {bytes.starts_with("\xEF\xBB\xBF") ? std::size_t{3} : 0, 1};
}

std::string FromUtf16(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size() / 2);
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        const auto low = static_cast<unsigned char>(bytes[at]);
        const auto high = static_cast<unsigned char>(bytes[at + 1]);
        text += FromUnit(static_cast<char16_t>(low | high << 8));
    }
    return text;
}

std::string ToUtf16(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size() * 2);
    for (const char c : text) {
        const char16_t unit = ToUnit(c);
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}
