// The scenario language: a text file, one instruction a line, carried out from top to bottom. docs/stand-ins.md
// describes it for those who write scenarios. Reading is strict, and is done before anything starts.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "config/OptionRecord.h"
#include "driver/DriverFeed.h"
#include "ipc/ActivityQueue.h"
#include "ipc/AdvancedRuleRecord.h"
#include "ipc/DriverRecords.h"
#include "ipc/PipeRecords.h"
#include "logs/LogRecords.h"
#include "rules/ApplicationRuleRecord.h"
#include "rules/ListRecords.h"
#include "service/JournalLine.h"
#include "service/SpoiledRecords.h"

namespace brennvar::standin {

struct WaitInstruction {
    std::uint32_t milliseconds;
};
// Waits until that many records have come in on the channel since the start.
struct WaitForRecordsInstruction {
    Channel channel;
    std::uint32_t count;
};
struct QuestionInstruction {
    ConnectionPromptRequest request;
};
struct NoticeInstruction {
    std::string text;
};
struct ProcessInstruction {
    std::uint32_t processId;
    std::string path;
};
// Starts a process of its own. Other instructions name it, and have this number until it is started.
struct StartProcessInstruction {
    std::uint32_t number;
};
struct ConnectionInstruction {
    ConnectionEntry entry;
};
// That many made-up connections, for tests of size; MadeUpConnection says what they look like.
struct ConnectionsInstruction {
    std::uint32_t count;
};
// The same for listeners.
struct ListenersInstruction {
    std::uint32_t count;
};
struct ListenerInstruction {
    ListenerEntry entry;
};
struct ClearTablesInstruction {};
struct TotalsInstruction {
    TrafficTotals totals;
};
struct RateInstruction {
    std::uint64_t inPerSecond;
    std::uint64_t outPerSecond;
};
struct DnsInstruction {
    DnsLogRecord record;
};
struct MacInstruction {
    MacLogRecord record;
};
struct AdviceInstruction {
    AdviceRecord record;
};
// Records of the traffic log. Their time is that of their writing.
struct LogInstruction {
    TrafficLogRecord record;
};
// That many made-up ones (MadeUpEvent).
struct LogManyInstruction {
    std::uint32_t count;
};
struct PacketInstruction {
    PacketLogHeader header;
    std::vector<std::byte> bytes;
};
// What is logged from now on is of this day.
struct LogDayInstruction {
    std::string date;  // YYYYMMDD; empty: today
};
struct RuleInstruction {
    std::string path;
    RuleAction action;
};
struct OptionInstruction {
    std::uint32_t id;
    std::uint32_t value;
};
struct OptionTextInstruction {
    std::uint32_t id;
    std::string text;
};
struct AdvancedRuleInstruction {
    AdvancedRuleRecord record;  // without an identifier
};
struct TrustedInstruction {
    std::string path;
};
struct SiteInstruction {
    std::string name;
};
// That many made-up records behind those that are there (MadeUpRule, MadeUpTrusted, MadeUpSite).
struct FillInstruction {
    ServiceFile file;
    std::uint32_t count;
};
struct SpoilInstruction {
    ServiceFile file;
    Spoiling how;
};
// The next so many changes of advanced rules and lists are not carried out.
struct RefuseInstruction {
    std::uint32_t count;
};
struct HostileInstruction {
    HostileOrder order;
};
// A request to the interface's queue pipe.
struct ActivityInstruction {
    ActivityQueueMessage request;
};
struct ExitInstruction {};

using Instruction =
    std::variant<WaitInstruction, WaitForRecordsInstruction, QuestionInstruction, NoticeInstruction,
                 ProcessInstruction, StartProcessInstruction, ListenersInstruction, ConnectionInstruction,
                 ConnectionsInstruction, ListenerInstruction, ClearTablesInstruction, TotalsInstruction,
                 RateInstruction, DnsInstruction, MacInstruction, AdviceInstruction, RuleInstruction,
                 OptionInstruction, OptionTextInstruction, HostileInstruction, ActivityInstruction, ExitInstruction,
                 LogInstruction, LogManyInstruction, PacketInstruction, LogDayInstruction, AdvancedRuleInstruction,
                 TrustedInstruction, SiteInstruction, FillInstruction, SpoilInstruction, RefuseInstruction>;

struct ScenarioFault {
    std::size_t line;  // counted from 1
    std::string text;  // the line as it stands
};

struct Scenario {
    std::vector<Instruction> instructions;
    std::vector<ScenarioFault> faults;  // empty: every line was understood
    bool scriptsTables = false;         // it has a connection, listener or clear-tables line
    bool scriptsTotals = false;         // it has a totals or rate line
};

// The first number of those that stand for processes of the scenario's own.
inline constexpr std::uint32_t kFirstStartedProcess = 0xF0000000;

// The index-th (0, 1, 2 ...) made-up connection: established outgoing from 192.168.0.1 to 10.0.0.0 + index, port
// 443. There are 50 processes, with the identifiers 1000 to 1049, in turn.
[[nodiscard]] ConnectionEntry MadeUpConnection(std::uint32_t index);
// TCP on 192.168.0.1 and the addresses behind it, of the same processes.
[[nodiscard]] ListenerEntry MadeUpListener(std::uint32_t index);

// The index-th made-up event: all actions in turn, TCP and UDP, of 20 programs, from 10.0.0.5 to 93.0.0.0 + index.
[[nodiscard]] TrafficLogRecord MadeUpEvent(std::uint32_t index);

// The index-th made-up rule: "Deny outgoing TCP to 198.18.0.0 + index, port 1024 to 1030", every third allows,
// every tenth is disabled; described "Rule index".
[[nodiscard]] AdvancedRuleRecord MadeUpRule(std::uint32_t index);
// "C:\Program Files\Made up\trusted INDEX.exe", and "siteINDEX.example".
[[nodiscard]] std::string MadeUpTrusted(std::uint32_t index);
[[nodiscard]] std::string MadeUpSite(std::uint32_t index);

[[nodiscard]] Scenario ParseScenario(std::string_view text);

// A whole decimal number, or a hexadecimal one after "0x"; nothing when it is anything else or needs more bits.
[[nodiscard]] std::optional<std::uint64_t> ParseWholeNumber(std::string_view text);
[[nodiscard]] std::optional<std::uint32_t> ParseNumber32(std::string_view text);

}  // namespace brennvar::standin
