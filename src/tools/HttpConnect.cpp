#include "tools/HttpConnect.h"

#include <algorithm>
#include <utility>

#include "base/WipedText.h"
#include "tools/Base64.h"

namespace brennvar {
namespace {

constexpr std::string_view kAgent = "Harrowlyn Update";
constexpr std::string_view kProtocol = "HTTP/";

// Of the request, behind its login.
constexpr std::size_t kMostBehindLogin = 64;
static_assert(kMostBehindLogin > std::string_view("\r\nUser-Agent: \r\n\r\n").size() + kAgent.size());

WipedText LoginOf(const ProxySettings& proxy) {
    const std::string& password = proxy.password;
    std::string login;
    login.reserve(proxy.user.size() + 1 + password.size());
    login.append(proxy.user).append(1, ':').append(password);
    const WipedText whole(std::move(login));
    return EncodeBase64(whole);
}

// "HTTP/1.1 200 whatever": the number, or 0 for anything else.
int StatusOf(std::string_view line) {
    constexpr std::size_t kDigitCount = 3;
    if (!line.starts_with(kProtocol)) return 0;
    const std::size_t blank = line.find(' ');
    if (blank == std::string_view::npos || line.size() < blank + 1 + kDigitCount) return 0;
    const std::string_view digits = line.substr(blank + 1, kDigitCount);
    const std::string_view behind = line.substr(blank + 1 + kDigitCount);
    if (!behind.empty() && behind.front() != ' ') return 0;
    if (!std::ranges::all_of(digits, [](char c) { return c >= '0' && c <= '9'; })) return 0;
    const int status = (digits[0] - '0') * 100 + (digits[1] - '0') * 10 + (digits[2] - '0');
    return status >= 100 && status <= 599 ? status : 0;
}

}  // namespace

std::string ConnectRequest(const StreamEndpoint& server, const ProxySettings& proxy, ConnectStyle style) {
    const bool isOld = style == ConnectStyle::Http10;
    const std::string where = server.host + ":" + std::to_string(server.port);
    std::string request = "CONNECT " + where + (isOld ? " HTTP/1.0\r\n" : " HTTP/1.1\r\nHost: " + where + "\r\n");
    if (!proxy.user.empty()) {
        request += isOld ? "Proxy-authorization: Basic " : "Proxy-Authorization: Basic ";
        const WipedText letters = LoginOf(proxy);
        // What grew would leave a copy behind that nobody wipes.
        request.reserve(request.size() + letters.Text().size() + kMostBehindLogin);
        request.append(letters.Text()).append("\r\n");
    }
    if (isOld) request.append("User-Agent: ").append(kAgent).append("\r\n");
    request.append("\r\n");
    return request;
}

ConnectReply::State ConnectReply::Add(std::string_view piece) {
    m_text += piece;
    while (!m_isComplete) {
        const std::size_t end = m_text.find('\n');
        if (m_taken + (end == std::string::npos ? m_text.size() : end + 1) > kMostBytes) return State::Unreadable;
        if (end == std::string::npos) {
            // Whoever speaks another protocol may wait for us to speak first: it is told by its first letters.
            const std::size_t known = std::min(m_text.size(), kProtocol.size());
            const bool isHttp = !m_isStatusNext || m_text.compare(0, known, kProtocol.substr(0, known)) == 0;
            return isHttp ? State::Reading : State::Unreadable;
        }
        std::string_view line = std::string_view(m_text).substr(0, end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (!TakeLine(line)) return State::Unreadable;
        m_text.erase(0, end + 1);
        m_taken += end + 1;
    }
    return State::Complete;
}

bool ConnectReply::TakeLine(std::string_view line) {
    if (m_isStatusNext) {
        m_status = StatusOf(line);
        m_isStatusNext = false;
        return m_status != 0;
    }
    if (!line.empty()) return true;  // a header: none of them matters
    m_isStatusNext = m_status < 200;
    m_isComplete = !m_isStatusNext;
    return true;
}

}  // namespace brennvar
