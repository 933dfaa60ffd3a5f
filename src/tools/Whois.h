// Asks a registry's whois service (RFC 3912) who owns an address, and another one where the first says that the
// address is that one's. It waits: it is used on a worker thread, and ends by the stop signal of its socket.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "config/Language.h"
#include "tools/ToolOutput.h"
#include "tools/WSocket.h"

namespace brennvar {

inline constexpr std::uint16_t kWhoisPort = 43;

struct WhoisServers {
    StreamEndpoint first{.host = "whois.arin.net", .port = kWhoisPort};     // of the North American registry
    StreamEndpoint referral{.host = "whois.ripe.net", .port = kWhoisPort};  // of the European one
};

class Whois {
public:
    static constexpr std::size_t kMostQueryBytes = 511;      // before the line end; what is longer is cut
    static constexpr std::size_t kMostPiece = 100;           // bytes that are received at once
    static constexpr std::size_t kMostAnswer = 1024 * 1024;  // bytes; what is longer is cut
    static constexpr std::chrono::milliseconds kSilence{
        30'000};  // without a byte, after which a server is given up

    // The socket is borrowed for the life of the object.
    Whois(CWSocket& socket, ProxySettings proxy, WhoisServers servers = {});

    struct Answer {
        std::string text;
        bool isCut = false;
    };
    // One question, which ends when the server closes the connection. Throws SocketError; the answer then holds
    // what has come so far. A query with control characters is refused (kErrorInvalidParameter).
    void WhoisQuery(const StreamEndpoint& server, std::string_view query, Answer& answer);

    // The whole look-up of an address or a host name: prints that it waits, then, in its place, the answer line by
    // line. A failure is printed below what has come: the socket's text and a sentence. Does not throw SocketError.
    void LookUp(const std::string& text, const Language& language, ToolOutput& output);

private:
    void Ask(const std::string& text, Answer& answer);

    CWSocket& m_socket;
    const ProxySettings m_proxy;
    const WhoisServers m_servers;
};

// The lines that are not empty, in their order, without the blanks and control characters around them. No line is
// longer than kMostLine: a list that measures and paints a megabyte in one piece would stand still.
inline constexpr std::size_t kMostLine = 1000;  // bytes
[[nodiscard]] std::vector<std::string> AnswerLines(std::string_view answer);

}  // namespace brennvar
