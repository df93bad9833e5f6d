#pragma once

#include <QString>
#include <string>

/// The bits of a register as a row of text: a digit and two blanks a bit, no blanks behind the last. A bit's position
/// is that of its digit in the text, a multiple of 3 counted from 0. The lowest bits may be control bits.
class BitRow {
public:
    enum class Order { HighFirst, LowFirst };   ///< Which end of the register stands at the left.

    static constexpr int kStep = 3;   ///< Characters from one digit to the next.

    BitRow(int bits, int controlBits, Order order) : bits_(bits), control_(controlBits), order_(order) {}

    [[nodiscard]] int Count() const { return bits_; }
    [[nodiscard]] int Length() const { return bits_ > 0 ? kStep * bits_ - 2 : 0; }
    [[nodiscard]] bool IsControl(int position) const;
    [[nodiscard]] int BitAt(int position) const;   ///< The number of the bit, 0 the lowest.

    // Where the selection goes; the same position where it can't. It may leave the control bits, but not enter them.
    [[nodiscard]] int Left(int position) const;
    [[nodiscard]] int Right(int position) const;
    [[nodiscard]] int Higher(int position) const;   ///< One bit towards the high end.

    [[nodiscard]] QString Text(double value) const;   ///< The lowest bits of a register's value.
    [[nodiscard]] QString Ones() const;               ///< The bit numbers' last digits, over the digits of the row.
    [[nodiscard]] QString Tens() const;               ///< Their first digits.

    /// The digits of a row's text, the highest bit first.
    [[nodiscard]] std::string Digits(const QString& text) const;

private:
    template <class Digit>
    [[nodiscard]] QString Built(Digit digit) const;

    int bits_;
    int control_;
    Order order_;
};
