#pragma once

#include <optional>
#include <string>
#include <string_view>

// Binary strings: texts of "0" and "1", most significant bit first, the last character being bit 0. Only "1" counts
// as a one. Operands are aligned at their right ends.

/// A whole number in the base that has as many digits as `digits`; its first character is the zero digit. No
/// leading zeros; 0 gives one zero digit. A fraction is dropped, a negative number counts as 0.
std::string ToBase(double value, std::string_view digits);

double BinaryValue(std::string_view text);                                ///< An empty text gives 0.
std::string BinaryAnd(std::string_view one, std::string_view two);        ///< As long as the shorter operand.
std::string BinaryOr(std::string_view one, std::string_view two);         ///< As long as the longer operand.
std::string BinaryNot(std::string_view one, std::optional<int> length);   ///< `length` characters, by default one's.

/// One capital digit for each group of four, leading zeros included. `text` is filled up with zeros in front to a
/// multiple of four characters.
std::string BinaryToHex(std::string& text);
