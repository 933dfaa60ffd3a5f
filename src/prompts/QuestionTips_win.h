// Says more about places of a question when the mouse rests there: the whole of a text that had to be cut, or what
// something does.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/Windows_win.h"
#include "controls/TextTip_win.h"
#include "ui/Look_win.h"

namespace brennvar {

class QuestionTips {
public:
    static constexpr UINT_PTR kTimer = 3;  // of the question's window, beside those of QuestionStand

    // The window and the look are borrowed; before any text is added.
    void Begin(HWND window, const Look& look);
    // A text, as it is, over this place of the window.
    void Add(const RECT& place, const std::string& text) { m_tips.push_back({place, place, text}); }
    // The same below the place, which stays in sight.
    void AddBelow(const RECT& place, const std::string& text);
    // Of the window; the mouse is followed. The tip and the timer end with the window, which owns them.
    void OnMessage(UINT message, LPARAM lParam);
    // The mouse is followed over the window's controls as well.
    void OnLoopMessage(const MSG& message);
    void OnTimer(UINT_PTR id);

private:
    struct Tip {
        RECT place;
        RECT shownAt;
        std::string text;
    };
    static constexpr int kNone = -1;

    // The mouse is at this point of the window, over it or the control.
    void FindTip(POINT mouse, HWND over);
    void Follow(int index, HWND over);

    HWND m_window = nullptr;
    std::vector<Tip> m_tips;
    int m_below = kNone;    // the one that the mouse is over
    HWND m_over = nullptr;  // the window that tells when the mouse leaves
    std::unique_ptr<CTextTip> m_tip;
};

}  // namespace brennvar
