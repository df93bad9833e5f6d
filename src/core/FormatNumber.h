#pragma once

#include <string>
#include <string_view>

/// A number under a pattern, as spreadsheet users know it: "0" a digit that always shows, "#" one that shows when
/// it counts, "." the decimal point, "," between digits groups of three, "%" times 100, "E+00" or "E-00" the
/// exponent, "\x" and quoted text as they stand, every other character as it stands; up to three sections parted
/// by ";", for positive, negative and zero. A pattern without a digit place gives its texts alone.
std::string FormatNumber(double value, std::string_view pattern);
