#include "controls/ListItems_win.h"

#include <algorithm>

namespace brennvar {

std::string TextOfItem(HWND list, int index) {
    const auto item = static_cast<WPARAM>(index);
    const LRESULT length = index < 0 ? LB_ERR : ::SendMessageA(list, LB_GETTEXTLEN, item, 0);
    if (length < 0) return {};
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    const LRESULT copied = ::SendMessageA(list, LB_GETTEXT, item, reinterpret_cast<LPARAM>(text.data()));
    text.resize(copied > 0 ? static_cast<std::size_t>(copied) : 0U);
    return text;
}

int ListItems::PartCount() const {
    return std::max(0, static_cast<int>(::SendMessageA(m_list.Window(), LB_GETCOUNT, 0, 0)));
}

void ListItems::TellPart(int part, AccessibleThing& thing) const {
    const auto index = static_cast<WPARAM>(part - 1);
    thing.role = AccessibleRole::ListItem;
    thing.name = TextOfItem(m_list.Window(), part - 1);
    ::SendMessageA(m_list.Window(), LB_GETITEMRECT, index, reinterpret_cast<LPARAM>(&thing.place));
    const bool isSelected = ::SendMessageA(m_list.Window(), LB_GETSEL, index, 0) > 0;
    thing.Set(STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE, true);
    thing.Set(STATE_SYSTEM_SELECTED, isSelected);
    thing.Set(STATE_SYSTEM_FOCUSED, isSelected && ::GetFocus() == m_list.Window());
    if (m_kind == Kind::List) thing.action = AccessibleAction::Select;
}

int ListItems::PartAt(POINT point) const {
    const LRESULT found = ::SendMessageA(m_list.Window(), LB_ITEMFROMPOINT, 0, MAKELPARAM(point.x, point.y));
    return HIWORD(found) == 0 && LOWORD(found) < PartCount() ? LOWORD(found) + 1 : 0;
}

int ListItems::FocusedPart() const {
    return static_cast<int>(::SendMessageA(m_list.Window(), LB_GETCURSEL, 0, 0)) + 1;
}

std::vector<int> ListItems::SelectedParts(std::size_t) const {
    const int part = FocusedPart();
    return part > 0 ? std::vector{part} : std::vector<int>();
}

bool ListItems::SelectPart(int part, LONG flags) {
    if (m_kind != Kind::List || (flags & ~(kTakeFocus | kTakeSelection)) != 0) return false;
    if ((flags & kTakeFocus) != 0) ::SetFocus(m_list.Window());
    return (flags & kTakeSelection) == 0 || m_list.PostAccessibleAction(part);
}

void ListItems::DoPart(int part) {
    const HWND list = m_list.Window();
    ::SendMessageA(list, LB_SETCURSEL, static_cast<WPARAM>(part - 1), 0);
    ::SendMessageA(::GetParent(list), WM_COMMAND, MAKEWPARAM(::GetDlgCtrlID(list), LBN_SELCHANGE),
                   reinterpret_cast<LPARAM>(list));
}

}  // namespace brennvar
