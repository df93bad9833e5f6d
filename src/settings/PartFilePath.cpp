#include "settings/PartFilePath.h"

namespace {

/// The first `count` characters of a UTF-8 text.
std::string_view FirstCharacters(std::string_view text, int count) {
    std::size_t end = 0;
    while (end < text.size() && count > 0) {
        ++end;
        while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
            ++end;
        }
        --count;
    }
    return text.substr(0, end);
}

}   // namespace

std::string PartFilePath(const std::string& appPath, std::string_view device) {
    constexpr int kLongestName = 30;
    std::string_view name = FirstCharacters(device, kLongestName);
    if (name.size() < device.size() || FirstCharacters(name, kLongestName - 1).size() < name.size()) {
        if (name.ends_with('/')) {
            name = FirstCharacters(name, kLongestName - 1);
        }
    }
    return appPath + std::string(name) + ".ini";
}
