#include "ipc/RecordFile.h"

#include <gtest/gtest.h>

#include <filesystem>

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

TEST(RecordFileTest, CreatesAMissingFileButNothingForWhatIsNoFile) {
    const test::TempFolder folder;
    test::FakeClock clock;
    auto file = RecordFile::OpenShared(folder.File("rules.conf"), clock);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->Rewind(), 0U);
    EXPECT_FALSE(RecordFile::OpenShared(folder.Path(), clock));                        // a folder
    EXPECT_FALSE(RecordFile::OpenShared(folder.File("no folder/rules.conf"), clock));  // nothing can be created
    EXPECT_FALSE(RecordFile::OpenReadOnly(folder.Path()));
    EXPECT_FALSE(RecordFile::OpenReadOnly(folder.File("absent.log")));
    EXPECT_FALSE(fs::exists(folder.File("absent.log")));
    EXPECT_TRUE(clock.sleeps.empty());
}

#ifndef _WIN32  // there a test of its own holds a file as the service does
TEST(RecordFileTest, WaitsForAHeldFileToALimitThenReadsOnly) {
    struct Row {
        int slowness;
        bool stopped;
        std::size_t changeAt, sleeps;
        std::string change;
    };
    // 6,000 times; six seconds with the grain of the system's timer; until the program stops; until the service has
    // written the file, or removed it.
    for (const Row& row : {Row{1, false, 0, 6000, ""}, Row{16, false, 0, 375, ""}, Row{1, true, 0, 1, ""},
                           Row{1, false, 3, 3, "new content"}, Row{1, false, 2, 2, ""}}) {
        const test::TempFolder folder;
        const std::string path = folder.File("held");
        fs::create_symlink("/proc/self/exe", path);  // nobody may update a running program
        test::FakeClock clock;
        clock.slowness = row.slowness;
        clock.stopped = row.stopped;
        clock.whenSlept = [&] {
            if (clock.sleeps.size() != row.changeAt) return;
            fs::remove(path);
            if (!row.change.empty()) folder.Write("held", row.change);
        };
        auto file = RecordFile::OpenShared(path, clock);
        ASSERT_TRUE(file);
        const std::uint64_t size = file->Rewind();
        EXPECT_TRUE(row.changeAt == 0 ? size > 1000 : size == row.change.size()) << size;
        EXPECT_EQ(clock.sleeps, std::vector<std::chrono::milliseconds>(row.sleeps, 1ms));
    }
}
#endif

TEST(RecordFileTest, DeciphersEveryWholeRecord) {
    // None, a piece of one, one, and two scanned pieces with a part of a third.
    constexpr std::size_t kMany = kScanSize / sizeof(Pair) * 5 / 2;
    const test::TempFolder folder;
    const std::string path = folder.File("records");
    for (const std::size_t size : {std::size_t{0}, std::size_t{7}, std::size_t{8}, 8 * kMany + 7}) {
        std::string plain;
        std::vector<Pair> expected, scanned;
        for (std::uint32_t i = 0; i <= size / 8; ++i) plain += test::BytesOf(expected.emplace_back(Pair{i, ~i}));
        expected.pop_back();
        folder.Write("records", test::EncipherByHand(plain.substr(0, size), sizeof(Pair)));
        auto file = RecordFile::OpenReadOnly(path);
        ASSERT_TRUE(file);
        EXPECT_TRUE(ReadAllRecords<Pair>(*file, Cipher::Enciphered) == expected) << size;
        ScanRecords<Pair>(*file, Cipher::Enciphered, [&](std::span<const Pair> records) {
            scanned.insert(scanned.end(), records.begin(), records.end());
            return true;
        });
        EXPECT_TRUE(scanned == expected) << size;
    }
    fs::resize_file(path, kWholeFileLimit + 1);  // too long to be read whole
    auto file = RecordFile::OpenReadOnly(path);
    ASSERT_TRUE(file);
    EXPECT_TRUE(ReadAllRecords<Pair>(*file, Cipher::Plain).empty());
}

TEST(RecordFileTest, ScansWhatIsThereWhenTheFileChangesMeanwhile) {
    constexpr std::size_t kPiece = kScanSize / sizeof(Pair);
    const test::TempFolder folder;
    const std::string path = folder.Write("records", std::string(3 * kScanSize, 'x'));
    // What was added is not seen; what was cut off is not invented.
    for (const auto& [size, seen] :
         {std::pair{4 * kScanSize, 3 * kPiece}, {kScanSize + 17 * sizeof(Pair) + 5, kPiece + 17}}) {
        std::size_t count = 0;
        auto file = RecordFile::OpenReadOnly(path);
        ScanRecords<Pair>(*file, Cipher::Plain, [&, newSize = size](std::span<const Pair> records) {
            fs::resize_file(path, newSize);
            count += records.size();
            return true;
        });
        EXPECT_EQ(count, seen);
    }
}

}  // namespace
}  // namespace brennvar
