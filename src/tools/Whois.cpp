#include "tools/Whois.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "tools/SocketFailure.h"

namespace brennvar {
namespace {

// How the first registry asks for full records, whatever the kind of what is looked for.
constexpr std::string_view kFullRecords = "+ ";
// In an answer, wherever it stands: the address is the European registry's.
constexpr std::string_view kReferral = "RIPE Network Coordination Centre";
constexpr std::string_view kLineEnd = "\r\n";
// Of a wait for room to send: the query fits the system's buffer at once.
constexpr std::chrono::milliseconds kSendLimit{10'000};

bool IsControl(char c) {
    const auto code = static_cast<unsigned char>(c);
    return code < ' ' || code == 0x7F;
}
bool IsBlank(char c) {
    return c == ' ' || IsControl(c);
}

std::string_view Trimmed(std::string_view line) {
    while (!line.empty() && IsBlank(line.front())) line.remove_prefix(1);
    while (!line.empty() && IsBlank(line.back())) line.remove_suffix(1);
    return line;
}

// So many dots are taken for an address, of which a registry's server knows more than we do.
bool IsAddress(std::string_view text) {
    return std::ranges::count(text, '.') >= 3;
}

}  // namespace

Whois::Whois(CWSocket& socket, ProxySettings proxy, WhoisServers servers)
    : m_socket(socket), m_proxy(std::move(proxy)), m_servers(std::move(servers)) {}

void Whois::WhoisQuery(const StreamEndpoint& server, std::string_view query, Answer& answer) {
    answer = {};
    const std::string_view sent = query.substr(0, kMostQueryBytes);
    // What stands behind a line end would be another question.
    if (std::ranges::any_of(sent, IsControl)) {
        throw SocketError(SocketMessage::InvalidParameters, kErrorInvalidParameter);
    }
    m_socket.Connect(server, m_proxy, ConnectStyle::Http10);
    m_socket.Send(std::string(sent).append(kLineEnd), kSendLimit);
    for (;;) {
        const std::string piece = m_socket.Receive(kMostPiece, kSilence);
        if (piece.empty()) break;
        const std::size_t room = kMostAnswer - answer.text.size();
        answer.text.append(piece, 0, room);
        answer.isCut = piece.size() > room;
        if (answer.isCut) break;
    }
    m_socket.Close();
}

void Whois::Ask(const std::string& text, Answer& answer) {
    const std::string address = IsAddress(text) ? text : FormatIpv4(m_socket.Resolve(text));
    WhoisQuery(m_servers.first, std::string(kFullRecords) + address, answer);
    if (answer.text.find(kReferral) == std::string::npos) return;
    Answer referred;
    try {
        WhoisQuery(m_servers.referral, address, referred);
    } catch (const SocketError&) {
        // The first answer is better than none.
        if (!referred.text.empty()) answer = std::move(referred);
        throw;
    }
    answer = std::move(referred);
}

void Whois::LookUp(const std::string& text, const Language& language, ToolOutput& output) {
    output.Print(language.GetText(121, "Getting data, please wait..."));
    Answer answer;
    std::optional<SocketError> failure;
    try {
        Ask(text, answer);
    } catch (const SocketError& error) {
        failure = error;
        m_socket.Close();
    }
    output.Clear();
    for (const std::string& line : AnswerLines(answer.text)) output.Print(line);
    if (answer.isCut) {
        output.Print(language.GetText(1700, "(The answer is longer than 1 MB. The rest is left out.)"));
    }
    if (!failure || failure->IsCancelled()) return;
    output.Print(failure->what());
    output.Print(language.GetText(SentenceOf(*failure)));
}

std::vector<std::string> AnswerLines(std::string_view answer) {
    std::vector<std::string> lines;
    while (!answer.empty()) {
        const std::size_t end = std::min(answer.find('\n'), answer.size());
        for (std::string_view line = Trimmed(answer.substr(0, end)); !line.empty();) {
            const std::size_t length = std::min(line.size(), kMostLine);
            std::string& shown = lines.emplace_back(line.substr(0, length));
            std::ranges::replace_if(shown, IsControl, ' ');
            line.remove_prefix(length);
        }
        answer.remove_prefix(std::min(end + 1, answer.size()));
    }
    return lines;
}

}  // namespace brennvar
