// One owner for one handle: move-only, closed in the destructor and on assignment. The traits name the type, its
// empty value and how to close it; the aliases for Windows handles are in Handles_win.h.
#pragma once

#include <utility>

namespace brennvar {

template <class Traits>
class UniqueHandle {
public:
    using Type = typename Traits::Type;

    UniqueHandle() noexcept = default;
    explicit UniqueHandle(Type handle) noexcept : m_handle(handle) {}
    UniqueHandle(UniqueHandle&& other) noexcept : m_handle(other.Release()) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept {
        if (this != &other) Reset(other.Release());
        return *this;
    }
    UniqueHandle(const UniqueHandle&) = delete;
    UniqueHandle& operator=(const UniqueHandle&) = delete;
    ~UniqueHandle() { Reset(); }

    [[nodiscard]] Type Get() const noexcept { return m_handle; }
    [[nodiscard]] explicit operator bool() const noexcept { return m_handle != Traits::Empty(); }
    // Gives the handle up without closing it.
    [[nodiscard]] Type Release() noexcept { return std::exchange(m_handle, Traits::Empty()); }
    void Reset(Type handle = Traits::Empty()) noexcept {
        const Type old = std::exchange(m_handle, handle);
        if (old != Traits::Empty()) Traits::Close(old);
    }

private:
    Type m_handle = Traits::Empty();
};

}  // namespace brennvar
