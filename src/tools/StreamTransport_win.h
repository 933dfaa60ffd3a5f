// The stream transport of the program: Winsock 2, IPv4, never blocking. Every wait is made of short ones, between
// which the stop signal is looked at.
#pragma once

#include "base/StopSignal.h"
#include "tools/StreamTransport.h"
#include "tools/UniqueSocket_win.h"

namespace brennvar {

class WinsockTransport final : public StreamTransport {
public:
    // The signal is borrowed and must outlive the transport. Starts the socket library for itself; where that
    // fails, every look-up and connection fails with its number.
    explicit WinsockTransport(const StopSignal& stop);
    ~WinsockTransport() override;
    WinsockTransport(const WinsockTransport&) = delete;
    WinsockTransport& operator=(const WinsockTransport&) = delete;

    // A look-up is given up after 30 s. One that is left behind ends by itself and holds nothing of this object.
    std::uint32_t Resolve(const std::string& host, Ipv4& address) override;
    std::uint32_t Connect(Ipv4 address, std::uint16_t port, std::chrono::milliseconds limit) override;
    StreamOutcome Send(std::span<const std::byte> bytes, std::chrono::milliseconds limit) override;
    StreamOutcome Receive(std::span<std::byte> bytes, std::chrono::milliseconds limit) override;
    void Close() override { m_socket.Reset(); }

private:
    enum class Readiness { Read, Write, Connected };
    // 0 when the socket is ready, or has failed, which the next call on it tells.
    [[nodiscard]] std::uint32_t WaitUntil(Readiness readiness, std::chrono::milliseconds limit) const;

    const StopSignal& m_stop;
    const std::uint32_t m_startupError;
    UniqueSocket m_socket;
};

}  // namespace brennvar
