// The notification icon, its menu, notices and protection modes of the finished program.
#include <gtest/gtest.h>

#include "Product.h"
#include "TestClock.h"

namespace brennvar::test {
namespace {

constexpr UINT kTrayMessage = 0x800A;
constexpr WPARAM kIconId = 159;
constexpr int kModeCell = 1230, kMinimiseButton = 941, kCloseButton = 943;
constexpr std::int64_t kMinute = 600'000'000;

// What the service gets for a mode: the option with its value (key 1), the reload, and the event with the mode's
// name.
const std::string kEvent = "COMMAND 5596 0:01 4:5365637572697479206C6576656C206368616E676564 132:";
const Lines kNormal = {"COMMAND 5596 0:08 5592:01", "COMMAND 5596 0:07", kEvent + "4E6F726D616C"};
const Lines kAllowAll = {"COMMAND 5596 0:08 5468:01 5592:01", "COMMAND 5596 0:07", kEvent + "416C6C6F7720416C6C"};
const Lines kBlockAll = {"COMMAND 5596 0:08 5468:02 5592:01", "COMMAND 5596 0:07", kEvent + "426C6F636B20416C6C"};
constexpr char kFuture[] = "132:467574757265";  // the subject of the event when the clock has jumped ahead

class TrayTest : public ProductFixture {
protected:
    // Without events of the moved clock.
    [[nodiscard]] Lines Sent() const override {
        Lines lines = ProductFixture::Sent();
        std::erase_if(lines, [](const auto& line) { return line.find(kFuture) != std::string::npos; });
        return lines;
    }
    [[nodiscard]] bool WaitForMode(const std::string& text) const { return WaitForText(kModeCell, text); }
    void Click(UINT mouseMessage) const { ::PostMessageA(m_window, kTrayMessage, kIconId, mouseMessage); }
    // Menus keep the input of the thread to themselves.
    [[nodiscard]] bool IsMenuOpen() const {
        GUITHREADINFO state{};
        state.cbSize = sizeof state;
        return ::GetGUIThreadInfo(::GetWindowThreadProcessId(m_window, nullptr), &state) &&
               (state.flags & GUI_INMENUMODE) != 0;
    }
    [[nodiscard]] bool WaitForVisible(bool isVisible) const {
        return WaitUntil([&] { return (::IsWindowVisible(m_window) != FALSE) == isVisible; });
    }
    [[nodiscard]] static HWND Balloon() { return FindVisibleChild(nullptr, "BrennvarBalloon"); }
    [[nodiscard]] bool WaitForBalloon(const std::string& text) const {
        return WaitUntil([&] { return Balloon() != nullptr && WindowText(Balloon()) == text; });
    }
    // Closes the window into the tray.
    void Hide() const {
        ::PostMessageA(m_window, WM_CLOSE, 0, 0);
        Require(WaitForVisible(false));
    }
    // A command for a mode: what it sends, and what the status line shows then.
    void Choose(int command, const Lines& sent, const std::string& shown) {
        Command(command);
        ExpectSent(sent);
        EXPECT_TRUE(WaitForMode(shown)) << command << Text(kModeCell);
    }
};

TEST_F(TrayTest, EveryCommandForTheModeReachesTheServiceAndIsShown) {
    Start({"totals 0 0"});
    Choose(435, kBlockAll, "Block All");
    Choose(433, kAllowAll, "Allow All");
    Choose(431, kNormal, "Normal");
    const std::string minutes[] = {"5", "10", "15", "30", "60", "120"};
    for (int i = 0; i < 6; ++i) Choose(850 + i, kAllowAll, "Allow All, " + minutes[i] + " min");
    for (int i = 0; i < 6; ++i) Choose(856 + i, kBlockAll, "Block All, " + minutes[i] + " min");
    Choose(431, kNormal, "Normal");
}

TEST_F(TrayTest, MenuOpensByARightClickAndTheIconBringsTheWindowBack) {
    Start({});
    // By its buttons, by Windows' own menu and by closing.
    const std::function<void()> ways[] = {[this] { Command(kMinimiseButton); }, [this] { Command(kCloseButton); },
                                          [this] { ::PostMessageA(m_window, WM_SYSCOMMAND, SC_MINIMIZE, 0); },
                                          [this] { ::PostMessageA(m_window, WM_SYSCOMMAND, SC_CLOSE, 0); },
                                          [this] { ::PostMessageA(m_window, WM_CLOSE, 0, 0); }};
    // A left click with its default command, the commands themselves, and a second start.
    const std::function<void()> returns[] = {
        [this] { Click(WM_LBUTTONUP); }, [this] { Command(409); }, [this] { Command(kApplicationsPage); },
        [this] { EXPECT_EQ(RunningProgram(Quoted(m_program)).WaitForEnd(), 0); }, [this] { Command(463); }};
    for (std::size_t i = 0; i < std::size(ways); ++i) {
        ways[i]();
        ASSERT_TRUE(WaitForVisible(false)) << i;
        for (const bool isAgain : {false, true}) {
            Click(WM_RBUTTONUP);
            ASSERT_TRUE(WaitUntil([this] { return IsMenuOpen(); })) << isAgain;
            ::PostMessageA(m_window, WM_CANCELMODE, 0, 0);
            ASSERT_TRUE(WaitUntil([this] { return !IsMenuOpen(); }));
        }
        EXPECT_FALSE(::IsWindowVisible(m_window));
        returns[i]();
        ASSERT_TRUE(WaitForVisible(true)) << i;
    }
    // Not while a dialog is open, which would stay behind alone.
    Command(kAboutCommand);
    const HWND about = NextWindow("About");
    ::PostMessageA(m_window, WM_CLOSE, 0, 0);
    ExpectAnswers();
    EXPECT_TRUE(::IsWindowVisible(m_window));
    Answer(about, IDOK);
    // Only this command ends the program, from the icon as well.
    Hide();
    Leave();
}

TEST_F(TrayTest, HiddenPageSleepsAndComesBackFresh) {
    Start({"process 900077 C:\\Windows\\Aurora.exe",
           "connection ESTAB-OUT 10.1.2.3:49152 93.184.216.34:443 900077 0 0"});
    Ask(m_window, WM_COMMAND, kConnectionsPage);
    ASSERT_TRUE(WaitForRecords("PID", 1));  // each reading asks for the process once
    for (const bool isMinimised : {false, true}) {
        if (isMinimised) {
            ::ShowWindow(m_window, SW_MINIMIZE);
            ASSERT_TRUE(WaitUntil([&] { return ::IsIconic(m_window) != FALSE; }));
        } else {
            Hide();
        }
        // The notices are fetched each second: by the fourth answer the page would have read twice more.
        const std::size_t fetched = m_service->Journal("TRAY").size();
        ASSERT_TRUE(WaitForRecords("TRAY", fetched + 1));  // what was under way when it was hidden is over
        const std::size_t read = m_service->Journal("PID").size();
        ASSERT_TRUE(WaitForRecords("TRAY", fetched + 6));
        EXPECT_EQ(m_service->Journal("PID").size(), read) << isMinimised;
        Command(409);
        EXPECT_TRUE(WaitForRecords("PID", read + 1)) << isMinimised;
    }
}

TEST_F(TrayTest, CanBeSizedByItsCornerAgainWhenItIsBack) {
    Start({});
    const auto hasSizingFrame = [this] { return (::GetWindowLongPtrA(m_window, GWL_STYLE) & WS_THICKFRAME) != 0; };
    RECT place{};
    ::GetWindowRect(m_window, &place);
    ::SetCursorPos(place.right - 4, place.bottom - 4);
    ASSERT_TRUE(WaitUntil(hasSizingFrame));
    ::SetCursorPos(place.left + 4, place.top + 4);
    ASSERT_TRUE(WaitUntil([&] { return !hasSizingFrame(); }));
    Hide();
    ::SetCursorPos(place.right - 4, place.bottom - 4);
    Command(kConnectionsPage);
    EXPECT_TRUE(WaitUntil(hasSizingFrame));
    ::SetCursorPos(place.left + 4, place.top + 4);
}

TEST_F(TrayTest, NoticesAreShownOneAfterTheOther) {
    // Two words of the service, and one that is a text like any other.
    Start({"notice ATTACK", "notice REFRESH", "notice Refresh|", "wait-for-records COMMAND 4",
           "notice Port scan| https://www.brennvar.example/x ", "wait-for-records COMMAND 5",
           "notice Tool|C:\\Windows\\x.exe", "wait-for-records COMMAND 6", "notice " + std::string(4000, 'W')});
    EXPECT_TRUE(WaitForBalloon("Brennvar Personal Firewall\nRefresh"));
    const HWND balloon = Balloon();
    RECT plain{}, linked{}, place{}, area{};
    ::GetWindowRect(balloon, &plain);
    SendToService();
    EXPECT_TRUE(WaitForBalloon("Brennvar Personal Firewall\nPort scan"));
    EXPECT_EQ(Balloon(), balloon) << "the same balloon";
    ::GetWindowRect(balloon, &linked);
    EXPECT_GT(linked.bottom - linked.top, plain.bottom - plain.top) << "it has a link";
    SendToService();
    EXPECT_TRUE(WaitForBalloon("Brennvar Personal Firewall\nTool"));
    ::GetWindowRect(balloon, &place);
    EXPECT_EQ(place.bottom - place.top, plain.bottom - plain.top) << "no link to a program";
    SendToService();
    EXPECT_TRUE(WaitForBalloon("Brennvar Personal Firewall\n" + std::string(600, 'W') + "..."));
    ::GetWindowRect(balloon, &place);
    ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
    ::UnionRect(&linked, &place, &area);
    EXPECT_TRUE(::EqualRect(&linked, &area)) << place.left << " " << place.top << " " << place.right;
    EXPECT_LT(place.right - place.left, 420);
}

TEST_F(TrayTest, NewUserIsWelcomed) {
    SetWelcomed(0);
    StartInterface();
    EXPECT_TRUE(
        WaitForBalloon("Welcome to Brennvar Personal Firewall\n"
                       "Welcome to Brennvar Personal Firewall. It protects you against unauthorized incoming and "
                       "outgoing network traffic. With its intuitive interface, you have complete overview of your "
                       "network communication and security events on your PC."));
}

TEST_F(TrayTest, ComesBackWithTheTaskBarAndLetsWindowsEnd) {
    Start({});
    ::SendNotifyMessageA(HWND_BROADCAST, ::RegisterWindowMessageA("TaskbarCreated"), 0, 0);
    ExpectAnswers();
    Hide();  // there is an icon
    EXPECT_EQ(Ask(m_window, WM_QUERYENDSESSION), TRUE);
    EXPECT_EQ(Ask(m_window, WM_ENDSESSION, FALSE), 0);  // somebody else has refused
    ExpectAnswers();
    EXPECT_TRUE(m_interface->IsRunning());
    ::PostMessageA(m_window, WM_ENDSESSION, TRUE, 0);
    ExpectEnd();
    EXPECT_EQ(Sent(), Lines()) << "the service protects until the end";
}

class TimedModeTest : public TrayTest {
protected:
    void SetUp() override {
        TrayTest::SetUp();
        m_program = BuiltProgram(R"(tests\system\clocked_product.exe)");
    }
    [[nodiscard]] std::size_t Jumps() const { return ProductFixture::Sent().size() - Sent().size(); }
    // The clock's timer tells the service of each jump. Timer 1 has ticked at least once between two of them.
    [[nodiscard]] bool MoveAndTick(std::int64_t minutes) {
        for (const std::int64_t step : {minutes, 1LL, 1LL}) {
            const std::size_t jumps = Jumps();
            m_offset.Set(m_offset.Get() + step * kMinute);
            if (!WaitUntil([&] { return Jumps() > jumps; })) return false;
        }
        return true;
    }
    TestClockOffset m_offset;
};

TEST_F(TimedModeTest, TrafficKeepsATimedModeUntilTheFirstIdleSecond) {
    // Three commands of the start, three of the mode, three jumps: the tenth is the test's.
    Start({"rate 1000 0", "wait-for-records COMMAND 10", "rate 0 0"});
    Choose(850, kAllowAll, "Allow All, 5 min");
    ASSERT_TRUE(MoveAndTick(6));
    EXPECT_EQ(Sent(), m_sent) << "it is over, but traffic flows";
    EXPECT_TRUE(WaitForMode("Allow All, 0 min"));
    SendToService();
    ExpectSent({"COMMAND 5596 0:11", kNormal[0], kNormal[1]});
    EXPECT_TRUE(WaitForMode("Normal"));
}

}  // namespace
}  // namespace brennvar::test
