#include "prompts/ActivitySources_win.h"

#include <gtest/gtest.h>

#include "ipc/PipeRecords.h"
#include "support/FakeClock.h"
#include "support/FakePipe.h"

namespace brennvar {
namespace {

class ActivitySourcesTest : public testing::Test {
protected:
    test::FakePipe pipe;
    test::FakeClock clock;
    WinActivitySources sources{"", pipe, clock};
    std::string path = R"(C:\first.exe)";

    ActivitySourcesTest() {
        pipe.server = [this](const test::FakePipe::Message&) {
            PidResolveAnswer answer{};
            answer.status = kServiceAnswerValid;
            PutText(answer.path, path);
            const auto bytes = RecordBytes(answer);
            return test::FakePipe::Bytes(bytes.begin(), bytes.end());
        };
    }
};

TEST_F(ActivitySourcesTest, AsksOnceForAProcessAsLongAsItLives) {
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION info{};
    char command[] = "cmd.exe /c pause";
    ASSERT_TRUE(::CreateProcessA(nullptr, command, nullptr, nullptr, FALSE, CREATE_NO_WINDOW | CREATE_SUSPENDED,
                                 nullptr, nullptr, &startup, &info));
    const UniqueProcess process(info.hProcess);
    const UniqueProcess thread(info.hThread);
    for (int round = 0; round < 3; ++round) EXPECT_EQ(sources.ProcessPath(info.dwProcessId), R"(C:\first.exe)");
    EXPECT_EQ(pipe.requests.size(), 1U);
    // Its id may belong to another one from now on.
    ::TerminateProcess(process.Get(), 0);
    ::WaitForSingleObject(process.Get(), INFINITE);
    path = R"(C:\second.exe)";
    for (int round = 0; round < 2; ++round) EXPECT_EQ(sources.ProcessPath(info.dwProcessId), R"(C:\second.exe)");
    EXPECT_EQ(pipe.requests.size(), 3U);
}

TEST_F(ActivitySourcesTest, GivesTheWholePathAndRemembersNoFailure) {
    path = std::string(500, 'p') + "end";
    EXPECT_EQ(sources.ProcessPath(::GetCurrentProcessId()), path);
    pipe.outcome = PipeOutcome::Failed;
    for (int round = 0; round < 2; ++round) EXPECT_EQ(sources.ProcessPath(900'077), std::nullopt);
    EXPECT_EQ(pipe.requests.size(), 3U);
}

}  // namespace
}  // namespace brennvar
