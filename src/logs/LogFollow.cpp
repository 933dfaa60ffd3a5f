#include <algorithm>

#include "ipc/RecordCipher.h"
#include "logs/LogListing.h"

namespace brennvar {
namespace {

constexpr std::uint64_t kRecordSize = sizeof(TrafficLogRecord);

class Follower {
public:
    Follower(const LogWish& wish, const LogTexts& texts) : m_wish(wish), m_texts(texts), m_filter(wish, texts) {}

    template <RecordType Record>
    void List(const Record& record, LogAction action, std::uint32_t number) {
        news.tally.Add(action, number, record);
        const LogEntry entry = EntryOf(record);
        if (!m_filter.Matches(entry)) return;
        if (m_wish.ListsAll() && !m_wish.sortedBy) {
            ++news.plain;
        } else {
            news.numbers.push_back(number);
        }
        if (news.rows.size() < kFirstRows) news.rows.emplace_back(number, RowOf(entry, m_texts));
    }
    LogNews news;

private:
    const LogWish& m_wish;
    const LogTexts& m_texts;
    LogFilter m_filter;
};

void FollowEvents(const LogFile& file, const LogPlace& place, LogExtent& extent, Follower& follower) {
    const std::uint64_t left = extent.state.size / kRecordSize - extent.count;
    std::vector<TrafficLogRecord> records(static_cast<std::size_t>(std::min<std::uint64_t>(left, kFollowCount)));
    const auto bytes = std::as_writable_bytes(std::span(records));
    records.resize(file.ReadAt(extent.end, bytes) / kRecordSize);
    if (place.cipher == Cipher::Enciphered) {
        CipherRecords(std::as_writable_bytes(std::span(records)), sizeof(TrafficLogRecord));
    }
    for (const TrafficLogRecord& record : records) {
        follower.List(record, LogActionOf(record.action), extent.count++);
        extent.lastPosition = extent.end;
        extent.end += kRecordSize;
    }
}

void FollowPackets(const LogFile& file, const LogPlace& place, LogExtent& extent, Follower& follower) {
    PacketWalk headers(file, place.cipher, PacketWalk::kNear);
    for (std::uint32_t i = 0; i < kFollowCount && extent.end < extent.state.size; ++i) {
        const PacketLogHeader* const header = headers.At(extent.end);
        if (header == nullptr) break;
        place.packets->Note(extent.count, extent.end);
        follower.List(*header, LogAction::Message, extent.count++);
        extent.lastPosition = extent.end;
        extent.end = PacketWalk::Behind(extent.end, *header);
    }
}

// now: of the file, as it was before more of it is read.
bool IsSame(const LogFile& file, const LogPlace& place, const LogExtent& extent, const LogFileState& now) {
    if (!extent.isThere || now.identity != extent.state.identity || now.size < extent.state.size) return false;
    return extent.count == 0 || now == extent.state ||
           PrintOfEntry(file, place, extent.lastPosition) == extent.lastPrint;
}

}  // namespace

bool IsSameLog(const LogFile& file, const LogPlace& place, const LogExtent& extent) {
    return IsSame(file, place, extent, file.State());
}

std::optional<LogNews> FollowLog(const LogPlace& place, const LogWish& wish, const LogTexts& texts,
                                 const LogExtent& extent) {
    Follower follower(wish, texts);
    follower.news.extent = extent;
    const auto file = LogFile::Open(place.path);
    if (!file) return extent.isThere ? std::nullopt : std::optional(std::move(follower.news));
    LogExtent now = extent;
    now.state = file->State();
    if (!IsSame(*file, place, extent, now.state)) return std::nullopt;
    if (place.kind == LogKind::Packet) {
        FollowPackets(*file, place, now, follower);
    } else {
        FollowEvents(*file, place, now, follower);
    }
    if (now.count > extent.count) now.lastPrint = PrintOfEntry(*file, place, now.lastPosition);
    follower.news.extent = now;
    return std::move(follower.news);
}

}  // namespace brennvar
