#include "core/Problems.h"

#include <algorithm>

const char* SeverityName(Severity severity) {
    switch (severity) {
        case Severity::Note:
            return "note";
        case Severity::Warning:
            return "warning";
        case Severity::Error:
            break;
    }
    return "error";
}

std::string Problem::Message() const {
    std::string place = file;
    if (line > 0) {
        place += ':' + std::to_string(line);
    }
    place += std::string(": ") + SeverityName(severity) + ": ";
    if (!section.empty()) {
        place += '[' + section + "] ";
    }
    if (!key.empty()) {
        place += key + ": ";
    }
    return place + text;
}

int Problems::Count(Severity least) const noexcept {
    return static_cast<int>(
        std::count_if(list_.begin(), list_.end(), [&](const Problem& p) { return p.severity >= least; }));
}

void Problems::SortByLine() {
    std::stable_sort(list_.begin(), list_.end(), [](const Problem& a, const Problem& b) { return a.line < b.line; });
}
