#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

class cPart;

// How the text of the burst list stands for the list: which line a click means, and what an added command does.
// Places in the text count from 0, in characters; lines end in CRLF or LF.

/// What a click selects.
struct BurstLine {
    struct Selection {
        std::size_t start = 0;
        std::size_t length = 0;   ///< Without the line end.
        bool operator==(const Selection&) const = default;
    };

    std::int16_t number = 0;              ///< Counted from 1; behind the last command one above the count.
    std::optional<Selection> selection;   ///< Nothing behind the last command.
};

/// The line under a caret; nothing in an empty text.
std::optional<BurstLine> BurstLineAt(std::string_view text, std::size_t caret);

enum class BurstEdit { Append, Insert, Overwrite };

/// Where a new command goes: to the end, unless so many characters are selected that a line is meant and that line
/// is one of the list's `count`.
BurstEdit BurstEditFor(std::size_t selectedCharacters, std::int16_t line, int count, bool insertMode);

/// Puts a command into the list at a line and shows the list anew; nothing during a run. Fails as AddBurstCommand
/// does, with the list as it was.
void EditBurstList(cPart& part, BurstEdit edit, std::int16_t line, const std::string& name, std::int16_t kind);
