// Balloon help: a small window that points at something and never takes the focus. A click closes it, on its cross
// or elsewhere; a click on its link opens that first. Esc closes it as well, in the window that it belongs to. Its
// window text is title, line break and text, for automation. User-interface thread only.
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
    std::string link;       // what the link is called; empty: there is none
    std::string time = {};  // at the right of the title, where there is one; may be empty
};

struct BalloonOptions {
    std::chrono::milliseconds timeout{0};  // 0: until it is closed
    HICON icon = nullptr;                  // 16 pixels, borrowed while the balloon is shown
    std::function<void()> onLink = {};     // called when the balloon has gone already
    HWND owner = nullptr;                  // counts when the balloon is shown for the first time
    HWND keyboard = nullptr;               // a window: Esc in the top-level window around it closes the balloon
    bool isBelow = false;                  // what it points at, rather than above it
};

class CBalloon final : public CWindow {
public:
    // The fonts are borrowed.
    explicit CBalloon(const CFonts& fonts) : m_fonts(fonts) {}
    ~CBalloon() override;

    // Points at a place of the screen, in the skin of this moment. One that is shown already is changed and moved.
    // False when there is no window for it.
    bool Show(const BalloonTexts& texts, const RECT& anchor, BalloonOptions options = {});
    // Points at a control, whose window is the keyboard's where the options name none.
    bool ShowFor(HWND control, const BalloonTexts& texts, BalloonOptions options = {});
    void Hide();
    [[nodiscard]] bool IsShown() const { return Window() != nullptr && ::IsWindowVisible(Window()); }

    // For message loops: true when the message was the Esc that has closed a balloon of this thread, of several the
    // one that was shown last.
    [[nodiscard]] static bool CloseByKey(const MSG& message);

    // In client coordinates: where the link can be clicked, empty without one.
    [[nodiscard]] const RECT& LinkPlace() const { return m_link; }
    void TellAccessible(AccessibleThing& thing) const override;

private:
    void OnPaint(HDC dc, const RECT& invalid) override;
    void OnTimer(UINT_PTR id) override;
    void OnMouseMove(POINT point, UINT /*keys*/) override { SetCrossHot(::PtInRect(&m_cross, point) != FALSE); }
    void OnMouseLeave() override { SetCrossHot(false); }
    void OnLeftUp(POINT point, UINT keys) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    // Lays the parts out inside the body and gives its size.
    [[nodiscard]] SIZE LayOut();
    void MoveParts(int right, int down);
    void SetCrossHot(bool isHot);
    void PaintCross(HDC dc) const;
    [[nodiscard]] bool IsOnLink(POINT point) const { return ::PtInRect(&m_link, point) != FALSE; }

    const CFonts& m_fonts;
    std::optional<Look> m_look;  // from Show on
    COLORREF m_ground = 0;
    UniqueFont m_linkFont;  // underlined
    BalloonTexts m_texts;
    BalloonOptions m_options;
    bool m_isCrossHot = false;
    // Client coordinates; empty where there is no such part.
    RECT m_iconPlace{};
    RECT m_title{};
    RECT m_text{};
    RECT m_link{};
    RECT m_time{};
    RECT m_cross{};
};

}  // namespace brennvar
