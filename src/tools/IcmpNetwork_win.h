// ICMP over Winsock: a raw socket, and the system's look-ups of names, which are left behind when they take too
// long.
#pragma once

#include "tools/IcmpNetwork.h"

namespace brennvar {

class WinIcmpNetwork final : public IcmpNetwork {
public:
    [[nodiscard]] bool StartLibrary() override;
    void StopLibrary() override;
    [[nodiscard]] std::unique_ptr<IcmpSocket> Open(std::uint32_t& error) override;
    [[nodiscard]] std::optional<Ipv4> Resolve(const std::string& host, const StopSignal& stop) override;
    [[nodiscard]] std::string ReverseLookup(const std::string& address, std::uint16_t port,
                                            const StopSignal& stop) override;
    [[nodiscard]] bool Pause(std::chrono::milliseconds duration, const StopSignal& stop) override {
        return stop.WaitFor(duration);
    }
    [[nodiscard]] std::uint32_t TickCount() const override;
    [[nodiscard]] std::uint32_t ProcessId() const override;
};

}  // namespace brennvar
