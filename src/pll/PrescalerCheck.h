#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The choice in the menu "Prescaler Check"; Unset until one of its items was checked for the first time.
enum class PrescalerMode : unsigned char { Unset, None, Dual, Quad };

/// How an N splits up behind a prescaler, and whether the prescaler's counters can do it. Advice only.
struct PrescalerResult {
    enum class View : unsigned char {
        Hidden,   ///< Frame, boxes and their labels are hidden.
        Frame,    ///< The frame is shown; boxes and labels stay as they were, on green.
        Values    ///< The frame is shown, and each value that is given with its label; the others are hidden.
    };
    View view = View::Hidden;
    std::optional<std::string> a;
    std::optional<std::string> b;
    std::optional<std::string> c;
    bool aBroken = false;   ///< A breaks the rule: red instead of green.
    bool bBroken = false;
};

/// Dual modulus: N = P * B + A with A <= B. Quadruple modulus: N = P * C + 4 * B + A with A and B <= C; B has a
/// fraction where P is no multiple of 4, and is compared rounded. N and P are texts, rounded, halves to even; where
/// one is no number, or P is 0, nothing is shown. A PLL without an N prescaler is to be asked with None.
PrescalerResult CheckPrescaler(PrescalerMode mode, std::string_view nText, std::string_view pText);
