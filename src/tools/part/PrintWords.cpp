#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iostream>

#include "core/FieldEntry.h"
#include "core/Numbers.h"
#include "ini/ProfileName.h"
#include "pll/EntryTexts.h"
#include "pll/cPLL.h"
#include "tools/part/Commands.h"
#include "tools/part/ReadDevice.h"

namespace {

bool SameText(std::string_view one, std::string_view other) {
    return ProfileNameEqual()(one, other);
}

/// A text that starts with a number, in its two parts: "2.50 mA".
struct Quantity {
    double number = 0;
    std::string_view unit;   ///< Empty where the text is no quantity.
};

Quantity QuantityIn(std::string_view text) {
    Quantity quantity;
    const char* last = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), last, quantity.number);
    if (error == std::errc()) {
        quantity.unit = Trimmed({end, static_cast<std::size_t>(last - end)});
    }
    return quantity;
}

/// The entry that a text names, by itself or as the same quantity written otherwise: "2.5mA" for "2.50 mA".
std::optional<std::size_t> EntryNamed(const std::vector<std::string>& entries, std::string_view text) {
    const auto matching = [&](auto matches) -> std::optional<std::size_t> {
        const auto found = std::find_if(entries.begin(), entries.end(), matches);
        return found == entries.end() ? std::nullopt : std::optional(static_cast<std::size_t>(found - entries.begin()));
    };
    if (const auto same = matching([&](const std::string& entry) { return SameText(entry, text); })) {
        return same;
    }
    const Quantity wanted = QuantityIn(text);
    if (wanted.unit.empty()) {
        return std::nullopt;
    }
    return matching([&](const std::string& entry) {
        const Quantity offered = QuantityIn(entry);
        return offered.number == wanted.number && SameText(offered.unit, wanted.unit);
    });
}

/// What a setting says besides its success.
struct Answer {
    bool taken = false;
    std::string note;
};

std::string TakenBy(const cPrgmBits& field) {
    if (!field.HasStringList() || field.HasValueList()) {
        return FieldLimits(field);
    }
    std::string entries;
    for (const std::string& entry : field.StringList()) {
        entries += (entries.empty() ? "" : ", ") + entry;
    }
    return entries;
}

Answer SetField(cPrgmBits& field, const std::string& text) {
    if (field.HasStringList() && !field.HasValueList()) {
        if (const auto entry = EntryNamed(field.StringList(), text)) {
            field.BitValue(static_cast<double>(*entry));
            return {true, ""};
        }
    }
    const auto number = ParseFieldEntry(field, text);
    if (!number) {
        return {false, "\"" + text + "\" is no value of '" + field.ID() + "': it takes " + TakenBy(field)};
    }
    field.Value(*number);
    const bool words = field.HasStringList() && !field.HasValueList() && !ParseNumber(field.Text());
    const std::string note = words ? (field.Value() == *number ? "" : "'" + field.ID() + "' takes " + TakenBy(field))
                                   : FieldEntryNote(field, *number);
    return {note.empty(), note};
}

struct Quantities {
    const char* suffix;
    EntryBox box;
};
constexpr std::array<Quantities, 3> kFrequencies{
    {{".vco", EntryBox::VCO}, {".osc", EntryBox::Osc}, {".fpd", EntryBox::Fpd}}};

/// The index of the PLL of that name; "pll" stands for the only one.
std::optional<int> PLLIndex(cPart& part, std::string_view name) {
    if (const int position = part.PLLs().PositionOf(name); position > 0) {
        return position - 1;
    }
    return part.PLLs().Count() == 1 && SameText(name, "pll") ? std::optional(0) : std::nullopt;
}

/// A frequency that isn't met is told; one that is missed by more than half the step of the PLL wasn't taken.
Answer SetFrequency(cPart& part, int index, EntryBox box, const std::string& text) {
    cPLL& pll = part.PLLs().At(index + 1);
    EntryResult result;
    WriteEntry(pll, box, EntryNumber(box, text), result);
    const std::string note = Met(result) ? "" : EntryNote(result);
    if (box != EntryBox::VCO || !result.reached) {
        return {box == EntryBox::Fpd || note.empty(), note};
    }
    const double miss = std::fabs(*result.reached - *result.asked) * result.hertzPerUnit;
    return {miss <= pll.Resolution() * 0.501, note};
}

Answer Set(cPart& part, const std::string& name, const std::string& value) {
    if (cPrgmBits* field = part.PrgmBits().Find(name)) {
        return SetField(*field, value);
    }
    const auto point = name.rfind('.');
    for (const Quantities& frequency : kFrequencies) {
        if (point != std::string::npos && SameText(name.substr(point), frequency.suffix)) {
            const std::string pll = name.substr(0, point);
            if (const auto index = PLLIndex(part, pll)) {
                return SetFrequency(part, *index, frequency.box, value);
            }
            return {false, UnknownName("PLL", pll, part.PLLs().Names())};
        }
    }
    return {false, UnknownName("bit field", name, part.PrgmBits().Names())};
}

bool Apply(cPart& part, const std::string& setting) {
    const auto equals = setting.find('=');
    if (equals == std::string::npos) {
        throw UsageError("'" + setting + "' is no setting: FIELD=VALUE or PLL.vco=MHZ");
    }
    Answer answer;
    try {
        answer = Set(part, setting.substr(0, equals), setting.substr(equals + 1));
    } catch (const UserError& error) {
        answer = {false, error.what()};
    }
    if (!answer.note.empty()) {
        std::cerr << "tarnwick-part: " << setting << ": " << answer.note << '\n';
    }
    return answer.taken;
}

}   // namespace

int PrintWords(const Arguments& arguments) {
    if (arguments.empty()) {
        throw UsageError("words needs a FILE");
    }
    ReadDevice device(arguments.front());
    cPart& part = device.Part();
    bool sound = !device.PrintFaults(Severity::Warning);
    for (auto setting = arguments.begin() + 1; setting != arguments.end(); ++setting) {
        sound = Apply(part, *setting) && sound;
    }
    std::size_t width = 0;
    for (const std::string_view name : part.Registers().Names()) {
        width = std::max(width, name.size());
    }
    for (const cRegister& one : part.Registers()) {
        std::cout << one.ID() << std::string(width - one.ID().size() + 2, ' ') << device.Word(one.Value()) << '\n';
    }
    return sound ? 0 : 1;
}
