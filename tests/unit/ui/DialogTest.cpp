#include "ui/Dialog_win.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include "ui/OwnMessages_win.h"
#include "ui/ToolkitIds.h"

namespace brennvar {
namespace {

// Shows what reaches it; what it does then is the test's.
class TestDialog final : public CDialog {
public:
    using CDialog::End;
    std::function<void()> onInit = [] {};
    std::function<void(int)> onCommand = [](int) {};
    std::function<void(UINT_PTR)> onTimer = [](UINT_PTR) {};

private:
    void OnInitDialog() override { onInit(); }
    void OnCommand(int id, int) override { onCommand(id); }
    void OnTimer(UINT_PTR id) override { onTimer(id); }
};

TEST(CDialogTest, HandlesMessagesInsideAHandlerAndDropsWhatItThrows) {
    TestDialog dialog;
    std::string order;
    dialog.onCommand = [&](int id) {
        order += id == 7 ? "7" : "8";
        if (id == 7) ::SendMessageA(dialog.Window(), WM_TIMER, 3, 0);
        throw std::runtime_error("command");
    };
    dialog.onTimer = [&](UINT_PTR) { ::SendMessageA(dialog.Window(), WM_COMMAND, 8, 0); };
    ASSERT_TRUE(dialog.CreateModeless(nullptr, IDD_MESSAGE_OK));
    ::SendMessageA(dialog.Window(), WM_COMMAND, 7, 0);
    EXPECT_EQ(order, "78");
    // A handler may end its own window.
    dialog.onCommand = [&](int) { EndWindow(dialog.Window()); };
    ::SendMessageA(dialog.Window(), WM_COMMAND, 9, 0);
    EXPECT_EQ(dialog.Window(), nullptr);
    // The object serves another window, but one that could not be filled is not shown.
    dialog.onInit = [] { throw std::runtime_error("init"); };
    EXPECT_FALSE(dialog.CreateModeless(nullptr, IDD_MESSAGE_OK));
    EXPECT_EQ(dialog.DoModal(nullptr, IDD_MESSAGE_OK), -1);
}

TEST(CDialogTest, OuterModalDialogWaitsForTheInnerOneAndStaysDisabled) {
    TestDialog outer, inner;
    bool innerIsGone = false;
    outer.onInit = [&] { ::PostMessageA(outer.Window(), WM_COMMAND, 7, 0); };
    inner.onInit = [&] { ::PostMessageA(outer.Window(), WM_COMMAND, 8, 0); };
    inner.onCommand = [&](int) {
        EXPECT_FALSE(::IsWindowEnabled(outer.Window()));
        inner.End(2);
        inner.End(3);  // the first answer counts
    };
    outer.onCommand = [&](int id) {
        if (id == 7) {
            EXPECT_EQ(inner.DoModal(outer.Window(), IDD_MESSAGE_OK), 2);
            EXPECT_TRUE(::IsWindowEnabled(outer.Window()));
            // What somebody else has disabled already stays so.
            ::EnableWindow(outer.Window(), FALSE);
            inner.onInit = [&] { inner.End(4); };
            EXPECT_EQ(inner.DoModal(outer.Window(), IDD_MESSAGE_OK), 4);
            EXPECT_FALSE(::IsWindowEnabled(outer.Window()));
            innerIsGone = true;
        } else {
            outer.End(1);
            ::PostMessageA(inner.Window(), WM_COMMAND, 9, 0);
        }
    };
    EXPECT_EQ(outer.DoModal(nullptr, IDD_MESSAGE_OK), 1);
    EXPECT_TRUE(innerIsGone);
}

TEST(CDialogTest, KeysReachAnOuterDialogThatTheInnerOneLeavesEnabled) {
    TestDialog outer, inner;  // the one does not own the other
    outer.onInit = [&] { ::PostMessageA(outer.Window(), WM_COMMAND, 7, 0); };
    outer.onCommand = [&](int) {
        EXPECT_EQ(inner.DoModal(nullptr, IDD_MESSAGE_OK), 2);
        EXPECT_FALSE(::IsWindowVisible(outer.Window())) << "Esc was for the outer one, and worked at once";
    };
    inner.onInit = [&] {
        ::PostMessageA(outer.Item(IDOK), WM_KEYDOWN, VK_ESCAPE, 0);
        ::PostMessageA(inner.Window(), WM_COMMAND, 9, 0);
    };
    inner.onCommand = [&](int) { inner.End(2); };
    EXPECT_EQ(outer.DoModal(nullptr, IDD_MESSAGE_OK), IDCANCEL);
}

TEST(CDialogTest, AKeyThatIsPostedToWhatNobodyCanReachHoldsNothingUp) {
    for (const DWORD unreachable : {WS_CHILD, WS_CHILD | WS_VISIBLE | WS_DISABLED}) {
        TestDialog dialog;
        dialog.onInit = [&] {
            const auto make = [](const char* className, DWORD style, HWND parent) {
                return ::CreateWindowExA(0, className, "&Text", style, 0, 0, 10, 10, parent, nullptr, nullptr,
                                         nullptr);
            };
            const HWND page = make("STATIC", unreachable, dialog.Window());
            ::PostMessageA(make("BUTTON", WS_CHILD | WS_VISIBLE, page), WM_CHAR, 'x', 0);
            ::PostMessageA(dialog.Window(), WM_COMMAND, 7, 0);
        };
        dialog.onCommand = [&](int) { dialog.End(1); };
        EXPECT_EQ(dialog.DoModal(nullptr, IDD_MESSAGE_OK), 1);
    }
}

TEST(CDialogTest, PassesTheEndOfTheProgramOn) {
    TestDialog dialog;
    dialog.onInit = [] { ::PostQuitMessage(5); };
    EXPECT_EQ(dialog.DoModal(nullptr, IDD_MESSAGE_OK), -1);
    MSG message;
    ASSERT_TRUE(::PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 5U);
}

}  // namespace
}  // namespace brennvar
