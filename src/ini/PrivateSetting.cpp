#include "ini/PrivateSetting.h"

#include <array>
#include <cstdint>

#include "ini/PrivateProfile.h"

std::string GetPrivateSetting(const std::string& file, const std::string& section, const std::string& key,
                              const std::string& defaultText) {
    std::array<char, 256> first{};
    std::string longer;
    char* buffer = first.data();
    auto size = static_cast<std::uint32_t>(first.size());
    while (true) {
        const std::uint32_t copied =
            GetPrivateProfileStringA(section.c_str(), key.c_str(), defaultText.c_str(), buffer, size, file.c_str());
        if (copied + 2 < size) {
            return {buffer, copied};
        }
        size *= 2;   // The value may have been cut.
        longer.resize(size);
        buffer = longer.data();
    }
}

bool SavePrivateSetting(const std::string& file, const std::string& section, const std::string& key,
                        const std::string& value) {
    return WritePrivateProfileStringA(section.c_str(), key.c_str(), value.c_str(), file.c_str());
}
