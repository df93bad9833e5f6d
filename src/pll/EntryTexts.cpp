#include "pll/EntryTexts.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "core/Numbers.h"
#include "core/cPart.h"
#include "pll/cPLL.h"

namespace {

/// General decimal text with so many significant digits.
std::string Digits(double value, int digits) {
    std::array<char, 40> buffer{};
    const auto written =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::scientific, digits - 1);
    return GeneralText(ParseNumber({buffer.data(), written.ptr}).value_or(value));
}

std::string Signed(double value, int digits) {
    return (value > 0 ? "+" : "") + Digits(value, digits);
}

using Range = ValueRange;

std::optional<Range> ListRange(const cPrgmBits& field) {
    const std::vector<double> values = field.ListNumbers();
    if (values.empty()) {
        return std::nullopt;
    }
    const auto [low, high] = std::minmax_element(values.begin(), values.end());
    return Range{*low, *high};
}

/// The range as the greater field cuts it. Of that rule and a limit of the field itself the limit wins.
Range WithinRule(const cPrgmBits& field, Range range) {
    if (!field.GreaterBitName().empty()) {
        const double rule = field.Part().PrgmBits().At(field.GreaterBitName()).Value();
        double& end = field.GreaterEqual() ? range.low : range.high;
        end =
            field.GreaterEqual() ? std::min(std::max(end, rule), range.high) : std::max(std::min(end, rule), range.low);
    }
    return range;
}

std::string RangeText(const std::optional<Range>& range, const char* unit) {
    if (!range || !(range->low <= range->high)) {
        return {};
    }
    return ", " + Digits(range->low, 9) + " to " + Digits(range->high, 9) + unit;
}

std::string StepText(const std::string& step) {
    return ", in steps of " + step;
}

std::string CounterHint(const cPLL& pll, const std::string& fieldName) {
    const cPrgmBits& field = pll.Part().PrgmBits().At(fieldName);
    return (field.HasList() ? "" : StepText(GeneralText(field.EffectiveStepValue()))) + RangeText(RangeOf(field), "");
}

/// What N can be, the fraction included.
std::optional<Range> RangeOfN(const cPLL& pll) {
    auto range = RangeOf(pll.Part().PrgmBits().At(pll.NCounterName()));
    if (range && !pll.NumeratorName().empty() && pll.DenValue() > 0) {
        const double denominator = pll.DenValue();
        const auto numerator = RangeOf(pll.Part().PrgmBits().At(pll.NumeratorName()));
        range->high += std::min(numerator ? numerator->high : 0, denominator - 1) / denominator;
    }
    return range;
}

std::string NHint(cPLL& pll) {
    if (pll.NumeratorName().empty()) {
        return CounterHint(pll, pll.NCounterName());
    }
    const std::int32_t denominator = pll.DenValue();
    const std::string step = denominator > 1 ? "1/" + std::to_string(denominator) : "1";
    return StepText(step) + RangeText(RangeOfN(pll), "");
}

std::string VCOHint(cPLL& pll) {
    auto range = RangeOfN(pll);
    if (range) {
        const double megahertz = pll.PDFrequency() / 1e3;
        *range = {range->low * megahertz, range->high * megahertz};
    }
    return StepText(HertzText(pll.Resolution())) + RangeText(range, " MHz");
}

/// The phase detector frequency has no fixed step: the one to the next R tells how fine it is here.
std::string FpdHint(cPLL& pll) {
    const double kilohertz = pll.PDFrequency();
    const double r = pll.RValue();
    const double reference = kilohertz * r;
    const cPrgmBits& field = pll.Part().PrgmBits().At(pll.RCounterName());
    const auto counter = RangeOf(field);
    std::string text = ": the reference over R";
    if (!field.HasList() && field.EffectiveStepValue() > 0) {
        const double next = reference / (r + field.EffectiveStepValue());
        text += ", here in steps of " + HertzText((kilohertz - next) * 1e3);
    }
    if (counter && counter->high > 0) {
        text += RangeText(Range{reference / counter->high, reference / std::max(counter->low, 1.0)}, " kHz");
    }
    return text;
}

std::string NumeratorHint(cPLL& pll) {
    std::string text = CounterHint(pll, pll.NumeratorName());
    return text + "; one count is " + HertzText(pll.Resolution()) + " at the VCO";
}

