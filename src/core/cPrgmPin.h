#pragma once

#include <cstdint>
#include <string>
#include <utility>

class cPart;

/// A named output line of the board. It holds no level of its own: Enabled is a view of the device's
/// OutputPinValue, and two pins on one line share it. The pin called "Trigger" rises with LE in a load.
class cPrgmPin {
public:
    explicit cPrgmPin(cPart& parent) : parent_(parent) {}

    [[nodiscard]] const std::string& ID() const noexcept { return id_; }
    void ID(std::string name) { id_ = std::move(name); }

    /// Stored only: the trigger pin is known by its name.
    [[nodiscard]] bool Trigger() const noexcept { return trigger_; }
    void Trigger(bool trigger) noexcept { trigger_ = trigger; }

    /// The line's number: 0 to 7 the data lines, 8 to 11 "C1" to "C4". 12 to 14 never reach the port;
    /// ConversionError outside 0 to 14.
    [[nodiscard]] std::int16_t Position() const noexcept;
    void Position(std::int16_t line);

    [[nodiscard]] std::int16_t Value() const noexcept { return value_; }   ///< The line as a port word, 2^Position.

    [[nodiscard]] bool Enabled() const noexcept;
    void Enabled(bool on);
    void Toggle();

    [[nodiscard]] cPart& Parent() const noexcept { return parent_; }
    [[nodiscard]] cPart& Part() const noexcept { return parent_; }

private:
    cPart& parent_;
    std::string id_;
    std::int16_t value_ = 1;
    bool trigger_ = false;
};
