#include "commands/Batch.h"

#include <gtest/gtest.h>

#include <cstring>

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
RawBytes Notice(std::string_view title, std::string_view subject) {
    return test::ZerosWith(5596, {{0, "\x01"}, {4, title}, {132, subject}});
}
RawBytes Event(std::string_view subject) {
    return Notice("Options changed", subject);
}
RawBytes Bare(char code) {
    return test::ZerosWith(5596, {{0, {&code, 1}}});
}
// Options that are switched on, as most of them are.
std::vector<RawBytes> On(char first, char last) {
    std::vector<RawBytes> records;
    for (char id = first; id <= last; ++id) records.push_back(Value(id, 1));
    return records;
}
std::vector<RawBytes> operator+(std::vector<RawBytes> records, const std::vector<RawBytes>& more) {
    records.insert(records.end(), more.begin(), more.end());
    return records;
}

// What the batch sends, record by record, with its texts in English.
void ExpectSent(const Batch& batch, const std::vector<RawBytes>& expected) {
    test::FakePipe pipe;
    test::FakeClock clock;
    CommandPipe commands(pipe, clock);
    batch.SendTo(commands, Language(nullptr));
    ASSERT_EQ(pipe.writes.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_TRUE(pipe.writes[i].bytes == expected[i]) << "record " << i;
    }
}

