#include "pll/PLLSpinners.h"

#include <array>

#include "core/cPart.h"
#include "pll/StepCommands.h"
#include "pll/cPLL.h"

namespace {

struct Row {
    const std::string& (cPLL::*field)() const noexcept;
    EntryBox box;   // Of that field.
    bool lowersOnUp;
    bool showsText;
    FollowUp followUp;
};

constexpr std::array<Row, 5> kRows{{
    {&cPLL::RCounterName, EntryBox::RCounter, false, false, ShowRegistersPLLsAndLoad},
    {&cPLL::RCounterName, EntryBox::RCounter, true, false, ShowRegistersPLLsAndLoad},
    {&cPLL::NCounterName, EntryBox::VCO, false, false,
     ShowRegistersPLLsAndLoad},   // Goes through the VCO frequency instead.
    {&cPLL::NumeratorName, EntryBox::FractNum, false, true, LoadAndShowRegistersPLLs},
    {&cPLL::DenominatorName, EntryBox::FractDen, false, true, LoadAndShowRegistersPLLs},
}};

const Row& RowOf(PLLSpinner spinner) {
    return kRows.at(static_cast<std::size_t>(spinner));
}

}   // namespace

SpinResult Spin(cPart& part, int pllIndex, PLLSpinner spinner, bool up, std::string_view fpdText) {
    if (spinner == PLLSpinner::NCounter) {
        return {StepN(part, pllIndex, up ? 1 : -1, fpdText), {}};
    }
    SpinResult result;
    const Row& row = RowOf(spinner);
    // The fraction's spinners ask for their field alone.
    cPLL* pll = row.showsText ? part.PLLs().Find(pllIndex + 1) : LoadedPLL(part, pllIndex);
    if (pll == nullptr || (row.showsText && (pll->*row.field)().empty())) {
        return result;
    }
    result.handled = true;
    Attempt(result, [&] {
        cPrgmBits& field = part.PrgmBits().At((pll->*row.field)());
        StepField(result, *pll, row.box, field, up != row.lowersOnUp);
        if (row.showsText) {
            result.text = field.Text();
        }
    });
    return result;
}

FollowUp FollowUpOf(PLLSpinner spinner) {
    return RowOf(spinner).followUp;
}

Outcome ToggleLabel(cPart& part, const std::string& fieldName) {
    Outcome outcome;
    outcome.handled = !fieldName.empty();
    if (outcome.handled) {
        Attempt(outcome, [&] { part.PrgmBits().At(fieldName).ToggleBit(); });
    }
    return outcome;
}
