#include "dialogs/SkinDialog_win.h"

#include "config/Resources_win.h"
#include "ui/ChildControls_win.h"
#include "ui/Paint_win.h"
#include "ui/ProgramIcon_win.h"
#include "ui/WorkArea_win.h"

namespace brennvar {
namespace {

// Of the pictures, which are not stretched here.
constexpr int kBorder = 8;
constexpr int kBand = 40;
// At 96 pixels per inch.
constexpr int kMargin = 16;
constexpr int kIconLeft = 12;
constexpr int kIconGap = 8;
constexpr int kCloseRight = 6;

// Windows uses the lower bits of a system command's number itself.
constexpr WPARAM kSystemCommandBits = 0xFFF0;

}  // namespace

void CSkinDialog::OnInitDialog() {
    m_look.emplace(m_fonts);
    m_picture = CSkinImage::Load(m_look->skin.GetSkinImagePath("DIALOG", "dialog.png"));
    m_icon = LoadShield(IconSize::Small);
    ::SendMessageA(Window(), WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(m_icon.Get()));
    // What such a window can do.
    const HMENU menu = ::GetSystemMenu(Window(), FALSE);
    for (const UINT command : {SC_RESTORE, SC_SIZE, SC_MINIMIZE, SC_MAXIMIZE}) {
        ::DeleteMenu(menu, command, MF_BYCOMMAND);
    }
    OnCreateContent();
    // After the template's own controls: one of them with the number IDCANCEL is found first.
    m_close.Create(Window(), kButtonClose, OpenLanguage().GetText(1043, "Close"), IDCANCEL, *m_look);
    const RECT client = Client();
    OnSize(client.right, client.bottom);
}

RECT CSkinDialog::Client() const {
    RECT client{};
    ::GetClientRect(Window(), &client);
    return client;
}

RECT CSkinDialog::ContentRect() const {
    const RECT client = Client();
    const int margin = Scale(kMargin);
    return {margin, kBand + margin, client.right - margin, client.bottom - margin};
}

void CSkinDialog::SetContentPixels(SIZE size) {
    const int margins = 2 * Scale(kMargin);
    const RECT wanted = OpeningPlace({size.cx + margins, size.cy + margins + kBand});
    const RECT place = FitInto(wanted, WorkAreaNear(wanted));
    ::SetWindowPos(Window(), nullptr, place.left, place.top, WidthOf(place), HeightOf(place),
                   SWP_NOZORDER | SWP_NOACTIVATE);
}

RECT CSkinDialog::OpeningPlace(SIZE size) const {
    const HWND owner = ::GetWindow(Window(), GW_OWNER);
    if (!owner || !::IsWindowVisible(owner) || ::IsIconic(owner)) return CenterIn(MainWorkArea(), size);
    RECT around{};
    ::GetWindowRect(owner, &around);
    return FitInto(Centred(around, size), WorkAreaNear(around));
}

void CSkinDialog::OnSize(int width, int) {
    m_ground = UniqueBitmap();
    if (!m_close.Window()) return;
    const SIZE button = m_close.Size();
    m_close.MoveTo(width - Scale(kCloseRight) - button.cx, (kBand - button.cy) / 2);
}

void CSkinDialog::KeepTexts() {
    m_keepsTexts = true;
    const auto keep = [](HWND child, LPARAM) -> BOOL {
        if (CControl* const control = CControl::Of(child)) control->KeepText();
        return TRUE;
    };
    ::EnumChildWindows(Window(), keep, 0);
}

void CSkinDialog::RepaintGround() {
    m_ground = UniqueBitmap();
    ::RedrawWindow(Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

bool CSkinDialog::OnEraseBackground(HDC dc) {
    if (!m_look) return false;
    const RECT client = Client();
    const UniqueMemoryDc memory(::CreateCompatibleDC(dc));
    const bool isKept = static_cast<bool>(m_ground);
    if (!isKept) {
        const HDC screen = ::GetDC(Window());
        m_ground = UniqueBitmap(::CreateCompatibleBitmap(screen, WidthOf(client), HeightOf(client)));
        ::ReleaseDC(Window(), screen);
    }
    if (!memory || !m_ground) {
        PaintSkin(dc);
        return true;
    }
    const CSelect select(memory.Get(), m_ground.Get());
    if (!isKept) PaintSkin(memory.Get());
    ::BitBlt(dc, 0, 0, client.right, client.bottom, memory.Get(), 0, 0, SRCCOPY);
    return true;
}

void CSkinDialog::PaintSkin(HDC dc) {
    const RECT client = Client();
    FillSolid(dc, client, m_look->colours.page);
    if (m_picture) {
        m_picture.DrawNine(dc, client, {kBorder, kBand, kBorder, kBorder});
    } else {
        DrawFrame(dc, client, m_look->colours.frame1);
    }
    PaintCaption(dc);
    OnPaintGround(dc);
}

void CSkinDialog::PaintCaption(HDC dc) {
    const SIZE iconSize{::GetSystemMetrics(SM_CXSMICON), ::GetSystemMetrics(SM_CYSMICON)};
    RECT band{Scale(kIconLeft), 0, Client().right - Scale(kCloseRight + kIconGap) - m_close.Size().cx, kBand};
    const RECT icon = Centred({band.left, band.top, band.left + iconSize.cx, band.bottom}, iconSize);
    ::DrawIconEx(dc, icon.left, icon.top, m_icon.Get(), iconSize.cx, iconSize.cy, 0, nullptr, DI_NORMAL);
    band.left = icon.right + Scale(kIconGap);
    // The skin's colour is made for the band of its picture.
    DrawLabel(dc, m_look->fonts.Bold(), band, TextOfWindow(Window()),
              m_picture ? m_look->colours.captionText : m_look->colours.text,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
}

LRESULT CSkinDialog::HitTest(POINT screen) const {
    ::ScreenToClient(Window(), &screen);
    const RECT client = Client();
    if (!::PtInRect(&client, screen)) return HTNOWHERE;
    return screen.y < kBand ? HTCAPTION : HTCLIENT;
}

void CSkinDialog::ShowSystemMenu() const {
    POINT corner{0, kBand};
    ::ClientToScreen(Window(), &corner);
    const HMENU menu = ::GetSystemMenu(Window(), FALSE);
    const int chosen = ::TrackPopupMenu(menu, TPM_RETURNCMD, corner.x, corner.y, 0, Window(), nullptr);
    if (chosen != 0) ::PostMessageA(Window(), WM_SYSCOMMAND, static_cast<WPARAM>(chosen), 0);
}

std::optional<LRESULT> CSkinDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SYSCOMMAND:
            // Windows' own way may paint a caption's icon into the window.
            if ((wParam & kSystemCommandBits) != SC_KEYMENU || (lParam != ' ' && lParam != 0)) return std::nullopt;
            if (lParam == ' ') ShowSystemMenu();
            return 0;
        case WM_NCHITTEST: return HitTest({static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))});
        case WM_NCLBUTTONDBLCLK: return 0;  // there is nothing to be made larger
        case WM_SETTEXT:
            if (m_keepsTexts) return FALSE;
            // Windows stores the text after this, and the band is painted later.
            RepaintGround();
            return std::nullopt;
        default: return std::nullopt;
    }
}

}  // namespace brennvar
