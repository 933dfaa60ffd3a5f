#include "base/LargeVector.h"

#include <algorithm>
#include <array>
#include <bit>
#include <mutex>

namespace brennvar {
namespace {

// Tables grow and shrink from reading to reading: sizes are rounded up to an eighth of the power of two below them,
// so that the next one fits into the block of the last one most of the time.
std::size_t RoundUp(std::size_t bytes) {
    const std::size_t step = std::bit_floor(bytes) / 8;
    return (bytes + step - 1) / step * step;
}

struct Block {
    void* memory = nullptr;
    std::size_t size = 0;  // rounded up
};

class KeptBlocks {
public:
    // Null: there is none of this size.
    void* Take(std::size_t size) {
        const std::scoped_lock lock(m_mutex);
        const auto end = m_blocks.begin() + m_count;
        const auto found =
            std::find_if(m_blocks.begin(), end, [=](const Block& block) { return block.size == size; });
        if (found == end) return nullptr;
        void* const memory = found->memory;
        *found = m_blocks[--m_count];
        m_kept -= size;
        return memory;
    }
    // False when there is no more room for it.
    bool Keep(Block block) {
        const std::scoped_lock lock(m_mutex);
        if (m_count == m_blocks.size() || m_kept + block.size > LargeBlocks::kMostKept) return false;
        m_blocks[m_count++] = block;
        m_kept += block.size;
        return true;
    }
    void GiveBackAll() {
        const std::scoped_lock lock(m_mutex);
        while (m_count > 0) ::operator delete(m_blocks[--m_count].memory);
        m_kept = 0;
    }
    std::size_t Kept() {
        const std::scoped_lock lock(m_mutex);
        return m_kept;
    }

private:
    std::mutex m_mutex;
    std::array<Block, 32> m_blocks;  // one reading and its order are made of about 20
    std::size_t m_count = 0;
    std::size_t m_kept = 0;  // bytes
};

// Never destroyed: a thread that is left behind at the end of the program may still give one back.
KeptBlocks& Kept() {
    static KeptBlocks& blocks = *new KeptBlocks;
    return blocks;
}

}  // namespace

void* LargeBlocks::Take(std::size_t bytes) {
    if (bytes < kLarge) return ::operator new(bytes);
    const std::size_t size = RoundUp(bytes);
    void* const kept = brennvar::Kept().Take(size);
    return kept ? kept : ::operator new(size);
}

void LargeBlocks::Give(void* block, std::size_t bytes) noexcept {
    if (bytes >= kLarge && brennvar::Kept().Keep({.memory = block, .size = RoundUp(bytes)})) return;
    ::operator delete(block);
}

void LargeBlocks::GiveBackAll() noexcept {
    brennvar::Kept().GiveBackAll();
}

std::size_t LargeBlocks::Kept() noexcept {
    return brennvar::Kept().Kept();
}

}  // namespace brennvar
