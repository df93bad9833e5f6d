#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <tuple>

#include "core/Nearest.h"
#include "core/Numbers.h"
#include "core/PartLimits.h"
#include "core/cPart.h"
#include "ini/ProfileName.h"
#include "partfile/PartCheck.h"
#include "partfile/PartFile.h"
#include "partfile/PartFileLines.h"
#include "partfile/PartKeys.h"

namespace {

std::string Quoted(std::string_view text) {
    return "'" + std::string(text) + "'";
}

std::string ItemsRead(int count) {
    return count < 1 ? "none is read" : "00 to " + ItemNumber(count - 1) + " are read";
}

/// Compares what stands in a file with what is read from it.
class KeyCheck {
public:
    KeyCheck(PartFile& file, const cPart& part, int plls) : file_(file), part_(part), plls_(plls) {}

    void Run() {
        const PartFileLines lines(file_.Path());
        for (const ProfileLine& line : lines) {
            Visit(line);
        }
        const auto names = PartSections();
        if (std::none_of(names.begin(), names.end(), [&](const char* name) { return sections_.contains(name); })) {
            file_.Report(Severity::Warning, "", "", "none of the sections of a part file stands in it");
        }
        for (const char* section : names) {
            CheckItems(section, items_[section]);
        }
        CheckLists();
        CheckModes();
    }

private:
    struct Place {
        int line = 0;
        std::string_view key;   // In the text of the lines, which outlives the check.
    };
    using Items = std::map<int, Place>;   // The first key of each item.

    void Report(Severity severity, const Place& place, const std::string& text) {
        file_.Report(severity, place.line, section_, std::string(place.key), text);
    }

    void Visit(const ProfileLine& line) {
        const Place place{line.number, line.name};
        switch (line.kind) {
            case ProfileLine::Kind::Header:
                Enter(line);
                break;
            case ProfileLine::Kind::Word:
                if (reading_) {
                    Report(Severity::Warning, place, "this line isn't read: there is no '=' in it");
                }
                break;
            case ProfileLine::Kind::Key:
                VisitKey(line, place);
                break;
            case ProfileLine::Kind::Other:
                break;
        }
    }

    void Enter(const ProfileLine& line) {
        const auto names = PartSections();
        const auto known = std::find_if(names.begin(), names.end(),
                                        [&](const char* name) { return ProfileNameEqual()(name, line.name); });
        section_ = known == names.end() ? std::string(line.name) : *known;
        reading_ = false;
        const auto [first, isFirst] = sections_.try_emplace(section_, line.number);
        if (!isFirst) {
            Report(Severity::Warning, {line.number, ""},
                   "the section stands a second time and isn't read: the first, line " + std::to_string(first->second) +
                       ", counts");
        } else if (known != names.end()) {
            reading_ = true;
            keys_.clear();
        } else {
            const std::string nearest = NearestName(section_, {names.begin(), names.end()});
            Report(nearest.empty() ? Severity::Note : Severity::Warning, {line.number, ""},
                   "no section of a part file, and not read" +
                       (nearest.empty() ? std::string() : ": did you mean [" + nearest + "]?"));
        }
    }

    void VisitKey(const ProfileLine& line, const Place& place) {
        if (sections_.empty()) {
            Report(Severity::Warning, place, "stands before the first section and isn't read");
        }
        if (!reading_) {
            return;
        }
        const auto [first, isFirst] = keys_.try_emplace(line.name, line.number);
        if (!isFirst) {
            Report(
                Severity::Warning, place,
                "stands a second time and isn't read: the first, line " + std::to_string(first->second) + ", counts");
            return;
        }
        const auto readings = ReadingsOf(section_, line.name);
        if (readings.empty()) {
            ReportUnknown(line.name, place);
        }
        // Where the digits can be cut in two ways, any reading that fits will do.
        for (const KeyReading& reading : readings) {
            Note(reading, readings.size() > 1, place);
        }
    }

    void ReportUnknown(std::string_view key, const Place& place) {
        const auto [name, digits] = SplitKey(key);
        for (const PartKey& known : PartKeys()) {
            const bool sameName = ProfileNameEqual()(known.name, name);
            if (sameName && section_ == known.section) {
                Report(Severity::Warning, place, "not read: " + NumberRule(known, digits));
                return;
            }
        }
        const std::string nearest = NearestKey(section_, key);
        if (!nearest.empty()) {
            Report(Severity::Warning, place, "no such key, and not read: did you mean " + Quoted(nearest) + "?");
            return;
        }
        for (const char* section : PartSections()) {
            if (!ReadingsOf(section, key).empty()) {
                Report(Severity::Warning, place, std::string("not read here: it belongs into [") + section + "]");
                return;
            }
        }
        Report(Severity::Note, place, "no such key, and not read");
    }

