#include "views/FormDraft.h"

#include <utility>

namespace brennvar {

void FormDraft::SetStored(const Fields& stored) {
    m_stored = stored;
    for (const auto& [field, content] : stored) {
        if (m_edited.count(field) != 0 && IsWanted(field, m_shown[field])) continue;
        m_edited.erase(field);
        m_shown[field] = content;
    }
}

void FormDraft::Edit(int field, const std::string& content) {
    m_shown[field] = content;
    if (IsWanted(field, content)) {
        m_edited.insert(field);
    } else {
        m_edited.erase(field);
    }
}

void FormDraft::Discard() {
    m_edited.clear();
    m_shown = m_stored;
}

void FormDraft::Settle() {
    for (const auto& [field, content] : std::exchange(m_applied, {})) {
        Edit(field, m_shown[field] == content ? m_stored[field] : m_shown[field]);
    }
}

void FormDraft::Withdraw() {
    for (const auto& [field, content] : std::exchange(m_applied, {})) Edit(field, m_shown[field]);
}

bool FormDraft::IsWanted(int field, const std::string& content) const {
    const auto differs = [&](const Fields& fields) {
        const auto at = fields.find(field);
        return at != fields.end() && at->second != content;
    };
    return differs(m_stored) || differs(m_applied);
}

}  // namespace brennvar
