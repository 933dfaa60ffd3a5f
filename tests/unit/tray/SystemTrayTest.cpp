#include "tray/SystemTray_win.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tray/TrayIcons_win.h"
#include "ui/OwnMessages_win.h"

namespace brennvar {
namespace {

constexpr UINT_PTR kRetryTimer = 1;

// A shell that has no task bar unless it is ready.
class SystemTrayTest : public testing::Test {
protected:
    struct Call {
        DWORD action;
        NOTIFYICONDATAA data;
    };
    std::vector<Call> calls;
    bool ready = true;
    bool refusesASecondOne = false;
    int lost = 0;
    HWND owner = ::CreateWindowExA(0, "STATIC", "owner", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    CSystemTray tray{[this](DWORD action, NOTIFYICONDATAA& data) {
        calls.push_back({action, data});
        return ready && !(refusesASecondOne && action == NIM_ADD);
    }};

    ~SystemTrayTest() override { EndWindow(owner); }
    CSystemTray::Setup MakeSetup() {
        return {.owner = owner,
                .callbackMessage = 0x800A,
                .tooltip = std::string(200, 't'),
                .icon = ::LoadIconA(nullptr, IDI_APPLICATION),
                .iconId = 159,
                .showMenu = [](POINT) {},
                .lost = [this] { ++lost; }};
    }
    void Send(UINT message, WPARAM wParam = 0) const { ::SendMessageA(tray.Window(), message, wParam, 0); }
    void RestartTaskbar() { Send(::RegisterWindowMessageA("TaskbarCreated")); }
    [[nodiscard]] std::size_t Count(DWORD action) const {
        return static_cast<std::size_t>(
            std::count_if(calls.begin(), calls.end(), [=](const auto& call) { return call.action == action; }));
    }
};

TEST_F(SystemTrayTest, AsksAShellThatIsStillStartingSixtyTimesWithoutWaiting) {
    const HICON other = ::LoadIconA(nullptr, IDI_WARNING);
    ready = false;
    ASSERT_TRUE(tray.Create(MakeSetup()));
    EXPECT_EQ(::FindWindowA("TrayIconClass", "Brennvar Firewall Tray"), tray.Window());
    EXPECT_FALSE(tray.SetIcon(other));
    for (int i = 0; i < 58; ++i) Send(WM_TIMER, kRetryTimer);
    EXPECT_EQ(lost, 0);
    for (int i = 0; i < 40; ++i) Send(WM_TIMER, kRetryTimer);
    EXPECT_EQ(Count(NIM_ADD), 60U);
    EXPECT_EQ(lost, 1);
    EXPECT_FALSE(tray.IsShown());
    // A new task bar starts it all again, with the icon that was wanted last, until it is removed.
    ready = true;
    RestartTaskbar();
    EXPECT_TRUE(tray.IsShown());
    EXPECT_EQ(calls.back().data.hIcon, other);
    Send(WM_TIMER, kRetryTimer);
    EXPECT_EQ(Count(NIM_ADD), 61U);
    ASSERT_TRUE(tray.RemoveIcon());
    const std::size_t before = calls.size();
    RestartTaskbar();
    Send(WM_SETTINGCHANGE, SPI_SETWORKAREA);
    Send(WM_TIMER, kRetryTimer);
    EXPECT_FALSE(tray.RemoveIcon() || tray.IsShown());
    EXPECT_EQ(calls.size(), before);
}

TEST_F(SystemTrayTest, FillsTheRecordAndKeepsItsPlace) {
    ASSERT_TRUE(tray.Create(MakeSetup()));
    const NOTIFYICONDATAA added = calls.front().data;
    EXPECT_TRUE(added.hWnd == owner && added.uID == 159 && added.uCallbackMessage == 0x800A);
    EXPECT_EQ(added.uFlags, static_cast<UINT>(NIF_MESSAGE | NIF_ICON | NIF_TIP));
    EXPECT_EQ(std::string(added.szTip), std::string(127, 't'));
    // An icon that the shell refuses is tried again; once it is there it need not be told again.
    TrayIcons icons(tray);
    for (const bool takes : {false, true, true}) {
        ready = takes;
        icons.OnIdleMode(ProtectionMode::BlockAll);
    }
    EXPECT_EQ(Count(NIM_MODIFY), 2U);
    // A new work area: the icon is there still, and is not lost because a second one is refused.
    refusesASecondOne = true;
    Send(WM_SETTINGCHANGE, SPI_SETWORKAREA);
    EXPECT_TRUE(tray.IsShown());
    refusesASecondOne = false;
    // It is tried again, every second and whenever the work area changes.
    for (const bool isByTimer : {true, false}) {
        ready = false;
        Send(WM_SETTINGCHANGE, SPI_SETWORKAREA);
        EXPECT_FALSE(tray.IsShown());
        for (int i = 0; i < 60 && !isByTimer; ++i) Send(WM_TIMER, kRetryTimer);
        ready = true;
        isByTimer ? Send(WM_TIMER, kRetryTimer) : Send(WM_SETTINGCHANGE, SPI_SETWORKAREA);
        EXPECT_TRUE(tray.IsShown());
    }
    EXPECT_EQ(lost, 3);
}

}  // namespace
}  // namespace brennvar
