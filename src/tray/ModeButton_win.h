// The protection mode where it is shown: the tray icon's shield, whose form tells the mode, words, and the tray's
// menu of modes, which drops down from it.
#pragma once

#include <string>
#include <vector>

#include "base/Clock.h"
#include "base/Handles_win.h"
#include "commands/ModeDisplay.h"
#include "config/Language.h"
#include "ui/Control_win.h"
#include "ui/Touch.h"

namespace brennvar {

// A BUTTON. A click, Space, Enter, Down and F4 send BN_CLICKED to the parent, which calls OpenMenu.
class ModeButton final : public CControl {
public:
    enum class Form {
        Cell,  // on the dark end of the status line: the name and what is left of it, in one line or, cut short,
               // two
        Card,  // on a card of a page: the name, what it means and when it ends, in three lines
    };

    // Of no size yet. The language and the fonts of the look are borrowed.
    explicit ModeButton(const Language& language) : m_language(language) {}
    void Create(HWND parent, Form form, int id, const Look& look);
    void Show(const ModeDisplay& display, FileTime now);
    // Until something is chosen, which the window that the parent belongs to gets as a command, or nothing.
    void OpenMenu();

    [[nodiscard]] bool TellParts(PictureParts& parts) const override;
    void TellAccessible(AccessibleThing& thing) const override { TellButton(thing); }

private:
    void OnPaint(HDC dc, const RECT& client) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    [[nodiscard]] Touch CurrentTouch() const;
    void PaintShield(HDC dc, LONG left, LONG middle) const;
    void PaintCell(HDC dc, const RECT& client) const;
    void PaintCard(HDC dc, const RECT& client) const;

    const Language& m_language;
    const CFonts* m_fonts = nullptr;  // from Create on
    Form m_form = Form::Cell;
    Palette m_colours;
    COLORREF m_cellText = 0;
    UniqueIcon m_icon;  // of the mode
    ModeDisplay m_display;
    ModeWords m_words;
    bool m_isOpen = false;
};

}  // namespace brennvar
