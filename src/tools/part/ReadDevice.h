#pragma once

#include <string>

#include "core/cPart.h"

/// A device read from a part file as the program reads it, without a window.
class ReadDevice {
public:
    explicit ReadDevice(const std::string& path);

    [[nodiscard]] cPart& Part() noexcept { return part_; }

    /// Prints what is wrong with the file from that severity up, to the standard error. True if there are errors.
    bool PrintFaults(Severity least);

    /// A number with as many hexadecimal digits as a register has: "0x00580005".
    [[nodiscard]] std::string Word(double value) const;

private:
    cPart part_;
};
