#include "views/OptionChanges.h"

#include <algorithm>
#include <utility>

namespace brennvar {

void OptionChanges::Want(std::size_t section, FormDraft::Fields fields) {
    EraseWaiting(section);
    m_waiting.push_back({.section = section, .fields = std::move(fields)});
    m_ended.erase(section);
}

const OptionChanges::Change* OptionChanges::Begin() {
    if (m_current || m_waiting.empty()) return nullptr;
    m_current = std::move(m_waiting.front());
    m_waiting.pop_front();
    m_current->number = ++m_count;
    m_isSent = m_isDelivered = false;
    return &*m_current;
}

void OptionChanges::OnSent() {
    m_isSent = true;
    m_since = m_clock.Elapsed();
}

void OptionChanges::OnRefused() {
    EraseWaiting(m_current->section);
    m_current.reset();
}

bool OptionChanges::OnDelivered(int number) {
    if (!m_current || m_current->number != number) return false;
    m_isDelivered = true;
    m_since = m_clock.Elapsed();
    return true;
}

bool OptionChanges::NeedsReading() const {
    return m_isSent && (m_isDelivered || m_clock.Elapsed() - m_since > Withdrawal::kDeliveryLimit);
}

std::optional<OptionChanges::Change> OptionChanges::OnRead(bool isStored, std::chrono::milliseconds asked) {
    if (!m_isSent) return std::nullopt;
    const bool isOver = m_isDelivered && isStored;
    if (!isOver && asked - m_since <= (m_isDelivered ? kStoreLimit : Withdrawal::kDeliveryLimit))
        return std::nullopt;
    if (!isOver) m_current->withdrawal.Withdraw();
    m_ended[m_current->section] = isOver ? Note::Stored : Note::Lost;
    m_isSent = false;
    return std::exchange(m_current, std::nullopt);
}

OptionChanges::Note OptionChanges::NoteOf(std::size_t section) const {
    if (Last(section)) return Note::UnderWay;
    const auto at = m_ended.find(section);
    return at == m_ended.end() ? Note::None : at->second;
}

bool OptionChanges::Covers(std::size_t section, const FormDraft::Fields& fields) const {
    const Change* const last = Last(section);
    return last && last->fields == fields;
}

const OptionChanges::Change* OptionChanges::Last(std::size_t section) const {
    for (const Change& change : m_waiting) {
        if (change.section == section) return &change;
    }
    return m_current && m_current->section == section ? &*m_current : nullptr;
}

void OptionChanges::EraseWaiting(std::size_t section) {
    std::erase_if(m_waiting, [section](const Change& change) { return change.section == section; });
}

}  // namespace brennvar
