#include "views/LogRows.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace brennvar {

void LogRows::Restart(Order order, std::uint32_t fileCount, bool isSorted) {
    *this = LogRows();
    m_isSorted = isSorted;
    m_order = order;
    m_fileCount = fileCount;
}

void LogRows::AddFound(std::uint32_t plain, std::vector<std::uint32_t> numbers) {
    m_plain += plain;
    if (numbers.empty()) return;
    ForgetPlaces();
    if (m_numbers->empty()) {
        m_numbers = std::make_shared<std::vector<std::uint32_t>>(std::move(numbers));
        m_isShared = false;
        return;
    }
    if (std::exchange(m_isShared, false)) m_numbers = std::make_shared<std::vector<std::uint32_t>>(*m_numbers);
    m_numbers->insert(m_numbers->end(), numbers.begin(), numbers.end());
}

void LogRows::AddAppended(std::uint32_t plain, std::vector<std::uint32_t> numbers) {
    if (m_order == Order::AsInFile) return AddFound(plain, std::move(numbers));
    m_plain += plain;
    m_fileCount += plain;
    m_newer.insert(m_newer.end(), numbers.begin(), numbers.end());
}

std::uint32_t LogRows::NumberOf(int row) const {
    auto index = static_cast<std::size_t>(row);
    if (index < m_newer.size()) return m_newer[m_newer.size() - 1 - index];
    index -= m_newer.size();
    if (index < m_numbers->size()) return (*m_numbers)[index];
    const auto plain = static_cast<std::uint32_t>(row);
    return m_order == Order::NewestFirst ? m_fileCount - 1 - plain : plain;
}

int LogRows::RowOf(std::uint32_t number) const {
    if (m_plain > 0) {
        const std::uint32_t row = m_order == Order::NewestFirst ? m_fileCount - 1 - number : number;
        return row < m_plain ? static_cast<int>(row) : -1;
    }
    const auto newer = std::lower_bound(m_newer.begin(), m_newer.end(), number);
    if (newer != m_newer.end() && *newer == number) return static_cast<int>(m_newer.end() - newer) - 1;
    const int place = PlaceOf(number);
    return place < 0 ? -1 : place + static_cast<int>(m_newer.size());
}

int LogRows::PlaceOf(std::uint32_t number) const {
    if (m_isSorted) {
        if (m_places.empty() && !m_numbers->empty()) {
            m_places.resize(std::size_t{*std::max_element(m_numbers->begin(), m_numbers->end())} + 1);
            std::uint32_t place = 0;
            for (const std::uint32_t listed : *m_numbers) m_places[listed] = ++place;
        }
        return number < m_places.size() ? static_cast<int>(m_places[number]) - 1 : -1;
    }
    const auto at = m_order == Order::NewestFirst
                        ? std::lower_bound(m_numbers->begin(), m_numbers->end(), number, std::greater<>())
                        : std::lower_bound(m_numbers->begin(), m_numbers->end(), number);
    return at == m_numbers->end() || *at != number ? -1 : static_cast<int>(at - m_numbers->begin());
}

std::function<std::uint32_t(std::size_t row)> LogRows::Snapshot() const {
    auto places = std::exchange(m_places, {});                 // not for the copy
    const auto rows = std::make_shared<const LogRows>(*this);  // shares the numbers
    m_places = std::move(places);
    m_isShared = true;
    return [rows](std::size_t row) { return rows->NumberOf(static_cast<int>(row)); };
}

}  // namespace brennvar
