#include "views/ConnectionTable.h"

#include <gtest/gtest.h>

#include "support/ConnectionEntries.h"
#include "views/ConnectionTexts.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;
using test::Connection;
using test::Listener;

class ConnectionTableTest : public testing::Test {
protected:
    std::unordered_map<std::uint32_t, std::string> paths = {{1, R"(C:\Tools\A.exe)"}, {2, R"(c:\tools\b.exe)"}};
    std::string asked;
    std::shared_ptr<const ConnectionTable> table;
    std::chrono::milliseconds now{100'000};

    // The next reading, so much later.
    void Read(const DriverTables& tables, std::chrono::milliseconds after = 2s, bool isFirst = false) {
        now += after;
        const ProgramSource source{.pathOf = [this](std::uint32_t id) -> std::optional<std::string> {
                                       asked += std::to_string(id);
                                       const auto path = paths.find(id);
                                       if (path == paths.end()) return std::nullopt;
                                       return path->second;
                                   },
                                   .descriptionOf =
                                       [](const std::string& path) {
                                           return path.ends_with("b.exe") ? std::string(41, 'B') : std::string();
                                       },
                                   .noProcess = "no process"};
        const auto before = table;
        table = std::make_shared<const ConnectionTable>(tables, now, source, before.get(), isFirst);
    }
    // The rows as they are read: local port, "+" when new, "-" when gone, and the age in brackets.
    [[nodiscard]] std::string Rows() const {
        std::string text;
        for (const std::uint32_t number : table->OrderAsRead()) {
            const ConnectionRow& row = table->Row(number);
            const char* const mark = row.mark == RowMark::New ? "+" : row.mark == RowMark::Gone ? "-" : "";
            text += std::to_string(row.localPort) + mark + "(" + FormatAge(table->AgeOf(row), row.isOlder) + ") ";
        }
        return text;
    }
    [[nodiscard]] std::string Rates(std::size_t row = 0) const {
        return std::to_string(table->Rows()[row].rateIn) + "/" + std::to_string(table->Rows()[row].rateOut);
    }
};

TEST_F(ConnectionTableTest, StatesAndProtocolsDecideArrowAndText) {
    const std::pair<std::uint32_t, std::string_view> states[] = {
        {0, "-> ?"},          {1, "-> SYN-SENT"},   {2, "<- SYN_RCVD"},   {3, "<- ESTAB-IN"},
        {4, "-> ESTAB-OUT"},  {5, "-> FIN-WAIT-1"}, {6, "-> FIN-WAIT-2"}, {7, "-> TIME-WAIT"},
        {8, "-> CLOSE-WAIT"}, {9, "-> LAST-ACK"},   {10, "-> CLOSED"},    {11, "-> ?"},
        {12, "-> ?"},         {14, "-> ?"},         {0x104, "-> ?"},      {0xFFFFFFFF, "-> ?"}};
    const std::pair<std::uint32_t, std::string_view> protocols[] = {
        {6, "LISTEN-TCP"}, {17, "LISTEN-UDP"}, {0, "LISTEN-IP"}, {47, "LISTEN-?"}, {0xFFFFFFFF, "LISTEN-?"}};
    for (const auto& [state, expected] : states) {
        Read({{Connection({.state = state})}, {}}, 2s, true);
        const ConnectionRow& row = table->Rows().at(0);
        std::string address;
        AppendConnectionAddress(address, row);
        EXPECT_NE(address.find(expected.substr(0, 2)), std::string::npos) << state;
        EXPECT_EQ(ConnectionStateText(row.state), expected.substr(3)) << state;
        EXPECT_FALSE(row.IsListener()) << state;
    }
    for (const auto& [protocol, expected] : protocols) {
        Read({{}, {Listener(protocol)}}, 2s, true);
        EXPECT_EQ(ConnectionStateText(table->Rows().at(0).state), expected);
    }
    EXPECT_EQ(ConnectionStateDetailsText(2), "SYN-RCVD");  // spelled differently in the details
    for (const std::uint32_t none : {15U, 0xFFFFFFFFU}) EXPECT_EQ(ConnectionStateDetailsText(none), "");
}

TEST_F(ConnectionTableTest, MarksWhatCameAndWentUntilTheNextReading) {
    Read({{Connection({.localPort = 20}), Connection({.localPort = 40})}, {Listener(6, 80), Listener(17, 53)}});
    EXPECT_EQ(Rows(), "20(>0:00) 40(>0:00) 80(>0:00) 53(>0:00) ") << "nothing is new in the first reading";
    Read({{Connection({.localPort = 10}), Connection({.localPort = 20}), Connection({.localPort = 30})},
          {Listener(17, 53)}});
    EXPECT_EQ(Rows(), "10+(0:00) 20(>0:02) 30+(0:00) 40-(>0:02) 80-(>0:02) 53(>0:02) ");
    EXPECT_EQ(table->Summary().connections, 3U) << "what has gone is not counted";
    EXPECT_EQ(table->Summary().listeners, 1U);
    // Another state is the same connection; a listener on another protocol's port is another listener.
    Read({{Connection({.localPort = 10}), Connection({.state = 7, .localPort = 20})}, {Listener(6, 53)}});
    EXPECT_EQ(Rows(), "10(0:02) 30-(0:02) 20(>0:04) 53+(0:00) 53-(>0:04) ");
    // Nobody has looked for an hour.
    Read({{Connection({.localPort = 10}), Connection({.localPort = 11})}, {}}, 1h, true);
    EXPECT_EQ(Rows(), "10(1:00:02) 11(>0:00) ");
    Read({}, 2s);
    EXPECT_EQ(Rows(), "10-(1:00:04) 11-(>0:02) ");
    Read({}, 2s);
    EXPECT_EQ(Rows(), "");
    Read({{Connection({.localPort = 10})}, {}});
    EXPECT_EQ(Rows(), "10+(0:00) ") << "what comes back is new";
}

TEST_F(ConnectionTableTest, AnIdentifierWithAnotherProgramIsAnotherConnection) {
    Read({{Connection({.in = 100})}, {}});
    paths.erase(1);
    Read({{Connection({.in = 300})}, {}});
    EXPECT_EQ(Rows(), "50000(>0:02) ") << "a service that does not know it now changes nothing";
    EXPECT_EQ(Rates(), "100/0");
    paths[1] = R"(c:\tools\other.exe)";
    Read({{Connection({.in = 500})}, {}});
    EXPECT_EQ(Rows(), "50000+(0:00) ");
    EXPECT_EQ(Rates(), "0/0");
    // One without a program so far gets its first.
    Read({{Connection({.processId = 7})}, {}});
    paths[7] = R"(c:\tools\third.exe)";
    Read({{Connection({.processId = 7})}, {}});
    EXPECT_EQ(Rows(), "50000(0:02) ");
}

TEST_F(ConnectionTableTest, WhatStaysKeepsItsProgramWhileTheServiceIsAway) {
    const auto names = [this] {
        std::string text;
        for (const ConnectionRow& row : table->Rows()) text += table->ProgramOf(row).name + " ";
        return text;
    };
    Read({{Connection({.localPort = 1}), Connection({.localPort = 2})}, {Listener(6, 80), Listener(6, 81)}});
    const std::string b = std::string(37, 'B') + "... ";
    EXPECT_EQ(names(), "a.exe a.exe " + b + b);
    paths.clear();
    for (const char* const reading : {"the first", "the second", "the third"}) {
        // The ports 2 and 81 have gone after the first reading; 3 and 82 have come, of the same processes.
        Read({{Connection({.localPort = 1}), Connection({.localPort = 3})}, {Listener(6, 80), Listener(6, 82)}});
        EXPECT_TRUE(names().starts_with("a.exe no process " + b + "no process ")) << reading << ": " << names();
    }
    EXPECT_EQ(table->Summary().programs, 2U) << "the one that is known and the one that is not";
    EXPECT_EQ(table->Programs().size(), 3U) << "each once";
    EXPECT_EQ(table->PathOfProcess(1), R"(c:\tools\a.exe)");
}

TEST_F(ConnectionTableTest, MeasuresRatesAndSaysNothingWhereItCannot) {
    struct Row {
        std::uint32_t before, now;
        std::chrono::milliseconds elapsed;
        std::uint32_t expected;
    };
    const Row rows[] = {{100, 2100, 2s, 1000},
                        {0, 0xFFFFFFFF, 500ms, 0xFFFFFFFF},  // more than a number holds
                        {0xFFFFFF00, 0x100, 1s, 0x200},      // over 2^32
                        {4'000'000'000, 10, 2s, 0},          // begun anew: no gigabit line carries that
                        {0xFFFFFFFF, 125'000'000 - 1, 1s, 125'000'000},
                        {0xFFFFFFFF, 125'000'000, 1s, 0},
                        {5, 4, 2s, 0},
                        {5, 9, 0s, 0}};
    for (const Row& row : rows) EXPECT_EQ(RateBetween(row.before, row.now, row.elapsed), row.expected) << row.now;

    const auto read = [this](std::uint32_t in, std::uint32_t out, std::chrono::milliseconds after) {
        Read({{Connection({.in = in, .out = out})}, {}}, after);
        return Rates();
    };
    EXPECT_EQ(read(1000, 0, 2s), "0/0");
    EXPECT_EQ(read(3000, 500, 2s), "1000/250");
    // F5 soon afterwards: the last rates stay, and the next ones are measured over both times.
    EXPECT_EQ(read(3900, 500, 499ms), "1000/250");
    EXPECT_EQ(read(8000, 500, 2001ms), "2000/0");
    EXPECT_EQ(table->Summary().busiestRate, 2000U);
    EXPECT_EQ(table->Programs()[table->Summary().busiest].name, "a.exe");
    EXPECT_EQ(read(90'000, 500, 10'001ms), "0/0") << "not what flows now";
}

TEST_F(ConnectionTableTest, RowsThatStandTwiceAreToldApartAndHaveNoRates) {
    const auto twice = [](std::uint32_t in) { return Connection({.in = in}); };
    Read({{twice(10), twice(20), twice(30), Connection({.localPort = 60000})}, {Listener(47, 5), Listener(48, 5)}});
    std::vector<std::uint32_t> found;
    for (const ConnectionRow& row : table->Rows()) found.push_back(table->Find(KeyOf(row)));
    EXPECT_EQ(found, (std::vector<std::uint32_t>{0, 1, 2, 3, 4, 5}));
    // One goes, and its number belongs to no other.
    Read({{twice(10), twice(4'000'000), Connection({.localPort = 60000})}, {Listener(48, 5), Listener(47, 5)}});
    EXPECT_EQ(Rows(), "50000(>0:02) 50000(>0:02) 50000-(>0:02) 60000(>0:02) 5(>0:02) 5(>0:02) ");
    EXPECT_EQ(Rates(1), "0/0");
    ASSERT_EQ(table->Rows().size(), 6U);
    EXPECT_EQ(table->Find(KeyOf(table->Rows()[5])), 5U) << "the one that has gone";
    Read({{twice(5'000'000)}, {}});
    EXPECT_EQ(Rates(), "0/0") << "which of the two it was, nobody knows";
    Read({{twice(7'000'000)}, {}});
    EXPECT_EQ(Rates(), "1000000/0");
}

TEST_F(ConnectionTableTest, AHundredThousandEqualRowsAreToldApartInGoodTime) {
    Read({std::vector<ConnectionEntry>(100'000, Connection({})), {}});
    Read({std::vector<ConnectionEntry>(99'999, Connection({})), {}});
    EXPECT_EQ(table->Rows().back().mark, RowMark::Gone);
    EXPECT_EQ(table->Find(KeyOf(table->Rows().back())), 99'999U);
    EXPECT_EQ(table->Find(KeyOf(table->Row(50'000))), 50'000U);
}

}  // namespace
}  // namespace brennvar
