#include "core/FieldEntry.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <vector>

#include "core/Errors.h"
#include "core/Numbers.h"
#include "core/cPrgmBits.h"

namespace {

/// What a field shows behind its number. An entry of a list stands alone, and so does a formatted number.
std::string UnitsOf(const cPrgmBits& field) {
    if (field.HasList() || !field.FormatString().empty()) {
        return {};
    }
    const std::string text = field.Text();
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return {end, text.data() + text.size()};
}

std::string Joined(const std::vector<double>& values) {
    std::string text;
    for (const double value : values) {
        text += (text.empty() ? "" : ", ") + GeneralText(value);
    }
    return text;
}

std::string ListLimits(const cPrgmBits& field) {
    const std::vector<double> values = field.ListNumbers();
    if (values.empty()) {
        return "the number of an entry, 0 to " + std::to_string(field.ArrayCount() - 1);
    }
    constexpr std::size_t kMostNamed = 10;
    if (values.size() <= kMostNamed) {
        return "one of " + Joined(values);
    }
    const auto [low, high] = std::minmax_element(values.begin(), values.end());
    return "one of " + std::to_string(values.size()) + " values from " + GeneralText(*low) + " to " +
           GeneralText(*high);
}

std::string PlainLimits(const cPrgmBits& field) {
    const std::string units = UnitsOf(field);
    const double most = field.Maximum();
    const double high = field.MaximumValue() > 0 ? std::min(most, field.MaximumValue()) : most;
    const double low = std::max(field.Polarity() ? -most : field.ZeroValue(), field.MinimumValue());
    const double step = field.EffectiveStepValue();
    std::string text;
    if (low <= high) {
        text = GeneralText(low) + " to " + GeneralText(high) + units;
    }
    if (step != 0) {
        text += (text.empty() ? "in steps of " : " in steps of ") + GeneralText(step) + units;
    }
    if (!field.GreaterBitName().empty()) {
        text += ", limited by '" + field.GreaterBitName() + "'";
    }
    return text;
}

std::string LimitsOf(const cPrgmBits& field) {
    if (field.Position() < 0) {
        return "a constant";
    }
    return field.HasList() ? ListLimits(field) : PlainLimits(field);
}

/// The number that the field shows; its value where it shows none. They differ in the sign: only the text has it.
double ShownNumber(const cPrgmBits& field, const std::string& text) {
    const auto shown = ParseFieldEntry(field, text);
    return shown ? *shown : field.Value();
}

}   // namespace

std::optional<double> ParseFieldEntry(const cPrgmBits& field, std::string_view text) {
    text = Trimmed(text);
    if (const auto number = ParseNumber(text)) {
        return number;
    }
    const std::string shown = UnitsOf(field);
    const std::string_view units = Trimmed(shown);
    if (units.empty() || !text.ends_with(units)) {
        return std::nullopt;
    }
    return ParseNumber(text.substr(0, text.size() - units.size()));
}

std::string FieldLimits(const cPrgmBits& field) {
    std::string text;
    IgnoringFailures([&] { text = LimitsOf(field); });
    return text;
}

std::string FieldEntryNote(const cPrgmBits& field, double asked) {
    const std::string stored = field.Text();
    if (GeneralText(ShownNumber(field, stored)) == GeneralText(asked)) {
        return {};
    }
    const std::string limits = FieldLimits(field);
    return "'" + field.ID() + "': asked " + GeneralText(asked) + UnitsOf(field) + ", stored " +
           (stored.empty() ? GeneralText(field.Value()) : stored) + (limits.empty() ? "" : "; it takes " + limits);
}
