// Vectors for tables that are made anew every few seconds. The system takes a large block back as soon as it is
// free, and gives the next one out without pages: getting these one by one takes longer than filling them. So large
// blocks that are free are kept, for the next table of about the same size.
#pragma once

#include <cstddef>
#include <limits>
#include <new>
#include <vector>

namespace brennvar {

// Any thread.
class LargeBlocks {
public:
    // Bytes from which a block is large: below that the heap keeps free blocks by itself.
    static constexpr std::size_t kLarge = std::size_t{256} * 1024;
    // At most so many bytes are kept: what one reading of full tables leaves behind, twice.
    static constexpr std::size_t kMostKept = std::size_t{96} * 1024 * 1024;

    // std::bad_alloc without memory. Give gets the size that was taken.
    [[nodiscard]] static void* Take(std::size_t bytes);
    static void Give(void* block, std::size_t bytes) noexcept;
    // The system gets back what is kept: nothing large will be made for a while.
    static void GiveBackAll() noexcept;
    // How many bytes are kept.
    [[nodiscard]] static std::size_t Kept() noexcept;
};

template <class Item>
struct LargeAllocator {
    using value_type = Item;

    LargeAllocator() = default;
    template <class Other>
    LargeAllocator(const LargeAllocator<Other>&) noexcept {}  // NOLINT(google-explicit-constructor): allocators do

    [[nodiscard]] Item* allocate(std::size_t count) {
        if (count > std::numeric_limits<std::size_t>::max() / sizeof(Item)) throw std::bad_array_new_length();
        return static_cast<Item*>(LargeBlocks::Take(count * sizeof(Item)));
    }
    void deallocate(Item* items, std::size_t count) noexcept { LargeBlocks::Give(items, count * sizeof(Item)); }

    friend bool operator==(const LargeAllocator&, const LargeAllocator&) { return true; }
};

template <class Item>
using LargeVector = std::vector<Item, LargeAllocator<Item>>;

}  // namespace brennvar
