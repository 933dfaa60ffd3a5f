#include "ui/PopupMenu_win.h"

#include <cstddef>
#include <optional>
#include <utility>

#include "image/DecodeImage.h"
#include "ui/MenuTracker_win.h"
#include "ui/ToolkitIds.h"
#include "ui/WorkArea_win.h"

namespace brennvar {

CSkinImage LoadMenuImages() {
    const HRSRC found = ::FindResourceA(nullptr, MAKEINTRESOURCEA(IDR_MENU_IMAGES), RT_RCDATA);
    const HGLOBAL loaded = found ? ::LoadResource(nullptr, found) : nullptr;
    const void* bytes = loaded ? ::LockResource(loaded) : nullptr;
    if (!bytes) return {};
    const std::optional<Bitmap> image =
        DecodeImage({static_cast<const std::byte*>(bytes), ::SizeofResource(nullptr, found)});
    return image ? CSkinImage::FromBitmap(*image) : CSkinImage();
}

void CPopupMenu::Add(int command, const std::string& text, MenuImage image, MenuState state) {
    m_items.push_back({.command = command, .text = text, .image = image, .state = state});
}

void CPopupMenu::AddSeparator() {
    m_items.emplace_back();
}

void CPopupMenu::AddSubMenu(CPopupMenu&& menu, const std::string& text, MenuImage image, MenuState state) {
    m_items.push_back({.command = 0,
                       .text = text,
                       .image = image,
                       .state = state,
                       .subMenu = std::make_unique<CPopupMenu>(std::move(menu))});
}

int CPopupMenu::Track(HWND owner, POINT point, UINT flags, const Look& look, const CSkinImage* images) const {
    const int chosen = CMenuTracker(*this, owner, look, images).Track(point, flags);
    if (chosen != 0 && (flags & TPM_RETURNCMD) == 0) {
        ::PostMessageA(owner, WM_COMMAND, static_cast<WPARAM>(chosen), 0);
    }
    return chosen;
}

int CPopupMenu::TrackAtTray(HWND owner, POINT point, UINT flags, const Look& look, const CSkinImage* images) const {
    // Only the menu of the foreground window hears of a click elsewhere, and only a message after it lets the next
    // one open.
    ::SetForegroundWindow(owner);
    const int chosen = Track(owner, point, flags, look, images);
    ::PostMessageA(owner, WM_NULL, 0, 0);
    return chosen;
}

int CPopupMenu::TrackBeside(HWND owner, const RECT& place, const Look& look, const CSkinImage* images) const {
    const RECT area = WorkAreaNear(place);
    const bool isAbove = place.top + place.bottom > area.top + area.bottom;
    return Track(owner, {place.left, isAbove ? place.top : place.bottom}, isAbove ? TPM_BOTTOMALIGN : TPM_TOPALIGN,
                 look, images);
}

}  // namespace brennvar
