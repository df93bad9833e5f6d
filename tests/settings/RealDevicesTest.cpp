#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "core/Numbers.h"
#include "core/cPart.h"
#include "pll/cPLL.h"
#include "ports/PortDrivers.h"
#include "settings/DeviceSetup.h"
#include "settings/SettingsFile.h"
#include "support/TempFolder.h"

// The shipped files of real devices against what other people's programs made of the same settings.

namespace {

using Json = nlohmann::json;

struct RealDevice {
    cPart part;

    explicit RealDevice(const std::string& name) {
        part.ID(name);
        ReadPartFile(part, PARTS_DIR "/" + name + ".ini");
    }
    cPrgmBits& Field(const std::string& name) { return part.PrgmBits().At(name); }
    double Value(const std::string& name) { return Field(name).Value(); }
    [[nodiscard]] std::uint64_t Word(const std::string& name) const {
        return WholeBits(part.Registers().At(name).Value());
    }
};

/// Which fields of a device follow from a frequency, and by which PLL.
struct Loop {
    const char* pll;
    std::vector<std::string> counters;
};
const std::map<std::string, Loop> kLoops = {
    {"ADF4351", {"RF PLL", {"INT", "FRAC"}}},
    {"ADF4106", {"RF PLL", {"A_COUNTER", "B_COUNTER"}}},
    {"ADF4153", {"RF PLL", {"INT", "FRAC"}}},
    {"MAX2871", {"RF PLL", {"N", "FRAC"}}},
    {"Si4133", {"IF", {"N_IF"}}},
    {"ADF7021", {"RF PLL", {"INT_N", "FRAC_N"}}},
};

constexpr auto kReserved =
    "DB20 and DB19 are reserved; the file has 3 there, as the recorded words and two drivers, the others have 0";
constexpr auto kSplit =
    "the driver splits N for a prescaler that it doesn't write, so its A isn't below P; N = P * B + A is the same";

/// A word that differs from the recorded one, and why it must.
struct Difference {
    std::string id;   ///< Of the vector; what it begins with where many differ alike.
    const char* registerName;
    std::uint64_t bits;     ///< Those that differ.
    int words;              ///< How many do, with the fields given and with the frequency given.
    bool onlyByFrequency;   ///< Not where the counters themselves are given.
    const char* reason;
};
const std::vector<Difference> kDifferences = {
    {"adf4351-rs-", "R5", 0x180000, 36, false, kReserved},
    {"uhd-", "R5", 0x180000, 12, false, kReserved},
    {"python-adf4351-", "R5", 0x180000, 2, false, kReserved},
    {"packing: ", "R5", 0x180000, 56, false, kReserved},
    {"ADF4106-006", "AB", 0x120, 1, true, kSplit},
    {"ADF4106-007", "AB", 0x240, 1, true, kSplit},
    {"ADF4106-008", "AB", 0x120, 1, true, kSplit},
    {"ADF4106-015", "AB", 0x120, 1, true, kSplit},
    {"ADF4106-026", "AB", 0x120, 1, true, kSplit},
    {"ADF4106-027", "AB", 0x240, 1, true, kSplit},
    {"ADF4106-032", "AB", 0x120, 1, true, kSplit},
    {"ADF4106-042", "AB", 0x120, 1, true, kSplit},
    {"ADF4106-083", "AB", 0xA20, 1, true, kSplit},
};

/// Makes the words of one vector, first from all its field codes, then, where it has a frequency, from that frequency
/// and the codes of the other fields; compares them and counts the explained differences.
class VectorCheck {
public:
    VectorCheck(std::string device, const Json& fields) : device_(std::move(device)), fields_(fields) {}

    void Run(const Json& vector) {
        const std::string id = vector.at("id");
        Compare(vector, id, false);
        if (vector.contains("vco")) {
            Compare(vector, id, true);
        }
    }

    [[nodiscard]] const std::map<const Difference*, int>& Explained() const { return explained_; }

private:
    void Compare(const Json& vector, const std::string& id, bool byFrequency) {
        SCOPED_TRACE(device_ + ' ' + id + (byFrequency ? " by its frequency" : " by its fields"));
        RealDevice device(device_);
        for (std::size_t i = 0; i < fields_.size(); ++i) {
            const std::string name = fields_.at(i);
            const Json& code = vector.at("codes").at(i);
            if (!code.is_null() && !(byFrequency && IsCounter(name))) {
                device.Field(name).BitValue(code.get<double>());
            }
        }
        if (byFrequency) {
            cPLL& pll = device.part.PLLs().At(kLoops.at(device_).pll);
            pll.XtalFrequency(vector.at("osc"));
            pll.VCOFrequency(vector.at("vco"));
        }
        for (const auto& [name, word] : vector.at("words").items()) {
            const std::uint64_t wanted = std::stoull(word.get<std::string>(), nullptr, 16);
            if (device.Word(name) != wanted) {
                Explain(id, name, device.Word(name) ^ wanted, byFrequency);
            }
        }
    }

