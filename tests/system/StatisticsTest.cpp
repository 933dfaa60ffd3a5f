// The Statistics page of the finished program against the stand-ins: what the driver and the service tell is what a
// user reads there.
#include <gtest/gtest.h>

#include "Product.h"
#include "config/ResourceIds.h"

namespace brennvar::test {
namespace {

class StatisticsTest : public ProductFixture {
protected:
    [[nodiscard]] int NoticeCount() const { return ListRowCount(Control(IDC_STATISTICS_NOTICES)); }
};

TEST_F(StatisticsTest, FirstPageShowsTrafficConnectionsAttacksAndNotices) {
    Start({"connection ESTAB-OUT 10.1.2.3:49152 93.184.216.34:443 4242 1 2", "listener tcp 0.0.0.0:135 4",
           "totals 4000000000 7", "rate 0 700000", "wait-for-records TRAY 1", "notice ATTACK",
           "notice The first one.| https://x", "notice ATTACK", "notice REFRESH", "notice The second one."});
    // What flowed before the program was started does not count.
    EXPECT_TRUE(WaitForText(IDC_STATISTICS_IN + 1, "0 B/s"));
    EXPECT_TRUE(WaitForText(IDC_STATISTICS_IN + 2, "Total: 0 B"));
    // How much of a second each tick measures differs; that it flows does not.
    EXPECT_TRUE(WaitUntil([&] { return Text(IDC_STATISTICS_OUT + 1).ends_with("KB/s"); }))
        << Text(IDC_STATISTICS_OUT + 1);
    EXPECT_TRUE(WaitUntil([&] { return Text(IDC_STATISTICS_OUT + 2).ends_with("MB"); }));
    EXPECT_TRUE(WaitForText(IDC_STATISTICS_CONNECTIONS + 1, "2"));
    EXPECT_TRUE(WaitForText(IDC_STATISTICS_ATTACKS + 1, "2"));
    EXPECT_EQ(Text(IDC_STATISTICS_MODE + 1), "Normal");
    EXPECT_TRUE(WaitForText(IDC_STATISTICS_IN_GRAPH, "Incoming Traffic History: 0 B/s"));
    EXPECT_TRUE(WaitForText(IDC_STATISTICS_ATTACK_GRAPH, "Attack History: 0"));

    ASSERT_TRUE(WaitUntil([&] { return NoticeCount() == 2; }));
    const auto rows = ListRows(Control(IDC_STATISTICS_NOTICES), 2, 10);
    EXPECT_EQ(rows[0][1], "The second one.");
    EXPECT_EQ(rows[1][1], "The first one.");
    EXPECT_EQ(rows[0][0].size(), std::string("12:34:56").size()) << rows[0][0];

    // The status line goes on counting, whatever page is shown.
    Command(kOptionsPage);
    EXPECT_TRUE(WaitForText(IDC_STATUS_CONNECTIONS, "Connections: 2"));
}

TEST_F(StatisticsTest, TellsWithoutDriverThatNothingIsKnown) {
    Start({}, "--no-driver");
    EXPECT_TRUE(WaitForText(IDC_STATISTICS_OUT_GRAPH, "Outgoing Traffic History: -"));
    EXPECT_EQ(Text(IDC_STATISTICS_OUT + 1), "-");
    EXPECT_EQ(Text(IDC_STATISTICS_CONNECTIONS + 1), "-");
}

}  // namespace
}  // namespace brennvar::test
