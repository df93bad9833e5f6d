#include "core/cPrgmPin.h"

#include <bit>

#include "core/Errors.h"
#include "core/cPart.h"
#include "ports/Connector.h"

std::int16_t cPrgmPin::Position() const noexcept {
    return static_cast<std::int16_t>(std::countr_zero(static_cast<std::uint16_t>(value_)));
}

void cPrgmPin::Position(std::int16_t line) {
    constexpr int kHighest = 14;   // The highest positive weight of a 16-bit port word.
    if (line < 0 || line > kHighest) {
        throw ConversionError("pin '" + id_ + "' can't lie on line " + std::to_string(line) + ": " + kLinesInWords);
    }
    value_ = static_cast<std::int16_t>(1U << static_cast<unsigned>(line));
}

bool cPrgmPin::Enabled() const noexcept {
    return (value_ & parent_.OutputPinValue()) == value_;
}

void cPrgmPin::Enabled(bool on) {
    if (on) {
        parent_.SetOutPins(value_);
    } else {
        parent_.ClearOutPins(value_);
    }
}

void cPrgmPin::Toggle() {
    parent_.ToggleOutPins(value_);
}
