#include "views/ConnectionOrder.h"

#include <gtest/gtest.h>

#include "support/ConnectionEntries.h"

namespace brennvar {
namespace {

using test::Connection;
using test::Listener;
using Column = ConnectionColumn;

class ConnectionOrderTest : public testing::Test {
protected:
    std::shared_ptr<const ConnectionTable> table;
    ConnectionWish wish;

    void SetUp() override {
        const ProgramSource programs{
            .pathOf = [](std::uint32_t id) -> std::optional<std::string> {
                constexpr const char* kPaths[] = {"", R"(c:\z\first.exe)", R"(c:\a\second.exe)",
                                                  R"(c:\z\first.exe)"};
                return kPaths[id];
            },
            .descriptionOf = [](const std::string& path) { return path.ends_with("second.exe") ? "alpha" : ""; },
            .noProcess = "no process"};
        using std::chrono::seconds;
        const auto entry = [](std::uint16_t port, std::uint32_t state, std::string_view local,
                              std::string_view remote, std::uint32_t id, std::uint32_t in, std::uint32_t out) {
            return Connection({.state = state,
                               .local = local,
                               .localPort = port,
                               .remote = remote,
                               .remotePort = 443,
                               .processId = id,
                               .in = in,
                               .out = out});
        };
        const ConnectionTable before({{entry(1, 3, "10.0.0.1", "9.9.9.9", 3, 0, 0)}, {Listener(6, 9, 2)}},
                                     seconds(10), programs, nullptr, true);
        table = std::make_shared<const ConnectionTable>(
            DriverTables{
                {entry(1, 3, "10.0.0.1", "9.9.9.9", 3, 4000, 0), entry(2, 4, "10.0.0.1", "200.1.1.1", 2, 50, 6000),
                 entry(3, 4, "9.0.0.1", "8.8.8.8", 1, 500, 10), entry(4, 7, "10.0.0.1", "100.1.1.1", 0, 60, 7)},
                {Listener(6, 9, 2), Listener(17, 5, 1)}},
            seconds(12), programs, &before, false);
    }
    // The local ports of the rows in order; in front of each group its name, and how many rows it says it has.
    [[nodiscard]] std::string Arranged() const {
        const ArrangedConnections arranged = ArrangeConnections(table, wish);
        EXPECT_EQ(arranged.places.size(), table->Rows().size());
        std::string text;
        std::size_t group = 0;
        for (std::uint32_t place = 0; place < arranged.rows.size(); ++place) {
            if (group < arranged.groups.size() && arranged.groups[group].first == place) {
                const ConnectionGroup& found = arranged.groups[group];
                EXPECT_EQ(arranged.groupOfProgram[found.program], group);
                text += table->Programs()[found.program].name + ":" + std::to_string(found.count) + " ";
                ++group;
            }
            EXPECT_EQ(arranged.places[arranged.rows[place]], place);
            text += std::to_string(table->Row(arranged.rows[place]).localPort) + " ";
        }
        EXPECT_EQ(group, arranged.groups.size());
        return text;
    }
    [[nodiscard]] std::string SortedBy(Column column, bool isAscending = true) {
        wish.order.column = static_cast<int>(column);
        wish.order.isAscending = isAscending;
        return Arranged();
    }
};

TEST_F(ConnectionOrderTest, SortsByWhatAColumnMeansAndKeepsEqualRowsAsTheyWereRead) {
    EXPECT_EQ(Arranged(), "1 3 2 4 9 5 ");
    EXPECT_EQ(SortedBy(Column::Process), "2 9 1 3 5 4 ") << "alpha, first.exe, no process";
    EXPECT_EQ(SortedBy(Column::Address), "5 9 3 1 2 4 ") << "by numbers: 9 before 10, ports 1, 2, 4";
    EXPECT_EQ(SortedBy(Column::State, false), "5 9 4 3 2 1 ");
    EXPECT_EQ(SortedBy(Column::Received), "9 5 2 4 3 1 ") << "by numbers, not by texts";
    EXPECT_EQ(SortedBy(Column::Sent, false), "2 3 4 1 9 5 ");
    EXPECT_EQ(SortedBy(Column::RateIn, false), "1 3 2 4 9 5 ") << "only one has been there before";
    EXPECT_EQ(SortedBy(Column::RateOut, false), "1 3 2 4 9 5 ");
    EXPECT_EQ(SortedBy(Column::Age, false), "1 9 3 2 4 5 ");
    EXPECT_EQ(SortedBy(Column::Path), "4 2 9 1 3 5 ");
    EXPECT_EQ(SortedBy(Column::ProcessId), "4 3 5 2 9 1 ");
}

TEST_F(ConnectionOrderTest, FindsWhatCellsSayAndNothingBetweenThem) {
    const std::pair<std::string_view, std::string_view> rows[] = {
        {"SECOND", "2 9 "},                                            // in the path
        {"Alpha", "2 9 "},                                             // in the name
        {"no process", "4 "},                                          // what has none
        {"estab-", "1 3 2 "},                                          // the state
        {"listen", "9 5 "},   {"<- 9.9", "1 "},                        // with its arrow
        {":443", "1 3 2 4 "}, {"0.0.0.0:5", "5 "}, {"3", "1 3 2 4 "},  // port 443, process 3
        {"4430", ""},                                                  // the port and the process of the last one
        {"alphac:", ""}};                                              // the name and the path
    for (const auto& [searched, expected] : rows) {
        wish.order.searched = searched;
        EXPECT_EQ(Arranged(), expected) << searched;
    }
    wish.filter = ConnectionFilter::Established;
    wish.order.searched = {};
    EXPECT_EQ(Arranged(), "1 3 2 ");
    wish.filter = ConnectionFilter::Listening;
    wish.order.searched = "udp";
    EXPECT_EQ(Arranged(), "5 ");
    EXPECT_EQ(ArrangeConnections(table, wish).filtered, 2U) << "without the search";
    wish.filter = ConnectionFilter::All;
    wish.order.searched = "EXE";
    EXPECT_EQ(SortedBy(Column::Path, false), "1 3 5 2 9 ") << "and sorts what it has found";
}

TEST_F(ConnectionOrderTest, GroupsByProgramWhateverItsProcesses) {
    wish.isGrouped = true;
    EXPECT_EQ(Arranged(), "alpha:2 2 9 first.exe:3 1 3 5 no process:1 4 ");
    EXPECT_EQ(SortedBy(Column::Received, false), "first.exe:3 1 3 5 no process:1 4 alpha:2 2 9 ")
        << "groups and members";
    EXPECT_EQ(SortedBy(Column::Address), "no process:1 4 alpha:2 9 2 first.exe:3 5 3 1 ")
        << "groups by the number of their rows";
    EXPECT_EQ(SortedBy(Column::Process, false), "no process:1 4 first.exe:3 1 3 5 alpha:2 2 9 ");
    const ArrangedConnections arranged = ArrangeConnections(table, wish);
    const ConnectionGroup& first = arranged.groups[1];
    EXPECT_TRUE(first.hasSeveralProcesses);
    EXPECT_EQ(first.bytesIn, 4500U);
    EXPECT_EQ(first.bytesOut, 10U);
    EXPECT_EQ(first.rateIn, 2000U);
    EXPECT_EQ(first.age, 2U);
    EXPECT_TRUE(first.isOlder);
    wish.order.searched = "tcp";
    EXPECT_EQ(Arranged(), "alpha:1 9 ") << "groups with what was found";
}

}  // namespace
}  // namespace brennvar