    static std::string NumberRule(const PartKey& key, std::string_view digits) {
        const std::string name = key.name;
        if (key.kind == PartKey::Kind::Single) {
            return "no number stands behind " + Quoted(name);
        }
        if (key.kind == PartKey::Kind::Entry) {
            return "behind " + Quoted(name) +
                   " stand the number of the item and that of the entry, two digits each: " + Quoted(name + "0312") +
                   " is entry 12 of item 3";
        }
        const auto number = digits.size() <= 3 ? ParseNumber(digits).value_or(0) : 0;
        return "behind " + Quoted(name) + " stands the number of the item with two digits, as in " +
               Quoted(name + ItemNumber(static_cast<int>(number)));
    }

    void Note(const KeyReading& reading, bool ambiguous, const Place& place) {
        if (reading.item < 0) {
            return;
        }
        if (reading.entry >= 0) {
            auto& list = entries_[{section_, reading.key->name, reading.item}];
            list.ambiguous = list.ambiguous || ambiguous;
            list.entries.try_emplace(reading.entry, place);
        }
        if (!ambiguous) {
            items_[section_].try_emplace(reading.item, place);
        }
    }

    void CheckItems(const std::string& section, const Items& items) {
        section_ = section;
        const int count = file_.Count(section);
        if (const auto beyond = items.lower_bound(count); beyond != items.end()) {
            Report(Severity::Warning, beyond->second,
                   "item " + ItemNumber(beyond->first) + " is beyond the COUNT of [" + section + "], which is " +
                       std::to_string(count) + ": " + ItemsRead(count));
        }
        const int read = section == "PLLS" ? std::min(count, kMostPLLs) : count;
        for (int item = 0; item < read; ++item) {
            if (!items.contains(item)) {
                file_.Report(Severity::Warning, section, "COUNT",
                             std::to_string(read) + " items are read, but no key of item " + ItemNumber(item) +
                                 " stands in the file: it comes up with defaults");
                return;
            }
        }
    }

    struct List {
        std::map<int, Place> entries;
        bool ambiguous = false;
    };
    using ListName = std::tuple<std::string, std::string, int>;

    void CheckLists() {
        section_ = "BITS";
        const int fields = file_.Count("BITS");
        for (int item = 0; item < fields; ++item) {
            const bool texts = file_.Text("BITS", PartFile::Key("FORMAT", item), "String") == "String";
            CheckList("VAL", "COUNT", item, file_.Count("BITS", PartFile::Key("COUNT", item)));
            const auto codes = entries_.find({"BITS", "VALB", item});
            if (texts && (codes != entries_.end() || file_.Count("BITS", PartFile::Key("COUNTB", item)) > 0)) {
                file_.Report(Severity::Warning, "BITS", PartFile::Key("COUNTB", item),
                             "codes are read for a list of numbers only: write FORMAT" + ItemNumber(item) + "=Number");
            } else {
                CheckList("VALB", "COUNTB", item, file_.Count("BITS", PartFile::Key("COUNTB", item)));
            }
        }
    }

    void CheckList(const char* property, const char* countKey, int item, int count) {
        const auto found = entries_.find({"BITS", property, item});
        const std::string key = PartFile::Key(countKey, item);
        if (found == entries_.end()) {
            if (count > 1) {
                file_.Report(Severity::Note, "BITS", key,
                             "no entry of the list stands in the file: its entries are their numbers");
            }
            return;
        }
        const auto& [entries, ambiguous] = found->second;
        if (ambiguous) {
            return;   // A key may be another item's as well.
        }
        if (const auto beyond = entries.lower_bound(count); beyond != entries.end()) {
            Report(Severity::Warning, beyond->second,
                   "entry " + ItemNumber(beyond->first) + " is beyond " + key + ", which is " + std::to_string(count) +
                       ": " + ItemsRead(count));
        }
        for (int entry = 0; entry < count; ++entry) {
            if (!entries.contains(entry)) {
                file_.Report(Severity::Warning, "BITS", key,
                             std::to_string(count) + " entries are read, but " + PartFile::Key(property, item, entry) +
                                 " is missing: it counts as \"" + ItemNumber(entry) + "\"");
                return;
            }
        }
    }

    /// The entries of a mode belong to registers and PLLs: what is beyond them is left over.
    void CheckModes() {
        section_ = "MODES";
        for (const auto& [name, list] : entries_) {
            const auto& [section, property, mode] = name;
            if (section != "MODES" || list.ambiguous || mode >= file_.Count("MODES")) {
                continue;
            }
            const int count = property == "OSCIN" ? plls_ : part_.Registers().Count();
            if (const auto beyond = list.entries.lower_bound(count); beyond != list.entries.end()) {
                Report(Severity::Note, beyond->second,
                       "not read: the device has " + std::to_string(count) +
                           (property == "OSCIN" ? " PLLs" : " registers"));
            }
        }
    }

    PartFile& file_;
    const cPart& part_;
    int plls_;
    std::string section_;    ///< Of the line at hand, in capitals if it is known.
    bool reading_ = false;   ///< It is known and the first of its name.
    std::map<std::string, int> sections_;
    ProfileNameMap<int> keys_;   ///< Of the section at hand, with their lines.
    std::map<std::string, Items> items_;
    std::map<ListName, List> entries_;
};

}   // namespace

void CheckKeys(cPart& part, PartFile& file) {
    KeyCheck(file, part, static_cast<int>(part.Items().plls.size())).Run();
}
