// Text that looks like a label, but can be selected and copied with mouse and keyboard. Lines are broken.
#pragma once

#include <optional>
#include <string>

#include "ui/Control_win.h"

namespace brennvar {

// An EDIT that is only read, so that screen readers and automation find it as one. Keys that mean nothing in it (up
// and down beyond its lines, page keys) and the wheel go to its parent.
class CSelectableText final : public CControl {
public:
    void Create(HWND parent, int id, const Look& look);

    // In the font's character set. What is selected stays so. False: it was shown already.
    bool Show(const std::string& text);
    // pill: the ground of a pill around the text; nothing: it stands on the list's ground.
    void SetColours(COLORREF text, std::optional<COLORREF> pill);
    // Makes it so wide; the height that the text takes then. Pixels of the screen.
    [[nodiscard]] int HeightAt(int width);
    // Of the text in one line.
    [[nodiscard]] int FullWidth() const;
    // What a pill adds to the text at each side, above and below: all sizes here count it.
    [[nodiscard]] SIZE PillMargin() const;
    void TellAccessible(AccessibleThing& thing) const override;

private:
    [[nodiscard]] bool PaintsAll() const override { return false; }
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    std::optional<LRESULT> OnReflected(UINT message, WPARAM wParam, LPARAM lParam) override;
    [[nodiscard]] bool IsForParent(WPARAM key);
    LRESULT OnCalculateSize(WPARAM wParam, RECT& place);
    void PaintPill(HDC dc);

    std::string m_shown;
    COLORREF m_textColour = 0;
    COLORREF m_list = 0;
    std::optional<COLORREF> m_pill;
    HFONT m_font = nullptr;  // borrowed
    int m_lineHeight = 0;
};

}  // namespace brennvar
