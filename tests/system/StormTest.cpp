// Another program sends and posts every message there is to the windows of the program, which stays on the screen,
// answers, and lets itself be used and left as before.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "Product.h"
#include "controls/DrawnTextQuery_win.h"
#include "tree/TreeMessages_win.h"
#include "ui/Control_win.h"

namespace brennvar::test {
namespace {

constexpr UINT kLastMessage = 0xFFFF;
// Windows lets 10,000 messages wait for a thread.
constexpr int kBatch = 4000;
// What a click with the right button into the task bar sends: every window opens its menu then, which is ended
// before anything else comes. While a menu is open, Wine looks at a broken message of a DDE conversation again and
// again.
constexpr UINT kPopUpSystemMenu = 0x0313;
// Of the messages that nobody has a name for one of so many, or all when BRENNVAR_SOAK_SECONDS is set.
constexpr UINT kSampleStep = 61;

// Left out is what a program is to obey, and what other tests look at: the end of a window or of the program, and
// input, which presses. A plain window with standard controls obeys these as well.
bool IsLeftOut(UINT message) {
    const bool isMouseButton = message >= WM_LBUTTONDOWN && message <= WM_MBUTTONDBLCLK;
    const bool isKey = message >= WM_KEYFIRST && message <= WM_KEYLAST;
    // Of an input method, which types by them: a handle may well end like the letter of an answer.
    const bool isTyped = message == WM_IME_CHAR || message == WM_IME_KEYDOWN || message == WM_IME_KEYUP;
    return isMouseButton || isKey || isTyped || message == WM_QUIT || message == WM_CLOSE ||
           message == WM_COMMAND || message == BM_CLICK || message == WM_CONTEXTMENU;
}

// Those of Windows, and those that the program and its toolkit have numbered or named themselves.
std::vector<UINT> MessagesWithAMeaning() {
    std::vector<UINT> messages;
    const auto add = [&](UINT first, UINT last) {
        for (UINT message = first; message <= last; ++message) {
            if (!IsLeftOut(message)) messages.push_back(message);
        }
    };
    add(WM_NULL, WM_USER - 1);
    add(WM_USER, WM_USER + 0x10);  // of dialogs
    add(kTreeFirstMessage, kTreeLastMessage);
    add(4846, 4849);  // a worker has finished
    add(WM_APP, WM_APP + 0x10);
    for (const UINT message : {kControlFocused, kDrawnTextQuery, ::RegisterWindowMessageA("TaskbarCreated"),
                               ::RegisterWindowMessageA("BrennvarGUI.OpenWindow")}) {
        add(message, message);
    }
    return messages;
}

std::vector<UINT> OtherMessages() {
    const UINT step = std::getenv("BRENNVAR_SOAK_SECONDS") ? 1 : kSampleStep;
    std::vector<UINT> messages;
    for (UINT message = WM_USER; message <= kLastMessage; message += step) messages.push_back(message);
    return messages;
}

std::string ClassOf(HWND window) {
    std::array<char, 64> name{};
    ::GetClassNameA(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

// Dialogs are of one class, and each of its own kind.
std::string KindOf(HWND window) {
    std::array<char, 64> caption{};
    if (::GetAncestor(window, GA_ROOT) == window) {
        ::GetWindowTextA(window, caption.data(), static_cast<int>(caption.size()));
    }
    return ClassOf(window) + " " + caption.data();
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

    // Waits until every message that was posted to the thread before has been handled: only what is asked of a
    // window overtakes. A dialog tells the number that was posted to it last, whatever window it is of.
    void WaitForPosts() {
        constexpr WPARAM kFirst = 0x4000;  // above those of our controls
        m_fence = (m_fence + 1) % kFirst;
        const auto mark = kFirst + m_fence;
        ::PostMessageA(m_window, DM_SETDEFID, mark, 0);
        const auto expected = static_cast<LRESULT>(MAKELONG(mark, DC_HASDEFID));
        ASSERT_TRUE(WaitUntil([&] { return Ask(m_window, DM_GETDEFID) == expected; })) << State();
    }

    // What stands in the way of an answer.
    [[nodiscard]] std::string State() const {
        std::ostringstream text;
        GUITHREADINFO state{};
        state.cbSize = sizeof state;
        ::GetGUIThreadInfo(::GetWindowThreadProcessId(m_window, nullptr), &state);
        text << "after " << m_last << " to " << m_target << ": enabled " << ::IsWindowEnabled(m_window)
             << ", visible " << ::IsWindowVisible(m_window) << ", iconic " << ::IsIconic(m_window) << ", zoomed "
             << ::IsZoomed(m_window) << ", hung " << ::IsHungAppWindow(m_window) << ", running "
             << m_interface->IsRunning() << ", flags " << state.flags << ", active " << state.hwndActive
             << ", focus " << state.hwndFocus << ", capture " << state.hwndCapture << ", menu "
             << state.hwndMenuOwner << ", moved " << state.hwndMoveSize;
        return text.str();
    }

    void Deal(HWND window, UINT message, WPARAM wParam, LPARAM lParam, bool isPosted) {
        m_last = message;
        if (isPosted) {
            ::PostMessageA(window, message, wParam, lParam);
        } else if (!::SendNotifyMessageA(window, message, wParam, lParam)) {
            // It carries an address, with which it has to be waited for. Wine ends the sender of a wrong one.
            static std::array<char, 0x10000> zeros;
            const LPARAM address = lParam == 0 ? 0 : reinterpret_cast<LPARAM>(zeros.data());
            constexpr UINT kLimitMs = 30'000;
            DWORD_PTR answer = 0;
            ::SetLastError(ERROR_SUCCESS);
            (void)::SendMessageTimeoutA(window, message, 0, address, SMTO_NORMAL, kLimitMs, &answer);
            ASSERT_NE(::GetLastError(), DWORD{ERROR_TIMEOUT}) << State();
        }
        if (message == kPopUpSystemMenu) EndMenu(window);
        if (++m_count % kBatch == 0) WaitForPosts();
    }
    static void EndMenu(HWND window) { ::PostMessageA(window, WM_CANCELMODE, 0, 0); }

    // With the parameters 0, 1, an own and a foreign window, in turn.
    void StormAt(HWND window, const std::vector<UINT>& messages, bool isPosted) {
        const LPARAM values[] = {0, 1, reinterpret_cast<LPARAM>(m_window),
                                 reinterpret_cast<LPARAM>(::GetDesktopWindow())};
        for (const UINT message : messages) {
            if (HasFatalFailure()) return;
            const std::size_t turn = message + m_turn;
            Deal(window, message, static_cast<WPARAM>(values[turn % 4]), values[turn / 4 % 4], isPosted);
        }
        m_turn += 5;
    }

    // At every window that has come: the messages with a meaning, posted or sent in turn. The first of each kind
    // gets them both ways, and the others as well.
    void StormAtNewWindows() {
        static const std::vector<UINT> meant = MessagesWithAMeaning();
        static const std::vector<UINT> others = OtherMessages();
        for (const HWND window : NewWindows()) {
            const std::string kind = KindOf(window);
            m_target = kind + " " + std::to_string(::GetDlgCtrlID(window));
            const bool isNewKind = m_kinds.insert(kind).second;
            m_isPosted = !m_isPosted;
            StormAt(window, meant, m_isPosted);
            if (isNewKind) {
                StormAt(window, meant, !m_isPosted);
                for (const bool isPosted : {false, true}) StormAt(window, others, isPosted);
            }
            WaitForPosts();
            EXPECT_EQ(ModeOf(m_window) & ~DWORD{GUI_CARETBLINKING}, 0U) << State();
            if (HasFatalFailure()) return;
            EXPECT_TRUE(::IsWindow(window)) << m_target;
        }
    }

    // The user's button does what it did.
    void ExpectUsable() {
        constexpr int kMaximise = 942;  // large, and small again
        for (int time = 0; time < 2; ++time) {
            const BOOL wasLarge = ::IsZoomed(m_window);
            Command(kMaximise);
            ASSERT_TRUE(WaitUntil([&] { return ::IsZoomed(m_window) != wasLarge; })) << State();
        }
        EXPECT_TRUE(::IsWindowVisible(m_window) && ::IsWindowEnabled(m_window)) << State();
    }

    std::set<HWND> m_stormed;
    std::set<std::string> m_kinds;
    std::string m_target;
    UINT m_last = 0;  // that it got
    WPARAM m_fence = 0;
    long m_count = 0;
    std::size_t m_turn = 0;
    bool m_isPosted = false;
};

TEST_F(StormTest, NoMessageHurtsThePagesOrAnswersAQuestion) {
    Start({"wait-for-records COMMAND 4", R"(question tcp 10.1.2.3:1 10.9.9.9:2 4242 C:\Aurora\aurora.exe)"});
    for (const int page : kPages) {
        SCOPED_TRACE(page);
        Command(page);
        WaitForPosts();
        // Who may write into a field has changed an option, and its page asks.
        if (!::IsWindowEnabled(m_window)) Answer(NextMessage(), kDiscard);
        StormAtNewWindows();
        if (HasFatalFailure()) return;
        ExpectUsable();
        if (HasFatalFailure()) return;
    }
    SendToService();
    const HWND question = NextQuestion();
    StormAtNewWindows();
    if (HasFatalFailure()) return;
    EXPECT_TRUE(m_service->Journal("CONFIRM").empty());
    ASSERT_TRUE(::IsWindow(question));
    Answer(question, kNo);
    EXPECT_TRUE(WaitForRecords("CONFIRM", 1));
    Command(kAboutCommand);
    const HWND about = NextWindow("About");
    StormAtNewWindows();
    if (HasFatalFailure()) return;
    Answer(about, IDOK);
    ExpectUsable();
    Leave();
}

}  // namespace
}  // namespace brennvar::test
