#include "core/FormatNumber.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <vector>

#include "core/Numbers.h"

namespace {

/// What one section of a pattern asks for.
struct Layout {
    std::string before;   ///< Text in front of the first digit place.
    std::string after;    ///< Text behind the last one.
    int leastWhole = 0;   ///< Digits that always show in front of the point.
    int leastFraction = 0;
    int mostFraction = 0;
    int exponentDigits = 0;      ///< 0: no exponent.
    bool exponentPlus = false;   ///< Show "+" too.
    bool hasDigits = false;
    bool point = false;
    bool groups = false;
    int percents = 0;
};

std::vector<std::string_view> Sections(std::string_view pattern) {
    std::vector<std::string_view> sections;
    bool quoted = false;
    std::size_t start = 0;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == '\\') {
            ++i;
        } else if (pattern[i] == '"') {
            quoted = !quoted;
        } else if (pattern[i] == ';' && !quoted) {
            sections.push_back(pattern.substr(start, i - start));
            start = i + 1;
        }
    }
    sections.push_back(pattern.substr(std::min(start, pattern.size())));
    return sections;
}

void AddDigitPlace(Layout& layout, bool always) {
    layout.hasDigits = true;
    if (layout.point) {
        ++layout.mostFraction;
        if (always) {
            layout.leastFraction = layout.mostFraction;
        }
    } else if (always || layout.leastWhole > 0) {
        ++layout.leastWhole;
    }
}

/// Takes "E+00" at i; returns how many characters it has, 0 if there is none.
std::size_t TakeExponent(Layout& layout, std::string_view section, std::size_t i) {
    if ((section[i] != 'E' && section[i] != 'e') || i + 2 >= section.size() ||
        (section[i + 1] != '+' && section[i + 1] != '-')) {
        return 0;
    }
    std::size_t end = i + 2;
    while (end < section.size() && (section[end] == '0' || section[end] == '#')) {
        ++end;
    }
    layout.exponentDigits = static_cast<int>(end - i) - 2;
    layout.exponentPlus = section[i + 1] == '+';
    return layout.exponentDigits > 0 ? end - i : 0;
}

Layout ReadSection(std::string_view section) {
    Layout layout;
    bool quoted = false;
    for (std::size_t i = 0; i < section.size(); ++i) {
        const char c = section[i];
        std::string& text = layout.hasDigits ? layout.after : layout.before;
        if (c == '"') {
            quoted = !quoted;
        } else if (c == '\\' && i + 1 < section.size()) {
            text += section[++i];
        } else if (quoted) {
            text += c;
        } else if (c == '0' || c == '#') {
            AddDigitPlace(layout, c == '0');
        } else if (c == '.' && !layout.point) {
            layout.point = true;
        } else if (c == ',') {
            layout.groups = true;
        } else if (const std::size_t taken = TakeExponent(layout, section, i)) {
            i += taken - 1;
        } else {
            layout.percents += c == '%' ? 1 : 0;
            text += c;
        }
    }
    return layout;
}

void Group(std::string& digits) {
    for (std::size_t i = digits.size(); i > 3;) {
        i -= 3;
        digits.insert(i, 1, ',');
    }
}

