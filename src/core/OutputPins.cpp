#include "core/cPart.h"

// The state of all pins is one port word; none of this touches the port.

void cPart::OutputPinValue(std::int16_t word) {
    for (cPrgmPin& pin : prgmPins_) {
        pin.Enabled((word & pin.Value()) == pin.Value());
    }
}

void cPart::SetOutPins(std::int16_t word) noexcept {
    outputPinValue_ = static_cast<std::int16_t>(outputPinValue_ | word);
}

void cPart::ClearOutPins(std::int16_t word) noexcept {
    outputPinValue_ = static_cast<std::int16_t>(outputPinValue_ & ~word);
}

void cPart::ToggleOutPins(std::int16_t word) noexcept {
    outputPinValue_ = static_cast<std::int16_t>(outputPinValue_ ^ word);
}
