// Pictures of files by path: the ones that were used last are kept, and of those that are still to be read the ones
// that were asked for last come first, because they are the ones that the user looks at. Knows neither files nor
// windows; one thread.
#pragma once

#include <algorithm>
#include <cstddef>
#include <deque>
#include <list>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>

namespace brennvar {

template <class Icon>
class IconCache {
public:
    // At most so many pictures, and so many paths that wait for theirs; both above zero.
    IconCache(std::size_t capacity, std::size_t mostWanted) : m_capacity(capacity), m_mostWanted(mostWanted) {}

    // The picture, valid until the next Put. Null while it is not there: it is wanted then.
    [[nodiscard]] const Icon* Find(const std::string& path) {
        if (const auto found = m_byPath.find(path); found != m_byPath.end()) {
            m_entries.splice(m_entries.begin(), m_entries, found->second);
            return &found->second->second;
        }
        if (m_loading == path) return nullptr;
        std::erase(m_wanted, path);
        m_wanted.push_back(path);
        // Who scrolls on no longer waits for the first ones; they are wanted again when they are seen again.
        if (m_wanted.size() > m_mostWanted) m_wanted.pop_front();
        return nullptr;
    }

    // The path that is to be read now; nothing while another one is being read, or none is wanted.
    [[nodiscard]] std::optional<std::string> NextWanted() {
        if (m_loading || m_wanted.empty()) return std::nullopt;
        m_loading = std::move(m_wanted.back());
        m_wanted.pop_back();
        return m_loading;
    }
    // What was read for the path of NextWanted.
    void Put(Icon icon) {
        if (!m_loading) return;
        if (m_entries.size() >= m_capacity) {
            m_byPath.erase(m_entries.back().first);
            m_entries.pop_back();
        }
        m_entries.emplace_front(*m_loading, std::move(icon));
        m_byPath.emplace(std::move(*m_loading), m_entries.begin());
        m_loading.reset();
    }

    [[nodiscard]] std::size_t Count() const { return m_entries.size(); }

private:
    using Entries = std::list<std::pair<std::string, Icon>>;

    const std::size_t m_capacity;
    const std::size_t m_mostWanted;
    Entries m_entries;  // the one that was used last comes first
    std::unordered_map<std::string, typename Entries::iterator> m_byPath;
    std::deque<std::string> m_wanted;  // the one that was asked for last stands last
    std::optional<std::string> m_loading;
};

}  // namespace brennvar
