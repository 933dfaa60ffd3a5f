#include <gtest/gtest.h>

#include <string>

#include "base/Handles_win.h"
#include "ipc/RecordFile.h"
#include "support/FakeClock.h"
#include "support/TempFolder.h"

namespace brennvar {
namespace {

// The service at work on its file: it writes, and lets others do as much as the sharing mode says.
UniqueFile HoldFile(const std::string& path, DWORD sharing) {
    return UniqueFile(::CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, sharing, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
}

TEST(RecordFileWinTest, ReadsOnlyAFileWhoseWriterSharesItForReading) {
    const test::TempFolder folder;
    const std::string path = folder.Write("rules.conf", "12345678");
    const UniqueFile service = HoldFile(path, FILE_SHARE_READ);
    ASSERT_TRUE(service);
    test::FakeClock clock;
    auto file = RecordFile::RulesFileOpen(path, clock);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->Rewind(), 8U);
    EXPECT_EQ(clock.sleeps.size(), 6000U);
}

TEST(RecordFileWinTest, YieldsNothingWhileTheFileIsNotShared) {
    const test::TempFolder folder;
    const std::string path = folder.Write("rules.conf", "12345678");
    const UniqueFile service = HoldFile(path, 0);
    ASSERT_TRUE(service);
    test::FakeClock clock;
    EXPECT_FALSE(RecordFile::RulesFileOpen(path, clock));
    EXPECT_FALSE(RecordFile::OpenReadOnly(path));
}

TEST(RecordFileWinTest, LeavesTheServiceTheFileItHasEmptiedToRewriteIt) {
    const test::TempFolder folder;
    const std::string path = folder.Write("rules.conf", "");
    const UniqueFile service = HoldFile(path, 0);
    ASSERT_TRUE(service);
    test::FakeClock clock;
    EXPECT_FALSE(RecordFile::RulesFileOpen(path, clock));
    DWORD written = 0;
    EXPECT_TRUE(::WriteFile(service.Get(), "1234", 4, &written, nullptr));
    EXPECT_EQ(written, 4U);
}

}  // namespace
}  // namespace brennvar
