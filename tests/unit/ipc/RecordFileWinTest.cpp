#include <gtest/gtest.h>

#include "base/Handles_win.h"
#include "ipc/RecordFile.h"
#include "support/FakeClock.h"
#include "support/TempFolder.h"

namespace brennvar {

TEST(RecordFileWinTest, TakesWhatTheServiceSharesOfAFileThatItWrites) {
    struct Row {
        const char* content;
        DWORD sharing;
        bool opens;
    };
    // The empty one is about to be written anew by the service, which must be able to.
    for (const Row& row : {Row{"12345678", FILE_SHARE_READ, true}, {"12345678", 0, false}, {"", 0, false}}) {
        const test::TempFolder folder;
        const std::string path = folder.Write("rules.conf", row.content);
        const UniqueFile service(::CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, row.sharing, nullptr,
                                               OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        ASSERT_TRUE(service);
        test::FakeClock clock;
        auto file = RecordFile::OpenShared(path, clock);
        EXPECT_EQ(file.has_value(), row.opens) << row.content << row.sharing;
        EXPECT_TRUE(!file || (file->Rewind() == 8 && clock.sleeps.size() == 6000));
        DWORD written = 0;
        EXPECT_TRUE(::WriteFile(service.Get(), "1234", 4, &written, nullptr));
    }
}

}  // namespace brennvar
