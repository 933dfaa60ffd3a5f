#include "views/LogRowCache.h"

#include <algorithm>
#include <utility>

namespace brennvar {

LogRowCache::LogRowCache(TaskQueue& reads, std::shared_ptr<const LogTexts> texts, std::function<void()> come)
    : m_come(std::move(come)),
      m_reading(
          reads,
          [texts = std::move(texts)](const Request& request) {
              std::vector<NumberedRow> rows;
              const auto reader = LogReader::Open(request.place);
              for (const std::uint32_t number : request.numbers) {
                  const LogEntry* const entry = reader ? reader->Read(number) : nullptr;
                  rows.emplace_back(number, entry ? RowOf(*entry, *texts) : LogRow{});
              }
              return std::optional(std::move(rows));
          },
          [this](std::optional<std::vector<NumberedRow>> rows, const Request& request) {
              OnRead(std::move(rows), request);
          }) {}

void LogRowCache::Restart(LogPlace place) {
    m_place = std::move(place);
    ++m_generation;
    m_wanted.clear();
    m_rows.clear();
    m_older.clear();
}

void LogRowCache::Put(std::vector<NumberedRow> rows) {
    for (auto& [number, row] : rows) m_rows.insert_or_assign(number, std::move(row));
    if (m_rows.size() > kKept) {
        m_older = std::move(m_rows);
        m_rows.clear();
    }
}

const LogRow* LogRowCache::Find(std::uint32_t number) const {
    if (const auto at = m_rows.find(number); at != m_rows.end()) return &at->second;
    const auto at = m_older.find(number);
    return at != m_older.end() ? &at->second : nullptr;
}

bool LogRowCache::IsComing(std::uint32_t number) const {
    return std::find(m_wanted.begin(), m_wanted.end(), number) != m_wanted.end();
}

void LogRowCache::Want(std::vector<std::uint32_t> numbers) {
    std::erase_if(numbers, [&](std::uint32_t number) { return Find(number) != nullptr || IsComing(number); });
    if (numbers.empty()) return;
    // Of what was wanted before, the latest reading has only a part; but who scrolls on does not want it any more.
    if (m_wanted.size() + numbers.size() > kMostWanted) m_wanted.clear();
    m_wanted.insert(m_wanted.end(), numbers.begin(), numbers.end());
    m_reading.Refresh({.place = m_place, .generation = m_generation, .numbers = m_wanted});
}

void LogRowCache::OnRead(std::optional<std::vector<NumberedRow>> rows, const Request& request) {
    if (request.generation != m_generation) return;
    if (!m_reading.IsReading()) m_wanted.clear();
    if (!rows) return;
    Put(*std::move(rows));
    m_come();
}

}  // namespace brennvar
