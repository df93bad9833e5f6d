#include "pll/PLLSpinners.h"

#include <array>

#include "core/cPart.h"
#include "pll/StepCommands.h"
#include "pll/cPLL.h"

namespace {

constexpr FollowUp kLoadFirst{{FollowUpStep::Load, FollowUpStep::ShowRegisters, FollowUpStep::ShowPLLs}};

struct Row {
    const std::string& (cPLL::*field)() const noexcept;
    bool lowersOnUp;
    bool showsText;
    FollowUp followUp;
};

constexpr std::array<Row, 5> kRows{{
    {&cPLL::RCounterName, false, false, kRegistersFirst},
    {&cPLL::RCounterName, true, false, kRegistersFirst},
    {&cPLL::NCounterName, false, false, kRegistersFirst},   // Goes through the VCO frequency instead.
    {&cPLL::NumeratorName, false, true, kLoadFirst},
    {&cPLL::DenominatorName, false, true, kLoadFirst},
}};

const Row& RowOf(PLLSpinner spinner) {
    return kRows.at(static_cast<std::size_t>(spinner));
}

void StepField(SpinResult& result, cPrgmBits& field, const Row& row, bool up) {
    if (up != row.lowersOnUp) {
        field.Increment();
    } else {
        field.Decrement();
    }
    if (row.showsText) {
        result.text = field.Text();
    }
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
    Attempt(result, [&] {
        if (spinner == PLLSpinner::NCounter) {
            StepVCO(*pll, fpdText, up ? 1 : -1);
        } else {
            StepField(result, part.PrgmBits().At((pll->*row.field)()), row, up);
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
