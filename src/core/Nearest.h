#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The name that a user most likely meant by `wanted`: the fewest typing errors away, letters compared without
/// case. Empty if none is close.
std::string NearestName(std::string_view wanted, const std::vector<std::string_view>& known);

/// "no PLL called 'RF1': did you mean 'RF'?", without the question if no name is close.
std::string UnknownName(std::string_view kind, std::string_view wanted, const std::vector<std::string_view>& known);
