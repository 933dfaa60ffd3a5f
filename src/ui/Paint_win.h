// Painting without flicker, and the few shapes that every control is made of. Colours are COLORREF values, places
// are in the coordinates of the DC.
#pragma once

#include <string>

#include "base/Handles_win.h"

namespace brennvar {

// Selects an object into a DC and the old one back at the end.
class CSelect {
public:
    CSelect(HDC dc, HGDIOBJ object) : m_dc(dc), m_old(::SelectObject(dc, object)) {}
    CSelect(const CSelect&) = delete;
    CSelect& operator=(const CSelect&) = delete;
    ~CSelect() { ::SelectObject(m_dc, m_old); }

private:
    HDC m_dc;
    HGDIOBJ m_old;
};

// Another one's DC, as it was before at the end.
class SavedDc {
public:
    explicit SavedDc(HDC dc) : m_dc(dc), m_saved(::SaveDC(dc)) {}
    SavedDc(const SavedDc&) = delete;
    SavedDc& operator=(const SavedDc&) = delete;
    ~SavedDc() { ::RestoreDC(m_dc, m_saved); }

private:
    HDC m_dc;
    int m_saved;
};

// A DC with a font in it, to measure text outside painting. It is one in memory that the thread keeps: that of a
// window has to be asked for and clipped each time. Ends before what was made before it.
class CTextDc {
public:
    explicit CTextDc(HFONT font);
    CTextDc(const CTextDc&) = delete;
    CTextDc& operator=(const CTextDc&) = delete;
    ~CTextDc();
    [[nodiscard]] HDC Dc() const { return m_dc; }

private:
    HDC m_dc;
    HGDIOBJ m_old;
};

// Draws into a bitmap of the size of a place, with the same coordinates; the destructor copies it to the target.
// Without memory for the bitmap it draws on the target itself.
class CBufferedDc {
public:
    CBufferedDc(HDC target, const RECT& place);
    CBufferedDc(const CBufferedDc&) = delete;
    CBufferedDc& operator=(const CBufferedDc&) = delete;
    ~CBufferedDc();
    [[nodiscard]] HDC Dc() const { return m_isBuffered ? m_memory.Get() : m_target; }

private:
    HDC m_target;
    RECT m_place;
    UniqueMemoryDc m_memory;
    UniqueBitmap m_bitmap;
    HGDIOBJ m_oldBitmap = nullptr;
    bool m_isBuffered = false;
};

// BeginPaint and EndPaint with a buffer for the invalid part between them.
class CBufferedPaint {
public:
    explicit CBufferedPaint(HWND window);
    CBufferedPaint(const CBufferedPaint&) = delete;
    CBufferedPaint& operator=(const CBufferedPaint&) = delete;
    ~CBufferedPaint();
    [[nodiscard]] HDC Dc() const { return m_buffer.Dc(); }
    // What has to be painted anew.
    [[nodiscard]] const RECT& Invalid() const { return m_begin.paint.rcPaint; }

private:
    struct Begin {  // ends after the buffer has been copied
        explicit Begin(HWND window) : window(window), dc(::BeginPaint(window, &paint)) {}
        Begin(const Begin&) = delete;
        Begin& operator=(const Begin&) = delete;
        ~Begin() { ::EndPaint(window, &paint); }
        HWND window;
        PAINTSTRUCT paint{};
        HDC dc;
    };
    Begin m_begin;
    CBufferedDc m_buffer;
};

[[nodiscard]] inline int WidthOf(const RECT& place) {
    return place.right - place.left;
}
[[nodiscard]] inline int HeightOf(const RECT& place) {
    return place.bottom - place.top;
}
// The place made smaller by so many pixels on every side.
[[nodiscard]] RECT Inset(RECT place, int by);
// A place of this size in the middle of another one.
[[nodiscard]] RECT Centred(const RECT& place, SIZE size);

void FillSolid(HDC dc, const RECT& place, COLORREF colour);
// A frame one pixel wide, inside the place.
void DrawFrame(HDC dc, const RECT& place, COLORREF colour);
void FillGradient(HDC dc, const RECT& place, COLORREF from, COLORREF to, bool isVertical);
// A mixture: share 0 is only the first colour, 255 only the second.
[[nodiscard]] COLORREF MixColours(COLORREF first, COLORREF second, int share);
// A ground that light text reads on.
[[nodiscard]] bool IsDark(COLORREF colour);
// Text in the font's character set, without ground. format: DT_ flags; DT_NOPREFIX has to be given where "&" is no
// mnemonic.
void DrawLabel(HDC dc, HFONT font, const RECT& place, const std::string& text, COLORREF colour, UINT format);
// What a window paints in WM_ERASEBKGND, through a buffer, so that nothing of it is seen before the rest: paint is
// called with the DC to paint on. A DC in memory, such as the one of a child control that wants the ground behind
// itself, is painted on as it is.
template <class Paint>
void PaintGroundAtOnce(HWND window, HDC dc, const Paint& paint) {
    if (::GetObjectType(dc) == OBJ_MEMDC) return paint(dc);
    RECT place{};
    RECT clip{};
    ::GetClientRect(window, &place);
    ::GetClipBox(dc, &clip);
    if (!::IntersectRect(&place, &place, &clip)) return;
    const CBufferedDc buffer(dc, place);
    paint(buffer.Dc());
}
// Paints what the parent shows behind a child control. Parents paint their ground in WM_ERASEBKGND.
void PaintParentGround(HWND control, HDC dc);

}  // namespace brennvar