std::string Details(cPLL& pll, EntryBox box) {
    switch (box) {
        case EntryBox::Osc:
            return ", above 0";
        case EntryBox::VCO:
            return VCOHint(pll);
        case EntryBox::Fpd:
            return FpdHint(pll);
        case EntryBox::RCounter:
            return CounterHint(pll, pll.RCounterName());
        case EntryBox::NCounter:
            return NHint(pll);
        case EntryBox::FractNum:
            return NumeratorHint(pll);
        case EntryBox::FractDen:
            return CounterHint(pll, pll.DenominatorName());
    }
    return {};
}

}   // namespace

std::optional<ValueRange> RangeOf(const cPrgmBits& field) {
    if (field.Position() < 0) {
        return std::nullopt;
    }
    if (field.HasList()) {
        return ListRange(field);
    }
    const double most = field.Maximum();
    const double high = field.MaximumValue() > 0 ? std::min(most, field.MaximumValue()) : most;
    const double low = field.Polarity() ? -most : field.ZeroValue();
    return WithinRule(field, {std::max(low, field.MinimumValue()), high});
}

std::string HertzText(double hertz) {
    struct Scale {
        double from;
        const char* unit;
    };
    constexpr std::array<Scale, 6> kScales{
        {{1e9, " GHz"}, {1e6, " MHz"}, {1e3, " kHz"}, {1, " Hz"}, {1e-3, " mHz"}, {1e-6, " uHz"}}};
    constexpr int kShown = 6;
    const double magnitude = std::fabs(NumberOf(Digits(hertz, kShown)));   // What is shown chooses the unit.
    if (magnitude == 0 || !std::isfinite(hertz)) {
        return GeneralText(hertz) + " Hz";
    }
    for (const Scale& scale : kScales) {
        if (magnitude >= scale.from) {
            return Digits(hertz / scale.from, kShown) + scale.unit;
        }
    }
    return Digits(hertz / kScales.back().from, kShown) + kScales.back().unit;
}

bool Met(const EntryResult& result) {
    constexpr double kTrace = 1e-14;   // What sums and quotients of frequencies leave over.
    return result.asked && result.reached &&
           (GeneralText(*result.asked) == GeneralText(*result.reached) ||
            std::fabs(*result.reached - *result.asked) <= kTrace * std::fabs(*result.asked));
}

std::string EntryNote(const EntryResult& result) {
    const LoopBox& row = RowOf(result.box);
    if (result.Refused() || !result.asked) {
        return result.refusal;
    }
    if (!result.reached) {
        return row.label + ("asked " + GeneralText(*result.asked)) + row.unit + "; it can't be read back";
    }
    if (Met(result)) {
        return row.label + GeneralText(*result.reached) + row.unit + " exact";
    }
    const double miss = *result.reached - *result.asked;
    const bool count = *row.unit == '\0';
    std::string text = row.label + ("asked " + GeneralText(*result.asked)) + row.unit + ", reached " +
                       GeneralText(*result.reached) + row.unit + ": " + (count ? Signed(miss, 6) : "");
    if (result.hertzPerUnit != 0) {
        text += (count ? ", " : "") + Signed(miss * result.hertzPerUnit, 6) + " Hz";
    }
    if (row.ppm && *result.asked != 0) {
        text += ", " + Signed(miss / std::fabs(*result.asked) * 1e6, 4) + " ppm";
    }
    return text;
}

std::string SentText(const Sent& sent) {
    constexpr std::size_t kNamed = 8;
    if (!sent.allowed) {
        return "not sent: AutoReload with Changes is off";
    }
    if (sent.registers.size() > kNamed) {
        return "sent " + std::to_string(sent.registers.size()) + " registers";
    }
    std::string names;
    for (const std::string& name : sent.registers) {
        names += (names.empty() ? "sent " : ", ") + name;
    }
    return names.empty() ? "nothing to send" : names;
}

std::string EntryNote(const EntryResult& result, const Sent& sent) {
    if (result.Refused() && sent.registers.empty()) {
        return result.refusal;
    }
    const std::string note = EntryNote(result);
    if (note.empty()) {
        return SentText(sent);   // Nothing was asked for: what was left from elsewhere went out.
    }
    return note + (Met(result) ? ", " : "; ") + SentText(sent);
}

std::string EntryHint(cPart& part, int pllIndex, EntryBox box) {
    const LoopBox& row = RowOf(box);
    std::string text = row.name + (*row.unit == '\0' ? "" : std::string(" in") + row.unit);
    IgnoringFailures([&] { text += Details(part.PLLs().At(pllIndex + 1), box); });
    return text;
}
