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

TEST_F(StatisticsPageTest, TellsPeakAndAverageOfTheGraphs) {
    statistics.Tick(TrafficIncrease{9'999, 0}, 1000);  // the first one stands for no second
    statistics.Tick(TrafficIncrease{2048, 0}, 1000);
    statistics.Tick(TrafficIncrease{1024, 0}, 1000);
    EXPECT_EQ(TextOfWindow(page.Item(IDC_STATISTICS_IN_GRAPH)),
              "Incoming Traffic History: peak 2.0 KB/s, average 1.5 KB/s");
}

TEST_F(StatisticsPageTest, CardsOpenThePageThatTellsMore) {
    struct Row {
        int button, command;
        std::string_view says;
    };
    const Row rows[] = {{IDC_STATISTICS_OPEN_IN, IDM_CONNECTIONS, "Incoming: -, Total: 0 B"},
                        {IDC_STATISTICS_OPEN_OUT, IDM_CONNECTIONS, "Outgoing: -, Total: 0 B"},
                        {IDC_STATISTICS_OPEN_CONNECTIONS, IDM_CONNECTIONS, "Connections: 12, listening: 3"},
                        {IDC_STATISTICS_OPEN_ATTACKS, IDM_TRAFFIC_LOG, "Attacks: 0, since the start"}};
    statistics.SetConnections(ConnectionCounts{.connections = 12, .listeners = 3});
    for (const Row& row : rows) {
        const HWND button = page.Item(row.button);
        EXPECT_EQ(TextOfWindow(button), row.says);
        EXPECT_NE(::GetWindowLongPtrA(button, GWL_STYLE) & WS_TABSTOP, 0);
        ::SendMessageA(button, BM_CLICK, 0, 0);
        MSG message{};
        ASSERT_TRUE(::PeekMessageA(&message, parent, WM_COMMAND, WM_COMMAND, PM_REMOVE)) << row.says;
        EXPECT_EQ(message.wParam, static_cast<WPARAM>(row.command)) << row.says;
    }
}

TEST_F(StatisticsPageTest, StandsOnTheGridInTheWindowsFirstAndLeastSize) {
    struct Row {
        SIZE page;
        int button;  // its card's width
        RECT graph, programs;
    };
    // The page's margins are 16, and its content begins at 72.
    const Row rows[] = {{{815, 600}, 127, {16, 160, 403, 336}, {280, 344, 535, 584}},
                        {{635, 480}, 94, {16, 160, 313, 280}, {193, 288, 441, 464}}};
    for (const Row& row : rows) {
        page.Place({0, 0, row.page.cx, row.page.cy});
        const auto place = [&](int id) {
            RECT rect{};
            ::GetWindowRect(page.Item(id), &rect);
            ::MapWindowPoints(nullptr, page.Window(), reinterpret_cast<POINT*>(&rect), 2);
            return rect;
        };
        const auto same = [](const RECT& one, const RECT& other) { return ::EqualRect(&one, &other) != FALSE; };
        const RECT card = place(IDC_STATISTICS_OPEN_IN);
        EXPECT_EQ(card.right - card.left, row.button);
        EXPECT_EQ(card.bottom - card.top, 80);
        EXPECT_EQ(place(IDC_STATISTICS_OPEN_ATTACKS).right, row.page.cx - 16);
        EXPECT_TRUE(same(place(IDC_STATISTICS_IN_GRAPH), row.graph)) << row.page.cx;
        EXPECT_TRUE(same(place(IDC_STATISTICS_PROGRAMS), row.programs)) << row.page.cx;
        EXPECT_EQ(place(IDC_STATISTICS_NOTICES).right, row.page.cx - 16);
    }
}

TEST_F(StatisticsPageTest, ProgramsKeepTheirSelectionWhenTheyChangePlaces) {
    const auto use = [](const std::string& name, std::uint64_t in, std::uint64_t out) {
        return Statistics::ProgramUse{.name = name, .sum = {.path = "c:\\" + name, .bytesIn = in, .bytesOut = out}};
    };
    const auto show = [this](std::vector<Statistics::ProgramUse> programs) {
        statistics.SetPrograms(std::move(programs));
        statistics.Tick(std::nullopt, 1000);
    };
    const HWND list = page.Item(IDC_STATISTICS_PROGRAMS);
    const auto cell = [&](int row, int column) {
        ::SendMessageA(list, kTreeQueryCell, static_cast<WPARAM>(row), column);
        return TextOfWindow(list);
    };
    const auto isSelected = [&](int row) {
        return ::SendMessageA(list, kTreeIsRowSelected, static_cast<WPARAM>(row), 0) == 1;
    };
    show({use("a", 2048, 1), use("b", 1024, 0)});
    EXPECT_EQ(cell(0, 0) + "|" + cell(0, 1) + "|" + cell(0, 2), "a|2.0 KB|1 B");
    ::SendMessageA(list, kTreeSelectRow, 0, 0);
    show({use("c", 9999, 0), use("b", 4096, 0), use("a", 2048, 1)});
    EXPECT_EQ(cell(1, 1), "4.0 KB");
    EXPECT_TRUE(isSelected(2) && !isSelected(0));
    show({use("c", 9999, 0)});
    EXPECT_FALSE(isSelected(0));
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
