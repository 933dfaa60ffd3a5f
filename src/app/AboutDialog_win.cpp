#include "app/AboutDialog_win.h"

#include <algorithm>

#include "base/VersionInfo_win.h"
#include "config/ResourceIds.h"
#include "ui/Paint_win.h"
#include "ui/ProgramIcon_win.h"
#include "ui/ToolkitIds.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kShieldSize = 48;
constexpr int kPadding = 24;  // inside the card
constexpr int kShieldGap = 24;
constexpr int kLeastTextWidth = 240;
constexpr int kLineGap = 8;
constexpr int kButtonTop = 16;  // below the card

}  // namespace

void AboutDialog::Show(HWND owner) {
    DoModal(owner, IDD_ABOUT);
}

void AboutDialog::OnCreateContent() {
    ::SetWindowTextA(Window(), m_language.GetText(52, "About").c_str());
    ::SetDlgItemTextA(Window(), IDC_PRODUCT_NAME, m_language.GetText(41, "Brennvar Personal Firewall").c_str());
    ::SetDlgItemTextA(Window(), IDC_PRODUCT_VERSION,
                      (m_language.GetText(1060, "Version") + " " + ReadOwnVersion()).c_str());
    ::SetDlgItemTextA(Window(), IDC_PRODUCT_COPYRIGHT, m_language.GetText(1061, "Copyright (C) Quorlan").c_str());
    ::SetDlgItemTextA(Window(), IDOK, m_language.GetText(125, "OK").c_str());
    m_shield = LoadOwnIcon(IDI_PROGRAM, Scale(kShieldSize), Scale(kShieldSize));
    m_name.Adopt(Item(IDC_PRODUCT_NAME), LabelKind::Title, GetLook());
    m_version.Adopt(Item(IDC_PRODUCT_VERSION), LabelKind::Plain, GetLook());
    m_copyright.Adopt(Item(IDC_PRODUCT_COPYRIGHT), LabelKind::Quiet, GetLook());
    m_ok.Adopt(Item(IDOK), kPrimaryButton, GetLook());

    int textWidth = Scale(kLeastTextWidth);
    int textHeight = -Scale(kLineGap);
    for (const CLabel* label : {&m_name, &m_version, &m_copyright}) {
        const SIZE size = label->Measure(0);
        textWidth = std::max<int>(textWidth, size.cx);
        textHeight += size.cy + Scale(kLineGap);
    }
    const int cardHeight = std::max(Scale(kShieldSize), textHeight) + 2 * Scale(kPadding);
    SetContentPixels({2 * Scale(kPadding) + Scale(kShieldSize + kShieldGap) + textWidth,
                      cardHeight + Scale(kButtonTop) + m_ok.Size().cy});

    const RECT card = CardPlace();
    const LONG left = card.left + Scale(kPadding + kShieldSize + kShieldGap);
    LONG top = (card.top + card.bottom - textHeight) / 2;
    for (const CLabel* label : {&m_name, &m_version, &m_copyright}) {
        const LONG height = label->Measure(0).cy;
        label->Place({left, top, card.right - Scale(kPadding), top + height});
        top += height + Scale(kLineGap);
    }
    m_ok.MoveTo(card.right - m_ok.Size().cx, card.bottom + Scale(kButtonTop));
}

RECT AboutDialog::CardPlace() const {
    RECT card = ContentRect();
    card.bottom -= m_ok.Size().cy + Scale(kButtonTop);
    return card;
}

void AboutDialog::OnPaintGround(HDC dc) {
    const RECT card = CardPlace();
    FillSolid(dc, card, GetLook().colours.list);
    DrawFrame(dc, card, GetLook().colours.frame2);
    const int size = Scale(kShieldSize);
    ::DrawIconEx(dc, card.left + Scale(kPadding), (card.top + card.bottom - size) / 2, m_shield.Get(), size, size,
                 0, nullptr, DI_NORMAL);
}

void AboutDialog::OnCommand(int id, int notification) {
    if (id == IDOK && notification == BN_CLICKED) End(IDOK);
}

}  // namespace brennvar
