#include "ipc/RecordFile.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <functional>
#include <utility>
#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <share.h>
#endif

#include "support/FakeClock.h"
#include "support/GoldenCipher.h"
#include "support/TempFolder.h"

namespace brennvar {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

struct Pair {
    std::uint32_t a, b;
    friend bool operator==(const Pair&, const Pair&) = default;
};

// A file with something in it that cannot be opened for update: on Windows one that somebody has open and does not
// share for writing, elsewhere a running program (permissions do not stop every user).
class HeldFile {
    test::TempFolder m_folder;

public:
    const std::string path = m_folder.File("held");

    HeldFile() {
#ifdef _WIN32
        m_folder.Write("held", "12345678");
        (void)_sopen_s(&m_holder, path.c_str(), _O_RDONLY, _SH_DENYWR, 0);
#else
        fs::create_symlink("/proc/self/exe", path);
#endif
    }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;
    ~HeldFile() {
        Remove();
    }
    void Remove() {
#ifdef _WIN32
        if (m_holder != -1) _close(std::exchange(m_holder, -1));
#endif
        fs::remove(path);
    }
    void LetGo(std::string_view content) {
        Remove();
        m_folder.Write("held", content);
    }

#ifdef _WIN32

private:
    int m_holder = -1;
#endif
};

// Pauses take longer than they should, and something happens in one of them.
class EventfulClock final : public Clock {
public:
    int sleeps = 0;
    std::chrono::milliseconds pause = 1ms;
    std::function<void(int sleep)> onSleep = [](int) {};

    [[nodiscard]] FileTime UtcNow() const override { return m_now; }
    [[nodiscard]] LocalDate Today() const override { return {}; }
    bool Sleep(std::chrono::milliseconds) override {
        m_now += static_cast<FileTime>(pause.count()) * (kFileTimePerSecond / 1000);
        onSleep(++sleeps);
        return true;
    }

private:
    FileTime m_now = 1;
};

TEST(RecordFileTest, CreatesAMissingFileEmptyWithoutWaiting) {
    const test::TempFolder folder;
    test::FakeClock clock;
    auto file = RecordFile::RulesFileOpen(folder.File("rules.conf"), clock);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->Rewind(), 0U);
    EXPECT_EQ(fs::file_size(folder.File("rules.conf")), 0U);
    EXPECT_TRUE(clock.sleeps.empty());
}

TEST(RecordFileTest, YieldsNothingForWhatIsNoFile) {
    const test::TempFolder folder;
    test::FakeClock clock;
    EXPECT_FALSE(RecordFile::RulesFileOpen(folder.Path(), clock));                        // a folder
    EXPECT_FALSE(RecordFile::RulesFileOpen(folder.File("no folder/rules.conf"), clock));  // nothing can be created
    EXPECT_FALSE(RecordFile::OpenReadOnly(folder.Path()));
    EXPECT_FALSE(RecordFile::OpenReadOnly(folder.File("absent.log")));
    EXPECT_FALSE(fs::exists(folder.File("absent.log")));
    EXPECT_TRUE(clock.sleeps.empty());
}

TEST(RecordFileTest, WaitsSixThousandTimesAMillisecondThenReadsOnly) {
    HeldFile held;
    test::FakeClock clock;
    auto file = RecordFile::RulesFileOpen(held.path, clock);
    ASSERT_TRUE(file);
    EXPECT_GE(file->Rewind(), 8U);
    std::array<std::byte, 8> bytes;
    EXPECT_EQ(file->Read(bytes), 8U);
    EXPECT_EQ(clock.sleeps, std::vector<std::chrono::milliseconds>(6000, 1ms));
}

TEST(RecordFileTest, EndsTheWaitAfterSixSecondsWhenPausesTakeLonger) {
    HeldFile held;
    EventfulClock clock;
    clock.pause = 16ms;  // the grain of the system's timer
    EXPECT_TRUE(RecordFile::RulesFileOpen(held.path, clock));
    EXPECT_EQ(clock.sleeps, 375);
}

TEST(RecordFileTest, EndsTheWaitWhenTheProgramStops) {
    HeldFile held;
    test::FakeClock clock;
    clock.stopped = true;
    EXPECT_TRUE(RecordFile::RulesFileOpen(held.path, clock));
    EXPECT_EQ(clock.sleeps.size(), 1U);
}

