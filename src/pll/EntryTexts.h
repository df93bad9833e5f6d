#pragma once

#include <string>

#include "pll/FrequencyEntry.h"

/// What was asked and what was reached, as "asked 1000.06 MHz, reached 1000.1 MHz: +40000 Hz, +40 ppm". For N and
/// the numerator the hertz are those of the VCO frequency. Empty if the entry was met to the 15 digits shown; the
/// refusal if there is one.
std::string EntryNote(const EntryResult& result, EntryBox box);

/// A box's tool tip: what it holds, its unit, its resolution at the present settings, and its range. What can't be
/// told, since the PLL or one of its fields is missing, is left out. Repairs an R of 0, as every read of a frequency.
std::string EntryHint(cPart& part, int pllIndex, EntryBox box);

/// A frequency in its most readable unit, six digits: "100 kHz", "12.5 mHz".
std::string HertzText(double hertz);
