#include "commands/OptionGroup.h"

#include <gtest/gtest.h>

#include "support/FakeClock.h"
#include "support/FakePipe.h"
#include "support/RawBytes.h"

namespace brennvar {
namespace {

using test::RawBytes;

// Records as they go over the wire, with the offsets of their fields. One byte each is enough here.
RawBytes Value(char id, char value) {
    return test::ZerosWith(5596, {{0, "\x08"}, {5468, {&value, 1}}, {5592, {&id, 1}}});
}
RawBytes Text(char id, std::string_view text) {
    return test::ZerosWith(5596, {{0, "\x09"}, {5472, text}, {5592, {&id, 1}}});
}
RawBytes Event(std::string_view subject) {
    return test::ZerosWith(5596, {{0, "\x01"}, {4, "Options changed"}, {132, subject}});
}
RawBytes Bare(char code) {
    return test::ZerosWith(5596, {{0, {&code, 1}}});
}

TEST(OptionGroupTest, SendsOptionsThenTheEventThenWhatMakesThemCount) {
    OptionValues before;
    OptionValues wanted = before;
    wanted.SetNumber(OptionId::BlockSeconds, 18);
    wanted.SetNumber(OptionId::BlockFragments, 1);
    wanted.SetNumber(OptionId::LogDays, 33);
    wanted.SetText(OptionId::MailFrom, "from");
    wanted.SetText(OptionId::MailPassword, std::string(130, 'p'));
    wanted.SetNumber(OptionId::TrafficLogKilobytes, 31);
    wanted.SetNumber(OptionId::PacketLogKilobytes, 32);
    wanted.SetText(OptionId::ProxyHost, "host");
    wanted.SetNumber(OptionId::ProxyPort, 67);
    wanted.SetNumber(OptionId::ProxyType, 9);  // not in the list: kept
    wanted.SetNumber(OptionId::BlockFileSharing, 7);
    OptionValues noStart = wanted;
    noStart.SetNumber(OptionId::LoadAtStartup, 0);

    std::vector<RawBytes> icmp;
    for (char id = 42; id <= 63; ++id)
        icmp.push_back(Value(id, id == 42 || id == 43 || id == 47 || id == 57 ? 1 : 0));
    icmp.insert(icmp.end(), {Event("subject"), Bare(16)});

    struct Row {
        const OptionGroup& group;
        const OptionValues& wanted;
        std::vector<RawBytes> expected;
    };
    const Row rows[] = {
        {kGeneralOptions, wanted, {Value(5, 1), Value(6, 0), Value(7, 1), Event("subject"), Bare(15)}},
        {kGeneralOptions, noStart, {Value(5, 1), Value(6, 0), Value(7, 0), Event("subject"), Bare(14), Bare(15)}},
        {kEnhancementOptions, wanted, {Value(8, 1),  Value(9, 1),  Value(11, 1), Value(12, 1), Value(13, 1),
                                       Value(14, 1), Value(15, 1), Value(16, 0), Value(17, 1), Value(18, 18),
                                       Value(19, 1), Value(20, 1), Value(21, 1), Value(22, 1), Value(23, 1),
                                       Value(24, 1), Value(25, 1), Value(26, 1), Value(78, 1), Event("subject"),
                                       Bare(16),     Bare(7)}},
        {kLoggingOptions,
         wanted,
         {Value(27, 1), Value(28, 1), Value(29, 1), Value(30, 0), Value(31, 31), Value(32, 32), Value(33, 33),
          Value(34, 0), Text(35, "from"), Text(36, ""), Text(37, ""), Text(38, ""), Text(39, ""), Text(40, ""),
          Text(41, std::string(119, 'p')), Event("subject")}},
        {kMiscellaneousOptions,
         wanted,
         {Value(64, 1), Value(65, 1), Text(66, "host"), Value(67, 67), Text(68, ""), Text(69, ""), Value(70, 9),
          Event("subject")}},
        {kIcmpOptions, wanted, icmp},
        {kFileSharingOptions, wanted, {Value(2, 1), Value(3, 0), Event("subject"), Bare(7)}},
    };
    for (const Row& row : rows) {
        test::FakePipe pipe;
        test::FakeClock clock;
        CommandPipe commands(pipe, clock);
        SendOptionGroup(row.group, row.wanted, before, {.title = "Options changed", .subject = "subject"},
                        commands);
        ASSERT_EQ(pipe.writes.size(), row.expected.size()) << row.group.name.english;
        for (std::size_t i = 0; i < row.expected.size(); ++i) {
            EXPECT_TRUE(pipe.writes[i].bytes == row.expected[i]) << row.group.name.english << ", record " << i;
        }
    }
}

TEST(OptionGroupTest, ComparesTheOptionsOfTheGroupOnly) {
    const OptionValues stored;
    OptionValues other = stored;
    other.SetText(OptionId::MailTo, "to");
    EXPECT_FALSE(GroupIsSame(kLoggingOptions, stored, other));
    EXPECT_TRUE(GroupIsSame(kMiscellaneousOptions, stored, other));
}

}  // namespace
}  // namespace brennvar
