#pragma once

inline constexpr int kPageMargin = 9;   ///< Round the contents of a page or a group, in logical pixels.
