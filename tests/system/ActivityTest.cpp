// The finished program as the server of the queue pipe: what it answers, byte for byte, what it asks, and how
// little a bad client can do.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <future>

#include "Product.h"
#include "base/Windows_win.h"
#include "config/ResourceIds.h"

#include <tlhelp32.h>

namespace brennvar::test {
namespace {

using namespace std::chrono_literals;

constexpr char kActivityCaption[] = "Confirm process activity";
constexpr char kPipe[] = R"(\\.\pipe\BRENNVAR_IPC_QUEUE_USER)";
constexpr char kHelperPipe[] = R"(\\.\pipe\BRENNVAR_IPC_QUEUE_WOW64)";
constexpr char kPaths[] = R"( C:\Tools\acting.exe | C:\Tools\target.exe)";
constexpr char kPathsHex[] =
    " 12:433A5C546F6F6C735C616374696E672E657865 4108:433A5C546F6F6C735C7461726765742E657865";
constexpr char kAsksAboutConnection[] = R"(question tcp 10.1.2.3:1 10.9.9.9:2 4242 C:\Aurora\aurora.exe)";

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
        return NextWindow(kActivityCaption, place);
    }
    [[nodiscard]] Lines Answers(std::size_t count, Place place = Place::current()) const {
        Require(WaitForRecords("ACTIVITY", count), place);
        return m_service->Journal("ACTIVITY");
    }
};

TEST_F(ActivityTest, QuestionsAreAnsweredByteForByte) {
    Start({std::string("activity write 4660") + kPaths, std::string("activity browser 0") + kPaths,
           std::string("activity browser 1") + kPaths, "activity appinit 2", "activity appinit 3"});
    HWND question = NextActivity();
    EXPECT_EQ(WindowText(::GetDlgItem(question, IDC_MESSAGE_TEXT)),
              "Process:\n\nacting.exe\n\nis trying to write data into the remote process:\n\ntarget.exe\n\n"
              "Allow this action?");
    EXPECT_EQ(WindowText(::GetDlgItem(question, kRemember)),
              "Add to the Trusted Applications\nand do not ask me next time\nfor this application.");
    EXPECT_FALSE(::IsWindowEnabled(m_window));
    Answer(question, kYes);
    question = NextActivity();
    EXPECT_EQ(
        WindowText(::GetDlgItem(question, IDC_MESSAGE_TEXT)),
        "Process:\n\nacting.exe\n\nis trying to execute the web browser:\n\ntarget.exe\n\nAllow this action?");
    Answer(question, kNo);
    question = NextActivity();
    Require(WaitUntil([&] { return ::IsWindowEnabled(::GetDlgItem(question, kNo)) != FALSE; }));
    ::PostMessageA(question, WM_CLOSE, 0, 0);
    const std::string message =
        "Some application is changing value of the AppInit_DLLs registry key. This key allows to inject library "
        "into "
        "the executed applications. Allow this action?";
    AnswerMessage(message, IDOK);
    Require(WaitForRecords("ACTIVITY", 4));
    AnswerMessage(message, IDCANCEL);
    EXPECT_EQ(Answers(5), (Lines{std::string("ACTIVITY 8208 0:64 8:01") + kPathsHex + " 8204:3412",
                                 std::string("ACTIVITY 8208 0:64") + kPathsHex,
                                 std::string("ACTIVITY 8208 0:64") + kPathsHex + " 8204:01",
                                 "ACTIVITY 8208 0:64 8:01 8204:02", "ACTIVITY 8208 0:64 8204:03"}));
    EXPECT_TRUE(WaitUntil([&] { return ::IsWindowEnabled(m_window) != FALSE; }));
    EXPECT_EQ(Sent(), Lines());
}

