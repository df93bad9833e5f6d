#pragma once

inline constexpr int kLongestRegister = 53;   ///< The bits of a whole number that a double holds exactly.
inline constexpr int kMostPLLs = 16;          ///< Each has a page of its own.
