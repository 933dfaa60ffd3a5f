#include "support/FreedMemory.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <utility>

namespace brennvar::test {
namespace {

std::atomic<const std::vector<std::string_view>*> s_secrets = nullptr;
std::atomic<int> s_count = 0;

// In front of each block stands its size.
constexpr std::size_t kHead = alignof(std::max_align_t);

void* Allocate(std::size_t size) noexcept {
    auto* const block = static_cast<std::byte*>(std::malloc(kHead + size));
    if (!block) return nullptr;
    ::new (block) std::size_t(size);
    return block + kHead;
}

void Free(void* memory) noexcept {
    if (!memory) return;
    auto* const block = static_cast<std::byte*>(memory) - kHead;
    if (const auto* const secrets = s_secrets.load()) {
        const std::string_view content(static_cast<const char*>(memory), *reinterpret_cast<std::size_t*>(block));
        for (const std::string_view secret : *secrets) {
            if (content.find(secret) != std::string_view::npos) ++s_count;
        }
    }
    std::free(block);
}

}  // namespace

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
    if (void* const memory = brennvar::test::Allocate(size)) return memory;
    throw std::bad_alloc();
}
void* operator new[](std::size_t size) {
    return operator new(size);
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
