#include "views/ConnectionTexts.h"

#include <array>
#include <cstddef>

#include "base/DisplayName.h"
#include "base/Endpoint.h"

namespace brennvar {
namespace {

void AppendEndpoint(std::string& text, Ipv4 address, std::uint16_t port) {
    char endpoint[kEndpointRoom];
    text.append(endpoint, PutEndpoint(endpoint, address, port));
}

void AppendTwoDigits(std::string& text, std::uint32_t number) {
    text += static_cast<char>('0' + number / 10);
    text += static_cast<char>('0' + number % 10);
}

}  // namespace

std::string_view ConnectionStateText(std::uint32_t state) {
    static constexpr std::array<std::string_view, 15> kTexts = {
        "?",          "SYN-SENT", "SYN_RCVD", "ESTAB-IN",   "ESTAB-OUT",  "FIN-WAIT-1", "FIN-WAIT-2", "TIME-WAIT",
        "CLOSE-WAIT", "LAST-ACK", "CLOSED",   "LISTEN-TCP", "LISTEN-UDP", "LISTEN-IP",  "LISTEN-?"};
    return state < kTexts.size() ? kTexts[state] : std::string_view();
}

std::string_view ConnectionStateDetailsText(std::uint32_t state) {
    return state == kStateSynReceived ? "SYN-RCVD" : ConnectionStateText(state);
}

Text ConnectionStateWords(std::uint32_t state) {
    switch (state) {
        case kStateUnknown: return Text{1653, "The state is not known."};
        case kStateSynSent: return Text{1654, "Opening, asked for by this computer."};
        case kStateSynReceived: return Text{1655, "Opening, asked for by the other side."};
        case kStateEstablishedIn: return Text{1656, "Established, opened by the other side."};
        case kStateEstablishedOut: return Text{1657, "Established, opened by this computer."};
        default: break;
    }
    return state >= kStateListenTcp ? Text{1659, "Waits for what others send to this port."}
                                    : Text{1658, "Closing, or closed."};
}

void AppendConnectionAddress(std::string& text, const ConnectionRow& row) {
    AppendEndpoint(text, row.localAddress, row.localPort);
    if (row.IsListener()) return;
    text += row.IsOutgoing() ? " -> " : " <- ";
    AppendEndpoint(text, row.remoteAddress, row.remotePort);
}

std::string FormatAge(std::uint32_t seconds, bool isAtLeast) {
    std::string text = isAtLeast ? ">" : "";
    const std::uint32_t minutes = seconds / 60;
    if (minutes >= 60) {
        AppendNumber(text, minutes / 60);
        text += ':';
        AppendTwoDigits(text, minutes % 60);
    } else {
        AppendNumber(text, minutes);
    }
    text += ':';
    AppendTwoDigits(text, seconds % 60);
    return text;
}

std::string RateText(std::uint64_t bytesPerSecond, const AmountWords& words) {
    return bytesPerSecond == 0 ? std::string() : FormatRate(bytesPerSecond, 1000, words);
}

std::string ConnectionCellText(const ConnectionTable& table, const ConnectionRow& row, ConnectionColumn column,
                               const AmountWords& words) {
    std::string text;
    switch (column) {
        case ConnectionColumn::Process: return table.ProgramOf(row).name;
        case ConnectionColumn::Address: AppendConnectionAddress(text, row); break;
        case ConnectionColumn::State: text = ConnectionStateText(row.state); break;
        case ConnectionColumn::RateIn: text = RateText(row.rateIn, words); break;
        case ConnectionColumn::RateOut: text = RateText(row.rateOut, words); break;
        // Nobody counts what comes to a listener.
        case ConnectionColumn::Received: text = row.IsListener() ? "" : FormatBytes(row.bytesIn, words); break;
        case ConnectionColumn::Sent: text = row.IsListener() ? "" : FormatBytes(row.bytesOut, words); break;
        case ConnectionColumn::Age: text = FormatAge(table.AgeOf(row), row.isOlder); break;
        case ConnectionColumn::Path: return OneLine(table.ProgramOf(row).path);
        case ConnectionColumn::ProcessId: text = std::to_string(row.processId); break;
    }
    return text;
}

}  // namespace brennvar
