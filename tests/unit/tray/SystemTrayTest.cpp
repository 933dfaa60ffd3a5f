#include "tray/SystemTray_win.h"

#include <gtest/gtest.h>

#include <vector>

namespace brennvar {
namespace {

constexpr UINT_PTR kRetryTimer = 1;

// A shell that has no task bar until it is told to.
class FakeShell {
public:
    struct Call {
        DWORD action;
        NOTIFYICONDATAA data;
    };
    std::vector<Call> calls;
    bool ready = true;

    [[nodiscard]] CSystemTray::NotifyCall Notify() {
        return [this](DWORD action, NOTIFYICONDATAA& data) {
            calls.push_back({action, data});
            return ready;
        };
    }
    [[nodiscard]] std::size_t Count(DWORD action) const {
        std::size_t count = 0;
        for (const Call& call : calls) count += call.action == action ? 1 : 0;
        return count;
    }
};

class SystemTrayTest : public testing::Test {
protected:
    FakeShell shell;
    HWND owner = ::CreateWindowExA(0, "STATIC", "owner", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    CSystemTray tray{shell.Notify()};

    ~SystemTrayTest() override { ::DestroyWindow(owner); }
    bool Create() {
        return tray.Create({.owner = owner,
                            .callbackMessage = 0x800A,
                            .iconId = 159,
                            .tooltip = std::string(200, 't'),
                            .defaultCommand = 409});
    }
    void Tick() { ::SendMessageA(tray.Window(), WM_TIMER, kRetryTimer, 0); }
};

TEST_F(SystemTrayTest, AsksAShellThatIsStillStartingSixtyTimesWithoutWaiting) {
    shell.ready = false;
    ASSERT_TRUE(Create());
    EXPECT_EQ(::FindWindowA("TrayIconClass", "Brennvar Firewall Tray"), tray.Window());
    tray.ShowTrayBalloon("first", "title");
    tray.ShowTrayBalloon("second", "title");
    for (int i = 0; i < 100; ++i) Tick();
    EXPECT_EQ(shell.Count(NIM_ADD), 60U);
    EXPECT_FALSE(tray.IsShown());

    // A new task bar starts it all again; the last notice was kept for it.
    shell.ready = true;
    ::SendMessageA(tray.Window(), ::RegisterWindowMessageA("TaskbarCreated"), 0, 0);
    EXPECT_TRUE(tray.IsShown());
    ASSERT_EQ(shell.Count(NIM_MODIFY), 1U);
    EXPECT_STREQ(shell.calls.back().data.szInfo, "second");
    Tick();
    EXPECT_EQ(shell.Count(NIM_ADD), 61U);
}

TEST_F(SystemTrayTest, FillsTheRecordWithinItsFields) {
    ASSERT_TRUE(Create());
    const NOTIFYICONDATAA& added = shell.calls.front().data;
    EXPECT_EQ(added.uID, 159U);
    EXPECT_EQ(added.hWnd, owner);
    EXPECT_EQ(added.uCallbackMessage, 0x800AU);
    EXPECT_EQ(std::string(added.szTip), std::string(127, 't'));
    tray.ShowTrayBalloon(std::string(300, 'b'), std::string(70, 'c'));
    const NOTIFYICONDATAA& balloon = shell.calls.back().data;
    EXPECT_EQ(balloon.uFlags, static_cast<UINT>(NIF_INFO));
    EXPECT_EQ(std::string(balloon.szInfo), std::string(255, 'b'));
    EXPECT_EQ(std::string(balloon.szInfoTitle), std::string(63, 'c'));
    // An empty notice would take the one on screen away.
    tray.ShowTrayBalloon("", "title");
    EXPECT_EQ(shell.Count(NIM_MODIFY), 1U);
}

TEST_F(SystemTrayTest, LosesTheIconOnceAndForAllWhenItIsRemoved) {
    ASSERT_TRUE(Create());
    tray.RemoveIcon();
    tray.RemoveIcon();
    EXPECT_EQ(shell.Count(NIM_DELETE), 1U);
    ::SendMessageA(tray.Window(), ::RegisterWindowMessageA("TaskbarCreated"), 0, 0);
    tray.ShowTrayBalloon("late", "title");
    EXPECT_EQ(shell.Count(NIM_ADD), 1U);
    EXPECT_EQ(shell.Count(NIM_MODIFY), 0U);
}

TEST_F(SystemTrayTest, PostsTheDefaultCommandForALeftClickOnItsOwnIcon) {
    ASSERT_TRUE(Create());
    tray.OnTrayNotification(158, WM_LBUTTONUP);
    tray.OnTrayNotification(159, WM_LBUTTONDOWN);
    tray.OnTrayNotification(159, WM_MOUSEMOVE);
    MSG message;
    EXPECT_FALSE(::PeekMessageA(&message, owner, WM_COMMAND, WM_COMMAND, PM_REMOVE));
    tray.OnTrayNotification(159, WM_LBUTTONUP);
    ASSERT_TRUE(::PeekMessageA(&message, owner, WM_COMMAND, WM_COMMAND, PM_REMOVE));
    EXPECT_EQ(message.wParam, 409U);
}

}  // namespace
}  // namespace brennvar
