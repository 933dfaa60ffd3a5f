// A bitmap that is kept from one painting to the next: what has not changed is copied and not painted anew. These
// are worth their memory only while somebody looks, so all of a thread are given up together when the window has
// gone from the screen, and the older ones when they become too many.
#pragma once

#include <cstddef>

#include "base/Handles_win.h"

namespace brennvar {

class CKeptBitmap {
public:
    // Of all on a thread: bytes, at 32 bits a pixel. Room for a large screen, and the lists of two pages on it.
    static constexpr std::size_t kMostBytes = std::size_t{24} << 20;

    CKeptBitmap() = default;
    CKeptBitmap(const CKeptBitmap&) = delete;
    CKeptBitmap& operator=(const CKeptBitmap&) = delete;
    ~CKeptBitmap() { Drop(); }

    // Null until there is a bitmap, and after it was given up: nothing that was painted is left then.
    [[nodiscard]] HDC Dc() const { return m_dc.Get(); }
    [[nodiscard]] SIZE Size() const { return m_size; }
    // A new one of this size, of unknown content. False without memory, and where it alone would be too large to be
    // kept; there is none then.
    bool Make(HDC like, SIZE size);
    void Drop();
    // All of this thread.
    static void DropAll();

private:
    [[nodiscard]] std::size_t Bytes() const {
        return std::size_t{4} * static_cast<std::size_t>(m_size.cx) * static_cast<std::size_t>(m_size.cy);
    }

    // Those of the thread that have a bitmap, the newest first.
    static thread_local CKeptBitmap* s_newest;
    CKeptBitmap* m_older = nullptr;

    UniqueBitmap m_bitmap;
    UniqueMemoryDc m_dc;
    HGDIOBJ m_oldBitmap = nullptr;
    SIZE m_size{};
};

}  // namespace brennvar
