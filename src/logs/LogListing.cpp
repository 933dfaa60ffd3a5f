#include "logs/LogListing.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "base/DisplayName.h"
#include "base/Hash.h"
#include "ipc/RecordCipher.h"
#include "logs/LogSort.h"

namespace brennvar {
namespace {

constexpr std::size_t kBlockCount = kScanSize / sizeof(TrafficLogRecord);
constexpr std::uint64_t kRecordSize = sizeof(TrafficLogRecord);
// Rows are counted in int.
constexpr std::uint64_t kMostEntries = std::numeric_limits<int>::max();
// So many records are read before what was found is handed over: some milliseconds.
constexpr std::uint32_t kPieceCount = 0x10000;

// Gathers what is found and hands it over.
class Lister {
public:
    // room: entries that there are, where that is known.
    Lister(const LogPlace& place, const LogWish& wish, const LogTexts& texts, LogNewsSink& sink, std::uint64_t room)
        : m_place(place),
          m_texts(texts),
          m_action(wish.action),
          m_listsAll(wish.ListsAll()),
          m_filter(wish, texts),
          m_sink(sink) {
        if (wish.sortedBy) m_sort.emplace(*wish.sortedBy, wish.isAscending, texts, static_cast<std::size_t>(room));
        if (place.kind == LogKind::Packet) m_packets = std::make_shared<PacketPlaces>();
    }

    template <RecordType Record>
    void List(const Record& record, LogAction action, std::uint32_t number) {
        if (m_listsAll && !m_sort) {
            ++m_news.plain;
            if (WantsRows()) m_news.rows.emplace_back(number, RowOf(EntryOf(record), m_texts));
            return;
        }
        if (m_action && action != *m_action) return;  // before anything is made of the record
        const LogEntry entry = EntryOf(record);
        if (!m_filter.Matches(entry)) return;
        if (m_sort) return m_sort->Add(entry, number);
        m_news.numbers.push_back(number);
        if (WantsRows()) m_news.rows.emplace_back(number, RowOf(entry, m_texts));
    }
    [[nodiscard]] LogTally& Tally() { return m_news.tally; }
    [[nodiscard]] PacketPlaces* Packets() const { return m_packets.get(); }
    // As many as are seen at once have been found, and are worth a look already.
    [[nodiscard]] bool HasFirstRows() const { return !m_hasPut && m_news.rows.size() == kFirstRows; }

    void Put(std::uint64_t done, std::uint64_t total) {
        LogNews news;
        // What is to be sorted comes at the end, in place of what is listed now.
        if (!m_sort) std::swap(news, m_news);
        HandOver(std::move(news), done, total);
    }
    void Finish(const StopSignal& stop, std::uint64_t done, std::uint64_t total, const LogExtent& extent) {
        if (m_sort) {
            m_news.numbers = m_sort->Sorted(stop);
            ReadFirstRows();
        }
        LogNews news = std::exchange(m_news, {});
        news.wasStopped = stop.Requested();
        news.isOver = true;
        if (m_sort && news.wasStopped) {
            news = {.isOver = true, .wasStopped = true};
        } else {
            news.extent = extent;
            m_sort.reset();
        }
        HandOver(std::move(news), done, total);
    }

private:
    void ReadFirstRows() {
        LogPlace place = m_place;
        if (m_packets) place.packets = m_packets;
        const auto reader = LogReader::Open(place);
        if (!reader) return;
        for (std::size_t i = 0; i < std::min<std::size_t>(m_news.numbers.size(), kFirstRows); ++i) {
            const std::uint32_t number = m_news.numbers[i];
            if (const LogEntry* entry = reader->Read(number)) {
                m_news.rows.emplace_back(number, RowOf(*entry, m_texts));
            }
        }
    }
    [[nodiscard]] bool WantsRows() const { return !m_hasPut && m_news.rows.size() < kFirstRows; }
    void HandOver(LogNews news, std::uint64_t done, std::uint64_t total) {
        news.done = done;
        news.total = total;
        if (!m_sort && !std::exchange(m_hasPut, true)) {
            news.isAnew = true;
            news.packets = m_packets;
        }
        m_sink.Put(std::move(news));
    }

