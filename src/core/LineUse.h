#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ports/Connector.h"

class cPart;

// Which line of the port does what for the device, and where two jobs fall on one line.

enum class LineRole { None, Clock, Data, LE, Pin, Conflict };

/// The jobs of one line.
struct LineUse {
    LineRole role = LineRole::None;   ///< Conflict from two jobs up, of whatever kind.
    std::vector<std::string> names;   ///< "Clock", "Data", "LE", then the pins, in the device's order.
    bool operator==(const LineUse&) const = default;
};

/// The line that a port word stands for, 0 to 11; nothing if it is not exactly one of the twelve.
std::optional<int> LineOf(std::int16_t word);

/// The jobs of all lines. A Clock, Data or LE word that is no single line, and a pin beyond the twelve, are on none.
std::array<LineUse, kPortLines> LineUses(const cPart& part);
