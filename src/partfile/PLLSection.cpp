#include "partfile/PLLSection.h"

#include <algorithm>
#include <array>

#include "core/Errors.h"
#include "core/Nearest.h"
#include "core/Numbers.h"
#include "core/PartLimits.h"
#include "core/cPart.h"
#include "partfile/PartFile.h"
#include "pll/EntryTexts.h"
#include "pll/cPLL.h"

namespace {

const std::string kSection = "PLLS";

std::string FieldName(const PartFile& file, const char* property, int item) {
    return file.Text(kSection, PartFile::Key(property, item), "");
}

void ReadReference(cPLL& pll, PartFile& file, int item) {
    constexpr const char* kStandard = "10";
    const std::string key = PartFile::Key("OSCIN", item);
    try {
        pll.XtalFrequency(file.Double(kSection, key, kStandard));
    } catch (const ConversionError& error) {
        file.ReportUnread(kSection, key, error.what(), kStandard);
        pll.XtalFrequency(NumberOf(kStandard));
    }
}

void ReadPLL(cPart& part, PartFile& file, int item) {
    const std::string name = file.Text(kSection, PartFile::Key("NAME", item), PartFile::Key("PLL", item));
    if (file.Repeats(kSection, item, name, part.PLLs().PositionOf(name), part.Items().plls)) {
        return;
    }
    part.AddPLL(name, FieldName(file, "N", item), FieldName(file, "R", item));
    part.Items().plls.push_back(item);
    part.SetupPLL(FieldName(file, "PD", item), FieldName(file, "IPO", item), FieldName(file, "TRI", item),
                  FieldName(file, "NP", item), FieldName(file, "RP", item));
    part.SetupPLLFraction(name, FieldName(file, "FRACTNUM", item), FieldName(file, "FRACTDEN", item));
    part.PLLs().At(name).FractCarry(file.Boolean(kSection, PartFile::Key("FRACTCARRY", item), "FALSE"));
    ReadReference(part.PLLs().At(name), file, item);
}

void CheckPLL(cPart& part, PartFile& file, int item) {
    constexpr std::array kNeeded{"N", "R"};
    constexpr std::array kOptional{"PD", "IPO", "TRI", "NP", "RP", "FRACTNUM", "FRACTDEN"};
    const auto check = [&](const char* property, bool needed) {
        const std::string field = FieldName(file, property, item);
        if (field.empty() && needed) {
            file.Report(Severity::Error, kSection, PartFile::Key(property, item),
                        "a PLL needs a bit field for its " + std::string(property) + " counter");
        } else if (!field.empty() && part.PrgmBits().Find(field) == nullptr) {
            file.Report(Severity::Error, kSection, PartFile::Key(property, item),
                        UnknownName("bit field", field, part.PrgmBits().Names()));
        }
    };
    for (const char* property : kNeeded) {
        check(property, true);
    }
    for (const char* property : kOptional) {
        check(property, false);
    }
    if (!FieldName(file, "FRACTNUM", item).empty() && FieldName(file, "FRACTDEN", item).empty()) {
        file.Report(Severity::Error, kSection, PartFile::Key("FRACTNUM", item),
                    "a numerator without a denominator (FRACTDEN): the PLL's frequencies can't be read");
    }
}

/// Reports what keeps one PLL from a frequency.
class StartCheck {
public:
    StartCheck(cPLL& pll, PartFile& file, int item) : pll_(pll), file_(file), item_(item) {}

    void Run() {
        if (!Complete()) {
            return;   // Reported where the field is named.
        }
        CheckTexts();
        try {
            CheckCounters();
        } catch (const UserError& error) {
            Report("NAME", Severity::Error, std::string("can't be computed: ") + error.what());
        }
        if (pll_.XtalFrequency() < 0) {
            Report("OSCIN", Severity::Warning, "the reference is below 0 MHz");
        }
    }

private:
    void Report(const char* property, Severity severity, const std::string& text) {
        file_.Report(severity, kSection, PartFile::Key(property, item_), text);
    }

    [[nodiscard]] bool Complete() const {
        const auto known = [&](const std::string& name) { return pll_.Part().PrgmBits().Find(name) != nullptr; };
        return known(pll_.NCounterName()) && known(pll_.RCounterName()) &&
               (pll_.NumeratorName().empty() || (known(pll_.NumeratorName()) && known(pll_.DenominatorName())));
    }

    void CheckTexts() {
        for (const char* property : {"N", "R", "FRACTNUM", "FRACTDEN"}) {
            CheckNumeric(property, Severity::Warning, "there the PLL counts with the number of the entry");
        }
        CheckNumeric("NP", Severity::Note, "the prescaler check can't calculate with it");
    }

    void CheckNumeric(const char* property, Severity severity, const std::string& effect) {
        const std::string name = FieldName(file_, property, item_);
        const cPrgmBits* field = pll_.Part().PrgmBits().Find(name);
        if (field == nullptr || field->HasValueList() || !field->HasStringList()) {
            return;   // A name that stands for nothing was reported.
        }
        const auto& texts = field->StringList();
        const auto word =
            std::find_if(texts.begin(), texts.end(), [](const std::string& t) { return !ParseNumber(t); });
        if (word != texts.end()) {
            Report(property, severity, "\"" + *word + "\" in the list of '" + name + "' is no number: " + effect);
        }
    }

    /// Reads the counters only: reading a frequency would repair an R of 0.
    void CheckCounters() {
        if (pll_.RValue() == 0) {
            Report("R", Severity::Warning, "R starts at 0: it becomes 1 as soon as a frequency is shown");
        }
        if (pll_.NValue() == 0) {
            Report("N", Severity::Warning, "N starts at 0, and so does the VCO frequency");
        }
        if (pll_.NumeratorName().empty()) {
            return;
        }
        const std::int32_t denominator = pll_.DenValue();
        if (denominator <= 0) {
            Report("FRACTDEN", Severity::Warning, "the denominator starts at 0: the fraction doesn't count");
        } else if (const auto range = RangeOf(pll_.Part().PrgmBits().At(pll_.NumeratorName()));
                   !pll_.FractCarry() && range && range->high < denominator) {
            Report("FRACTNUM", Severity::Note,
                   "the numerator ends at " + GeneralText(range->high) + ", below the denominator " +
                       std::to_string(denominator) + ": a frequency just below a whole N comes out a step low; " +
                       PartFile::Key("FRACTCARRY", item_) + "=TRUE gives the nearest");
        }
    }

    cPLL& pll_;
    PartFile& file_;
    int item_;
};

}   // namespace

void ReadPLLs(cPart& part, PartFile& file) {
    const int count = file.Short(kSection, "COUNT", "0");
    for (int i = 0; i < std::min(count, kMostPLLs); ++i) {
        ReadPLL(part, file, i);
    }
    if (count > kMostPLLs) {
        file.Report(Severity::Error, kSection, "COUNT",
                    std::to_string(count) + " PLLs are more than a device can have: the first " +
                        std::to_string(kMostPLLs) + " are made");
    }
}

void CheckPLLs(cPart& part, PartFile& file) {
    for (const int item : part.Items().plls) {
        CheckPLL(part, file, item);
    }
}

void CheckPLLStarts(cPart& part, PartFile& file) {
    int place = 0;
    for (cPLL& pll : part.PLLs()) {
        StartCheck(pll, file, FileItems::At(part.Items().plls, place++)).Run();
    }
}
