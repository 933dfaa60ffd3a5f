#include "service/Scenario.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <utility>

#include "base/Ipv4.h"

namespace brennvar::standin {
namespace {

constexpr std::string_view kBlanks = " \t\r";

struct Endpoint {
    Ipv4 address;
    std::uint16_t port;  // network order
};

std::string_view Trim(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

// A line's words from left to right. What cannot be read sets a flag that is asked once, at the end.
class Words {
public:
    // names: of the processes that the lines before start.
    Words(std::string_view line, std::vector<std::string>& names) : m_rest(Trim(line)), m_names(names) {}

    [[nodiscard]] bool AllGood() const { return m_good && m_rest.empty(); }

    std::string_view Word() {
        const std::size_t end = std::min(m_rest.find_first_of(kBlanks), m_rest.size());
        const std::string_view word = m_rest.substr(0, end);
        m_rest = Trim(m_rest.substr(end));
        if (word.empty()) m_good = false;
        return word;
    }
    // What is left of the line, blanks inside it included, for a field of that size with its closing zero.
    std::string_view OptionalText(std::size_t fieldSize) {
        if (m_rest.size() >= fieldSize) m_good = false;
        return std::exchange(m_rest, {});
    }
    std::string_view Text(std::size_t fieldSize) {
        if (m_rest.empty()) m_good = false;
        return OptionalText(fieldSize);
    }
    void Reject() { m_good = false; }
    template <class T>
    T Take(std::optional<T> value) {
        if (!value) m_good = false;
        return value.value_or(T{});
    }
    std::uint32_t Number() { return Take(ParseNumber32(Word())); }
    std::uint64_t LongNumber() { return Take(ParseWholeNumber(Word())); }
    // A number, or the name of a process that is started.
    std::uint32_t ProcessId() { return ProcessId(Word()); }
    std::uint32_t ProcessId(std::string_view word) {
        const auto name = std::find(m_names.begin(), m_names.end(), word);
        if (name == m_names.end()) return Take(ParseNumber32(word));
        return kFirstStartedProcess + static_cast<std::uint32_t>(name - m_names.begin());
    }
    std::uint32_t NewProcess() {
        const std::string_view name = Word();
        if (ParseNumber32(name)) Reject();
        m_names.emplace_back(name);
        return ProcessId(name);
    }
    std::uint32_t NumberOr(std::uint32_t fallback) { return m_rest.empty() ? fallback : Number(); }

private:
    std::string_view m_rest;
    std::vector<std::string>& m_names;
    bool m_good = true;
};

template <class Value, std::size_t Size>
std::optional<Value> Choose(const std::pair<std::string_view, Value> (&choices)[Size], std::string_view word) {
    for (const auto& [name, value] : choices)
        if (name == word) return value;
    return std::nullopt;
}

std::optional<Endpoint> ParseEndpoint(std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos) return std::nullopt;
    const auto address = ParseIpv4(text.substr(0, colon));
    const auto port = ParseNumber32(text.substr(colon + 1));
    if (!address || !port || *port > 0xFFFF) return std::nullopt;
    return Endpoint{*address, SwapPort(static_cast<std::uint16_t>(*port))};
}

std::optional<std::uint32_t> ParseProtocol(std::string_view word) {
    constexpr std::pair<std::string_view, std::uint32_t> kNames[] = {
        {"ip", kProtocolIp}, {"icmp", kProtocolIcmp}, {"tcp", kProtocolTcp}, {"udp", kProtocolUdp}};
    const auto named = Choose(kNames, word);
    return named ? named : ParseNumber32(word);
}

std::optional<std::uint32_t> ParseState(std::string_view word) {
    constexpr std::pair<std::string_view, std::uint32_t> kNames[] = {
        {"SYN-SENT", 1},   {"SYN-RCVD", 2},  {"ESTAB-IN", 3},   {"ESTAB-OUT", 4}, {"FIN-WAIT-1", 5},
        {"FIN-WAIT-2", 6}, {"TIME-WAIT", 7}, {"CLOSE-WAIT", 8}, {"LAST-ACK", 9},  {"CLOSED", 10}};
    const auto named = Choose(kNames, word);
    return named ? named : ParseNumber32(word);
}

std::optional<RuleAction> ParseRuleAction(std::string_view word) {
    constexpr std::pair<std::string_view, RuleAction> kNames[] = {
        {"allow", RuleAction::Allow}, {"deny", RuleAction::Deny}, {"ask", RuleAction::Ask}};
    return Choose(kNames, word);
}

std::optional<std::array<std::uint8_t, 6>> ParseHardwareAddress(std::string_view text) {
    std::array<std::uint8_t, 6> address{};
    constexpr std::size_t kTextSize = 6 * 2 + 5;  // "aa-bb-cc-dd-ee-ff"
    if (text.size() != kTextSize) return std::nullopt;
    for (std::size_t i = 0; i < address.size(); ++i) {
        const char* const digits = text.data() + i * 3;
        if (i + 1 < address.size() && digits[2] != '-') return std::nullopt;
        const auto [end, error] = std::from_chars(digits, digits + 2, address[i], 16);
        if (error != std::errc{} || end != digits + 2) return std::nullopt;
    }
    return address;
}

Instruction ReadQuestion(Words& words) {
    QuestionInstruction question{};
    question.request.protocol = words.Take(ParseProtocol(words.Word()));
    const Endpoint local = words.Take(ParseEndpoint(words.Word()));
    const Endpoint remote = words.Take(ParseEndpoint(words.Word()));
    question.request.localAddress = local.address;
    question.request.localPort = local.port;
    question.request.remoteAddress = remote.address;
    question.request.remotePort = remote.port;
    const std::string_view process = words.Word();
    question.request.processId = process == "none" ? kNoProcess : words.ProcessId(process);
    PutText(question.request.path, words.OptionalText(sizeof(ConnectionPromptRequest::path)));
    return question;
}

Instruction ReadConnection(Words& words) {
    ConnectionInstruction connection{};
    connection.entry.state = words.Take(ParseState(words.Word()));
    const Endpoint local = words.Take(ParseEndpoint(words.Word()));
    const Endpoint remote = words.Take(ParseEndpoint(words.Word()));
    connection.entry.localAddress = local.address;
    connection.entry.localPort = local.port;
    connection.entry.remoteAddress = remote.address;
    connection.entry.remotePort = remote.port;
    connection.entry.processId = words.ProcessId();
    connection.entry.bytesIn = words.Number();
    connection.entry.bytesOut = words.Number();
    return connection;
}

Instruction ReadListener(Words& words) {
    ListenerInstruction listener{};
    listener.entry.protocol = words.Take(ParseProtocol(words.Word()));
    const Endpoint local = words.Take(ParseEndpoint(words.Word()));
    listener.entry.localAddress = local.address;
    listener.entry.localPort = local.port;
    listener.entry.processId = words.ProcessId();
    return listener;
}

std::optional<std::uint32_t> ParseLogProtocol(std::string_view word) {
    return word == "arp" ? kLogProtocolArp : ParseProtocol(word);
}

// PROTOCOL LOCAL REMOTE in|out
template <class Record>
void ReadLogEnds(Words& words, Record& record) {
    constexpr std::pair<std::string_view, std::uint32_t> kDirections[] = {{"in", 0}, {"out", 1}};
    record.protocol = words.Take(ParseLogProtocol(words.Word()));
    const Endpoint local = words.Take(ParseEndpoint(words.Word()));
    const Endpoint remote = words.Take(ParseEndpoint(words.Word()));
    record.localAddress = local.address;
    record.localPort = SwapPort(local.port);
    record.remoteAddress = remote.address;
    record.remotePort = SwapPort(remote.port);
    record.outgoing = words.Take(Choose(kDirections, words.Word()));
}

Instruction ReadLog(Words& words) {
    constexpr std::pair<std::string_view, std::uint32_t> kActions[] = {
        {"allowed", 1}, {"denied", 2}, {"asked", 3}, {"disconnected", 4}};
    LogInstruction log{};
    const std::string_view action = words.Word();
    const auto named = Choose(kActions, action);
    log.record.action = words.Take(named ? named : ParseNumber32(action));
    ReadLogEnds(words, log.record);
    log.record.kind = 1;
    PutText(log.record.path, words.OptionalText(sizeof(TrafficLogRecord::path)));
    return log;
}

Instruction ReadLogMessage(Words& words) {
    constexpr std::uint32_t kMessageAction = 6;
    LogInstruction log{};
    log.record.action = kMessageAction;
    PutText(log.record.shortText, words.Text(sizeof(TrafficLogRecord::shortText)));
    return log;
}

std::optional<std::vector<std::byte>> ParseHexBytes(std::string_view text) {
    std::vector<std::byte> bytes;
    if (text == "-") return bytes;
    if (text.size() % 2 != 0) return std::nullopt;
    for (std::size_t i = 0; i < text.size(); i += 2) {
        std::uint8_t byte = 0;
        const char* const digits = text.data() + i;
        const auto [end, error] = std::from_chars(digits, digits + 2, byte, 16);
        if (error != std::errc{} || end != digits + 2) return std::nullopt;
        bytes.push_back(std::byte{byte});
    }
    return bytes;
}

Instruction ReadPacket(Words& words) {
    PacketInstruction packet{};
    ReadLogEnds(words, packet.header);
    packet.bytes = words.Take(ParseHexBytes(words.Word()));
    packet.header.packetSize = static_cast<std::uint32_t>(packet.bytes.size());
    PutText(packet.header.path, words.OptionalText(sizeof(PacketLogHeader::path)));
    return packet;
}

Instruction ReadLogDay(Words& words) {
    const std::string_view date = words.Word();
    if (date == "today") return LogDayInstruction{};
    constexpr std::size_t kDateSize = 8;  // YYYYMMDD
    if (date.size() != kDateSize || date.find_first_not_of("0123456789") != std::string_view::npos) words.Reject();
    return LogDayInstruction{std::string(date)};
}

Instruction ReadMac(Words& words) {
    MacInstruction mac{};
    mac.record.address = words.Take(ParseIpv4(words.Word()));
    const auto hardware = words.Take(ParseHardwareAddress(words.Word()));
    std::copy(hardware.begin(), hardware.end(), mac.record.hardwareAddress);
    return mac;
}

Instruction ReadHostile(Words& words) {
    constexpr std::pair<std::string_view, std::uint32_t> kRequests[] = {{"connections", kControlReadConnections},
                                                                        {"listeners", kControlReadListeners},
                                                                        {"totals", kControlReadTotals},
                                                                        {"question", kControlFetchQuestion}};
    constexpr std::pair<std::string_view, Hostility> kHostilities[] = {
        {"fail", Hostility::Fail}, {"short", Hostility::Short}, {"long", Hostility::Long}, {"odd", Hostility::Odd}};
    HostileInstruction hostile{};
    hostile.order.request = words.Take(Choose(kRequests, words.Word()));
    hostile.order.hostility = words.Take(Choose(kHostilities, words.Word()));
    hostile.order.answers = words.NumberOr(1);
    return hostile;
}

Instruction ReadActivity(Words& words) {
    constexpr std::pair<std::string_view, std::uint32_t> kKinds[] = {{"write", 1},   {"own", 2},  {"browser", 3},
                                                                     {"appinit", 4}, {"show", 5}, {"leave", 6}};
    ActivityInstruction activity{};
    const std::string_view kind = words.Word();
    const auto named = Choose(kKinds, kind);
    activity.request.kind = static_cast<ActivityKind>(words.Take(named ? named : ParseNumber32(kind)));
    activity.request.processId = words.Number();
    const std::string_view paths = words.OptionalText(sizeof(ActivityQueueMessage));
    const std::size_t bar = std::min(paths.find('|'), paths.size());
    PutText(activity.request.actingPath, Trim(paths.substr(0, bar)));
    PutText(activity.request.targetPath, Trim(paths.substr(std::min(bar + 1, paths.size()))));
    return activity;
}

Instruction ReadWaitForRecords(Words& words) {
    constexpr std::pair<std::string_view, Channel> kChannels[] = {
        {"COMMAND", Channel::Command}, {"PID", Channel::Pid},         {"TRAY", Channel::Tray},
        {"QUEUE", Channel::Queue},     {"CONFIRM", Channel::Confirm}, {"ACTIVITY", Channel::Activity}};
    WaitForRecordsInstruction wait{};
    wait.channel = words.Take(Choose(kChannels, words.Word()));
    wait.count = words.Number();
    return wait;
}

Instruction ReadInstruction(Words& words) {
    const std::string_view name = words.Word();
    if (name == "wait") return WaitInstruction{words.Number()};
    if (name == "wait-for-answers") return WaitForRecordsInstruction{Channel::Confirm, words.Number()};
    if (name == "wait-for-records") return ReadWaitForRecords(words);
    if (name == "question") return ReadQuestion(words);
    if (name == "notice") return NoticeInstruction{std::string(words.Text(sizeof(TrayTextAnswer::text)))};
    if (name == "process") {
        const std::uint32_t processId = words.ProcessId();
        return ProcessInstruction{processId, std::string(words.Text(sizeof(PidResolveAnswer::path)))};
    }
    if (name == "start-process") return StartProcessInstruction{words.NewProcess()};
    if (name == "connection") return ReadConnection(words);
    if (name == "connections") return ConnectionsInstruction{words.Number()};
    if (name == "listeners") return ListenersInstruction{words.Number()};
    if (name == "listener") return ReadListener(words);
    if (name == "clear-tables") return ClearTablesInstruction{};
    if (name == "totals") {
        TotalsInstruction totals{};
        totals.totals.bytesIn = words.LongNumber();
        totals.totals.bytesOut = words.LongNumber();
        return totals;
    }
    if (name == "rate") {
        const std::uint64_t in = words.LongNumber();
        return RateInstruction{in, words.LongNumber()};
    }
    if (name == "dns") {
        DnsInstruction dns{};
        dns.record.address = words.Take(ParseIpv4(words.Word()));
        PutText(dns.record.name, words.Text(sizeof(DnsLogRecord::name)));
        return dns;
    }
    if (name == "mac") return ReadMac(words);
    if (name == "advice") {
        AdviceInstruction advice{};
        const RuleAction action = words.Take(ParseRuleAction(words.Word()));
        if (action == RuleAction::Ask) words.Reject();
        advice.record.advice = action == RuleAction::Allow ? 1 : 0;
        PutText(advice.record.path, words.Text(sizeof(AdviceRecord::path)));
        return advice;
    }
    if (name == "log") return ReadLog(words);
    if (name == "log-message") return ReadLogMessage(words);
    if (name == "log-many") return LogManyInstruction{words.Number()};
    if (name == "packet") return ReadPacket(words);
    if (name == "log-day") return ReadLogDay(words);
    if (name == "rule") {
        const RuleAction action = words.Take(ParseRuleAction(words.Word()));
        return RuleInstruction{std::string(words.Text(sizeof(ApplicationRuleRecord::path))), action};
    }
    if (name == "option") {
        const std::uint32_t id = words.Number();
        return OptionInstruction{id, words.Number()};
    }
    if (name == "option-text") {
        const std::uint32_t id = words.Number();
        return OptionTextInstruction{id, std::string(words.OptionalText(sizeof(OptionRecord::text)))};
    }
    if (name == "hostile") return ReadHostile(words);
    if (name == "activity") return ReadActivity(words);
    if (name == "exit") return ExitInstruction{};
    words.Reject();
    return ExitInstruction{};
}

void ReadLine(std::string_view line, std::size_t number, std::vector<std::string>& names, Scenario& scenario) {
    const std::string_view trimmed = Trim(line);
    if (trimmed.empty() || trimmed.front() == '#') return;
    Words words(trimmed, names);
    Instruction instruction = ReadInstruction(words);
    if (!words.AllGood()) {
        scenario.faults.push_back({number, std::string(trimmed)});
        return;
    }
    scenario.scriptsTables |= std::holds_alternative<ConnectionInstruction>(instruction) ||
                              std::holds_alternative<ConnectionsInstruction>(instruction) ||
                              std::holds_alternative<ListenersInstruction>(instruction) ||
                              std::holds_alternative<ListenerInstruction>(instruction) ||
                              std::holds_alternative<ClearTablesInstruction>(instruction);
    scenario.scriptsTotals |= std::holds_alternative<TotalsInstruction>(instruction) ||
                              std::holds_alternative<RateInstruction>(instruction);
    scenario.instructions.push_back(std::move(instruction));
}

}  // namespace

std::optional<std::uint64_t> ParseWholeNumber(std::string_view text) {
    int base = 10;
    if (text.starts_with("0x")) {
        base = 16;
        text.remove_prefix(2);
    }
    std::uint64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number, base);
    if (error != std::errc{} || rest != end) return std::nullopt;
    return number;
}

std::optional<std::uint32_t> ParseNumber32(std::string_view text) {
    const auto number = ParseWholeNumber(text);
    if (!number || *number > std::numeric_limits<std::uint32_t>::max()) return std::nullopt;
    return static_cast<std::uint32_t>(*number);
}

Scenario ParseScenario(std::string_view text) {
    Scenario scenario;
    std::vector<std::string> names;
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        ReadLine(text.substr(0, end), number, names, scenario);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return scenario;
}

}  // namespace brennvar::standin
