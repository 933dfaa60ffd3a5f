// Balloon help: a small window that points at something and never takes the focus. A click closes it, a click on
// its link opens that first. Its window text is title, line break and text, for automation. User-interface thread
// only.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "ui/Look_win.h"
#include "ui/Window_win.h"

namespace brennvar {

struct BalloonTexts {
    std::string title;  // may be empty
    std::string text;
    std::string link;  // what the link is called; empty: there is none
};

struct BalloonOptions {
    std::chrono::milliseconds timeout{0};  // 0: until it is closed
    HICON icon = nullptr;                  // 16 pixels, borrowed while the balloon is shown
    std::function<void()> onLink = {};     // called when the balloon has gone already
    HWND owner = nullptr;                  // counts when the balloon is shown for the first time
};

class CBalloon final : public CWindow {
public:
    // The fonts are borrowed.
    explicit CBalloon(const CFonts& fonts) : m_fonts(fonts) {}

    // Points at a place of the screen, in the skin of this moment. One that is shown already is changed and moved.
    // False when there is no window for it.
    bool Show(const BalloonTexts& texts, const RECT& anchor, BalloonOptions options = {});
    // Points at a control.
    bool ShowFor(HWND control, const BalloonTexts& texts, BalloonOptions options = {});
    void Hide();
    [[nodiscard]] bool IsShown() const { return Window() != nullptr && ::IsWindowVisible(Window()); }

    // Where the link can be clicked, in client coordinates; empty without one.
    [[nodiscard]] const RECT& LinkPlace() const { return m_link; }
    void TellAccessible(AccessibleThing& thing) const override;

private:
    void OnPaint(HDC dc, const RECT& invalid) override;
    void OnTimer(UINT_PTR id) override;
    void OnLeftUp(POINT point, UINT keys) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    // Lays the parts out inside the body and gives its size.
    [[nodiscard]] SIZE LayOut();
    void MoveParts(int right, int down);
    [[nodiscard]] bool IsOnLink(POINT point) const { return ::PtInRect(&m_link, point) != FALSE; }

    const CFonts& m_fonts;
    std::optional<Look> m_look;  // from Show on
    COLORREF m_ground = 0;
    UniqueFont m_linkFont;  // underlined
    BalloonTexts m_texts;
    BalloonOptions m_options;
    // Client coordinates; empty where there is no such part.
    RECT m_iconPlace{};
    RECT m_title{};
    RECT m_text{};
    RECT m_link{};
};

}  // namespace brennvar
