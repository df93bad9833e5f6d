#include "pll/FrequencyEntry.h"

#include <array>

#include "core/Numbers.h"
#include "core/TypedNumber.h"
#include "core/cPart.h"
#include "pll/EntryTexts.h"
#include "pll/cPLL.h"

namespace {

constexpr FollowUp kAllIfAutoReload{{FollowUpStep::ShowAll, FollowUpStep::Load}, LoadRule::IfAutoReload};
constexpr FollowUp kAll{{FollowUpStep::ShowAll, FollowUpStep::Load}};

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

/// One box: what its number is, and what follows in each of the two events.
struct Row {
    double (*read)(cPLL&);
    void (*write)(cPLL&, double);
    double (*hertzPerUnit)(cPLL&);
    FollowUp onEnter;
    FollowUp onLostFocus;
};

constexpr std::array<Row, 7> kRows{{
    {[](cPLL& pll) { return pll.XtalFrequency(); }, [](cPLL& pll, double v) { pll.XtalFrequency(v); }, Mega,
     kAllIfAutoReload, kAllIfAutoReload},
    {[](cPLL& pll) { return pll.VCOFrequency(); }, WriteVCO, Mega, kAllIfAutoReload, kAll},
    {[](cPLL& pll) { return pll.PDFrequency(); }, [](cPLL& pll, double v) { pll.PDFrequency(v); }, Kilo, kPLLsFirst,
     kPLLsFirst},
    {ReadField<&cPLL::RCounterName>, WriteField<&cPLL::RCounterName>, Unknown, kRegistersFirst, kRegistersFirst},
    {ReadN, WriteN, Comparison, kRegistersFirst, kRegistersFirst},
    {ReadField<&cPLL::NumeratorName>, WriteField<&cPLL::NumeratorName>, FractionStep, kPLLsFirst, kPLLsFirst},
    {ReadField<&cPLL::DenominatorName>, WriteField<&cPLL::DenominatorName>, Unknown, kPLLsFirst, kPLLsFirst},
}};

const Row& RowOf(EntryBox box) {
    return kRows.at(static_cast<std::size_t>(box));
}

bool IsFraction(EntryBox box) {
    return box == EntryBox::FractNum || box == EntryBox::FractDen;
}

bool Applies(cPart& part, int pllIndex, EntryBox box) {
    if (!IsFraction(box)) {
        return !part.ID().empty();
    }
    const cPLL* pll = part.PLLs().Find(pllIndex + 1);
    return pll != nullptr && !(box == EntryBox::FractNum ? pll->NumeratorName() : pll->DenominatorName()).empty();
}

bool OnlyShown(cPart& part, int pllIndex, EntryBox box, bool userChanged) {
    const cPLL* pll = part.PLLs().Find(pllIndex + 1);
    return box == EntryBox::NCounter && !userChanged && pll != nullptr && !pll->NumeratorName().empty();
}

}   // namespace

double EntryNumber(EntryBox box, std::string_view text) {
    try {
        switch (box) {
            case EntryBox::Osc:
            case EntryBox::VCO:
                return TypedFrequency(text, FrequencyUnit::Megahertz);
            case EntryBox::Fpd:
                return TypedFrequency(text, FrequencyUnit::Kilohertz);
            default:
                return TypedNumber(text);
        }
    } catch (const ConversionError& error) {
        throw ConversionError(std::string(EntryName(box)) + ": " + error.what());
    }
}

void ReadBack(cPLL& pll, EntryBox box, EntryResult& result) {
    IgnoringFailures([&] {
        result.reached = RowOf(box).read(pll);
        result.hertzPerUnit = RowOf(box).hertzPerUnit(pll);
    });
}

void WriteEntry(cPLL& pll, EntryBox box, double number, EntryResult& result) {
    result.box = box;
    result.asked = number;
    RowOf(box).write(pll, number);
    result.written = true;
    ReadBack(pll, box, result);
}

EntryResult Enter(cPart& part, int pllIndex, EntryBox box, std::string_view text, bool userChanged) {
    EntryResult result;
    result.box = box;
    result.handled = Applies(part, pllIndex, box);
    if (!result.handled || OnlyShown(part, pllIndex, box, userChanged)) {
        return result;
    }
    Attempt(result, [&] {
        double number = EntryNumber(box, text);
        if (box == EntryBox::Osc && number < 0) {
            number = NumberOf(GeneralText(-number));   // As the box would show it.
        }
        WriteEntry(part.PLLs().At(pllIndex + 1), box, number, result);
    });
    return result;
}

bool SwallowsEnter(EntryBox box, const EntryResult& result) {
    return IsFraction(box) || result.handled;
}

const FollowUp& FollowUpOf(EntryBox box, EntryEvent event) {
    const Row& row = RowOf(box);
    return event == EntryEvent::Enter ? row.onEnter : row.onLostFocus;
}
