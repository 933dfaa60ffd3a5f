#include "tray/TrayMenu_win.h"

#include <utility>

#include "config/ResourceIds.h"

namespace brennvar {
namespace {

MenuImage ImageOf(int command) {
    switch (command) {
        case IDM_OPEN: return MenuImage::Shield;
        case IDM_STATISTICS: return MenuImage::Statistics;
        case IDM_CONNECTIONS: return MenuImage::Connections;
        case IDM_ADVANCED: return MenuImage::Advanced;
        case IDM_OPTIONS: return MenuImage::Options;
        case IDM_APPLICATIONS: return MenuImage::Applications;
        case IDM_TRAFFIC_LOG: return MenuImage::TrafficLog;
        case IDM_ABOUT: return MenuImage::About;
        case IDM_EXIT: return MenuImage::Exit;
        default: return MenuImage::None;
    }
}

CPopupMenu MakeMenu(const std::vector<TrayMenuItem>& items) {
    CPopupMenu menu;
    for (const TrayMenuItem& item : items) {
        // What a left click does stands out.
        const MenuState state{
            .isChecked = item.isChecked, .isDisabled = item.isDisabled, .isDefault = item.command == IDM_OPEN};
        if (item.IsSeparator()) {
            menu.AddSeparator();
        } else if (item.items.empty()) {
            menu.Add(item.command, item.text, ImageOf(item.command), state);
        } else {
            menu.AddSubMenu(MakeMenu(item.items), item.text, MenuImage::None, state);
        }
    }
    return menu;
}

}  // namespace

void ShowTrayMenu(HWND owner, POINT point, const Language& language, const TrayMenuState& state, const Look& look) {
    const CSkinImage images = LoadMenuImages();
    // Away from the task bar, which is mostly below.
    (void)MakeMenu(BuildTrayMenu(language, state))
        .TrackAtTray(owner, point, TPM_RIGHTALIGN | TPM_BOTTOMALIGN, look, &images);
}

void ShowModeMenu(HWND owner, const RECT& place, const Language& language, ProtectionMode mode, const Look& look) {
    const CPopupMenu menu = MakeMenu(BuildModeMenu(language, mode));
    (void)menu.TrackBeside(owner, place, look, nullptr);
}

}  // namespace brennvar