    const LogPlace& m_place;
    const LogTexts& m_texts;
    const std::optional<LogAction> m_action;
    const bool m_listsAll;
    LogFilter m_filter;
    LogNewsSink& m_sink;
    std::optional<LogSort> m_sort;
    std::shared_ptr<PacketPlaces> m_packets;
    LogNews m_news;
    bool m_hasPut = false;
};

struct Listing {
    const LogPlace& place;
    const LogWish& wish;
    const LogTexts& texts;
    const StopSignal& stop;
    LogNewsSink& sink;
};

void ListEvents(const Listing& listing, const LogFile& file) {
    LogExtent extent{.isThere = true, .state = file.State()};
    const std::uint64_t total = std::min(extent.state.size / kRecordSize, kMostEntries);
    extent.count = static_cast<std::uint32_t>(total);
    extent.end = total * kRecordSize;
    if (total > 0) {
        extent.lastPosition = extent.end - kRecordSize;
        extent.lastPrint = PrintOfEntry(file, listing.place, extent.lastPosition);
    }
    Lister lister(listing.place, listing.wish, listing.texts, listing.sink, total);
    std::vector<TrafficLogRecord> block(static_cast<std::size_t>(std::min<std::uint64_t>(total, kBlockCount)));
    std::uint64_t put = 0;  // so many had been read when something was handed over last
    for (std::uint64_t left = total; left > 0;) {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(left, block.size()));
        const std::uint64_t first = left - wanted;
        const auto bytes = std::as_writable_bytes(std::span(block).first(wanted));
        // Fewer than there were: the file has been cut off. What it still has is listed.
        const std::size_t count = file.ReadAt(first * kRecordSize, bytes) / kRecordSize;
        if (listing.place.cipher == Cipher::Enciphered) {
            CipherRecords(bytes.first(count * kRecordSize), sizeof(TrafficLogRecord));
        }
        for (std::size_t i = count; i-- > 0;) {
            if (listing.stop.Requested()) return lister.Finish(listing.stop, total - first - i, total, extent);
            const TrafficLogRecord& record = block[i];
            const LogAction action = LogActionOf(record.action);
            const auto number = static_cast<std::uint32_t>(first + i);
            lister.Tally().Add(action, number, record);
            lister.List(record, action, number);
            if (lister.HasFirstRows()) lister.Put(total - first - i, total);
        }
        left = first;
        if (total - left - put < kPieceCount) continue;
        put = total - left;
        lister.Put(put, total);
    }
    lister.Finish(listing.stop, total, total, extent);
}

void ListPackets(const Listing& listing, const LogFile& file) {
    LogExtent extent{.isThere = true, .state = file.State()};
    const std::uint64_t size = extent.state.size;
    Lister lister(listing.place, listing.wish, listing.texts, listing.sink, 0);
    PacketWalk headers(file, listing.place.cipher, PacketWalk::kAhead);
    while (extent.end < size && extent.count < kMostEntries) {
        if (listing.stop.Requested()) break;
        const PacketLogHeader* const header = headers.At(extent.end);
        if (header == nullptr) break;  // the service has not written all of it yet
        lister.Packets()->Note(extent.count, extent.end);
        lister.Tally().Add(LogAction::Message, extent.count, *header);
        lister.List(*header, LogAction::Message, extent.count);
        extent.lastPosition = extent.end;
        extent.end = PacketWalk::Behind(extent.end, *header);
        ++extent.count;
        if (extent.end % kRedrawBytes == 0 || extent.count % kPieceCount == 0 || lister.HasFirstRows()) {
            lister.Put(std::min(extent.end, size), size);
        }
    }
    if (extent.count > 0) extent.lastPrint = PrintOfEntry(file, listing.place, extent.lastPosition);
    lister.Finish(listing.stop, std::min(extent.end, size), size, extent);
}

}  // namespace

std::uint64_t PrintOfEntry(const LogFile& file, const LogPlace& place, std::uint64_t position) {
    std::array<std::byte, sizeof(TrafficLogRecord)> buffer{};
    const std::span<std::byte> bytes =
        std::span(buffer).first(place.kind == LogKind::Packet ? sizeof(PacketLogHeader) : sizeof(TrafficLogRecord));
    ByteHash print;
    for (const std::byte byte : bytes.first(file.ReadAt(position, bytes))) {
        print.Add(std::to_integer<std::uint8_t>(byte));
    }
    return print.Value();
}

LogRow RowOf(const LogEntry& entry, const LogTexts& texts) {
    LogRow row{.cells = {},
               .path = std::string(entry.path),
               .action = entry.action,
               .isPacket = entry.isPacket,
               .hasAddresses = entry.hasAddresses,
               .facts = FactsOf(entry)};
    for (std::size_t i = 0; i < kLogColumnCount; ++i) {
        AppendCell(row.cells[i], static_cast<LogColumn>(i), entry, texts);
        BlankControls(row.cells[i]);
    }
    return row;
}

void LogTally::Add(const LogTally& other) {
    for (std::size_t i = 0; i < kLogActionCount; ++i) actions[i] += other.actions[i];
    if (other.count > 0 && (count == 0 || other.lastNumber >= lastNumber)) {
        lastNumber = other.lastNumber;
        lastSecond = other.lastSecond;
    }
    count += other.count;
}

void LogNewsBox::Put(LogNews news) {
    const std::lock_guard lock(m_mutex);
    if (news.isAnew) {
        m_news = std::move(news);
        return;
    }
    m_news.plain += news.plain;
    m_news.numbers.insert(m_news.numbers.end(), news.numbers.begin(), news.numbers.end());
    std::move(news.rows.begin(), news.rows.end(), std::back_inserter(m_news.rows));
    m_news.tally.Add(news.tally);
    m_news.done = news.done;
    m_news.total = news.total;
    m_news.isOver = m_news.isOver || news.isOver;
    m_news.wasStopped = m_news.wasStopped || news.wasStopped;
    if (news.extent) m_news.extent = news.extent;
}

LogNews LogNewsBox::Take() {
    const std::lock_guard lock(m_mutex);
    LogNews news = std::exchange(m_news, LogNews{});
    m_news.done = news.done;
    m_news.total = news.total;
    return news;
}

void ListLog(const LogPlace& place, const LogWish& wish, const LogTexts& texts, const StopSignal& stop,
             LogNewsSink& sink) {
    const Listing listing{.place = place, .wish = wish, .texts = texts, .stop = stop, .sink = sink};
    try {
        const auto file = LogFile::Open(place.path);
        if (!file) {
            sink.Put({.isAnew = true, .isOver = true, .extent = LogExtent{}});
        } else if (place.kind == LogKind::Packet) {
            ListPackets(listing, *file);
        } else {
            ListEvents(listing, *file);
        }
    } catch (...) {  // no memory for so many: what has been handed over stays
        sink.Put({.isOver = true, .wasStopped = true});
    }
}

}  // namespace brennvar
