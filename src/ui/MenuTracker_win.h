// One showing of a pop-up menu: Windows' menus for it, and the handlers that it needs meanwhile in the owner and in
// the menus' windows.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include "base/Handles_win.h"
#include "ui/MenuPainter_win.h"
#include "ui/PopupMenu_win.h"

namespace brennvar {

class CMenuTracker {
public:
    // All are borrowed; images may be null.
    CMenuTracker(const CPopupMenu& menu, HWND owner, const Look& look, const CSkinImage* images)
        : m_root(menu), m_owner(owner), m_painter(look, images) {}
    CMenuTracker(const CMenuTracker&) = delete;
    CMenuTracker& operator=(const CMenuTracker&) = delete;
    ~CMenuTracker() = default;
    // The command that was chosen, 0 for none. flags: TPM_ flags for the alignment.
    int Track(POINT point, UINT flags);

private:
    static LRESULT CALLBACK OwnerProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                           DWORD_PTR object) noexcept;
    static LRESULT CALLBACK MenuProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                          DWORD_PTR object) noexcept;
    static LRESULT CALLBACK OnWindowCreated(int code, WPARAM wParam, LPARAM lParam) noexcept;

    UniqueMenu Build(const CPopupMenu& menu);
    void AdoptMenuWindow(HWND window) noexcept;
    std::optional<LRESULT> Dispatch(UINT message, WPARAM wParam, LPARAM lParam);
    // Null for an item of somebody else's menu.
    [[nodiscard]] const MenuItem* FindItem(ULONG_PTR data) const;
    [[nodiscard]] LRESULT ChooseByLetter(HMENU menu, char letter) const;

    // The showing that is going on, for the hook; the one before it waits.
    inline static thread_local CMenuTracker* s_current = nullptr;

    const CPopupMenu& m_root;
    const HWND m_owner;
    const CMenuPainter m_painter;
    UniqueBrush m_ground;
    std::map<HMENU, const CPopupMenu*> m_menus;
    std::vector<HWND> m_menuWindows;  // those that were made for this showing
};

}  // namespace brennvar
