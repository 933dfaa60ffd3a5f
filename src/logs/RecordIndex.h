// Which record of a growing file answers for a key, without reading the file again for each question: what was read
// is remembered, and only what has been appended since is read.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/StopSignal.h"
#include "ipc/RecordFile.h"
#include "logs/LogFile.h"

namespace brennvar {

// A file of which the last matching record counts is read from its end, one of which the first does from its
// beginning, and only until a match has come: a later question reads on from there. Remembered are the hash of the
// key and the number of the record, some 40 bytes for each key, and of kMostKeys keys at most (10 MB); a key beyond
// them is looked for in the file. The answer is always read from the file, so that a hash that two keys share, or a
// file that was written over, gives no wrong one. Of a file that is larger than `most` bytes, only so many at its
// end are looked at: records that are older may not be found. Stopped, it finds nothing. One thread at a time.
//
// Traits: Record, Key (borrowed, for one call), kTakesLast (which record counts when several match),
// HashOf(record), HashOf(key), Matches(record, key).
template <class Traits>
class RecordIndex {
public:
    using Record = typename Traits::Record;
    static constexpr std::size_t kMostKeys = 0x40000;

    // 64 MB: less than a second of a slow disk, and a quarter of a million names.
    static constexpr std::uint64_t kMostBytes = 0x400'0000;

    // The signal is borrowed.
    RecordIndex(std::string path, const StopSignal& stop, std::uint64_t most = kMostBytes)
        : m_path(std::move(path)), m_stop(stop), m_most(most / sizeof(Record)) {}

    [[nodiscard]] const std::string& Path() const { return m_path; }
    [[nodiscard]] std::optional<Record> Find(const typename Traits::Key& key) {
        const auto file = LogFile::Open(m_path);
        if (!file) {
            Forget();
            return std::nullopt;
        }
        Follow(*file);
        const auto known = m_numbers.find(Traits::HashOf(key));
        if (known == m_numbers.end()) return m_isWhole ? ReadOn(*file, key) : Scan(*file, key);
        if (const auto record = ReadRecord(*file, known->second); record && Traits::Matches(*record, key))
            return record;
        return Scan(*file, key);  // another key with this hash, or the file has just been written over
    }

private:
    void Forget() {
        m_numbers.clear();
        m_state = {};
        m_first = m_end = m_count = 0;
        m_isWhole = true;
        m_last.reset();
    }

    // Takes note of what has become of the file. What was appended counts more than what was read before where the
    // last record does, so it is read here.
    void Follow(const LogFile& file) {
        const LogFileState state = file.State();
        if (state == m_state && state.identity != 0) return;
        if (!HasOnlyGrown(file, state)) Forget();
        m_count = std::min<std::uint64_t>(state.size / sizeof(Record), kMostRecords);
        if (m_first == m_end) {
            m_first = m_end = Traits::kTakesLast ? m_count : Oldest();
        } else if (Traits::kTakesLast) {
            VisitUp(file, std::max(m_end, Oldest()), [&](std::uint64_t number, const Record& record) {
                m_numbers.erase(Traits::HashOf(record));
                Note(number, record);
                m_end = number + 1;
                m_last = record;
                return true;
            });
            // What was appended may have another answer than what is remembered.
            if (m_end != m_count) return Forget();
        }
        m_state = state;  // not before all of that has been read: it would never be looked at again
    }
    // What was read last stands where it stood.
    [[nodiscard]] bool HasOnlyGrown(const LogFile& file, const LogFileState& state) const {
        if (state.identity != m_state.identity || state.size <= m_state.size) return false;
        if (!m_last) return true;
        const auto last = ReadRecord(file, m_end - 1);
        return last && std::ranges::equal(RecordBytes(*last), RecordBytes(*m_last));
    }
    // Of several records with one hash that which was noted first stays.
    void Note(std::uint64_t number, const Record& record) {
        const std::uint64_t hash = Traits::HashOf(record);
        if (m_numbers.size() < kMostKeys) {
            m_numbers.emplace(hash, static_cast<std::uint32_t>(number));
        } else if (!m_numbers.contains(hash)) {
            m_isWhole = false;
        }
    }
    // The first match among the records that were not read yet.
    [[nodiscard]] std::optional<Record> ReadOn(const LogFile& file, const typename Traits::Key& key) {
        std::optional<Record> found;
        const auto see = [&](std::uint64_t number, const Record& record) {
            Note(number, record);
            if (Traits::kTakesLast) m_first = number;
            if (!Traits::kTakesLast) m_end = number + 1;
            if (number + 1 == m_end) m_last = record;
            if (Traits::Matches(record, key)) found = record;
            return !found;
        };
        if constexpr (Traits::kTakesLast) {
            VisitDown(file, m_first, see);
        } else {
            VisitUp(file, std::max(m_end, Oldest()), see);
        }
        return found;
    }
    // The first match of all, without what is remembered.
    [[nodiscard]] std::optional<Record> Scan(const LogFile& file, const typename Traits::Key& key) const {
        std::optional<Record> found;
        const auto see = [&](std::uint64_t, const Record& record) {
            if (Traits::Matches(record, key)) found = record;
            return !found;
        };
        if constexpr (Traits::kTakesLast) {
            VisitDown(file, m_count, see);
        } else {
            VisitUp(file, Oldest(), see);
        }
        return found;
    }

