#include "pll/cPLL.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "core/Nearest.h"
#include "core/Numbers.h"
#include "core/cPart.h"

namespace {

constexpr double kHertzPerMega = 1e6;
constexpr double kHertzPerKilo = 1e3;

void NeedFinite(const std::string& pll, const char* what, double v) {
    if (!std::isfinite(v)) {
        throw ConversionError(GeneralText(v) + " is no " + what + " for PLL '" + pll + "'");
    }
}

/// The whole part of a wanted N: cut on a fractional loop, rounded on an integer one. Nothing beyond 32 bits.
std::optional<std::int32_t> WholePart(double v, bool fractional) {
    try {
        return RoundToLong(fractional ? std::trunc(v) : v);
    } catch (const ConversionError&) {
        return std::nullopt;
    }
}

/// By how much the counter goes from one whole part of N to the next.
double WholeStep(const cPrgmBits& counter) {
    return counter.HasList() ? 1 : std::max(1.0, counter.EffectiveStepValue());
}

}   // namespace

cPrgmBits& cPLL::Field(const std::string& name) const {
    if (cPrgmBits* found = parent_.PrgmBits().Find(name)) {
        return *found;
    }
    throw LookupError("PLL '" + id_ + "': " +
                      (name.empty() ? "one of its counters is bound to no bit field"
                                    : UnknownName("bit field", name, parent_.PrgmBits().Names())));
}

void cPLL::RepairR() {
    if (RValue() == 0) {
        RValue(1);
    }
}

/// A reference that was never given counts as 1 MHz where a frequency is to be met.
void cPLL::NeedReference() noexcept {
    if (xtalHertz_ == 0) {
        xtalHertz_ = kHertzPerMega;
    }
}

double cPLL::XtalFrequency() const noexcept {
    return xtalHertz_ / kHertzPerMega;
}

void cPLL::XtalFrequency(double megahertz) {
    NeedFinite(id_, "reference frequency", kHertzPerMega * megahertz);
    const double old = xtalHertz_;
    xtalHertz_ = kHertzPerMega * megahertz;
    if (xtalHertz_ == 0) {
        xtalHertz_ = 1;
    }
    if (vcoFixed_) {
        NValue(NValue() * (old / xtalHertz_));
    }
}

double cPLL::VCOFrequency() {
    RepairR();
    return ((xtalHertz_ / RValue()) * NValue()) / kHertzPerMega;
}

void cPLL::VCOFrequency(double megahertz) {
    NeedFinite(id_, "VCO frequency", megahertz);
    RepairR();
    NeedReference();
    const double comparison = xtalHertz_ / RValue();
    NValue((kHertzPerMega * megahertz) / comparison);
}

double cPLL::PDFrequency() {
    RepairR();
    return (xtalHertz_ / RValue()) / kHertzPerKilo;
}

void cPLL::PDFrequency(double kilohertz) {
    NeedFinite(id_, "phase detector frequency", kilohertz);
    const double reference = xtalHertz_ == 0 ? kHertzPerMega : xtalHertz_;
    if (kilohertz == 0) {
        throw RefusedError("PLL '" + id_ + "' can't compare at 0 kHz");
    }
    const double wanted = (reference / kilohertz) / kHertzPerKilo;
    try {
        static_cast<void>(RoundToLong(wanted));
    } catch (const ConversionError&) {
        throw RefusedError("PLL '" + id_ + "' can't compare at " + GeneralText(kilohertz) +
                           " kHz: R would not fit 32 bits");
    }
    NeedReference();
    if (!vcoFixed_) {
        RValue(wanted);
        return;
    }
    RepairR();   // Before and after: an R of 0 has no ratio, and N would be lost.
    const double oldR = RValue();
    RValue(wanted);
    RepairR();
    if (oldR != 0 && RValue() != 0) {
        NValue(NValue() / (oldR / RValue()));
    }
}

double cPLL::RValue() const {
    return Field(rCounter_).Value();
}

void cPLL::RValue(double v) {
    Field(rCounter_).Value(RoundToLong(v));
}

double cPLL::NValue() const {
    const double whole = Field(nCounter_).Value();
    if (!Fractional()) {
        return whole;
    }
    const std::int32_t denominator = DenValue();
    return denominator > 0 ? whole + static_cast<double>(NumValue()) / static_cast<double>(denominator) : whole;
}

void cPLL::NValue(double v) {
    constexpr std::int32_t kFallback = 1000;
    auto whole = WholePart(v, Fractional());
    if (!whole) {
        whole = kFallback;
        v = kFallback;
    }
    if (!Fractional()) {
        Field(nCounter_).Value(*whole);
    } else if (fractCarry_) {
        WriteNearest(v, *whole);
    } else {
        WriteSplit(v, *whole);
    }
}

void cPLL::WriteSplit(double v, std::int32_t whole) {
    // All names are looked up before anything is written.
    cPrgmBits& counter = Field(nCounter_);
    cPrgmBits& numerator = Field(numerator_);
    const cPrgmBits& denominatorField = Field(denominator_);
    counter.Value(whole);
    const std::int32_t denominator = RoundToLong(denominatorField.Value());
    // Where a limit of the counter raised it, the numerator goes as high as it can.
    numerator.Value(counter.Value() > whole ? denominator : RoundToLong((v - whole) * denominator));
}

/// The whole part with the best numerator below the denominator, or the next whole part where that comes nearer. How
/// near is read back from the fields, so that every limit of theirs counts.
void cPLL::WriteNearest(double v, std::int32_t whole) {
    cPrgmBits& counter = Field(nCounter_);
    cPrgmBits& numerator = Field(numerator_);
    const double denominator = std::max(1, DenValue());
    const auto missFrom = [&](double n) {
        counter.Value(n);
        numerator.Value(RoundHalfEven(std::clamp((v - counter.Value()) * denominator, 0.0, denominator - 1)));
        return std::fabs(NValue() - v);
    };
    const double step = WholeStep(counter);
    const double below = std::floor((whole - counter.ZeroValue()) / step) * step + counter.ZeroValue();
    const double miss = missFrom(below);
    constexpr double kHalfCount = 0.5;
    if (NValue() < v && miss * denominator > kHalfCount && missFrom(below + step) >= miss) {
        missFrom(below);
    }
}

std::int32_t cPLL::NumValue() const {
    return RoundToLong(Field(numerator_).Value());
}

void cPLL::NumValue(std::int32_t v) {
    Field(numerator_).Value(v);
}

std::int32_t cPLL::DenValue() const {
    return RoundToLong(Field(denominator_).Value());
}

void cPLL::DenValue(std::int32_t v) {
    Field(denominator_).Value(v);
}

double cPLL::Resolution() {
    const double comparison = PDFrequency() * kHertzPerKilo;
    if (!Fractional()) {
        const cPrgmBits& counter = Field(nCounter_);
        return counter.HasList() ? comparison : comparison * counter.EffectiveStepValue();
    }
    const std::int32_t denominator = DenValue();
    return denominator > 0 ? comparison / denominator : comparison;
}
