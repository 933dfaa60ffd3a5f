#include "ui/MenuTracker_win.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

// windows.h must stand before commctrl.h.
#include <commctrl.h>

#include "ui/OwnMessages_win.h"

namespace brennvar {
namespace {

constexpr UINT_PTR kSubclassId = 1;

constexpr ULONG_PTR kMenuClass = 32768;
constexpr char kMenuClassName[] = "#32768";

// The letter after the first single "&", in upper case; 0 without one. A shortcut has none. An "&" is no part of a
// double-byte character.
char MnemonicOf(const std::string& text) {
    for (std::size_t at = text.find('&'); at != std::string::npos && at + 1 < text.size();
         at = text.find('&', at + 2)) {
        if (text[at + 1] == '&') continue;
        char letter = text[at + 1];
        ::CharUpperBuffA(&letter, 1);
        return letter;
    }
    return 0;
}

char FirstLetterOf(const std::string& text) {
    char letter = text.empty() ? '\0' : text.front();
    ::CharUpperBuffA(&letter, 1);
    return letter;
}

}  // namespace

int CMenuTracker::Track(POINT point, UINT flags) {
    m_ground.Reset(::CreateSolidBrush(m_painter.Ground()));
    const UniqueMenu menu = Build(m_root);
    if (!::SetWindowSubclass(m_owner, &CMenuTracker::OwnerProcedure, reinterpret_cast<UINT_PTR>(this),
                             reinterpret_cast<DWORD_PTR>(this))) {
        return 0;
    }
    CMenuTracker* const outer = std::exchange(s_current, this);
    const HHOOK hook = ::SetWindowsHookExA(WH_CBT, &CMenuTracker::OnWindowCreated, nullptr, ::GetCurrentThreadId());
    const int chosen = ::TrackPopupMenu(menu.Get(), flags | TPM_RETURNCMD, point.x, point.y, 0, m_owner, nullptr);
    ::UnhookWindowsHookEx(hook);
    // Windows may keep a menu's window for the next menu.
    for (const HWND window : m_menuWindows) {
        ::RemoveWindowSubclass(window, &CMenuTracker::MenuProcedure, kSubclassId);
    }
    s_current = outer;
    ::RemoveWindowSubclass(m_owner, &CMenuTracker::OwnerProcedure, reinterpret_cast<UINT_PTR>(this));
    return chosen;
}

UniqueMenu CMenuTracker::Build(const CPopupMenu& menu) {
    UniqueMenu built(::CreatePopupMenu());
    m_menus[built.Get()] = &menu;
    MENUINFO look{};
    look.cbSize = sizeof(look);
    look.fMask = MIM_BACKGROUND;
    look.hbrBack = m_ground.Get();
    ::SetMenuInfo(built.Get(), &look);
    UINT position = 0;
    for (const MenuItem& item : menu.Items()) {
        MENUITEMINFOA info{};
        info.cbSize = sizeof(info);
        // With its text, though it is drawn by us: a screen reader asks for it.
        info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_DATA | (item.IsSeparator() ? 0U : MIIM_STRING);
        info.fType = MFT_OWNERDRAW | (item.IsSeparator() ? MFT_SEPARATOR : 0U);
        info.fState = (item.state.isChecked ? MFS_CHECKED : 0U) | (item.state.isDisabled ? MFS_DISABLED : 0U) |
                      (item.state.isDefault ? MFS_DEFAULT : 0U);
        info.wID = static_cast<UINT>(item.command);
        info.dwItemData = reinterpret_cast<ULONG_PTR>(&item);
        std::string text = item.text;
        info.dwTypeData = text.data();
        UniqueMenu subMenu;
        if (item.subMenu) {
            subMenu = Build(*item.subMenu);
            info.fMask |= MIIM_SUBMENU;
            info.hSubMenu = subMenu.Get();
        }
        // A sub-menu goes with the menu that holds it.
        if (::InsertMenuItemA(built.Get(), position, TRUE, &info)) (void)subMenu.Release();
        ++position;
    }
    return built;
}

LRESULT CALLBACK CMenuTracker::OwnerProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                              DWORD_PTR object) noexcept {
    if (message == WM_NCDESTROY) ::RemoveWindowSubclass(window, &CMenuTracker::OwnerProcedure, id);
    std::optional<LRESULT> result;
    try {
        result = reinterpret_cast<CMenuTracker*>(object)->Dispatch(message, wParam, lParam);
    } catch (...) {  // NOLINT(bugprone-empty-catch): must not cross Windows, which handles the message then
    }
    return result ? *result : ::DefSubclassProc(window, message, wParam, lParam);
}

