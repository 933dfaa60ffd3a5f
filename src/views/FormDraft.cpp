#include "views/FormDraft.h"

namespace brennvar {

void FormDraft::SetStored(const Fields& stored) {
    m_stored = stored;
    for (const auto& [field, content] : stored) {
        if (m_edited.count(field) != 0 && m_shown[field] != content) continue;
        m_edited.erase(field);
        m_shown[field] = content;
    }
}

void FormDraft::Edit(int field, const std::string& content) {
    m_shown[field] = content;
    if (m_stored[field] == content) {
        m_edited.erase(field);
    } else {
        m_edited.insert(field);
    }
}

void FormDraft::Discard() {
    m_edited.clear();
    m_shown = m_stored;
}

void FormDraft::Settle(const Fields& sent) {
    for (const auto& [field, content] : sent) {
        if (m_shown[field] == content) Edit(field, m_stored[field]);
    }
}

}  // namespace brennvar
