// Another program sends and posts every message there is to the windows of the program, which stays on the screen,
// answers, and lets itself be used and left as before.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <set>
#include <string>
#include <vector>

#include "Product.h"

namespace brennvar::test {
namespace {

constexpr UINT kLastMessage = 0xFFFF;
// Windows' own messages, which it takes through to another process with what their addresses point to.
constexpr UINT kLastOfWindows = WM_USER - 1;
// Below the 10,000 that Windows lets wait for a thread.
constexpr int kBatch = 2000;

// Left out is what a program is to obey, and what other tests look at: the end of a window or of the program, and
// input, which presses. A plain window with standard controls obeys these as well.
bool IsLeftOut(UINT message) {
    const bool isMouseButton = message >= WM_LBUTTONDOWN && message <= WM_MBUTTONDBLCLK;
    const bool isKey = message >= WM_KEYFIRST && message <= WM_KEYLAST;
    return isMouseButton || isKey || message == WM_QUIT || message == WM_CLOSE || message == WM_COMMAND ||
           message == BM_CLICK || message == WM_CONTEXTMENU;
}

// What the program and its toolkit have numbered themselves: workers, the session, lists.
bool IsPrivate(UINT message) {
    return (message >= WM_USER && message < WM_USER + 0x200) || (message >= 4840 && message < 4856) ||
           (message >= WM_APP && message < WM_APP + 0x20);
}

std::string ClassOf(HWND window) {
    std::array<char, 64> name{};
    ::GetClassNameA(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

class StormTest : public ProductFixture {
protected:
    // Those of the program that have not been stormed yet. The system's own, for typing, are as they are in every
    // program.
    [[nodiscard]] std::vector<HWND> NewWindows() {
        struct Found {
            DWORD process;
            std::vector<HWND> windows;
        } found{m_interface->Id(), {}};
        ::EnumChildWindows(
            ::GetDesktopWindow(),
            [](HWND window, LPARAM place) -> BOOL {
                auto& into = *reinterpret_cast<Found*>(place);
                if (ProcessOf(window) == into.process && ClassOf(window) != "IME") into.windows.push_back(window);
                return TRUE;
            },
            reinterpret_cast<LPARAM>(&found));
        std::erase_if(found.windows, [this](HWND window) { return !m_stormed.insert(window).second; });
        return found.windows;
    }

    // Every message that was posted to the thread before has been handled: only what is asked of a window
    // overtakes.
    void WaitForPosts() {
        constexpr int kMaximise = 942;  // the button makes it large, and small again
        const BOOL wasLarge = ::IsZoomed(m_window);
        Command(kMaximise);
        ASSERT_TRUE(WaitUntil([&] { return ::IsZoomed(m_window) != wasLarge; })) << "no answer after " << m_last;
        ExpectAnswers();
    }

    void Deal(HWND window, UINT message, WPARAM wParam, LPARAM lParam, bool isPosted) {
        m_last = std::to_string(message) + " to " + ClassOf(window) + " " + std::to_string(::GetDlgCtrlID(window));
        DWORD_PTR result = 0;
        if (isPosted) {
            ::PostMessageA(window, message, wParam, lParam);
        } else if (!::SendNotifyMessageA(window, message, wParam, lParam)) {
            // It carries an address, with which it has to be waited for. Wine ends the sender of a wrong one.
            static std::array<char, 0x10000> zeros;
            const LPARAM address = lParam == 0 ? 0 : reinterpret_cast<LPARAM>(zeros.data());
            ::SendMessageTimeoutA(window, message, 0, address, SMTO_NORMAL, 1000, &result);
        }
        ++m_count;
        if (m_count % kBatch == 0) WaitForPosts();
    }

    // All messages for which wanted is true, with the parameters 0, 1, an own and a foreign window, in turn.
    template <class Wanted>
    void StormAt(HWND window, const Wanted& wanted, bool isPosted) {
        const LPARAM values[] = {0, 1, reinterpret_cast<LPARAM>(m_window),
                                 reinterpret_cast<LPARAM>(::GetDesktopWindow())};
        for (UINT message = 0; message <= kLastMessage && !HasFatalFailure(); ++message) {
            if (IsLeftOut(message) || !wanted(message)) continue;
            const std::size_t turn = message + m_turn;
            Deal(window, message, static_cast<WPARAM>(values[turn % 4]), values[turn / 4 % 4], isPosted);
        }
        m_turn += 5;
    }

    // At every window that has come: the messages of Windows, and the program's own. One of each kind gets others
    // as well: all of them when scripts/soak.sh asks for that, else one of so many, which takes a minute less.
    void StormAtNewWindows() {
        for (const HWND window : NewWindows()) {
            const bool isNewKind = m_kinds.insert(ClassOf(window)).second;
            for (const bool isPosted : {false, true}) {
                StormAt(
                    window, [](UINT message) { return message <= kLastOfWindows || IsPrivate(message); }, isPosted);
            }
            static const UINT step = std::getenv("BRENNVAR_SOAK_SECONDS") ? 1 : 61;
            if (isNewKind) {
                StormAt(
                    window, [](UINT message) { return message > kLastOfWindows && message % step == 0; }, true);
            }
            EXPECT_TRUE(::IsWindow(window)) << ClassOf(window);
        }
        WaitForPosts();
    }

    std::set<HWND> m_stormed;
    std::set<std::string> m_kinds;
    std::string m_last;
    long m_count = 0;
    std::size_t m_turn = 0;
};

TEST_F(StormTest, NoMessageHurtsThePagesOrAnswersAQuestion) {
    Start({"wait-for-records COMMAND 4", R"(question tcp 10.1.2.3:1 10.9.9.9:2 4242 C:\Aurora\aurora.exe)"});
    for (const int page : kPages) {
        SCOPED_TRACE(page);
        Command(page);
        WaitForPosts();
        StormAtNewWindows();
        if (HasFatalFailure()) return;
    }
    SendToService();
    const HWND question = NextQuestion();
    StormAtNewWindows();
    EXPECT_TRUE(m_service->Journal("CONFIRM").empty());
    ASSERT_TRUE(::IsWindow(question));
    Answer(question, kNo);
    EXPECT_TRUE(WaitForRecords("CONFIRM", 1));
    Command(kAboutCommand);
    const HWND about = NextWindow("About");
    StormAtNewWindows();
    Answer(about, IDOK);
    Leave();
}

}  // namespace
}  // namespace brennvar::test