    [[nodiscard]] bool IsCounter(const std::string& field) const {
        const auto& counters = kLoops.at(device_).counters;
        return std::find(counters.begin(), counters.end(), field) != counters.end();
    }

    void Explain(const std::string& id, const std::string& name, std::uint64_t bits, bool byFrequency) {
        for (const Difference& row : kDifferences) {
            if (id.starts_with(row.id) && name == row.registerName && bits == row.bits &&
                (byFrequency || !row.onlyByFrequency)) {
                ++explained_[&row];
                return;
            }
        }
        ADD_FAILURE() << name << " differs in the bits " << HexText(bits) << ", and nothing explains it";
    }

    std::string device_;
    const Json& fields_;
    std::map<const Difference*, int> explained_;
};

TEST(RealDevices, MakeTheWordsOfOtherPrograms) {
    std::map<const Difference*, int> explained;
    std::map<std::string, std::size_t> vectors;
    for (const char* file : {"adf4351-words.json", "other-words.json"}) {
        std::ifstream in(std::string(TEST_DATA_DIR "/") + file);
        const Json data = Json::parse(in);
        for (const auto& [device, content] : data.at("devices").items()) {
            VectorCheck check(device, content.at("fields"));
            for (const Json& vector : content.at("vectors")) {
                check.Run(vector);
            }
            vectors[device] = content.at("vectors").size();
            explained.insert(check.Explained().begin(), check.Explained().end());
        }
    }
    EXPECT_EQ(vectors, (std::map<std::string, std::size_t>{{"ADF4001", 4},
                                                           {"ADF4106", 40},
                                                           {"ADF4153", 13},
                                                           {"ADF4351", 108},
                                                           {"ADF7021", 25},
                                                           {"MAX2871", 42},
                                                           {"Si4133", 17}}));
    for (const Difference& row : kDifferences) {
        EXPECT_EQ(explained[&row], row.words) << row.id << ": " << row.reason;
    }
}

/// Every N that a prescaler allows, in the counters that the device takes: A below P and not above B.
TEST(RealDevices, DualModulusSplitsNAsTheDeviceDivides) {
    for (const char* name : {"ADF4106", "ADF4113"}) {
        RealDevice device(name);
        for (const int p : {8, 16, 32, 64}) {
            device.Field("PRESCALER").Value(p);
            const int lowest = p * (p - 1);
            for (const int n : {lowest, lowest + 1, lowest + p - 1, lowest + p, 5003, 9999, p * 8191 + p - 1}) {
                device.Field("N").Value(n);
                const double a = device.Value("A_COUNTER");
                const double b = device.Value("B_COUNTER");
                EXPECT_EQ(p * b + a, n) << name << " P " << p;
                EXPECT_EQ(device.Value("N"), n) << name << " P " << p;
                EXPECT_TRUE(a < p && a <= b) << name << " P " << p << " N " << n << ": A " << a << " B " << b;
            }
            device.Field("N").Value(lowest - 1);
            EXPECT_EQ(device.Value("N"), lowest) << name << " P " << p;
        }
    }
}

TEST(RealDevices, KeepTheLimitsOfTheirCounters) {
    struct Case {
        const char* device;
        std::vector<std::pair<const char*, double>> writes;   // In this order.
        const char* field;
        double value;
    };
    for (const Case& c : std::vector<Case>{
             {"ADF4351", {{"PRESCALER", 8}, {"INT", 30}}, "INT", 75},
             {"ADF4351", {{"PRESCALER", 4}, {"INT", 22}}, "INT", 23},
             {"ADF4351", {{"MOD", 100}, {"FRAC", 100}}, "FRAC", 99},
             {"ADF4351", {{"R_COUNTER", 3}}, "R", 3},
             {"ADF4351", {{"R_COUNTER", 3}, {"REF_DOUBLER", 1}}, "R", 1.5},
             {"ADF4351", {{"R_COUNTER", 3}, {"RDIV2", 1}}, "R", 6},
             {"ADF4351", {{"R_COUNTER", 3}, {"RDIV2", 1}, {"REF_DOUBLER", 1}}, "R", 3},
             {"ADF4351", {{"RDIV2", 1}, {"R", 1}}, "R_COUNTER", 1},
             {"ADF4153", {{"REF_DOUBLER", 0}, {"R_COUNTER", 9}}, "R", 9},
             {"ADF4153", {{"PRESCALER", 4}, {"INT", 1}}, "INT", 31},
             {"MAX2870", {{"DBR", 1}, {"R", 4}}, "R_COUNTER", 8},
             {"MAX2871", {{"BS", 1023}}, "BS_HIGH", 768},
             {"MAX2871", {{"M", 2}, {"FRAC", 2}}, "FRAC", 1},
             {"ADF7021", {{"FRAC_DEN", 5}}, "FRAC_DEN", 32768},
             {"ADF7021", {{"XTAL_DOUBLER", 1}, {"R_COUNTER", 3}}, "R", 1.5},
             {"ADF4002", {{"TIMER_COUNTER", 60}}, "TIMER_COUNTER", 59},
         }) {
        RealDevice device(c.device);
        for (const auto& [field, value] : c.writes) {
            device.Field(field).Value(value);
        }
        EXPECT_EQ(device.Value(c.field), c.value) << c.device << ' ' << c.writes.back().first;
    }
}

TEST(RealDevices, StandInOneMenuAndHaveHelpOnEveryField) {
    std::map<std::string, int> menus;
    for (const DeviceGroup& group : kDeviceGroups) {
        for (const std::string& name : SettingsFile(PARTS_DIR "/").Devices(group.section)) {
            ++menus[name];
        }
    }
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(PARTS_DIR)) {
        const std::string name = entry.path().stem().string();
        if (name == "tarnwick") {
            continue;
        }
        ++files;
        EXPECT_EQ(menus[name], 1) << name;
        RealDevice device(name);
        for (const cPrgmBits& field : device.part.PrgmBits()) {
            EXPECT_NE(field.Description(), "") << name << ' ' << field.ID();
        }
    }
    EXPECT_EQ(menus.size(), static_cast<std::size_t>(files)) << "a menu names a device without a file";
}

