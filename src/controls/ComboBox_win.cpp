#include "controls/ComboBox_win.h"

// windows.h must stand before commctrl.h.
#include <commctrl.h>

#include "base/FlagWhile.h"
#include "controls/FieldFrame_win.h"
#include "controls/ListBox_win.h"
#include "ui/OwnMessages_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

constexpr int kItemHeight = 24;
constexpr WPARAM kShownItems = 12;  // a longer list scrolls

}  // namespace

void CComboList::Adopt(HWND list, const Look& look) {
    m_colours = look.colours;
    Attach(list, look.fonts.Text());
}

std::optional<LRESULT> CComboList::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!m_mayChange && ChangesListItems(message)) return LB_ERR;
    if (message == WM_ERASEBKGND) {
        FillSolid(reinterpret_cast<HDC>(wParam), ClientRect(), m_colours.list);
        return TRUE;
    }
    if (message != WM_NCPAINT) return std::nullopt;
    const LRESULT result = CallWindows(message, wParam, lParam);  // the scroll bar
    PaintBorder();
    return result;
}

void CComboList::PaintBorder() const {
    RECT place{};
    ::GetWindowRect(Window(), &place);
    ::OffsetRect(&place, -place.left, -place.top);
    const HDC dc = ::GetWindowDC(Window());
    DrawFrame(dc, place, m_colours.fieldFrame);
    ::ReleaseDC(Window(), dc);
}

void CComboBox::Create(HWND parent, int id, const Look& look) {
    Make(parent, "COMBOBOX", "", CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS | WS_VSCROLL | WS_TABSTOP,
         id, look.fonts.Text());
    SetUp(look);
}

void CComboBox::Adopt(HWND control, const Look& look) {
    Attach(control, look.fonts.Text());
    SetUp(look);
}

void CComboBox::SetUp(const Look& look) {
    m_colours = look.colours;
    ::SendMessageA(Window(), CB_SETITEMHEIGHT, 0, Scale(kItemHeight));
    CallWindows(CB_SETMINVISIBLE, kShownItems, 0);
    // Windows adds its own border to the field's height: how much, it tells by what comes out.
    const int height = FieldHeight();
    ::SendMessageA(Window(), CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), height);
    RECT place{};
    ::GetWindowRect(Window(), &place);
    ::SendMessageA(Window(), CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), 2 * height - HeightOf(place));
    COMBOBOXINFO info{};
    info.cbSize = sizeof(info);
    if (CallWindows(CB_GETCOMBOBOXINFO, 0, reinterpret_cast<LPARAM>(&info))) m_list.Adopt(info.hwndList, look);
}

int CComboBox::Add(const std::string& text) const {
    return static_cast<int>(Change(CB_ADDSTRING, reinterpret_cast<LPARAM>(text.c_str())));
}

void CComboBox::Clear() const {
    Change(CB_RESETCONTENT, 0);
}

LRESULT CComboBox::Change(UINT message, LPARAM lParam) const {
    const FlagWhile changing(m_list.m_mayChange);
    return CallWindows(message, 0, lParam);
}

int CComboBox::Count() const {
    return static_cast<int>(::SendMessageA(Window(), CB_GETCOUNT, 0, 0));
}

int CComboBox::Selected() const {
    return static_cast<int>(::SendMessageA(Window(), CB_GETCURSEL, 0, 0));
}

