#include "tools/TraceRoute.h"

#include <algorithm>

namespace brennvar {
namespace {

constexpr std::chrono::milliseconds kWaitSlice{50};  // between two looks at the stop signal
// A socket that fails at once, again and again, must not fill the list by thousands of lines a second.
constexpr std::chrono::milliseconds kPauseAfterFault{50};

constexpr std::uint32_t kErrorNoRights = 10013;        // WSAEACCES
constexpr std::uint32_t kErrorMessageTooLong = 10040;  // WSAEMSGSIZE

// RFC 792
constexpr std::uint8_t kEchoReply = 0;
constexpr std::uint8_t kUnreachable = 3;
constexpr std::uint8_t kEchoRequest = 8;
constexpr std::uint8_t kTimeExceeded = 11;
constexpr std::size_t kIcmpHeaderSize = 8;
constexpr std::size_t kChecksumOffset = 2;
constexpr std::size_t kIdentifierOffset = 4;
constexpr std::size_t kSequenceOffset = 6;
// RFC 791
constexpr std::size_t kSourceOffset = 12;
constexpr std::size_t kLengthUnit = 4;  // bytes, of the header length

std::uint8_t ByteAt(std::span<const std::byte> bytes, std::size_t offset) {
    return offset < bytes.size() ? std::to_integer<std::uint8_t>(bytes[offset]) : std::uint8_t{0};
}

// Lowest byte first, as the machine has it; bytes that are not there count as 0.
std::uint16_t WordAt(std::span<const std::byte> bytes, std::size_t offset) {
    return static_cast<std::uint16_t>(ByteAt(bytes, offset) | (ByteAt(bytes, offset + 1) << 8));
}

Ipv4 AddressAt(std::span<const std::byte> bytes, std::size_t offset) {
    return WordAt(bytes, offset) | (Ipv4{WordAt(bytes, offset + 2)} << 16);
}

void SetWord(std::span<std::byte> bytes, std::size_t offset, std::uint16_t word) {
    bytes[offset] = static_cast<std::byte>(word & 0xFF);
    bytes[offset + 1] = static_cast<std::byte>(word >> 8);
}

std::size_t HeaderLength(std::span<const std::byte> datagram) {
    return (ByteAt(datagram, 0) & 15U) * kLengthUnit;
}

// RFC 1071: the sum may be made in either order of bytes.
std::uint16_t InternetChecksum(std::span<const std::byte> bytes) {
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < bytes.size(); i += 2) sum += WordAt(bytes, i);
    while (sum > 0xFFFF) sum = (sum >> 16) + (sum & 0xFFFF);
    return static_cast<std::uint16_t>(~sum);
}

class StartedLibrary {
public:
    explicit StartedLibrary(IcmpNetwork& network) : m_network(network), m_isStarted(network.StartLibrary()) {}
    StartedLibrary(const StartedLibrary&) = delete;
    StartedLibrary& operator=(const StartedLibrary&) = delete;
    ~StartedLibrary() {
        if (m_isStarted) m_network.StopLibrary();
    }
    [[nodiscard]] bool IsStarted() const { return m_isStarted; }

private:
    IcmpNetwork& m_network;
    const bool m_isStarted;
};

}  // namespace

RouteTracer::RouteTracer(IcmpNetwork& network, const Language& language, ToolOutput& output, const StopSignal& stop)
    : m_network(network), m_language(language), m_output(output), m_stop(stop) {}

void RouteTracer::TraceRoute(const std::string& host) {
    m_isDone = false;
    const StartedLibrary library(m_network);
    if (!library.IsStarted()) return;
    Print(m_language.GetText(54, "Sending") + ' ' + std::to_string(kEchoSize) + ' ' +
          m_language.GetText(55, "bytes to") + ' ' + host);
    Ipv4 destination = 0;
    const std::unique_ptr<IcmpSocket> socket = SetupIcmpSocket(host, 1, destination);
    if (socket) TraceHops(*socket, destination);
}

std::unique_ptr<IcmpSocket> RouteTracer::SetupIcmpSocket(const std::string& host, std::uint32_t firstHop,
                                                         Ipv4& destination) {
    std::uint32_t error = 0;
    std::unique_ptr<IcmpSocket> socket = m_network.Open(error);
    if (!socket) {
        Print(m_language.GetText(26, "Failed to create raw socket:") + ' ' + std::to_string(error));
        if (error == kErrorNoRights) {
            Print(m_language.GetText(
                1751, "A trace needs administrator rights. Please start the program as an administrator."));
        }
        return nullptr;
    }
    error = socket->SetTimeToLive(firstHop);
    if (error != 0) {
        Print(m_language.GetText(27, "TTL setsockopt failed:") + ' ' + std::to_string(error));
        return nullptr;
    }
    const std::optional<Ipv4> found = m_network.Resolve(host, m_stop);
    if (m_stop.Requested()) return nullptr;
    if (!found) {
        Print(m_language.GetText(28, "Failed to resolve") + ' ' + host);
        return nullptr;
    }
    destination = *found;
    return socket;
}

void RouteTracer::TraceHops(IcmpSocket& socket, Ipv4 destination) {
    std::array<std::byte, kEchoSize> request{};
    std::vector<std::byte> received(kReceiveSize);
    BuildEchoRequest(request, Identifier(), 0);
    m_startTick = m_network.TickCount();
    for (std::uint32_t hops = 1; !m_isDone; ++hops) {
        if (socket.SetTimeToLive(hops) != 0) return;
        const Outcome outcome = ProbeHop(socket, destination, request, received);
        if (outcome == Outcome::Ended) return;
        if (outcome == Outcome::Silent) {
            Print(m_language.GetText(57, "Request time out"));
            ++hops;
            if (hops > kLastSilentHop) m_isDone = true;
        }
        if (hops == kMostHops) m_isDone = true;
    }
}

