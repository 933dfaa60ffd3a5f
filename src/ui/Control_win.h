// One of Windows' own controls, painted by us. The control stays what it is for keyboard, focus, screen readers and
// automation: its window text is its caption, and its state is kept by Windows. The object subclasses the window
// and gives it back in its destructor; the window itself belongs to its parent.
#pragma once

#include <optional>
#include <string>

#include "base/Windows_win.h"
#include "ui/Accessible_win.h"
#include "ui/Look_win.h"
#include "ui/PicturePart_win.h"

namespace brennvar {

// What a control tells its parent about how it wants to be drawn (WM_DRAWITEM, WM_CTLCOLOR... and their like) comes
// back to the control's object: look and behaviour stay in one class.
// For parents: passes such a message on to the control that sent it. Nothing: it is none, or not from one of ours.
[[nodiscard]] std::optional<LRESULT> ReflectMessage(UINT message, WPARAM wParam, LPARAM lParam);

// Posted to the parent when a control of ours gets the keyboard (lParam: its window): a parent that scrolls brings
// it into sight.
inline constexpr UINT kControlFocused = WM_APP + 0x0FFF;

class CControl : public AccessibleSource {
public:
    CControl() = default;
    ~CControl() override;

    // Null before there is a window and after it has gone.
    [[nodiscard]] HWND Window() const { return m_window; }
    [[nodiscard]] std::string Text() const;
    // Paints anew only when the text differs.
    void SetText(const std::string& text) const;
    void Place(const RECT& place) const;
    [[nodiscard]] RECT ClientRect() const;
    // Without a window nothing happens; Windows would take the null for all windows of the screen.
    void Repaint() const {
        if (m_window) ::InvalidateRect(m_window, nullptr, FALSE);
    }
    // From now on nobody changes text and font any more, neither we nor another program.
    void KeepText() { m_keepsText = true; }
    // The object of such a control of this thread; null for every other window.
    [[nodiscard]] static CControl* Of(HWND window);
    [[nodiscard]] HWND AccessibleWindow() const override { return m_window; }
    // Names it by its caption, which may have a mnemonic; an override calls it where that is so.
    void TellAccessible(AccessibleThing& thing) const override { thing.SetCaption(Text()); }
    // A click. Of a class that knows none nothing happens.
    void DoAccessible() override { ::SendMessageA(m_window, BM_CLICK, 0, 0); }
    // For pictures that are kept: everything that the control paints. False: it cannot tell, and is painted each
    // time.
    [[nodiscard]] virtual bool TellParts(PictureParts&) const { return false; }

protected:
    // For a BUTTON that is pressed, whatever it looks like: its caption, and that it can be or is pressed.
    void TellButton(AccessibleThing& thing) const;
    // Takes over a control of a dialog template. The font is given to it.
    void Attach(HWND control, HFONT font);
    // Makes a control of one of Windows' classes, visible, of no size yet or of the given one.
    void Make(HWND parent, const char* className, const std::string& text, DWORD style, int id, HFONT font,
              DWORD extendedStyle = 0, SIZE size = {});

    // The same, of a class and with texts in Unicode: what Windows paints of them is right in every language.
    void MakeWide(HWND parent, const wchar_t* className, DWORD style, int id, HFONT font);

    // Paints the whole client area. The DC is a buffer that shows the parent's ground.
    virtual void OnPaint(HDC, const RECT& /*client*/) {}
    // False for a class that paints its inside itself (an edit field): OnPaint is not called.
    [[nodiscard]] virtual bool PaintsAll() const { return true; }
    // Each message before Windows' own handling; a value is its result.
    virtual std::optional<LRESULT> OnMessage(UINT, WPARAM, LPARAM) { return std::nullopt; }
    // A message of the control to its parent, by its own number (WM_DRAWITEM ...).
    virtual std::optional<LRESULT> OnReflected(UINT, WPARAM, LPARAM) { return std::nullopt; }
    // Windows' own handling, without what it would paint at once.
    LRESULT CallSilently(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT CallWindows(UINT message, WPARAM wParam, LPARAM lParam) const;
    // Of the messages between WM_USER and 0xBFFF, all of which may hold addresses of the sender: this one does not.
    [[nodiscard]] virtual bool IsHarmless(UINT) const { return false; }

    [[nodiscard]] bool IsHot() const { return m_isHot; }
    [[nodiscard]] bool IsEnabled() const { return ::IsWindowEnabled(m_window) != FALSE; }
    [[nodiscard]] bool HasFocus() const { return ::GetFocus() == m_window; }
    // The user works with the keyboard: the focus is to be seen.
    [[nodiscard]] bool ShowsFocus() const;
    // DT_HIDEPREFIX until the user has pressed Alt, else 0.
    [[nodiscard]] UINT PrefixFormat() const;
    [[nodiscard]] DWORD Style() const { return static_cast<DWORD>(::GetWindowLongPtrA(m_window, GWL_STYLE)); }
    [[nodiscard]] HFONT Font() const;

private:
    // The procedure of the control's class, and how it is called.
    struct WindowsOwn {
        WNDPROC procedure = nullptr;
        bool isWide = false;
        LRESULT Call(HWND window, UINT message, WPARAM wParam, LPARAM lParam) const;
    };

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    friend std::optional<LRESULT> ReflectMessage(UINT message, WPARAM wParam, LPARAM lParam);
    // False for a message that somebody else must have made up, or that is not for others to send.
    [[nodiscard]] bool Believes(UINT message, WPARAM wParam, LPARAM lParam) const;
    std::optional<LRESULT> Dispatch(UINT message, WPARAM wParam, LPARAM lParam);
    void Subclass(HWND control, HFONT font, bool isWide);
    static WNDPROC SetProcedure(HWND window, WNDPROC procedure, bool isWide);
    void PaintBuffered();
    void SetHot(bool hot);

    HWND m_window = nullptr;
    WindowsOwn m_windowsOwn;
    bool m_isHot = false;
    bool m_keepsText = false;
};

}  // namespace brennvar
