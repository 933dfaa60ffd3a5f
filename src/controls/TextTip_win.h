// A small window that shows the whole of a text that could only be shown cut.
#pragma once

#include <string>

#include "ui/Look_win.h"
#include "ui/Window_win.h"

namespace brennvar {

class CTextTip final : public CWindow {
public:
    // Borrows the look's fonts.
    explicit CTextTip(const Look& look);

    // The text over what is cut, which begins at this place on the screen; moved so that the monitor holds it.
    // Mouse and focus stay where they are.
    void Show(HWND owner, const RECT& textOnScreen, const std::string& text);
    void Hide();
    [[nodiscard]] bool IsShown() const { return Window() && ::IsWindowVisible(Window()); }
    [[nodiscard]] const std::string& Text() const { return m_text; }

private:
    void OnPaint(HDC dc, const RECT& invalid) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    COLORREF m_ground;
    COLORREF m_frame;
    COLORREF m_colour;
    HFONT m_font;
    std::string m_text;
};

}  // namespace brennvar
