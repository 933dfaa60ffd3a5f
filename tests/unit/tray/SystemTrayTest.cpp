#include "tray/SystemTray_win.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tray/TrayWindow_win.h"

namespace brennvar {
namespace {

constexpr UINT_PTR kRetryTimer = 1;
constexpr UINT kAll = NIF_MESSAGE | NIF_ICON | NIF_TIP;

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
    std::vector<POINT> menus;
    HWND owner = ::CreateWindowExA(0, "STATIC", "owner", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    CSystemTray::NotifyCall shell = [this](DWORD action, NOTIFYICONDATAA& data) {
        calls.push_back({action, data});
        return ready && !(refusesASecondOne && action == NIM_ADD);
    };
    CSystemTray tray{shell};

    ~SystemTrayTest() override { ::DestroyWindow(owner); }
    CSystemTray::Setup MakeSetup() {
        return {.owner = owner,
                .callbackMessage = 0x800A,
                .tooltip = std::string(200, 't'),
                .icon = ::LoadIconA(nullptr, IDI_APPLICATION),
                .iconId = 159,
                .showMenu = [this](POINT point) { menus.push_back(point); },
                .lost = [this] { ++lost; }};
    }
    static void Send(const CSystemTray& to, UINT message, WPARAM wParam = 0) {
        ::SendMessageA(to.Window(), message, wParam, 0);
    }
    void RestartTaskbar() { Send(tray, ::RegisterWindowMessageA("TaskbarCreated")); }
    [[nodiscard]] std::size_t Count(DWORD action) const {
        return static_cast<std::size_t>(
            std::count_if(calls.begin(), calls.end(), [=](const auto& call) { return call.action == action; }));
    }
    // The command that the owner has got, 0 for none.
    [[nodiscard]] WPARAM Posted() const {
        MSG message;
        return ::PeekMessageA(&message, owner, WM_COMMAND, WM_COMMAND, PM_REMOVE) ? message.wParam : 0;
    }
};

TEST_F(SystemTrayTest, AsksAShellThatIsStillStartingSixtyTimesWithoutWaiting) {
    ready = false;
    ASSERT_TRUE(tray.Create(MakeSetup()));
    EXPECT_EQ(::FindWindowA("TrayIconClass", "Brennvar Firewall Tray"), tray.Window());
    for (int i = 0; i < 58; ++i) Send(tray, WM_TIMER, kRetryTimer);
    EXPECT_EQ(lost, 0);
    for (int i = 0; i < 40; ++i) Send(tray, WM_TIMER, kRetryTimer);
    EXPECT_EQ(Count(NIM_ADD), 60U);
    EXPECT_EQ(lost, 1);
    EXPECT_FALSE(tray.IsShown());
    // A new task bar starts it all again.
    ready = true;
    RestartTaskbar();
    EXPECT_TRUE(tray.IsShown());
    Send(tray, WM_TIMER, kRetryTimer);
    EXPECT_EQ(Count(NIM_ADD), 61U);
}

TEST_F(SystemTrayTest, FillsTheRecordAndComesBackAsItWas) {
    ASSERT_TRUE(tray.Create(MakeSetup()));
    const NOTIFYICONDATAA added = calls.front().data;
    EXPECT_TRUE(added.hWnd == owner && added.uID == 159 && added.uCallbackMessage == 0x800A);
    EXPECT_EQ(added.uFlags, kAll);
    EXPECT_EQ(std::string(added.szTip), std::string(127, 't'));
    RestartTaskbar();
    EXPECT_EQ(calls.back().action, static_cast<DWORD>(NIM_ADD));
    EXPECT_EQ(calls.back().data.uFlags, kAll);
    // A new work area: the icon is there still, and is not lost because a second one is refused.
    refusesASecondOne = true;
    Send(tray, WM_SETTINGCHANGE, SPI_SETWORKAREA);
    EXPECT_TRUE(tray.IsShown());
    ready = false;
    Send(tray, WM_SETTINGCHANGE, SPI_SETWORKAREA);
    EXPECT_FALSE(tray.IsShown());
    EXPECT_EQ(lost, 1);
}

TEST_F(SystemTrayTest, KeepsAnIconForLaterAndStaysAwayOnceRemoved) {
    const HICON other = ::LoadIconA(nullptr, IDI_WARNING);
    ready = false;
    ASSERT_TRUE(tray.Create(MakeSetup()));
    EXPECT_FALSE(tray.SetIcon(other));
    EXPECT_EQ(Count(NIM_MODIFY), 0U);
    ready = true;
    RestartTaskbar();
    EXPECT_EQ(calls.back().data.hIcon, other);
    EXPECT_TRUE(tray.SetIcon(::LoadIconA(nullptr, IDI_ERROR)));
    EXPECT_TRUE(calls.back().action == NIM_MODIFY && calls.back().data.uFlags == NIF_ICON);
    ASSERT_TRUE(tray.RemoveIcon());
    EXPECT_EQ(calls.back().action, static_cast<DWORD>(NIM_DELETE));
    const std::size_t before = calls.size();
    RestartTaskbar();
    Send(tray, WM_SETTINGCHANGE, SPI_SETWORKAREA);
    Send(tray, WM_TIMER, kRetryTimer);
    EXPECT_FALSE(tray.RemoveIcon() || tray.IsShown());
    EXPECT_EQ(calls.size(), before);
}

TEST_F(SystemTrayTest, ClicksAreAnsweredForItsOwnIconOnly) {
    ASSERT_TRUE(tray.Create(MakeSetup()));
    for (const UINT message : {WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONDBLCLK, WM_RBUTTONDOWN}) {
        tray.OnTrayNotification(159, message);
    }
    tray.OnTrayNotification(158, WM_LBUTTONUP);
    tray.OnTrayNotification(158, WM_RBUTTONUP);
    EXPECT_TRUE(Posted() == 0 && menus.empty());
    tray.OnTrayNotification(159, WM_RBUTTONUP);
    EXPECT_EQ(menus.size(), 1U);
    tray.OnTrayNotification(159, WM_LBUTTONUP);
    EXPECT_EQ(Posted(), 409U) << "the first item of the menu resource";
    CSystemTray other(shell);
    CSystemTray::Setup setup = MakeSetup();
    setup.iconId = 158;  // there is no such menu
    ASSERT_TRUE(other.Create(setup));
    other.OnTrayNotification(158, WM_LBUTTONUP);
    EXPECT_EQ(Posted(), 0U);
}

TEST(TrayWindowTest, AnimatesOnlyWhenTheUserWantsIt) {
    const HWND window = ::CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 20, 30, 200, 100, nullptr,
                                          nullptr, nullptr, nullptr);
    for (const bool isOn : {false, true}) {
        std::vector<LONG> widths;
        const DesktopAnimation animation{
            .isOn = [=] { return isOn; },
            .run =
                [&](HWND, const RECT& from, const RECT& to) {
                    widths.insert(widths.end(), {from.right - from.left, to.right - to.left});
                }};
        MinimiseToTray(window, animation);
        EXPECT_FALSE(::IsWindowVisible(window));
        RestoreFromTray(window, animation);
        RestoreFromTray(window, animation);  // is there already
        EXPECT_TRUE(::IsWindowVisible(window));
        ASSERT_EQ(widths.size(), isOn ? 4U : 0U);
        const bool isThereAndBack =
            widths.empty() || (widths[0] == 200 && widths[1] == widths[2] && widths[3] == 200);
        EXPECT_TRUE(isThereAndBack);
    }
    ::DestroyWindow(window);
}

}  // namespace
}  // namespace brennvar
