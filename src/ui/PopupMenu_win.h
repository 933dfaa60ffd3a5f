// Pop-up menus in the skin: images, check marks, sub-menus, shortcuts. They are Windows' own menus for keyboard,
// mouse and screen readers, drawn by us. User-interface thread only.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "ui/Look_win.h"
#include "ui/SkinImage_win.h"

namespace brennvar {

// Frames of the strip of menu images, 16 pixels each.
enum class MenuImage : std::int8_t {
    None = -1,
    Shield,
    Statistics,
    Connections,
    Advanced,
    Options,
    Applications,
    TrafficLog,
    About,
    Exit,
    Copy,
    SelectAll,
    Refresh,
    Count,
};
// The program's own strip of these images.
[[nodiscard]] CSkinImage LoadMenuImages();

struct MenuState {
    bool isChecked = false;
    bool isDisabled = false;
    bool isDefault = false;  // drawn bold
};

class CPopupMenu;

struct MenuItem {
    int command = 0;  // 0: separator or sub-menu
    // "&" before the mnemonic; a shortcut after a tab.
    std::string text = {};
    MenuImage image = MenuImage::None;
    MenuState state = {};
    std::unique_ptr<CPopupMenu> subMenu = {};
    [[nodiscard]] bool IsSeparator() const { return command == 0 && !subMenu; }
};

class CPopupMenu {
public:
    // text: "&" before the mnemonic; a shortcut after a tab is aligned right and only shown.
    void Add(int command, const std::string& text, MenuImage image = MenuImage::None, MenuState state = {});
    void AddSeparator();
    void AddSubMenu(CPopupMenu&& menu, const std::string& text, MenuImage image = MenuImage::None,
                    MenuState state = {});

    // Shows the menu at a point of the screen until something is chosen: its command, 0 for nothing. flags: TPM_
    // flags for the alignment. Without TPM_RETURNCMD the command is also posted to the owner as from any menu.
    // images may be null. The owner is a window of this thread; it needs no handlers of its own.
    int Track(HWND owner, POINT point, UINT flags, const Look& look, const CSkinImage* images) const;
    // The same from the notification area: the menu closes as well when the user clicks somewhere else.
    int TrackAtTray(HWND owner, POINT point, UINT flags, const Look& look, const CSkinImage* images) const;

    // The same for a control that drops it down: below a place of the screen, or above one in the lower half.
    int TrackBeside(HWND owner, const RECT& place, const Look& look, const CSkinImage* images) const;

    [[nodiscard]] const std::vector<MenuItem>& Items() const { return m_items; }

private:
    std::vector<MenuItem> m_items;
};

}  // namespace brennvar
