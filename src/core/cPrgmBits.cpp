#include "core/cPrgmBits.h"

#include <algorithm>
#include <cmath>

#include "core/FieldVisit.h"
#include "core/FormatNumber.h"
#include "core/Numbers.h"
#include "core/cPart.h"

// How a value maps to bits and back. Stepping, limits and the rules between fields are in FieldRules.cpp.

cRegister& cPrgmBits::OwnRegister() const {
    return parent_.Registers().At(register_);
}

cPrgmBits& cPrgmBits::Other(const std::string& name) const {
    return parent_.PrgmBits().At(name);
}

double cPrgmBits::OwnBits() const {
    return OwnRegister().GetBits(position_, length_, dataInverted_);
}

void cPrgmBits::OwnBits(double count) {
    OwnRegister().SetBits(count, position_, length_, dataInverted_);
}

std::int16_t cPrgmBits::GetStringArray(std::vector<std::string>& texts) const {
    texts = strings_;
    return static_cast<std::int16_t>(strings_.empty() ? 0 : strings_.size() - 1);
}

std::int16_t cPrgmBits::ArrayCount() const {
    if (HasValueList()) {
        return static_cast<std::int16_t>(values_.size());
    }
    return static_cast<std::int16_t>(HasStringList() ? strings_.size() : 0);
}

double cPrgmBits::EffectiveStepValue() const {
    return stepValueBitName_.empty() ? stepValue_ : Other(stepValueBitName_).Value();
}

double cPrgmBits::BitValue() const {
    const Visit visit(*this, Visit::BitRead);
    if (!visit) {
        return 0;
    }
    if (position_ < 0) {
        return -1;
    }
    const double own = OwnBits();
    return linkedBits_.empty() ? own : own + std::ldexp(RoundHalfEven(Other(linkedBits_).BitValue()), length_);
}

void cPrgmBits::BitValue(double v) {
    const Visit visit(*this, Visit::BitWrite);
    if (!visit || position_ < 0) {
        return;
    }
    v = std::fabs(v);
    if (!std::isfinite(v)) {
        throw ConversionError("the bits of '" + id_ + "' can't hold " + GeneralText(v));
    }
    if (EffectiveStepValue() == 0 && !linkedBits_.empty()) {
        Other(linkedBits_).BitValue(v);   // No bits of its own count: the whole number is the linked field's.
        return;
    }
    OwnBits(v);
    if (!linkedBits_.empty()) {
        Other(linkedBits_).BitValue(std::floor(std::ldexp(RoundHalfEven(v), -length_)));
    }
}

std::int16_t cPrgmBits::PolarityValue() const {
    if (!polarity_) {
        return 1;
    }
    const bool one = OwnRegister().GetBits(polarityPosition_, 1) != 0;
    return one != polarityInverted_ ? 1 : -1;
}

void cPrgmBits::WriteSign(bool positive) {
    if (polarity_) {
        OwnRegister().SetBits(positive != polarityInverted_ ? 1 : 0, polarityPosition_, 1);
    }
}

void cPrgmBits::SetPositive() {
    WriteSign(true);
}

void cPrgmBits::SetNegative() {
    WriteSign(false);
}

/// The index that the bits select in a list of so many entries, or nothing beyond it. A constant has the first.
std::optional<std::size_t> cPrgmBits::IndexIn(std::size_t entries) const {
    const double index = position_ < 0 ? 0 : RoundHalfEven(BitValue());
    if (index < static_cast<double>(entries)) {
        return static_cast<std::size_t>(index);
    }
    return std::nullopt;
}

/// The bit code of an entry of a coded value list; -1, which no bits give, for a text that is no number.
double cPrgmBits::CodeAt(std::size_t index) const {
    return RoundHalfEven(ParseNumber(strings_[index]).value_or(-1));
}

std::optional<std::size_t> cPrgmBits::CodeIndex(double code) const {
    for (std::size_t i = 0; i < strings_.size(); ++i) {
        if (CodeAt(i) == RoundHalfEven(code)) {
            return i;
        }
    }
    return std::nullopt;
}

/// The texts of the string list as numbers, or nothing if one of them isn't one: then the index is the value.
std::optional<std::vector<double>> cPrgmBits::NumericStrings() const {
    std::vector<double> numbers;
    numbers.reserve(strings_.size());
    for (const std::string& text : strings_) {
        const auto number = ParseNumber(text);
        if (!number) {
            return std::nullopt;
        }
        numbers.push_back(*number);
    }
    return numbers;
}