/// What the decoder calls a field, and ours. A text that differs from ours by more than blanks and capitals stands
/// behind it.
struct Label {
    const char* decoder;
    const char* field;
    std::map<std::string, std::string> texts;
};
const std::map<std::string, std::string> kSwitch = {{"disabled", "0"}, {"enabled", "1"}, {"off", "0"}, {"on", "1"}};
const std::vector<Label> kLabels = {
    {"INT", "INT", {}},
    {"FRAC", "FRAC", {}},
    {"MOD", "MOD", {}},
    {"Phase", "PHASE", {}},
    {"Prescalar", "PRESCALER", {{"4/5", "4"}, {"8/9", "8"}}},
    {"Phase Adjust", "PHASE_ADJUST", kSwitch},
    {"Counter Reset", "COUNTER_RESET", kSwitch},
    {"Charge Pump Three-State", "CP_THREE_STATE", {{"disabled", "active"}, {"enabled", "tristate"}}},
    {"Power-Down", "POWER_DOWN", kSwitch},
    {"PD Polarity", "PD_POLARITY", {{"negative", "-"}, {"positive", "+"}}},
    {"LDP", "LDP", {}},
    {"LDF", "LDF", {{"frac-n", "fractionaln"}, {"int-n", "integern"}}},
    {"Charge Pump Current Setting", "CP_CURRENT", {}},
    {"Double Buffer", "DOUBLE_BUFFER", kSwitch},
    {"R Counter", "R_COUNTER", {}},
    {"RDIV2", "RDIV2", kSwitch},
    {"Reference Doubler", "REF_DOUBLER", kSwitch},
    {"MUXOUT", "MUXOUT", {{"rcounteroutput", "rcounter"}, {"analoglockdetect", "analoguelockdetect"}}},
    {"Low Noise and Low Spur Modes", "NOISE_SPUR_MODE", {{"lownoisemode", "lownoise"}, {"lowspurmode", "lowspur"}}},
    {"Clock Divider", "CLOCK_DIVIDER", {}},
    {"Clock Divider Mode",
     "CLOCK_DIV_MODE",
     {{"clockdivideroff", "off"}, {"fastlockenable", "fastlock"}, {"resyncenable", "phaseresync"}}},
    {"CSR Enable", "CSR", kSwitch},
    {"Charge Cancellation", "CHARGE_CANCEL", kSwitch},
    {"ABP", "ABP", {{"6ns(frac-n)", "6ns"}, {"3ns(int-n)", "3ns"}}},
    {"Band Select Clock Mode", "BAND_SELECT_CLOCK_MODE", {}},
    {"Output Power", "OUTPUT_POWER", {}},
    {"Output Enable", "RF_OUT_ENABLE", kSwitch},
    {"AUX Output Power", "AUX_OUTPUT_POWER", {}},
    // The decoder has the labels of these two bits the wrong way round.
    {"AUX Output Select", "AUX_OUTPUT_ENABLE", {{"dividedoutput", "0"}, {"fundamental", "1"}}},
    {"AUX Output Enable", "AUX_OUTPUT_SELECT", {{"disabled", "divided"}, {"enabled", "fundamental"}}},
    {"MTLD", "MTLD", kSwitch},
    {"VCO Power-Down", "VCO_POWER_DOWN", {{"vcopoweredup", "0"}, {"vcopowereddown", "1"}}},
    {"Band Select Clock Divider", "BAND_SELECT_CLOCK_DIV", {}},
    {"RF Divider Select", "RF_DIVIDER_SELECT", {}},
    {"Feedback Select", "FEEDBACK_SELECT", {}},
    {"LD Pin Mode", "LD_PIN_MODE", {}},
};

