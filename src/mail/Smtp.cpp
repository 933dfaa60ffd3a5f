#include "mail/Smtp.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "base/AsciiCase.h"
#include "base/WipedText.h"
#include "mail/HeaderText.h"
#include "tools/Base64.h"

namespace brennvar {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

// RFC 5321, 4.2; RFC 4954, 4 and 6.
constexpr int kReady = 220;
constexpr int kClosing = 221;
constexpr int kLoggedIn = 235;
constexpr int kDone = 250;
constexpr int kWillForward = 251;
constexpr int kChallenge = 334;
constexpr int kGoOn = 354;
constexpr int kLoginWanted = 530;
constexpr int kLoginRefused = 535;

// What stands before the challenge: "334 ".
constexpr std::size_t kCodeSize = 4;
// 32 KiB, which a system takes at once.
constexpr std::size_t kPiecesAtOnce = 32;
// What a server says to the farewell changes nothing any more.
constexpr seconds kFarewellLimit{2};
// The first line end completes a reply, so the rest of it is waited for before the next command: a line that came
// later would be taken for the reply to that. Long enough for lines that a server sends one by one; one that never
// ends its reply costs no more.
constexpr milliseconds kLateLines{500};
// User name and password, each asked for once, and as much again.
constexpr int kMostChallenges = 4;

// One text as it stands.
class TextSource final : public MailSource {
public:
    explicit TextSource(std::string_view text) : m_text(text), m_size(text.size()) {}
    [[nodiscard]] std::uint64_t Size() const override { return m_size; }
    [[nodiscard]] std::optional<std::string_view> Next() override { return std::exchange(m_text, {}); }

private:
    std::string_view m_text;
    const std::uint64_t m_size;
};

// A message, and what ends it.
class EndedSource final : public MailSource {
public:
    EndedSource(MailSource& message, std::string_view end)
        : m_message(message), m_end(end), m_endSize(end.size()) {}
    [[nodiscard]] std::uint64_t Size() const override { return m_message.Size() + m_endSize; }
    [[nodiscard]] std::optional<std::string_view> Next() override {
        const std::optional<std::string_view> piece = m_message.Next();
        if (!piece || !piece->empty()) return piece;
        return std::exchange(m_end, {});
    }

private:
    MailSource& m_message;
    std::string_view m_end;
    const std::uint64_t m_endSize;
};

// The number at the beginning; 0 when there is none, or one that no code is.
int CodeOf(std::string_view reply) {
    reply.remove_prefix(std::min(reply.find_first_not_of(" \t"), reply.size()));
    int code = 0;
    const auto parsed = std::from_chars(reply.data(), reply.data() + reply.size(), code);
    return parsed.ec == std::errc() && code > 0 ? code : 0;
}

}  // namespace

CSmtp::CSmtp(std::unique_ptr<StreamTransport> transport, Clock& clock, SmtpServer server)
    : m_socket(std::move(transport), clock), m_clock(clock), m_server(std::move(server)) {}

void CSmtp::OnError(int code, const std::string& /*reply*/) {
    if (code == kNoReply) m_isGreeted = false;
}

int CSmtp::Failed(int code) {
    OnError(code, m_lastReply);
    // Also where the function is overridden: nobody takes leave of a connection that is broken.
    if (code == kNoReply) m_isGreeted = false;
    // A reply without a code has failed as well, and 0 means success to whoever asked for the step.
    return code == 0 ? kNoReply : code;
}

seconds CSmtp::ReplyLimit() const {
    return m_step == SmtpStep::Farewell ? std::min(kFarewellLimit, m_server.replyLimit) : m_server.replyLimit;
}

int CSmtp::Connect() {
    m_step = SmtpStep::Connection;
    m_isGreeted = false;
    m_isExtended = false;
    m_isAllSent = false;
    m_connectionError.reset();
    m_refusedLogin = 0;
    m_lastReply.clear();
    m_lastCode = 0;
    try {
        m_socket.Close();
        m_socket.Connect({.host = m_server.host, .port = m_server.port}, m_server.proxy, ConnectStyle::Http11,
                         {.connect = ReplyLimit(), .proxy = ReplyLimit()});
    } catch (const SocketError& error) {
        m_connectionError = error;
        m_lastCode = Failed(kNoReply);
        return 0;
    }
    m_step = SmtpStep::Greeting;
    if (const int code = SendCommand(std::nullopt); code != kReady) {
        (void)Failed(code);
    } else if (Greet() == 0) {
        return 1;
    }
    m_socket.Close();
    return 0;
}

int CSmtp::Greet() {
    m_step = SmtpStep::Greeting;
    const std::string name = CleanText(m_server.computerName.substr(0, kLongestComputerName));
    const auto sayHello = [&](std::string_view word) {
        return SendCommand(std::string(word).append(1, ' ').append(name).append("\r\n"));
    };
    m_isExtended = m_server.triesExtendedGreeting && sayHello("EHLO") == kDone;
    if (!m_isExtended) {
        if (const int code = sayHello("HELO"); code != kDone) return Failed(code);
    }
    m_isGreeted = true;
    // A server that takes mail without a login may refuse one.
    if (m_isExtended) (void)Authenticate();
    return 0;
}

