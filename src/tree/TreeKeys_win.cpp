// What the keyboard does to a tree, and copying rows as text.
#include <algorithm>
#include <cstdint>
#include <cstring>

#include "tree/Tree_win.h"

namespace brennvar {
namespace {

bool IsHeld(int key) {
    return ::GetKeyState(key) < 0;
}

constexpr int kMostSearchedRows = 10'000;  // more would keep the user waiting
constexpr ULONGLONG kTypingPause = 1000;   // ms, after which typing begins anew

// In the system's code page.
std::string Lower(std::string text) {
    ::CharLowerBuffA(text.data(), static_cast<DWORD>(text.size()));
    return text;
}

// A cell must not make more cells or lines of itself.
void AppendFlat(std::string& text, const std::string& cell) {
    for (const char character : cell) {
        const bool parts = character == '\t' || character == '\r' || character == '\n' || character == '\0';
        text += parts ? ' ' : character;
    }
}

}  // namespace

std::optional<LRESULT> CTree::OnGetDialogCode(LPARAM lParam) const {
    LRESULT code = DLGC_WANTARROWS | DLGC_WANTCHARS;
    const auto* message = reinterpret_cast<const MSG*>(lParam);
    // Enter belongs to the dialog's default button, unless a row can be opened.
    if (message && message->message == WM_KEYDOWN && message->wParam == VK_RETURN && events.opened) {
        code |= DLGC_WANTMESSAGE;
    }
    return code;
}

bool CTree::OnKeyDown(UINT key) {
    HideTip();
    switch (key) {
        case VK_UP: MoveFocusBy(-1); return true;
        case VK_DOWN: MoveFocusBy(1); return true;
        case VK_PRIOR: MoveFocusBy(-std::max(1, PageRows() - 1)); return true;
        case VK_NEXT: MoveFocusBy(std::max(1, PageRows() - 1)); return true;
        case VK_HOME: MoveFocusTo(0); return true;
        case VK_END: MoveFocusTo(m_rowCount - 1); return true;
        case VK_LEFT: GoLeft(); return true;
        case VK_RIGHT: GoRight(); return true;
        case VK_SPACE: PressSpace(); return true;
        case VK_RETURN:
            if (!events.opened || !m_source.Has(FocusedRow())) return false;
            events.opened(FocusedRow());
            return true;
        case VK_F5:
            if (!events.refreshWanted) return false;
            events.refreshWanted();
            return true;
        default: return IsHeld(VK_CONTROL) && !IsHeld(VK_MENU) && OnControlKey(key);
    }
}

bool CTree::OnControlKey(UINT key) {
    switch (key) {
        case 'A':
            ChangeSelection([this](RowSelection& selection) { return selection.SelectAll(m_rowCount); });
            return true;
        case 'C': CopySelection(); return true;
        case 'F':
            if (!events.findWanted) return false;
            events.findWanted();
            return true;
        default: return false;
    }
}

void CTree::MoveFocusBy(int rows) {
    // The first key press in a list chooses its first row.
    const std::int64_t row = FocusedRow() < 0 ? 0 : std::int64_t{FocusedRow()} + rows;
    MoveFocusTo(static_cast<int>(std::clamp<std::int64_t>(row, 0, std::max(0, m_rowCount - 1))));
}

void CTree::MoveFocusTo(int row) {
    if (!m_source.Has(row)) return;
    m_showsFocus = true;
    const RowSelection::Keys held{.control = IsHeld(VK_CONTROL), .shift = IsHeld(VK_SHIFT)};
    EnsureVisible(row);
    RefreshRow(row);
    ChangeSelection([=](RowSelection& selection) { return selection.MoveTo(row, held); });
}

// Goes to the next row whose first cell begins with what was typed.
bool CTree::OnChar(char character) {
    if (static_cast<unsigned char>(character) <= ' ' || m_rowCount > kMostSearchedRows) return false;
    const ULONGLONG now = ::GetTickCount64();
    const bool goesOn = now - m_typedAt < kTypingPause && !m_typed.empty();
    m_typedAt = now;
    if (!goesOn) m_typed.clear();
    const std::string typed = Lower({character});
    // The same letter again and again goes from row to row.
    const bool isRepeated = m_typed == typed;
    if (!isRepeated) m_typed += typed;
    const int start = std::max(0, FocusedRow() + (goesOn && !isRepeated ? 0 : 1));
    for (int step = 0; step < m_rowCount; ++step) {
        const int row = (start + step) % m_rowCount;
        if (!Lower(m_source.Cell(row, 0).text.substr(0, m_typed.size())).starts_with(m_typed)) continue;
        m_showsFocus = true;
        EnsureVisible(row);
        RefreshRow(row);
        ChangeSelection([=](RowSelection& selection) { return selection.SelectOnly(row); });
        break;
    }
    return true;
}

void CTree::GoLeft() {
    const int row = FocusedRow();
    if (!m_setup.hasLevels || !m_source.Has(row)) {
        ScrollHorizontally(m_horizontal.Range().After(-CScrollBar::Thickness()));
        return;
    }
    const TreeRow state = m_source.Row(row);
    if (state.hasChildren && state.isExpanded) {
        ExpandByUser(row, false);
        return;
    }
    // To the parent: the nearest row above of a lower level.
    int parent = row - 1;
    while (parent >= 0 && m_source.Row(parent).level >= state.level) --parent;
    if (state.level > 0 && parent >= 0) MoveFocusTo(parent);
}

void CTree::GoRight() {
    const int row = FocusedRow();
    if (!m_setup.hasLevels || !m_source.Has(row)) {
        ScrollHorizontally(m_horizontal.Range().After(CScrollBar::Thickness()));
        return;
    }
    const TreeRow state = m_source.Row(row);
    if (!state.hasChildren) return;
    if (state.isExpanded) {
        MoveFocusTo(row + 1);
    } else {
        ExpandByUser(row, true);
    }
}

void CTree::PressSpace() {
    const int row = FocusedRow();
    if (!m_source.Has(row)) return;
    m_showsFocus = true;
    RefreshRow(row);
    if (!IsHeld(VK_CONTROL)) {
        for (int column = 0; column < m_layout.Count(); ++column) {
            if (!m_source.Cell(row, column).checked) continue;
            ToggleCheck({row, column});
            return;
        }
    }
    ChangeSelection([](RowSelection& selection) { return selection.ToggleFocused(); });
}

std::string CTree::RowText(int row) const {
    std::string text;
    for (int column = 0; column < m_layout.Count(); ++column) {
        if (column > 0) text += '\t';
        AppendFlat(text, m_source.Cell(row, column).text);
    }
    return text;
}

void CTree::CopySelection() const {
    std::string text;
    int count = 0;
    for (const RowRanges::Range& range : SelectedRows().Ranges()) {
        const int last = std::min(range.last, m_rowCount - 1);
        for (int row = range.first; row <= last && count < kMostCopiedRows; ++row, ++count) {
            text += RowText(row) + "\r\n";
        }
    }
    if (count == 0 || !::OpenClipboard(Window())) return;
    ::EmptyClipboard();
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    if (void* bytes = memory ? ::GlobalLock(memory) : nullptr) {
        std::memcpy(bytes, text.c_str(), text.size() + 1);
        ::GlobalUnlock(memory);
        // The clipboard owns the memory when it has taken it.
        if (!::SetClipboardData(CF_TEXT, memory)) ::GlobalFree(memory);
    } else if (memory) {
        ::GlobalFree(memory);
    }
    ::CloseClipboard();
}

}  // namespace brennvar
