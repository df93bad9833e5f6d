#include <map>
#include <vector>

#include "FuzzInput.h"
#include "ini/PrivateProfile.h"
#include "ini/ProfileName.h"
#include "ini/ProfileText.h"

// Any bytes as an INI file: reads at any size, and changes after which the file says what was written and nothing else
// that is different.

namespace {

using Values = std::map<std::pair<std::string, std::string>, std::string>;

std::vector<std::string> Cut(const std::string& names) {
    std::vector<std::string> list;
    for (std::size_t at = 0; at < names.size(); at += list.back().size() + 1) {
        list.emplace_back(names.c_str() + at);
    }
    return list;
}

/// Names with a NUL in them can't be asked for one by one.
Values ValuesOf(const std::string& bytes) {
    const ProfileText text(bytes);
    Values values;
    for (const std::string& section : Cut(text.SectionNames())) {
        for (const std::string& key : Cut(text.KeyNames(section))) {
            if (const auto value = text.Value(section, key)) {
                values[{section, key}] = std::string(*value);
            }
        }
    }
    return values;
}

struct Change {
    std::string section;
    std::string key;
    std::string value;
};

bool Same(const std::string& left, const std::string& right) {
    return ProfileNameEqual()(Trimmed(left, FileBlanks), Trimmed(right, FileBlanks));
}

bool Concerns(const Change& change, const std::pair<std::string, std::string>& place) {
    return Same(change.section, place.first) && Same(change.key, place.second);
}

/// A value as a read gives it, unless it has line ends in it.
std::string Stored(std::string_view value) {
    value = Trimmed(value, FileBlanks);
    const bool quoted =
        value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
    return std::string(quoted ? value.substr(1, value.size() - 2) : value);
}

Change AnyChange(FuzzInput& input, const Values& known) {
    static const char* const kSections[] = {"SETUP", "bits", "X", "a b", "Modes"};
    static const char* const kKeys[] = {"COUNT", "name00", "k", "VAL0000", "y y"};
    Change change{kSections[input.Below(5)], kKeys[input.Below(5)], input.Text()};
    if (input.Flag() && !known.empty()) {
        const auto place = std::next(known.begin(), input.Byte() % static_cast<long>(known.size()))->first;
        if (place.first.find_first_of("]\"") == std::string::npos && place.second.find('=') == std::string::npos) {
            change.section = place.first;
            change.key = place.second;
        }
    }
    return change;
}

void CheckWritten(const std::string& file, const Change& change, const Values& before) {
    char buffer[64];
    const auto count = GetPrivateProfileStringA(change.section.c_str(), change.key.c_str(), "\x01", buffer,
                                                sizeof buffer, file.c_str());
    Expect(std::string(buffer, count) == Stored(change.value), "a written value reads back");
    const Values after = ValuesOf(FuzzFolder::Read(file));
    for (const auto& [place, value] : before) {
        if (!Concerns(change, place)) {
            const auto found = after.find(place);
            Expect(found != after.end() && found->second == value, "other keys stay");
        }
    }
}

void WriteOne(FuzzInput& input, const std::string& file) {
    const Values before = ValuesOf(FuzzFolder::Read(file));
    const Change change = AnyChange(input, before);
    Expect(WritePrivateProfileStringA(change.section.c_str(), change.key.c_str(), change.value.c_str(), file.c_str()),
           "a write succeeds");
    if (change.value.find_first_of("\r\n") == std::string::npos && change.value.size() < 60) {
        CheckWritten(file, change, before);
    }
}

void RemoveOne(FuzzInput& input, const std::string& file) {
    const Values before = ValuesOf(FuzzFolder::Read(file));
    const Change change = AnyChange(input, before);
    const bool whole = input.Flag();
    Expect(
        WritePrivateProfileStringA(change.section.c_str(), whole ? nullptr : change.key.c_str(), nullptr, file.c_str()),
        "a removal succeeds");
    const Values after = ValuesOf(FuzzFolder::Read(file));
    // A further section or key of that name counts once the first one is gone.
    for (const auto& [place, value] : before) {
        if (!Same(place.first, change.section)) {
            const auto found = after.find(place);
            Expect(found != after.end() && found->second == value, "other sections stay");
        }
    }
}

std::string TextOf(const std::string& bytes) {
    return DecodedText(bytes, EncodingOf(bytes));
}

/// Several writes at once do what they do one by one.
void WriteTogether(FuzzInput& input, const std::string& file, const std::string& second) {
    std::filesystem::copy_file(file, second, std::filesystem::copy_options::overwrite_existing);
    const Values known = ValuesOf(FuzzFolder::Read(file));
    ProfileTransaction together(file);
    for (unsigned count = 1 + input.Below(4); count > 0; --count) {
        const Change change = AnyChange(input, known);
        if (!ProfileText::ReadsBack(change.value)) {
            continue;   // Others are put in quotes.
        }
        together.Write(change.section, change.key, change.value);
        WritePrivateProfileStringA(change.section.c_str(), change.key.c_str(), change.value.c_str(), second.c_str());
    }
    Expect(together.Commit(), "a transaction succeeds");
    // Not in the same encoding: one by one, a text that it can't hold turns the file for good.
    Expect(TextOf(FuzzFolder::Read(file)) == TextOf(FuzzFolder::Read(second)), "together as one by one");
}

void ReadAny(FuzzInput& input, const std::string& file) {
    const std::string section = input.Text();
    const std::string key = input.Text();
    std::vector<char> buffer(1 + input.Below(40), 'u');
    const auto size = static_cast<std::uint32_t>(buffer.size());
    const auto count =
        GetPrivateProfileStringA(input.Flag() ? section.c_str() : nullptr, input.Flag() ? key.c_str() : nullptr,
                                 "default", buffer.data(), size, file.c_str());
    Expect(count < size && buffer[count] == '\0', "a read ends inside its buffer");
    Expect(PrivateProfileLine(section, key, file) >= 0, "a line counts from 0");
}

}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const FuzzFolder folder;
    FuzzInput input(data, size);
    Expect(ProfileText(std::string(input.File())).Contents() == input.File(), "an unchanged file keeps its bytes");
    std::filesystem::remove(folder.Path() + "a.ini");
    const std::string file = folder.Put("a.ini", input.File());
    constexpr int kMostChanges = 5;
    for (int changes = 0; changes < kMostChanges && !input.Empty(); ++changes) {
        switch (input.Below(5)) {
            case 0:
            case 1:
                WriteOne(input, file);
                break;
            case 2:
                RemoveOne(input, file);
                break;
            case 3:
                WriteTogether(input, file, folder.Path() + "b.ini");
                break;
            default:
                ReadAny(input, file);
        }
    }
    return 0;
}