std::optional<LRESULT> CMenuTracker::Dispatch(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!HasNeededAddress(message, wParam, lParam)) return std::nullopt;  // the owner's own procedure refuses it
    switch (message) {
        case WM_MEASUREITEM: {
            auto& measure = *reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
            const MenuItem* item = measure.CtlType == ODT_MENU ? FindItem(measure.itemData) : nullptr;
            if (!item) return std::nullopt;
            m_painter.Measure(*item, measure);
            return TRUE;
        }
        case WM_DRAWITEM: {
            const auto& draw = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
            const MenuItem* item = draw.CtlType == ODT_MENU ? FindItem(draw.itemData) : nullptr;
            if (!item) return std::nullopt;
            m_painter.Draw(*item, draw);
            return TRUE;
        }
        case WM_MENUCHAR: {
            const auto menu = reinterpret_cast<HMENU>(lParam);
            if (!m_menus.contains(menu)) return std::nullopt;
            return ChooseByLetter(menu, static_cast<char>(LOWORD(wParam)));
        }
        default: return std::nullopt;
    }
}

const MenuItem* CMenuTracker::FindItem(ULONG_PTR data) const {
    for (const auto& [handle, menu] : m_menus) {
        for (const MenuItem& item : menu->Items()) {
            if (reinterpret_cast<ULONG_PTR>(&item) == data) return &item;
        }
    }
    return nullptr;
}

LRESULT CMenuTracker::ChooseByLetter(HMENU menu, char letter) const {
    ::CharUpperBuffA(&letter, 1);
    const std::vector<MenuItem>& items = m_menus.at(menu)->Items();
    std::vector<std::size_t> matches;
    std::vector<std::size_t> beginnings;  // without a mnemonic, they answer to their first letter
    std::size_t selected = items.size();
    for (std::size_t i = 0; i < items.size(); ++i) {
        const char mnemonic = MnemonicOf(items[i].text);
        if (mnemonic == letter) matches.push_back(i);
        if (mnemonic == 0 && FirstLetterOf(items[i].text) == letter) beginnings.push_back(i);
        const UINT state = ::GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION);
        if ((state & MF_HILITE) != 0) selected = i;
    }
    if (matches.empty()) matches = std::move(beginnings);
    if (matches.empty()) return MAKELRESULT(0, MNC_IGNORE);
    if (matches.size() == 1) return MAKELRESULT(matches.front(), MNC_EXECUTE);
    // Several of them: each press goes to the next.
    const auto next = std::find_if(matches.begin(), matches.end(),
                                   [&](std::size_t at) { return selected < items.size() && at > selected; });
    return MAKELRESULT(next == matches.end() ? matches.front() : *next, MNC_SELECT);
}

void CMenuTracker::AdoptMenuWindow(HWND window) noexcept {
    try {
        m_menuWindows.push_back(window);
    } catch (...) {
        return;  // without memory the menu keeps Windows' own edge
    }
    ::SetWindowSubclass(window, &CMenuTracker::MenuProcedure, kSubclassId, reinterpret_cast<DWORD_PTR>(this));
}

LRESULT CALLBACK CMenuTracker::OnWindowCreated(int code, WPARAM wParam, LPARAM lParam) noexcept {
    if (code == HCBT_CREATEWND && s_current) {
        const auto window = reinterpret_cast<HWND>(wParam);
        const auto* created = reinterpret_cast<const CBT_CREATEWNDA*>(lParam)->lpcs;
        // The class of menu windows, as a number or by its name.
        const bool isMenu = IS_INTRESOURCE(created->lpszClass)
                                ? reinterpret_cast<ULONG_PTR>(created->lpszClass) == kMenuClass
                                : ::lstrcmpA(created->lpszClass, kMenuClassName) == 0;
        if (isMenu) s_current->AdoptMenuWindow(window);
    }
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
}

LRESULT CALLBACK CMenuTracker::MenuProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                             DWORD_PTR object) noexcept {
    const LRESULT result = ::DefSubclassProc(window, message, wParam, lParam);
    const auto& tracker = *reinterpret_cast<const CMenuTracker*>(object);
    switch (message) {
        case WM_NCDESTROY: ::RemoveWindowSubclass(window, &CMenuTracker::MenuProcedure, id); break;
        case WM_PRINT: tracker.m_painter.DrawEdge(window, reinterpret_cast<HDC>(wParam)); break;
        case WM_NCPAINT:
        case WM_PAINT: {
            const HDC dc = ::GetWindowDC(window);
            tracker.m_painter.DrawEdge(window, dc);
            ::ReleaseDC(window, dc);
            break;
        }
        default: break;
    }
    return result;
}

}  // namespace brennvar
