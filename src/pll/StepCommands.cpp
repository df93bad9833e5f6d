#include "pll/StepCommands.h"

#include <array>

#include "core/cPart.h"
#include "pll/cPLL.h"

namespace {

/// The steps of N that a command makes; 0 for the numerator's.
constexpr std::array<int, 6> kStepsOfN{-1, 1, -10, 10, 0, 0};

/// One step of N in kHz.
double StepSize(std::string_view fpdText) {
    try {
        return EntryNumber(EntryBox::Fpd, fpdText);
    } catch (const ConversionError& error) {
        throw ConversionError(std::string("the step is unknown: ") + error.what());
    }
}

void StepNumerator(EntryResult& result, cPLL& pll, bool up) {
    result.handled = !pll.NumeratorName().empty();
    if (result.handled) {
        Attempt(result,
                [&] { StepField(result, pll, EntryBox::FractNum, pll.Part().PrgmBits().At(pll.NumeratorName()), up); });
    }
}

}   // namespace

cPLL* LoadedPLL(cPart& part, int pllIndex) {
    return part.ID().empty() ? nullptr : part.PLLs().Find(pllIndex + 1);
}

void StepVCO(EntryResult& result, cPLL& pll, std::string_view fpdText, int steps) {
    Attempt(result, [&] {
        const double kilohertz = StepSize(fpdText);
        const bool byTen = steps == 10 || steps == -10;
        const double step = kilohertz / (byTen ? 100 : 1000);
        WriteEntry(pll, EntryBox::VCO, pll.VCOFrequency() + (steps < 0 ? -step : step), result);
    });
}

void StepField(EntryResult& result, cPLL& pll, EntryBox box, cPrgmBits& field, bool up) {
    const bool list = field.HasList();
    const double before = field.Value();
    const double step = list ? 0 : field.EffectiveStepValue();
    up ? field.Increment() : field.Decrement();
    result.box = box;
    result.written = true;
    ReadBack(pll, box, result);
    result.asked = list ? result.reached : before + (up ? step : -step);   // A list has its own next entry.
}

EntryResult RunStep(cPart& part, int pllIndex, StepCommand command, std::string_view fpdText) {
    EntryResult result;
    cPLL* pll = LoadedPLL(part, pllIndex);
    if (pll == nullptr) {
        return result;
    }
    if (const int steps = kStepsOfN.at(static_cast<std::size_t>(command)); steps != 0) {
        result.handled = true;
        StepVCO(result, *pll, fpdText, steps);
    } else {
        StepNumerator(result, *pll, command == StepCommand::IncFrac);
    }
    return result;
}

EntryResult SetFrequency(cPart& part, int pllIndex, EntryBox box, std::string_view text) {
    EntryResult result;
    result.box = box;
    result.handled = !part.ID().empty();
    if (result.handled) {
        Attempt(result, [&] { WriteEntry(part.PLLs().At(pllIndex + 1), box, EntryNumber(box, text), result); });
    }
    return result;
}
