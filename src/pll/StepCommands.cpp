#include "pll/StepCommands.h"

#include "core/cPart.h"
#include "pll/cPLL.h"

namespace {

/// One step of N in kHz.
double StepSize(std::string_view fpdText) {
    try {
        return EntryNumber(EntryBox::Fpd, fpdText);
    } catch (const ConversionError& error) {
        throw ConversionError(std::string("the step is unknown: ") + error.what());
    }
}

}   // namespace

cPLL* LoadedPLL(cPart& part, int pllIndex) {
    return part.ID().empty() ? nullptr : part.PLLs().Find(pllIndex + 1);
}

EntryResult StepN(cPart& part, int pllIndex, int steps, std::string_view fpdText) {
    EntryResult result;
    if (cPLL* pll = LoadedPLL(part, pllIndex)) {
        result.handled = true;
        Attempt(result, [&] {
            const double kilohertz = StepSize(fpdText);
            const bool byTen = steps == 10 || steps == -10;
            const double step = kilohertz / (byTen ? 100 : 1000);
            WriteEntry(*pll, EntryBox::VCO, pll->VCOFrequency() + (steps < 0 ? -step : step), result);
        });
    }
    return result;
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

EntryResult StepNumerator(cPart& part, int pllIndex, bool up) {
    EntryResult result;
    cPLL* pll = LoadedPLL(part, pllIndex);
    result.handled = pll != nullptr && !pll->NumeratorName().empty();
    if (result.handled) {
        Attempt(result,
                [&] { StepField(result, *pll, EntryBox::FractNum, part.PrgmBits().At(pll->NumeratorName()), up); });
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
