// Lists a log, for as long as that takes, on a thread of its own: every record is looked at, and what has been
// found is handed over piece by piece. A traffic log is read from its last record to its first, a packet log from
// its first packet on. What is found are numbers of records (4 bytes each), and not even those when all of a log is
// listed as it stands; sorting needs 4 more for each record of
// the file while it lasts.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/StopSignal.h"
#include "base/TrafficFacts.h"
#include "logs/LogCells.h"
#include "logs/LogFilter.h"
#include "logs/LogReader.h"

namespace brennvar {

// An entry as a list shows it. Characters that a line cannot show are blanks, but for the path: by it the program
// is looked for.
struct LogRow {
    std::array<std::string, kLogColumnCount> cells;
    std::string path;
    LogAction action = LogAction::Message;
    bool isPacket = false;
    bool hasAddresses = false;
    TrafficFacts facts{};  // without its day; a packet or an event without addresses has few
};
[[nodiscard]] LogRow RowOf(const LogEntry& entry, const LogTexts& texts);
using NumberedRow = std::pair<std::uint32_t, LogRow>;

// How many of which, whether listed or not, and when the last one was.
struct LogTally {
    std::array<std::uint64_t, kLogActionCount> actions{};
    std::uint64_t count = 0;
    std::uint32_t lastSecond = 0;  // of the day
    std::uint32_t lastNumber = 0;

    // Of an entry with its number in the file; records of both kinds begin with their time.
    template <RecordType Record>
    void Add(LogAction action, std::uint32_t number, const Record& record) {
        ++actions[static_cast<std::size_t>(action)];
        if (count++ > 0 && number < lastNumber) return;
        lastNumber = number;
        lastSecond = SecondOfDay(record.hour, record.minute, record.second);
    }
    void Add(const LogTally& other);
};

// How much of a file has been listed, and by what it is known to be the same one that has only grown.
struct LogExtent {
    bool isThere = false;
    LogFileState state;
    std::uint32_t count = 0;         // entries
    std::uint64_t end = 0;           // behind the last of them; of a packet that is cut off beyond the file
    std::uint64_t lastPosition = 0;  // of the last of them
    std::uint64_t lastPrint = 0;     // of its bytes
};

// Of the bytes of one entry, without those of the packet: tells it from another that stands in its place.
[[nodiscard]] std::uint64_t PrintOfEntry(const LogFile& file, const LogPlace& place, std::uint64_t position);

// Still the file that was listed, as far as it was.
[[nodiscard]] bool IsSameLog(const LogFile& file, const LogPlace& place, const LogExtent& extent);

// What has been found since the last look.
struct LogNews {
    bool isAnew = false;  // what was listed before counts no more
    // In the order of the list: so many entries more, as they stand in the file, or these.
    std::uint32_t plain = 0;
    std::vector<std::uint32_t> numbers{};
    std::vector<NumberedRow> rows{};  // some of them, read already
    LogTally tally{};                 // of what has been read since
    std::uint64_t done = 0;           // entries of a traffic log, bytes of a packet log
    std::uint64_t total = 0;
    bool isOver = false;
    bool wasStopped = false;
    std::optional<LogExtent> extent{};        // with isOver, when the list is that of this reading
    std::shared_ptr<PacketPlaces> packets{};  // with isAnew, of a packet log
};

// Takes news as they come, on the thread that lists.
class LogNewsSink {
public:
    virtual ~LogNewsSink() = default;
    virtual void Put(LogNews news) = 0;
};

// Keeps them for another thread.
class LogNewsBox final : public LogNewsSink {
public:
    void Put(LogNews news) override;
    [[nodiscard]] LogNews Take();

private:
    std::mutex m_mutex;
    LogNews m_news;
};

inline constexpr std::uint32_t kFirstRows = 100;  // the newest, shown at once
// The list of a packet log is redrawn each time when the running position is an exact multiple of this.
inline constexpr std::uint64_t kRedrawBytes = 10'240;

// Lists all of the log. The sink is told that it is over in any case.
void ListLog(const LogPlace& place, const LogWish& wish, const LogTexts& texts, const StopSignal& stop,
             LogNewsSink& sink);

// What has been appended since. The numbers are in the order of the file. Nothing: it is another file now, or none,
// or shorter, and is to be listed anew. At most kFollowCount entries at a time; extent says how far it came.
inline constexpr std::uint32_t kFollowCount = 50'000;
[[nodiscard]] std::optional<LogNews> FollowLog(const LogPlace& place, const LogWish& wish, const LogTexts& texts,
                                               const LogExtent& extent);

}  // namespace brennvar
