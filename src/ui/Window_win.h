// A window of a class of our own: one object, one HWND, one function per kind of message. All of this belongs to
// one thread.
#pragma once

#include <optional>
#include <string>

#include "base/Windows_win.h"
#include "ui/Accessible_win.h"
#include "ui/PicturePart_win.h"

namespace brennvar {

struct WindowSetup {
    HWND parent = nullptr;  // the owner, for a pop-up window
    std::string text;
    DWORD style = WS_CHILD | WS_VISIBLE;
    DWORD extendedStyle = 0;
    RECT place{};
    int id = 0;  // child windows only
    // Names the kind of window for automation and screen readers; one window class is registered for each name.
    const char* className = "BrennvarWindow";
};

class CWindow : public AccessibleSource {
public:
    CWindow() = default;
    // Destroys the window if there still is one; the handlers are no longer called then.
    ~CWindow() override;

    [[nodiscard]] bool Create(const WindowSetup& setup);
    // Null while there is no window.
    [[nodiscard]] HWND Window() const { return m_window; }
    void Place(const RECT& place) const;
    // Asks for painting anew: all of it, or a part. Without a window nothing happens; Windows would take the null
    // for all windows of the screen.
    void Repaint() const {
        LookHasChanged();
        if (m_window) ::InvalidateRect(m_window, nullptr, FALSE);
    }
    void Repaint(const RECT& part) const {
        LookHasChanged();
        if (m_window) ::InvalidateRect(m_window, &part, FALSE);
    }
    [[nodiscard]] RECT ClientRect() const;
    // What is on the screen has been changed there already: only pictures of the window have to be painted anew.
    void LookHasChanged() const { m_look = NextLook(); }

    // The object of such a window of this thread; null for every other window.
    [[nodiscard]] static CWindow* Of(HWND window);
    [[nodiscard]] HWND AccessibleWindow() const override { return m_window; }
    // A pane without a name.
    void TellAccessible(AccessibleThing&) const override {}
    // For pictures that are kept: everything that the window paints, the whole before its parts. False: it cannot
    // tell, and is painted each time.
    [[nodiscard]] virtual bool TellParts(PictureParts&) const { return false; }

protected:
    // The whole as one part, for a window whose look changes with Repaint and its size, and in no other way.
    [[nodiscard]] bool TellWhole(PictureParts& parts) const {
        parts.push_back({ClientRect(), m_look});
        return true;
    }

    // False: the window is not made.
    virtual bool OnCreate() { return true; }
    virtual void OnDestroy() {}
    // The DC is a buffer and shows nothing useful yet: the whole invalid part has to be painted.
    virtual void OnPaint(HDC, const RECT& /*invalid*/) {}
    virtual void OnSize(int /*width*/, int /*height*/) {}
    virtual void OnTimer(UINT_PTR /*id*/) {}
    virtual void OnCommand(int /*id*/, int /*notification*/) {}
    virtual void OnFocus(bool /*hasFocus*/) { Repaint(); }
    // Mouse positions are in client coordinates; keys: MK_ flags.
    virtual void OnMouseMove(POINT, UINT /*keys*/) {}
    virtual void OnMouseLeave() {}  // after OnMouseMove
    virtual void OnLeftDown(POINT, UINT /*keys*/) {}
    virtual void OnLeftUp(POINT, UINT /*keys*/) {}
    virtual void OnDoubleClick(POINT, UINT /*keys*/) {}
    virtual void OnCaptureLost() {}
    // Units of WHEEL_DELTA (120 per notch), above zero away from the user.
    virtual void OnWheel(int /*delta*/, bool /*isHorizontal*/) {}
    // True: dealt with.
    virtual bool OnKeyDown(UINT /*key*/) { return false; }
    virtual bool OnChar(char) { return false; }
    // Keyboard: the menu key, with {-1, -1}. Screen coordinates.
    virtual void OnContextMenu(POINT) {}
    // Every other message and every one above before it is taken apart; a value is its result, nothing goes on.
    virtual std::optional<LRESULT> OnMessage(UINT, WPARAM, LPARAM) { return std::nullopt; }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    // False for a message that somebody else must have made up. It is not answered.
    [[nodiscard]] bool Believes(UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> Dispatch(UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> DispatchInput(UINT message, WPARAM wParam, LPARAM lParam);
    void TrackLeaving();

    HWND m_window = nullptr;
    bool m_isBeginning = false;  // from WM_NCCREATE to WM_CREATE
    bool m_isTracking = false;
    mutable std::uint64_t m_look = NextLook();
};

}  // namespace brennvar