void CComboBox::Select(int index) const {
    ::SendMessageA(Window(), CB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

std::string CComboBox::ItemText(int index) const {
    const auto item = static_cast<WPARAM>(index);
    const LRESULT length = index < 0 ? CB_ERR : ::SendMessageA(Window(), CB_GETLBTEXTLEN, item, 0);
    if (length < 0) return {};
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    const LRESULT copied = ::SendMessageA(Window(), CB_GETLBTEXT, item, reinterpret_cast<LPARAM>(text.data()));
    text.resize(copied > 0 ? static_cast<std::size_t>(copied) : 0U);
    return text;
}

void CComboBox::OnPaint(HDC dc, const RECT& client) {
    const bool isDropped = ::SendMessageA(Window(), CB_GETDROPPEDSTATE, 0, 0) != 0;
    const FieldState state = !IsEnabled()              ? FieldState::Disabled
                             : HasFocus() || isDropped ? FieldState::Focused
                                                       : FieldState::Rest;
    FillSolid(dc, client, FieldGround(m_colours, state));
    DrawFieldFrame(dc, client, m_colours, state);
    RECT arrow = Inset(client, kFieldFrame);
    arrow.left = arrow.right - Scale(kDropArrowWidth);
    const COLORREF textColour = FieldText(m_colours, state);
    DrawDropArrow(dc, arrow, IsEnabled() && !IsHot() ? m_colours.quietText : textColour);
    const RECT text{client.left + kFieldFrame + FieldPadding(), client.top, arrow.left, client.bottom};
    DrawLabel(dc, Font(), text, ItemText(Selected()), textColour,
              DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX);
}

std::optional<LRESULT> CComboBox::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        // As with the list box: the items are the owner's.
        case CB_ADDSTRING:
        case CB_INSERTSTRING:
        case CB_DELETESTRING:
        case CB_RESETCONTENT:
        case CB_DIR:
        case CB_INITSTORAGE: return CB_ERR;
        // From the list, on its way to the parent.
        case WM_DRAWITEM:
            return IsDrawable(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam))
                       ? OnReflected(message, wParam, lParam)
                       : std::optional<LRESULT>(FALSE);
        // Windows tells the parent of this one, whose handlers must find the control as it is.
        case WM_KILLFOCUS: {
            const HWND window = Window();
            const LRESULT result = CallWindows(message, wParam, lParam);
            if (::IsWindow(window)) ::InvalidateRect(window, nullptr, FALSE);
            return result;
        }
        default: return std::nullopt;
    }
}

std::optional<LRESULT> CComboBox::OnReflected(UINT message, WPARAM, LPARAM lParam) {
    if (message != WM_DRAWITEM) return std::nullopt;
    PaintItem(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
    return TRUE;
}

void CComboBox::PaintItem(const DRAWITEMSTRUCT& item) {
    const CBufferedDc buffer(item.hDC, item.rcItem);
    const HDC dc = buffer.Dc();
    if ((item.itemState & ODS_COMBOBOXEDIT) != 0) {  // the field, between two paintings of the whole
        OnPaint(dc, ClientRect());
        return;
    }
    const bool isSelected = (item.itemState & ODS_SELECTED) != 0;
    FillSolid(dc, item.rcItem, isSelected ? m_colours.selection : m_colours.list);
    RECT text = item.rcItem;
    // Under the text of the field: the list's own border takes one pixel of the field's frame.
    text.left += kFieldFrame - 1 + FieldPadding();
    text.right -= FieldPadding();
    DrawLabel(dc, Font(), text, ItemText(static_cast<int>(item.itemID)), m_colours.text,
              DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX);
}

void CComboBox::TellAccessible(AccessibleThing& thing) const {
    const bool isDropped = ::SendMessageA(Window(), CB_GETDROPPEDSTATE, 0, 0) != 0;
    thing.role = AccessibleRole::ComboBox;
    thing.value = ItemText(Selected());
    thing.Set(isDropped ? STATE_SYSTEM_EXPANDED : STATE_SYSTEM_COLLAPSED, true);
    thing.action = isDropped ? AccessibleAction::Collapse : AccessibleAction::Expand;
    NameByLabel(Window(), thing);
}

void CComboBox::DoAccessible() {
    const bool isDropped = ::SendMessageA(Window(), CB_GETDROPPEDSTATE, 0, 0) != 0;
    ::SetFocus(Window());
    ::SendMessageA(Window(), CB_SHOWDROPDOWN, !isDropped, 0);
}

}  // namespace brennvar
