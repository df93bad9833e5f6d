#include "core/LineUse.h"

#include <bit>

#include "core/cPart.h"

std::optional<int> LineOf(std::int16_t word) {
    const auto bits = static_cast<std::uint16_t>(word);
    const int line = std::countr_zero(bits);
    return std::has_single_bit(bits) && line < kPortLines ? std::optional(line) : std::nullopt;
}

std::array<LineUse, kPortLines> LineUses(const cPart& part) {
    std::array<LineUse, kPortLines> uses;
    const auto add = [&uses](std::int16_t word, LineRole role, const std::string& name) {
        if (const auto line = LineOf(word)) {
            LineUse& use = uses[static_cast<std::size_t>(*line)];
            use.role = use.role == LineRole::None ? role : LineRole::Conflict;
            use.names.push_back(name);
        }
    };
    add(part.ClockPosition(), LineRole::Clock, "Clock");
    add(part.DataPosition(), LineRole::Data, "Data");
    add(part.LEPosition(), LineRole::LE, "LE");
    for (const cPrgmPin& pin : part.PrgmPins()) {
        add(pin.Value(), LineRole::Pin, pin.ID());
    }
    return uses;
}
