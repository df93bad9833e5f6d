#include "pll/FrequencyEntry.h"

#include "core/Numbers.h"
#include "core/cPart.h"
#include "pll/cPLL.h"

namespace {

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
        const auto& unit = RowOf(box).own;
        return unit ? TypedFrequency(text, *unit) : TypedNumber(text);
    } catch (const ConversionError& error) {
        throw ConversionError(std::string(RowOf(box).name) + ": " + error.what());
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
