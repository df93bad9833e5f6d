#pragma once

#include <string>
#include <utility>

#include "core/Errors.h"

/// What became of one action on a PLL's page.
struct Outcome {
    /// The action applied to something. Only then the action's FollowUp is to run, whether it was refused or not.
    bool handled = false;
    std::string refusal;   ///< Why it could not be done, in words for the user; empty otherwise.

    [[nodiscard]] bool Refused() const noexcept { return !refusal.empty(); }
};

/// Runs an action; what is wrong with the user's value or part file becomes the refusal.
template <class Action>
void Attempt(Outcome& outcome, Action&& action) {
    try {
        std::forward<Action>(action)();
    } catch (const UserError& error) {
        outcome.refusal = error.what();
    }
}
