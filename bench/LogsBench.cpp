// A traffic log of a million records (480 MB) and a packet log: the newest rows, all of them, filtered, searched,
// sorted and exported, each beside one reading of the same file or one writing of the same bytes. And what the rows
// take of memory, counted by this program's own allocation functions.
#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <vector>

#include "logs/LogExport.h"
#include "logs/LogListing.h"
#include "support/TempFolder.h"
#include "views/LogRows.h"

// What is allocated now, and the most of it so far.
namespace {
std::atomic<std::size_t> allocated = 0;
std::atomic<std::size_t> mostAllocated = 0;
constexpr std::size_t kSizeRoom = alignof(std::max_align_t);
}  // namespace

void* operator new(std::size_t size) {
    auto* const memory = static_cast<std::byte*>(std::malloc(size + kSizeRoom));
    if (memory == nullptr) throw std::bad_alloc();
    std::memcpy(memory, &size, sizeof size);
    const std::size_t now = allocated += size;
    std::size_t most = mostAllocated;
    while (now > most && !mostAllocated.compare_exchange_weak(most, now)) {
    }
    return memory + kSizeRoom;
}
void operator delete(void* memory) noexcept {
    if (memory == nullptr) return;
    std::byte* const start = static_cast<std::byte*>(memory) - kSizeRoom;
    std::size_t size = 0;
    std::memcpy(&size, start, sizeof size);
    allocated -= size;
    std::free(start);
}
void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

