// What scenarios say of the logs and of what is looked up in them.
#include <charconv>

#include "service/ScenarioWords.h"

namespace brennvar::standin {
namespace {

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

Instruction ReadDns(Words& words) {
    DnsInstruction dns{};
    dns.record.address = words.Take(ParseIpv4(words.Word()));
    PutText(dns.record.name, words.Text(sizeof(DnsLogRecord::name)));
    return dns;
}

Instruction ReadAdvice(Words& words) {
    AdviceInstruction advice{};
    const RuleAction action = words.Take(ParseRuleAction(words.Word()));
    if (action == RuleAction::Ask) words.Reject();
    advice.record.advice = action == RuleAction::Allow ? 1 : 0;
    PutText(advice.record.path, words.Text(sizeof(AdviceRecord::path)));
    return advice;
}

}  // namespace

std::optional<Instruction> ReadLogInstruction(std::string_view name, Words& words) {
    if (name == "dns") return ReadDns(words);
    if (name == "mac") return ReadMac(words);
    if (name == "advice") return ReadAdvice(words);
    if (name == "log") return ReadLog(words);
    if (name == "log-message") return ReadLogMessage(words);
    if (name == "log-many") return LogManyInstruction{words.Number()};
    if (name == "packet") return ReadPacket(words);
    if (name == "log-day") return ReadLogDay(words);
    return std::nullopt;
}

}  // namespace brennvar::standin
