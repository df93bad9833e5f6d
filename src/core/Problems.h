#pragma once

#include <string>
#include <utility>
#include <vector>

enum class Severity {
    Note,      ///< Worth knowing; nothing needs to be done.
    Warning,   ///< Works, though hardly as meant.
    Error      ///< Something of the file is left out or replaced by a default.
};

/// One fault of a part file, and where it stands.
struct Problem {
    Severity severity = Severity::Error;
    std::string file;
    int line = 0;   ///< Counted from 1; 0 where no line can be named.
    std::string section;
    std::string key;
    std::string text;    ///< What is wrong, what was expected, and what the program does instead.
    std::string taken;   ///< The default in place of a value that couldn't be read; empty where there is none.

    /// "file:line: severity: [SECTION] KEY: text".
    [[nodiscard]] std::string Message() const;
};

/// What is wrong with a device's part file, in the order of finding.
class Problems {
public:
    void Add(Problem problem) { list_.push_back(std::move(problem)); }
    void Clear() noexcept { list_.clear(); }
    void SortByLine();   ///< Those of one line stay in the order of finding.
    [[nodiscard]] const std::vector<Problem>& All() const noexcept { return list_; }
    /// How many are of that severity or worse.
    [[nodiscard]] int Count(Severity least = Severity::Note) const noexcept;

private:
    std::vector<Problem> list_;
};

const char* SeverityName(Severity severity);
