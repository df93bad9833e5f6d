#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// A key of the part file as its writer thinks of it: "POS" for POS00, POS01 and so on.
struct PartKey {
    enum class Kind {
        Single,   ///< Stands once in its section.
        Item,     ///< Once for each item: its number stands behind the name.
        Entry     ///< Once for each entry of an item's list: two numbers stand behind the name.
    };
    const char* section;
    const char* name;
    Kind kind;
};

/// Every key that the program reads from a part file, in the order of reading.
std::span<const PartKey> PartKeys();

/// The sections of a part file, in the order of reading.
std::span<const char* const> PartSections();

/// One way to read a key's name.
struct KeyReading {
    const PartKey* key = nullptr;
    int item = -1;    ///< -1 for a key that stands once.
    int entry = -1;   ///< -1 for a key without entries.
};

/// What a key of that section can mean, letters compared without case: nothing for an unknown one, and more than one
/// reading where the digits can be cut in two ways, as in VAL10100.
std::vector<KeyReading> ReadingsOf(std::string_view section, std::string_view key);

/// The name that the writer of an unknown key most likely meant: a typing error away, or begun alike. Empty if there
/// is none.
std::string NearestKey(std::string_view section, std::string_view key);

/// A key in its two parts.
struct KeyParts {
    std::string_view name;
    std::string_view digits;
};
KeyParts SplitKey(std::string_view key);
