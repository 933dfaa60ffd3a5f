// What scenarios say of the driver: questions, connections, totals, and answers that are spoiled.
#include "service/ScenarioWords.h"

namespace brennvar::standin {
namespace {

std::optional<std::uint32_t> ParseState(std::string_view word) {
    constexpr std::pair<std::string_view, std::uint32_t> kNames[] = {
        {"SYN-SENT", 1},   {"SYN-RCVD", 2},  {"ESTAB-IN", 3},   {"ESTAB-OUT", 4}, {"FIN-WAIT-1", 5},
        {"FIN-WAIT-2", 6}, {"TIME-WAIT", 7}, {"CLOSE-WAIT", 8}, {"LAST-ACK", 9},  {"CLOSED", 10}};
    const auto named = Choose(kNames, word);
    return named ? named : ParseNumber32(word);
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

}  // namespace

std::optional<Instruction> ReadTrafficInstruction(std::string_view name, Words& words) {
    if (name == "question") return ReadQuestion(words);
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
    if (name == "hostile") return ReadHostile(words);
    return std::nullopt;
}

}  // namespace brennvar::standin
