#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/Problems.h"
#include "ini/PrivateProfile.h"

/// One part file while a device is read from it: gives each key's value in the type that it should have. Reading
/// never fails: a value that doesn't convert or doesn't fit gives the key's default, and the fault is reported
/// with its line. The file is read in one state, whatever happens to it meanwhile.
class PartFile {
public:
    PartFile(std::string path, Problems& problems);

    [[nodiscard]] const std::string& Path() const noexcept { return path_; }

    [[nodiscard]] std::string Text(const std::string& section, const std::string& key,
                                   const std::string& defaultText) const;
    [[nodiscard]] double Double(const std::string& section, const std::string& key, const std::string& defaultText);
    [[nodiscard]] std::int32_t Long(const std::string& section, const std::string& key, const std::string& defaultText);
    [[nodiscard]] bool Boolean(const std::string& section, const std::string& key, const std::string& defaultText);

    /// A 16-bit number within the given bounds.
    [[nodiscard]] std::int16_t Short(const std::string& section, const std::string& key, const std::string& defaultText,
                                     int lowest = -32768, int highest = 32767);

    /// A count for the checks, which run when it was read and reported: 0 where it doesn't convert or is negative.
    [[nodiscard]] int Count(const std::string& section, const std::string& key = "COUNT") const;

    /// Notes a fault of a key; `section` and `key` empty for the file as a whole.
    void Report(Severity severity, const std::string& section, const std::string& key, const std::string& text);
    /// The same for a line at hand: one that a read of the key doesn't find.
    void Report(Severity severity, int line, const std::string& section, const std::string& key,
                const std::string& text);
    /// Notes a value that couldn't be read, in whose place the default is taken.
    void ReportUnread(const std::string& section, const std::string& key, const std::string& why,
                      const std::string& defaultText);

    /// Whether an item has the name of an earlier one, which stands at that place of its collection, counted from 1; 0
    /// for none. Then the fault is reported, with the line of the first. `items` are the items that made the
    /// collection.
    bool Repeats(const std::string& section, int item, const std::string& name, int place,
                 const std::vector<int>& items);

    /// The key of an item's property, and of its mm-th list entry: NAME07, VAL0312.
    static std::string Key(const char* property, int item);
    static std::string Key(const char* property, int item, int entry);

private:
    template <class Convert>
    auto Converted(const std::string& section, const std::string& key, const std::string& defaultText, Convert convert)
        -> decltype(convert(std::string()));

    std::string path_;
    Problems& problems_;
    ProfileSnapshot snapshot_;
};
