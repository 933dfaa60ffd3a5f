#include "ui/KeptBitmap_win.h"

#include <utility>

namespace brennvar {

thread_local CKeptBitmap* CKeptBitmap::s_newest = nullptr;

bool CKeptBitmap::Make(HDC like, SIZE size) {
    Drop();
    m_size = size;
    std::size_t room = kMostBytes;
    if (size.cx <= 0 || size.cy <= 0 || Bytes() > room) return false;
    room -= Bytes();
    for (CKeptBitmap* kept = s_newest; kept;) {
        CKeptBitmap* const older = kept->m_older;
        if (kept->Bytes() <= room) {
            room -= kept->Bytes();
        } else {
            kept->Drop();
        }
        kept = older;
    }
    UniqueMemoryDc dc(::CreateCompatibleDC(like));
    UniqueBitmap bitmap(::CreateCompatibleBitmap(like, size.cx, size.cy));
    if (!dc || !bitmap) return false;
    m_oldBitmap = ::SelectObject(dc.Get(), bitmap.Get());
    m_dc = std::move(dc);
    m_bitmap = std::move(bitmap);
    m_older = std::exchange(s_newest, this);
    return true;
}

void CKeptBitmap::Drop() {
    if (!m_dc) return;
    CKeptBitmap** link = &s_newest;
    while (*link && *link != this) link = &(*link)->m_older;
    if (*link) *link = m_older;
    m_older = nullptr;
    ::SelectObject(m_dc.Get(), m_oldBitmap);
    m_dc.Reset();
    m_bitmap.Reset();
}

void CKeptBitmap::DropAll() {
    while (s_newest) s_newest->Drop();
}

}  // namespace brennvar
