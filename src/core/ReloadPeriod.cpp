#include "core/ReloadPeriod.h"

#include <cstdint>

#include "core/Errors.h"
#include "core/Numbers.h"

ReloadPeriod ReadReloadPeriod(std::string_view text) {
    constexpr std::int16_t kLongest = 65;
    constexpr double kMilliseconds = 1000;
    std::string shown(text);
    std::int16_t seconds = 0;
    const bool readable = IgnoringFailures([&] { seconds = RoundToShort(NumberOf(text)); });
    if (!readable || seconds > kLongest) {
        shown = std::to_string(kLongest);
    } else if (seconds == 0) {
        shown = "1";
    }
    const int period = RoundToLong(NumberOf(shown) * kMilliseconds);
    return {shown, period > 0 ? std::optional(period) : std::nullopt};
}
