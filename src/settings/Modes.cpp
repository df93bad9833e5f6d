#include "settings/Modes.h"

#include <algorithm>
#include <limits>
#include <map>
#include <optional>
#include <utility>

#include "core/DeviceDisplay.h"
#include "core/Errors.h"
#include "core/Numbers.h"
#include "core/cPart.h"
#include "ini/PrivateProfile.h"
#include "ini/PrivateSetting.h"
#include "partfile/PartFile.h"
#include "pll/cPLL.h"
#include "settings/PartFilePath.h"

namespace {

const std::string kModes = "MODES";
const std::string kNotSaved = "the device's settings are not saved: ";

/// The name in a message of a key that doesn't convert.
std::string Place(const std::string& path, const std::string& key) {
    return path + ":" + std::to_string(PrivateProfileLine(kModes, key, path)) + ": [" + kModes + "] " + key + ": ";
}

/// A reference in MHz that the PLL takes. ConversionError for any other.
double Reference(const cPLL& pll, double megahertz) {
    cPLL trial(pll.Part());
    trial.ID(pll.ID());
    trial.XtalFrequency(megahertz);
    return megahertz;
}

/// What a mode holds, read whole before anything of it is applied.
struct ModeState {
    std::vector<std::pair<cRegister*, double>> registers;
    std::vector<double> references;
    std::int16_t pins = 0;
};

template <class Convert>
auto ReadKey(const std::string& path, const std::string& key, const std::string& standard, Convert convert) {
    try {
        return convert(GetPrivateSetting(path, kModes, key, standard));
    } catch (const ConversionError& error) {
        throw ConversionError(Place(path, key) + error.what());
    }
}

ModeState ReadMode(cPart& part, const std::string& path, int index) {
    const ProfileSnapshot snapshot(path);
    ModeState mode;
    const auto number = [](const std::string& text) { return RoundHalfEven(FileDouble(text)); };
    for (int i = 0; i < part.Registers().Count(); ++i) {
        const std::string nameKey = PartFile::Key("NAME", index, i);
        const std::string name = GetPrivateSetting(path, kModes, nameKey, "");
        cRegister* named = part.Registers().Find(name);
        if (named == nullptr) {
            throw LookupError(name.empty()
                                  ? "mode number " + std::to_string(index) + " isn't in " + path + ": no " + nameKey +
                                        " under [" + kModes + "]"
                                  : Place(path, nameKey) + UnknownName("register", name, part.Registers().Names()));
        }
        mode.registers.emplace_back(named, ReadKey(path, PartFile::Key("VALUE", index, i), "0", number));
    }
    int place = 0;
    for (const cPLL& pll : part.PLLs()) {
        mode.references.push_back(
            ReadKey(path, PartFile::Key("OSCIN", index, place++), "10",
                    [&pll](const std::string& text) { return Reference(pll, FileDouble(text)); }));
    }
    mode.pins =
        ReadKey(path, PartFile::Key("PINS", index), "0", [](const std::string& text) { return FileShort(text); });
    return mode;
}

/// Reports what is wrong with the registers, references and pins of one mode.
class ModeCheck {
public:
    ModeCheck(cPart& part, PartFile& file, int mode) : part_(part), file_(file), mode_(mode) {}

    void Run() {
        for (int i = 0; i < part_.Registers().Count(); ++i) {
            const std::string key = PartFile::Key("NAME", mode_, i);
            const std::string name = file_.Text(kModes, key, "");
            if (name.empty()) {
                Report(PartFile::Key("MODE", mode_), key + " is missing: a mode names each of the device's " +
                                                         std::to_string(part_.Registers().Count()) + " registers");
                return;
            }
            if (part_.Registers().Find(name) == nullptr) {
                Report(key, UnknownName("register", name, part_.Registers().Names()));
            }
            CheckNumber(PartFile::Key("VALUE", mode_, i), "0", FileDouble);
        }
        int place = 0;
        for (const cPLL& pll : part_.PLLs()) {
            CheckNumber(PartFile::Key("OSCIN", mode_, place++), "10",
                        [&pll](const std::string& text) { return Reference(pll, FileDouble(text)); });
        }
        CheckNumber(PartFile::Key("PINS", mode_), "0", FileShort);
    }

private:
    void Report(const std::string& key, const std::string& text) {
        file_.Report(Severity::Error, kModes, key, text + "; the mode can't be chosen");
    }

