#include "core/TypedNumber.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>

#include "core/Errors.h"
#include "core/Numbers.h"

namespace {

std::string Quoted(std::string_view text) {
    constexpr std::size_t kShown = 40;
    return '"' + std::string(text.substr(0, kShown)) + (text.size() > kShown ? "..." : "") + '"';
}

/// A text cut where its parts meet: "-1,5e3 MHz" has the sign, "1,5", 3 and "MHz".
struct Parts {
    bool negative = false;
    std::string digits;   ///< With point and comma as typed.
    int exponent = 0;
    std::string_view unit;
};

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The power of ten at the front of the text, and taken off it; 0 where none stands there.
int TakeExponent(std::string_view& text) {
    std::string_view digits = text;
    if (digits.empty() || (digits.front() != 'e' && digits.front() != 'E')) {
        return 0;
    }
    digits.remove_prefix(digits.size() > 1 && digits[1] == '+' ? 2 : 1);
    int exponent = 0;
    const char* last = digits.data() + digits.size();
    const auto [end, error] = std::from_chars(digits.data(), last, exponent);
    if (error != std::errc()) {
        return 0;
    }
    text = {end, static_cast<std::size_t>(last - end)};
    return exponent;
}

Parts Cut(std::string_view text) {
    Parts parts;
    text = Trimmed(text);
    if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
        parts.negative = text.front() == '-';
        text.remove_prefix(1);
    }
    const auto last =
        std::find_if(text.begin(), text.end(), [](char c) { return !IsDigit(c) && c != '.' && c != ','; });
    parts.digits.assign(text.begin(), last);
    text.remove_prefix(parts.digits.size());
    parts.exponent = TakeExponent(text);
    parts.unit = Trimmed(text);
    return parts;
}

/// The digits with a point at most. A comma in front of three digits may separate thousands: both readings are wrong
/// for somebody.
std::string WithPoint(std::string digits, std::string_view text) {
    const auto commas = std::count(digits.begin(), digits.end(), ',');
    const auto points = std::count(digits.begin(), digits.end(), '.');
    if (commas + points > 1) {
        throw ConversionError(Quoted(text) + " has more than one point or comma; write thousands without a mark");
    }
    const auto comma = digits.find(',');
    if (comma == std::string::npos) {
        return digits;
    }
    constexpr std::size_t kGroup = 3;
    const bool grouped = digits.size() - comma - 1 == kGroup && comma >= 1 && comma <= kGroup && digits[0] != '0';
    digits[comma] = '.';
    if (grouped) {
        throw ConversionError(Quoted(text) + " can mean " + digits + " and " + digits.substr(0, comma) +
                              digits.substr(comma + 1) + "; write one of these");
    }
    return digits;
}

/// The number times ten to that power, rounded once.
std::optional<double> Scaled(const Parts& parts, std::string_view text, int power) {
    if (std::none_of(parts.digits.begin(), parts.digits.end(), IsDigit)) {
        return std::nullopt;
    }
    constexpr int kBeyondAll = 9999;
    const int exponent = std::clamp(parts.exponent, -kBeyondAll, kBeyondAll) + power;
    const std::string number = WithPoint(parts.digits, text) + 'e' + std::to_string(exponent);
    const auto magnitude = ParseNumber(number);
    return magnitude && parts.negative ? -*magnitude : magnitude;
}

/// The power of ten of a unit; nothing for what is none.
std::optional<int> PowerOf(std::string_view unit) {
    std::string small(unit);
    std::transform(small.begin(), small.end(), small.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    constexpr std::string_view kHertz = "hz";
    const bool hertz = small.ends_with(kHertz);
    if (hertz) {
        small.resize(small.size() - kHertz.size());
    }
    constexpr std::string_view kPrefixes = "kmg";
    const auto place = small.size() == 1 ? kPrefixes.find(small.front()) : std::string_view::npos;
    if (place != std::string_view::npos) {
        return 3 * (static_cast<int>(place) + 1);
    }
    return hertz && small.empty() ? std::optional(0) : std::nullopt;
}

}   // namespace

double TypedNumber(std::string_view text) {
    const Parts parts = Cut(text);
    const auto number = Scaled(parts, text, 0);
    if (!number || !parts.unit.empty()) {
        throw ConversionError(Quoted(text) + " is no plain number, as 100 or 0.5");
    }
    return *number;
}

double TypedFrequency(std::string_view text, FrequencyUnit unit) {
    const Parts parts = Cut(text);
    const int own = static_cast<int>(unit);
    const auto power = parts.unit.empty() ? own : PowerOf(parts.unit);
    const auto number = power ? Scaled(parts, text, *power - own) : std::nullopt;
    if (!number) {
        throw ConversionError(Quoted(text) + " is no frequency; it takes " +
                              (unit == FrequencyUnit::Megahertz ? "MHz" : "kHz") +
                              ", or a number with its unit, as 433.5MHz, 2.4G or 200 kHz");
    }
    if (parts.unit == "mHz") {
        throw ConversionError(Quoted(text) + " would be millihertz; write MHz, or M alone");
    }
    return *number;
}
