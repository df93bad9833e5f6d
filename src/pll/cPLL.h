#pragma once

#include <cstdint>
#include <string>
#include <utility>

class cPart;
class cPrgmBits;

/// One synthesizer loop: a reference oscillator, the counters R and N and, on a fractional loop, a numerator over a
/// denominator. It holds the names of the bit fields and the reference; the counters are always read from the
/// registers, and a written frequency ends as values of the fields.
///
/// Units differ and are fixed: XtalFrequency and VCOFrequency in MHz, PDFrequency in kHz. With X the reference in
/// hertz, PDFrequency = (X / R) / 10^3 and VCOFrequency = ((X / R) * N) / 10^6, in this order of operations.
///
/// Reading a frequency repairs an R of 0 to 1 in the register. LookupError where a bound field doesn't exist.
class cPLL {
public:
    explicit cPLL(cPart& parent) : parent_(parent) {}

    [[nodiscard]] const std::string& ID() const noexcept { return id_; }
    void ID(std::string name) { id_ = std::move(name); }

    // The bound fields. A numerator's name makes the loop fractional.
    [[nodiscard]] const std::string& RCounterName() const noexcept { return rCounter_; }
    void RCounter(std::string field) { rCounter_ = std::move(field); }
    [[nodiscard]] const std::string& NCounterName() const noexcept { return nCounter_; }
    void NCounter(std::string field) { nCounter_ = std::move(field); }
    [[nodiscard]] const std::string& NumeratorName() const noexcept { return numerator_; }
    void Numerator(std::string field) { numerator_ = std::move(field); }
    [[nodiscard]] const std::string& DenominatorName() const noexcept { return denominator_; }
    void Denominator(std::string field) { denominator_ = std::move(field); }

    /// When true, a new reference or phase detector frequency keeps the VCO frequency by rescaling N.
    void VCOFixed(bool fixed) noexcept { vcoFixed_ = fixed; }

    /// Where a fraction rounds up to the denominator: true carries it into N, so that the nearest frequency is reached
    /// and the numerator stays below the denominator; false, as at the start, leaves N one step low with a numerator
    /// equal to the denominator, or what its field makes of that.
    [[nodiscard]] bool FractCarry() const noexcept { return fractCarry_; }
    void FractCarry(bool carry) noexcept { fractCarry_ = carry; }

    /// Reference in MHz; a write of 0 stores one hertz. N and R stand. ConversionError for what is no number in hertz.
    [[nodiscard]] double XtalFrequency() const noexcept;
    void XtalFrequency(double megahertz);

    /// MHz. A write is met by N alone, at the present R: to the nearest multiple of the phase detector frequency,
    /// or of that over the denominator.
    [[nodiscard]] double VCOFrequency();
    void VCOFrequency(double megahertz);

    /// kHz. A write gives a new R; N stands. RefusedError, with nothing changed, for 0 and for a frequency whose R
    /// doesn't fit 32 bits.
    [[nodiscard]] double PDFrequency();
    void PDFrequency(double kilohertz);

    [[nodiscard]] double RValue() const;
    void RValue(double v);   ///< Rounded, halves to even. ConversionError beyond 32 bits.

    /// N with its fraction. A write splits into the whole part and, over the present denominator, the numerator. A
    /// number whose whole part doesn't fit 32 bits counts as 1000.
    [[nodiscard]] double NValue() const;
    void NValue(double v);

    [[nodiscard]] std::int32_t NumValue() const;
    void NumValue(std::int32_t v);
    [[nodiscard]] std::int32_t DenValue() const;
    void DenValue(std::int32_t v);

    /// The step, in hertz, in which VCOFrequency can be set at the present R: the phase detector frequency times
    /// the step of the N counter, on a fractional loop over the denominator instead.
    [[nodiscard]] double Resolution();

    [[nodiscard]] cPart& Parent() const noexcept { return parent_; }
    [[nodiscard]] cPart& Part() const noexcept { return parent_; }

private:
    [[nodiscard]] cPrgmBits& Field(const std::string& name) const;
    [[nodiscard]] bool Fractional() const noexcept { return !numerator_.empty(); }
    void WriteSplit(double v, std::int32_t whole);
    void WriteNearest(double v, std::int32_t whole);
    void RepairR();
    void NeedReference() noexcept;

    cPart& parent_;
    std::string id_;
    std::string rCounter_;
    std::string nCounter_;
    std::string denominator_;
    std::string numerator_;
    double xtalHertz_ = 0;
    bool vcoFixed_ = false;
    bool fractCarry_ = false;
};
