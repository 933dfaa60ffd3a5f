#include "logs/LogFilter.h"

#include <algorithm>

#include "base/AsciiCase.h"

namespace brennvar {
namespace {

constexpr std::array<char, 256> kLower = [] {
    std::array<char, 256> all{};
    for (unsigned n = 0; n < all.size(); ++n) all[n] = AsciiLower(static_cast<char>(n));
    return all;
}();

char Lower(char c) {
    return kLower[static_cast<unsigned char>(c)];
}

bool IsMadeOf(std::string_view text, std::string_view letters) {
    return text.find_first_not_of(letters) == std::string_view::npos;
}

}  // namespace

LogFilter::LogFilter(const LogWish& wish, const LogTexts& texts)
    : m_action(wish.action), m_protocol(wish.protocol), m_searched(wish.searched), m_texts(texts) {
    std::transform(m_searched.begin(), m_searched.end(), m_searched.begin(), AsciiLower);
    for (std::size_t i = 0; i < kLogActionCount; ++i) m_actionHolds[i] = Holds(texts.actions[i]);
    for (std::size_t i = 0; i < kLogProtocolCount; ++i) {
        m_protocolHolds[i] = Holds(NameOf(static_cast<LogProtocol>(i)));
    }
    m_mayBeTime = IsMadeOf(m_searched, "0123456789:");
    m_mayBeAddress = IsMadeOf(m_searched, "0123456789.: -><");
    constexpr std::size_t kLongestNumber = 10;
    m_mayBeSize = m_searched.size() <= kLongestNumber + 1 + texts.bytes.size();
}

bool LogFilter::Matches(const LogEntry& entry) {
    if (m_action && entry.action != *m_action) return false;
    if (m_protocol && entry.protocol != *m_protocol) return false;
    return m_searched.empty() || IsFound(entry);
}

bool LogFilter::Holds(std::string_view text) const {
    if (text.size() < m_searched.size()) return false;
    if (m_searched.empty()) return true;
    const char first = m_searched.front();
    const char* const last = text.data() + text.size() - m_searched.size();
    for (const char* at = text.data(); at <= last; ++at) {
        if (Lower(*at) != first) continue;
        if (std::equal(m_searched.begin() + 1, m_searched.end(), at + 1,
                       [](char searched, char c) { return searched == Lower(c); })) {
            return true;
        }
    }
    return false;
}

bool LogFilter::IsFound(const LogEntry& entry) {
    if (!entry.isPacket && m_actionHolds[static_cast<std::size_t>(entry.action)]) return true;
    if (m_protocolHolds[static_cast<std::size_t>(entry.protocol)]) return true;
    // The cell of the program is the end of the path.
    if (Holds(entry.path) || Holds(entry.shortText)) return true;
    const auto holdsCell = [&](LogColumn column) {
        m_cell.clear();
        AppendCell(m_cell, column, entry, m_texts);
        return Holds(m_cell);
    };
    return (m_mayBeTime && holdsCell(LogColumn::Time)) ||
           (m_mayBeAddress && entry.hasAddresses && holdsCell(LogColumn::Address)) ||
           (entry.isPacket && m_mayBeSize && holdsCell(LogColumn::Remark));
}

}  // namespace brennvar
