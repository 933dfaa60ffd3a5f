// The protection mode in the status line: the tray icon's shield, whose form tells the mode, and words. It stands
// on the dark end of the line below the column.
#pragma once

#include <string>

#include "base/Handles_win.h"
#include "commands/ProtectionMode.h"
#include "controls/DrawnText_win.h"

namespace brennvar {

class ModeCell final : public CDrawnText {
public:
    // Of no size yet. Its text is the words.
    void Create(DrawnTexts& texts, int id, const Look& look);
    void Show(ProtectionMode mode, const std::string& text);

private:
    void Paint(HDC dc) const override;

    UniqueIcon m_icon;  // of the mode
    ProtectionMode m_mode = ProtectionMode::Normal;
};

}  // namespace brennvar
