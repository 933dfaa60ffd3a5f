#include "app/ModeCell_win.h"

#include <utility>

#include "config/ResourceIds.h"
#include "ui/Paint_win.h"
#include "ui/ProgramIcon_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch: below the pictures of the page buttons.
constexpr int kIcon = 24;
constexpr int kGap = 8;

int IconOf(ProtectionMode mode) {
    switch (mode) {
        case ProtectionMode::AllowAll: return IDI_TRAY_IDLE_ALLOW;
        case ProtectionMode::BlockAll: return IDI_TRAY_IDLE_BLOCK;
        default: return IDI_TRAY_IDLE_NORMAL;
    }
}

}  // namespace

void ModeCell::Create(DrawnTexts& texts, int id, const Look& look) {
    CDrawnText::Create(texts, "", LabelKind::Plain, SS_ENDELLIPSIS, id, look);
    SetColour(look.skin.GetSkinColor("BUTTON_MENU_DEFAULT", 255, 255, 255));
}

void ModeCell::Show(ProtectionMode mode, const std::string& text) {
    if (!m_icon || std::exchange(m_mode, mode) != mode) {
        m_icon = LoadOwnIcon(IconOf(mode), Scale(kIcon), Scale(kIcon));
        Repaint();
    }
    SetText(text);
}

void ModeCell::Paint(HDC dc) const {
    if (!IsSeenOn(dc)) return;
    RECT words = Place();
    const int size = Scale(kIcon);
    const LONG top = words.top + (HeightOf(words) - size) / 2;
    if (m_icon) ::DrawIconEx(dc, words.left, top, m_icon.Get(), size, size, 0, nullptr, DI_NORMAL);
    words.left += size + Scale(kGap);
    PaintText(dc, words);
}

}  // namespace brennvar
