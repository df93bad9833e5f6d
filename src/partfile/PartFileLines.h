#pragma once

#include <string>
#include <vector>

#include "ini/ProfileLine.h"

/// The lines of a part file as they stand, those too that no read of a key finds. They are those of the state that a
/// ProfileSnapshot holds, if there is one.
class PartFileLines {
public:
    explicit PartFileLines(const std::string& path);
    PartFileLines(const PartFileLines&) = delete;
    PartFileLines& operator=(const PartFileLines&) = delete;

    [[nodiscard]] auto begin() const noexcept { return lines_.begin(); }
    [[nodiscard]] auto end() const noexcept { return lines_.end(); }

private:
    std::string text_;   ///< What the lines are views into.
    std::vector<ProfileLine> lines_;
};
