#include "support/FailingMemory.h"

#include <cstddef>
#include <cstdlib>

namespace {

// Allocations that succeed before the next one fails; below zero none does.
thread_local int s_left = -1;
thread_local bool s_isUsedUp = false;

void* Allocate(std::size_t size) {
    const bool fails = s_left == 0 || s_isUsedUp;
    if (s_left >= 0) --s_left;
    void* const memory = fails ? nullptr : std::malloc(size > 0 ? size : 1);
    if (!memory) throw std::bad_alloc();
    return memory;
}

}  // namespace

void* operator new(std::size_t size) {
    return Allocate(size);
}
void* operator new[](std::size_t size) {
    return Allocate(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace brennvar::test {

void UseMemoryUp() {
    s_isUsedUp = true;
}

void FailingMemory::Begin() const {
    s_left = m_left;
}

void FailingMemory::End() {
    m_left = s_left;
    s_left = -1;
}

}  // namespace brennvar::test
