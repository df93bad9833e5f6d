#include "pll/PrescalerCheck.h"

#include <cmath>
#include <cstdint>

#include "core/Numbers.h"

namespace {

/// A text as a whole number; nothing beyond what a double holds exactly, so that no product below leaves 64 bits.
std::optional<std::int64_t> WholeNumber(std::string_view text) {
    constexpr double kLargest = 9007199254740992.0;   // 2^53
    const auto number = ParseNumber(text);
    if (!number || std::fabs(*number) > kLargest) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(RoundHalfEven(*number));
}

std::string Text(std::int64_t value) {
    return std::to_string(value);
}

std::int64_t FlooredQuotient(std::int64_t n, std::int64_t p) {
    const std::int64_t quotient = n / p;
    return n % p != 0 && (n < 0) != (p < 0) ? quotient - 1 : quotient;
}

void CheckDual(PrescalerResult& result, std::int64_t n, std::int64_t p) {
    const std::int64_t a = n % p;
    const std::int64_t b = FlooredQuotient(n, p);
    result.a = Text(a);
    result.b = Text(b);
    result.aBroken = a > b;
}

void CheckQuad(PrescalerResult& result, std::int64_t n, std::int64_t p) {
    const std::int64_t a = n % 4;
    const std::int64_t c = FlooredQuotient(n, p);
    const double b = static_cast<double>(n - a - p * c) / 4;
    result.a = Text(a);
    result.b = GeneralText(b);
    result.c = Text(c);
    result.aBroken = a > c;
    result.bBroken = RoundHalfEven(b) > static_cast<double>(c);
}

}   // namespace

PrescalerResult CheckPrescaler(PrescalerMode mode, std::string_view nText, std::string_view pText) {
    PrescalerResult result;
    if (mode == PrescalerMode::Unset) {
        result.view = PrescalerResult::View::Frame;
        return result;
    }
    const auto n = WholeNumber(nText);
    const auto p = WholeNumber(pText);
    if (mode == PrescalerMode::None || !n || !p || *p == 0) {
        return result;
    }
    result.view = PrescalerResult::View::Values;
    if (mode == PrescalerMode::Dual) {
        CheckDual(result, *n, *p);
    } else {
        CheckQuad(result, *n, *p);
    }
    return result;
}
