#include <filesystem>
#include <optional>
#include <string>
#include <utility>

#include "burst/SetupFile.h"
#include "burst/cBurst.h"
#include "core/Errors.h"
#include "core/Numbers.h"
#include "core/cPart.h"
#include "ini/PrivateProfile.h"
#include "ini/PrivateSetting.h"
#include "pll/cPLL.h"
#include "ports/Connector.h"

namespace {

const std::string kSetup = "SETUP";
const std::string kModes = "MODES";
const std::string kBurst = "BURST";
const std::string kNoKey = "\x7F";   // Nobody's value.

/// A text of a file for a message, cut where nobody would read on.
std::string Shortened(const std::string& text) {
    constexpr std::size_t kShown = 300;
    return text.size() > kShown ? text.substr(0, kShown) + "..." : text;
}

/// Applies a set-up file key by key. The device's items lead: what the file has beyond them isn't looked at.
class SetupReader {
public:
    SetupReader(cPart& part, SetupReport& report) : part_(part), report_(report) {}

    void ReadWiring();
    void ReadState();
    void ReadBurst();
    void ReportMissing();

private:
    [[nodiscard]] std::optional<std::string> Find(const std::string& section, const std::string& key) const;
    [[nodiscard]] std::string Text(const std::string& section, const std::string& key, const std::string& standard);
    void NoteMissing(const std::string& section, const std::string& key);
    void Skip(const std::string& section, const std::string& key, const std::string& why);

    /// Hands the key's text on, and reports the key if that fails.
    template <class Use>
    bool Try(const std::string& section, const std::string& key, const std::string& standard, Use use);

    void ReadPin(cPrgmPin& pin, const std::string& key);
    void ReadRegister(const std::string& number);
    void ReadEntry(const std::string& number);
    void AddLoad(const std::string& number);
    void AddPinChange(const std::string& number);
    void AddStart(const std::string& number);
    void AddStop(const std::string& number);
    bool TakePins(const std::string& number);

