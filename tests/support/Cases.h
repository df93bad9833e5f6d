#pragma once

#include <tuple>
#include <vector>

/// The rows of a table of test cases. The loop over them names the columns:
/// `for (const auto& [typed, stored] : Cases<const char*, int>{{"5", 5}, {"five", 0}})`.
template <class... Columns>
using Cases = std::vector<std::tuple<Columns...>>;
