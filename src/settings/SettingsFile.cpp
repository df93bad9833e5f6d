#include "settings/SettingsFile.h"

#include <algorithm>

#include "core/Errors.h"
#include "core/Numbers.h"
#include "ini/PrivateProfile.h"
#include "ini/PrivateSetting.h"

std::string SettingsFile::ReadError() const {
    const auto reason = PrivateProfileReadError(path_);
    return reason ? "can't read " + path_ + ": " + *reason + "; the device menus are empty" : std::string();
}

/// A count that is no number counts as 0.
int SettingsFile::Count(const char* section) const {
    try {
        return std::max<int>(0, FileShort(GetPrivateSetting(path_, section, "COUNT", "0")));
    } catch (const ConversionError&) {
        return 0;
    }
}

std::vector<std::string> SettingsFile::Devices(const char* section) const {
    const ProfileSnapshot snapshot(path_);
    std::vector<std::string> devices;
    for (int i = 0, count = Count(section); i < count; ++i) {
        devices.push_back(GetPrivateSetting(path_, section, "ITEM" + ItemNumber(i), "QRV"));
    }
    return devices;
}

std::string SettingsFile::GetPartType(const std::string& device) const {
    for (const DeviceGroup& group : kDeviceGroups) {
        if (group.family != nullptr) {
            const auto devices = Devices(group.section);
            if (std::find(devices.begin(), devices.end(), device) != devices.end()) {
                return group.family;
            }
        }
    }
    return {};
}

int SettingsFile::RecentCount() const {
    return Count("RECENTPARTS");
}

std::vector<std::string> SettingsFile::RecentParts() const {
    std::vector<std::string> recent;
    for (int i = 0, count = RecentCount(); i < count; ++i) {
        recent.push_back(GetPrivateSetting(path_, "RECENTPARTS", "ITEM" + ItemNumber(i), ".........."));
    }
    return recent;
}

std::string SettingsFile::SaveRecentParts(const std::vector<std::string>& captions) const {
    const int count = std::min(RecentCount(), static_cast<int>(captions.size()));
    if (count == 0) {
        // Without a file there is no list; one that can't be read may have one.
        const auto reason = PrivateProfileUnreadable(path_);
        return reason ? "the recent list is not saved: can't read " + path_ + ": " + *reason : std::string();
    }
    ProfileTransaction file(path_);
    for (int i = 0; i < count; ++i) {
        file.Write("RECENTPARTS", "ITEM" + ItemNumber(i), captions[static_cast<std::size_t>(i)]);
    }
    return file.Commit() ? std::string() : "the recent list is not saved: " + PrivateProfileError();
}

PortSettings SettingsFile::ReadPort() const {
    PortSettings port;
    const auto read = [this](const char* key, const std::string& standard) {
        return GetPrivateSetting(path_, "PORT", key, standard);
    };
    port.driver = read("DRIVER", port.driver);
    port.device = read("DEVICE", port.device);
    port.backend = read("BACKEND", port.backend);
    port.seed = read("SEED", port.seed);
    port.log = read("LOG", port.log);
    port.trace = read("TRACE", port.trace);
    return port;
}

void MoveToTop(std::vector<std::string>& captions, int count, const std::string& device) {
    const auto list = captions.begin();
    const auto end = list + std::min(count, static_cast<int>(captions.size()));
    if (list == end) {
        return;
    }
    auto place = std::find(list, end, device);
    if (place == end) {
        --place;   // The oldest drops out.
        *place = device;
    }
    std::rotate(list, place, place + 1);
}
