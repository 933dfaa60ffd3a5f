// A bitmap that is kept from one painting to the next: what is painted row by row is put together here, so that
// nothing flickers and nothing is made anew for each row.
#pragma once

#include <algorithm>
#include <utility>

#include "base/Handles_win.h"
#include "ui/Paint_win.h"

namespace brennvar {

class CStripBuffer {
public:
    CStripBuffer() = default;
    CStripBuffer(const CStripBuffer&) = delete;
    CStripBuffer& operator=(const CStripBuffer&) = delete;
    ~CStripBuffer() { Free(); }

    // At least this large, with the font selected and text without ground. Null without memory.
    HDC Prepare(HDC like, int width, int height, HFONT font) {
        if (!m_dc || width > m_size.cx || height > m_size.cy) Make(like, width, height);
        if (!m_dc) return nullptr;
        ::SelectObject(m_dc.Get(), font);
        return m_dc.Get();
    }

private:
    void Make(HDC like, int width, int height) {
        const SIZE size{std::max<LONG>(m_size.cx, width), std::max<LONG>(m_size.cy, height)};
        Free();
        UniqueMemoryDc dc(::CreateCompatibleDC(like));
        UniqueBitmap bitmap(::CreateCompatibleBitmap(like, size.cx, size.cy));
        if (!dc || !bitmap) return;
        m_oldBitmap = ::SelectObject(dc.Get(), bitmap.Get());
        m_oldFont = ::GetCurrentObject(dc.Get(), OBJ_FONT);
        ::SetBkMode(dc.Get(), TRANSPARENT);
        m_dc = std::move(dc);
        m_bitmap = std::move(bitmap);
        m_size = size;
    }
    void Free() {
        if (m_dc) {
            ::SelectObject(m_dc.Get(), m_oldFont);
            ::SelectObject(m_dc.Get(), m_oldBitmap);
        }
        m_dc.Reset();
        m_bitmap.Reset();
        m_size = {};
    }

    UniqueMemoryDc m_dc;
    UniqueBitmap m_bitmap;
    HGDIOBJ m_oldBitmap = nullptr;
    HGDIOBJ m_oldFont = nullptr;
    SIZE m_size{};
};

}  // namespace brennvar