    template <class Convert>
    void CheckNumber(const std::string& key, const char* standard, Convert convert) {
        try {
            static_cast<void>(convert(file_.Text(kModes, key, standard)));
        } catch (const ConversionError& error) {
            Report(key, error.what());
        }
    }

    cPart& part_;
    PartFile& file_;
    int mode_;
};

/// Whether the device came up without its file. PartFile reports that, of the file as a whole.
bool CameUpWithDefaults(cPart& part) {
    const auto& problems = part.FileProblems().All();
    return std::any_of(problems.begin(), problems.end(), [](const Problem& problem) {
        return problem.severity == Severity::Error && problem.line == 0 && problem.section.empty();
    });
}

/// What the PLL's box shows, as long as it is a number that can be read back.
std::string ReferenceText(const ReferenceTexts& references, int index, const cPLL& pll) {
    const auto place = static_cast<std::size_t>(index);
    const std::string_view shown = place < references.size() ? Trimmed(references[place]) : std::string_view();
    const auto number = ParseNumber(shown);
    const bool good = number && IgnoringFailures([&] { Reference(pll, *number); });
    return good ? std::string(shown) : GeneralText(pll.XtalFrequency());
}

/// The defaults that the device has in place of values of its file that couldn't be read, by section and key.
using Defaults = std::map<std::pair<std::string, std::string>, std::string>;

Defaults TakenDefaults(cPart& part) {
    Defaults taken;
    for (const Problem& problem : part.FileProblems().All()) {
        if (!problem.taken.empty()) {
            taken[{problem.section, problem.key}] = problem.taken;
        }
    }
    return taken;
}

bool SameValue(const std::string& one, const std::string& other) {
    bool same = false;
    if (!IgnoringFailures([&] { same = FileDouble(one) == FileDouble(other); })) {
        IgnoringFailures([&] { same = FileBoolean(one) == FileBoolean(other); });
    }
    return same;
}

/// The device settings in the device's file. A value that couldn't be read stays there as it is while the device still
/// has the default: it is for the user to mend.
class SettingsWriter {
public:
    SettingsWriter(cPart& part, const std::string& path) : unread_(TakenDefaults(part)), file_(path) {}

    void Write(const std::string& section, const std::string& key, const std::string& value) {
        const auto taken = unread_.find({section, key});
        if (taken == unread_.end() || !SameValue(taken->second, value)) {
            file_.Write(section, key, value);
        }
    }
    bool Commit() { return file_.Commit(); }

private:
    Defaults unread_;
    ProfileTransaction file_;
};

void WriteSettings(cPart& part, const ReferenceTexts& references, SettingsWriter& file) {
    file.Write("SETUP", "ADDRESS", std::to_string(part.PortAddress()));
    file.Write("SETUP", "CLOCK", std::to_string(part.ClockPosition()));
    file.Write("SETUP", "DATA", std::to_string(part.DataPosition()));
    file.Write("SETUP", "LE", std::to_string(part.LEPosition()));
    int place = 0;
    for (const cPrgmPin& pin : part.PrgmPins()) {
        const int item = FileItems::At(part.Items().pins, place++);
        file.Write("PINS", PartFile::Key("LOCATION", item), std::to_string(pin.Position()));
        file.Write("PINS", PartFile::Key("ENABLED", item), BooleanText(pin.Enabled()));
    }
    place = 0;
    for (const cRegister& stored : part.Registers()) {
        const int item = FileItems::At(part.Items().registers, place++);
        file.Write("REGISTERS", PartFile::Key("VALUE", item), FileText(stored.Value()));
    }
    for (int i = 0; i < part.PLLs().Count(); ++i) {
        file.Write("PLLS", PartFile::Key("OSCIN", FileItems::At(part.Items().plls, i)),
                   ReferenceText(references, i, part.PLLs().At(i + 1)));
    }
}

}   // namespace

