// One file of the service, read while the service goes on with it: appends, replaces, renames or deletes it.
// Nothing is ever held against the service, and nothing is waited for or created. What cannot be read is not there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/UniqueHandle.h"

namespace brennvar {

struct LogFileState {
    std::uint64_t size = 0;
    std::uint64_t written = 0;   // when; in the system's own units
    std::uint64_t identity = 0;  // another number: the path leads to another file now
    friend bool operator==(const LogFileState&, const LogFileState&) = default;
};

// Used on one thread at a time.
class LogFile {
public:
    // Nothing when there is no file at this path, or it may not be read.
    [[nodiscard]] static std::optional<LogFile> Open(const std::string& path);

    // As it is now; zeros when that cannot be found out.
    [[nodiscard]] LogFileState State() const;
    // Fills as much of the buffer as the file has from this byte on; returns how much that is.
    [[nodiscard]] std::size_t ReadAt(std::uint64_t position, std::span<std::byte> buffer) const;

private:
    // The system's number or pointer for an open file.
    struct Traits {
        using Type = std::intptr_t;
        static Type Empty() noexcept { return -1; }
        static void Close(Type handle) noexcept;
    };
    explicit LogFile(std::intptr_t handle) : m_handle(handle) {}

    UniqueHandle<Traits> m_handle;
};

// The names, without folder, of all files in it; none when it cannot be looked into.
[[nodiscard]] std::vector<std::string> FileNamesIn(const std::string& folder);

}  // namespace brennvar
