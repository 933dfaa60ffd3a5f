// The rows of the Connections page, made from the driver's tables: what the driver says of each connection and each
// listening port, how long it has been there, how fast it is, and whether it came or went a moment ago. A table is
// made on the reading thread and never changes afterwards, so that windows may look into it while the next one is
// made. Rows are plain numbers, because there may be 393,216 of them; texts are made where they are shown.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/Ipv4.h"
#include "base/LargeVector.h"
#include "ipc/DriverTables.h"
#include "tree/CellMarks.h"

namespace brennvar {

// Numbers of a row's state. 0 to 10 come from the driver, 11 and up are listeners.
inline constexpr std::uint8_t kStateUnknown = 0;
inline constexpr std::uint8_t kStateSynSent = 1;
inline constexpr std::uint8_t kStateSynReceived = 2;
inline constexpr std::uint8_t kStateEstablishedIn = 3;
inline constexpr std::uint8_t kStateEstablishedOut = 4;
inline constexpr std::uint8_t kStateListenTcp = 11;
inline constexpr std::uint8_t kStateListenUdp = 12;
inline constexpr std::uint8_t kStateListenIp = 13;
inline constexpr std::uint8_t kStateListenOther = 14;

struct ConnectionRow {
    Ipv4 localAddress = 0;
    Ipv4 remoteAddress = 0;        // listeners: 0.0.0.0, port 0
    std::uint16_t localPort = 0;   // host order
    std::uint16_t remotePort = 0;  // host order
    std::uint32_t processId = 0;
    std::uint32_t program = 0;  // of ConnectionTable::Programs
    std::uint32_t bytesIn = 0;  // of this connection, start over at 2^32; listeners: 0
    std::uint32_t bytesOut = 0;
    std::uint32_t baseIn = 0;  // the counters that the next rates are measured from
    std::uint32_t baseOut = 0;
    std::uint32_t rateIn = 0;  // bytes a second; 0 as well when it is not known
    std::uint32_t rateOut = 0;
    std::uint32_t since = 0;       // first seen, tenths of a second of Clock::Elapsed
    std::uint32_t occurrence = 0;  // among the rows with the same ends and process
    std::uint8_t state = 0;        // 0 to 14
    RowMark mark = RowMark::None;
    bool isOlder = false;  // it was there already when the first table was read: it is older than since says
    bool isRepeated =
        false;  // another row has the same ends and process, so that their counters cannot be told apart

    [[nodiscard]] bool IsListener() const { return state >= kStateListenTcp; }
    [[nodiscard]] bool IsEstablished() const {
        return state == kStateEstablishedIn || state == kStateEstablishedOut;
    }
    // Every connection but states 2 and 3.
    [[nodiscard]] bool IsOutgoing() const {
        return !IsListener() && state != kStateSynReceived && state != kStateEstablishedIn;
    }
};
static_assert(sizeof(ConnectionRow) == 56);  // there may be many

// What makes a row the same one in the next table. A connection is the same one in every state; a listener on its
// port is another.
struct ConnectionKey {
    Ipv4 localAddress = 0;
    Ipv4 remoteAddress = 0;
    std::uint16_t localPort = 0;
    std::uint16_t remotePort = 0;
    std::uint32_t processId = 0;
    std::uint32_t listener = 0;  // its state; 0: a connection
    std::uint32_t occurrence = 0;
};
[[nodiscard]] ConnectionKey KeyOf(const ConnectionRow& row);

// A program with connections, whichever of its processes they belong to.
struct ConnectionProgram {
    std::string path;            // lower case, as it came; empty: the process has none, or it is not known
    std::string name;            // what the user knows it by, one line
    std::uint32_t nameRank = 0;  // its place among the programs of the table, without regard to case
    std::uint32_t pathRank = 0;
};

struct ConnectionSummary {
    std::size_t connections = 0;
    std::size_t listeners = 0;
    std::size_t programs = 0;       // with connections
    std::uint32_t busiest = 0;      // the program with the highest rate
    std::uint64_t busiestRate = 0;  // both directions, bytes a second; 0: nothing flows
};

// What the caller knows of programs. Both are asked once for each process, or program.
struct ProgramSource {
    // The path of a process; nothing or empty when it is not known.
    std::function<std::optional<std::string>(std::uint32_t processId)> pathOf;
    // The description that a program has in its version resource; empty when there is none, or not yet.
    std::function<std::string(const std::string& path)> descriptionOf;
    std::string noProcess;  // the name of what has no path
};

class ConnectionTable {
public:
    static constexpr std::uint32_t kUnknownProgram = 0;  // its number in every table
    static constexpr std::uint32_t kNoRow = 0xFFFFFFFF;

