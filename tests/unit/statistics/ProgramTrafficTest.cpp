#include "statistics/ProgramTraffic.h"

#include <gtest/gtest.h>

#include "support/ConnectionEntries.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;
using test::Connection;

class ProgramTrafficTest : public testing::Test {
protected:
    ProgramTraffic traffic;
    std::chrono::milliseconds now{};

    // Two seconds after the last one.
    void Count(const std::vector<ConnectionEntry>& connections, std::chrono::milliseconds after = 2s) {
        traffic.Count(connections, now += after);
    }
    // Those that are asked for, by their identifiers; each gets the program with its number.
    std::string Name() {
        std::string asked;
        for (const ProgramTraffic::Process& process : traffic.NotNamed()) {
            asked += std::to_string(process.id) + " ";
            traffic.Name(process, "C:\\P" + std::to_string(process.id));
        }
        return asked;
    }
    [[nodiscard]] std::string Most(std::size_t count = 9) const {
        std::string text;
        for (const ProgramSum& sum : traffic.Most(count)) {
            text += sum.path + "=" + std::to_string(sum.bytesIn) + "/" + std::to_string(sum.bytesOut) + " ";
        }
        return text;
    }
};

TEST_F(ProgramTrafficTest, KeepsWhatConnectionsHadCountedWhenTheyWent) {
    Count({Connection({.localPort = 1, .processId = 7, .in = 100, .out = 10}),
           Connection({.localPort = 2, .processId = 7, .in = 50, .out = 5}),
           Connection({.localPort = 3, .processId = 8, .in = 20, .out = 180}),
           Connection({.localPort = 4, .processId = 9})});
    EXPECT_EQ(Most(), "=170/195 ") << "nobody has told whose they are";
    EXPECT_EQ(Name(), "7 8 9 ");
    EXPECT_EQ(Most(), "c:\\p8=20/180 c:\\p7=150/15 ");
    EXPECT_EQ(Most(1), "c:\\p8=20/180 ");
    // One grows in another state, one has gone, one has come.
    Count({Connection({.state = 7, .localPort = 1, .processId = 7, .in = 160, .out = 10}),
           Connection({.localPort = 3, .remotePort = 444, .processId = 7, .in = 1, .out = 1}),
           Connection({.localPort = 3, .processId = 8, .in = 20, .out = 180})});
    EXPECT_EQ(Name(), "");
    EXPECT_EQ(Most(), "c:\\p7=211/16 c:\\p8=20/180 ");
}

TEST_F(ProgramTrafficTest, TakesAnIdentifierThatComesBackForAnotherProcess) {
    Count({Connection({.localPort = 1, .processId = 7, .in = 100})});
    const std::vector<ProgramTraffic::Process> first = traffic.NotNamed();
    traffic.Name(first[0], "C:\\Old");
    Count({Connection({.localPort = 2, .processId = 7, .in = 5})});
    traffic.Name(first[0], "C:\\Old");  // came late
    ASSERT_EQ(traffic.NotNamed().size(), 1U);
    EXPECT_EQ(Most(), "c:\\old=100/0 =5/0 ");
    traffic.Name(traffic.NotNamed()[0], "c:\\NEW");
    Count({Connection({.localPort = 2, .processId = 7, .in = 6}), Connection({.localPort = 3, .processId = 8})});
    traffic.Name(traffic.NotNamed()[0], std::nullopt);  // the service does not know it
    EXPECT_TRUE(traffic.NotNamed().empty());
    EXPECT_EQ(Most(), "c:\\old=100/0 c:\\new=6/0 ");
}

TEST_F(ProgramTrafficTest, CountersStartOverAndConnectionsBeginAnewAtTheSameEnds) {
    const struct {
        std::string_view what;
        std::vector<std::uint32_t> before, now;  // of connections with the same ends
        std::chrono::milliseconds after;
        std::uint64_t expected;
    } rows[] = {
        {"at the limit", {0xFFFFFFFF}, {249'999'999}, 2s, 0xFFFFFFFF + 250'000'000ULL},
        {"one more: another connection", {0xFFFFFFFE}, {249'999'999}, 2s, 0xFFFFFFFE + 249'999'999ULL},
        {"another connection", {1000}, {400}, 2s, 1400},
        {"less after a long pause: another connection", {1000}, {400}, 60s, 1400},
        {"more after a long pause", {400}, {1000}, 60s, 1000},
        {"one of two has gone", {100, 50}, {120}, 2s, 150},
        {"one more has come", {100}, {100, 30}, 2s, 130},
    };
    for (const auto& row : rows) {
        traffic = {};
        const auto count = [&](const std::vector<std::uint32_t>& counters) {
            std::vector<ConnectionEntry> entries;
            for (const std::uint32_t in : counters) entries.push_back(Connection({.in = in}));
            Count(entries, row.after);
        };
        count(row.before);
        count(row.now);
        EXPECT_EQ(traffic.Most(1)[0].bytesIn, row.expected) << row.what;
    }
}

TEST_F(ProgramTrafficTest, RemembersTheLargestOfVeryManyPrograms) {
    for (std::uint32_t id = 1; id <= ProgramTraffic::kMostPrograms + 2; ++id) {
        // The third one is the smallest.
        Count({Connection({.processId = id, .in = id == 3 ? 1 : 1000 + id})});
        (void)Name();
    }
    Count({});
    const std::vector<ProgramSum> sums = traffic.Most(10'000);
    EXPECT_EQ(sums.size(), ProgramTraffic::kMostPrograms);
    EXPECT_EQ(sums.front().path, "c:\\p1026");
    EXPECT_EQ(sums.back().path, "c:\\p2") << "the third and the first are forgotten";
}

}  // namespace
}  // namespace brennvar
