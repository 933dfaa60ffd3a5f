// Sorts many items by numbers that they hold, byte after byte. Full tables take a third of the time of a sort by
// comparisons: bytes that are the same in all items need no step.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <numeric>

#include "base/LargeVector.h"

namespace brennvar {

// Ascending by the number that numberOf says of an item; equal ones stay in their order, so that a sort by several
// numbers is one by the last of them first. room: of any size and contents, used meanwhile.
template <class Item, class NumberOf>
void RadixSort(LargeVector<Item>& items, LargeVector<Item>& room, const NumberOf& numberOf) {
    std::uint64_t differing = 0;
    for (const Item& item : items) differing |= numberOf(item) ^ numberOf(items.front());
    room.resize(items.size());
    for (unsigned shift = 0; shift < 64; shift += 8) {
        if ((differing >> shift & 0xFF) == 0) continue;
        const auto byteOf = [&](const Item& item) { return static_cast<std::uint8_t>(numberOf(item) >> shift); };
        std::array<std::size_t, 256> starts{};
        for (const Item& item : items) ++starts[byteOf(item)];
        std::exclusive_scan(starts.begin(), starts.end(), starts.begin(), std::size_t{0});
        for (const Item& item : items) room[starts[byteOf(item)]++] = item;
        items.swap(room);
    }
}

}  // namespace brennvar
