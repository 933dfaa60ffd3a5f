#include "ui/Paint_win.h"

#include <array>

namespace brennvar {

CTextDc::CTextDc(HFONT font) {
    static thread_local UniqueMemoryDc s_memory;
    // Again when there was none to be had the last time.
    if (!s_memory) s_memory = UniqueMemoryDc(::CreateCompatibleDC(nullptr));
    m_dc = s_memory.Get();
    m_old = ::SelectObject(m_dc, font);
}

CTextDc::~CTextDc() {
    ::SelectObject(m_dc, m_old);
}

CBufferedDc::CBufferedDc(HDC target, const RECT& place)
    : m_target(target),
      m_place(place),
      m_memory(::CreateCompatibleDC(target)),
      m_bitmap(::CreateCompatibleBitmap(target, WidthOf(place), HeightOf(place))) {
    if (!m_memory || !m_bitmap) return;
    m_oldBitmap = ::SelectObject(m_memory.Get(), m_bitmap.Get());
    ::SetViewportOrgEx(m_memory.Get(), -place.left, -place.top, nullptr);
    m_isBuffered = true;
}

CBufferedDc::~CBufferedDc() {
    if (!m_isBuffered) return;
    ::BitBlt(m_target, m_place.left, m_place.top, WidthOf(m_place), HeightOf(m_place), m_memory.Get(), m_place.left,
             m_place.top, SRCCOPY);
    ::SelectObject(m_memory.Get(), m_oldBitmap);
}

CBufferedPaint::CBufferedPaint(HWND window) : m_begin(window), m_buffer(m_begin.dc, m_begin.paint.rcPaint) {}
CBufferedPaint::~CBufferedPaint() = default;

RECT Inset(RECT place, int by) {
    ::InflateRect(&place, -by, -by);
    return place;
}

RECT Centred(const RECT& place, SIZE size) {
    const LONG left = place.left + (WidthOf(place) - size.cx) / 2;
    const LONG top = place.top + (HeightOf(place) - size.cy) / 2;
    return {left, top, left + size.cx, top + size.cy};
}

void FillSolid(HDC dc, const RECT& place, COLORREF colour) {
    // An opaque empty text fills a rectangle without a brush to be made and deleted.
    const COLORREF old = ::SetBkColor(dc, colour);
    ::ExtTextOutA(dc, 0, 0, ETO_OPAQUE, &place, "", 0, nullptr);
    ::SetBkColor(dc, old);
}

void DrawFrame(HDC dc, const RECT& place, COLORREF colour) {
    FillSolid(dc, {place.left, place.top, place.right, place.top + 1}, colour);
    FillSolid(dc, {place.left, place.bottom - 1, place.right, place.bottom}, colour);
    FillSolid(dc, {place.left, place.top, place.left + 1, place.bottom}, colour);
    FillSolid(dc, {place.right - 1, place.top, place.right, place.bottom}, colour);
}

void FillGradient(HDC dc, const RECT& place, COLORREF from, COLORREF to, bool isVertical) {
    const auto corner = [](LONG x, LONG y, COLORREF colour) {
        const auto part = [](BYTE value) { return static_cast<COLOR16>(value << 8); };
        return TRIVERTEX{x, y, part(GetRValue(colour)), part(GetGValue(colour)), part(GetBValue(colour)), 0};
    };
    std::array<TRIVERTEX, 2> corners = {corner(place.left, place.top, from), corner(place.right, place.bottom, to)};
    GRADIENT_RECT pair{0, 1};
    ::GradientFill(dc, corners.data(), static_cast<ULONG>(corners.size()), &pair, 1,
                   isVertical ? GRADIENT_FILL_RECT_V : GRADIENT_FILL_RECT_H);
}

COLORREF MixColours(COLORREF first, COLORREF second, int share) {
    const auto mix = [share](int left, int right) { return left + (right - left) * share / 255; };
    return RGB(mix(GetRValue(first), GetRValue(second)), mix(GetGValue(first), GetGValue(second)),
               mix(GetBValue(first), GetBValue(second)));
}

bool IsDark(COLORREF colour) {
    // The brightness that an eye sees, in thousandths of each part.
    return (GetRValue(colour) * 299 + GetGValue(colour) * 587 + GetBValue(colour) * 114) / 1000 < 128;
}

void DrawLabel(HDC dc, HFONT font, const RECT& place, const std::string& text, COLORREF colour, UINT format) {
    const CSelect select(dc, font);
    const COLORREF oldColour = ::SetTextColor(dc, colour);
    const int oldMode = ::SetBkMode(dc, TRANSPARENT);
    RECT box = place;
    ::DrawTextA(dc, text.c_str(), static_cast<int>(text.size()), &box, format);
    ::SetBkMode(dc, oldMode);
    ::SetTextColor(dc, oldColour);
}

void PaintParentGround(HWND control, HDC dc) {
    const HWND parent = ::GetParent(control);
    POINT origin{};
    ::MapWindowPoints(control, parent, &origin, 1);
    POINT old{};
    ::OffsetViewportOrgEx(dc, -origin.x, -origin.y, &old);
    ::SendMessageA(parent, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0);
    ::SetViewportOrgEx(dc, old.x, old.y, nullptr);
}

}  // namespace brennvar
