// The finished program as the server of the queue pipe: what it answers, byte for byte, what it asks, and how
// little a bad client can do.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>

#include "Product.h"
#include "base/Windows_win.h"

#include <tlhelp32.h>

namespace brennvar::test {
namespace {

constexpr char kPipe[] = R"(\\.\pipe\BRENNVAR_IPC_QUEUE_USER)";
constexpr char kHelperPipe[] = R"(\\.\pipe\BRENNVAR_IPC_QUEUE_WOW64)";
const std::string kPaths = R"( C:\Tools\acting.exe | C:\Tools\target.exe)";
const std::string kPathsHex =
    " 12:433A5C546F6F6C735C616374696E672E657865 4108:433A5C546F6F6C735C7461726765742E657865";

using Bytes = std::vector<char>;

Bytes Request(char kind, DWORD processId = 0) {
    Bytes bytes(8208);
    bytes[0] = kind;
    std::memcpy(&bytes[8204], &processId, sizeof processId);
    return bytes;
}

// A client that has connected; null when it could not.
UniqueFile Connect(const char* pipe = kPipe) {
    UniqueFile client;
    const auto tries = [&] {
        client.Reset(::CreateFileA(pipe, GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        DWORD mode = PIPE_READMODE_MESSAGE;
        return client && ::SetNamedPipeHandleState(client.Get(), &mode, nullptr, nullptr);
    };
    (void)WaitUntil(tries);
    return client;
}

// Empty when there is no answer.
Bytes Call(Bytes request, const char* pipe = kPipe) {
    const UniqueFile client = Connect(pipe);
    Bytes answer(8208);
    DWORD size = 0;
    const BOOL isAnswered = ::TransactNamedPipe(client.Get(), request.data(), static_cast<DWORD>(request.size()),
                                                answer.data(), static_cast<DWORD>(answer.size()), &size, nullptr);
    answer.resize(isAnswered ? size : 0);
    return answer;
}

RECT PlaceOf(HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    return place;
}

bool IsRunning(const std::string& program) {
    const UniqueFile processes(::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32 entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = ::Process32First(processes.Get(), &entry); more;
         more = ::Process32Next(processes.Get(), &entry)) {
        if (program == entry.szExeFile) return true;
    }
    return false;
}

class ActivityTest : public ProductFixture {
protected:
    [[nodiscard]] HWND NextActivity(Place place = Place::current()) const {
        return NextWindow("Confirm process activity", place);
    }
    [[nodiscard]] Lines Answers(std::size_t count, Place place = Place::current()) const {
        Require(WaitForRecords("ACTIVITY", count), place);
        return m_service->Journal("ACTIVITY");
    }
};

TEST_F(ActivityTest, QuestionsAreAnsweredByteForByteAndTrustIsKept) {
    Start({R"(process 900077 C:\Tools\BrennvarGUI.EXE)", R"(process 900078 C:\Tools\other.exe)",
           "activity write 4660" + kPaths, "activity browser 0" + kPaths, "activity browser 1" + kPaths,
           "activity appinit 2", "activity appinit 3", R"(activity browser 0 c:\TOOLS\acting.exe | C:\x.exe)",
           "activity own 900077", "activity own 900078"});
    HWND question = NextActivity();
    EXPECT_FALSE(::IsWindowEnabled(m_window));
    Answer(question, kYes);
    Answer(NextActivity(), kNo);
    question = NextActivity();
    Require(WaitUntil([&] { return ::IsWindowEnabled(::GetDlgItem(question, kNo)) != FALSE; }));
    ::PostMessageA(question, WM_CLOSE, 0, 0);
    for (const int button : {IDOK, IDCANCEL}) {
        const HWND message = NextMessage();
        EXPECT_TRUE(SaysAnywhere(message, "value of the AppInit_DLLs registry key"));
        Answer(message, button);
    }
    // Without a tick nothing has been trusted: it asks again.
    question = NextActivity();
    ASSERT_TRUE(PressWhenEnabled(question, kRemember));
    ASSERT_TRUE(WaitUntil([&] { return ::IsDlgButtonChecked(question, kRemember) == BST_CHECKED; }));
    EXPECT_EQ(Sent(), Lines());
    Answer(question, kYes);
    ExpectSent({"COMMAND 5596 0:1A 5472:633A5C544F4F4C535C616374696E672E657865"});
    const std::string trusting =
        "ACTIVITY 8208 0:64 8:01 12:633A5C544F4F4C535C616374696E672E657865 4108:433A5C782E657865";
    EXPECT_EQ(Answers(8), (Lines{"ACTIVITY 8208 0:64 8:01" + kPathsHex + " 8204:3412",
                                 "ACTIVITY 8208 0:64" + kPathsHex, "ACTIVITY 8208 0:64" + kPathsHex + " 8204:01",
                                 "ACTIVITY 8208 0:64 8:01 8204:02", "ACTIVITY 8208 0:64 8204:03", trusting,
                                 "ACTIVITY 8208 0:64 8204:EDBB0D", "ACTIVITY 8208 0:64 8:01 8204:EEBB0D"}));
    // The service reads its list anew before the program may go on.
    const Lines journal = m_service->Journal();
    EXPECT_LT(std::find_if(journal.begin(), journal.end(),
                           [](const std::string& line) { return line.starts_with("COMMAND 5596 0:1A"); }),
              std::find(journal.begin(), journal.end(), trusting));
    Bytes request = Request(1);
    std::strcpy(&request[12], R"(C:\Tools\ACTING.exe)");
    const Bytes next = Call(request);
    ASSERT_EQ(next.size(), 8208U);
    EXPECT_EQ(next[8], 1) << "trusted, and not asked about";

    // One client stays and says nothing, one never reads what it gets.
    for (const bool writes : {false, true}) {
        const UniqueFile stuck = Connect();
        DWORD written = 0;
        EXPECT_TRUE(!writes || ::WriteFile(stuck.Get(), request.data(), 8208, &written, nullptr));
        EXPECT_EQ(Call(Request(2, 4)).size(), 8208U);
    }
    // It comes forward and, whatever is open, ends at once when it is told, and says nothing to the service.
    ::PostMessageA(m_window, WM_CLOSE, 0, 0);
    ASSERT_TRUE(WaitUntil([&] { return !::IsWindowVisible(m_window) || ::IsIconic(m_window); }));
    EXPECT_EQ(Call(Request(5)), Bytes());
    EXPECT_TRUE(WaitUntil([&] { return ::IsWindowVisible(m_window) && !::IsIconic(m_window); }));
    Command(kExitCommand);
    (void)NextMessage();
    EXPECT_EQ(Call(Request(6)), Bytes());
    ExpectEnd();
    ExpectSent({});
}

TEST_F(ActivityTest, BothQuestionsStandSideBySideAndLeavingDenies) {
    const std::string connection = R"(question tcp 10.1.2.3:1 10.9.9.9:2 4242 C:\Aurora\aurora.exe)";
    const std::string activity = "activity write 0" + kPaths;
    Start({activity, "wait-for-records COMMAND 4", connection, "wait-for-records COMMAND 5", connection,
           "wait-for-records COMMAND 6", activity, "wait-for-records COMMAND 7", activity});
    std::size_t round = 0;
    for (const bool activityFirst : {true, false}) {
        ++round;
        if (!activityFirst) SendToService();
        const HWND first = activityFirst ? NextActivity() : NextQuestion();
        if (!activityFirst) {
            EXPECT_EQ(Call(Request(2, ::GetCurrentProcessId())).size(), 8208U)
                << "while a connection is asked about";
        }
        SendToService();
        const HWND second = activityFirst ? NextQuestion() : NextActivity();
        // The work area may just be getting smaller, for a task bar that comes: they move then.
        EXPECT_TRUE(WaitUntil([&] {
            const RECT a = PlaceOf(first), b = PlaceOf(second);
            RECT both{}, area{};
            ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
            ::UnionRect(&both, &b, &area);
            return ::EqualRect(&both, &area) && !::IntersectRect(&both, &a, &b);
        })) << PlaceOf(first).left
            << " " << PlaceOf(second).left;
        // The first one is answered first, though the second one was opened over it, and its answer goes at once.
        Require(PressWhenEnabled(first, kYes));
        EXPECT_TRUE(WaitForRecords(activityFirst ? "ACTIVITY" : "CONFIRM", round)) << activityFirst;
        EXPECT_TRUE(::IsWindowVisible(second));
        EXPECT_FALSE(::IsWindowEnabled(m_window));
        Require(PressWhenEnabled(second, kYes));
        EXPECT_TRUE(WaitForRecords(activityFirst ? "CONFIRM" : "ACTIVITY", round));
        EXPECT_TRUE(WaitUntil([&] { return ::IsWindowEnabled(m_window) != FALSE; }));
    }
    SendToService();
    (void)NextActivity();
    Leave();
    EXPECT_EQ(Answers(3).back(), "ACTIVITY 8208 0:64" + kPathsHex);
}

TEST_F(ActivityTest, WebPagesBecomeTheWallpaperOnlyWithConsent) {
    constexpr char kKey[] = R"(Software\Microsoft\Internet Explorer\Desktop\General)";
    const auto set = [&](const std::string& text) {
        ::RegSetKeyValueA(HKEY_CURRENT_USER, kKey, "Wallpaper", REG_SZ, text.c_str(),
                          static_cast<DWORD>(text.size() + 1));
    };
    const auto get = [&] {
        char text[300] = {};
        DWORD size = sizeof text;
        ::RegGetValueA(HKEY_CURRENT_USER, kKey, "Wallpaper", RRF_RT_REG_SZ, nullptr, text, &size);
        return std::string(text);
    };
    const std::string picture = R"(C:\hills.bmp)", page = R"(C:\page.htm)";
    set(picture);
    Start({});
    for (const int button : {IDCANCEL, IDOK}) {
        // The watch may not have begun, and takes what it finds then for the user's own; it may also be about to
        // put the picture back once more. So each stands for a while, until it has seen the one and then the other.
        HWND message = nullptr;
        bool isPage = true;
        ASSERT_TRUE(WaitUntil([&] {
            message = FindProgramWindow(m_interface->Id(), m_caption, m_window);
            isPage = !isPage;
            if (!message) set(isPage ? page : picture);
            return message != nullptr;
        }));
        const std::string expected = button == IDOK ? page : picture;
        set("something else");
        Answer(message, button);
        EXPECT_TRUE(WaitUntil([&] { return get() == expected; })) << get();
    }
    Leave();
    ::RegDeleteTreeA(HKEY_CURRENT_USER, R"(Software\Microsoft\Internet Explorer\Desktop)");
}

TEST_F(ActivityTest, StartsTheHelperForOtherProgramsOnce) {
    Install();
    std::filesystem::copy(BuiltProgram(R"(standin\BrennvarWow64.exe)"), m_installation->Path());
    for (int start = 0; start < 2; ++start) {
        Start({R"(rule deny C:\Tools\a.exe)"});
        // The helper is looked for on the thread that then reads the rules.
        ExpectList(kApplicationsPage, {{"a.exe"}});
        const Bytes answer = Call(Request(2, 4660), kHelperPipe);
        ASSERT_EQ(answer.size(), 8208U);
        EXPECT_EQ(answer[0], 100);
        Leave();
        Stop();
    }
    // It outlives the program that has started it.
    EXPECT_EQ(Call(Request(24), kHelperPipe), Bytes());
    // Whatever was started has counted itself when it has ended.
    ASSERT_TRUE(WaitUntil([] { return !IsRunning("BrennvarWow64.exe"); }));
    EXPECT_EQ(Content(m_installation->Path() + R"(\BrennvarWow64.starts)"), "+");
}

}  // namespace
}  // namespace brennvar::test
