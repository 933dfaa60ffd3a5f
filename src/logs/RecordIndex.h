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

// Remembered are the key's hash and the record's number, some 40 bytes for each key, and of kMostKeys keys at most
// (10 MB); a key beyond them is looked for in the file. The answer is always read from the file, so that a hash
// that two keys share, or a file that was written over, gives no wrong one. Of a file that is larger than `most`
// bytes, only so many at its end are looked at, at first and by each search: records that are older may not be
// found. Stopped, it finds nothing. One thread at a time.
//
// Traits: Record, Key (borrowed, for one call), kTakesLast (which record counts when several match),
// HashOf(record), HashOf(key), Matches(record, key).
template <class Traits>
class RecordIndex {
public:
    using Record = typename Traits::Record;
    static constexpr std::size_t kMostKeys = 0x40000;

    // 256 MB: some seconds of a slow disk, and a million names.
    static constexpr std::uint64_t kMostBytes = 0x1000'0000;

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
        Update(*file);
        const auto known = m_numbers.find(Traits::HashOf(key));
        if (known == m_numbers.end()) return m_isWhole ? std::nullopt : Scan(*file, key);
        if (const auto record = ReadRecord(*file, known->second); record && Traits::Matches(*record, key))
            return record;
        return Scan(*file, key);  // another key with this hash, or the file has just been written over
    }

private:
    void Forget() {
        m_numbers.clear();
        m_state = {};
        m_count = 0;
        m_isWhole = true;
        m_last.reset();
    }

    void Update(const LogFile& file) {
        const LogFileState state = file.State();
        if (state == m_state && state.identity != 0) return;
        if (!HasOnlyGrown(file, state)) Forget();
        m_state = state;
        const std::uint64_t count = std::min<std::uint64_t>(state.size / sizeof(Record), kMostRecords);
        const bool isRead =
            Visit(file, NewestFrom(m_count, count), count, [&](std::uint32_t number, const Record& record) {
                Remember(Traits::HashOf(record), number);
                m_last = record;
                m_count = number + 1U;
                return true;
            });
        if (!isRead) Forget();
    }
    // What was read last stands where it stood.
    [[nodiscard]] bool HasOnlyGrown(const LogFile& file, const LogFileState& state) const {
        if (state.identity != m_state.identity || state.size <= m_state.size) return false;
        if (m_count == 0) return true;
        const auto last = ReadRecord(file, m_count - 1);
        return last && std::ranges::equal(RecordBytes(*last), RecordBytes(*m_last));
    }
    void Remember(std::uint64_t hash, std::uint32_t number) {
        if (const auto known = m_numbers.find(hash); known != m_numbers.end()) {
            if (Traits::kTakesLast) known->second = number;
        } else if (m_numbers.size() < kMostKeys) {
            m_numbers.emplace(hash, number);
        } else {
            m_isWhole = false;
        }
    }

    [[nodiscard]] static std::optional<Record> ReadRecord(const LogFile& file, std::uint32_t number) {
        Record record;
        const auto bytes = WritableRecordBytes(record);
        if (file.ReadAt(std::uint64_t{number} * sizeof(Record), bytes) != bytes.size()) return std::nullopt;
        return record;
    }
    [[nodiscard]] std::uint64_t NewestFrom(std::uint64_t first, std::uint64_t end) const {
        return std::max(first, end - std::min(end, m_most));
    }
    // False: stopped.
    template <class See>
    [[nodiscard]] bool Visit(const LogFile& file, std::uint64_t first, std::uint64_t end, See see) const {
        std::vector<Record> buffer(static_cast<std::size_t>(
            std::min<std::uint64_t>(end - std::min(first, end), kScanSize / sizeof(Record))));
        while (first < end) {
            if (m_stop.Requested()) return false;
            const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(end - first, buffer.size()));
            const auto bytes = std::as_writable_bytes(std::span(buffer).first(wanted));
            const std::size_t count = file.ReadAt(first * sizeof(Record), bytes) / sizeof(Record);
            for (std::size_t i = 0; i < count; ++i) {
                if (!see(static_cast<std::uint32_t>(first + i), buffer[i])) return true;
            }
            if (count < wanted) return true;
            first += wanted;
        }
        return true;
    }
    [[nodiscard]] std::optional<Record> Scan(const LogFile& file, const typename Traits::Key& key) const {
        std::optional<Record> found;
        const std::uint64_t end = std::min<std::uint64_t>(file.State().size / sizeof(Record), kMostRecords);
        const bool isRead = Visit(file, NewestFrom(0, end), end, [&](std::uint32_t, const Record& record) {
            if (!Traits::Matches(record, key)) return true;
            found = record;
            return Traits::kTakesLast;
        });
        return isRead ? found : std::nullopt;
    }

    static constexpr std::uint64_t kMostRecords = 0xFFFFFFFF;  // numbers are kept in 32 bits

    const std::string m_path;
    const StopSignal& m_stop;
    const std::uint64_t m_most;  // records
    LogFileState m_state;
    std::uint32_t m_count = 0;  // records that were read
    bool m_isWhole = true;      // every key is remembered
    std::optional<Record> m_last;
    std::unordered_map<std::uint64_t, std::uint32_t> m_numbers;
};

}  // namespace brennvar
