#pragma once

#include <optional>
#include <string>
#include <string_view>

/// What a text typed as the period of the automatic reload comes to.
struct ReloadPeriod {
    std::string text;                  ///< What the box shows from now on.
    std::optional<int> milliseconds;   ///< Nothing for a negative period: the timer keeps the one it has.
};

/// Reads a number of seconds. What is no number, and anything above 65, becomes 65; 0 becomes 1.
ReloadPeriod ReadReloadPeriod(std::string_view text);