void ReadModes(cPart& part, PartFile& file) {
    const int count = file.Short(kModes, "COUNT", "0");
    for (int i = 0; i < count; ++i) {
        part.Display().AddMode(i, file.Text(kModes, PartFile::Key("MODE", i), PartFile::Key("CAPTION", i)));
    }
}

void CheckModes(cPart& part, PartFile& file) {
    for (int i = 0, count = file.Count(kModes); i < count; ++i) {
        const bool written = !file.Text(kModes, PartFile::Key("MODE", i), "").empty() ||
                             !file.Text(kModes, PartFile::Key("NAME", i, 0), "").empty();
        if (written) {
            ModeCheck(part, file, i).Run();
        }
    }
}

int AddMode(cPart& part, const std::string& appPath, const std::string& name, const ReferenceTexts& references,
            std::string& error) {
    const std::string path = PartFilePath(appPath, part.ID());
    const ProfileSnapshot snapshot(path);
    // Without its count the new mode would take the place of the first, and a device without a file has no modes.
    if (const auto reason = PrivateProfileReadError(path)) {
        error = "the mode is not stored: can't read " + path + ": " + *reason;
        return -1;
    }
    int number = 0;
    try {
        number = std::max<int>(0, FileShort(GetPrivateSetting(path, kModes, "COUNT", "0")));
    } catch (const ConversionError& bad) {
        error = Place(path, "COUNT") + bad.what();
        return -1;
    }
    if (number == std::numeric_limits<std::int16_t>::max()) {
        error = Place(path, "COUNT") + "the file has no room for another mode";
        return -1;
    }
    ProfileTransaction file(path);
    file.Write(kModes, "COUNT", std::to_string(number + 1));
    file.Write(kModes, PartFile::Key("MODE", number), name);
    int place = 0;
    for (const cRegister& stored : part.Registers()) {
        file.Write(kModes, PartFile::Key("NAME", number, place), stored.ID());
        file.Write(kModes, PartFile::Key("VALUE", number, place++), FileText(stored.Value()));
    }
    for (int i = 0; i < part.PLLs().Count(); ++i) {
        file.Write(kModes, PartFile::Key("OSCIN", number, i), ReferenceText(references, i, part.PLLs().At(i + 1)));
    }
    file.Write(kModes, PartFile::Key("PINS", number), std::to_string(part.OutputPinValue()));
    error = file.Commit() ? std::string() : "the mode is not stored: " + PrivateProfileError();
    return error.empty() ? number : -1;
}

void RestoreMode(cPart& part, const std::string& appPath, int index) {
    const ModeState mode = ReadMode(part, PartFilePath(appPath, part.ID()), index);
    for (const auto& [named, value] : mode.registers) {
        named->Value(value);
    }
    for (std::size_t i = 0; i < mode.references.size(); ++i) {
        part.PLLs().At(static_cast<int>(i) + 1).XtalFrequency(mode.references[i]);
    }
    part.OutputPinValue(mode.pins);
    part.UpdateDisplays();
}

std::string SaveDeviceSettings(cPart& part, const std::string& appPath, const ReferenceTexts& references) {
    const std::string path = PartFilePath(appPath, part.ID());
    const auto unreadable = PrivateProfileReadError(path);
    const bool hasDefaults = CameUpWithDefaults(part);
    if (hasDefaults && unreadable && !PrivateProfileUnreadable(path)) {
        return {};   // It never had a file, and a mistyped name must not make one.
    }
    if (unreadable || hasDefaults) {
        return kNotSaved +
               (unreadable ? "can't read " + path + ": " + *unreadable
                           : path +
                                 " couldn't be read when the device was selected, but can be now; select the device "
                                 "again");
    }
    SettingsWriter file(part, path);
    WriteSettings(part, references, file);
    return file.Commit() ? std::string() : kNotSaved + PrivateProfileError();
}
