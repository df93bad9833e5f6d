#include "core/BinaryString.h"

#include <algorithm>
#include <cmath>

namespace {

/// Whether the character at that distance from the right end is a one; beyond the left end there are none.
bool IsOne(std::string_view text, std::size_t fromRight) {
    return fromRight < text.size() && text[text.size() - 1 - fromRight] == '1';
}

/// A text of that length whose characters, counted from the right, `bit` tells.
template <class Bit>
std::string Built(std::size_t length, Bit bit) {
    std::string text(length, '0');
    for (std::size_t k = 0; k < length; ++k) {
        if (bit(k)) {
            text[length - 1 - k] = '1';
        }
    }
    return text;
}

}   // namespace

std::string ToBase(double value, std::string_view digits) {
    const auto base = static_cast<double>(digits.size());
    double rest = std::trunc(value);
    if (digits.size() < 2 || !(rest > 0) || std::isinf(rest)) {
        return std::string(digits.substr(0, 1));
    }
    std::string text;
    while (rest > 0) {
        const double digit = std::fmod(rest, base);
        text.push_back(digits[static_cast<std::size_t>(digit)]);
        rest = std::trunc((rest - digit) / base);
    }
    std::reverse(text.begin(), text.end());
    return text;
}

double BinaryValue(std::string_view text) {
    double value = 0;
    for (const char c : text) {
        value = value * 2 + (c == '1' ? 1 : 0);
    }
    return value;
}

std::string BinaryAnd(std::string_view one, std::string_view two) {
    return Built(std::min(one.size(), two.size()), [&](std::size_t k) { return IsOne(one, k) && IsOne(two, k); });
}

std::string BinaryOr(std::string_view one, std::string_view two) {
    return Built(std::max(one.size(), two.size()), [&](std::size_t k) { return IsOne(one, k) || IsOne(two, k); });
}

std::string BinaryNot(std::string_view one, std::optional<int> length) {
    const auto size = length ? static_cast<std::size_t>(std::max(0, *length)) : one.size();
    return Built(size, [&](std::size_t k) { return !IsOne(one, k); });
}

std::string BinaryToHex(std::string& text) {
    text.insert(0, (4 - text.size() % 4) % 4, '0');
    std::string hex;
    for (std::size_t i = 0; i < text.size(); i += 4) {
        hex.push_back("0123456789ABCDEF"[static_cast<std::size_t>(BinaryValue(text.substr(i, 4)))]);
    }
    return hex;
}
