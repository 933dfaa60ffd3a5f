// The test programs' own "new" and "delete", behind FailingMemory and FreedMemory.
#include <malloc.h>

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <utility>

#include "support/FailingMemory.h"
#include "support/FreedMemory.h"

namespace brennvar::test {
namespace {

// Allocations that succeed before the next one fails; below zero none does.
thread_local int s_left = -1;
thread_local bool s_isUsedUp = false;

std::atomic<const std::vector<std::string_view>*> s_secrets = nullptr;
std::atomic<int> s_count = 0;

void* Allocate(std::size_t size) noexcept {
    const bool fails = s_left == 0 || s_isUsedUp;
    if (s_left >= 0) --s_left;
    return fails ? nullptr : std::malloc(size > 0 ? size : 1);
}

void* AllocateOrThrow(std::size_t size) {
    void* const memory = Allocate(size);
    if (!memory) throw std::bad_alloc();
    return memory;
}

std::size_t SizeOf(void* memory) {
#ifdef _WIN32
    return ::_msize(memory);
#else
    return ::malloc_usable_size(memory);
#endif
}

void Free(void* memory) noexcept {
    const auto* const secrets = memory ? s_secrets.load() : nullptr;
    if (secrets) {
        const std::string_view content(static_cast<const char*>(memory), SizeOf(memory));
        for (const std::string_view secret : *secrets) {
            if (content.find(secret) != std::string_view::npos) ++s_count;
        }
    }
    std::free(memory);
}

}  // namespace

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

FreedMemory::FreedMemory(std::vector<std::string_view> secrets) : m_secrets(std::move(secrets)) {
    s_count = 0;
    s_secrets = &m_secrets;
}

FreedMemory::~FreedMemory() {
    s_secrets = nullptr;
}

int FreedMemory::Count() const {
    return s_count;
}

}  // namespace brennvar::test

void* operator new(std::size_t size) {
    return brennvar::test::AllocateOrThrow(size);
}
void* operator new[](std::size_t size) {
    return brennvar::test::AllocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return brennvar::test::Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return brennvar::test::Allocate(size);
}
void operator delete(void* memory) noexcept {
    brennvar::test::Free(memory);
}
void operator delete[](void* memory) noexcept {
    brennvar::test::Free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    brennvar::test::Free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    brennvar::test::Free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    brennvar::test::Free(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept {
    brennvar::test::Free(memory);
}
