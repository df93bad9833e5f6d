#pragma once

#include <optional>
#include <string_view>

#include "pll/LoopBoxes.h"
#include "pll/Outcome.h"

class cPLL;
class cPart;

/// What became of an entry or a step.
struct EntryResult : Outcome {
    EntryBox box = EntryBox::VCO;    ///< Whose number it is about, in its unit.
    bool written = false;            ///< It went to the PLL.
    std::optional<double> asked;     ///< What was to be written.
    std::optional<double> reached;   ///< What reads back; nothing if that fails.
    double hertzPerUnit = 0;         ///< What a miss by one unit is in hertz; 0 where that can't be said.
};

/// The number in a box's text, a frequency also with its unit. ConversionError, naming the box, for any other text.
double EntryNumber(EntryBox box, std::string_view text);

/// Takes over a box's text. A text that is no number writes nothing and is refused. A negative reference counts as
/// positive. The N box of a fractional PLL shows a fraction that its counter doesn't hold: its text is written only
/// if the user changed it, and then split into whole part and numerator.
///
/// Handled with a device loaded, the two boxes of the fraction where they are bound to a field. Throws nothing
/// that is the user's or the part file's fault.
EntryResult Enter(cPart& part, int pllIndex, EntryBox box, std::string_view text, bool userChanged);

/// The one way in which a number reaches a PLL, from a box, a step or a command line: as it is, a negative reference
/// too. UserError if it can't be written.
void WriteEntry(cPLL& pll, EntryBox box, double number, EntryResult& result);

/// What the PLL holds in place of that box's number. What can't be read is left out: the write before it stands.
void ReadBack(cPLL& pll, EntryBox box, EntryResult& result);
