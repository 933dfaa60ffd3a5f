#include "controls/ListBox_win.h"

#include <utility>

#include "ui/Paint_win.h"
#include "ui/SmoothDc_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kItemHeight = 32;
constexpr int kTextLeft = 12;
constexpr int kTextRight = 4;
constexpr int kSelectedBar = 3;
constexpr int kDot = 6;
constexpr int kFocusInset = 2;
constexpr int kFocusShare = 128;

}  // namespace

void CListBox::Create(HWND parent, int id, const Look& look) {
    m_colours = look.colours;
    Make(parent, "LISTBOX", "",
         LBS_OWNERDRAWFIXED | LBS_HASSTRINGS | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | WS_VSCROLL | WS_TABSTOP, id,
         look.fonts.Text());
    ::SendMessageA(Window(), LB_SETITEMHEIGHT, 0, Scale(kItemHeight));
}

void CListBox::Add(const std::string& text) const {
    CallWindows(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

int CListBox::Selected() const {
    return static_cast<int>(::SendMessageA(Window(), LB_GETCURSEL, 0, 0));
}

void CListBox::Select(int index) const {
    ::SendMessageA(Window(), LB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

void CListBox::TellAccessible(AccessibleThing& thing) const {
    thing.role = AccessibleRole::List;
    NameByLabel(Window(), thing);
}

void CListBox::Mark(int index) {
    if (std::exchange(m_marked, index) != index) Repaint();
}

bool ChangesListItems(UINT message) {
    switch (message) {
        case LB_ADDSTRING:
        case LB_INSERTSTRING:
        case LB_DELETESTRING:
        case LB_RESETCONTENT:
        case LB_DIR:
        case LB_ADDFILE:
        case LB_INITSTORAGE:
        case LB_SETCOUNT: return true;
        default: return false;
    }
}

std::optional<LRESULT> CListBox::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (ChangesListItems(message)) return LB_ERR;
    const auto dc = reinterpret_cast<HDC>(wParam);
    switch (message) {
        case WM_ERASEBKGND: FillSolid(dc, ClientRect(), m_colours.list); return TRUE;
        case WM_PRINTCLIENT: PrintRows(dc, lParam); return 0;
        default: return std::nullopt;
    }
}

// Some versions of Windows clip each row in the coordinates of the device, so these must be the list's.
void CListBox::PrintRows(HDC dc, LPARAM flags) {
    const RECT client = ClientRect();
    const UniqueMemoryDc memory(::CreateCompatibleDC(dc));
    const UniqueBitmap bitmap(::CreateCompatibleBitmap(dc, client.right, client.bottom));
    if (!memory || !bitmap) {
        CallWindows(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), flags);
        return;
    }
    const CSelect select(memory.Get(), bitmap.Get());
    FillSolid(memory.Get(), client, m_colours.list);
    CallWindows(WM_PRINTCLIENT, reinterpret_cast<WPARAM>(memory.Get()), flags);
    ::BitBlt(dc, 0, 0, client.right, client.bottom, memory.Get(), 0, 0, SRCCOPY);
}

std::optional<LRESULT> CListBox::OnReflected(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CTLCOLORLISTBOX) {
        const HDC dc = reinterpret_cast<HDC>(wParam);
        ::SetDCBrushColor(dc, m_colours.list);
        return reinterpret_cast<LRESULT>(::GetStockObject(DC_BRUSH));
    }
    if (message != WM_DRAWITEM) return std::nullopt;
    PaintItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
    return TRUE;
}

void CListBox::PaintItem(const DRAWITEMSTRUCT& item) const {
    if (item.itemID == static_cast<UINT>(-1)) return;  // an empty list with the focus
    const CBufferedDc buffer(item.hDC, item.rcItem);
    const HDC dc = buffer.Dc();
    const bool isSelected = (item.itemState & ODS_SELECTED) != 0;
    FillSolid(dc, item.rcItem, isSelected ? m_colours.selection : m_colours.list);
    if (isSelected) {
        RECT bar = item.rcItem;
        bar.right = bar.left + Scale(kSelectedBar);
        FillSolid(dc, bar, m_colours.accent);
    }
    RECT text = item.rcItem;
    text.left += Scale(kTextLeft);
    text.right -= Scale(kTextRight);
    if (static_cast<int>(item.itemID) == m_marked) {
        const RECT behind{text.right - Scale(kDot), text.top, text.right, text.bottom};
        const RECT dot = Centred(behind, {Scale(kDot), Scale(kDot)});
        const CSmoothDc smooth(dc, dot);
        constexpr int kUnit = CSmoothDc::kFactor;
        smooth.FillDisc({0, 0, WidthOf(dot) * kUnit, HeightOf(dot) * kUnit}, m_colours.accent);
        text.right = dot.left - Scale(kTextRight);
    }
    DrawLabel(dc, Font(), text, TextOfItem(Window(), static_cast<int>(item.itemID)), m_colours.text,
              DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX);
    if ((item.itemState & ODS_FOCUS) != 0 && ShowsFocus()) {
        DrawFrame(dc, Inset(item.rcItem, Scale(kFocusInset)),
                  MixColours(m_colours.text, m_colours.selection, kFocusShare));
    }
}

}  // namespace brennvar
