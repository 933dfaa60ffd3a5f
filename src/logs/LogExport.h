// The listed entries of a log as a file or as text, made on a thread of its own.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/NewFile.h"
#include "base/StopSignal.h"
#include "config/CodePage.h"
#include "logs/LogCells.h"
#include "logs/LogListing.h"

namespace brennvar {

enum class LogFormat : std::uint8_t {
    Csv,   // RFC 4180
    Text,  // tabs between the cells
};

// What is to be written: so many entries, and the number of each. Asked on the thread that writes.
struct LogSelection {
    LogPlace place;
    // Of the list that numbers them, where that is known: by it another file at the place is told.
    std::optional<LogExtent> extent{};
    std::size_t count = 0;
    std::function<std::uint32_t(std::size_t index)> numberAt;
};

// What the thread that writes and the one that shows share.
struct LogExportState {
    std::atomic<std::uint64_t> done = 0;  // entries
    std::atomic<bool> isOver = false;
    // Only when it is over:
    WriteResult result = WriteResult::Written;
    bool wasStopped = false;
    std::uint64_t missing = 0;  // entries that the log does not have any more, left out
    std::string text;           // of a copy
};

// UTF-8 with its byte order mark, a heading, one line for each entry, its path in a column of its own. The file
// takes its name when it is whole; stopped, or failed, or when the log is another one now, it leaves nothing.
void ExportLog(const LogSelection& selection, const std::string& path, LogFormat format, const LogTexts& texts,
               CodePage page, const StopSignal& stop, LogExportState& state);

// The cells as they are shown, for the clipboard: in the code page of the language, with tabs between them.
void CopyLog(const LogSelection& selection, const LogTexts& texts, const StopSignal& stop, LogExportState& state);

}  // namespace brennvar
