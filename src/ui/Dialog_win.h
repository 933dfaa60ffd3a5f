// Dialogs made from templates, modal, modeless or as a child window. All of this belongs to one thread.
#pragma once

#include <optional>

#include "base/Windows_win.h"
#include "ui/Accessible_win.h"
#include "ui/PicturePart_win.h"

namespace brennvar {

class KeptPicture;

class CDialog : public AccessibleSource {
public:
    // How a modal dialog appears.
    enum class Appearance {
        Activated,
        Unfocused,  // above all other windows, while the keyboard stays with the program in use
    };

    CDialog() = default;
    // Destroys the window if there still is one. OnDestroy is no longer called then: the derived part is gone.
    ~CDialog() override;

    // Shows the dialog and runs a message loop until End is called; returns what End was given, or -1 when there
    // is no such window. The owner (or null) is disabled meanwhile. A WM_QUIT ends the dialog with -1 and is
    // posted again for the loop outside.
    INT_PTR DoModal(HWND owner, int templateId, Appearance appearance = Appearance::Activated);
    // Shows the dialog as DoModal does, and returns at once. It stands until End is called or the object goes; then
    // OnEnded is called, unless the object goes. Several such dialogs and modal ones may be open side by side and
    // end in any order. False when there is no such window.
    [[nodiscard]] bool Open(HWND owner, int templateId, Appearance appearance = Appearance::Activated);
    // Since Open, until the dialog has ended.
    [[nodiscard]] bool IsOpen() const { return m_isOpen; }
    // What End was given; -1 when the window went without it.
    [[nodiscard]] INT_PTR Result() const { return m_result; }
    // A dialog without a loop of its own; not shown. False when it could not be made.
    [[nodiscard]] bool CreateModeless(HWND parent, int templateId);

    // Null while there is no window.
    [[nodiscard]] HWND Window() const { return m_window; }
    [[nodiscard]] HWND Item(int id) const { return ::GetDlgItem(m_window, id); }

    // The object of such a window of this thread; null for every other window.
    [[nodiscard]] static CDialog* Of(HWND window);
    [[nodiscard]] HWND AccessibleWindow() const override { return m_window; }
    // A dialog that comes of its own accord is an alert.
    void TellAccessible(AccessibleThing& thing) const override;
    // For pictures that are kept: everything that the dialog paints itself, the whole before its parts. False: it
    // cannot tell, and is painted each time with all that is in it.
    [[nodiscard]] virtual bool TellParts(PictureParts&) const { return false; }
    // Where this dialog keeps its picture from one painting to the next; null: it is painted each time.
    [[nodiscard]] virtual KeptPicture* PictureToKeep() { return nullptr; }

protected:
    // Ends DoModal or Open; without effect on another modeless dialog.
    void End(INT_PTR result);
    // Of Open only.
    virtual void OnEnded() {}

    // Called once, when window and controls exist.
    virtual void OnInitDialog() {}
    // DoModal: this control gets the focus first, and not the first one that Tab reaches.
    void SetFirstFocus(int id) { m_firstFocus = id; }
    virtual void OnDestroy() {}
    // Esc, or a button with the number IDCANCEL.
    virtual void OnCancel() { End(IDCANCEL); }
    virtual void OnClose() { OnCancel(); }
    // notification: 0 from a menu, else what the control reports (BN_CLICKED ...).
    virtual void OnCommand(int id, int notification);
    virtual void OnTimer(UINT_PTR id);
    virtual void OnSize(int width, int height);
    virtual void OnMinMaxInfo(MINMAXINFO& info);
    // True when the background has been painted.
    virtual bool OnEraseBackground(HDC dc);
    // Every other message; a value is its result, nothing leaves it to Windows.
    virtual std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    // DoModal and Open: each message of this dialog's windows before its own keyboard handling. True: it is dealt
    // with.
    virtual bool OnLoopMessage(const MSG& message);

private:
    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    // False for a message that somebody else must have made up. It is not answered.
    [[nodiscard]] static bool Believes(UINT message, WPARAM wParam, LPARAM lParam);
    INT_PTR Dispatch(UINT message, WPARAM wParam, LPARAM lParam);
    // The window on the screen, and its owner without input.
    [[nodiscard]] bool ShowNow(HWND owner, int templateId, Appearance appearance);
    // Back from Open.
    void EndOpen(INT_PTR result);
    void RunLoop();
    [[nodiscard]] bool HandleLoopMessage(MSG& message);

    // The loops of this thread that wait for each other, the innermost first.
    static thread_local CDialog* s_innermost;
    CDialog* m_outer = nullptr;

    HWND m_window = nullptr;
    HWND m_heldOwner = nullptr;  // while the dialog keeps it from input
    bool m_isOpen = false;
    bool m_ended = false;
    bool m_initFailed = false;
    bool m_isAlert = false;
    int m_firstFocus = 0;
    INT_PTR m_result = -1;
};

}  // namespace brennvar
