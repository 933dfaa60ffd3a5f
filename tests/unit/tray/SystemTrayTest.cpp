#include "tray/SystemTray_win.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace brennvar {
namespace {

constexpr UINT_PTR kRetryTimer = 1;

// A shell that has no task bar unless it is ready.
class SystemTrayTest : public testing::Test {
protected:
    std::vector<std::pair<DWORD, NOTIFYICONDATAA>> calls;
    bool ready = true;
    HWND owner = ::CreateWindowExA(0, "STATIC", "owner", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    CSystemTray tray{[this](DWORD action, NOTIFYICONDATAA& data) {
        calls.emplace_back(action, data);
        return ready;
    }};

    ~SystemTrayTest() override { ::DestroyWindow(owner); }
    bool Create() { return tray.Create({owner, 0x800A, 159, nullptr, std::string(200, 't'), 409}); }
    void Tick() { ::SendMessageA(tray.Window(), WM_TIMER, kRetryTimer, 0); }
    [[nodiscard]] std::size_t Count(DWORD action) const {
        return static_cast<std::size_t>(
            std::count_if(calls.begin(), calls.end(), [=](const auto& call) { return call.first == action; }));
    }
};

TEST_F(SystemTrayTest, AsksAShellThatIsStillStartingSixtyTimesWithoutWaiting) {
    ready = false;
    ASSERT_TRUE(Create());
    EXPECT_EQ(::FindWindowA("TrayIconClass", "Brennvar Firewall Tray"), tray.Window());
    tray.ShowTrayBalloon("first", "title");
    tray.ShowTrayBalloon("second", "title");
    for (int i = 0; i < 100; ++i) Tick();
    EXPECT_EQ(Count(NIM_ADD), 60U);
    EXPECT_FALSE(tray.IsShown());

    // A new task bar starts it all again; the last notice was kept for it.
    ready = true;
    ::SendMessageA(tray.Window(), ::RegisterWindowMessageA("TaskbarCreated"), 0, 0);
    EXPECT_TRUE(tray.IsShown());
    ASSERT_EQ(Count(NIM_MODIFY), 1U);
    EXPECT_STREQ(calls.back().second.szInfo, "second");
    Tick();
    EXPECT_EQ(Count(NIM_ADD), 61U);
}

TEST_F(SystemTrayTest, FillsTheRecordAnswersAClickAndIsRemovedForGood) {
    ASSERT_TRUE(Create());
    const NOTIFYICONDATAA& added = calls.front().second;
    EXPECT_EQ(added.hWnd, owner);
    EXPECT_EQ(added.uCallbackMessage, 0x800AU);
    EXPECT_EQ(std::string(added.szTip), std::string(127, 't'));
    tray.ShowTrayBalloon(std::string(300, 'b'), std::string(70, 'c'));
    const NOTIFYICONDATAA& balloon = calls.back().second;
    EXPECT_EQ(std::string(balloon.szInfo), std::string(255, 'b'));
    EXPECT_EQ(std::string(balloon.szInfoTitle), std::string(63, 'c'));
    // An empty notice would take the one on screen away.
    tray.ShowTrayBalloon("", "title");
    EXPECT_EQ(Count(NIM_MODIFY), 1U);
    MSG message;
    tray.OnTrayNotification(158, WM_LBUTTONUP);
    tray.OnTrayNotification(159, WM_LBUTTONDOWN);
    EXPECT_FALSE(::PeekMessageA(&message, owner, WM_COMMAND, WM_COMMAND, PM_REMOVE));
    tray.OnTrayNotification(159, WM_LBUTTONUP);
    EXPECT_TRUE(::PeekMessageA(&message, owner, WM_COMMAND, WM_COMMAND, PM_REMOVE) && message.wParam == 409);
    // Once removed, the icon stays away.
    tray.RemoveIcon();
    tray.RemoveIcon();
    EXPECT_EQ(Count(NIM_DELETE), 1U);
    ::SendMessageA(tray.Window(), ::RegisterWindowMessageA("TaskbarCreated"), 0, 0);
    EXPECT_EQ(Count(NIM_ADD), 1U);
}

}  // namespace
}  // namespace brennvar
