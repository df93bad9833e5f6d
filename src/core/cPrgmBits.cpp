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

/// The register, noted as it is for the case that the operation fails.
cRegister& cPrgmBits::Written() {
    cRegister& written = OwnRegister();
    parent_.NoteFieldWrite(written);
    return written;
}

void cPrgmBits::OwnBits(double count) {
    Written().SetBits(count, position_, length_, dataInverted_);
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
    v = RoundHalfEven(std::fabs(v));   // Once, before it is split.
    if (!std::isfinite(v)) {
        throw ConversionError("the bits of '" + id_ + "' can't hold " + GeneralText(v));
    }
    if (EffectiveStepValue() == 0 && !linkedBits_.empty()) {
        Other(linkedBits_).BitValue(v);   // No bits of its own count: the whole number is the linked field's.
        return;
    }
    OwnBits(v);
    if (!linkedBits_.empty()) {
        Other(linkedBits_).BitValue(std::floor(std::ldexp(v, -length_)));
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
        Written().SetBits(positive != polarityInverted_ ? 1 : 0, polarityPosition_, 1);
    }
}

void cPrgmBits::SetPositive() {
    WriteSign(true);
}

void cPrgmBits::SetNegative() {
    WriteSign(false);
}

/// The entry of the list that the bits select; nothing beyond the list, and before it, where a link to a constant
/// leads. A constant has the first.
std::optional<std::size_t> cPrgmBits::Index() const {
    const double index = position_ < 0 ? 0 : RoundHalfEven(BitValue());
    if (index >= 0 && index < static_cast<double>(Entries())) {
        return static_cast<std::size_t>(index);
    }
    return std::nullopt;
}

/// The bit code of an entry of a coded value list; nothing for an entry without one and a text that is no number.
std::optional<double> cPrgmBits::CodeAt(std::size_t index) const {
    const auto code = index < strings_.size() ? ParseNumber(strings_[index]) : std::nullopt;
    return code ? std::optional(RoundHalfEven(*code)) : std::nullopt;
}

std::optional<std::size_t> cPrgmBits::CodeIndex(double code) const {
    for (std::size_t i = 0; i < strings_.size(); ++i) {
        if (CodeAt(i) == RoundHalfEven(code)) {
            return i;
        }
    }
    return std::nullopt;
}

/// The number that an entry of the list is; nothing for a word.
std::optional<double> cPrgmBits::NumberAt(std::size_t index) const {
    return HasValueList() ? std::optional(values_[index]) : ParseNumber(strings_[index]);
}

std::vector<double> cPrgmBits::ListNumbers() const {
    std::vector<double> numbers;
    for (std::size_t i = 0; HasList() && i < Entries(); ++i) {
        if (const auto number = NumberAt(i)) {
            numbers.push_back(*number);
        }
    }
    return numbers;
}

double cPrgmBits::ListValue() const {
    const auto entry = IsCoded() && position_ >= 0 ? CodeIndex(BitValue()) : Index();
    return entry && *entry < Entries() ? NumberAt(*entry).value_or(static_cast<double>(*entry)) : 0;
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
    if (HasList() && position_ >= -1) {
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
    if (HasList() && position_ >= -1) {   // Also in a coded list the raw bits are the index here.
        const auto index = Index();
        return !index ? std::string() : HasValueList() ? GeneralText(values_[*index]) : strings_[*index];
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
    if (!HasList()) {
        v = WritePlain(v);
    } else if (!WriteList(v)) {
        return;
    }
    if (!mirrorBits_.empty()) {
        Other(mirrorBits_).Value(v);
    }
}

/// The entry whose number is nearest to v, the earlier of two at the same distance; the first number if none lies
/// within 10000. Nothing in a list of words.
std::optional<std::size_t> cPrgmBits::NearestEntry(double v) const {
    std::optional<std::size_t> nearest;
    double distance = 10000;
    for (std::size_t i = 0; i < Entries(); ++i) {
        const auto number = NumberAt(i);
        if (number && (!nearest || std::fabs(*number - v) < distance)) {
            nearest = i;
            distance = std::min(distance, std::fabs(*number - v));
        }
    }
    return nearest;
}

/// Writes the nearest entry; in a list of words v is the index. False, and nothing written, if it is none.
bool cPrgmBits::WriteList(double v) {
    if (const auto nearest = NearestEntry(v)) {
        if (const auto bits = IsCoded() ? CodeAt(*nearest) : std::optional(static_cast<double>(*nearest))) {
            BitValue(*bits);
        }
        return true;
    }
    const bool isIndex = v >= 0 && v < static_cast<double>(Entries()) && std::trunc(v) == v;
    if (isIndex) {
        BitValue(v);
    }
    return isIndex;
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
    if (step == 0) {
        OwnBits(0);
    } else if (magnitude >= zeroValue_) {   // Below it nothing is written, even where the count would round up to 0.
        OwnBits(RoundHalfEven((magnitude - zeroValue_) / step));
    }
    if (!linkedBits_.empty()) {
        v = v - OwnBits() * step + zeroValue_;
        Other(linkedBits_).Value(v);
    }
    return v;
}
