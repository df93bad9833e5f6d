#include "partfile/PartFile.h"

#include <algorithm>

#include "core/Errors.h"
#include "core/FileItems.h"
#include "core/Numbers.h"
#include "ini/PrivateSetting.h"

PartFile::PartFile(std::string path, Problems& problems)
    : path_(std::move(path)), problems_(problems), snapshot_(path_) {
    if (const auto reason = PrivateProfileReadError(path_)) {
        Report(Severity::Error, "", "",
               "the part file can't be read: " + *reason + "; the device comes up with defaults and no registers");
    }
}

std::string PartFile::Text(const std::string& section, const std::string& key, const std::string& defaultText) const {
    return GetPrivateSetting(path_, section, key, defaultText);
}

template <class Convert>
auto PartFile::Converted(const std::string& section, const std::string& key, const std::string& defaultText,
                         Convert convert) -> decltype(convert(std::string())) {
    try {
        return convert(Text(section, key, defaultText));
    } catch (const ConversionError& error) {
        ReportUnread(section, key, error.what(), defaultText);
    }
    return convert(defaultText);
}

double PartFile::Double(const std::string& section, const std::string& key, const std::string& defaultText) {
    return Converted(section, key, defaultText, [](const std::string& text) { return FileDouble(text); });
}

std::int32_t PartFile::Long(const std::string& section, const std::string& key, const std::string& defaultText) {
    return Converted(section, key, defaultText, [](const std::string& text) { return FileLong(text); });
}

bool PartFile::Boolean(const std::string& section, const std::string& key, const std::string& defaultText) {
    return Converted(section, key, defaultText, [](const std::string& text) { return FileBoolean(text); });
}

std::int16_t PartFile::Short(const std::string& section, const std::string& key, const std::string& defaultText,
                             int lowest, int highest) {
    return Converted(section, key, defaultText, [&](const std::string& text) {
        const std::int16_t value = FileShort(text);
        if (value < lowest || value > highest) {
            throw ConversionError(std::to_string(value) + " is not within " + std::to_string(lowest) + " to " +
                                  std::to_string(highest));
        }
        return value;
    });
}

int PartFile::Count(const std::string& section, const std::string& key) const {
    int count = 0;
    IgnoringFailures([&] { count = FileShort(Text(section, key, "0")); });
    return std::max(0, count);
}

void PartFile::Report(Severity severity, const std::string& section, const std::string& key, const std::string& text) {
    Report(severity, section.empty() ? 0 : PrivateProfileLine(section, key, path_), section, key, text);
}

void PartFile::Report(Severity severity, int line, const std::string& section, const std::string& key,
                      const std::string& text) {
    problems_.Add({severity, path_, line, section, key, text, {}});
}

void PartFile::ReportUnread(const std::string& section, const std::string& key, const std::string& why,
                            const std::string& defaultText) {
    problems_.Add({Severity::Error, path_, PrivateProfileLine(section, key, path_), section, key,
                   why + "; the default \"" + defaultText + "\" is taken", defaultText});
}

bool PartFile::Repeats(const std::string& section, int item, const std::string& name, int place,
                       const std::vector<int>& items) {
    if (place == 0) {
        return false;
    }
    const int first = FileItems::At(items, place - 1);
    const int line = PrivateProfileLine(section, Key("NAME", first), path_);
    Report(Severity::Error, section, Key("NAME", item),
           "'" + name + "' stands already, as item " + ItemNumber(first) +
               (line > 0 ? " in line " + std::to_string(line) : "") + "; this one is left out");
    return true;
}

std::string PartFile::Key(const char* property, int item) {
    return property + ItemNumber(item);
}

std::string PartFile::Key(const char* property, int item, int entry) {
    return property + ItemNumber(item) + ItemNumber(entry);
}
