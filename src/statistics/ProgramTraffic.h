// What each program has received and sent, from the driver's counters of single connections. A connection counts
// with all that it has carried, also before it was first seen, and what it had counted when it went stays with its
// program. Connections that come and go between two readings are seen by nobody. Belongs to one thread, whichever
// that is.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "base/Ipv4.h"
#include "ipc/DriverTables.h"

namespace brennvar {

struct ProgramSum {
    std::string path;  // lower case; empty: of all processes whose program is not known
    std::uint64_t bytesIn = 0;
    std::uint64_t bytesOut = 0;

    [[nodiscard]] std::uint64_t Total() const { return bytesIn + bytesOut; }
    friend bool operator==(const ProgramSum&, const ProgramSum&) = default;
};

class ProgramTraffic {
public:
    // Whose sums are remembered when their processes are gone. Of more, the smallest one is forgotten.
    static constexpr std::size_t kMostPrograms = 1024;

    // A process as long as it has connections. Identifiers are used again: the same one with none of the
    // connections of the reading before may be another process, and gets another number.
    struct Process {
        std::uint32_t id = 0;
        std::uint64_t number = 0;
        friend bool operator==(const Process&, const Process&) = default;
    };

    // The next reading. time: Clock::Elapsed of it.
    void Count(std::span<const ConnectionEntry> connections, std::chrono::milliseconds time);
    // Whose program nobody has told yet, by number.
    [[nodiscard]] std::vector<Process> NotNamed() const;
    // Nothing, or an empty path: nobody knows its program, and it is not asked for again. Without effect when the
    // process has gone meanwhile.
    void Name(const Process& process, const std::optional<std::string>& path);
    // The programs with the most traffic, most first; none without any.
    [[nodiscard]] std::vector<ProgramSum> Most(std::size_t count) const;

private:
    struct Ends {
        Ipv4 localAddress = 0;
        Ipv4 remoteAddress = 0;
        std::uint16_t localPort = 0;
        std::uint16_t remotePort = 0;
        std::uint32_t processId = 0;
        friend auto operator<=>(const Ends&, const Ends&) = default;
    };
    // All connections of a process with the same ends.
    struct Counter {
        Ends ends;
        std::uint64_t bytesIn = 0;
        std::uint64_t bytesOut = 0;
        std::uint32_t connections = 1;
    };
    struct Present {
        std::uint64_t number = 0;
        bool isNamed = false;
        ProgramSum sum;
    };

    [[nodiscard]] static std::vector<Counter> CountersOf(std::span<const ConnectionEntry> connections);
    // Those of the last reading in the same order; null: not there. Both are sorted.
    [[nodiscard]] std::vector<const Counter*> Before(const std::vector<Counter>& now) const;
    void BeginProcesses(const std::vector<Counter>& now, const std::vector<const Counter*>& before);
    void Close(const ProgramSum& sum);

    std::vector<Counter> m_counters;  // of the last reading, sorted by their ends
    std::chrono::milliseconds m_time{};
    std::unordered_map<std::uint32_t, Present> m_present;  // by identifier
    std::uint64_t m_lastNumber = 0;
    std::unordered_map<std::string, ProgramSum> m_gone;  // by path
};

}  // namespace brennvar
