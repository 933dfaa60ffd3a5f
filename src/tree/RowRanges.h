// A set of rows, kept as ranges: all of a million rows take as much room as one.
#pragma once

#include <cstdint>
#include <vector>

namespace brennvar {

class RowRanges {
public:
    struct Range {
        int first;
        int last;  // counts
        friend bool operator==(const Range&, const Range&) = default;
    };

    // Ranges from first to last, both included; without effect when last lies before first.
    void Add(int first, int last);
    void Remove(int first, int last);
    void Toggle(int row);
    void Clear() { m_ranges.clear(); }

    [[nodiscard]] bool Contains(int row) const;
    [[nodiscard]] bool IsEmpty() const { return m_ranges.empty(); }
    [[nodiscard]] std::int64_t Count() const;
    // In order, with at least one row between them.
    [[nodiscard]] const std::vector<Range>& Ranges() const { return m_ranges; }

    friend bool operator==(const RowRanges&, const RowRanges&) = default;

private:
    std::vector<Range> m_ranges;
};

}  // namespace brennvar
