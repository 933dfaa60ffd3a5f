#include "logs/LogSort.h"

#include <algorithm>

#include "base/AsciiCase.h"

namespace brennvar {
namespace {

struct Stopped {};

bool IsBefore(std::string_view a, std::string_view b) {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return static_cast<unsigned char>(AsciiLower(x)) < static_cast<unsigned char>(AsciiLower(y));
    });
}

// The texts' places among themselves; equal ones share one.
template <std::size_t Count, class TextAt>
std::array<std::uint32_t, Count> RanksOf(TextAt textAt) {
    std::array<std::uint32_t, Count> ranks{};
    for (std::size_t i = 0; i < Count; ++i) {
        for (std::size_t other = 0; other < Count; ++other) {
            if (IsBefore(textAt(other), textAt(i))) ++ranks[i];
        }
    }
    return ranks;
}

}  // namespace

std::uint32_t TextRanks::Add(std::string_view text) {
    if (const auto known = m_texts.find(text); known != m_texts.end()) return known->second;
    if (m_texts.size() == kMostTexts || m_bytes + text.size() > kMostBytes) {
        std::uint32_t key = 0;
        for (std::size_t i = 0; i < sizeof key; ++i) {
            key = key << 8 | (i < text.size() ? static_cast<unsigned char>(AsciiLower(text[i])) : 0U);
        }
        return kBeyond | key >> 1;
    }
    m_bytes += text.size();
    return m_texts.emplace(text, static_cast<std::uint32_t>(m_texts.size())).first->second;
}

void TextRanks::Rank() {
    std::vector<const std::pair<const std::string, std::uint32_t>*> texts;
    texts.reserve(m_texts.size());
    for (const auto& text : m_texts) texts.push_back(&text);
    std::sort(texts.begin(), texts.end(), [](auto* a, auto* b) { return IsBefore(a->first, b->first); });
    m_ranks.resize(texts.size());
    std::uint32_t rank = 0;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (i > 0 && IsBefore(texts[i - 1]->first, texts[i]->first)) ++rank;
        m_ranks[texts[i]->second] = rank;
    }
}

LogSort::LogSort(LogColumn column, bool isAscending, const LogTexts& texts, std::size_t room)
    : m_column(column),
      m_isAscending(isAscending),
      m_actions(RanksOf<kLogActionCount>([&](std::size_t i) -> std::string_view { return texts.actions[i]; })),
      m_protocols(RanksOf<kLogProtocolCount>([](std::size_t i) { return NameOf(static_cast<LogProtocol>(i)); })) {
    m_numbers.reserve(room);
}

std::uint32_t LogSort::KeyOf(const LogEntry& entry) {
    switch (m_column) {
        case LogColumn::Time: return SecondOfDay(entry.hour, entry.minute, entry.second);
        case LogColumn::Action: return m_actions[static_cast<std::size_t>(entry.action)];
        case LogColumn::Protocol: return m_protocols[static_cast<std::size_t>(entry.protocol)];
        case LogColumn::Address:
            if (!entry.hasAddresses) return m_texts.Add(entry.shortText);
            // The first of these networks belongs to nobody: above it there is room for all ranks.
            return std::max<std::uint32_t>(SwapAddress(entry.remoteAddress), TextRanks::kMostTexts);
        case LogColumn::Program: return m_texts.Add(ProgramOf(entry));
        case LogColumn::Remark: return entry.isPacket ? entry.packetSize : m_texts.Add(entry.shortText);
    }
    return 0;
}

void LogSort::Add(const LogEntry& entry, std::uint32_t number) {
    if (number >= m_keys.size()) m_keys.resize(std::size_t{number} + 1);  // at once for all, when they go down
    m_keys[number] = KeyOf(entry);
    m_numbers.push_back(number);
}

std::vector<std::uint32_t> LogSort::Sorted(const StopSignal& stop) {
    m_texts.Rank();
    for (std::uint32_t& key : m_keys) {
        key = m_texts.RankOf(key);
        if (!m_isAscending) key = ~key;
    }
    const bool goesDown = m_numbers.size() > 1 && m_numbers[0] > m_numbers[1];
    try {
        std::sort(m_numbers.begin(), m_numbers.end(), [&](std::uint32_t a, std::uint32_t b) {
            if (stop.Requested()) throw Stopped{};
            const std::uint32_t keyOfA = m_keys[a];
            const std::uint32_t keyOfB = m_keys[b];
            return keyOfA != keyOfB ? keyOfA < keyOfB : goesDown ? a > b : a < b;
        });
    } catch (const Stopped&) {
        return {};
    }
    return std::move(m_numbers);
}

}  // namespace brennvar
