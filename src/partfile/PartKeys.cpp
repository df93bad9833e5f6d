#include "partfile/PartKeys.h"

#include <array>
#include <charconv>
#include <optional>

#include "core/Nearest.h"
#include "ini/ProfileName.h"

namespace {

constexpr auto kSingle = PartKey::Kind::Single;
constexpr auto kItem = PartKey::Kind::Item;
constexpr auto kEntry = PartKey::Kind::Entry;

constexpr std::array kSections{"SETUP", "PINS", "REGISTERS", "BITS", "PLLS", "MODES"};

constexpr std::array<PartKey, 68> kKeys{{
    {"SETUP", "REGISTER_LENGTH", kSingle},
    {"SETUP", "CONTROL_LENGTH", kSingle},
    {"SETUP", "ADDRESS", kSingle},
    {"SETUP", "CLOCK", kSingle},
    {"SETUP", "DATA", kSingle},
    {"SETUP", "LE", kSingle},
    {"SETUP", "SBI", kSingle},
    {"SETUP", "HIGHBYTE", kSingle},
    {"SETUP", "INVERTCLOCK", kSingle},
    {"SETUP", "VERSION", kSingle},
    {"SETUP", "VERSION_DESCRIPTION", kSingle},
    {"PINS", "COUNT", kSingle},
    {"PINS", "NAME", kItem},
    {"PINS", "LOCATION", kItem},
    {"PINS", "ENABLED", kItem},
    {"REGISTERS", "COUNT", kSingle},
    {"REGISTERS", "NAME", kItem},
    {"REGISTERS", "MASK", kItem},
    {"REGISTERS", "VALUE", kItem},
    {"REGISTERS", "LOWBYTE", kItem},
    {"REGISTERS", "HIGHLOWREGISTER", kItem},
    {"BITS", "COUNT", kSingle},
    {"BITS", "REG", kItem},
    {"BITS", "NAME", kItem},
    {"BITS", "POS", kItem},
    {"BITS", "LEN", kItem},
    {"BITS", "DISPLAY", kItem},
    {"BITS", "FRAME", kItem},
    {"BITS", "TYPE", kItem},
    {"BITS", "COUNT", kItem},
    {"BITS", "FORMAT", kItem},
    {"BITS", "VAL", kEntry},
    {"BITS", "COUNTB", kItem},
    {"BITS", "VALB", kEntry},
    {"BITS", "MINIMUMVALUE", kItem},
    {"BITS", "MAXIMUMVALUE", kItem},
    {"BITS", "ZEROVALUE", kItem},
    {"BITS", "STEPVALUE", kItem},
    {"BITS", "UNITS", kItem},
    {"BITS", "LINKEDBITS", kItem},
    {"BITS", "MIRRORBITS", kItem},
    {"BITS", "STEPVALUEBITNAME", kItem},
    {"BITS", "DESCRIPTION", kItem},
    {"BITS", "GREATERBITS", kItem},
    {"BITS", "GREATERTHAN", kItem},
    {"BITS", "POLARITY", kItem},
    {"BITS", "POLARITYPOSITION", kItem},
    {"BITS", "POLARITYINVERTED", kItem},
    {"BITS", "DATAINVERTED", kItem},
    {"PLLS", "COUNT", kSingle},
    {"PLLS", "NAME", kItem},
    {"PLLS", "N", kItem},
    {"PLLS", "R", kItem},
    {"PLLS", "PD", kItem},
    {"PLLS", "IPO", kItem},
    {"PLLS", "TRI", kItem},
    {"PLLS", "NP", kItem},
    {"PLLS", "RP", kItem},
    {"PLLS", "FRACTNUM", kItem},
    {"PLLS", "FRACTDEN", kItem},
    {"PLLS", "FRACTCARRY", kItem},
    {"PLLS", "OSCIN", kItem},
    {"MODES", "COUNT", kSingle},
    {"MODES", "MODE", kItem},
    {"MODES", "NAME", kEntry},
    {"MODES", "VALUE", kEntry},
    {"MODES", "OSCIN", kEntry},
    {"MODES", "PINS", kItem},
}};

bool Equal(std::string_view one, std::string_view other) {
    return ProfileNameEqual()(one, other);
}

/// The number of an item as keys write it: two digits, or more without a leading 0.
std::optional<int> ItemOf(std::string_view digits) {
    int number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    const bool written = digits.size() == 2 || (digits.size() > 2 && digits.front() != '0');
    return written && error == std::errc() && end == digits.data() + digits.size() ? std::optional(number)
                                                                                   : std::nullopt;
}

void AddReadings(const PartKey& key, std::string_view digits, std::vector<KeyReading>& readings) {
    if (key.kind == PartKey::Kind::Single) {
        if (digits.empty()) {
            readings.push_back({&key, -1, -1});
        }
    } else if (key.kind == PartKey::Kind::Item) {
        if (const auto item = ItemOf(digits)) {
            readings.push_back({&key, *item, -1});
        }
    } else {
        for (std::size_t cut = 2; cut + 2 <= digits.size(); ++cut) {
            const auto item = ItemOf(digits.substr(0, cut));
            const auto entry = ItemOf(digits.substr(cut));
            if (item && entry) {
                readings.push_back({&key, *item, *entry});
            }
        }
    }
}

/// The keys of each section by their name; COUNT of BITS is two.
using KeyIndex = ProfileNameMap<ProfileNameMap<std::vector<const PartKey*>>>;

KeyIndex IndexedKeys() {
    KeyIndex index;
    for (const PartKey& key : kKeys) {
        index[key.section][key.name].push_back(&key);
    }
    return index;
}

}   // namespace

std::span<const PartKey> PartKeys() {
    return kKeys;
}

std::span<const char* const> PartSections() {
    return kSections;
}

KeyParts SplitKey(std::string_view key) {
    const auto last = key.find_last_not_of("0123456789");
    const std::size_t letters = last == std::string_view::npos ? 0 : last + 1;
    return {key.substr(0, letters), key.substr(letters)};
}

std::vector<KeyReading> ReadingsOf(std::string_view section, std::string_view key) {
    static const KeyIndex index = IndexedKeys();   // Asked for every line of a file.
    const auto [name, digits] = SplitKey(key);
    std::vector<KeyReading> readings;
    if (const auto names = index.find(section); names != index.end()) {
        if (const auto keys = names->second.find(name); keys != names->second.end()) {
            for (const PartKey* known : keys->second) {
                AddReadings(*known, digits, readings);
            }
        }
    }
    return readings;
}

std::string NearestKey(std::string_view section, std::string_view key) {
    const auto [name, digits] = SplitKey(key);
    std::vector<std::string_view> known;
    for (const PartKey& one : kKeys) {
        if (Equal(one.section, section)) {
            known.emplace_back(one.name);
        }
    }
    const std::string nearest = NearestName(name, known);
    return nearest.empty() ? nearest : nearest + std::string(digits);
}
