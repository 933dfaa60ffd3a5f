// A TCP connection over IPv4 as the system gives it, as a seam: Winsock in the program (StreamTransport_win.h), a
// script in tests. One thread uses it. Every call ends within 100 ms of the stop signal that it was made with, with
// kErrorCancelled; none throws.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "base/Ipv4.h"
#include "tools/SocketError.h"

namespace brennvar {

// error 0: done. A receive of 0 bytes without an error: the peer has closed its side.
struct StreamOutcome {
    std::uint32_t error = 0;  // Winsock's number, or one of SocketError.h
    std::size_t count = 0;    // bytes that went over
};

class StreamTransport {
public:
    virtual ~StreamTransport() = default;

    // The first IPv4 address of a host; a dotted address is itself. The system's look-up cannot be cancelled: it
    // goes on by itself and its answer is dropped.
    virtual std::uint32_t Resolve(const std::string& host, Ipv4& address) = 0;
    // Port in host order. An earlier connection is closed first.
    virtual std::uint32_t Connect(Ipv4 address, std::uint16_t port, std::chrono::milliseconds limit) = 0;
    // Sends as much as the system takes at once, at least one byte, and waits for room for at most the limit.
    virtual StreamOutcome Send(std::span<const std::byte> bytes, std::chrono::milliseconds limit) = 0;
    // Receives what is there, and waits for it for at most the limit; a limit of 0 looks only.
    virtual StreamOutcome Receive(std::span<std::byte> bytes, std::chrono::milliseconds limit) = 0;
    virtual void Close() = 0;
};

}  // namespace brennvar
