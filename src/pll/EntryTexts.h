#pragma once

#include <optional>
#include <string>

#include "pll/FrequencyEntry.h"

class cPrgmBits;

struct ValueRange {
    double low;
    double high;
};

/// What a field's Value can be, by its bits, its limits and, at the moment, its greater field; nothing for a constant
/// and a list of words.
std::optional<ValueRange> RangeOf(const cPrgmBits& field);

/// Whether what was asked was reached, to the 15 digits that are shown and the trace that arithmetic leaves.
bool Met(const EntryResult& result);

/// "2400.05 MHz exact" or "asked 1000.06 MHz, reached 1000.1 MHz: +40000 Hz, +40 ppm"; a count says its name first. For
/// N and the numerator the hertz are those of the VCO frequency. The refusal if there is one.
std::string EntryNote(const EntryResult& result);

/// The same with what was sent: "2400.05 MHz exact, sent R0".
std::string EntryNote(const EntryResult& result, const Sent& sent);

/// "sent R0, R1", "nothing to send", or why nothing was sent.
std::string SentText(const Sent& sent);

/// A box's tool tip: what it holds, its unit, its resolution at the present settings, and its range. What can't be
/// told, since the PLL or one of its fields is missing, is left out. Repairs an R of 0, as every read of a frequency.
std::string EntryHint(cPart& part, int pllIndex, EntryBox box);

/// A frequency in its most readable unit, six digits: "100 kHz", "12.5 mHz".
std::string HertzText(double hertz);
