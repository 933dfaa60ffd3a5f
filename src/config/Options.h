// Reads the service's options. Each call opens, scans and closes the file, so that it sees what the service wrote
// last; changing an option is a command to the service.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/Clock.h"
#include "config/OptionRecord.h"
#include "config/OptionValues.h"

namespace brennvar {

class OptionReader {
public:
    // The clock is borrowed: the service may hold the file, which is waited for as RecordFile does.
    OptionReader(std::string dataFolder, Clock& clock);
    // The value of the first record with this identifier; the fallback when there is none. Any thread.
    [[nodiscard]] std::uint32_t ReadOption(std::uint32_t id, std::uint32_t fallback) const;
    // Its text, at most 119 characters; empty when there is none.
    [[nodiscard]] std::string ReadOptionText(std::uint32_t id) const;
    // Everything in one pass over the file, but for the security password, which has a reader of its own
    // (StoredPassword.h); the default of the table for what has no record. Nothing when there is a file and it
    // cannot be opened. Any thread.
    [[nodiscard]] std::optional<OptionValues> ReadAll() const;

private:
    [[nodiscard]] std::optional<OptionRecord> FindRecord(std::uint32_t id) const;

    std::string m_dataFolder;
    Clock& m_clock;
};

}  // namespace brennvar
