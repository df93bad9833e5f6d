#pragma once

#include <array>
#include <optional>

#include "core/TypedNumber.h"
#include "pll/FollowUp.h"

class cPLL;

/// The text boxes of a PLL's page, in the order of their table.
enum class EntryBox : unsigned char { Osc, VCO, Fpd, RCounter, NCounter, FractNum, FractDen };

/// All that is told of one box: what its number is, how it is said, and what follows when it was entered.
struct LoopBox {
    const char* name;                   ///< In words: "VCO frequency".
    const char* label;                  ///< In front of a count, which has no unit that would tell what it is.
    const char* unit;                   ///< With the blank in front; empty for a count.
    std::optional<FrequencyUnit> own;   ///< The unit of a frequency that is typed without one; none for a count.
    bool ppm;                           ///< A relative miss means something.
    double (*read)(cPLL&);
    void (*write)(cPLL&, double);
    double (*hertzPerUnit)(cPLL&);   ///< At the VCO; 0 where that can't be said.
    FollowUp onEnter;
    FollowUp onLostFocus;
};

/// The row of a box.
const LoopBox& RowOf(EntryBox box);
