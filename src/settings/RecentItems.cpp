#include "settings/RecentItems.h"

#include <algorithm>
#include <vector>

namespace {

// A line with its end, and whether it is an item of the recent list.
struct Line {
    std::string_view text;
    bool isItem = false;

    [[nodiscard]] std::string_view Content() const { return text.substr(0, text.find_last_not_of("\r\n") + 1); }
    [[nodiscard]] std::string_view End() const { return text.substr(Content().size()); }
};

bool StartsWith(std::string_view text, std::string_view capitals) {
    const auto capital = [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; };
    return text.size() >= capitals.size() &&
           std::equal(capitals.begin(), capitals.end(), text.begin(), [&](char a, char b) { return a == capital(b); });
}

std::vector<Line> LinesOf(std::string_view text) {
    std::vector<Line> lines;
    bool inList = false;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        Line line{text.substr(0, end == std::string_view::npos ? end : end + 1)};
        text.remove_prefix(line.text.size());
        inList = line.text.starts_with('[') ? StartsWith(line.text, "[RECENTPARTS]") : inList;
        line.isItem = inList && StartsWith(line.text, "ITEM");
        lines.push_back(line);
    }
    return lines;
}

}   // namespace

std::string WithoutRecentItems(std::string_view text) {
    std::string rest;
    for (const Line& line : LinesOf(text)) {
        rest += line.isItem ? std::string_view() : line.text;
    }
    return rest;
}

std::string WithRecentItemsOf(std::string_view from, std::string_view to) {
    std::vector<std::string_view> items;
    for (const Line& line : LinesOf(from)) {
        if (line.isItem) {
            items.push_back(line.Content());
        }
    }
    std::string text;
    auto item = items.begin();
    for (const Line& line : LinesOf(to)) {
        text += line.isItem && item != items.end() ? *item++ : line.Content();
        text += line.End();
    }
    return text;
}
