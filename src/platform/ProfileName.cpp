#include "platform/ProfileName.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace {

constexpr std::array<unsigned char, 256> MakeLowerCase() {
    std::array<unsigned char, 256> lower{};
    for (unsigned c = 0; c < 256; ++c) {
        const bool ascii = c >= 'A' && c <= 'Z';
        const bool accented = c >= 0xC0 && c <= 0xDE && c != 0xD7;   // 0xD7 is the multiplication sign.
        lower[c] = static_cast<unsigned char>(ascii || accented ? c + 0x20 : c);
    }
    // S, Z with caron, OE and Y with diaeresis stand apart.
    lower[0x8A] = 0x9A;
    lower[0x8C] = 0x9C;
    lower[0x8E] = 0x9E;
    lower[0x9F] = 0xFF;
    return lower;
}

constexpr std::array<unsigned char, 256> lowerCase = MakeLowerCase();

unsigned char Lower(char c) noexcept {
    return lowerCase[static_cast<unsigned char>(c)];
}

}   // namespace

std::size_t ProfileNameHash::operator()(std::string_view name) const noexcept {
    std::uint64_t hash = 14695981039346656037U;   // FNV-1a
    for (const char c : name) {
        hash = (hash ^ Lower(c)) * 1099511628211U;
    }
    return static_cast<std::size_t>(hash);
}

bool ProfileNameEqual::operator()(std::string_view left, std::string_view right) const noexcept {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return Lower(a) == Lower(b); });
}

std::string_view TrimmedRight(std::string_view text, std::string_view blanks) noexcept {
    return text.substr(0, text.find_last_not_of(blanks) + 1);   // npos + 1 is 0.
}

std::string_view Trimmed(std::string_view text, std::string_view blanks) noexcept {
    text = TrimmedRight(text, blanks);
    return text.substr(std::min(text.find_first_not_of(blanks), text.size()));
}
