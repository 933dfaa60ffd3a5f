// Text that looks like a label, but can be selected and copied with mouse and keyboard. Lines are broken.
#pragma once

#include <string>

#include "ui/Control_win.h"

namespace brennvar {

// An EDIT that is only read, so that screen readers and automation find it as one. Keys that mean nothing in it (up
// and down beyond its lines, page keys) and the wheel go to its parent.
class CSelectableText final : public CControl {
public:
    void Create(HWND parent, int id, const Look& look);

    // What is selected stays so.
    void Show(const std::string& text);
    void SetColours(COLORREF text, COLORREF ground);
    // Between the sides of the window and the text.
    void SetMargin(int margin);
    // Makes it so wide; the height that the text takes then. Pixels of the screen.
    [[nodiscard]] int HeightAt(int width);
    // Of the text in one line, with the margins.
    [[nodiscard]] int FullWidth() const;

private:
    [[nodiscard]] bool PaintsAll() const override { return false; }
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    std::optional<LRESULT> OnReflected(UINT message, WPARAM wParam, LPARAM lParam) override;
    [[nodiscard]] bool IsForParent(WPARAM key);

    COLORREF m_text = 0;
    COLORREF m_ground = 0;
    int m_margin = 0;
    int m_lineHeight = 0;
};

}  // namespace brennvar
