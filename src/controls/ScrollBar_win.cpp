#include "controls/ScrollBar_win.h"

#include <algorithm>
#include <utility>

#include "ui/Paint_win.h"
#include "ui/PixelSheet_win.h"

namespace brennvar {
namespace {

constexpr int kThickness = 16;
constexpr int kFrames = 3;  // rest, hot, pressed
constexpr int kLeastThumb = 24;

// A triangle that points up or down, for a skin without pictures.
void DrawArrow(HDC dc, const RECT& place, bool isUp, COLORREF colour) {
    const int half = WidthOf(place) / 4;
    const RECT box = Centred(place, {2 * half, half});
    for (int line = 0; line < half; ++line) {
        const LONG top = isUp ? box.top + line : box.bottom - 1 - line;
        FillSolid(dc, {box.left + half - 1 - line, top, box.left + half + 1 + line, top + 1}, colour);
    }
}

}  // namespace

ScrollPictures::ScrollPictures(const Skin& skin) {
    const auto load = [&](const char* key, const char* file) {
        return CSkinImage::Load(skin.GetSkinImagePath(key, file));
    };
    up = load("SCROLLBAR_UP", "scrollbar_up.png");
    down = load("SCROLLBAR_DOWN", "scrollbar_down.png");
    back = load("SCROLLBAR_BACK", "scrollbar_back.png");
    thumbTop = load("SCROLLBAR_SLIDER1", "scrollbar_slider1.png");
    thumbMiddle = load("SCROLLBAR_SLIDER2", "scrollbar_slider2.png");
    thumbBottom = load("SCROLLBAR_SLIDER3", "scrollbar_slider3.png");
    corner = load("SCROLLBAR_TREE", "scrollbar_tree.png");
}

int CScrollBar::Thickness() {
    return Scale(kThickness);
}

bool CScrollBar::SetRange(const ScrollRange& range) {
    const ThumbPlace before = Thumb();
    m_range = range;
    return Thumb() != before;
}

int CScrollBar::Length() const {
    return m_isVertical ? HeightOf(m_place) : WidthOf(m_place);
}

int CScrollBar::ArrowLength() const {
    return std::min(Thickness(), Length() / 2);
}

ThumbPlace CScrollBar::Thumb() const {
    return PlaceThumb(m_range, TrackLength(), Scale(kLeastThumb));
}

int CScrollBar::Along(POINT point) const {
    return m_isVertical ? point.y - m_place.top : point.x - m_place.left;
}

CScrollBar::Part CScrollBar::PartAt(POINT point) const {
    if (!Contains(point)) return Part::None;
    const int along = Along(point);
    if (along < ArrowLength()) return Part::ArrowBack;
    if (along >= Length() - ArrowLength()) return Part::ArrowForward;
    const ThumbPlace thumb = Thumb();
    const int onTrack = along - ArrowLength();
    if (thumb.length == 0) return Part::None;
    if (onTrack < thumb.offset) return Part::PageBack;
    return onTrack < thumb.offset + thumb.length ? Part::Thumb : Part::PageForward;
}

int CScrollBar::PositionAfter(Part part) const {
    // An arrow moves by a row, or by as many pixels as a row is thick.
    const int step = m_isVertical ? 1 : Thickness();
    switch (part) {
        case Part::ArrowBack: return m_range.After(-step);
        case Part::ArrowForward: return m_range.After(step);
        case Part::PageBack: return m_range.AfterPages(-1);
        case Part::PageForward: return m_range.AfterPages(1);
        default: return m_range.position;
    }
}

bool CScrollBar::SetHot(POINT point) {
    const Part part = PartAt(point);
    return std::exchange(m_hot, part) != part;
}

bool CScrollBar::ClearHot() {
    return std::exchange(m_hot, Part::None) != Part::None;
}

int CScrollBar::Press(POINT point) {
    m_pressed = PartAt(point);
    m_grip = Along(point) - ArrowLength() - Thumb().offset;
    return PositionAfter(m_pressed);
}

int CScrollBar::Drag(POINT point) {
    if (m_pressed != Part::Thumb) return m_range.position;
    return PositionOfThumb(m_range, TrackLength(), Scale(kLeastThumb), Along(point) - ArrowLength() - m_grip);
}

int CScrollBar::Repeat(POINT point) const {
    return PartAt(point) == m_pressed ? PositionAfter(m_pressed) : m_range.position;
}

int CScrollBar::FrameOf(Part part) const {
    if (m_pressed == part) return 2;
    return m_pressed == Part::None && m_hot == part ? 1 : 0;
}

void CScrollBar::Paint(HDC dc, const ScrollPictures& pictures, const Palette& colours) const {
    if (!IsShown()) return;
    if (m_isVertical) {
        PaintUpright(dc, pictures, colours);
    } else {
        PaintTurned(dc, pictures, colours);
    }
}

// Paints at the place's left top, downwards.
void CScrollBar::PaintUpright(HDC dc, const ScrollPictures& pictures, const Palette& colours) const {
    const LONG left = m_isVertical ? m_place.left : 0;
    const LONG top = m_isVertical ? m_place.top : 0;
    const LONG right = left + (m_isVertical ? WidthOf(m_place) : HeightOf(m_place));
    const LONG bottom = top + Length();
    const auto paint = [&](const CSkinImage& image, const RECT& place, Part part) {
        image.DrawFrame(dc, place, FrameOf(part), kFrames);
        return static_cast<bool>(image);
    };
    FillSolid(dc, {left, top, right, bottom}, colours.page);
    const RECT track{left, top + ArrowLength(), right, bottom - ArrowLength()};
    pictures.back.DrawFrame(dc, track, 0, kFrames);
    const RECT up{left, top, right, track.top};
    const RECT down{left, track.bottom, right, bottom};
    if (!paint(pictures.up, up, Part::ArrowBack)) DrawArrow(dc, up, true, colours.quietText);
    if (!paint(pictures.down, down, Part::ArrowForward)) DrawArrow(dc, down, false, colours.quietText);
    const ThumbPlace place = Thumb();
    if (place.length == 0) return;
    const RECT thumb{left, track.top + place.offset, right, track.top + place.offset + place.length};
    if (!pictures.thumbMiddle) {
        FillSolid(dc, Inset(thumb, Scale(3)), m_pressed == Part::Thumb ? colours.quietText : colours.frame1);
        return;
    }
    const RECT upper{left, thumb.top, right, thumb.top + Scale(pictures.thumbTop.Height())};
    const RECT lower{left, thumb.bottom - Scale(pictures.thumbBottom.Height()), right, thumb.bottom};
    paint(pictures.thumbTop, upper, Part::Thumb);
    paint(pictures.thumbMiddle, {left, upper.bottom, right, lower.top}, Part::Thumb);
    paint(pictures.thumbBottom, lower, Part::Thumb);
}

void CScrollBar::PaintTurned(HDC dc, const ScrollPictures& pictures, const Palette& colours) const {
    const CPixelSheet upright(HeightOf(m_place), WidthOf(m_place));
    const CPixelSheet turned(WidthOf(m_place), HeightOf(m_place));
    if (!upright.Dc() || !turned.Dc()) return;
    PaintUpright(upright.Dc(), pictures, colours);
    ::GdiFlush();  // before its pixels are read
    for (int y = 0; y < HeightOf(m_place); ++y) {
        for (int x = 0; x < WidthOf(m_place); ++x) turned.At(x, y) = upright.At(y, x);
    }
    ::BitBlt(dc, m_place.left, m_place.top, WidthOf(m_place), HeightOf(m_place), turned.Dc(), 0, 0, SRCCOPY);
}

}  // namespace brennvar
