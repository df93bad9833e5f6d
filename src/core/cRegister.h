#pragma once

#include <cstdint>
#include <string>
#include <utility>

class cPart;

/// One programmable register: a whole number held as a double, bit n weighing 2^n. How many bits it has is the
/// device's RegisterLength, one number for all registers; a double holds up to 53 exactly.
class cRegister {
public:
    explicit cRegister(cPart& parent) : parent_(parent) {}

    [[nodiscard]] const std::string& ID() const noexcept { return id_; }
    void ID(std::string name) { id_ = std::move(name); }

    [[nodiscard]] double Value() const noexcept { return value_; }
    /// Stores v as it is, unchecked, and marks it changed.
    void Value(double v) noexcept {
        value_ = v;
        change_ = true;
    }

    /// A one protects that bit from SetBits and ClrBit. Covers bits 0 to 30; negative is the 32-bit pattern.
    [[nodiscard]] std::int32_t Mask() const noexcept { return mask_; }
    void Mask(std::int32_t mask) noexcept { mask_ = mask; }

    /// True if the value may have changed since the last load. Reading clears the mark.
    [[nodiscard]] bool Change() noexcept { return std::exchange(change_, false); }
    void Change(bool change) noexcept { change_ = change; }

    /// On a device with register pairs: this one goes out last and gives the LE pulse.
    [[nodiscard]] bool LowByte() const noexcept { return lowByte_; }
    void LowByte(bool low) noexcept { lowByte_ = low; }

    /// Name of the other register of the pair, or empty.
    [[nodiscard]] const std::string& HighLowRegister() const noexcept { return highLowRegister_; }
    void HighLowRegister(std::string name) { highLowRegister_ = std::move(name); }

    /// Writes a field: `bits`, cut to `bitlength` bits, at `position`, but not where Mask protects, and marks the
    /// register changed. `inv` reverses the order of the field's bits. What lies beyond RegisterLength is cut off.
    /// A length of 0 or less, a negative position, a negative number and what is no number write nothing.
    void SetBits(double bits, std::int16_t position, std::int16_t bitlength, bool inv = false);

    /// Reads a field; 0 for a length of 0 or less and a negative position. Mask plays no part.
    [[nodiscard]] double GetBits(std::int16_t position, std::int16_t bitlength, bool inv = false) const;

    /// Clears a bit unless Mask protects it, and marks the register changed in any case but that of a position without
    /// a weight, below 0 or above 1023, which changes nothing in the other operations either.
    void ClrBit(std::int16_t position);

    /// Inverts a bit, protected or not, and marks the register changed.
    void ToggleBit(std::int16_t position);

    /// The value as a binary string of at least RegisterLength characters.
    [[nodiscard]] std::string RegisterString() const;

    [[nodiscard]] cPart& Parent() const noexcept { return parent_; }

    /// What an operation that fails puts back.
    struct State {
        double value;
        bool change;
    };
    [[nodiscard]] State Held() const noexcept { return {value_, change_}; }
    void Restore(const State& held) noexcept {
        value_ = held.value;
        change_ = held.change;
    }

private:
    cPart& parent_;
    std::string id_;
    std::string highLowRegister_;
    double value_ = 0;
    std::int32_t mask_ = 0;
    bool change_ = false;
    bool lowByte_ = false;
};
