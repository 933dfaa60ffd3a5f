// Another thread stands for another program: what it sends is told apart in the same way, and its addresses come as
// they are.
#include "ui/OwnMessages_win.h"

#include <gtest/gtest.h>

#include <atomic>
#include <span>
#include <thread>

#include "ui/Dialog_win.h"
#include "ui/ToolkitIds.h"
#include "ui/Window_win.h"

namespace brennvar {
namespace {

struct Sent {
    UINT message;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
};

// What a window is told of its own life, and what needs an address.
constexpr Sent kMadeUp[] = {{WM_INITDIALOG, 0, 1},
                            {WM_NCCREATE},
                            {WM_CREATE},
                            {WM_DESTROY},
                            {WM_NCDESTROY},
                            {WM_GETMINMAXINFO},
                            {WM_NCCALCSIZE, 0, 1},
                            {WM_NCCALCSIZE, 1},
                            {WM_DRAWITEM},
                            {WM_DRAWITEM, 7, 1},
                            {WM_MEASUREITEM},
                            {WM_GETTEXT, 10},
                            {WM_WINDOWPOSCHANGED},
                            {WM_GETDLGCODE, 0, 1},
                            {WM_CTLCOLORBTN, 1, 1},
                            {WM_APP + 0x1000 + WM_DRAWITEM, 1, 1}};

// Answers messages until the other thread has sent all of these.
void SendFromAnotherThread(HWND window, std::span<const Sent> messages) {
    std::atomic<bool> isOver = false;
    const DWORD here = ::GetCurrentThreadId();
    std::thread other([&] {
        for (const Sent& sent : messages) ::SendMessageA(window, sent.message, sent.wParam, sent.lParam);
        isOver = true;
        ::PostThreadMessageA(here, WM_NULL, 0, 0);
    });
    for (MSG message; !isOver && ::GetMessageA(&message, nullptr, 0, 0) > 0;) ::DispatchMessageA(&message);
    other.join();
}

int begins = 0, ends = 0;  // of the two windows

class TestWindow final : public CWindow {
    bool OnCreate() override { return ++begins > 0; }
    void OnDestroy() override { ++ends; }
};

class TestDialog final : public CDialog {
    void OnInitDialog() override { ++begins; }
    void OnDestroy() override { ++ends; }
};

TEST(OwnMessagesTest, NobodyElseBeginsOrEndsAWindow) {
    TestWindow window;
    ASSERT_TRUE(window.Create({.text = {}, .style = WS_POPUP, .place = {0, 0, 300, 200}}));
    TestDialog dialog;
    ASSERT_TRUE(dialog.Open(nullptr, IDD_MESSAGE_OK));
    for (const HWND target : {window.Window(), dialog.Window()}) {
        SendFromAnotherThread(target, kMadeUp);
        // As the loop of a menu or of a message box does, which asks nobody what it dispatches.
        for (const UINT end : {WM_DESTROY, WM_NCDESTROY}) ::PostMessageA(target, end, 0, 0);
        for (MSG message; ::PeekMessageA(&message, target, 0, 0, PM_REMOVE);) ::DispatchMessageA(&message);
        EXPECT_EQ(std::pair(begins, ends), std::pair(2, 0));
        EXPECT_TRUE(::IsWindow(window.Window()) && ::IsWindow(dialog.Window()) && dialog.IsOpen());
    }
    const Sent close[] = {{WM_CLOSE}};
    SendFromAnotherThread(window.Window(), close);
    EXPECT_TRUE(::IsWindow(window.Window()) && ends == 0);
    EndWindow(window.Window());
    EndWindow(dialog.Window());
    EXPECT_EQ(ends, 2);
    EXPECT_FALSE(dialog.IsOpen());
}

}  // namespace
}  // namespace brennvar