int CSmtp::Authenticate() {
    if (m_server.user.empty()) return 0;
    m_step = SmtpStep::Login;
    for (int login = 1;; ++login) {
        int code = SendCommand("AUTH LOGIN\r\n");
        if (code == kChallenge) code = AnswerChallenges();
        if (code == kLoggedIn) {
            m_refusedLogin = 0;
            return 0;
        }
        const bool mayRetry = code == kLoginRefused && OnWarning(code, m_lastReply) == 1;
        if (mayRetry && login < kMostLogins) continue;
        if (code != kNoReply) m_refusedLogin = code;
        return Failed(code);
    }
}

int CSmtp::AnswerChallenges() {
    int code = kChallenge;
    for (int challenge = 0; code == kChallenge && challenge < kMostChallenges; ++challenge) {
        const std::string_view encoded =
            std::string_view(m_lastReply).substr(std::min(kCodeSize, m_lastReply.size()));
        const std::string asked = DecodeBase64(encoded).value_or(std::string());
        if (EqualsIgnoringCase(asked, "Username:")) {
            code = SendCommand(EncodeBase64(m_server.user) + "\r\n");
        } else if (EqualsIgnoringCase(asked, "Password:")) {
            const WipedText letters = EncodeBase64(m_server.password.View());
            std::string line;
            line.reserve(letters.Text().size() + 2);  // what grew would leave a copy behind that nobody wipes
            line.append(letters.Text()).append("\r\n");
            const WipedText answer(std::move(line));
            code = SendSecret(answer, "********\r\n");
        } else {
            break;
        }
    }
    // A server that still waits for an answer would take the next command for it.
    if (code == kChallenge && SendCommand("*\r\n") == kNoReply) return kNoReply;
    return code;
}

int CSmtp::SendSecret(const std::string& command, std::string_view toldAs) {
    TextSource source(command);
    return Exchange(source, toldAs);
}

int CSmtp::SendCommand(std::optional<std::string_view> command) {
    if (!command) return m_lastCode = ReadReply({});
    TextSource source(*command);
    return Exchange(source, *command);
}

int CSmtp::Exchange(MailSource& source, std::string_view toldAs) {
    m_lastReply.clear();
    m_lastCode = kNoReply;
    m_isAllSent = false;
    try {
        DiscardWhatCame();
        if (!SendAll(source, toldAs)) return kNoReply;
        m_isAllSent = true;
    } catch (const SocketError& error) {
        m_connectionError = error;
        KeepLastWords();
        return kNoReply;
    }
    return m_lastCode = ReadReply(toldAs);
}

void CSmtp::DiscardWhatCame() {
    const milliseconds begin = m_clock.Elapsed();
    try {
        while (true) {
            const milliseconds passed = m_clock.Elapsed() - begin;
            // A server that never stops talking is not waited for longer than one that never talks.
            if (passed >= ReplyLimit()) throw SocketError(SocketMessage::Connect, kErrorConnectionLost);
            const milliseconds limit =
                m_replyEnd.IsReached() ? milliseconds(0) : std::max(kLateLines - passed, milliseconds(0));
            const std::string piece = m_socket.Receive(kPiece, limit);
            if (piece.empty()) return;
            m_replyEnd.Take(piece);
        }
    } catch (const SocketError& error) {
        if (error.code != kErrorTimedOut) throw;  // else nothing waits
    }
}

bool CSmtp::SendAll(MailSource& source, std::string_view toldAs) {
    const std::uint64_t total = source.Size();
    std::uint64_t sent = 0;
    while (true) {
        std::optional<std::string_view> text = source.Next();
        if (!text) {
            m_isMessageUnfit = true;
            m_socket.Close();  // half a message must not be taken for a whole one
            return false;
        }
        if (text->empty()) return true;
        while (!text->empty()) {
            // Many pieces in one call: a call of the system costs as much as thousands of bytes.
            const std::string_view pieces = text->substr(0, kPiece * kPiecesAtOnce);
            m_socket.Send(pieces, ReplyLimit());
            text->remove_prefix(pieces.size());
            if (total > kPiece && !TellProgress(toldAs, sent, pieces.size(), total)) {
                m_connectionError.emplace(SocketMessage::Connect, kErrorCancelled);
                m_socket.Close();
                return false;
            }
            sent += pieces.size();
        }
    }
}

bool CSmtp::TellProgress(std::string_view toldAs, std::uint64_t sent, std::uint64_t added, std::uint64_t total) {
    for (const std::uint64_t end = sent + added; sent < end;) {
        sent += std::min<std::uint64_t>(kPiece, end - sent);
        if (!OnProgress(toldAs, sent, total)) return false;
    }
    return true;
}

// A server that refuses a message while it comes says why and closes the connection.
void CSmtp::KeepLastWords() {
    try {
        m_lastReply = m_socket.Receive(kPiece, milliseconds(0));
    } catch (const SocketError&) {
        // It said nothing.
    }
}

