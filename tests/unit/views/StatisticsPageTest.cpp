#include "views/StatisticsPage_win.h"

#include <gtest/gtest.h>

#include "base/LocalTime_win.h"
#include "config/ResourceIds.h"
#include "support/DrawnTexts_win.h"
#include "support/FakeClock.h"
#include "tree/TreeMessages_win.h"
#include "ui/ChildControls_win.h"
#include "ui/OwnMessages_win.h"

namespace brennvar {
namespace {

class StatisticsPageTest : public testing::Test {
protected:
    CFonts fonts;
    Language language{nullptr};
    Statistics statistics;
    test::FakeClock clock;
    HWND parent = ::CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 800, 500, nullptr, nullptr,
                                    ::GetModuleHandleA(nullptr), nullptr);
    StatisticsPage page{fonts, language, {"title", "line"}, statistics, clock};

    void SetUp() override {
        ASSERT_TRUE(page.Create(parent));
        page.Place({0, 0, 800, 500});
        page.Show();
    }
    ~StatisticsPageTest() override { EndWindow(parent); }

    [[nodiscard]] std::string Text(int id) const { return test::DrawnText(page.Window(), id).value_or("none"); }
    [[nodiscard]] bool IsGraphStale() const {
        return ::GetUpdateRect(page.Item(IDC_STATISTICS_IN_GRAPH), nullptr, FALSE) != FALSE;
    }
    void PaintAll() const {
        ::RedrawWindow(parent, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    }
    // One tick with traffic, seen or not.
    void Tick() {
        PaintAll();
        statistics.Tick(TrafficIncrease{1024, 0}, 1000);
    }
};

TEST_F(StatisticsPageTest, DoesNothingWhileItIsNotSeen) {
    const auto expectSeen = [this](bool isSeen, const std::string& total) {
        Tick();
        EXPECT_EQ(IsGraphStale(), isSeen);
        EXPECT_EQ(Text(IDC_STATISTICS_IN + 2), "Total: " + total);
    };
    expectSeen(true, "1.0 KB");
    page.Hide();
    expectSeen(false, "1.0 KB");
    page.Show();
    EXPECT_EQ(Text(IDC_STATISTICS_IN + 2), "Total: 2.0 KB");
    EXPECT_EQ(statistics.Incoming().Lines()[0].samples.size(), 3U);  // none is missing
}

TEST_F(StatisticsPageTest, ShowsTheModeAndItsEnd) {
    const auto text = [this] { return TextOfWindow(page.Item(IDC_STATISTICS_MODE)); };
    EXPECT_EQ(text(), "Protection mode: Normal. Rules decide, unknown programs are asked about");
    const FileTime until = 133'500'000'000'000'000;
    clock.now = until - 61 * kFileTimePerSecond;
    statistics.SetMode({.mode = ProtectionMode::BlockAll, .until = until});
    const std::string end = "until " + FormatTimeOfDay(until, TimeOfDay::Minutes) + ", ";
    EXPECT_EQ(text(), "Protection mode: Block All. All traffic is blocked, " + end + "2 min left");
    // The second after is the next tick's.
    clock.now += kFileTimePerSecond;
    Tick();
    EXPECT_EQ(text(), "Protection mode: Block All. All traffic is blocked, " + end + "1 min left");
}

TEST_F(StatisticsPageTest, LatestNoticeStandsOnTopUnlessTheUserReadsFurtherDown) {
    const HWND list = page.Item(IDC_STATISTICS_NOTICES);
    const auto ask = [&](UINT message, int row = 0) {
        return static_cast<int>(::SendMessageA(list, message, static_cast<WPARAM>(row), 0));
    };
    const auto firstText = [&] {
        ::SendMessageA(list, kTreeQueryCell, static_cast<WPARAM>(ask(kTreeGetFirstVisibleRow)), 1);
        return TextOfWindow(list);
    };
    const auto add = [&](int count) {
        while (count-- > 0)
            statistics.AddNotice(std::string("n").append(std::to_string(statistics.NoticeCount() + 1)), 1);
    };
    add(30);
    EXPECT_EQ(firstText(), "n30");
    ask(kTreeSelectRow, 4);  // n26
    ::SendMessageA(list, WM_VSCROLL, SB_LINEDOWN, 0);
    const std::string read = firstText();
    add(1);
    EXPECT_EQ(firstText(), read);
    EXPECT_EQ(ask(kTreeIsRowSelected, 5), 1);
    add(100);
    EXPECT_EQ(ask(kTreeGetRowCount), 50);
    EXPECT_EQ(ask(kTreeGetSelectedCount), 0);
}

}  // namespace
}  // namespace brennvar
