#pragma once

#include <cstdint>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

using TextRow = std::vector<std::string>;

/// A table of test cases as a text: rows parted by ";" or line ends, cells by blanks; 'a cell in quotes' may hold
/// both.
inline std::vector<TextRow> TextTable(const std::string& text) {
    std::vector<TextRow> rows(1);
    std::string cell;
    bool inCell = false;
    bool quoted = false;
    const auto endCell = [&] {
        if (inCell) {
            rows.back().push_back(std::exchange(cell, {}));
        }
        inCell = false;
    };
    for (const char c : text + ';') {
        if (c == '\'') {
            quoted = !quoted;
            inCell = true;
        } else if (quoted || (c != ' ' && c != ';' && c != '\n')) {
            cell += c;
            inCell = true;
        } else {
            endCell();
            if (c != ' ' && !rows.back().empty()) {
                rows.emplace_back();
            }
        }
    }
    rows.pop_back();
    return rows;
}

/// The number in a cell, by the standard library's own conversion: also "0x1F", "0x1p53", "inf" and "nan".
inline double CellNumber(const std::string& cell) {
    return std::strtod(cell.c_str(), nullptr);
}

inline std::int16_t CellShort(const std::string& cell) {
    return static_cast<std::int16_t>(std::strtol(cell.c_str(), nullptr, 0));
}
