#include "tray/ModeButton_win.h"

#include <functional>
#include <utility>

#include "base/FlagWhile.h"
#include "base/LocalTime_win.h"
#include "config/ResourceIds.h"
#include "controls/FieldFrame_win.h"
#include "tray/TrayMenu_win.h"
#include "ui/ChildControls_win.h"
#include "ui/FocusOnce_win.h"
#include "ui/Paint_win.h"
#include "ui/ProgramIcon_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kPadding = 8;
constexpr int kShield = 24;
constexpr int kGap = 8;
constexpr int kArrowWidth = 8;
constexpr int kArrowGap = 4;
constexpr int kCellEdge = 4;      // right of the arrow
constexpr int kMeaningAbove = 6;  // between the name and what it means
constexpr int kCellLine = 15;     // of two in a cell
constexpr int kFocusInset = 2;
constexpr int kFocusShare = 100;            // of the ground in the focus frame of a cell
constexpr int kCardShares[] = {0, 10, 26};  // of the text's colour in a card's ground, by touch
constexpr int kCellShares[] = {72, 0, 0};   // of the ground in a cell's arrow, by touch

constexpr COLORREF kCellGround = RGB(18, 50, 74);  // about what the skins show there

constexpr UINT kOneLine = DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX;

int IconOf(ProtectionMode mode) {
    switch (mode) {
        case ProtectionMode::AllowAll: return IDI_TRAY_IDLE_ALLOW;
        case ProtectionMode::BlockAll: return IDI_TRAY_IDLE_BLOCK;
        default: return IDI_TRAY_IDLE_NORMAL;
    }
}

}  // namespace

void ModeButton::Create(HWND parent, Form form, int id, const Look& look) {
    m_fonts = &look.fonts;
    m_form = form;
    m_colours = look.colours;
    m_cellText = look.skin.GetSkinColor("BUTTON_MENU_DEFAULT", 255, 255, 255);
    Make(parent, "BUTTON", "", BS_PUSHBUTTON | WS_TABSTOP, id, look.fonts.Text());
}

void ModeButton::Show(const ModeDisplay& display, FileTime now) {
    const std::string endsAt = display.until ? FormatTimeOfDay(*display.until, TimeOfDay::Minutes) : "";
    ModeWords words = DescribeMode(display, now, endsAt, m_language);
    if (!m_icon || display.mode != m_display.mode) {
        m_icon = LoadOwnIcon(IconOf(display.mode), Scale(kShield), Scale(kShield));
    }
    m_display = display;
    if (words == m_words) return;
    m_words = std::move(words);
    // For screen readers and automation.
    std::string text = m_words.name;
    if (m_form == Form::Card) {
        text = m_language.GetText(1332, "Protection mode") + ": " + text + ". " + m_words.meaning;
        if (!m_words.end.empty()) text += ", " + m_words.end;
    } else if (!m_words.left.empty()) {
        text += ", " + m_words.left;
    }
    SetText(text);
    Repaint();
}

void ModeButton::OpenMenu() {
    if (m_isOpen) return;
    const HWND window = Window();
    RECT place{};
    ::GetWindowRect(window, &place);
    {
        const FlagWhile open(m_isOpen);
        Repaint();
        ShowModeMenu(::GetAncestor(window, GA_ROOT), place, m_language, m_display.mode, Look(*m_fonts));
    }
    Repaint();
    // The click that has closed the menu is not to open it again.
    MSG click;
    if (Window()) (void)::PeekMessageA(&click, Window(), WM_LBUTTONDOWN, WM_LBUTTONDBLCLK, PM_REMOVE);
}

std::optional<LRESULT> ModeButton::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        // Else the dialog would take the arrow keys, and go to the control beside this one.
        case WM_GETDLGCODE: return CallWindows(message, wParam, lParam) | DLGC_WANTARROWS;
        case WM_KEYDOWN:
        case WM_SYSKEYDOWN:
            if (wParam != VK_DOWN && (wParam != VK_F4 || message == WM_SYSKEYDOWN)) return std::nullopt;
            ::SendMessageA(::GetParent(Window()), WM_COMMAND, MAKEWPARAM(::GetDlgCtrlID(Window()), BN_CLICKED),
                           reinterpret_cast<LPARAM>(Window()));
            return 0;
        default: return std::nullopt;
    }
}

