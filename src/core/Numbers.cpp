#include "core/Numbers.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "core/Errors.h"

namespace {

std::string Quoted(std::string_view text) {
    constexpr std::size_t kShown = 60;
    return '"' + std::string(text.substr(0, kShown)) + (text.size() > kShown ? "...\"" : "\"");
}

template <class Integer>
Integer RoundInto(double value, const char* width) {
    const double rounded = RoundHalfEven(value);
    constexpr auto kLowest = static_cast<double>(std::numeric_limits<Integer>::min());
    constexpr auto kHighest = static_cast<double>(std::numeric_limits<Integer>::max());
    if (!(rounded >= kLowest && rounded <= kHighest)) {
        throw ConversionError(GeneralText(value) + " doesn't fit a signed " + width + "-bit number, " +
                              GeneralText(kLowest) + " to " + GeneralText(kHighest));
    }
    return static_cast<Integer>(rounded);
}

bool SameLetters(std::string_view text, std::string_view capitals) {
    if (text.size() != capitals.size()) {
        return false;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i] >= 'a' && text[i] <= 'z' ? static_cast<char>(text[i] - 'a' + 'A') : text[i];
        if (c != capitals[i]) {
            return false;
        }
    }
    return true;
}

/// The number behind "&H", or nothing if the text isn't of this form.
std::optional<std::uint64_t> ParseHex(std::string_view text) {
    text = Trimmed(text);
    if (text.size() < 3 || !SameLetters(text.substr(0, 2), "&H")) {
        return std::nullopt;
    }
    text.remove_prefix(2);
    if (text.back() == '&') {   // The old mark of a 32-bit constant.
        text.remove_suffix(1);
    }
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
    if (text.empty() || error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

/// What to write for a hexadecimal number in the notation of another language; empty for any other text.
std::string HexAdvice(std::string_view text) {
    text = Trimmed(text);
    if (text.size() > 2 && SameLetters(text.substr(0, 2), "0X")) {
        text.remove_prefix(2);
    } else if (text.size() > 1 && text.front() == '$') {
        text.remove_prefix(1);
    } else if (text.size() > 1 && SameLetters(text.substr(text.size() - 1), "H")) {
        text.remove_suffix(1);
    } else {
        return {};
    }
    const std::string meant = "&H" + std::string(text);
    return ParseHex(meant) ? ": write " + meant : "";
}

template <class Integer>
Integer FileInteger(std::string_view text, const char* width) {
    constexpr auto kPatterns = std::uint64_t{std::numeric_limits<std::make_unsigned_t<Integer>>::max()};
    if (const auto hex = ParseHex(text)) {
        if (*hex <= kPatterns) {
            return static_cast<Integer>(static_cast<std::make_unsigned_t<Integer>>(*hex));
        }
        throw ConversionError(Quoted(text) + " has more than " + width + " bits");
    }
    const auto number = ParseNumber(text);
    if (!number) {
        throw ConversionError(Quoted(text) + " is no whole number, neither decimal nor hexadecimal with &H" +
                              HexAdvice(text));
    }
    return RoundInto<Integer>(*number, width);
}

std::string Exponent(int exponent) {
    const int magnitude = std::abs(exponent);
    return std::string(exponent < 0 ? "E-" : "E+") + (magnitude < 10 ? "0" : "") + std::to_string(magnitude);
}

/// The digits of a number, d.ddd times 10^exponent, in plain notation.
std::string PlainNotation(std::string digits, int exponent) {
    if (exponent < 0) {
        return "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
    }
    const auto whole = static_cast<std::size_t>(exponent) + 1;
    if (digits.size() <= whole) {
        digits.append(whole - digits.size(), '0');
        return digits;
    }
    return digits.substr(0, whole) + '.' + digits.substr(whole);
}

}   // namespace

double RoundHalfEven(double value) {
    return std::nearbyint(value);   // The rounding mode of the process is never changed: ties go to even.
}

std::int32_t RoundToLong(double value) {
    return RoundInto<std::int32_t>(value, "32");
}

std::int16_t RoundToShort(double value) {
    return RoundInto<std::int16_t>(value, "16");
}

std::uint64_t WholeBits(double value) {
    if (!(value > 0) || std::isinf(value)) {
        return 0;
    }
    constexpr double kBeyond = 18446744073709551616.0;   // 2^64
    return static_cast<std::uint64_t>(value < kBeyond ? std::trunc(value) : std::fmod(std::trunc(value), kBeyond));
}

std::string GeneralText(double value) {
    if (!std::isfinite(value)) {
        return std::isnan(value) ? "NaN" : (value < 0 ? "-Infinity" : "Infinity");
    }
    if (value == 0) {
        return "0";
    }
    std::array<char, 40> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(value),
                                      std::chars_format::scientific, 14);
    const std::string_view text(buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data()));
    const auto mark = text.find('e');
    std::string digits = std::string(1, text[0]) + std::string(text.substr(2, mark - 2));
    digits.erase(digits.find_last_not_of('0') + 1);
    int exponent = 0;
    std::from_chars(text.data() + mark + (text[mark + 1] == '+' ? 2 : 1), text.data() + text.size(), exponent);

    const std::string sign = value < 0 ? "-" : "";
    if (exponent >= -7 && exponent < 15) {
        return sign + PlainNotation(std::move(digits), exponent);
    }
    const std::string fraction = digits.size() > 1 ? '.' + digits.substr(1) : "";
    return sign + digits[0] + fraction + Exponent(exponent);
}

