#pragma once

#include <optional>
#include <string_view>

#include "pll/FollowUp.h"
#include "pll/Outcome.h"

class cPart;

/// The text boxes of a PLL's page, in the order of the table of boxes.
enum class EntryBox : unsigned char { Osc, VCO, Fpd, RCounter, NCounter, FractNum, FractDen };

/// The two events in which a box's text counts.
enum class EntryEvent : unsigned char { Enter, LostFocus };

struct EntryResult : Outcome {
    bool written = false;            ///< The text was a number and went to the PLL.
    std::optional<double> asked;     ///< What was to be written, in the box's unit.
    std::optional<double> reached;   ///< What reads back.
    double hertzPerUnit = 0;         ///< What a miss by one unit is in hertz; 0 where that can't be said.
};

/// Takes over a box's text. A text that is no number writes nothing and isn't refused. A negative reference
/// counts as positive. The N box of a fractional PLL shows a fraction that its counter doesn't hold: its text is
/// written only if the user changed it, and then split into whole part and numerator. A VCO frequency that is the
/// one shown leaves N as it is, digit for digit.
///
/// Handled with a device loaded, the two boxes of the fraction where they are bound to a field. Throws nothing
/// that is the user's or the part file's fault.
EntryResult Enter(cPart& part, int pllIndex, EntryBox box, std::string_view text, bool userChanged);

/// The same for a number at hand, as it is: a negative reference stays negative. Fills in a handled result.
void WriteEntry(cPart& part, int pllIndex, EntryBox box, double number, EntryResult& result);

/// Whether the box keeps the Enter key from the control: always for the fraction's boxes, else if it was handled.
[[nodiscard]] bool SwallowsEnter(EntryBox box, const EntryResult& result);

[[nodiscard]] const FollowUp& FollowUpOf(EntryBox box, EntryEvent event);
