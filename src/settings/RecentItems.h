#pragma once

#include <string>
#include <string_view>

/// The text of a settings file without the items of its recent list, which the program writes. The text of another
/// file stays as it is.
std::string WithoutRecentItems(std::string_view text);

/// The text `to` with the items of `from`, in their order, in place of its own; it keeps their number.
std::string WithRecentItemsOf(std::string_view from, std::string_view to);
