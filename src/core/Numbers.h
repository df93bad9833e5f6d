#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// Every conversion between numbers and texts, and every rounding, that the program makes. None depends on a locale.

/// To the nearest whole number, halves to the even neighbour; any size.
double RoundHalfEven(double value);

/// The same into 32 or 16 bits. ConversionError if the result lies outside them or `value` is no number.
std::int32_t RoundToLong(double value);
std::int16_t RoundToShort(double value);

/// The lowest 64 bits of the whole part; 0 for a negative value and for what is no number.
std::uint64_t WholeBits(double value);

/// General decimal text: at most 15 significant digits, no trailing zeros; plain from 1E-7 to below 1E+15, outside
/// it with mantissa, "E", sign and at least two digits of exponent. Never "-0".
std::string GeneralText(double value);

/// The text of a number for a file: whole numbers that a double holds exactly with all their digits, others as
/// general decimal text.
std::string FileText(double value);

/// Numeric text: a decimal number with optional sign, point and exponent, blanks round it allowed. Nothing for
/// any other text and for a number beyond a double's range.
std::optional<double> ParseNumber(std::string_view text);

/// Numeric text. ConversionError for any other.
double NumberOf(std::string_view text);

/// A real number of a file: numeric text, or hexadecimal with the prefix "&H".
double FileDouble(std::string_view text);

/// A whole number of a file: numeric text, rounded, or hexadecimal with "&H"; "&H8000" and up (16 bits) and
/// "&H80000000" and up (32 bits) are the bit pattern. ConversionError if it is none or doesn't fit.
std::int16_t FileShort(std::string_view text);
std::int32_t FileLong(std::string_view text);

/// "TRUE" or "FALSE" in any case, or a number: 0 is false, any other true.
bool FileBoolean(std::string_view text);

std::string BooleanText(bool value);                        ///< "True" or "False".
std::string HexText(std::uint64_t value, int digits = 1);   ///< Capitals, at least `digits` of them.
std::string_view Trimmed(std::string_view text);            ///< Without blanks and tabs at the ends.

/// The suffix of an item's key: at least two digits, "00", "07", "100".
std::string ItemNumber(int number);
