#include "tree/TreeKeyboard_win.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "tree/TreeText_win.h"

namespace brennvar {
namespace {

bool IsHeld(int key) {
    return ::GetKeyState(key) < 0;
}

constexpr int kMostSearchedRows = 10'000;  // more would keep the user waiting

// In the system's code page.
std::string Lower(std::string text) {
    ::CharLowerBuffA(text.data(), static_cast<DWORD>(text.size()));
    return text;
}

}  // namespace

void TreeKeyboard::OnFocus(bool hasFocus) {
    // Who comes with Tab sees where the focus is.
    if (hasFocus && IsHeld(VK_TAB)) {
        m_state.ShowFocus(true);
        if (m_state.FocusedRow() < 0 && m_places.RowCount() > 0) {
            // The first one in sight: lists that show their end stay there.
            const int row = m_places.FirstRow();
            m_state.ChangeSelection([row](RowSelection& selection) { return selection.FocusOnly(row); });
        }
    }
    m_state.Repaint(m_places.Rows());
    if (m_state.FocusedRow() >= 0) m_state.Announce(EVENT_OBJECT_FOCUS, m_state.FocusedRow());
}

LRESULT TreeKeyboard::DialogCode(const MSG* message) const {
    // Enter belongs to the dialog's default button, unless a row can be opened.
    const bool isEnter = message && message->message == WM_KEYDOWN && message->wParam == VK_RETURN;
    const LRESULT wanted = isEnter && (m_state.events.opened || HasEmptyAction()) ? DLGC_WANTMESSAGE : 0;
    return DLGC_WANTARROWS | DLGC_WANTCHARS | wanted;
}

bool TreeKeyboard::HasEmptyAction() const {
    return m_places.RowCount() == 0 && !m_state.Setup().empty.action.empty() && m_state.events.emptyAction;
}

bool TreeKeyboard::OnKeyDown(UINT key) {
    m_state.Tip().Hide();
    const TreeEvents& events = m_state.events;
    const int page = std::max(1, m_places.PageRows() - 1);
    switch (key) {
        case VK_UP: MoveFocusBy(-1); return true;
        case VK_DOWN: MoveFocusBy(1); return true;
        case VK_PRIOR: MoveFocusBy(-page); return true;
        case VK_NEXT: MoveFocusBy(page); return true;
        case VK_HOME: MoveFocusTo(0); return true;
        case VK_END: MoveFocusTo(m_places.RowCount() - 1); return true;
        case VK_LEFT: GoLeft(); return true;
        case VK_RIGHT: GoRight(); return true;
        case VK_SPACE: PressSpace(); return true;
        case VK_RETURN:
            if (HasEmptyAction()) {
                events.emptyAction();
                return true;
            }
            if (!events.opened || !m_state.Source().Has(m_state.FocusedRow())) return false;
            events.opened(m_state.FocusedRow());
            return true;
        case VK_F5:
            if (!events.refreshWanted) return false;
            events.refreshWanted();
            return true;
        default: return IsHeld(VK_CONTROL) && !IsHeld(VK_MENU) && OnControlKey(key);
    }
}

bool TreeKeyboard::OnControlKey(UINT key) {
    switch (key) {
        case 'A':
            m_state.ChangeSelection(
                [this](RowSelection& selection) { return selection.SelectAll(m_places.RowCount()); });
            return true;
        case 'C':
            if (!m_state.events.copyWanted || !m_state.events.copyWanted()) CopySelection(m_state);
            return true;
        case 'F':
            if (!m_state.events.findWanted) return false;
            m_state.events.findWanted();
            return true;
        default: return false;
    }
}

void TreeKeyboard::MoveFocusBy(int rows) {
    // The first key press in a list chooses its first row.
    const std::int64_t row = m_state.FocusedRow() < 0 ? 0 : std::int64_t{m_state.FocusedRow()} + rows;
    MoveFocusTo(static_cast<int>(std::clamp<std::int64_t>(row, 0, std::max(0, m_places.RowCount() - 1))));
}

void TreeKeyboard::MoveFocusTo(int row) {
    if (!m_state.Source().Has(row)) return;
    m_state.ShowFocus(true);
    const RowSelection::Keys held{.control = IsHeld(VK_CONTROL), .shift = IsHeld(VK_SHIFT)};
    m_state.EnsureVisible(row);
    m_state.ChangeSelection([=](RowSelection& selection) { return selection.MoveTo(row, held); });
}

bool TreeKeyboard::OnChar(char character) {
    const int count = m_places.RowCount();
    if (static_cast<unsigned char>(character) <= ' ' || count > kMostSearchedRows) return false;
    m_typed.Type(Lower({character}).front(), std::chrono::milliseconds(::GetTickCount64()));
    const std::string& wanted = m_typed.Wanted();
    const int start = m_typed.StartRow(m_state.FocusedRow());
    for (int step = 0; step < count; ++step) {
        const int row = (start + step) % count;
        const std::string text = m_state.Source().Cell(row, 0).text;
        if (Lower(text.substr(0, wanted.size())) != wanted) continue;
        m_state.ShowFocus(true);
        m_state.EnsureVisible(row);
        m_state.ChangeSelection([=](RowSelection& selection) { return selection.SelectOnly(row); });
        break;
    }
    return true;
}

void TreeKeyboard::ScrollSideways(int pixels) {
    CScrollBar& bar = m_places.Horizontal();
    m_state.Scroll(bar, bar.Range().After(pixels));
}

void TreeKeyboard::GoLeft() {
    const int row = m_state.FocusedRow();
    if (!m_places.HasLevels() || !m_state.Source().Has(row)) {
        ScrollSideways(-CScrollBar::Thickness());
        return;
    }
    const TreeRow state = m_state.Source().Row(row);
    if (state.hasChildren && state.isExpanded) {
        m_state.ExpandByUser(row, false);
        return;
    }
    // To the parent: the nearest row above of a lower level.
    int parent = row - 1;
    while (parent >= 0 && m_state.Source().Row(parent).level >= state.level) --parent;
    if (state.level > 0 && parent >= 0) MoveFocusTo(parent);
}

void TreeKeyboard::GoRight() {
    const int row = m_state.FocusedRow();
    if (!m_places.HasLevels() || !m_state.Source().Has(row)) {
        ScrollSideways(CScrollBar::Thickness());
        return;
    }
    const TreeRow state = m_state.Source().Row(row);
    if (!state.hasChildren) return;
    if (state.isExpanded) {
        MoveFocusTo(row + 1);
    } else {
        m_state.ExpandByUser(row, true);
    }
}

void TreeKeyboard::PressSpace() {
    const int row = m_state.FocusedRow();
    if (!m_state.Source().Has(row)) return;
    m_state.ShowFocus(true);
    if (!IsHeld(VK_CONTROL)) {
        for (int column = 0; column < m_places.Columns().Count(); ++column) {
            if (!m_state.Source().Cell(row, column).checked) continue;
            m_state.ToggleCheck({row, column});
            return;
        }
    }
    m_state.ChangeSelection([](RowSelection& selection) { return selection.ToggleFocused(); });
}

}  // namespace brennvar
