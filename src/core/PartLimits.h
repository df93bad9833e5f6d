#pragma once

inline constexpr int kLongestRegister = 53;   ///< The bits of a whole number that a double holds exactly.
inline constexpr int kHighestLine = 11;       ///< Lines of the port: 0 to 7 data, 8 to 11 C1 to C4.
