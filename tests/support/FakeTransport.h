// A server, or a proxy with the server behind it, that plays a script, in place of Winsock. It hands out the
// transports that talk to it, records what it was asked, and fails on request.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstring>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "FakeClock.h"
#include "tools/StreamTransport.h"

namespace brennvar::test {

class FakePeer {
public:
    struct Piece {
        std::string bytes;                   // what one receive gets at most
        std::chrono::milliseconds after{0};  // the pause before it, from when it was waited for
        bool operator==(const Piece&) const = default;
    };
    // As soon as what was sent since the last exchange ends with the given text, the pieces are on their way. An
    // exchange that waits for nothing begins with the connection, or with the one before.
    struct Exchange {
        std::string until;
        std::vector<Piece> pieces;
        bool closes = false;  // the connection behind the pieces, though the script goes on
    };
    struct Connection {
        std::string address;
        std::uint16_t port = 0;
        std::chrono::milliseconds limit{0};
        bool operator==(const Connection&) const = default;
    };

    explicit FakePeer(FakeClock& time) : clock(time) {}
    [[nodiscard]] std::unique_ptr<StreamTransport> Transport() { return std::make_unique<Line>(*this); }

    // One piece for each text; nothing is waited for before the first.
    void Say(std::string until, std::initializer_list<std::string> texts) {
        Exchange exchange{.until = std::move(until), .pieces = {}};
        for (const std::string& text : texts) exchange.pieces.push_back({.bytes = text});
        script.push_back(std::move(exchange));
    }

    FakeClock& clock;
    std::map<std::string, std::string> names;  // host to dotted address; others are not found (11001)
    std::deque<Exchange> script;
    bool closesAtEnd = true;            // after the last piece; otherwise it goes on saying nothing
    std::size_t mostPerSend = 1 << 20;  // bytes that one send takes
    // Error numbers of the n-th call, counted from 1 over all connections.
    std::map<int, std::uint32_t> connectErrors;
    std::map<int, std::uint32_t> sendErrors;
    std::map<int, std::uint32_t> receiveErrors;
    std::function<void()> whenReceiving = [] {};  // before every receive

    // What happened.
    std::vector<std::string> lookups;
    std::vector<Connection> connections;
    std::string sent;                    // on all connections
    std::vector<std::size_t> sendSizes;  // bytes offered to each send
    std::vector<std::size_t> readSizes;  // bytes asked for by each receive
    std::vector<std::chrono::milliseconds> receiveLimits;
    int closes = 0;  // of open connections

private:
    class Line final : public StreamTransport {
    public:
        explicit Line(FakePeer& peer) : m_peer(peer) {}
        ~Line() override { Close(); }

        std::uint32_t Resolve(const std::string& host, Ipv4& address) override {
            m_peer.lookups.push_back(host);
            const auto found = m_peer.names.find(host);
            const auto dotted = ParseIpv4(found != m_peer.names.end() ? found->second : host);
            if (!dotted) return kErrorHostNotFound;
            address = *dotted;
            return 0;
        }
        std::uint32_t Connect(Ipv4 address, std::uint16_t port, std::chrono::milliseconds limit) override {
            Close();
            m_peer.connections.push_back({FormatIpv4(address), port, limit});
            if (const std::uint32_t error = Failure(m_peer.connectErrors, m_peer.connections.size())) return error;
            m_isOpen = true;
            m_peer.m_heard.clear();
            m_peer.m_coming.clear();
            m_peer.m_given = 0;
            m_peer.m_isClosing = false;
            m_peer.Follow();
            return 0;
        }
        StreamOutcome Send(std::span<const std::byte> bytes, std::chrono::milliseconds) override {
            if (!m_isOpen) return {.error = 10057};  // WSAENOTCONN
            m_peer.sendSizes.push_back(bytes.size());
            if (const std::uint32_t error = Failure(m_peer.sendErrors, m_peer.sendSizes.size()))
                return {.error = error};
            const std::size_t taken = std::min(bytes.size(), m_peer.mostPerSend);
            const std::string_view text(reinterpret_cast<const char*>(bytes.data()), taken);
            m_peer.sent += text;
            m_peer.m_heard += text;
            m_peer.Follow();
            return {.error = 0, .count = taken};
        }
        StreamOutcome Receive(std::span<std::byte> bytes, std::chrono::milliseconds limit) override {
            m_peer.whenReceiving();
            if (!m_isOpen) return {.error = 10057};
            m_peer.readSizes.push_back(bytes.size());
            m_peer.receiveLimits.push_back(limit);
            if (const std::uint32_t error = Failure(m_peer.receiveErrors, m_peer.readSizes.size())) {
                return {.error = error};
            }
            return m_peer.Give(bytes, limit);
        }
        void Close() override {
            if (m_isOpen) ++m_peer.closes;
            m_isOpen = false;
        }

    private:
        static std::uint32_t Failure(const std::map<int, std::uint32_t>& errors, std::size_t call) {
            const auto found = errors.find(static_cast<int>(call));
            return found != errors.end() ? found->second : 0;
        }

        FakePeer& m_peer;
        bool m_isOpen = false;
    };

    void Follow() {
        while (!script.empty() && m_heard.ends_with(script.front().until)) {
            if (!script.front().until.empty()) m_heard.clear();
            m_coming.insert(m_coming.end(), script.front().pieces.begin(), script.front().pieces.end());
            m_isClosing = script.front().closes;
            script.pop_front();
        }
    }
    StreamOutcome Give(std::span<std::byte> bytes, std::chrono::milliseconds limit) {
        if (m_coming.empty()) {
            if (m_isClosing || (closesAtEnd && script.empty())) return {};
            clock.Pass(limit);
            return {.error = kErrorTimedOut};
        }
        Piece& next = m_coming.front();
        if (next.after > limit) {
            next.after -= limit;
            clock.Pass(limit);
            return {.error = kErrorTimedOut};
        }
        clock.Pass(std::exchange(next.after, std::chrono::milliseconds(0)));
        const std::size_t count = std::min(bytes.size(), next.bytes.size() - m_given);
        std::memcpy(bytes.data(), next.bytes.data() + m_given, count);
        m_given += count;
        if (m_given == next.bytes.size()) {
            m_coming.pop_front();
            m_given = 0;
        }
        return {.error = 0, .count = count};
    }

    std::string m_heard;  // since the last exchange
    std::deque<Piece> m_coming;
    // Bytes of the first piece. It is not moved up for each receive, since it may be a megabyte.
    std::size_t m_given = 0;
    bool m_isClosing = false;  // behind what is coming
};

}  // namespace brennvar::test
