#pragma once

#include <compare>

namespace orvel {

// A row's or an item's place in a table or strip.
struct IndexPath
{
    int section = 0;
    int row = 0; // of a strip: the item
    auto operator<=>(const IndexPath &) const = default;
};

} // namespace orvel
