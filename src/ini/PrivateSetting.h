#pragma once

#include <string>

// The two operations through which every INI file of the program is read and written key by key.

/// The value of any length, or `defaultText` where file, section or key is missing.
std::string GetPrivateSetting(const std::string& file, const std::string& section, const std::string& key,
                              const std::string& defaultText);

/// True if the value stands in the file; otherwise the file is as it was, and PrivateProfileError() tells why.
bool SavePrivateSetting(const std::string& file, const std::string& section, const std::string& key,
                        const std::string& value);
