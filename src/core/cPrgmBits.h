#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class cPart;
class cRegister;

/// A named bit field: a run of bits in one register, and the rule that turns them into the number or text that an
/// engineer thinks in. It holds no value: the value is always in the bits of its register.
///
/// By its lists a field has one of four forms (a list counts from two entries up): plain, a number of steps from
/// ZeroValue; a string list, an index into texts; a value list, an index into numbers; a coded value list, whose
/// texts are the codes of its numbers. A Position of -1 marks a constant, the first entry of its list; below it there
/// is neither bit nor constant, and the field reads 0.
///
/// Fields name each other, and a name is looked up when an operation runs; LookupError if it stands for nothing. An
/// operation that fails has changed no register. Where names close into a circle each field is visited once per
/// operation, and the chain ends.
class cPrgmBits {
public:
    explicit cPrgmBits(cPart& parent) : parent_(parent) {}

    // How the field is described. Plain properties, fixed once the part file has been read.
    [[nodiscard]] const std::string& ID() const noexcept { return id_; }
    void ID(std::string name) { id_ = std::move(name); }
    [[nodiscard]] const std::string& Register() const noexcept { return register_; }
    void Register(std::string name) { register_ = std::move(name); }
    [[nodiscard]] std::int16_t Position() const noexcept { return position_; }   ///< Lowest bit; -1 for a constant.
    void Position(std::int16_t bit) noexcept { position_ = bit; }
    [[nodiscard]] std::int16_t Length() const noexcept { return length_; }   ///< Bits in this register.
    void Length(std::int16_t bits) noexcept { length_ = bits; }
    [[nodiscard]] bool Display() const noexcept { return display_; }   ///< Has a control of its own.
    void Display(bool display) noexcept { display_ = display; }
    [[nodiscard]] double ZeroValue() const noexcept { return zeroValue_; }   ///< What the bits 0 stand for.
    void ZeroValue(double v) noexcept { zeroValue_ = v; }
    [[nodiscard]] double StepValue() const noexcept { return stepValue_; }   ///< What one count stands for.
    void StepValue(double v) noexcept { stepValue_ = v; }
    [[nodiscard]] double MinimumValue() const noexcept { return minimumValue_; }   ///< Lower limit of a Value set.
    void MinimumValue(double v) noexcept { minimumValue_ = v; }
    [[nodiscard]] double MaximumValue() const noexcept { return maximumValue_; }   ///< Upper limit; 0 or less: none.
    void MaximumValue(double v) noexcept { maximumValue_ = v; }
    [[nodiscard]] bool Polarity() const noexcept { return polarity_; }   ///< Has a sign, in a bit of its own.
    void Polarity(bool has) noexcept { polarity_ = has; }
    [[nodiscard]] std::int16_t PolarityPosition() const noexcept { return polarityPosition_; }
    void PolarityPosition(std::int16_t bit) noexcept { polarityPosition_ = bit; }
    [[nodiscard]] bool PolarityInverted() const noexcept { return polarityInverted_; }   ///< The sign bit 1 is -1.
    void PolarityInverted(bool inverted) noexcept { polarityInverted_ = inverted; }
    [[nodiscard]] bool DataInverted() const noexcept { return dataInverted_; }   ///< Bits stand in reverse order.
    void DataInverted(bool inverted) noexcept { dataInverted_ = inverted; }
    /// A number format such as "0.000" that Text applies to a plain number; empty for none.
    [[nodiscard]] const std::string& FormatString() const noexcept { return formatString_; }
    void FormatString(std::string pattern) { formatString_ = std::move(pattern); }
    [[nodiscard]] const std::string& LinkedBits() const noexcept { return linkedBits_; }   ///< The next higher part.
    void LinkedBits(std::string name) { linkedBits_ = std::move(name); }
    [[nodiscard]] const std::string& Description() const noexcept { return description_; }
    void Description(std::string text) { description_ = std::move(text); }
    void StepValueBitName(std::string name) { stepValueBitName_ = std::move(name); }   ///< Its Value is the step.
    void MirrorBits(std::string name) { mirrorBits_ = std::move(name); }               ///< It follows this field.
    void GreaterBitName(std::string name) { greaterBitName_ = std::move(name); }       ///< It limits this field.
    void GreaterEqual(bool atLeast) noexcept { greaterEqual_ = atLeast; }   ///< Not below it; false: not above it.
    void Units(std::string text) { units_ = std::move(text); }              ///< Put straight behind a plain number.

    void SetStringArray(std::vector<std::string> texts) { strings_ = std::move(texts); }
    void SetValueArray(std::vector<double> values) { values_ = std::move(values); }
    void InitializeStringArray(std::vector<std::string> texts) { SetStringArray(std::move(texts)); }
    void InitializeValueArray(std::vector<double> values) { SetValueArray(std::move(values)); }
    /// Copies the string list and returns its highest index; 0 with one entry or none.
    std::int16_t GetStringArray(std::vector<std::string>& texts) const;
    [[nodiscard]] std::int16_t ArrayCount() const;   ///< Entries of the value list, else of the string list, else 0.

