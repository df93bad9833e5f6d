#pragma once

#include <array>
#include <string>
#include <vector>

#include "ports/PortDrivers.h"

/// A group of the device menu, and the section of the settings file that lists its devices.
struct DeviceGroup {
    const char* section;
    const char* family;   ///< What GetPartType answers for its devices; null where it doesn't look.
};

/// In the order of the menu, and of the search for a device's family.
inline constexpr std::array<DeviceGroup, 8> kDeviceGroups{{{"MENU", nullptr},
                                                           {"MENUVCO", "VCO"},
                                                           {"MENUSINGPLL", "SingleInteger"},
                                                           {"MENUDUALPLL", "DualInteger"},
                                                           {"MENUFRACPLL", "Fractional"},
                                                           {"MENUPLLVCO", "PLLVCO"},
                                                           {"MENUTRANS", "Transceiver"},
                                                           {"MENUENGINEERING", nullptr}}};

/// tarnwick.ini: the devices of the menus, the recent devices and the port. The program writes nothing but the
/// items of the recent list.
class SettingsFile {
public:
    /// `appPath` ends with a separator.
    explicit SettingsFile(const std::string& appPath) : path_(appPath + "tarnwick.ini") {}

    [[nodiscard]] const std::string& Path() const noexcept { return path_; }

    /// Why the file can't be read, for the status bar; empty if it can.
    [[nodiscard]] std::string ReadError() const;

    [[nodiscard]] std::vector<std::string> Devices(const char* section) const;

    /// The family of a device: that of the first group that lists it; empty if none does.
    [[nodiscard]] std::string GetPartType(const std::string& device) const;

    /// How many items the recent list has; the file alone says that.
    [[nodiscard]] int RecentCount() const;
    [[nodiscard]] std::vector<std::string> RecentParts() const;
    /// Writes the first RecentCount() captions, in one replacement of the file. Empty, or why it failed.
    [[nodiscard]] std::string SaveRecentParts(const std::vector<std::string>& captions) const;

    [[nodiscard]] PortSettings ReadPort() const;

private:
    [[nodiscard]] int Count(const char* section) const;

    std::string path_;
};

/// The recent list after a device was picked from a device menu: it stands on top, and those above its old place,
/// or all if it is new, move down by one. Only the first `count` captions are the list.
void MoveToTop(std::vector<std::string>& captions, int count, const std::string& device);