    cPart& part_;
    SetupReport& report_;
    int missing_ = 0;
    std::string firstMissing_;
};

std::optional<std::string> SetupReader::Find(const std::string& section, const std::string& key) const {
    std::string text = GetPrivateSetting(report_.file, section, key, kNoKey);
    return text == kNoKey ? std::nullopt : std::optional(std::move(text));
}

/// Whole sections may be left out, but one that breaks off belongs to a file that was cut.
void SetupReader::NoteMissing(const std::string& section, const std::string& key) {
    if (section != kSetup && PrivateProfileLine(section, key, report_.file) > 0 && missing_++ == 0) {
        firstMissing_ = '[' + section + "] " + key;
    }
}

std::string SetupReader::Text(const std::string& section, const std::string& key, const std::string& standard) {
    if (auto text = Find(section, key)) {
        return *std::move(text);
    }
    NoteMissing(section, key);
    return standard;
}

void SetupReader::Skip(const std::string& section, const std::string& key, const std::string& why) {
    const int line = PrivateProfileLine(section, key, report_.file);
    report_.skipped.push_back((line > 0 ? "line " + std::to_string(line) + ", [" : "[") + section + "] " + key + ": " +
                              Shortened(why));
}

template <class Use>
bool SetupReader::Try(const std::string& section, const std::string& key, const std::string& standard, Use use) {
    try {
        use(Text(section, key, standard));
        return true;
    } catch (const UserError& error) {
        Skip(section, key, error.what());
        return false;
    }
}

void SetupReader::ReadWiring() {
    Try(kSetup, "ADDRESS", "&H378", [&](const std::string& text) { part_.PortAddress(FileShort(text)); });
    Try(kSetup, "CLOCK", "1", [&](const std::string& text) { part_.ClockPosition(FileShort(text)); });
    Try(kSetup, "DATA", "2", [&](const std::string& text) { part_.DataPosition(FileShort(text)); });
    Try(kSetup, "LE", "4", [&](const std::string& text) { part_.LEPosition(FileShort(text)); });
    int item = 0;
    for (cPrgmPin& pin : part_.PrgmPins()) {
        ReadPin(pin, "PINPOSITION" + ItemNumber(item++));
    }
}

void SetupReader::ReadPin(cPrgmPin& pin, const std::string& key) {
    Try(kSetup, key, "1", [&](const std::string& text) {
        const std::int16_t line = FileShort(text);
        if (line < 0 || line >= kPortLines) {
            throw ConversionError("pin '" + pin.ID() + "' can't lie on line " + std::to_string(line) + ": " +
                                  kLinesInWords);
        }
        pin.Position(line);
    });
}

void SetupReader::ReadState() {
    for (int i = 0; i < part_.Registers().Count(); ++i) {
        ReadRegister(ItemNumber(i));
    }
    int item = 0;
    for (cPLL& pll : part_.PLLs()) {
        Try(kModes, "OSCIN" + ItemNumber(item++), "10",
            [&](const std::string& text) { pll.XtalFrequency(FileDouble(text)); });
    }
    Try(kModes, "PINS", "0", [&](const std::string& text) { part_.OutputPinValue(FileShort(text)); });
}

void SetupReader::ReadRegister(const std::string& number) {
    const std::string key = "NAME" + number;
    if (!Find(kModes, key)) {
        NoteMissing(kModes, key);
        return;
    }
    cRegister* named = nullptr;
    if (Try(kModes, key, "", [&](const std::string& name) { named = &part_.Registers().At(name); })) {
        Try(kModes, "VALUE" + number, "0",
            [&](const std::string& text) { named->Value(RoundHalfEven(FileDouble(text))); });
    }
}

void SetupReader::ReadBurst() {
    std::int32_t count = 0;
    Try(kBurst, "COUNT", "1", [&](const std::string& text) { count = FileLong(text); });
    for (std::int32_t i = 0; i < count; ++i) {
        if (part_.BurstCmds().Count() >= kMostBurstCommands) {
            Skip(kBurst, "COUNT",
                 "the burst list is full with " + std::to_string(kMostBurstCommands) + " commands; the last " +
                     std::to_string(count - i) + " were left out");
            return;
        }
        ReadEntry(ItemNumber(i));
    }
}

/// Each entry is added whole or not at all: what it needs is read and converted before anything changes.
void SetupReader::ReadEntry(const std::string& number) {
    std::int16_t kind = 0;
    if (!Try(kBurst, "COMMAND" + number, "2", [&](const std::string& text) { kind = FileShort(text); })) {
        return;
    }
    switch (kind) {
        case BurstKind::Load:
            AddLoad(number);
            break;
        case BurstKind::Pins:
            AddPinChange(number);
            break;
        case BurstKind::StartSBI:
            AddStart(number);
            break;
        case BurstKind::StopSBI:
            AddStop(number);
            break;
        case BurstKind::Delay:
            Try(kBurst, "REGISTER" + number, "1000",
                [&](const std::string& text) { part_.AddBurstCommand(text, BurstKind::Delay); });
            break;
        default:   // Refused, with the kinds that there are.
            Try(kBurst, "COMMAND" + number, "", [&](const std::string&) { part_.AddBurstCommand("", kind); });
    }
}

bool SetupReader::TakePins(const std::string& number) {
    return Try(kBurst, "PINS" + number, "0", [&](const std::string& text) { part_.OutputPinValue(FileShort(text)); });
}

void SetupReader::AddLoad(const std::string& number) {
    cRegister* loaded = nullptr;
    double value = 0;
    const auto find = [&](const std::string& name) { loaded = &part_.Registers().At(name); };
    const auto convert = [&](const std::string& text) { value = FileDouble(text); };
    if (Try(kBurst, "REGISTERNAME" + number, "RFN", find) && Try(kBurst, "REGISTER" + number, "1000", convert) &&
        TakePins(number)) {
        loaded->Value(value);
        part_.AddBurstCommand(loaded->ID(), BurstKind::Load);
    }
}

void SetupReader::AddPinChange(const std::string& number) {
    if (TakePins(number)) {
        part_.AddBurstCommand("", BurstKind::Pins);
    }
}

/// The start word was the first register's value when the command was built. It comes back into the command alone:
/// the register keeps what its own entries gave it.
void SetupReader::AddStart(const std::string& number) {
    std::optional<double> value;
    const std::string key = "REGISTER" + number;
    if (Find(kBurst, key) && !Try(kBurst, key, "", [&](const std::string& text) { value = FileDouble(text); })) {
        return;
    }
    const std::string name = Text(kBurst, "REGISTERNAME" + number, "RFN");
    if (part_.Registers().Count() == 0) {
        Skip(kBurst, "COMMAND" + number, "the device has no register to start an SBI load with");
    } else if (TakePins(number)) {
        part_.AddBurstCommand(name, BurstKind::StartSBI);
        cBurst& added = part_.BurstCmds().At(part_.BurstCmds().Count());
        added.Register(value.value_or(added.Register()));
    }
}

/// A stop is built with its own pins, which the device doesn't keep.
void SetupReader::AddStop(const std::string& number) {
    const std::int16_t pins = part_.OutputPinValue();
    if (!Find(kBurst, "PINS" + number) || TakePins(number)) {
        part_.AddBurstCommand("SBISTOP", BurstKind::StopSBI);
        part_.OutputPinValue(pins);
    }
}

/// Comes first: it may be what explains the rest.
void SetupReader::ReportMissing() {
    if (missing_ > 0) {
        report_.skipped.insert(report_.skipped.begin(), "The file breaks off: " + std::to_string(missing_) +
                                                            (missing_ == 1 ? " key is" : " keys are") +
                                                            " missing, the first is " + firstMissing_ +
                                                            "; the usual values were taken.");
    }
}

/// Why the file is not one of this device, or nothing if it is. A file that names no device counts as one of QRV's.
std::string Refusal(const cPart& part, const std::string& file) {
    const std::string built = GetPrivateSetting(file, kSetup, "PART", "QRV");
    const auto unreadable = PrivateProfileReadError(file);
    std::error_code unknown;
    if (unreadable && (built == part.ID() || std::filesystem::exists(file, unknown) || unknown)) {
        return file + " can't be read: " + *unreadable;
    }
    return built == part.ID() ? std::string()
                              : "This BurstCommand File was built for the " + Shortened(built) +
                                    ". Select the correct device before loading this file.";
}

}   // namespace

SetupReport LoadBurstCommands(cPart& part, const std::string& file) {
    SetupReport report;
    report.file = file;
    const ProfileSnapshot snapshot(file);
    report.refusal = Refusal(part, file);
    if (!report.refusal.empty()) {
        return report;
    }
    SetupReader reader(part, report);
    reader.ReadWiring();
    reader.ReadState();
    reader.ReadBurst();
    reader.ReportMissing();
    report.applied = true;
    part.UpdateDisplays();
    return report;
}
