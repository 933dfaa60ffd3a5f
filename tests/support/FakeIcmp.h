// A network that answers echo requests as a script says, and time that only passes while it is waited for.
#pragma once

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "tools/IcmpNetwork.h"

namespace brennvar::test {

class FakeIcmp final : public IcmpNetwork {
public:
    using Bytes = std::vector<std::byte>;

    // What the socket has next. Where the script ends there is only silence.
    struct Event {
        std::uint32_t silence = 0;  // milliseconds before it
        bool waitFails = false;
        std::uint32_t receiveError = 0;
        Bytes datagram{};            // what the receive leaves in the buffer, also when it fails
        std::int32_t clockStep = 0;  // milliseconds, when it is received
    };
    std::deque<Event> script;
    std::function<void()> onWait = [] {};

    bool hasLibrary = true;
    std::uint32_t openError = 0;
    std::map<std::uint32_t, std::uint32_t> timeToLiveErrors;  // by the call, from 0
    IcmpSent sent{.error = 0, .count = 32};
    std::map<std::string, Ipv4> hosts;
    std::map<std::string, std::string> names;
    std::uint32_t tick = 1000;

    // What was asked for
    std::vector<std::uint32_t> timesToLive;
    std::vector<std::pair<Ipv4, Bytes>> requests;
    std::vector<std::size_t> receiveSizes;
    std::chrono::milliseconds longestWait{0};
    int libraryUses = 0;
    int openSockets = 0;

    bool StartLibrary() override {
        libraryUses += hasLibrary ? 1 : 0;
        return hasLibrary;
    }
    void StopLibrary() override { --libraryUses; }
    std::unique_ptr<IcmpSocket> Open(std::uint32_t& error) override {
        error = openError;
        return openError == 0 ? std::make_unique<Socket>(*this) : nullptr;
    }
    std::optional<Ipv4> Resolve(const std::string& host, const StopSignal& stop) override {
        const auto found = hosts.find(host);
        return found == hosts.end() || stop.Requested() ? std::nullopt : std::optional(found->second);
    }
    std::string ReverseLookup(const std::string& address, std::uint16_t, const StopSignal&) override {
        const auto found = names.find(address);
        return found == names.end() ? "-" : found->second;
    }
    bool Pause(std::chrono::milliseconds duration, const StopSignal& stop) override {
        tick += static_cast<std::uint32_t>(duration.count());
        return !stop.Requested();
    }
    std::uint32_t TickCount() const override { return tick; }
    std::uint32_t ProcessId() const override { return 0x1234ABCD; }

private:
    class Socket final : public IcmpSocket {
    public:
        explicit Socket(FakeIcmp& network) : m_network(network) { ++m_network.openSockets; }
        Socket(const Socket&) = delete;
        Socket& operator=(const Socket&) = delete;
        ~Socket() override { --m_network.openSockets; }

        std::uint32_t SetTimeToLive(std::uint32_t hops) override {
            const auto error =
                m_network.timeToLiveErrors.find(static_cast<std::uint32_t>(m_network.timesToLive.size()));
            m_network.timesToLive.push_back(hops);
            return error == m_network.timeToLiveErrors.end() ? 0 : error->second;
        }
        IcmpSent Send(Ipv4 destination, std::span<const std::byte> message) override {
            m_network.requests.emplace_back(destination, Bytes(message.begin(), message.end()));
            return m_network.sent;
        }
        IcmpWait WaitReadable(std::chrono::milliseconds limit) override {
            m_network.onWait();
            m_network.longestWait = std::max(m_network.longestWait, limit);
            auto& script = m_network.script;
            const auto most = static_cast<std::uint32_t>(limit.count());
            const std::uint32_t passes = script.empty() ? most : std::min(most, script.front().silence);
            m_network.tick += passes;
            if (script.empty()) return IcmpWait::Nothing;
            script.front().silence -= passes;
            if (script.front().silence > 0 || passes == most) return IcmpWait::Nothing;
            return script.front().waitFails ? IcmpWait::Failed : IcmpWait::Readable;
        }
        IcmpReceived Receive(std::span<std::byte> buffer) override {
            m_network.receiveSizes.push_back(buffer.size());
            const Event event = m_network.script.front();
            m_network.script.pop_front();
            m_network.tick += static_cast<std::uint32_t>(event.clockStep);
            std::copy_n(event.datagram.begin(), std::min(event.datagram.size(), buffer.size()), buffer.begin());
            return {.error = event.receiveError,
                    .count = event.datagram.size(),
                    .source = ParseIpv4("10.9.9.9").value_or(0)};
        }

    private:
        FakeIcmp& m_network;
    };
};

}  // namespace brennvar::test
