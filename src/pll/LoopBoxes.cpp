#include "pll/LoopBoxes.h"

#include "core/Numbers.h"
#include "core/cPart.h"
#include "pll/cPLL.h"

namespace {

cPrgmBits& Field(const cPLL& pll, const std::string& name) {
    return pll.Part().PrgmBits().At(name);
}

double Mega(cPLL& /*pll*/) {
    return 1e6;
}
double Kilo(cPLL& /*pll*/) {
    return 1e3;
}
double Comparison(cPLL& pll) {
    return pll.PDFrequency() * 1e3;
}
double Unknown(cPLL& /*pll*/) {
    return 0;
}

double FractionStep(cPLL& pll) {
    const std::int32_t denominator = pll.DenValue();
    return denominator > 0 ? Comparison(pll) / denominator : 0;
}

/// Without carry the 15 digits of the frequency that is shown may lie a trace below what the counters hold, which would
/// turn a numerator of 0 into the denominator, at an N one lower. A box that is left as it stands must move nothing.
void WriteVCO(cPLL& pll, double megahertz) {
    if (!pll.FractCarry() && pll.XtalFrequency() != 0 && GeneralText(megahertz) == GeneralText(pll.VCOFrequency())) {
        pll.NValue(pll.NValue());
    } else {
        pll.VCOFrequency(megahertz);
    }
}

template <auto Name>
double ReadField(cPLL& pll) {
    return Field(pll, (pll.*Name)()).Value();
}

template <auto Name>
void WriteField(cPLL& pll, double v) {
    Field(pll, (pll.*Name)()).Value(v);
}

double ReadN(cPLL& pll) {
    return pll.NumeratorName().empty() ? ReadField<&cPLL::NCounterName>(pll) : pll.NValue();
}

void WriteN(cPLL& pll, double n) {
    pll.NumeratorName().empty() ? WriteField<&cPLL::NCounterName>(pll, n) : pll.NValue(n);
}

constexpr std::array<LoopBox, 7> kBoxes{{
    {"Reference frequency", "", " MHz", FrequencyUnit::Megahertz, true, [](cPLL& pll) { return pll.XtalFrequency(); },
     [](cPLL& pll, double v) { pll.XtalFrequency(v); }, Mega, ShowAllAndLoadIfReloading, ShowAllAndLoadIfReloading},
    {"VCO frequency", "", " MHz", FrequencyUnit::Megahertz, true, [](cPLL& pll) { return pll.VCOFrequency(); },
     WriteVCO, Mega, ShowAllAndLoadIfReloading, ShowAllAndLoad},
    {"Phase detector frequency", "", " kHz", FrequencyUnit::Kilohertz, true,
     [](cPLL& pll) { return pll.PDFrequency(); }, [](cPLL& pll, double v) { pll.PDFrequency(v); }, Kilo,
     ShowPLLsRegistersAndLoad, ShowPLLsRegistersAndLoad},
    {"Value of the R counter", "R: ", "", std::nullopt, false, ReadField<&cPLL::RCounterName>,
     WriteField<&cPLL::RCounterName>, Unknown, ShowRegistersPLLsAndLoad, ShowRegistersPLLsAndLoad},
    {"Value of the N counter", "N: ", "", std::nullopt, true, ReadN, WriteN, Comparison, ShowRegistersPLLsAndLoad,
     ShowRegistersPLLsAndLoad},
    {"Numerator of the fraction", "numerator: ", "", std::nullopt, false, ReadField<&cPLL::NumeratorName>,
     WriteField<&cPLL::NumeratorName>, FractionStep, ShowPLLsRegistersAndLoad, ShowPLLsRegistersAndLoad},
    {"Denominator of the fraction", "denominator: ", "", std::nullopt, false, ReadField<&cPLL::DenominatorName>,
     WriteField<&cPLL::DenominatorName>, Unknown, ShowPLLsRegistersAndLoad, ShowPLLsRegistersAndLoad},
}};

}   // namespace

const LoopBox& RowOf(EntryBox box) {
    return kBoxes.at(static_cast<std::size_t>(box));
}
