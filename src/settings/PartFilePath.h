#pragma once

#include <string>
#include <string_view>

/// The part file of a device: `appPath`, the name cut to 30 characters (29 if it then ends with "/"), ".ini".
std::string PartFilePath(const std::string& appPath, std::string_view device);
