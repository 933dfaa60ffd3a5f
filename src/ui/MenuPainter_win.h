// How a pop-up menu looks: the size of its items, the items, and the edge of its window.
#pragma once

#include <string>

#include "ui/Look_win.h"
#include "ui/PopupMenu_win.h"

namespace brennvar {

class CMenuPainter {
public:
    // All are borrowed; images may be null.
    CMenuPainter(const Look& look, const CSkinImage* images);

    [[nodiscard]] COLORREF Ground() const { return m_colours.ground; }
    void Measure(const MenuItem& item, MEASUREITEMSTRUCT& measure) const;
    void Draw(const MenuItem& item, const DRAWITEMSTRUCT& draw) const;
    // The frame of a menu's window and what lies between it and the items. dc: of the whole window.
    void DrawEdge(HWND menuWindow, HDC dc) const;

private:
    struct Colours {
        explicit Colours(const Skin& skin);
        COLORREF border;
        COLORREF selection;
        COLORREF text;
        COLORREF ground;
        COLORREF bar;
    };

    void DrawRow(const MenuItem& item, HDC dc, const RECT& row, UINT state) const;
    void DrawTexts(const MenuItem& item, HDC dc, const RECT& place, COLORREF colour, bool showsMnemonic) const;
    void DrawImage(const MenuItem& item, HDC dc, const RECT& bar) const;
    void DrawCheckMark(HDC dc, const RECT& box) const;
    void DrawArrow(HDC dc, const RECT& row, COLORREF colour) const;
    [[nodiscard]] HFONT FontOf(const MenuItem& item) const {
        return item.state.isDefault ? m_look.fonts.Bold() : m_look.fonts.Text();
    }

    const Look& m_look;
    const CSkinImage* const m_images;
    const Colours m_colours;
};

}  // namespace brennvar
