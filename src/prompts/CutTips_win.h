// Shows the whole of a text of a question that had to be cut when the mouse rests over it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/Windows_win.h"
#include "controls/TextTip_win.h"
#include "ui/Look_win.h"

namespace brennvar {

class CutTips {
public:
    static constexpr UINT_PTR kTimer = 3;  // of the question's window, beside those of QuestionStand

    // The window and the look are borrowed; before any text is added.
    void Begin(HWND window, const Look& look);
    // A text, as it is, that stands cut in this place of the window.
    void Add(const RECT& place, const std::string& text) { m_texts.push_back({place, text}); }
    // Of the window; the mouse is followed. The tip and the timer end with the window, which owns them.
    void OnMessage(UINT message, LPARAM lParam);
    void OnTimer(UINT_PTR id);

private:
    struct CutText {
        RECT place;
        std::string text;
    };
    static constexpr int kNone = -1;

    void Follow(int index);

    HWND m_window = nullptr;
    std::vector<CutText> m_texts;
    int m_below = kNone;  // the one that the mouse is over
    std::unique_ptr<CTextTip> m_tip;
};

}  // namespace brennvar