std::string FileText(double value) {
    constexpr double kLargestExact = 9007199254740992.0;   // 2^53
    if (std::trunc(value) == value && std::fabs(value) <= kLargestExact) {
        return std::to_string(static_cast<std::int64_t>(value));
    }
    return GeneralText(value);
}

std::optional<double> ParseNumber(std::string_view text) {
    text = Trimmed(text);
    const bool negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
        text.remove_prefix(1);
    }
    // The standard conversion takes "inf" and "nan" too, and a second sign.
    if (text.empty() || !((text.front() >= '0' && text.front() <= '9') || text.front() == '.')) {
        return std::nullopt;
    }
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (end != text.data() + text.size()) {
        return std::nullopt;
    }
    if (error != std::errc()) {
        return std::nullopt;
    }
    return negative ? -value : value;
}

double NumberOf(std::string_view text) {
    const auto number = ParseNumber(text);
    if (!number) {
        throw ConversionError(Quoted(text) + " is no number");
    }
    return *number;
}

double FileDouble(std::string_view text) {
    if (const auto hex = ParseHex(text)) {
        return static_cast<double>(*hex);
    }
    if (const auto number = ParseNumber(text)) {
        return *number;
    }
    throw ConversionError(Quoted(text) + " is no number" + HexAdvice(text));
}

std::int16_t FileShort(std::string_view text) {
    return FileInteger<std::int16_t>(text, "16");
}

std::int32_t FileLong(std::string_view text) {
    return FileInteger<std::int32_t>(text, "32");
}

bool FileBoolean(std::string_view text) {
    text = Trimmed(text);
    if (SameLetters(text, "TRUE")) {
        return true;
    }
    if (SameLetters(text, "FALSE")) {
        return false;
    }
    const auto number = ParseNumber(text);
    if (!number) {
        throw ConversionError(Quoted(text) + " is neither TRUE nor FALSE nor a number");
    }
    return *number != 0;
}

std::string BooleanText(bool value) {
    return value ? "True" : "False";
}

std::string HexText(std::uint64_t value, int digits) {
    std::string text;
    do {
        text.insert(text.begin(), "0123456789ABCDEF"[value & 15U]);
        value >>= 4U;
    } while (value != 0 || static_cast<int>(text.size()) < digits);
    return text;
}

std::string_view Trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string ItemNumber(int number) {
    return (number >= 0 && number < 10 ? "0" : "") + std::to_string(number);
}
