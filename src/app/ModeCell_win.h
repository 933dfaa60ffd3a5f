// The protection mode in the status line: a dot whose form and colour tell the mode, and words. It stands on the
// dark end of the line below the column.
#pragma once

#include <string>

#include "commands/ProtectionMode.h"
#include "ui/Control_win.h"

namespace brennvar {

class ModeCell final : public CControl {
public:
    // A STATIC, visible, of no size yet. Its window text is the words.
    void Create(HWND parent, int id, const Look& look);
    void Show(ProtectionMode mode, const std::string& text);

private:
    void OnPaint(HDC dc, const RECT& client) override;
    void PaintDot(HDC dc, const RECT& place) const;

    ProtectionMode m_mode = ProtectionMode::Normal;
    COLORREF m_textColour = 0;
};

}  // namespace brennvar
