// The dialogue with a mail server (RFC 5321), over a connection that is not encrypted, with login by AUTH LOGIN
// where a user name is set. Every call waits until the server answers or the time-out passes, so it is made on a
// worker thread, by one thread at a time. Cancelling is the stop signal of the transport; the calls then return -1.
//
// What a server sends is believed in nothing but its code: a reply is at most 1024 bytes of what came first, and
// there is an end to how often it may ask for a login.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Clock.h"
#include "base/Password.h"
#include "mail/MailMessage.h"
#include "mail/MailSource.h"
#include "mail/ReplyEnd.h"
#include "tools/ProxySettings.h"
#include "tools/SocketError.h"
#include "tools/StreamTransport.h"
#include "tools/WSocket.h"

namespace brennvar {

inline constexpr std::uint16_t kSmtpPort = 25;

struct SmtpServer {
    std::string host{};  // a name or a dotted address
    std::uint16_t port = kSmtpPort;
    std::string user{};  // empty: no login
    Password password{};
    ProxySettings proxy{};
    std::string computerName = "localhost";  // for the greeting; at most kLongestComputerName count
    bool triesExtendedGreeting = true;       // EHLO; only a server that accepts it is asked for a login
    std::chrono::seconds replyLimit{30};     // the farewell is waited for 2 s at most
};

// What was being done when something failed.
enum class SmtpStep : std::uint8_t { Connection, Greeting, Login, Sender, Recipient, Data, Text, Farewell };

class CSmtp {
public:
    static constexpr int kNoReply = -1;          // no code: the connection is broken, or nothing came in time
    static constexpr std::size_t kPiece = 1024;  // bytes between two notices of what has been sent; of a reply
    static constexpr std::size_t kLongestComputerName = 64;
    // How often a server may answer 530 or ask once more for the same login. Enough for any honest one, and an end
    // for one that would go on for ever.
    static constexpr int kMostLogins = 20;

    // The clock is borrowed. The transport's stop signal cancels.
    CSmtp(std::unique_ptr<StreamTransport> transport, Clock& clock, SmtpServer server);
    CSmtp(const CSmtp&) = delete;
    CSmtp& operator=(const CSmtp&) = delete;
    virtual ~CSmtp() = default;

    // Connects, takes the greeting (220) and greets: 1, or 0 and the connection is closed.
    int Connect();
    // Sends a command, with its line end, after discarding what the server has said meanwhile; when its last reply
    // is not whole yet, half a second is waited for the rest. None: only waits for a reply. Returns the code of the
    // reply's first line (0 when it has none), or kNoReply.
    int SendCommand(std::optional<std::string_view> command);
    // These return 0, or the code that they failed with.
    int Greet();
    int Authenticate();
    // Recipients are To, Cc and Bcc, in this order; one accepted is enough. kNoReply without a lawful sender or
    // recipient, or when a file of the message cannot be read.
    int SendEnvelopeAndData(const MailMessage& message);
    int Quit();

    // Connects, sends and takes leave: 0, or the code that it failed with.
    int Deliver(const MailMessage& message);
    // The same of a message with one text in "iso-8859-1".
    int SendMail(const MailAddress& from, const MailAddress& to, const std::string& subject,
                 const std::string& body, const std::vector<MailAddress>& copies, const MailDate& date);

    // What the server said last, cut at its last line end: several lines have the line ends between them. What had
    // come, where the connection broke.
    [[nodiscard]] const std::string& LastReply() const { return m_lastReply; }
    [[nodiscard]] int LastCode() const { return m_lastCode; }
    // What is being done, or was when it failed.
    [[nodiscard]] SmtpStep Step() const { return m_step; }
    // What the connection failed with, if it did. A time-out of ours is kErrorTimedOut, a connection that the
    // server closed kErrorConnectionLost.
    [[nodiscard]] const std::optional<SocketError>& ConnectionError() const { return m_connectionError; }
    // The code that the login was refused with; 0 when it was not.
    [[nodiscard]] int RefusedLogin() const { return m_refusedLogin; }
    [[nodiscard]] bool HasUser() const { return !m_server.user.empty(); }
    // The whole message went out: without a reply to it nobody knows whether the server has taken it.
    [[nodiscard]] bool IsTextSent() const { return m_step == SmtpStep::Text && m_isAllSent; }
    // The message had no lawful sender or recipient, or its files could not be read.
    [[nodiscard]] bool IsMessageUnfit() const { return m_isMessageUnfit; }

protected:
    // A recipient or the login was refused. Anything but 0: try once more (of a login: 1).
    virtual int OnWarning(int /*code*/, const std::string& /*reply*/) { return 0; }
    // A step has failed. Code kNoReply: there is no connection to take leave of.
    virtual void OnError(int code, const std::string& reply);
    // After every reply. The command is as it was sent, with its line end, but for a password, which is dots, and
    // for the message itself, which is kEndOfText; empty where there was none.
    virtual void OnReply(std::string_view /*command*/, int /*code*/, const std::string& /*reply*/) {}
    // For each piece of a command longer than kPiece, when it has been handed to the system. False: what is being
    // sent is given up, and the connection.
    virtual bool OnProgress(std::string_view /*command*/, std::uint64_t /*sent*/, std::uint64_t /*total*/) {
        return true;
    }

    static constexpr std::string_view kEndOfText = "\r\n.\r\n";

private:
    [[nodiscard]] int Failed(int code);
    int SendSecret(const std::string& command, std::string_view toldAs);
    int Exchange(MailSource& source, std::string_view toldAs);
    void DiscardWhatCame();
    [[nodiscard]] bool SendAll(MailSource& source, std::string_view toldAs);
    // After so many bytes more, for each piece of them.
    [[nodiscard]] bool TellProgress(std::string_view toldAs, std::uint64_t sent, std::uint64_t added,
                                    std::uint64_t total);
    void KeepLastWords();
    [[nodiscard]] int ReadReply(std::string_view command);
    [[nodiscard]] int TakeReply(std::string_view command);
    [[nodiscard]] int AnswerChallenges();
    [[nodiscard]] int TellSender(const MailMessage& message);
    [[nodiscard]] int TellRecipients(const std::vector<MailAddress>& recipients);
    int SendText(MailSource& text);
    [[nodiscard]] std::chrono::seconds ReplyLimit() const;

    CWSocket m_socket;
    Clock& m_clock;
    const SmtpServer m_server;
    std::string m_lastReply;
    ReplyEnd m_replyEnd;  // of all that came since the last command
    int m_lastCode = 0;
    bool m_isGreeted = false;
    bool m_isExtended = false;
    SmtpStep m_step = SmtpStep::Connection;
    std::optional<SocketError> m_connectionError;
    int m_refusedLogin = 0;
    bool m_isMessageUnfit = false;
    bool m_isAllSent = false;  // of the latest command
};

}  // namespace brennvar
