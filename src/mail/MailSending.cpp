#include "mail/MailSending.h"

#include <algorithm>
#include <exception>
#include <string_view>
#include <utility>

#include "base/WipedText.h"
#include "mail/HeaderText.h"
#include "tools/Base64.h"

namespace brennvar {
namespace {

constexpr std::string_view kDots = "********";

// CSmtp that tells the box what is said. What a server repeats of the password is dots as well.
class ToldSmtp final : public CSmtp {
public:
    ToldSmtp(std::unique_ptr<StreamTransport> transport, Clock& clock, const SmtpServer& server, MailNewsBox& box)
        : CSmtp(std::move(transport), clock, server),
          m_password(server.password),
          m_encodedPassword(EncodeBase64(server.password.View())),
          m_box(box) {}
    ToldSmtp(const ToldSmtp&) = delete;
    ToldSmtp& operator=(const ToldSmtp&) = delete;

    [[nodiscard]] const std::vector<std::string>& Refused() const { return m_refused; }
    // As the server said it, with the password as dots.
    [[nodiscard]] std::string WithoutPassword(std::string text) const {
        // A password of one letter or two would make dots of half the words.
        constexpr std::size_t kShortest = 3;
        for (const std::string_view secret : {std::string_view(m_encodedPassword.Text()), m_password.View()}) {
            if (secret.size() < kShortest) continue;
            for (std::size_t at = 0; (at = text.find(secret, at)) != std::string::npos; at += kDots.size()) {
                text.replace(at, secret.size(), kDots);
            }
        }
        return text;
    }

private:
    void OnReply(std::string_view command, int code, const std::string& reply) override {
        if (command == kEndOfText) {
            m_box.PutLine({.kind = MailLine::Kind::Ours, .text = "."});
        } else if (!command.empty()) {
            TellLines(MailLine::Kind::Ours, command);
        }
        TellLines(MailLine::Kind::Servers, WithoutPassword(reply));
        constexpr std::string_view kRecipient = "RCPT TO: <";
        const bool isAccepted = code == 250 || code == 251;
        if (command.starts_with(kRecipient) && !isAccepted) {
            command.remove_prefix(kRecipient.size());
            m_refused.emplace_back(command.substr(0, command.find('>')));
        }
    }
    bool OnProgress(std::string_view, std::uint64_t sent, std::uint64_t total) override {
        m_box.PutProgress(sent, total);
        return true;
    }

    void TellLines(MailLine::Kind kind, std::string_view text) {
        while (!text.empty()) {
            const std::size_t end = std::min(text.find('\n'), text.size());
            std::string_view line = text.substr(0, end);
            text.remove_prefix(std::min(end + 1, text.size()));
            while (line.ends_with('\r')) line.remove_suffix(1);
            m_box.PutLine({.kind = kind, .text = CleanText(line)});
        }
    }

    const Password m_password;
    const WipedText m_encodedPassword;
    MailNewsBox& m_box;
    std::vector<std::string> m_refused;
};

// In Windows-1252 these bytes are letters and signs that ISO 8859-1 does not have.
bool IsLatin1(std::string_view text) {
    return std::none_of(text.begin(), text.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte >= 0x80 && byte <= 0x9F;
    });
}

MailOutcome Failed(MailProblem problem) {
    return {.failure = MailFailure{.problem = problem}, .refused = {}};
}

MailOutcome Send(const MailWork& work, std::unique_ptr<StreamTransport> transport, Clock& clock, MailNewsBox& box) {
    const SmtpServer& server = work.account.server;
    if (server.host.empty()) {
        return Failed(work.account.isServerWrong ? MailProblem::WrongServer : MailProblem::NoServer);
    }
    MailMade made = MakeMessage(work);
    if (made.problem) return Failed(*made.problem);
    ToldSmtp smtp(std::move(transport), clock, server, box);
    const int code = smtp.Deliver(made.message);
    if (code == 0) return {.failure = {}, .refused = smtp.Refused()};
    if (smtp.IsMessageUnfit()) return Failed(MailProblem::NoAttachment);
    MailFailure failure = FailureOf(smtp, code);
    failure.reply = smtp.WithoutPassword(std::move(failure.reply));
    return {.failure = std::move(failure), .refused = {}};
}

}  // namespace

void MailNewsBox::PutLine(MailLine line) {
    const std::lock_guard lock(m_mutex);
    if (m_lineCount++ < kMostLines) m_news.lines.push_back(std::move(line));
}

void MailNewsBox::PutProgress(std::uint64_t sent, std::uint64_t total) {
    const std::lock_guard lock(m_mutex);
    m_news.sent = sent;
    m_news.total = total;
}

void MailNewsBox::PutOutcome(MailOutcome outcome) {
    const std::lock_guard lock(m_mutex);
    m_news.outcome = std::move(outcome);
}

MailNews MailNewsBox::Take() {
    const std::lock_guard lock(m_mutex);
    MailNews taken{.lines = std::exchange(m_news.lines, {}),
                   .sent = m_news.sent,
                   .total = m_news.total,
                   .outcome = std::exchange(m_news.outcome, std::nullopt)};
    return taken;
}

void SendMailNow(const MailWork& work, std::unique_ptr<StreamTransport> transport, Clock& clock, MailNewsBox& box) {
    MailOutcome outcome;
    try {
        outcome = Send(work, std::move(transport), clock, box);
    } catch (const std::exception&) {
        outcome = Failed(MailProblem::NotMade);
    }
    box.PutOutcome(std::move(outcome));
}

MailMade MakeMessage(const MailWork& work) {
    const MailAccount& account = work.account;
    MailMade made;
    MailMessage& message = made.message;
    const auto from = ParseAddresses(account.from);
    if (!from || from->size() != 1) {
        made.problem = MailProblem::NoSender;
        return made;
    }
    auto to = ParseAddresses(account.to);
    auto cc = ParseAddresses(account.cc);
    if (!to || to->empty() || !cc) {
        made.problem = MailProblem::NoRecipient;
        return made;
    }
    message.from = from->front();
    message.to = std::move(*to);
    message.cc = std::move(*cc);
    message.subject = account.subject;
    message.page = work.page;
    message.date = work.date;
    const bool isPlain = IsAscii(work.text) || (work.page == CodePage::Western && IsLatin1(work.text));
    message.texts.push_back({.charset = isPlain ? "iso-8859-1" : CharsetName(work.page), .text = work.text});
    if (work.file) message.files.push_back(*work.file);
    return made;
}

}  // namespace brennvar