/// The whole number that a text of digits, perhaps with a sign, gives; 0 for an empty one.
std::int64_t Whole(std::string_view text) {
    text.remove_prefix(text.starts_with('+') ? 1 : 0);
    std::int64_t value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

/// A magnitude to that many places, plainly. Halves go up as on paper: the first 15 digits decide, for 2.675 is a
/// little less than that in binary.
std::string Rounded(double magnitude, int places) {
    constexpr int kDigits = 15;
    std::array<char, 400> buffer{};
    const auto write = [&](std::chars_format format, int precision) {
        const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude, format, precision).ptr;
        return std::string_view(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    };
    const std::string_view text = write(std::chars_format::scientific, kDigits - 1);
    std::string digits = text[0] + std::string(text.substr(2, kDigits - 1));
    const int kept = static_cast<int>(Whole(text.substr(text.find('e') + 1))) + 1 + places;
    if (kept >= kDigits) {
        return std::string(write(std::chars_format::fixed, places));
    }
    const bool up = kept >= 0 && digits[static_cast<std::size_t>(kept)] >= '5';
    digits.resize(static_cast<std::size_t>(std::max(kept, 0)));
    digits = std::to_string(Whole(digits) + (up ? 1 : 0));
    const auto fraction = static_cast<std::size_t>(places);
    digits.insert(0, fraction + 1 - std::min(fraction + 1, digits.size()), '0');
    return digits.insert(digits.size() - fraction, places > 0 ? "." : "");
}

/// A magnitude with the digit places of the layout.
std::string Digits(double magnitude, const Layout& layout) {
    const std::string text = Rounded(magnitude, std::min(layout.mostFraction, 60));
    std::string whole = text.substr(0, text.find('.'));
    std::string fraction = whole.size() < text.size() ? text.substr(whole.size() + 1) : std::string();
    while (static_cast<int>(fraction.size()) > layout.leastFraction && fraction.back() == '0') {
        fraction.pop_back();
    }
    if (whole == "0" && layout.leastWhole == 0) {
        whole.clear();
    }
    while (static_cast<int>(whole.size()) < layout.leastWhole) {
        whole.insert(0, 1, '0');
    }
    if (layout.groups) {
        Group(whole);
    }
    return whole + (layout.point ? "." : "") + fraction;
}

/// A number without a power of ten, which may itself lie beyond a double's range.
double Without(int exponent, double magnitude) {
    const int half = std::abs(exponent) > 300 ? exponent / 2 : 0;
    return magnitude / std::pow(10.0, half) / std::pow(10.0, exponent - half);
}

std::string WithExponent(double magnitude, const Layout& layout) {
    constexpr int kMostPlaces = 100;   // Further ones are filled with zeros.
    const int places = std::clamp(layout.leastWhole, 1, kMostPlaces);
    int exponent = magnitude == 0 ? 0 : static_cast<int>(std::floor(std::log10(magnitude))) - places + 1;
    std::string digits = Digits(Without(exponent, magnitude), layout);
    const auto whole = digits.substr(0, digits.find('.'));
    if (static_cast<int>(whole.size()) > std::max(places, layout.leastWhole) &&
        magnitude != 0) {   // Rounding went up to the next power of ten.
        ++exponent;
        digits = Digits(Without(exponent, magnitude), layout);
    }
    std::string power = std::to_string(std::abs(exponent));
    while (static_cast<int>(power.size()) < layout.exponentDigits) {
        power.insert(0, 1, '0');
    }
    return digits + (exponent < 0 ? "E-" : layout.exponentPlus ? "E+" : "E") + power;
}

}   // namespace

std::string FormatNumber(double value, std::string_view pattern) {
    if (!std::isfinite(value)) {
        return GeneralText(value);
    }
    const auto sections = Sections(pattern);
    std::size_t chosen = 0;
    if (value < 0 && sections.size() > 1 && !sections[1].empty()) {
        chosen = 1;
    } else if (value == 0 && sections.size() > 2 && !sections[2].empty()) {
        chosen = 2;
    }
    const Layout layout = ReadSection(sections[chosen]);
    if (!layout.hasDigits) {
        return layout.before;
    }
    const double magnitude = std::fabs(value) * std::pow(100.0, layout.percents);
    if (!std::isfinite(magnitude)) {
        return GeneralText(value < 0 ? -magnitude : magnitude);
    }
    const std::string digits = layout.exponentDigits > 0 ? WithExponent(magnitude, layout) : Digits(magnitude, layout);
    const bool shownZero = digits.find_first_of("123456789") == std::string::npos;
    const std::string sign = value < 0 && chosen == 0 && !shownZero ? "-" : "";
    return sign + layout.before + digits + layout.after;
}
