#include "prompts/ActivitySources_win.h"

#include <gtest/gtest.h>

#include "ipc/PipeRecords.h"
#include "prompts/WallpaperValue_win.h"
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

class WallpaperValueTest : public testing::Test {
protected:
    static constexpr char kParent[] = R"(Software\brennvar-test)";
    static constexpr char kKey[] = R"(Software\brennvar-test\Desktop\General)";
    const UniqueEvent stop{::CreateEventA(nullptr, TRUE, FALSE, nullptr)};

    void SetUp() override { ::RegDeleteTreeA(HKEY_CURRENT_USER, kParent); }
    void TearDown() override { ::RegDeleteTreeA(HKEY_CURRENT_USER, kParent); }
    static void Set(const std::string& text) {
        ASSERT_EQ(::RegSetKeyValueA(HKEY_CURRENT_USER, kKey, "Wallpaper", REG_SZ, text.c_str(),
                                    static_cast<DWORD>(text.size() + 1)),
                  ERROR_SUCCESS);
    }
};

TEST_F(WallpaperValueTest, SeesAKeyThatComesLaterAndEveryChangeOfIt) {
    WinWallpaperValue value(stop.Get(), kKey);
    EXPECT_EQ(value.Read(), "");
    value.Write("x");
    HKEY key = nullptr;
    EXPECT_NE(::RegOpenKeyExA(HKEY_CURRENT_USER, kParent, 0, KEY_READ, &key), ERROR_SUCCESS) << "it made the key";
    Set("first");
    while (value.Read() != "first") ASSERT_TRUE(value.WaitForChange());
    Set(std::string(300, 'w'));
    while (value.Read() != std::string(260, 'w')) ASSERT_TRUE(value.WaitForChange());
    value.Write("back");
    while (value.Read() != "back") ASSERT_TRUE(value.WaitForChange());
    ::RegDeleteTreeA(HKEY_CURRENT_USER, kParent);
    while (value.Read() != "") ASSERT_TRUE(value.WaitForChange());
    Set("again");
    while (value.Read() != "again") ASSERT_TRUE(value.WaitForChange());
    ::SetEvent(stop.Get());
    EXPECT_FALSE(value.WaitForChange());
}

}  // namespace
}  // namespace brennvar