TEST(BatchTest, SendsOptionsThenWhatMakesThemCountThenTheEvent) {
    OptionValues before;
    OptionValues wanted = before;
    wanted.SetNumber(OptionId::BlockSeconds, 18);
    wanted.SetNumber(OptionId::BlockFragments, 1);
    wanted.SetNumber(OptionId::LogDays, 33);
    wanted.SetText(OptionId::MailFrom, "from");
    wanted.SetText(OptionId::MailPassword, std::string(130, 'p'));
    wanted.SetNumber(OptionId::TrafficLogKilobytes, 31);
    wanted.SetNumber(OptionId::PacketLogKilobytes, 32);
    wanted.SetNumber(OptionId::ProxyPort, 67);
    wanted.SetNumber(OptionId::ProxyType, 9);         // not in the list: kept
    wanted.SetNumber(OptionId::BlockFileSharing, 7);  // on
    OptionValues noStart = wanted;
    noStart.SetNumber(OptionId::LoadAtStartup, 0);

    std::vector<RawBytes> icmp;
    for (char id = 42; id <= 63; ++id)
        icmp.push_back(Value(id, id == 42 || id == 43 || id == 47 || id == 57 ? 1 : 0));

    using Records = std::vector<RawBytes>;
    const struct {
        OptionGroup group;
        const OptionValues& wanted;
        Records expected;
    } rows[] = {
        {OptionGroup::General, wanted, {Value(5, 1), Value(6, 0), Value(7, 1), Bare(15), Event("General")}},
        {OptionGroup::General,
         noStart,
         {Value(5, 1), Value(6, 0), Value(7, 0), Bare(14), Bare(15), Event("General")}},
        {OptionGroup::Enhancements, wanted,
         On(8, 9) + On(11, 15) + Records{Value(16, 0), Value(17, 1), Value(18, 18)} + On(19, 26) + On(78, 78) +
             Records{Bare(16), Bare(7), Event("Enhacements")}},
        {OptionGroup::Logging, wanted,
         On(27, 29) + Records{Value(30, 0), Value(31, 31), Value(32, 32), Value(33, 33), Value(34, 0),
                              Text(35, "from"), Text(36, ""), Text(37, ""), Text(38, ""), Text(39, ""),
                              Text(40, ""), Text(41, std::string(119, 'p')), Event("Logging")}},
        {OptionGroup::Miscellaneous, wanted,
         On(64, 65) + Records{Text(66, ""), Value(67, 67), Text(68, ""), Text(69, ""), Value(70, 9),
                              Event("Miscellaneous")}},
        {OptionGroup::Icmp, wanted, icmp + Records{Bare(16), Event("ICMP")}},
        {OptionGroup::FileSharing, wanted, {Value(2, 1), Value(3, 0), Bare(7), Event("File sharing")}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(static_cast<int>(row.group));
        ExpectSent(OptionsBatch(row.group, row.wanted, before), row.expected);
    }
}

// What users give rise to every day is held byte for byte by the tests of the finished program.
TEST(BatchTest, SendsWhatTheTableSays) {
    const auto record = [](const test::Pieces& pieces) { return test::ZerosWith(5596, pieces); };
    using enum UserCommand;
    AdvancedRuleRecord rule{};
    rule.id = 0x01020304;
    std::strcpy(rule.description, "mine");
    AdvancedRuleRecord other{};
    other.action = 1;
    std::strcpy(other.description, "other");
    const std::pair<Batch, std::vector<RawBytes>> rows[] = {
        {Batch(EndTimedMode, {.options = {{.id = OptionId::ProtectionMode}}}), {Value(1, 0), Bare(7)}},
        {Batch(SwitchNetwork, {.value = 1}), {record({{0, "\x19"}, {644, "\1"}})}},
        {Batch(ReloadNetwork), {Bare(7)}},
        {Batch(ReportClockSetBack, {.detail = "back"}),
         {record({{0, "\1"}, {4, "System time changed"}, {132, "Past"}, {644, "\2"}, {648, "back"}})}},
        {Batch(ReportClockSetAhead),
         {record({{0, "\1"}, {4, "System time changed"}, {132, "Future"}, {644, "\2"}})}},
        {Batch(AddTrusted, {.path = std::string(130, 'p'), .detail = "p"}),
         {record({{0, "\x1A"}, {5472, std::string(119, 'p')}}),
          record({{0, "\1"}, {4, "Options changed"}, {132, "Trusted programs"}, {648, "p"}})}},
        {Batch(SendTestMail), {Bare(20), Notice("E-mail notification test", "")}},
        {Batch(DeleteLogs, {.day = {.year = 987, .month = 12, .day = 31}, .olderToo = true}),
         {record({{0, "\x17"}, {132, "09871231"}, {644, "\1"}})}},
        {Batch(SetApplicationRules, {.applications = {{"c:\\a.exe", RuleCommandAction::Allow},
                                                      {"c:\\b.exe", RuleCommandAction::Remove}}}),
         {record({{0, "\x16"}, {132, "c:\\a.exe"}, {644, "\1"}}),
          record({{0, "\x16"}, {132, "c:\\b.exe"}, {644, "\3"}})}},
        {Batch(TerminateProcess, {.processId = 0x01020304, .subject = "c:\\a.exe"}),
         {record({{0, "\3"}, {4748, "\4\3\2\1"}}),
          record({{0, "\1"}, {4, "Process termination"}, {132, "c:\\a.exe"}, {644, "\2"}})}},
        // A rule's record begins at 4752; its identifier stands in front of it, and at 5464 once more.
        {Batch(ChangeAdvancedRules, {.rules = {rule, other}}),
         {record({{0, "\5"}, {4752, "\4\3\2\1"}, {4752 + 452, "mine"}, {5464, "\4\3\2\1"}}),
          record({{0, "\5"}, {4756, "\1"}, {4752 + 452, "other"}}), Bare(7)}},
        {Batch(DeleteAdvancedRules, {.ruleIds = {7, 0x01020304}}),
         {record({{0, "\6"}, {5464, "\7"}}), record({{0, "\6"}, {5464, "\4\3\2\1"}}), Bare(7)}},
        {Batch(MoveAdvancedRules, {.moves = {{.id = 9, .places = 2}, {.id = 8, .places = -1}, {.id = 7}}}),
         {record({{0, "\x1E"}, {5464, "\x08"}}), record({{0, "\x1F"}, {5464, "\x09"}}),
          record({{0, "\x1F"}, {5464, "\x09"}}), Bare(7)}},
        {BlockAddressBatch(Language(nullptr), 0x0302010A, 600),
         {record({{0, "\2"}, {4744, "\x0A\1\2\3"}}),
          record({{0, "\1"},
                  {4, "Blocked connection"},
                  {132, "10.1.2.3"},
                  {644, "\2"},
                  {648, "IP: 10.1.2.3. Blocking IP address for 600 seconds"}})}},
    };
    for (const auto& [batch, expected] : rows) {
        SCOPED_TRACE(static_cast<int>(batch.Info().command));
        ExpectSent(batch, expected);
    }
}

}  // namespace
}  // namespace brennvar
