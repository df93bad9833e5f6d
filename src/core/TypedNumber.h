#pragma once

#include <string_view>

/// The number in a text as an engineer types it; blanks round it don't matter. One comma is read as the decimal point
/// where it can't separate thousands: "433,5" and "0,125", but not "433,500". ConversionError says why a text is no
/// number and what is taken instead.
double TypedNumber(std::string_view text);

enum class FrequencyUnit : int { Kilohertz = 3, Megahertz = 6 };   ///< With its power of ten, in Hz.

/// The same for a frequency: a bare number is in `unit`, and so is the result. Behind the number may stand Hz, kHz,
/// MHz or GHz in any case, also without the "Hz": "2.4G", "433mhz". "mHz", written so, is refused for its two meanings.
double TypedFrequency(std::string_view text, FrequencyUnit unit);