int CSmtp::ReadReply(std::string_view command) {
    m_lastReply.clear();
    m_replyEnd = {};
    const milliseconds begin = m_clock.Elapsed();
    while (true) {
        // The time-out counts whole seconds, and so do those that have passed.
        const seconds passed = std::chrono::duration_cast<seconds>(m_clock.Elapsed() - begin);
        try {
            if (passed >= ReplyLimit()) throw SocketError(SocketMessage::Connect, kErrorTimedOut);
            const std::string piece = m_socket.Receive(kPiece - m_lastReply.size(), ReplyLimit() - passed);
            if (piece.empty()) {
                m_connectionError.emplace(SocketMessage::Connect, kErrorConnectionLost);
                return kNoReply;
            }
            m_lastReply += piece;
            m_replyEnd.Take(piece);
        } catch (const SocketError& error) {
            if (m_lastReply.empty() || error.IsCancelled()) {
                m_connectionError = error;
                return kNoReply;
            }
            return TakeReply(command);
        }
        if (const std::size_t end = m_lastReply.rfind('\n'); end != std::string::npos) {
            m_lastReply.resize(end > 0 ? end - 1 : 0);
            return TakeReply(command);
        }
        if (m_lastReply.size() >= kPiece) return TakeReply(command);
    }
}

int CSmtp::TakeReply(std::string_view command) {
    const int code = CodeOf(m_lastReply);
    OnReply(command, code, m_lastReply);
    return code;
}

int CSmtp::SendEnvelopeAndData(const MailMessage& message) {
    const std::vector<MailAddress> recipients = message.Recipients();
    const bool areSafe = std::all_of(recipients.begin(), recipients.end(),
                                     [](const MailAddress& who) { return IsSafeAddress(who.address); });
    const auto boundaryNumber = static_cast<std::uint32_t>(m_clock.UtcNow());
    std::unique_ptr<MailText> text;
    if (areSafe && !recipients.empty() && IsSafeAddress(message.from.address)) {
        text = ComposeMail(message, boundaryNumber);
    }
    m_isMessageUnfit = !text;
    if (!text) return kNoReply;
    if (const int code = TellSender(message); code != 0) return code;
    if (const int code = TellRecipients(recipients); code != 0) return code;
    m_step = SmtpStep::Data;
    if (const int code = SendCommand("DATA\r\n"); code != kGoOn) return Failed(code);
    return SendText(*text);
}

int CSmtp::TellSender(const MailMessage& message) {
    const std::string command = "MAIL FROM: <" + message.from.address + ">\r\n";
    m_step = SmtpStep::Sender;
    int code = SendCommand(command);
    for (int login = 0; code == kLoginWanted && login < kMostLogins; ++login) {
        if (Authenticate() == kNoReply) return kNoReply;
        m_step = SmtpStep::Sender;
        code = SendCommand(command);
    }
    return code == kDone ? 0 : Failed(code);
}

int CSmtp::TellRecipients(const std::vector<MailAddress>& recipients) {
    m_step = SmtpStep::Recipient;
    int accepted = 0;
    for (const MailAddress& who : recipients) {
        const std::string command = "RCPT TO: <" + who.address + ">\r\n";
        for (int attempt = 0;; ++attempt) {
            const int code = SendCommand(command);
            if (code == kNoReply) return Failed(code);
            if (code == kDone || code == kWillForward) {
                ++accepted;
                break;
            }
            if (OnWarning(code, m_lastReply) == 0 || attempt >= kMostLogins) break;
        }
    }
    return accepted > 0 ? 0 : Failed(m_lastCode);
}

int CSmtp::SendText(MailSource& text) {
    m_step = SmtpStep::Text;
    EndedSource ended(text, kEndOfText);
    const int code = Exchange(ended, kEndOfText);
    return code == kDone ? 0 : Failed(code);
}

int CSmtp::Quit() {
    if (!m_isGreeted) return 0;
    m_step = SmtpStep::Farewell;
    const int code = SendCommand("QUIT\r\n");
    m_isGreeted = false;
    return code == kClosing ? 0 : Failed(code);
}

int CSmtp::Deliver(const MailMessage& message) {
    if (Connect() == 0) return m_lastCode != 0 ? m_lastCode : kNoReply;
    const int code = SendEnvelopeAndData(message);
    if (code == 0) {
        // The message is on its way, whatever the server says to this.
        (void)Quit();
    } else if (m_isGreeted) {
        const SmtpStep failed = m_step;
        std::string reply = m_lastReply;
        (void)Quit();
        m_step = failed;
        m_lastReply = std::move(reply);
        m_lastCode = code;
    }
    m_socket.Close();
    return code;
}

int CSmtp::SendMail(const MailAddress& from, const MailAddress& to, const std::string& subject,
                    const std::string& body, const std::vector<MailAddress>& copies, const MailDate& date) {
    MailMessage message;
    message.from = from;
    message.to = {to};
    message.cc = copies;
    message.subject = subject;
    message.date = date;
    message.texts.push_back({.text = body});
    return Deliver(message);
}

}  // namespace brennvar
