// A scroll bar without a window: its owner gives it a place, passes the mouse on and scrolls to where it says.
#pragma once

#include "base/Windows_win.h"
#include "controls/ScrollRange.h"
#include "ui/Look_win.h"
#include "ui/SkinImage_win.h"

namespace brennvar {

// The pieces of vertical bars, three frames each (rest, hot, pressed); horizontal bars turn them.
struct ScrollPictures {
    explicit ScrollPictures(const Skin& skin);

    CSkinImage up;
    CSkinImage down;
    CSkinImage back;  // stretched over the track
    CSkinImage thumbTop;
    CSkinImage thumbMiddle;  // stretched
    CSkinImage thumbBottom;
    CSkinImage corner;  // between both bars
};

class CScrollBar {
public:
    enum class Part { None, ArrowBack, PageBack, Thumb, PageForward, ArrowForward };

    explicit CScrollBar(bool isVertical) : m_isVertical(isVertical) {}
    [[nodiscard]] static int Thickness();  // pixels

    // An empty place hides the bar.
    void SetPlace(const RECT& place) { m_place = place; }
    [[nodiscard]] const RECT& Place() const { return m_place; }
    [[nodiscard]] bool IsShown() const { return !::IsRectEmpty(&m_place); }
    // True when the thumb has moved: the bar has to be painted.
    bool SetRange(const ScrollRange& range);
    [[nodiscard]] const ScrollRange& Range() const { return m_range; }

    // Where a click on an arrow or beside the thumb leads.
    [[nodiscard]] int PositionAfter(Part part) const;

    void Paint(HDC dc, const ScrollPictures& pictures, const Palette& colours) const;

    [[nodiscard]] bool Contains(POINT point) const { return ::PtInRect(&m_place, point) != FALSE; }
    // True when the bar looks different now.
    bool SetHot(POINT point);
    bool ClearHot();
    // The button goes down: the position to scroll to.
    int Press(POINT point);
    // The mouse moves while the button is held.
    int Drag(POINT point);
    // The button is still held: arrows and pages go on, pages until the thumb is below the mouse.
    [[nodiscard]] int Repeat(POINT point) const;
    void Release() { m_pressed = Part::None; }
    [[nodiscard]] Part Pressed() const { return m_pressed; }

private:
    [[nodiscard]] int Length() const;
    [[nodiscard]] int ArrowLength() const;
    [[nodiscard]] int TrackLength() const { return Length() - 2 * ArrowLength(); }
    [[nodiscard]] ThumbPlace Thumb() const;
    [[nodiscard]] int Along(POINT point) const;  // from the start of the bar
    [[nodiscard]] Part PartAt(POINT point) const;
    void PaintUpright(HDC dc, const ScrollPictures& pictures, const Palette& colours) const;
    void PaintTurned(HDC dc, const ScrollPictures& pictures, const Palette& colours) const;
    [[nodiscard]] int FrameOf(Part part) const;

    bool m_isVertical;
    RECT m_place{};
    ScrollRange m_range;
    Part m_hot = Part::None;
    Part m_pressed = Part::None;
    int m_grip = 0;  // from the thumb's start to the mouse that drags it
};

}  // namespace brennvar
