#include "views/ConnectionRows.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <unordered_map>
#include <utility>

#include "base/AsciiCase.h"
#include "base/DisplayName.h"

namespace brennvar {
namespace {

constexpr std::size_t kEndpointTextSize = 15 + 1 + 5;  // 255.255.255.255, colon, 65535
constexpr std::size_t kAddressTextSize = kEndpointTextSize + 4 + kEndpointTextSize;  // " -> " between

// What a row shows of its process.
struct ProcessText {
    std::string name;
    std::string path;
};

// Asks and prepares each process once per refresh: tables hold many entries of few processes.
class ProcessTexts {
public:
    ProcessTexts(const PathResolver& resolvePath, std::string_view noProcessText)
        : m_resolvePath(resolvePath), m_noProcessText(noProcessText) {}

    const ProcessText& Find(std::uint32_t processId) {
        const auto [found, isNew] = m_texts.try_emplace(processId);
        if (isNew) found->second = Prepare(processId);
        return found->second;
    }

private:
    ProcessText Prepare(std::uint32_t processId) const {
        std::optional<std::string> path = m_resolvePath ? m_resolvePath(processId) : std::nullopt;
        if (!path || path->empty()) return {.name = m_noProcessText, .path = m_noProcessText};
        std::transform(path->begin(), path->end(), path->begin(), AsciiLower);
        std::string name = FileNameOf(*path);
        return {.name = std::move(name), .path = std::move(*path)};
    }

    const PathResolver& m_resolvePath;
    std::string m_noProcessText;
    std::unordered_map<std::uint32_t, ProcessText> m_texts;
};

// Text of fixed size on the stack: a row's address text costs one allocation, its own.
class AddressText {
public:
    void AddEndpoint(Ipv4 address, std::uint16_t port) {
        for (unsigned shift = 0; shift < 32; shift += 8) {
            AddNumber((address >> shift) & 0xFFU);
            m_text[m_size++] = shift < 24 ? '.' : ':';
        }
        AddNumber(port);
    }
    void AddArrow(bool outgoing) {
        std::memcpy(m_text.data() + m_size, outgoing ? " -> " : " <- ", 4);
        m_size += 4;
    }
    [[nodiscard]] std::string_view View() const { return {m_text.data(), m_size}; }

private:
    void AddNumber(std::uint32_t number) {
        char* const at = m_text.data() + m_size;
        m_size += static_cast<std::size_t>(std::to_chars(at, m_text.data() + m_text.size(), number).ptr - at);
    }

    std::array<char, kAddressTextSize> m_text;
    std::size_t m_size = 0;
};

std::uint32_t ListenerState(std::uint32_t protocol) {
    switch (protocol) {
        case kProtocolTcp: return kStateListenTcp;
        case kProtocolUdp: return kStateListenUdp;
        case kProtocolIp: return kStateListenIp;
        default: return kStateListenOther;
    }
}

void AddConnectionRow(std::vector<ConnectionRow>& rows, const ConnectionEntry& entry, ProcessTexts& processes) {
    const ProcessText& process = processes.Find(entry.processId);
    ConnectionRow& row = rows.emplace_back();
    // The driver has no listeners in this table: a listener's number here means nothing.
    row.state = entry.state >= kStateListenTcp ? kStateUnknown : entry.state;
    row.outgoing = row.state != kStateSynReceived && row.state != kStateEstablishedIn;
    row.processId = entry.processId;
    row.localAddress = entry.localAddress;
    row.localPort = SwapPort(entry.localPort);
    row.remoteAddress = entry.remoteAddress;
    row.remotePort = SwapPort(entry.remotePort);
    row.bytesIn = entry.bytesIn;
    row.bytesOut = entry.bytesOut;
    AddressText address;
    address.AddEndpoint(row.localAddress, row.localPort);
    address.AddArrow(row.outgoing);
    address.AddEndpoint(row.remoteAddress, row.remotePort);
    row.address = address.View();
    row.name = process.name;
    row.path = process.path;
}

void AddListenerRow(std::vector<ConnectionRow>& rows, const ListenerEntry& entry, ProcessTexts& processes) {
    const ProcessText& process = processes.Find(entry.processId);
    ConnectionRow& row = rows.emplace_back();
    row.state = ListenerState(entry.protocol);
    row.processId = entry.processId;
    row.localAddress = entry.localAddress;
    row.localPort = SwapPort(entry.localPort);
    AddressText address;
    address.AddEndpoint(row.localAddress, row.localPort);
    row.address = address.View();
    row.name = process.name;
    row.path = process.path;
}

}  // namespace

std::vector<ConnectionRow> BuildConnectionRows(const DriverTables& tables, const PathResolver& resolvePath,
                                               std::string_view noProcessText) {
    ProcessTexts processes(resolvePath, noProcessText);
    std::vector<ConnectionRow> rows;
    rows.reserve(tables.connections.size() + tables.listeners.size());
    for (const ConnectionEntry& entry : tables.connections) AddConnectionRow(rows, entry, processes);
    for (const ListenerEntry& entry : tables.listeners) AddListenerRow(rows, entry, processes);
    return rows;
}

std::string_view ConnectionStateText(std::uint32_t state) {
    static constexpr std::array<std::string_view, 15> kTexts = {
        "?",          "SYN-SENT", "SYN_RCVD", "ESTAB-IN",   "ESTAB-OUT",  "FIN-WAIT-1", "FIN-WAIT-2", "TIME-WAIT",
        "CLOSE-WAIT", "LAST-ACK", "CLOSED",   "LISTEN-TCP", "LISTEN-UDP", "LISTEN-IP",  "LISTEN-?"};
    return state < kTexts.size() ? kTexts[state] : std::string_view();
}

std::string_view ConnectionStateDetailsText(std::uint32_t state) {
    return state == kStateSynReceived ? "SYN-RCVD" : ConnectionStateText(state);
}

}  // namespace brennvar