RouteTracer::Outcome RouteTracer::ProbeHop(IcmpSocket& socket, Ipv4 destination, std::span<const std::byte> request,
                                           std::span<std::byte> received) {
    if (!SendEcho(socket, destination, request)) {
        m_isDone = true;
        return Outcome::NextHop;
    }
    for (;;) {
        bool isReadable = true;
        WaitReadable(socket, kReplyWait, isReadable);
        if (m_stop.Requested()) return Outcome::Ended;
        if (!isReadable) return Outcome::Silent;
        Ipv4 source = 0;
        if (!ReceiveReply(socket, received, source)) {
            // Whatever the buffer holds, from an earlier message or from a part of this one.
            if (WordAt(received, HeaderLength(received) + kSequenceOffset) == 0) return Outcome::NextHop;
            Print(m_language.GetText(56, "Bad sequence number!"));
            if (!m_network.Pause(kPauseAfterFault, m_stop)) return Outcome::Ended;
            continue;
        }
        switch (DecodeReply(received, kEchoSize, source)) {
            case Reply::Answer: return Outcome::NextHop;
            case Reply::Stop: return Outcome::Ended;
            case Reply::Foreign: break;
        }
    }
}

void RouteTracer::BuildEchoRequest(std::span<std::byte> request, std::uint16_t identifier, std::uint16_t sequence) {
    constexpr std::array kPattern{std::byte{0xEF}, std::byte{0xBE}, std::byte{0xAD}, std::byte{0xDE}};
    request[0] = std::byte{kEchoRequest};
    request[1] = std::byte{0};
    SetWord(request, kChecksumOffset, 0);
    SetWord(request, kIdentifierOffset, identifier);
    SetWord(request, kSequenceOffset, sequence);
    for (std::size_t i = kIcmpHeaderSize; i < request.size(); ++i) request[i] = kPattern[i % kPattern.size()];
    SetWord(request, kChecksumOffset, InternetChecksum(request));
}

bool RouteTracer::SendEcho(IcmpSocket& socket, Ipv4 destination, std::span<const std::byte> request) {
    const IcmpSent sent = socket.Send(destination, request);
    if (sent.error != 0) {
        Print(m_language.GetText(29, "Send failed:") + ' ' + std::to_string(sent.error));
        return false;
    }
    if (sent.count < request.size()) {
        Print(m_language.GetText(30, "Sent") + ' ' + std::to_string(sent.count) + ' ' +
              m_language.GetText(31, "bytes"));
    }
    return true;
}

void RouteTracer::WaitReadable(IcmpSocket& socket, std::chrono::milliseconds limit, bool& isReadable) const {
    const std::uint32_t begin = m_network.TickCount();
    for (auto left = limit; !m_stop.Requested();) {
        if (socket.WaitReadable(std::min(left, kWaitSlice)) != IcmpWait::Nothing) return;
        const std::chrono::milliseconds passed(m_network.TickCount() - begin);
        if (passed >= limit) break;
        left = limit - passed;
    }
    isReadable = false;
}

bool RouteTracer::ReceiveReply(IcmpSocket& socket, std::span<std::byte> buffer, Ipv4& source) {
    const IcmpReceived received = socket.Receive(buffer);
    source = received.source;
    if (received.error == 0) return true;
    Print(m_language.GetText(32, "Read failed:") + ' ' +
          (received.error == kErrorMessageTooLong
               ? m_language.GetText(33, "buffer is too small")
               : m_language.GetText(34, "error") + ' ' + std::to_string(received.error)));
    return false;
}

RouteTracer::Reply RouteTracer::DecodeReply(std::span<const std::byte> datagram, std::size_t byteCount,
                                            Ipv4 source) {
    // Before the look-up of the name, which may take longer than the way to the router.
    const std::uint32_t tick = m_network.TickCount();
    const std::size_t headerLength = HeaderLength(datagram);
    if (std::min(byteCount, datagram.size()) < headerLength + kIcmpHeaderSize) {
        Print(m_language.GetText(35, "Too few bytes from") + ' ' + FormatIpv4(source));
        return Reply::Stop;
    }
    const std::span<const std::byte> message = datagram.subspan(headerLength);
    const std::uint8_t type = ByteAt(message, 0);
    switch (type) {
        case kEchoReply:
            if (WordAt(message, kIdentifierOffset) != Identifier()) return Reply::Foreign;
            break;
        case kTimeExceeded: break;
        case kUnreachable: Print(m_language.GetText(36, "Destination unreachable")); return Reply::Stop;
        default:
            Print(m_language.GetText(37, "Unknown ICMP packet type") + ' ' + std::to_string(type) + ' ' +
                  m_language.GetText(38, "received"));
            return Reply::Stop;
    }
    PrintHop(AddressAt(datagram, kSourceOffset), tick);
    if (type == kEchoReply) m_isDone = true;
    return Reply::Answer;
}

void RouteTracer::PrintHop(Ipv4 hop, std::uint32_t tick) {
    const std::string address = FormatIpv4(hop);
    const std::string name = m_network.ReverseLookup(address, 0, m_stop);
    if (m_stop.Requested()) return;
    const auto passed = static_cast<std::int32_t>(tick - m_startTick);
    const std::string time = passed < 0
                                 ? m_language.GetText(39, "reached in: <10 ms.")
                                 : m_language.GetText(40, "reached in:") + ' ' + std::to_string(passed) + " ms.";
    Print("IP: " + address + " [" + name + "] " + time);
}

}  // namespace brennvar
