#include "burst/BurstLines.h"

#include <algorithm>

#include "burst/cBurst.h"
#include "core/cPart.h"

namespace {

constexpr std::size_t kShortestLine = 4;   // What is shorter is no command, with its line end or without.

}   // namespace

std::optional<BurstLine> BurstLineAt(std::string_view text, std::size_t caret) {
    if (text.empty()) {
        return std::nullopt;
    }
    const std::string_view before = text.substr(0, caret);
    const std::size_t above = before.rfind('\n');
    const std::size_t start = above == std::string_view::npos ? 0 : above + 1;
    std::size_t end = std::min(text.find('\n', before.size()), text.size());

    BurstLine line;
    const auto number = 1 + std::count(before.begin(), before.end(), '\n');
    line.number = static_cast<std::int16_t>(std::min<std::ptrdiff_t>(number, kMostBurstCommands));
    if (start + kShortestLine <= text.size()) {
        if (end > start && text[end - 1] == '\r') {
            --end;
        }
        line.selection = {start, end - start};
    }
    return line;
}

BurstEdit BurstEditFor(std::size_t selectedCharacters, std::int16_t line, int count, bool insertMode) {
    if (selectedCharacters < kShortestLine || line < 1 || line > count) {
        return BurstEdit::Append;
    }
    return insertMode ? BurstEdit::Insert : BurstEdit::Overwrite;
}

void EditBurstList(cPart& part, BurstEdit edit, std::int16_t line, const std::string& name, std::int16_t kind) {
    if (part.BurstRunning()) {
        return;
    }
    switch (edit) {
        case BurstEdit::Append:
            part.AddBurstCommand(name, kind);
            break;
        case BurstEdit::Insert:
            part.AddBurstCommand(name, kind, line);
            break;
        case BurstEdit::Overwrite:
            part.ChangeBurstCommand(line, name, kind);
            break;
    }
    part.UpdateBurstDisplay();
}
