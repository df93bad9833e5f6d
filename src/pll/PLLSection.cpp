#include "pll/PLLSection.h"

#include <array>

#include "core/Errors.h"
#include "core/Nearest.h"
#include "core/Numbers.h"
#include "core/PartFile.h"
#include "core/cPart.h"
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
        file.Report(Severity::Error, kSection, key,
                    std::string(error.what()) + "; the default \"" + kStandard + "\" is taken");
        pll.XtalFrequency(NumberOf(kStandard));
    }
}

void ReadPLL(cPart& part, PartFile& file, int item) {
    const std::string name = file.Text(kSection, PartFile::Key("NAME", item), PartFile::Key("PLL", item));
    try {
        part.AddPLL(name, FieldName(file, "N", item), FieldName(file, "R", item));
    } catch (const UserError& error) {
        file.Report(Severity::Error, kSection, PartFile::Key("NAME", item),
                    std::string(error.what()) + "; this one is left out");
        return;
    }
    part.Items().plls.push_back(item);
    part.SetupPLL(FieldName(file, "PD", item), FieldName(file, "IPO", item), FieldName(file, "TRI", item),
                  FieldName(file, "NP", item), FieldName(file, "RP", item));
    part.SetupPLLFraction(name, FieldName(file, "FRACTNUM", item), FieldName(file, "FRACTDEN", item));
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

}   // namespace

void ReadPLLs(cPart& part, PartFile& file) {
    const int count = file.Short(kSection, "COUNT", "0");
    for (int i = 0; i < count; ++i) {
        ReadPLL(part, file, i);
    }
}

void CheckPLLs(cPart& part, PartFile& file) {
    for (const int item : part.Items().plls) {
        CheckPLL(part, file, item);
    }
}
