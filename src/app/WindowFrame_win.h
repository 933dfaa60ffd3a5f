// The border of the control center: the caption band with its buttons, the column of the page buttons and the
// status band, made of the skin's pictures. It knows where everything of the window has its place.
#pragma once

#include <array>

#include "base/Windows_win.h"
#include "config/Language.h"
#include "controls/Button_win.h"
#include "ui/Look_win.h"
#include "ui/SkinImage_win.h"

namespace brennvar {

class WindowFrame {
public:
    // Loads the pictures; what is missing is painted plainly.
    explicit WindowFrame(const Look& look);

    // The caption buttons, as children of the window, which gets their commands (IDC_CAPTION_..., IDM_ABOUT).
    void CreateButtons(HWND window, const Language& language);
    void PlaceButtons(HWND window);

    // In client coordinates of a client area of this size.
    [[nodiscard]] static RECT CaptionPlace(const RECT& client);
    [[nodiscard]] static RECT ColumnPlace(const RECT& client);
    [[nodiscard]] static RECT StatusPlace(const RECT& client);  // without its end under the column
    [[nodiscard]] static RECT PagePlace(const RECT& client);

    // Everything that no child window covers.
    void Paint(HDC dc, const RECT& client, const std::string& title, bool isMaximised) const;

private:
    void PaintCaption(HDC dc, const RECT& band, const std::string& title) const;
    void PaintColumn(HDC dc, const RECT& client) const;
    void PaintStatus(HDC dc, const RECT& client) const;
    void PaintEdges(HDC dc, const RECT& client) const;

    const Look& m_look;
    CSkinImage m_topLeft;
    CSkinImage m_top;
    CSkinImage m_topRight;
    CSkinImage m_topTitle;
    CSkinImage m_left;
    CSkinImage m_right;
    CSkinImage m_rightCenter;
    CSkinImage m_menu;
    CSkinImage m_bottomLeft;
    CSkinImage m_bottom;
    CSkinImage m_bottomRight;
    CButton m_help;
    CButton m_about;
    CButton m_minimise;
    CButton m_maximise;
    CButton m_close;
};

}  // namespace brennvar
