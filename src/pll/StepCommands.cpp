#include "pll/StepCommands.h"

#include <array>

#include "core/Numbers.h"
#include "core/cPart.h"
#include "pll/cPLL.h"

namespace {

/// The steps of N that a command makes; 0 for the numerator's.
constexpr std::array<int, 6> kStepsOfN{-1, 1, -10, 10, 0, 0};

void StepNumerator(Outcome& outcome, const cPLL& pll, bool up) {
    outcome.handled = !pll.NumeratorName().empty();
    if (outcome.handled) {
        Attempt(outcome, [&] {
            cPrgmBits& numerator = pll.Part().PrgmBits().At(pll.NumeratorName());
            up ? numerator.Increment() : numerator.Decrement();
        });
    }
}

}   // namespace

cPLL* LoadedPLL(cPart& part, int pllIndex) {
    return part.ID().empty() ? nullptr : part.PLLs().Find(pllIndex + 1);
}

void StepVCO(cPLL& pll, std::string_view fpdText, int steps) {
    const auto kilohertz = ParseNumber(fpdText);
    if (!kilohertz) {
        throw ConversionError("the phase detector frequency \"" + std::string(fpdText) +
                              "\" is no number, so the step is unknown: PLL '" + pll.ID() + "' stays as it is");
    }
    const bool byTen = steps == 10 || steps == -10;
    const double step = *kilohertz / (byTen ? 100 : 1000);
    pll.VCOFrequency(pll.VCOFrequency() + (steps < 0 ? -step : step));
}

Outcome RunStep(cPart& part, int pllIndex, StepCommand command, std::string_view fpdText) {
    Outcome outcome;
    cPLL* pll = LoadedPLL(part, pllIndex);
    if (pll == nullptr) {
        return outcome;
    }
    if (const int steps = kStepsOfN.at(static_cast<std::size_t>(command)); steps != 0) {
        outcome.handled = true;
        Attempt(outcome, [&] { StepVCO(*pll, fpdText, steps); });
    } else {
        StepNumerator(outcome, *pll, command == StepCommand::IncFrac);
    }
    return outcome;
}

EntryResult SetFrequency(cPart& part, int pllIndex, EntryBox box, std::string_view text) {
    EntryResult result;
    result.handled = !part.ID().empty();
    if (const auto number = ParseNumber(text); number && result.handled) {
        WriteEntry(part, pllIndex, box, *number, result);
    }
    return result;
}
