// Windows that are opened while the system has no more windows or memory to give: they open or do not, nothing
// stays behind, and a question is denied once.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "prompts/ConfirmationDialog_win.h"
#include "prompts/QuestionMessage_win.h"
#include "support/AskedTools.h"
#include "support/FailingMemory.h"
#include "support/ModalOwner_win.h"
#include "support/NoGdiObjects_win.h"
#include "support/ObjectCounts_win.h"
#include "ui/OwnMessages_win.h"

namespace brennvar {
namespace {

// From now on a thread gets so many windows more.
class WindowLimit {
public:
    explicit WindowLimit(int left)
        : m_hook(::SetWindowsHookExA(WH_CBT, &WindowLimit::OnEvent, nullptr, ::GetCurrentThreadId())) {
        s_left = left;
        s_wasReached = false;
    }
    WindowLimit(const WindowLimit&) = delete;
    WindowLimit& operator=(const WindowLimit&) = delete;
    ~WindowLimit() { ::UnhookWindowsHookEx(m_hook); }
    [[nodiscard]] static bool WasReached() { return s_wasReached; }

private:
    static LRESULT CALLBACK OnEvent(int code, WPARAM wParam, LPARAM lParam) {
        if (code != HCBT_CREATEWND || s_left-- > 0) return ::CallNextHookEx(nullptr, code, wParam, lParam);
        s_wasReached = true;
        return 1;
    }
    static inline int s_left = 0;
    static inline bool s_wasReached = false;
    HHOOK m_hook;
};

class LowResourcesTest : public testing::Test {
protected:
    LowResourcesTest() {
        question.caption = kCaption;
        question.displayName = "A program with a long name";
        question.address = 0x22D8B85D;
        question.addressLink = "&Address...";
    }

    // Each opens a window, which is closed as soon as it stands. True for a question that was allowed.
    [[nodiscard]] std::vector<std::function<bool()>> Ways() {
        return {[this] { return ConfirmationDialog(fonts, tools, question).Ask(owner.Window()).allow; },
                [this] {
                    return MessageDialog(fonts, {.caption = kCaption, .message = "M", .ok = "OK", .cancel = "No"})
                        .Ask(owner.Window());
                },
                [this] {
                    QuestionMessage message(fonts,
                                            {.caption = kCaption, .message = "M", .ok = "OK", .cancel = "No"},
                                            [this] { ++answers; });
                    message.Open(owner.Window());
                    if (HWND window = message.Window()) {
                        ::UpdateWindow(window);
                        EndWindow(window);
                    }
                    EXPECT_EQ(answers, 1);
                    return message.Answer().value_or(true);
                }};
    }
    // The way while the step makes things scarce; false once nothing has been refused any more.
    void Try(const std::function<bool()>& way, const std::function<void(const std::function<void()>&)>& scarce) {
        answers = 0;
        bool isAllowed = false;
        const UINT_PTR timer = ::SetTimer(nullptr, 0, 10, &LowResourcesTest::Close);
        scarce([&] { isAllowed = way(); });
        ::KillTimer(nullptr, timer);
        EXPECT_FALSE(isAllowed);
        EXPECT_TRUE(::IsWindowEnabled(owner.Window()));
        EXPECT_EQ(::FindWindowA(nullptr, kCaption), nullptr);
    }

    static constexpr char kCaption[] = "Low resources";
    const CFonts fonts;
    test::AskedTools tools;
    PromptQuestion question;
    test::ModalOwner owner;
    int answers = 0;

private:
    static void CALLBACK Close(HWND, UINT, UINT_PTR, DWORD) {
        if (const HWND window = ::FindWindowA(nullptr, kCaption)) {
            ::UpdateWindow(window);
            EndWindow(window);
        }
    }
};

TEST_F(LowResourcesTest, WithoutWindowsNothingIsAllowedAndNothingStaysBehind) {
    for (const auto& way : Ways()) {
        int windows = 0;
        for (bool wasReached = true; wasReached; ++windows) {
            SCOPED_TRACE(windows);
            Try(way, [&](const auto& step) {
                const WindowLimit limit(windows);
                step();
                wasReached = WindowLimit::WasReached();
            });
        }
        EXPECT_GT(windows, 3);
    }
}

TEST_F(LowResourcesTest, WithoutMemoryNothingIsAllowedAndNothingStaysBehind) {
    for (const auto& way : Ways()) {
        bool hasFailed = true;
        int last = 0;
        // Closer together at the beginning, where the road of the question lies.
        for (int before = 0; hasFailed; before += 1 + before / 8) {
            SCOPED_TRACE(before);
            last = before;
            Try(way, [&](const auto& step) {
                test::FailingMemory memory(before);
                memory.Run(step);
                hasFailed = memory.HasFailed();
            });
        }
        EXPECT_GT(last, 50);
    }
}

TEST_F(LowResourcesTest, WithoutGdiObjectsNothingIsAllowedAndNothingStaysBehind) {
    for (const auto& way : Ways()) {
        for (const std::size_t left : {0U, 1U, 2U, 3U, 5U, 8U, 16U, 32U}) {
            SCOPED_TRACE(left);
            Try(way, [&](const auto& step) {
                const test::NoGdiObjects limit(left);
                EXPECT_TRUE(limit.HasReachedTheEnd());
                step();
            });
        }
    }
}

}  // namespace
}  // namespace brennvar
