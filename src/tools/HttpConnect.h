// The HTTP proxy's part of a connection (RFC 9110, 9.3.6): what it is asked for a tunnel, and what it answers.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "tools/ProxySettings.h"
#include "tools/StreamEndpoint.h"

namespace brennvar {

// How the HTTP proxy is asked; the two tools have spelled it differently from the first day.
enum class ConnectStyle {
    Http10,  // whois: HTTP/1.0, "Proxy-authorization", "User-Agent"
    Http11,  // mail: HTTP/1.1 with Host, "Proxy-Authorization"
};

// The request with its empty line. The login is in it when the settings have a user. The host must be free of line
// ends (CWSocket sees to it). Who sent it wipes it.
[[nodiscard]] std::string ConnectRequest(const StreamEndpoint& server, const ProxySettings& proxy,
                                         ConnectStyle style);

// The answer, in pieces of any size. Lines end with a line feed, with or without a carriage return before it.
class ConnectReply {
public:
    static constexpr std::size_t kMostBytes = 16 * 1024;  // of the status line, all headers and the empty line

    enum class State {
        Reading,     // more is needed
        Complete,    // the empty line has come
        Unreadable,  // this is not HTTP, or longer than kMostBytes
    };
    // Only while it is Reading.
    [[nodiscard]] State Add(std::string_view piece);

    // Of the last status line that came whole, 100 to 599 (information of class 1 is no answer and is read over);
    // 0: none yet.
    [[nodiscard]] int Status() const { return m_status; }
    // Complete: what came behind the empty line, which is the server's and was never looked at.
    [[nodiscard]] const std::string& Rest() const { return m_text; }

private:
    // False: not the first line of an answer.
    [[nodiscard]] bool TakeLine(std::string_view line);

    std::string m_text;       // what has come and is not understood yet
    std::size_t m_taken = 0;  // bytes of lines that are
    int m_status = 0;
    bool m_isStatusNext = true;
    bool m_isComplete = false;
};

}  // namespace brennvar
