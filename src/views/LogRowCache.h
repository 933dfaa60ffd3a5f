// The entries that are in sight, read from the log on the queue's thread: painting a list never waits for a file.
// What is asked for is read together with its neighbours and then kept for a while.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "base/Refreshed.h"
#include "logs/LogListing.h"

namespace brennvar {

// User-interface thread only.
class LogRowCache {
public:
    // So many entries are kept at least; twice as many at most.
    static constexpr std::size_t kKept = 1000;
    // So many are read at a time at most.
    static constexpr std::size_t kMostWanted = 400;

    // come: some that were missing are there now. The queue is borrowed.
    LogRowCache(TaskQueue& reads, std::shared_ptr<const LogTexts> texts, std::function<void()> come);

    // Another log, or the same one anew: nothing is known of it.
    void Restart(LogPlace place);
    // The same one, whose packets have been counted.
    void TakePlaces(std::shared_ptr<PacketPlaces> packets) { m_place.packets = std::move(packets); }
    void Put(std::vector<NumberedRow> rows);
    // Null: it is not there yet.
    [[nodiscard]] const LogRow* Find(std::uint32_t number) const;
    // Has these read, but for those that are there already. An entry that the file does not have is empty.
    void Want(std::vector<std::uint32_t> numbers);
    // It is being read.
    [[nodiscard]] bool IsComing(std::uint32_t number) const;
    [[nodiscard]] const LogPlace& Place() const { return m_place; }

private:
    struct Request {
        LogPlace place;
        std::uint64_t generation = 0;
        std::vector<std::uint32_t> numbers;
    };
    using Rows = std::unordered_map<std::uint32_t, LogRow>;

    void OnRead(std::optional<std::vector<NumberedRow>> rows, const Request& request);

    LogPlace m_place;
    std::uint64_t m_generation = 0;
    std::vector<std::uint32_t> m_wanted;
    Rows m_rows;   // the latest ones
    Rows m_older;  // those before, which go when there are kKept of the latest
    const std::function<void()> m_come;
    Refreshed<std::vector<NumberedRow>, Request> m_reading;
};

}  // namespace brennvar
