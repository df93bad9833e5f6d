#include "pll/PLLSpinners.h"

#include <array>

#include "core/cPart.h"
#include "pll/StepCommands.h"
#include "pll/cPLL.h"

namespace {

constexpr FollowUp kLoadFirst{{FollowUpStep::Load, FollowUpStep::ShowRegisters, FollowUpStep::ShowPLLs}};

struct Row {
    const std::string& (cPLL::*field)() const noexcept;
    EntryBox box;   // Of that field.
    bool lowersOnUp;
    bool showsText;
    FollowUp followUp;
};

constexpr std::array<Row, 5> kRows{{
    {&cPLL::RCounterName, EntryBox::RCounter, false, false, kRegistersFirst},
    {&cPLL::RCounterName, EntryBox::RCounter, true, false, kRegistersFirst},
    {&cPLL::NCounterName, EntryBox::VCO, false, false, kRegistersFirst},   // Goes through the VCO frequency instead.
    {&cPLL::NumeratorName, EntryBox::FractNum, false, true, kLoadFirst},
    {&cPLL::DenominatorName, EntryBox::FractDen, false, true, kLoadFirst},
}};

const Row& RowOf(PLLSpinner spinner) {
    return kRows.at(static_cast<std::size_t>(spinner));
}

}   // namespace

SpinResult Spin(cPart& part, int pllIndex, PLLSpinner spinner, SpinButton button, std::string_view fpdText) {
    SpinResult result;
    const Row& row = RowOf(spinner);
    // The fraction's spinners ask for their field alone.
    cPLL* pll = row.showsText ? part.PLLs().Find(pllIndex + 1) : LoadedPLL(part, pllIndex);
    if (pll == nullptr || (row.showsText && (pll->*row.field)().empty())) {
        return result;
    }
    result.handled = true;
    const bool up = button == SpinButton::Up;
    if (spinner == PLLSpinner::NCounter) {
        StepVCO(result, *pll, fpdText, up ? 1 : -1);
        return result;
    }
    Attempt(result, [&] {
        cPrgmBits& field = part.PrgmBits().At((pll->*row.field)());
        StepField(result, *pll, row.box, field, up != row.lowersOnUp);
        if (row.showsText) {
            result.text = field.Text();
        }
    });
    return result;
}

const FollowUp& FollowUpOf(PLLSpinner spinner) {
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
