#include "app/PageHost.h"

#include <utility>

#include "ui/Controls.h"
#include "ui/ResourceIds.h"

namespace brennvar {
namespace {

constexpr int kMargin = 8;
constexpr int kButtonTop = 16;
constexpr int kButtonHeight = 40;
constexpr int kButtonGap = 8;

}  // namespace

bool PageHost::Create(HWND parent, const CFonts& fonts, std::vector<Entry> entries) {
    m_parent = parent;
    m_entries = std::move(entries);
    for (const Entry& entry : m_entries) {
        // A check box that looks like a button: it can stay pressed for the page that is shown, and Tab reaches it.
        CreateControl(parent, "BUTTON", entry.caption, WS_TABSTOP | BS_CHECKBOX | BS_PUSHLIKE, entry.command,
                      fonts.Text());
    }
    CreateControl(parent, "STATIC", "", SS_ETCHEDVERT, IDC_COLUMN_LINE, fonts.Text());
    bool all = true;
    for (const Entry& entry : m_entries) all = entry.page->Create(parent) && all;
    return all;
}

const PageHost::Entry* PageHost::Find(int command) const {
    for (const Entry& entry : m_entries) {
        if (entry.command == command) return &entry;
    }
    return nullptr;
}

bool PageHost::Open(int command) {
    const Entry* next = Find(command);
    if (!next) return false;
    if (next == m_current) return true;
    const Entry* const last = std::exchange(m_current, next);
    if (last) ::CheckDlgButton(m_parent, last->command, BST_UNCHECKED);
    ::CheckDlgButton(m_parent, next->command, BST_CHECKED);
    // The keyboard must not stay in a page that nobody sees.
    const HWND focus = ::GetFocus();
    const bool takesFocus =
        last && (focus == ::GetDlgItem(m_parent, last->command) || ::IsChild(last->page->Window(), focus));
    // The new page first, so that the window behind does not show through in between.
    next->page->Show();
    if (last) last->page->Hide();
    if (takesFocus) ::SetFocus(::GetDlgItem(m_parent, next->command));
    return true;
}

void PageHost::Place(const RECT& place) const {
    constexpr UINT kKeep = SWP_NOZORDER | SWP_NOACTIVATE;
    int top = place.top + Scale(kButtonTop);
    const int buttonWidth = Scale(kColumnWidth) - 2 * Scale(kMargin);
    for (const Entry& entry : m_entries) {
        ::SetWindowPos(::GetDlgItem(m_parent, entry.command), nullptr, place.left + Scale(kMargin), top,
                       buttonWidth, Scale(kButtonHeight), kKeep);
        top += Scale(kButtonHeight) + Scale(kButtonGap);
    }
    const int line = place.left + Scale(kColumnWidth);
    ::SetWindowPos(::GetDlgItem(m_parent, IDC_COLUMN_LINE), nullptr, line - 2, place.top, 2,
                   place.bottom - place.top, kKeep);
    for (const Entry& entry : m_entries) entry.page->Place({line, place.top, place.right, place.bottom});
}

void PageHost::OnRulesChanged() const {
    for (const Entry& entry : m_entries) entry.page->OnRulesChanged();
}

}  // namespace brennvar