TEST_F(ActivityTest, TrustedProgramsAreNotAskedForAgain) {
    Start({std::string("activity write 0") + kPaths, R"(activity browser 0 c:\TOOLS\acting.exe | C:\x.exe)"});
    Answer(NextActivity(), kYes);
    // Without a tick nothing is trusted: it asks again.
    const HWND second = NextActivity();
    ASSERT_TRUE(PressWhenEnabled(second, kRemember));
    ASSERT_TRUE(WaitUntil([&] { return ::IsDlgButtonChecked(second, kRemember) == BST_CHECKED; }));
    EXPECT_EQ(Sent(), Lines());
    Answer(second, kYes);
    ExpectSent({"COMMAND 5596 0:1A 5472:633A5C544F4F4C535C616374696E672E657865"});
    const std::string answer =
        "ACTIVITY 8208 0:64 8:01 12:633A5C544F4F4C535C616374696E672E657865 4108:433A5C782E657865";
    EXPECT_EQ(Answers(2)[1], answer);
    // The service reads its list anew before the program may go on.
    const Lines journal = m_service->Journal();
    EXPECT_LT(std::find_if(journal.begin(), journal.end(),
                           [](const std::string& line) { return line.starts_with("COMMAND 5596 0:1A"); }),
              std::find(journal.begin(), journal.end(), answer));
    Bytes request = Request(1);
    std::strcpy(&request[12], R"(C:\Tools\ACTING.exe)");
    const Bytes next = Call(request);
    ASSERT_EQ(next.size(), 8208U);
    EXPECT_EQ(next[8], 1);
    EXPECT_EQ(FindProgramWindow(m_interface->Id(), kActivityCaption), nullptr);
}

TEST_F(ActivityTest, OwnProcessesAreKnownWhileAConnectionIsAskedFor) {
    Start({R"(process 900077 C:\Tools\BrennvarGUI.EXE)", R"(process 900078 C:\Tools\other.exe)",
           kAsksAboutConnection, "activity own 900077", "activity own 900078", "activity own 900079"});
    const HWND question = NextQuestion();
    EXPECT_EQ(Answers(3), (Lines{"ACTIVITY 8208 0:64 8204:EDBB0D", "ACTIVITY 8208 0:64 8:01 8204:EEBB0D",
                                 "ACTIVITY 8208 0:64 8:01 8204:EFBB0D"}));
    // A process that is there: this one, asked for twice, of which the service is asked once.
    const std::size_t asked = m_service->Journal("PID").size();
    for (int round = 0; round < 2; ++round) {
        const Bytes answer = Call(Request(2, ::GetCurrentProcessId()));
        ASSERT_EQ(answer.size(), 8208U);
        EXPECT_EQ(answer[8], 1);
    }
    EXPECT_EQ(m_service->Journal("PID").size(), asked + 1);
    EXPECT_TRUE(::IsWindow(question));
    Answer(question, kNo);
}

TEST_F(ActivityTest, ComesForwardAndLeavesWhenItIsTold) {
    Start({});
    ::PostMessageA(m_window, WM_CLOSE, 0, 0);
    ASSERT_TRUE(WaitUntil([&] { return !::IsWindowVisible(m_window) || ::IsIconic(m_window); }));
    EXPECT_EQ(Call(Request(5)), Bytes());
    EXPECT_TRUE(WaitUntil([&] { return ::IsWindowVisible(m_window) && !::IsIconic(m_window); }));
    // Whatever is open: the program ends at once, and says nothing to the service.
    Command(kExitCommand);
    (void)NextMessage();
    EXPECT_EQ(Call(Request(6)), Bytes());
    ExpectEnd();
    EXPECT_EQ(Sent(), Lines());
}

