#pragma once

#include <array>
#include <string>
#include <vector>

class cPart;

/// What follows a change of a PLL: redrawing and loading, in the order that belongs to the control.
enum class FollowUpStep : unsigned char { Nothing, ShowPLLs, ShowRegisters, ShowAll, Load };

enum class LoadRule : unsigned char {
    Always,
    IfAutoReload   ///< Only while changes are loaded by themselves (mnuAutoReloadChange).
};

struct FollowUp {
    std::array<FollowUpStep, 3> steps;
    LoadRule rule = LoadRule::Always;

    bool operator==(const FollowUp&) const = default;
};

inline constexpr FollowUp kPLLsFirst{{FollowUpStep::ShowPLLs, FollowUpStep::ShowRegisters, FollowUpStep::Load}};
inline constexpr FollowUp kRegistersFirst{{FollowUpStep::ShowRegisters, FollowUpStep::ShowPLLs, FollowUpStep::Load}};

/// What a follow-up sent to the device.
struct Sent {
    bool allowed = false;                 ///< False: changes aren't loaded by themselves.
    std::vector<std::string> registers;   ///< Their names, in the order of sending.
};

/// Runs the steps in their order. What the display or the port throws ends it.
Sent RunFollowUp(cPart& part, const FollowUp& followUp, bool autoReloadChange);
