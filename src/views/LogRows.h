// Which entries of a log the list shows, by their numbers in the file, in the order of the list. All entries as
// they stand take no memory; others 4 bytes each.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace brennvar {

class LogRows {
public:
    enum class Order : std::uint8_t {
        NewestFirst,  // what is appended to the file comes before all others
        AsInFile,     // and here behind them
    };

    // No rows. fileCount: entries of the file, for all of them as they stand, newest first. isSorted: what is found
    // comes in any order of numbers, else up or down.
    void Restart(Order order, std::uint32_t fileCount, bool isSorted);
    // Found by the listing: so many of the file's next ones, or these.
    void AddFound(std::uint32_t plain, std::vector<std::uint32_t> numbers);
    // Appended to the file since, in its order. NewestFirst: the same number of rows have come first.
    void AddAppended(std::uint32_t plain, std::vector<std::uint32_t> numbers);

    [[nodiscard]] int Count() const { return static_cast<int>(m_plain + m_numbers->size() + m_newer.size()); }
    [[nodiscard]] std::uint32_t NumberOf(int row) const;
    // -1: it is not listed. Of a sorted list, all places are found by the first question, and kept.
    [[nodiscard]] int RowOf(std::uint32_t number) const;
    // Another listing begins, which needs the memory.
    void ForgetPlaces() { m_places = {}; }
    [[nodiscard]] Order GetOrder() const { return m_order; }

    // The rows as they are now, for another thread, which may outlast this object.
    [[nodiscard]] std::function<std::uint32_t(std::size_t row)> Snapshot() const;

private:
    [[nodiscard]] int PlaceOf(std::uint32_t number) const;  // in m_numbers, -1

    Order m_order = Order::NewestFirst;
    bool m_isSorted = false;
    std::uint32_t m_fileCount = 0;
    std::uint32_t m_plain = 0;
    // Shared with snapshots: a copy is made before it is changed under one. Whether one has been taken of it is
    // remembered: how many owners there are just now is another thread's affair.
    mutable bool m_isShared = false;
    std::shared_ptr<std::vector<std::uint32_t>> m_numbers = std::make_shared<std::vector<std::uint32_t>>();
    mutable std::vector<std::uint32_t>
        m_places;                        // by number: of a sorted list, counted from 1, 0 for none; or empty
    std::vector<std::uint32_t> m_newer;  // in the order of the file, so that the last is the first row
};

}  // namespace brennvar
