// The journal: what came in over the pipes and the milestones of a run, a line each, on disk before the call
// returns.
#pragma once

#include <array>
#include <mutex>
#include <span>
#include <string>
#include <string_view>

#include "base/Handles_win.h"
#include "service/JournalLine.h"

namespace brennvar::standin {

class Journal {
public:
    // Begins the file anew. False when it cannot be written.
    [[nodiscard]] bool Open(const std::string& path);

    // Any thread.
    void Record(Channel channel, std::span<const std::byte> record);
    void Event(std::string_view event);

private:
    void WriteLine(std::string line);

    std::mutex m_lock;
    UniqueFile m_file;
    std::uint64_t m_sequence = 0;
};

// How many records of each channel have been dealt with: what a scenario waits for.
class Progress {
public:
    Progress() : m_changed(::CreateEventA(nullptr, FALSE, FALSE, nullptr)) {}

    void Add(Channel channel);
    [[nodiscard]] std::uint32_t Count(Channel channel) const;
    // Set at each Add; resets itself, so only one thread may wait for it.
    [[nodiscard]] HANDLE Changed() const { return m_changed.Get(); }

private:
    mutable std::mutex m_lock;
    std::array<std::uint32_t, kChannelCount> m_counts{};
    UniqueEvent m_changed;
};

}  // namespace brennvar::standin
