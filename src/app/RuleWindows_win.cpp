#include "app/RuleWindows_win.h"

#include <utility>

#include "config/ResourceIds.h"
#include "rules/AdvancedRule.h"

namespace brennvar {

void RuleWindows::Attach(HWND window) {
    m_window = window;
    if (!window) Close();
}

void RuleWindows::Post(int command) const {
    if (m_window) ::PostMessageA(m_window, WM_COMMAND, static_cast<WPARAM>(command), 0);
}

void RuleWindows::MakeRule(const TrafficFacts& facts) {
    m_toMake = facts;
    Post(IDM_MAKE_RULE);
}

void RuleWindows::Explain(const TrafficFacts& facts) {
    m_toExplain = facts;
    Post(IDM_WHY);
}

bool RuleWindows::OnCommand(int id) {
    if (id != IDM_MAKE_RULE && id != IDM_WHY) return false;
    // Without facts the command comes from somebody else.
    const auto facts = std::exchange(id == IDM_WHY ? m_toExplain : m_toMake, std::nullopt);
    if (!facts || !m_window) return true;
    if (id == IDM_MAKE_RULE) {
        // Where a dialog of the control center has to be answered first, nothing may come of it: that one is shown.
        if (!::IsWindowEnabled(m_window)) ::SetForegroundWindow(::GetLastActivePopup(m_window));
        m_session.advancedRules.Add(RuleFor(*facts));
        return true;
    }
    if (!m_why) {
        m_why = std::make_unique<WhyDialog>(WhyDialog::Parts{.fonts = m_session.fonts,
                                                             .language = m_session.language,
                                                             .reads = m_session.reads,
                                                             .files = m_session.decisionFiles,
                                                             .blocked = m_session.blocked,
                                                             .clock = m_session.clock,
                                                             .pages = m_pages});
    }
    m_why->AskNear(m_window, *facts);
    return true;
}

void RuleWindows::Close() {
    if (m_why && m_why->IsOpen()) ::SendMessageA(m_why->Window(), WM_CLOSE, 0, 0);
}

}  // namespace brennvar
