#pragma once

#include <cstdint>

// How many members one PLL's block diagram has of each kind. PLL index n owns members n * count + k.

inline constexpr std::int16_t kDiagramLines = 19;
inline constexpr std::int16_t kDiagramShapes = 9;
inline constexpr std::int16_t kDiagramLabels = 22;
