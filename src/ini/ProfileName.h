#pragma once

#include <cstddef>
#include <string_view>
#include <unordered_map>

/// Hash and equality of section and key names in UTF-8: case doesn't count for the letters of code page 1252.
struct ProfileNameHash {
    std::size_t operator()(std::string_view name) const noexcept;
};
struct ProfileNameEqual {
    bool operator()(std::string_view left, std::string_view right) const noexcept;
};

/// What stands under names. The names are views: their text has to outlive the map.
template <class Value>
using ProfileNameMap = std::unordered_map<std::string_view, Value, ProfileNameHash, ProfileNameEqual>;

/// Without the characters of `blanks` at its ends.
std::string_view Trimmed(std::string_view text, std::string_view blanks) noexcept;

/// Without the characters of `blanks` at its right end.
std::string_view TrimmedRight(std::string_view text, std::string_view blanks) noexcept;

/// Blank in a file; a name that is asked for loses only its spaces.
constexpr std::string_view FileBlanks = " \t\v";