double cPrgmBits::ListValue() const {
    if (IsCoded() && position_ >= 0) {
        const auto entry = CodeIndex(BitValue());
        return entry && *entry < values_.size() ? values_[*entry] : 0;
    }
    if (HasValueList()) {
        const auto index = IndexIn(values_.size());
        return index ? values_[*index] : 0;
    }
    const auto index = IndexIn(strings_.size());
    if (!index) {
        return 0;
    }
    const auto numbers = NumericStrings();
    return numbers ? (*numbers)[*index] : static_cast<double>(*index);
}

double cPrgmBits::CombinedWithLinked(double own) const {
    if (linkedBits_.empty()) {
        return own;
    }
    const double linked = Other(linkedBits_).Value();
    return linked >= 0 ? linked + own : linked - own;
}

double cPrgmBits::Value() const {
    const Visit visit(*this, Visit::ValueRead);
    if (!visit) {
        return 0;
    }
    if (HasValueList() || HasStringList()) {
        return ListValue();
    }
    if (position_ < 0) {
        return 0;
    }
    // The sign multiplies the zero value alone, unlike in Text.
    return CombinedWithLinked(PolarityValue() * zeroValue_ + EffectiveStepValue() * OwnBits());
}

std::string cPrgmBits::Text() const {
    const Visit visit(*this, Visit::ValueRead);   // A circle back here is the same reading of the same number.
    if (!visit) {
        return {};
    }
    if (HasValueList()) {   // Also in a coded list the raw bits are the index here.
        const auto index = IndexIn(values_.size());
        return index ? GeneralText(values_[*index]) : std::string();
    }
    if (HasStringList()) {
        const auto index = IndexIn(strings_.size());
        return index ? strings_[*index] : std::string();
    }
    if (position_ < 0) {
        return "0" + units_;
    }
    const double value = CombinedWithLinked(PolarityValue() * (zeroValue_ + EffectiveStepValue() * OwnBits()));
    return formatString_.empty() ? GeneralText(value) + units_ : FormatNumber(value, formatString_);
}

void cPrgmBits::Value(double v) {
    const Visit visit(*this, Visit::ValueWrite);
    if (!visit || position_ < 0) {
        return;
    }
    if (!std::isfinite(v)) {
        throw ConversionError("'" + id_ + "' can't take the value " + GeneralText(v));
    }
    v = ApplyGreaterRule(v);
    if (!HasValueList() && !HasStringList()) {
        v = WritePlain(v);
    } else if (!WriteList(v)) {
        return;
    }
    if (!mirrorBits_.empty()) {
        Other(mirrorBits_).Value(v);
    }
}

/// Writes the entry nearest to v, the earlier of two at the same distance; the first if none lies within 10000.
/// Words have their index for a value: false, and nothing written, if v is none.
bool cPrgmBits::WriteList(double v) {
    const auto numbers = HasValueList() ? std::optional(values_) : NumericStrings();
    if (!numbers) {
        const bool isIndex = v >= 0 && v < static_cast<double>(strings_.size()) && std::trunc(v) == v;
        if (isIndex) {
            BitValue(v);
        }
        return isIndex;
    }
    std::size_t nearest = 0;
    double distance = 10000;
    for (std::size_t i = 0; i < numbers->size(); ++i) {
        const double d = std::fabs((*numbers)[i] - v);
        if (d < distance) {
            nearest = i;
            distance = d;
        }
    }
    if (!IsCoded()) {
        BitValue(static_cast<double>(nearest));
    } else if (nearest < strings_.size() && CodeAt(nearest) >= 0) {
        BitValue(CodeAt(nearest));
    }
    return true;
}

/// Writes a plain number within its limits; returns what is left for the mirror field.
double cPrgmBits::WritePlain(double v) {
    WriteSign(v >= 0);
    v = std::max(v, minimumValue_);
    if (maximumValue_ > 0) {
        v = std::min(v, maximumValue_);
    }
    v = std::min(v, Maximum());
    const double magnitude = std::fabs(v);
    const double step = EffectiveStepValue();
    // A magnitude below the zero value writes nothing, even where the count would round up to 0.
    if (magnitude >= zeroValue_) {
        OwnBits(step != 0 ? RoundHalfEven((magnitude - zeroValue_) / step) : 0);
    }
    if (!linkedBits_.empty()) {
        v = v - OwnBits() * step + zeroValue_;
        Other(linkedBits_).Value(v);
    }
    return v;
}
