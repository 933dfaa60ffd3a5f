// The process of the finished program: one for each session of a user, which does not stay behind, and whose
// windows are where the user can reach them.
#include <gtest/gtest.h>

#include <filesystem>

// Needs windows.h, which the test's own headers bring.
#include <tlhelp32.h>
#include "Product.h"

namespace brennvar::test {
namespace {

using namespace std::chrono_literals;

class LifeTest : public ProductFixture {
protected:
    // Another start of the program, which is to be the one that stays.
    HWND WindowOf(const RunningProgram& program) {
        const HWND window = WaitForProgramWindow(program.Id(), kCaption);
        Require(window != nullptr);
        return window;
    }
    // A start while the first one is still ending waits for it, and is the only one then.
    void ExpectNextInsteadOfFirst() {
        const RunningProgram next(Quoted(m_program));
        (void)WindowOf(next);
        EXPECT_FALSE(m_interface->IsRunning()) << "two at a time";
        ExpectEnd();
    }
    [[nodiscard]] int CountWindows() const {
        int count = 0;
        for (HWND window = nullptr; (window = ::FindWindowExA(nullptr, window, nullptr, kCaption)) != nullptr;) {
            count += ::IsWindowVisible(window) ? 1 : 0;
        }
        return count;
    }
    static bool IsOnScreen(HWND window) {
        RECT place{}, area{}, part{};
        ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
        return ::GetWindowRect(window, &place) && ::IntersectRect(&part, &place, &area) &&
               ::EqualRect(&part, &place);
    }
};

TEST_F(LifeTest, NobodyElseDecidesWhetherThereIsAWindow) {
    // Names that the program has used, or might: a mutex, and something else that makes opening one fail.
    const UniqueMutex mutex(::CreateMutexA(nullptr, TRUE, "Local\\BrennvarGUI"));
    const UniqueEvent event(::CreateEventA(nullptr, TRUE, FALSE, "Local\\BrennvarGUI.OpenWindow"));
    ASSERT_TRUE(mutex && event);
    StartInterface();
    EXPECT_TRUE(std::filesystem::is_directory(m_data + "\\Log"));
    // All the same there is only one: several starts at once call it, from the tray as well.
    ::PostMessageA(m_window, WM_CLOSE, 0, 0);
    ASSERT_TRUE(WaitUntil([this] { return !::IsWindowVisible(m_window); }));
    const RunningProgram second(Quoted(m_program)), third(Quoted(m_program));
    EXPECT_EQ(second.WaitForEnd(), 0);
    EXPECT_EQ(third.WaitForEnd(), 0);
    EXPECT_TRUE(WaitUntil([this] { return ::IsWindowVisible(m_window) != FALSE; }));
    EXPECT_EQ(CountWindows(), 1);
    // One from another folder is not taken for it, by its name.
    Install();
    const RunningProgram other(Quoted(m_program));
    EXPECT_NE(WindowOf(other), m_window);
    Leave();
}

TEST_F(LifeTest, WithoutAServiceItStartsAtOnceMakesNoDataFolderAndIsWaitedFor) {
    std::filesystem::remove_all(m_data);
    const auto start = std::chrono::steady_clock::now();
    StartInterface();
    // The most impatient of the transports tries for 6 s to reach the service.
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
    ExpectAnswers();
    Command(kExitCommand);
    ASSERT_TRUE(PressWhenEnabled(NextMessage(), IDOK));
    ASSERT_TRUE(WaitUntil([this] { return !::IsWindowVisible(m_window); }));
    // The last commands take their time.
    ExpectNextInsteadOfFirst();
    EXPECT_FALSE(std::filesystem::exists(m_data));
}

TEST_F(LifeTest, ThreadsThatNobodyCanEndDoNotKeepTheProcess) {
    StartInterface();
    const DWORD windowThread = ::GetWindowThreadProcessId(m_window, nullptr);
    const auto others = [&] {
        std::vector<DWORD> ids;
        const UniqueFile snapshot(::CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
        THREADENTRY32 entry{};
        entry.dwSize = sizeof entry;
        for (BOOL more = ::Thread32First(snapshot.Get(), &entry); more;
             more = ::Thread32Next(snapshot.Get(), &entry)) {
            const bool isOther =
                entry.th32OwnerProcessID == m_interface->Id() && entry.th32ThreadID != windowThread;
            if (isOther) ids.push_back(entry.th32ThreadID);
        }
        return ids;
    };
    // They begin when the window is seen: link, reads, archives, and both of the activity questions.
    ASSERT_TRUE(WaitUntil([&] { return others().size() >= 5; }));
    // As if all the others waited for a disk that never answers.
    std::size_t held = 0;
    for (const DWORD id : others()) {
        const UniqueHandle<KernelHandleTraits> thread(::OpenThread(THREAD_SUSPEND_RESUME, FALSE, id));
        if (thread && ::SuspendThread(thread.Get()) != static_cast<DWORD>(-1)) ++held;
    }
    ASSERT_GE(held, 5U);
    ASSERT_TRUE(::PostThreadMessageA(windowThread, WM_QUIT, 0, 0));
    ExpectNextInsteadOfFirst();
}

TEST_F(LifeTest, WindowsComeBackWhenTheScreensHaveChanged) {
    Start({R"(question tcp 10.1.2.3:1 10.9.9.9:2 4242 C:\Aurora\aurora.exe)"});
    const HWND question = NextQuestion();
    const auto moveAway = [](HWND window) {
        ::SetWindowPos(window, nullptr, 9000, 700, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    };
    const std::pair<UINT, WPARAM> changes[] = {
        {WM_DISPLAYCHANGE, 32}, {WM_SETTINGCHANGE, SPI_SETWORKAREA}, {WM_POWERBROADCAST, PBT_APMRESUMEAUTOMATIC}};
    for (const auto& [message, what] : changes) {
        // A question may come back by itself, since it keeps inside of the work area.
        for (const HWND window : {question, m_window}) moveAway(window);
        ASSERT_TRUE(WaitUntil([&] { return !IsOnScreen(m_window); }));
        Ask(m_window, message, what);
        EXPECT_TRUE(IsOnScreen(m_window) && IsOnScreen(question)) << message;
    }
    // Not for anything that is set somewhere.
    moveAway(m_window);
    Ask(m_window, WM_SETTINGCHANGE, SPI_SETMOUSE);
    EXPECT_FALSE(IsOnScreen(m_window));
}

}  // namespace
}  // namespace brennvar::test