TEST_F(ActivityTest, LeavingAnswersTheQuestionOnTheScreenWithNo) {
    for (const char* const kind : {"activity write 0", "activity appinit 0"}) {
        Start({std::string(kind) + kPaths});
        const HWND question = std::strstr(kind, "write") ? NextActivity() : NextMessage();
        Command(kExitCommand);
        HWND exit = nullptr;
        Require(WaitUntil([&] {
            exit = FindVisible(nullptr, [&](HWND window) {
                return ProcessOf(window) == m_interface->Id() && window != question && window != m_window &&
                       ::GetDlgItem(window, kMessage) != nullptr;
            });
            return exit != nullptr;
        }));
        Require(PressWhenEnabled(exit, IDOK));
        ExpectEnd();
        EXPECT_EQ(Answers(1), Lines{std::string("ACTIVITY 8208 0:64") + kPathsHex});
        ExpectSent({"COMMAND 5596 0:0D", "COMMAND 5596 0:0B"});
        Stop();
        m_sent.clear();
    }
}

TEST_F(ActivityTest, ClientsThatAreStuckHoldNobodyUp) {
    Start({});
    // 1,000 that connect and say nothing, send one byte or half a record, or do not wait for the answer.
    const Bytes whole = Request(2, 4);
    for (int client = 0; client < 1000; ++client) {
        const UniqueFile pipe = Connect();
        ASSERT_TRUE(pipe) << client;
        const DWORD sizes[] = {0, 1, 4000, 8208};
        DWORD written = 0;
        if (const DWORD size = sizes[client % 4]; size != 0) {
            ::WriteFile(pipe.Get(), whole.data(), size, &written, nullptr);
        }
    }
    EXPECT_EQ(Call(Request(2, 4)).size(), 8208U);
    // One that stays and says nothing, and one that never reads what it gets.
    for (const bool writes : {false, true}) {
        const UniqueFile stuck = Connect();
        DWORD written = 0;
        EXPECT_TRUE(!writes || ::WriteFile(stuck.Get(), whole.data(), 8208, &written, nullptr));
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(Call(Request(2, 4)).size(), 8208U);
        EXPECT_LT(std::chrono::steady_clock::now() - start, 20s);
    }
    ExpectAnswers();
    const UniqueFile stuck = Connect();
    const auto start = std::chrono::steady_clock::now();
    Leave();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 20s);
}

TEST_F(ActivityTest, BothQuestionsStandSideBySideAndEndInEitherOrder) {
    for (const bool activityFirst : {true, false}) {
        const std::string activity = std::string("activity write 0") + kPaths;
        Start(activityFirst ? Lines{activity, "wait-for-records COMMAND 4", kAsksAboutConnection}
                            : Lines{kAsksAboutConnection, "wait-for-records COMMAND 4", activity});
        const HWND first = activityFirst ? NextActivity() : NextQuestion();
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
        EXPECT_TRUE(WaitForRecords(activityFirst ? "ACTIVITY" : "CONFIRM", 1)) << activityFirst;
        EXPECT_TRUE(::IsWindowVisible(second));
        EXPECT_FALSE(::IsWindowEnabled(m_window));
        Require(PressWhenEnabled(second, kYes));
        EXPECT_TRUE(WaitForRecords(activityFirst ? "CONFIRM" : "ACTIVITY", 1));
        EXPECT_TRUE(WaitUntil([&] { return ::IsWindowEnabled(m_window) != FALSE; }));
        Leave();
        Stop();
        m_sent.clear();
    }
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
        EXPECT_EQ(WindowText(::GetDlgItem(message, kMessage)),
                  "Some application is trying to change desktop wallpaper. Allow this action?");
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
        m_sent.clear();
    }
    // It outlives the program that has started it.
    EXPECT_EQ(Call(Request(24), kHelperPipe), Bytes());
    const auto isGone = [] {
        const UniqueFile pipe(::CreateFileA(kHelperPipe, GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        return !pipe && ::GetLastError() == ERROR_FILE_NOT_FOUND;
    };
    EXPECT_TRUE(WaitUntil(isGone));
    // Whatever was started has counted itself when it has ended.
    ASSERT_TRUE(WaitUntil([] { return !IsRunning("BrennvarWow64.exe"); }));
    EXPECT_EQ(Content(m_installation->Path() + R"(\BrennvarWow64.starts)"), "+");
}

}  // namespace
}  // namespace brennvar::test