TEST(RecordFileTest, ReadsWhatTheServiceHasWrittenOnceItLetsGo) {
    HeldFile held;
    EventfulClock clock;
    clock.onSleep = [&](int sleep) {
        if (sleep == 3) held.LetGo("new content");
    };
    auto file = RecordFile::RulesFileOpen(held.path, clock);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->Rewind(), 11U);
    EXPECT_EQ(clock.sleeps, 3);
}

TEST(RecordFileTest, CreatesTheFileWhenItDisappearsDuringTheWait) {
    HeldFile held;
    EventfulClock clock;
    clock.onSleep = [&](int sleep) {
        if (sleep == 2) held.Remove();
    };
    auto file = RecordFile::RulesFileOpen(held.path, clock);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->Rewind(), 0U);
    EXPECT_TRUE(fs::exists(held.path));
}

TEST(RecordFileTest, CountsWholeRecordsOnly) {
    const test::TempFolder folder;
    test::FakeClock clock;
    struct Row {
        std::size_t size, records;
    };
    for (const Row row : {Row{0, 0}, {1, 0}, {7, 0}, {8, 1}, {15, 1}, {16, 2}}) {
        const std::string path = folder.Write("records", std::string(row.size, '\x01'));
        const auto records = ReadAllRecords<Pair>(path, Cipher::Plain, clock);
        EXPECT_EQ(records, std::vector<Pair>(row.records, Pair{0x01010101, 0x01010101})) << row.size;
    }
}

TEST(RecordFileTest, DeciphersEveryRecordOfALongFile) {
    // Two scanned pieces and a part of a third.
    constexpr std::uint32_t kCount = kScanSize / sizeof(Pair) * 5 / 2;
    std::string plain;
    for (std::uint32_t i = 0; i < kCount; ++i) plain += test::BytesOf(Pair{i, ~i});
    const test::TempFolder folder;
    const std::string path = folder.Write("records", test::EncipherByHand(plain, sizeof(Pair)));
    test::FakeClock clock;

    const auto all = ReadAllRecords<Pair>(path, Cipher::Enciphered, clock);
    ASSERT_EQ(all.size(), kCount);
    EXPECT_EQ(all[kCount - 1], (Pair{kCount - 1, ~(kCount - 1)}));

    std::vector<Pair> scanned;
    auto file = RecordFile::OpenReadOnly(path);
    ASSERT_TRUE(file);
    ScanRecords<Pair>(*file, Cipher::Enciphered, [&](std::span<const Pair> records) {
        scanned.insert(scanned.end(), records.begin(), records.end());
        return true;
    });
    EXPECT_EQ(scanned, all);
}

TEST(RecordFileTest, ScansWhatIsThereWhenTheFileChangesMeanwhile) {
    constexpr std::size_t kPiece = kScanSize / sizeof(Pair);
    const test::TempFolder folder;
    const std::string path = folder.Write("records", std::string(3 * kScanSize, 'x'));
    const auto scanWhileResizingTo = [&](std::uintmax_t size) {
        std::size_t seen = 0;
        auto file = RecordFile::OpenReadOnly(path);
        ScanRecords<Pair>(*file, Cipher::Plain, [&](std::span<const Pair> records) {
            fs::resize_file(path, size);
            seen += records.size();
            return true;
        });
        return seen;
    };
    EXPECT_EQ(scanWhileResizingTo(4 * kScanSize), 3 * kPiece);  // what was added is not seen
    EXPECT_EQ(scanWhileResizingTo(kScanSize + 17 * sizeof(Pair) + 5),
              kPiece + 17);  // what was cut off is not invented
}

TEST(RecordFileTest, DoesNotReadAFileWholeThatIsTooLong) {
    const test::TempFolder folder;
    const std::string path = folder.Write("records", "");
    test::FakeClock clock;
    fs::resize_file(path, kWholeFileLimit + 1);
    EXPECT_TRUE(ReadAllRecords<Pair>(path, Cipher::Plain, clock).empty());
}

}  // namespace
}  // namespace brennvar