    // time: of Clock::Elapsed, when the tables were read. before: the table that was shown last;
    // null: none. isFirst: nobody has looked for a while, so nothing is said to have come or gone.
    ConnectionTable(const DriverTables& tables, std::chrono::milliseconds time, const ProgramSource& programs,
                    const ConnectionTable* before, bool isFirst);
    ConnectionTable(const ConnectionTable&) = delete;
    ConnectionTable& operator=(const ConnectionTable&) = delete;

    // Connections and listeners, each sorted, and behind them those that have gone since the last table.
    [[nodiscard]] const LargeVector<ConnectionRow>& Rows() const { return m_rows; }
    [[nodiscard]] const ConnectionRow& Row(std::uint32_t row) const { return m_rows[row]; }
    [[nodiscard]] const std::vector<ConnectionProgram>& Programs() const { return m_programs; }
    [[nodiscard]] const ConnectionProgram& ProgramOf(const ConnectionRow& row) const {
        return m_programs[row.program];
    }
    // kNoRow: none. A row that is likely the one is looked at first.
    [[nodiscard]] std::uint32_t Find(const ConnectionKey& key, std::uint32_t likely = kNoRow) const;
    // The program with this path; kUnknownProgram when it has no row here.
    [[nodiscard]] std::uint32_t FindProgram(const std::string& path) const;
    // The path of the process, of its rows here; nothing when it has none.
    [[nodiscard]] std::optional<std::string> PathOfProcess(std::uint32_t processId) const;
    // The numbers of all rows in the order of the driver's tables, with those that have gone at their old places.
    [[nodiscard]] LargeVector<std::uint32_t> OrderAsRead() const;
    [[nodiscard]] const ConnectionSummary& Summary() const { return m_summary; }
    // Whole seconds since the row was first seen.
    [[nodiscard]] std::uint32_t AgeOf(const ConnectionRow& row) const { return (m_tenths - row.since) / 10; }

private:
    struct Repeat {  // a row with the same ends and process as an earlier one
        std::uint32_t first;
        std::uint32_t occurrence;
        std::uint32_t row;
    };

    void AddRows(const DriverTables& tables, const ProgramSource& programs);
    [[nodiscard]] std::uint32_t ProgramOfProcess(std::uint32_t processId, const ProgramSource& programs);
    std::uint32_t AddProgram(const std::string& path, const ProgramSource& programs);
    void Index();
    // The place of the row in m_slots, or of the free slot where it would stand.
    [[nodiscard]] std::size_t SlotOf(const ConnectionKey& key) const;
    void FollowOn(const ConnectionTable& before, const ProgramSource& programs, bool isFirst);
    // moved: where the programs of the table before stand in this one.
    void KeepProgram(ConnectionRow& row, const ConnectionRow& old, const ConnectionTable& before,
                     std::vector<std::uint32_t>& moved, const ProgramSource& programs);
    void AddGoneRow(const ConnectionRow& row, std::uint32_t program);
    void MeasureRates(ConnectionRow& row, const ConnectionRow& old, const ConnectionTable& before) const;
    void RankPrograms();
    void SumUp();

    std::uint32_t m_tenths;                // when it was read
    std::chrono::milliseconds m_time;      // the same
    std::chrono::milliseconds m_baseTime;  // when the counters were read that the next rates are measured from
    LargeVector<ConnectionRow> m_rows;
    std::size_t m_presentCount = 0;  // rows before those that have gone
    std::vector<ConnectionProgram> m_programs;
    std::unordered_map<std::string, std::uint32_t> m_programByPath;
    std::unordered_map<std::uint32_t, std::uint32_t> m_programById;  // of a process
    LargeVector<std::uint32_t>
        m_slots;                    // open addressing: the number of a row that is the first of its key, plus 1
    std::vector<Repeat> m_repeats;  // sorted
    ConnectionSummary m_summary;
};

// Bytes a second between two readings of a counter that starts over at 2^32, so much later. 0 when the counter has
// begun anew, so that nothing can be said.
[[nodiscard]] std::uint32_t RateBetween(std::uint32_t before, std::uint32_t now, std::chrono::milliseconds elapsed);

}  // namespace brennvar
