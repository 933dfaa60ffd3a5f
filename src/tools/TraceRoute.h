// Trace route: echo requests whose time to live grows, and a line for each router that tells that it has ended. The
// last line, of the destination itself, is the program's ping.
//
// Some of what it does is old and stays: one request serves the whole trace, so that every time is measured from
// its beginning; the hop behind a silent router is skipped; "<10 ms." is only said when the tick count has wrapped.
//
// In a console program:
//     WinIcmpNetwork network;                     // tools/IcmpNetwork_win.h
//     Language english(nullptr);
//     StopSignal stop;
//     RouteTracer(network, english, output, stop).TraceRoute("192.0.2.1");
// where output is a ToolOutput that writes each line to the console, and Request() of the signal, from any thread,
// ends the trace within 100 ms.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/StopSignal.h"
#include "config/Language.h"
#include "tools/IcmpNetwork.h"
#include "tools/ToolOutput.h"

namespace brennvar {

class RouteTracer {
public:
    static constexpr std::size_t kEchoSize = 32;  // bytes of a request, ICMP header included
    // What a receive asks for, in bytes: 1,024 and two times 20 more, and the memory behind it.
    static constexpr std::size_t kReceiveSize = 1064;
    static constexpr std::chrono::milliseconds kReplyWait{2000};
    static constexpr std::uint32_t kLastSilentHop = 10;  // a time-out that leads further ends the trace
    static constexpr std::uint32_t kMostHops = 100;

    // Everything is borrowed for the life of the tracer, which is used on one thread.
    RouteTracer(IcmpNetwork& network, const Language& language, ToolOutput& output, const StopSignal& stop);

    // One whole trace to a host name or dotted address. It has no other result than its lines, faults included.
    // Returns within 100 ms of the stop signal, without a further line.
    void TraceRoute(const std::string& host);

    enum class Reply : std::int8_t {
        Answer = 0,    // of a hop or the destination; its line has been printed
        Stop = -1,     // the trace ends
        Foreign = -2,  // to another process: the wait goes on
    };
    // A received datagram, from its IP header on, of which byteCount bytes count as received. Reads nothing behind
    // the datagram, whatever stands in it. source: of the socket, for the fault that names it.
    [[nodiscard]] Reply DecodeReply(std::span<const std::byte> datagram, std::size_t byteCount, Ipv4 source);

    // An echo request (RFC 792) for the whole of the buffer, which has at least 8 bytes: type 8, code 0, checksum,
    // identifier, sequence, and EF BE AD DE over and over.
    static void BuildEchoRequest(std::span<std::byte> request, std::uint16_t identifier, std::uint16_t sequence);

private:
    enum class Outcome {
        NextHop,
        Silent,  // nothing came within the wait
        Ended,
    };

    [[nodiscard]] std::unique_ptr<IcmpSocket> SetupIcmpSocket(const std::string& host, std::uint32_t firstHop,
                                                              Ipv4& destination);
    void TraceHops(IcmpSocket& socket, Ipv4 destination);
    [[nodiscard]] Outcome ProbeHop(IcmpSocket& socket, Ipv4 destination, std::span<const std::byte> request,
                                   std::span<std::byte> received);
    [[nodiscard]] bool SendEcho(IcmpSocket& socket, Ipv4 destination, std::span<const std::byte> request);
    // Clears the flag only when the wait ends with nothing to read; a wait that fails leaves it, and the receive
    // tells what is wrong.
    void WaitReadable(IcmpSocket& socket, std::chrono::milliseconds limit, bool& isReadable) const;
    [[nodiscard]] bool ReceiveReply(IcmpSocket& socket, std::span<std::byte> buffer, Ipv4& source);
    void PrintHop(Ipv4 hop, std::uint32_t tick);

    void Print(const std::string& line) { m_output.Print(line); }
    [[nodiscard]] std::uint16_t Identifier() const { return static_cast<std::uint16_t>(m_network.ProcessId()); }

    IcmpNetwork& m_network;
    const Language& m_language;
    ToolOutput& m_output;
    const StopSignal& m_stop;
    std::uint32_t m_startTick = 0;  // of the request
    bool m_isDone = false;          // the destination has answered, or the trace is at its end
};

}  // namespace brennvar