namespace brennvar {
namespace {

constexpr std::uint32_t kRecords = 1'000'000;

const test::TempFolder& Folder() {
    static const test::TempFolder folder;
    return folder;
}

// A day: 200 programs, 50,000 remote addresses, all actions.
const LogPlace& TrafficLog() {
    static const LogPlace place = [] {
        LogPlace made;
        made.path = Folder().File("traffic.log");
        std::FILE* const file = std::fopen(made.path.c_str(), "wb");
        for (std::uint32_t i = 0; file != nullptr && i < kRecords; ++i) {
            TrafficLogRecord record{};
            const std::uint32_t second = i / 12;
            record.hour = second / 3600;
            record.minute = second / 60 % 60;
            record.second = second % 60;
            record.action = i % 7;
            record.protocol = i % 3 == 0 ? 17 : 6;
            record.outgoing = i % 5;
            record.localAddress = 0x0500000A;
            record.localPort = 1024 + i % 60'000;
            record.remoteAddress = SwapAddress(0x5D000000 + i * 2654435761U % 50'000);
            record.remotePort = i % 2 == 0 ? 443 : 53;
            record.kind = i % 20 == 0 ? 0 : 1;
            PutText(record.shortText, "Rule " + std::to_string(i % 40));
            PutText(record.path,
                    R"(C:\Program Files\Maker )" + std::to_string(i * 40503U % 200) + R"(\program.exe)");
            (void)std::fwrite(&record, sizeof record, 1, file);
        }
        if (file != nullptr) (void)std::fclose(file);
        return made;
    }();
    return place;
}

const LogTexts& Texts() {
    static const Language english{nullptr};
    static const LogTexts texts{english};
    return texts;
}

// The rows as the page keeps them, filled as the page does.
struct Page final : LogNewsSink {
    LogRows rows;
    StopSignal stop;
    bool stopsAtFirst = false;
    std::size_t read = 0;  // rows with their texts
    void Put(LogNews news) override {
        if (news.isAnew) rows.Restart(LogRows::Order::NewestFirst, static_cast<std::uint32_t>(news.total), false);
        rows.AddFound(news.plain, std::move(news.numbers));
        read += news.rows.size();
        if (stopsAtFirst) stop.Request();
    }
};

// The report is a table with the columns of whichever benchmark comes first in it: all have this one.
void TellBytes(benchmark::State& state, std::size_t bytes) {
    state.counters["bytes_per_record"] = static_cast<double>(bytes) / kRecords;
}

void List(benchmark::State& state, const LogWish& wish, int least) {
    (void)TrafficLog();
    std::size_t most = 0;
    for (auto _ : state) {
        const std::size_t before = allocated;
        mostAllocated = before;
        Page page;
        ListLog(TrafficLog(), wish, Texts(), page.stop, page);
        if (page.rows.Count() < least) state.SkipWithError("rows are missing");
        most = mostAllocated - before;
    }
    TellBytes(state, most);
}

void ListTrafficLog(benchmark::State& state) {
    List(state, {}, kRecords);
}
BENCHMARK(ListTrafficLog)->Unit(benchmark::kMillisecond);

void FilterTrafficLog(benchmark::State& state) {
    LogWish wish;
    wish.action = LogAction::Denied;
    List(state, wish, kRecords / 7);
}
BENCHMARK(FilterTrafficLog)->Unit(benchmark::kMillisecond);

// Letters: of a path, or of a rule's name.
void SearchTrafficLog(benchmark::State& state) {
    LogWish wish;
    wish.searched = "maker 17";
    List(state, wish, kRecords / 200);
}
BENCHMARK(SearchTrafficLog)->Unit(benchmark::kMillisecond);

// Digits, which may stand in any cell.
void SearchAddress(benchmark::State& state) {
    LogWish wish;
    wish.searched = "93.0.17";
    List(state, wish, kRecords / 500);
}
BENCHMARK(SearchAddress)->Unit(benchmark::kMillisecond);

void SortTrafficLog(benchmark::State& state) {
    LogWish wish;
    wish.sortedBy = static_cast<LogColumn>(state.range(0));
    List(state, wish, kRecords);
}
BENCHMARK(SortTrafficLog)
    ->Arg(static_cast<int>(LogColumn::Address))
    ->Arg(static_cast<int>(LogColumn::Program))
    ->Unit(benchmark::kMillisecond);

// Until the first rows can be shown.
void NewestRows(benchmark::State& state) {
    (void)TrafficLog();
    for (auto _ : state) {
        Page page;
        page.stopsAtFirst = true;
        ListLog(TrafficLog(), {}, Texts(), page.stop, page);
        if (page.read != kFirstRows) state.SkipWithError("rows are missing");
    }
    TellBytes(state, 0);
}
BENCHMARK(NewestRows)->Unit(benchmark::kMillisecond);

// One fread of the whole file into memory that is there already.
void ReadTrafficLog(benchmark::State& state) {
    const std::string& path = TrafficLog().path;
    static std::vector<std::byte> bytes(kRecords * sizeof(TrafficLogRecord), std::byte{1});
    for (auto _ : state) {
        std::FILE* const file = std::fopen(path.c_str(), "rb");
        if (file == nullptr || std::fread(bytes.data(), 1, bytes.size(), file) != bytes.size()) {
            state.SkipWithError("cannot read");
        }
        if (file != nullptr) (void)std::fclose(file);
        benchmark::ClobberMemory();
    }
    TellBytes(state, 0);
}
BENCHMARK(ReadTrafficLog)->Unit(benchmark::kMillisecond);

std::string ExportPath() {
    return Folder().File("exported.csv");
}

void ExportTrafficLog(benchmark::State& state) {
    (void)TrafficLog();
    Page page;
    ListLog(TrafficLog(), {}, Texts(), page.stop, page);
    for (auto _ : state) {
        LogExportState exported;
        ExportLog({.place = TrafficLog(), .count = kRecords, .numberAt = page.rows.Snapshot()}, ExportPath(),
                  LogFormat::Csv, Texts(), CodePage::Western, page.stop, exported);
        if (exported.result != WriteResult::Written) state.SkipWithError("cannot write");
    }
    TellBytes(state, 0);
}
// Compared by real time: two threads work, and until the name is there the user waits for the disk as well.
BENCHMARK(ExportTrafficLog)->Unit(benchmark::kMillisecond);

// The same bytes with one fwrite, put in place in the same way: on the disk, and renamed.
void WriteExport(benchmark::State& state) {
    Page page;
    ListLog(TrafficLog(), {}, Texts(), page.stop, page);
    LogExportState exported;
    ExportLog({.place = TrafficLog(), .count = kRecords, .numberAt = page.rows.Snapshot()}, ExportPath(),
              LogFormat::Csv, Texts(), CodePage::Western, page.stop, exported);
    const std::string bytes = Folder().Read("exported.csv");
    for (auto _ : state) {
        NewFile file(ExportPath());
        file.Write(bytes);
        if (file.PutInPlace() != WriteResult::Written) state.SkipWithError("cannot write");
    }
    TellBytes(state, 0);
}
BENCHMARK(WriteExport)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brennvar
