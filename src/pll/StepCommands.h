#pragma once

#include <string_view>

#include "pll/FrequencyEntry.h"
#include "pll/Outcome.h"

class cPart;
class cPLL;
class cPrgmBits;

// The commands of the menu "Step Frequency", on the PLL of the current page. Handled with a device loaded that has a
// PLL of that index, counted from 0.

/// N goes by `steps`, 1 or 10, up or down, through the VCO frequency: by as many phase detector frequencies as the text
/// of txtFpd says (kHz). If that is no number the PLL stays as it is and the result says so.
EntryResult StepN(cPart& part, int pllIndex, int steps, std::string_view fpdText);

/// The numerator goes by one count of its field, without carry; not handled on an integer PLL.
EntryResult StepNumerator(cPart& part, int pllIndex, bool up);

/// "Set VCO Frequency" and its two neighbours, for EntryBox VCO, Fpd and Osc: applies the box's text as it is; a
/// negative reference stays negative. Handled with a device loaded.
EntryResult SetFrequency(cPart& part, int pllIndex, EntryBox box, std::string_view text);

/// One count of a box's bit field up or down, by the field's own rules.
void StepField(EntryResult& result, cPLL& pll, EntryBox box, cPrgmBits& field, bool up);

/// The PLL with that index, counted from 0; null without one, and with no device loaded.
[[nodiscard]] cPLL* LoadedPLL(cPart& part, int pllIndex);

inline constexpr FollowUp kAfterStep = ShowRegistersPLLsAndLoad;
inline constexpr FollowUp kAfterSet = ShowPLLsAndLoad;
