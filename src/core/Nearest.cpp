#include "core/Nearest.h"

#include <algorithm>
#include <cctype>

namespace {

constexpr std::size_t kLongestCompared = 80;   // Names beyond this aren't typing errors of each other.

char Folded(char c) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

/// How many letters must be inserted, dropped or replaced to turn one text into the other.
std::size_t TypingErrors(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j < row.size(); ++j) {
        row[j] = j;
    }
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t above = row[j];
            const std::size_t replaced = diagonal + (Folded(a[i - 1]) == Folded(b[j - 1]) ? 0 : 1);
            row[j] = std::min({replaced, above + 1, row[j - 1] + 1});
            diagonal = above;
        }
    }
    return row.back();
}

/// Whether the longer text begins with the shorter one, as far as a name was typed in part, or with too much.
bool OneBeginsWithOther(std::string_view a, std::string_view b) {
    const std::size_t length = std::min(a.size(), b.size());
    return length > 1 && std::equal(a.begin(), a.begin() + static_cast<std::ptrdiff_t>(length), b.begin(),
                                    [](char x, char y) { return Folded(x) == Folded(y); });
}

std::string Shown(std::string_view name) {
    return std::string(name.substr(0, kLongestCompared)) + (name.size() > kLongestCompared ? "..." : "");
}

}   // namespace

std::string NearestName(std::string_view wanted, const std::vector<std::string_view>& known) {
    if (wanted.empty() || wanted.size() > kLongestCompared) {
        return {};
    }
    std::string_view best;
    std::size_t fewest = std::max<std::size_t>(1, wanted.size() / 3) + 1;
    for (const std::string_view name : known) {
        if (name.size() <= kLongestCompared) {
            const std::size_t typed = TypingErrors(wanted, name);
            const std::size_t errors = OneBeginsWithOther(wanted, name) ? std::min<std::size_t>(typed, 1) : typed;
            if (errors < fewest) {
                fewest = errors;
                best = name;
            }
        }
    }
    return std::string(best);
}

std::string UnknownName(std::string_view kind, std::string_view wanted, const std::vector<std::string_view>& known) {
    std::string text = "no " + std::string(kind) + " called '" + Shown(wanted) + "'";
    if (const std::string nearest = NearestName(wanted, known); !nearest.empty()) {
        text += ": did you mean '" + nearest + "'?";
    }
    return text;
}
