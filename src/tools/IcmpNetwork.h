// The machine's ICMP as trace route uses it, as a seam: raw sockets and names of the system in the program
// (tools/IcmpNetwork_win.h), a script in tests. One thread uses it; nothing here throws but for want of memory.
// Errors are the numbers of Winsock, 0 for none.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "base/Ipv4.h"
#include "base/StopSignal.h"

namespace brennvar {

struct IcmpSent {
    std::uint32_t error = 0;
    std::size_t count = 0;  // bytes
};

struct IcmpReceived {
    std::uint32_t error = 0;
    std::size_t count = 0;  // bytes, from the IP header on
    Ipv4 source = 0;
};

enum class IcmpWait { Readable, Nothing, Failed };

// A raw IPv4 socket for ICMP: it sends what it is given behind an IP header of the system's, and receives every
// ICMP message that reaches the machine, headers included. Closed by its destructor.
class IcmpSocket {
public:
    virtual ~IcmpSocket() = default;
    // Of what is sent from now on.
    virtual std::uint32_t SetTimeToLive(std::uint32_t hops) = 0;
    virtual IcmpSent Send(Ipv4 destination, std::span<const std::byte> message) = 0;
    virtual IcmpWait WaitReadable(std::chrono::milliseconds limit) = 0;
    // One datagram, without waiting for it. What is longer than the buffer is cut, and error 10040.
    virtual IcmpReceived Receive(std::span<std::byte> buffer) = 0;
};

class IcmpNetwork {
public:
    virtual ~IcmpNetwork() = default;
    // The socket library; stopped as often as it was started.
    [[nodiscard]] virtual bool StartLibrary() = 0;
    virtual void StopLibrary() = 0;
    // Null, and the error, where there is none: 10013 without administrative rights.
    [[nodiscard]] virtual std::unique_ptr<IcmpSocket> Open(std::uint32_t& error) = 0;
    // A dotted address is itself; else the first address of a name. Nothing within 100 ms of the stop signal.
    [[nodiscard]] virtual std::optional<Ipv4> Resolve(const std::string& host, const StopSignal& stop) = 0;
    // The name of a dotted address, "-" where there is none, where it takes longer than a few seconds to find, and
    // within 100 ms of the stop signal. Port in host order.
    [[nodiscard]] virtual std::string ReverseLookup(const std::string& address, std::uint16_t port,
                                                    const StopSignal& stop) = 0;
    // False as soon as the stop is requested.
    [[nodiscard]] virtual bool Pause(std::chrono::milliseconds duration, const StopSignal& stop) = 0;
    // Milliseconds since the start of the system, in 32 bits: it wraps after 49.7 days.
    [[nodiscard]] virtual std::uint32_t TickCount() const = 0;
    [[nodiscard]] virtual std::uint32_t ProcessId() const = 0;
};

}  // namespace brennvar