    [[nodiscard]] static std::optional<Record> ReadRecord(const LogFile& file, std::uint64_t number) {
        Record record;
        const auto bytes = WritableRecordBytes(record);
        if (file.ReadAt(number * sizeof(Record), bytes) != bytes.size()) return std::nullopt;
        return record;
    }
    // The first that is looked at.
    [[nodiscard]] std::uint64_t Oldest() const { return m_count - std::min(m_count, m_most); }
    // The records from this one to the last one, or from the one before this to the first one that is looked at,
    // until one of them is not to be followed by another, the file ends sooner than it said, or all is to stop.
    template <class See>
    void VisitUp(const LogFile& file, std::uint64_t first, See see) const {
        std::vector<Record> piece;
        while (first < m_count && ReadPiece(file, first, std::min(first + kPiece, m_count), piece)) {
            for (const Record& record : piece) {
                if (!see(first++, record)) return;
            }
        }
    }
    template <class See>
    void VisitDown(const LogFile& file, std::uint64_t end, See see) const {
        std::vector<Record> piece;
        for (const std::uint64_t oldest = Oldest(); end > oldest;) {
            const std::uint64_t first = std::max(oldest, end - std::min(end, kPiece));
            if (!ReadPiece(file, first, end, piece)) return;
            while (end > first) {
                --end;
                if (!see(end, piece[static_cast<std::size_t>(end - first)])) return;
            }
        }
    }
    [[nodiscard]] bool ReadPiece(const LogFile& file, std::uint64_t first, std::uint64_t end,
                                 std::vector<Record>& piece) const {
        if (m_stop.Requested()) return false;
        piece.resize(static_cast<std::size_t>(end - first));
        const auto bytes = std::as_writable_bytes(std::span(piece));
        return file.ReadAt(first * sizeof(Record), bytes) == bytes.size();
    }

    static constexpr std::uint64_t kMostRecords = 0xFFFFFFFF;  // numbers are kept in 32 bits
    static constexpr std::uint64_t kPiece = kScanSize / sizeof(Record);

    const std::string m_path;
    const StopSignal& m_stop;
    const std::uint64_t m_most;  // records
    LogFileState m_state;
    std::uint64_t m_count = 0;  // records in the file
    std::uint64_t m_first = 0;  // from here to the end below they were read
    std::uint64_t m_end = 0;
    bool m_isWhole = true;         // every key of them is remembered
    std::optional<Record> m_last;  // the one before the end, as it was read
    std::unordered_map<std::uint64_t, std::uint32_t> m_numbers;
};

}  // namespace brennvar