/// In small letters, without blanks, without the resistor that the decoder names and the sign of division.
std::string Plain(std::string text) {
    text = text.substr(0, text.find('@'));
    std::string plain;
    for (const char c : text) {
        if (static_cast<unsigned char>(c) > 0x20 && static_cast<unsigned char>(c) < 0x7F) {
            plain += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        }
    }
    return plain;
}

/// What the decoder reads from a load of the whole device: label and value.
std::vector<std::pair<std::string, std::string>> Decoded(cPart& part) {
    const TempFolder folder;
    const MadePort made = MakePort({.trace = "load.vcd"}, folder.Path(""));
    made.port->OpenTVicPort();
    part.UsePort(*made.port);
    part.LoadAll();
    made.port->Idle();
    const std::string command = "sigrok-cli -I vcd -i " + folder.Path("load.vcd") +
                                " -P spi:clk=D0:mosi=D1:cs=D2:wordsize=32,adf435x -A adf435x > " + folder.Path("out");
    EXPECT_EQ(::system(command.c_str()), 0) << "sigrok-cli doesn't run; install the package sigrok-cli";
    std::vector<std::pair<std::string, std::string>> lines;
    std::istringstream in(folder.Read("out"));
    for (std::string line; std::getline(in, line);) {
        const auto name = line.find(": ") + 2;
        const auto value = line.find(": ", name);
        lines.emplace_back(line.substr(name, value - name), line.substr(value + 2));
    }
    return lines;
}

/// Three settings in which every field but the reserved codes differs from one to the next.
const std::vector<std::string> kSettings = {
    "",
    "INT=0x8A FRAC=534 MOD=625 PHASE=77 PRESCALER=0 PHASE_ADJUST=1 COUNTER_RESET=1 CP_THREE_STATE=1 POWER_DOWN=1 "
    "PD_POLARITY=0 LDP=1 LDF=1 CP_CURRENT=2 DOUBLE_BUFFER=1 R_COUNTER=17 RDIV2=1 REF_DOUBLER=1 MUXOUT=3 "
    "NOISE_SPUR_MODE=3 CLOCK_DIVIDER=2 CLOCK_DIV_MODE=1 CSR=1 CHARGE_CANCEL=1 ABP=1 BAND_SELECT_CLOCK_MODE=1 "
    "OUTPUT_POWER=0 RF_OUT_ENABLE=0 AUX_OUTPUT_ENABLE=1 AUX_OUTPUT_POWER=1 AUX_OUTPUT_SELECT=0 MTLD=1 "
    "VCO_POWER_DOWN=1 BAND_SELECT_CLOCK_DIV=3 RF_DIVIDER_SELECT=3 FEEDBACK_SELECT=0 LD_PIN_MODE=3",
    "INT=0xFFFF FRAC=4094 MOD=4095 PHASE=4095 CP_CURRENT=15 R_COUNTER=1023 MUXOUT=5 CLOCK_DIVIDER=4095 "
    "CLOCK_DIV_MODE=2 OUTPUT_POWER=2 AUX_OUTPUT_POWER=3 AUX_OUTPUT_SELECT=1 BAND_SELECT_CLOCK_DIV=255 "
    "RF_DIVIDER_SELECT=6 LD_PIN_MODE=0",
};

TEST(RealDevices, AnIndependentDecoderNamesTheFieldsThatTheProgramShows) {
    for (const std::string& settings : kSettings) {
        RealDevice device("ADF4351");
        std::istringstream words(settings);
        for (std::string word; words >> word;) {
            const auto equals = word.find('=');
            device.Field(word.substr(0, equals)).BitValue(std::stoi(word.substr(equals + 1), nullptr, 0));
        }
        std::map<std::string, int> seen;
        for (const auto& [name, value] : Decoded(device.part)) {
            const auto label = std::find_if(kLabels.begin(), kLabels.end(),
                                            [&, &decoded = name](const Label& row) { return decoded == row.decoder; });
            if (label == kLabels.end()) {
                EXPECT_EQ(name, "Register") << value;
                continue;
            }
            ++seen[label->field];
            const auto text = label->texts.find(Plain(value));
            EXPECT_EQ(Plain(device.Field(label->field).Text()),
                      text == label->texts.end() ? Plain(value) : text->second)
                << label->field << " is " << value << " to the decoder";
        }
        for (const Label& label : kLabels) {
            EXPECT_EQ(seen[label.field], 1) << label.field;
        }
    }
}

}   // namespace
