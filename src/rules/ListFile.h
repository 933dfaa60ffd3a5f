// A list of the service, read while the service may be at work on it: it holds the file for some milliseconds when
// it rewrites it. The file is only read, and never made.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Clock.h"
#include "ipc/RecordFile.h"

namespace brennvar {

// Far more than anybody lists by hand; what stands behind them in the file is not read.
inline constexpr std::size_t kMostListEntries = 100'000;

// Waits for a file that is held, for half a second at most; nothing when it is held for longer. A null file: there
// is none, and so no record. Blocks.
struct ListFile {
    std::optional<RecordFile> file;
};
[[nodiscard]] std::optional<ListFile> OpenListFile(const std::string& path, Clock& clock);

// The records of the list, at most kMostListEntries, each handed to take(const Record&), which may put it into the
// entries: these have room for all. False when they could not be read to their end.
template <RecordType Record, class Entry, class Take>
[[nodiscard]] bool ReadListRecords(const std::string& path, Clock& clock, std::vector<Entry>& entries, Take take) {
    std::optional<ListFile> list = OpenListFile(path, clock);
    if (!list) return false;
    if (!list->file) return true;
    std::size_t left = kMostListEntries;
    // Growing would take the memory of a long list twice over.
    entries.reserve(static_cast<std::size_t>(std::min<std::uint64_t>(list->file->Rewind() / sizeof(Record), left)));
    return ScanRecords<Record>(*list->file, Cipher::Enciphered, [&](std::span<const Record> records) {
        for (const Record& record : records) {
            if (left == 0) return false;
            --left;
            take(record);
        }
        return true;
    });
}

}  // namespace brennvar
