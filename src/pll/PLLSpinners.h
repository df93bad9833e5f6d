#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "pll/FrequencyEntry.h"

class cPart;

/// The spinners of a PLL's page.
enum class PLLSpinner : unsigned char { RCounter, Fpd, NCounter, FractNum, FractDen };

struct SpinResult : EntryResult {
    std::optional<std::string> text;   ///< What the fraction's box beside the spinner shows at once.
};

/// One press of a spinner. R steps by its field; the phase detector frequency goes up by lowering R; N goes by one
/// phase detector frequency as the text of txtFpd says it (kHz), and stays if that is no number.
///
/// Handled with a device loaded that has a PLL of that index, counted from 0, the fraction's spinners where they are
/// bound to a field. Throws nothing that is the user's or the part file's fault.
SpinResult Spin(cPart& part, int pllIndex, PLLSpinner spinner, bool up, std::string_view fpdText);

[[nodiscard]] FollowUp FollowUpOf(PLLSpinner spinner);

/// A click on a label of the block diagram that shows this field. Not handled without a name.
Outcome ToggleLabel(cPart& part, const std::string& fieldName);

inline constexpr FollowUp kAfterLabel = ShowPLLsRegistersAndLoad;