    /// The raw count in the bits, linked fields included, without step, zero value or sign; -1 for a constant.
    /// A set stores the magnitude, rounded and cut to the bits, and looks at no limit, mirror or greater field.
    [[nodiscard]] double BitValue() const;
    void BitValue(double v);

    /// The engineer's number; of a string list the number that the entry is, or its index where it is none. A set
    /// applies the greater rule, the limits and the list, and moves the linked and the mirror field. A magnitude below
    /// ZeroValue writes nothing, unless the step is 0. A value that is no number is refused.
    [[nodiscard]] double Value() const;
    void Value(double v);

    [[nodiscard]] std::string Text() const;             ///< What a display shows.
    [[nodiscard]] std::int16_t PolarityValue() const;   ///< +1 or -1.
    void SetPositive();                                 ///< Writes the sign bit; nothing without Polarity.
    void SetNegative();
    void Increment();                                 ///< One count up; wraps at the top of the bits.
    void Decrement();                                 ///< One count down; an unsigned field stops at 0.
    void ToggleBit();                                 ///< Flips one bit; a wider field goes one count up.
    [[nodiscard]] double Maximum() const;             ///< The largest value of the bits, or number of the list.
    [[nodiscard]] std::int32_t Minimum() const;       ///< -Maximum with Polarity, else 0.
    [[nodiscard]] std::int16_t TotalLength() const;   ///< Bits, linked fields included.

    [[nodiscard]] cPart& Parent() const noexcept { return parent_; }
    [[nodiscard]] cPart& Part() const noexcept { return parent_; }

    // For the checks of a part file: what can only be set above.
    [[nodiscard]] const std::string& StepValueBitName() const noexcept { return stepValueBitName_; }
    [[nodiscard]] const std::string& MirrorBits() const noexcept { return mirrorBits_; }
    [[nodiscard]] const std::string& GreaterBitName() const noexcept { return greaterBitName_; }
    [[nodiscard]] bool GreaterEqual() const noexcept { return greaterEqual_; }

    [[nodiscard]] bool HasValueList() const noexcept { return values_.size() > 1; }
    [[nodiscard]] bool HasStringList() const noexcept { return strings_.size() > 1; }
    [[nodiscard]] bool HasList() const noexcept { return HasValueList() || HasStringList(); }
    [[nodiscard]] const std::vector<std::string>& StringList() const noexcept { return strings_; }
    [[nodiscard]] const std::vector<double>& ValueList() const noexcept { return values_; }
    /// What a Value set can choose from: the value list, or those entries of the string list that are numbers.
    [[nodiscard]] std::vector<double> ListNumbers() const;

    /// The part of Value that this field's own bits may contribute in steps: StepValue, or the value of the field
    /// that gives the step.
    [[nodiscard]] double EffectiveStepValue() const;

private:
    class Visit;
    enum class Direction { Up, Down };

    [[nodiscard]] cRegister& OwnRegister() const;
    [[nodiscard]] cRegister& Written();
    [[nodiscard]] cPrgmBits& Other(const std::string& name) const;
    [[nodiscard]] double OwnBits() const;
    void OwnBits(double count);
    void WriteSign(bool positive);
    [[nodiscard]] bool IsCoded() const noexcept { return HasValueList() && HasStringList(); }
    [[nodiscard]] std::optional<std::size_t> Index() const;
    [[nodiscard]] std::optional<double> CodeAt(std::size_t index) const;
    [[nodiscard]] std::optional<std::size_t> CodeIndex(double code) const;
    [[nodiscard]] std::size_t Entries() const noexcept { return HasValueList() ? values_.size() : strings_.size(); }
    [[nodiscard]] std::optional<double> NumberAt(std::size_t index) const;
    [[nodiscard]] std::optional<std::size_t> NearestEntry(double v) const;
    [[nodiscard]] double ListValue() const;
    [[nodiscard]] double CombinedWithLinked(double own) const;
    [[nodiscard]] double PlainMaximum() const;
    double ApplyGreaterRule(double v) const;
    double WritePlain(double v);
    bool WriteList(double v);
    void StepCode(Direction direction);
    void StepCount(Direction direction);
    void Step(Direction direction);
    void FollowUp(void (cPrgmBits::*operation)());

    cPart& parent_;
    std::string id_;
    std::string register_;
    std::string formatString_;
    std::string linkedBits_;
    std::string description_;
    std::string stepValueBitName_;
    std::string mirrorBits_;
    std::string greaterBitName_;
    std::string units_;
    std::vector<std::string> strings_{1};
    std::vector<double> values_{0};
    double zeroValue_ = 0;
    double stepValue_ = 1;
    double minimumValue_ = 0;
    double maximumValue_ = 0;
    mutable unsigned busy_ = 0;   ///< One bit for each operation that is running on this field.
    std::int16_t position_ = 0;
    std::int16_t length_ = 0;
    std::int16_t polarityPosition_ = 0;
    bool display_ = false;
    bool polarity_ = false;
    bool polarityInverted_ = false;
    bool dataInverted_ = false;
    bool greaterEqual_ = false;
};
