// The notification icon, its menu, notices and protection modes of the finished program.
#include <gtest/gtest.h>

#include <utility>

#include "Product.h"

namespace brennvar::test {
namespace {

constexpr UINT kTrayMessage = 0x800A;
constexpr WPARAM kIconId = 159;
constexpr int kModeCell = 1230, kModeCard = 1256, kMinimiseButton = 941, kCloseButton = 943;

// What the service gets for a mode: the option with its value (key 1), the reload, and the event with the mode's
// name.
const std::string kEvent = "COMMAND 5596 0:01 4:5365637572697479206C6576656C206368616E676564 132:";
const Lines kNormal = {"COMMAND 5596 0:08 5592:01", "COMMAND 5596 0:07", kEvent + "4E6F726D616C"};
const Lines kAllowAll = {"COMMAND 5596 0:08 5468:01 5592:01", "COMMAND 5596 0:07", kEvent + "416C6C6F7720416C6C"};
const Lines kBlockAll = {"COMMAND 5596 0:08 5468:02 5592:01", "COMMAND 5596 0:07", kEvent + "426C6F636B20416C6C"};

class TrayTest : public ProductFixture {
protected:
    void Click(UINT mouseMessage) const { ::PostMessageA(m_window, kTrayMessage, kIconId, mouseMessage); }
    [[nodiscard]] bool WaitForVisible(bool isVisible) const {
        return WaitUntil([&] { return (::IsWindowVisible(m_window) != FALSE) == isVisible; });
    }
    [[nodiscard]] bool WaitForMenu(bool isOpen) const {
        return WaitUntil([&] { return ((ModeOf(m_window) & GUI_INMENUMODE) != 0) == isOpen; });
    }
    [[nodiscard]] static HWND Balloon() { return FindVisibleChild(nullptr, "BrennvarBalloon"); }
    [[nodiscard]] bool WaitForBalloon(const std::string& text) const {
        return WaitUntil([&] { return Balloon() != nullptr && WindowText(Balloon()) == text; });
    }
    static void PressKeys(HWND window, std::initializer_list<WPARAM> keys) {
        for (const WPARAM key : keys) ::PostMessageA(window, WM_KEYDOWN, key, 0);
    }
};

TEST_F(TrayTest, IconBringsTheWindowBackAndModesAreChangedWhereTheyAreShown) {
    Start({"totals 0 0"});
    // By a click or a key; then down to the mode that is checked when it holds.
    const HWND card = Control(kModeCard);
    Press(kModeCard);
    ASSERT_TRUE(WaitForMenu(true));
    PressKeys(m_window, {VK_DOWN, VK_RIGHT, VK_RETURN});
    ExpectSent(kBlockAll);
    EXPECT_TRUE(
        WaitUntil([&] { return WindowText(card) == "Protection mode: Block All. All traffic is blocked"; }));
    for (const int id : {kModeCell, kModeCard}) {
        PressKeys(Control(id), {VK_DOWN});
        ASSERT_TRUE(WaitForMenu(true)) << id;
        PressKeys(m_window, {VK_DOWN, VK_DOWN, VK_RETURN});
        ExpectSent(kNormal);
    }
    EXPECT_TRUE(WaitForText(kModeCell, "Normal"));
    const std::pair<int, std::pair<Lines, std::string>> modes[] = {
        {435, {kBlockAll, "Block All"}}, {853, {kAllowAll, "Allow All, 30 min"}}, {431, {kNormal, "Normal"}}};
    for (const auto& [command, what] : modes) {
        Command(command);
        ExpectSent(what.first);
        EXPECT_TRUE(WaitForText(kModeCell, what.second)) << command << Text(kModeCell);
    }

    // The task bar has been made anew.
    ::SendNotifyMessageA(HWND_BROADCAST, ::RegisterWindowMessageA("TaskbarCreated"), 0, 0);
    ExpectAnswers();
    // Into the tray by its buttons, by Windows' own menu and by closing; back by a left click with its default
    // command, by the commands themselves, and by a second start.
    const std::pair<std::function<void()>, std::function<void()>> ways[] = {
        {[this] { Command(kMinimiseButton); }, [this] { Click(WM_LBUTTONUP); }},
        {[this] { Command(kCloseButton); }, [this] { Command(kApplicationsPage); }},
        {[this] { ::PostMessageA(m_window, WM_SYSCOMMAND, SC_MINIMIZE, 0); },
         [this] { EXPECT_EQ(RunningProgram(Quoted(m_program)).WaitForEnd(), 0); }},
        {[this] { ::PostMessageA(m_window, WM_CLOSE, 0, 0); }, [this] { Command(409); }}};
    for (std::size_t i = 0; i < std::size(ways); ++i) {
        ways[i].first();
        ASSERT_TRUE(WaitForVisible(false)) << i;
        for (const bool isAgain : {false, true}) {
            Click(WM_RBUTTONUP);
            ASSERT_TRUE(WaitForMenu(true)) << isAgain;
            ::PostMessageA(m_window, WM_CANCELMODE, 0, 0);
            ASSERT_TRUE(WaitForMenu(false));
        }
        EXPECT_FALSE(::IsWindowVisible(m_window));
        ways[i].second();
        ASSERT_TRUE(WaitForVisible(true)) << i;
    }
    // Not while a dialog is open, which would stay behind alone.
    Command(kAboutCommand);
    const HWND about = NextWindow("About");
    ::PostMessageA(m_window, WM_CLOSE, 0, 0);
    ExpectAnswers();
    EXPECT_TRUE(::IsWindowVisible(m_window));
    Answer(about, IDOK);
    // Only its command ends the program, from the icon as well: not somebody who only says that the session ends.
    ::PostMessageA(m_window, WM_CLOSE, 0, 0);
    Require(WaitForVisible(false));
    EXPECT_EQ(Ask(m_window, WM_QUERYENDSESSION), TRUE);
    for (const WPARAM ends : {FALSE, TRUE}) EXPECT_EQ(Ask(m_window, WM_ENDSESSION, ends), 0);
    ExpectAnswers();
    EXPECT_TRUE(m_interface->IsRunning());
    Leave();
}

TEST_F(TrayTest, NoticesAreShownOneAfterTheOther) {
    // Two words of the service, and one that is a text like any other.
    Start({"notice ATTACK", "notice REFRESH", "notice Refresh|", "wait-for-records COMMAND 4",
           "notice Port scan| https://www.brennvar.example/x "});
    EXPECT_TRUE(WaitForBalloon("Brennvar Personal Firewall\nRefresh"));
    const HWND balloon = Balloon();
    SendToService();
    EXPECT_TRUE(WaitForBalloon("Brennvar Personal Firewall\nPort scan"));
    EXPECT_EQ(Balloon(), balloon) << "the same balloon";
}

}  // namespace
}  // namespace brennvar::test