Touch ModeButton::CurrentTouch() const {
    const bool isPushed = (::SendMessageA(Window(), BM_GETSTATE, 0, 0) & BST_PUSHED) != 0;
    if (m_isOpen || isPushed) return Touch::Pressed;
    return IsHot() ? Touch::Hot : Touch::Rest;
}

bool ModeButton::TellParts(PictureParts& parts) const {
    const std::string state = {static_cast<char>('0' + static_cast<int>(CurrentTouch())),
                               FocusOnce::Window() == Window() && ShowsFocus() ? 'f' : '-'};
    // The text has all words, and there is no mode without a name of its own.
    parts.push_back({ClientRect(), std::hash<std::string>()(state + Text()) | 1});
    return true;
}

void ModeButton::OnPaint(HDC dc, const RECT& client) {
    if (m_form == Form::Card) {
        PaintCard(dc, client);
    } else {
        PaintCell(dc, client);
    }
}

void ModeButton::PaintShield(HDC dc, LONG left, LONG middle) const {
    const int size = Scale(kShield);
    if (m_icon) ::DrawIconEx(dc, left, middle - size / 2, m_icon.Get(), size, size, 0, nullptr, DI_NORMAL);
}

void ModeButton::PaintCell(HDC dc, const RECT& client) const {
    const LONG left = client.left + Scale(kPadding);
    PaintShield(dc, left, (client.top + client.bottom) / 2);
    const LONG arrow = client.right - Scale(kCellEdge + kArrowWidth);
    DrawDropArrow(dc, {arrow, client.top, arrow + Scale(kArrowWidth), client.bottom},
                  MixColours(m_cellText, kCellGround, kCellShares[static_cast<int>(CurrentTouch())]));
    RECT words{left + Scale(kShield + kGap), client.top, arrow - Scale(kArrowGap), client.bottom};
    const std::string whole = Text();
    if (m_words.left.empty() || MeasureText(Font(), whole, 0).cx <= WidthOf(words)) {
        DrawLabel(dc, Font(), words, whole, m_cellText, kOneLine);
    } else {
        // What is left of the mode must not push its name out.
        words = Centred(words, {WidthOf(words), 2 * Scale(kCellLine)});
        const LONG middle = words.top + Scale(kCellLine);
        DrawLabel(dc, Font(), {words.left, words.top, words.right, middle}, m_words.name, m_cellText, kOneLine);
        DrawLabel(dc, Font(), {words.left, middle, words.right, words.bottom}, m_words.left, m_cellText, kOneLine);
    }
    if (ShowsFocus()) {
        DrawFrame(dc, Inset(client, Scale(kFocusInset)), MixColours(m_cellText, kCellGround, kFocusShare));
    }
}

void ModeButton::PaintCard(HDC dc, const RECT& client) const {
    const Touch touch = CurrentTouch();
    if (touch != Touch::Rest) {
        FillSolid(dc, client, MixColours(m_colours.list, m_colours.text, kCardShares[static_cast<int>(touch)]));
    }
    RECT room = client;
    ::InflateRect(&room, -Scale(kPadding), -Scale(kPadding));
    RECT name = room;
    name.bottom = name.top + Scale(kShield);
    PaintShield(dc, name.left, (name.top + name.bottom) / 2);
    name.left += Scale(kShield + kGap);
    name.right -= Scale(kArrowWidth + kArrowGap);
    // The name is never cut: where the card is narrow it is smaller.
    const bool fits = MeasureText(m_fonts->Title(), m_words.name, 0).cx <= WidthOf(name);
    DrawLabel(dc, fits ? m_fonts->Title() : m_fonts->Bold(), name, m_words.name, m_colours.text, kOneLine);
    DrawDropArrow(dc, {room.right - Scale(kArrowWidth), name.top, room.right, name.bottom},
                  touch == Touch::Rest ? m_colours.quietText : m_colours.text);

    constexpr UINT kLines = DT_WORDBREAK | DT_NOPREFIX;
    RECT meaning{room.left, name.bottom + Scale(kMeaningAbove), room.right, room.bottom};
    DrawLabel(dc, Font(), meaning, m_words.meaning,
              m_display.mode == ProtectionMode::AllowAll ? m_colours.danger : m_colours.quietText, kLines);
    meaning.top += MeasureText(Font(), m_words.meaning, WidthOf(meaning)).cy;
    DrawLabel(dc, Font(), meaning, m_words.end, m_colours.quietText, kLines);
    if (ShowsFocus()) DrawFrame(dc, Inset(client, Scale(kFocusInset)), m_colours.quietText);
}

}  // namespace brennvar
