#include "app/PageHost_win.h"

#include <utility>

#include "config/ResourceIds.h"
#include "ui/WindowPicture_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kColumnMargin = 16;
constexpr int kButtonGap = 4;

const ButtonKind& ButtonKindOf(int command) {
    switch (command) {
        case IDM_STATISTICS: return kButtonMenuStatistics;
        case IDM_CONNECTIONS: return kButtonMenuConnections;
        case IDM_ADVANCED: return kButtonMenuAdvanced;
        case IDM_OPTIONS: return kButtonMenuOptions;
        case IDM_APPLICATIONS: return kButtonMenuApplications;
        case IDM_TRAFFIC_LOG: return kButtonMenuTrafficLog;
        case IDM_SUPPORT: return kButtonMenuSupport;
        default: return kButtonMenuAbout;
    }
}

}  // namespace

void PageHost::Create(HWND parent, const Look& look, std::vector<Entry> entries) {
    m_parent = parent;
    for (Entry& entry : entries) {
        auto slot = std::make_unique<Slot>();
        slot->entry = std::move(entry);
        slot->button.Create(parent, ButtonKindOf(slot->entry.command), slot->entry.caption, slot->entry.command,
                            look);
        m_slots.push_back(std::move(slot));
    }
}

PageHost::Slot* PageHost::Find(int command) const {
    for (const auto& slot : m_slots) {
        if (slot->entry.command == command && slot->entry.make) return slot.get();
    }
    return nullptr;
}

bool PageHost::HasPage(int command) const {
    return Find(command) != nullptr;
}

bool PageHost::MakePage(Slot& slot) const {
    if (slot.page) return true;
    std::unique_ptr<CPage> page = slot.entry.make();
    if (!page->Create(m_parent)) return false;
    slot.page = std::move(page);
    slot.page->Place(m_pagePlace);
    return true;
}

bool PageHost::Open(int command) {
    Slot* const next = Find(command);
    if (!next) return false;
    if (next == m_current) return true;
    if (!MakePage(*next)) return true;  // the page that is shown stays
    if (m_current && !m_current->page->MayLeave()) return true;
    Slot* const last = std::exchange(m_current, next);
    // The keyboard must not stay in a page that nobody sees.
    const HWND focus = ::GetFocus();
    const bool takesFocus =
        last && (focus == last->button.Window() || ::IsChild(last->page->Window(), focus) != FALSE);
    if (last) last->button.SetSelected(false);
    next->button.SetSelected(true);
    if (last) last->page->Hide();
    next->page->Show();
    if (takesFocus) ::SetFocus(next->button.Window());
    // Before anything of this paints itself.
    RECT changed{};
    ::UnionRect(&changed, &m_column, &m_pagePlace);
    ShowAsOnePicture(m_parent, changed);
    return true;
}

void PageHost::Place(const RECT& column, const RECT& page) {
    m_column = column;
    m_pagePlace = page;
    const LONG left = column.left;
    LONG top = column.top + Scale(kColumnMargin);
    LONG bottom = column.bottom - Scale(kColumnMargin);
    for (const auto& slot : m_slots) {
        if (!slot->entry.make) bottom -= slot->button.Size().cy + Scale(kButtonGap);
    }
    for (const auto& slot : m_slots) {
        const SIZE size = slot->button.Size();
        LONG& at = slot->entry.make ? top : bottom;
        slot->button.MoveTo(left, at);
        at += size.cy + Scale(kButtonGap);
        if (slot->page) slot->page->Place(page);
    }
}

void PageHost::OnWindowSeen(bool isSeen) const {
    if (!m_current) return;
    if (isSeen) {
        m_current->page->Show();
    } else {
        m_current->page->Hide();
    }
}

void PageHost::OnLogsDeleted() const {
    for (const auto& slot : m_slots) {
        if (slot->page) slot->page->OnLogsDeleted();
    }
}

void PageHost::OnRulesChanged() const {
    for (const auto& slot : m_slots) {
        if (slot->page) slot->page->OnRulesChanged();
    }
}

}  // namespace brennvar
