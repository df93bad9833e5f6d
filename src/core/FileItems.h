#pragma once

#include <cstddef>
#include <vector>

/// Which item of its section each object came from, in the order of the collection. They differ from the
/// positions where an item was left out.
struct FileItems {
    std::vector<int> pins;
    std::vector<int> registers;
    std::vector<int> fields;
    std::vector<int> plls;

    /// The item of the object at that place, counted from 0; the place itself for objects that no file made.
    static int At(const std::vector<int>& items, int place) {
        const auto index = static_cast<std::size_t>(place);
        return index < items.size() ? items[index] : place;
    }
};
