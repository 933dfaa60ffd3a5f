// One mail on its way, on a thread of its own, and what the thread that shows it gets to see.
#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "base/Clock.h"
#include "mail/MailAccount.h"
#include "mail/MailFailure.h"
#include "mail/MailMessage.h"
#include "tools/StreamTransport.h"

namespace brennvar {

// What is to be sent. The texts are as the user typed them.
struct MailWork {
    MailAccount account;
    std::string text;                   // of the message, in the code page
    CodePage page = CodePage::Western;  // of all texts
    std::optional<MailFilePart> file{};
    MailDate date;
};

struct MailLine {
    enum class Kind : std::uint8_t { Ours, Servers };
    Kind kind = Kind::Ours;
    std::string text;  // of one line, without anything that a control could not show; passwords are dots
    friend bool operator==(const MailLine&, const MailLine&) = default;
};

struct MailOutcome {
    std::optional<MailFailure> failure{};  // nothing: the server has taken it
    // Addresses that the server refused while it took others.
    std::vector<std::string> refused{};
};

struct MailNews {
    std::vector<MailLine> lines;
    std::uint64_t sent = 0;  // bytes of the message
    std::uint64_t total = 0;
    std::optional<MailOutcome> outcome;  // it is over
};

// Between the two threads.
class MailNewsBox {
public:
    // Of all lines; what a server says beyond that is not shown.
    static constexpr std::size_t kMostLines = 2000;

    void PutLine(MailLine line);
    void PutProgress(std::uint64_t sent, std::uint64_t total);
    void PutOutcome(MailOutcome outcome);
    // What has come since the last call; the progress stays.
    [[nodiscard]] MailNews Take();

private:
    std::mutex m_mutex;
    MailNews m_news;
    std::size_t m_lineCount = 0;
};

// Sends it and tells the box; returns when it is over, which the transport's stop signal brings about at any time.
// The clock is borrowed.
void SendMailNow(const MailWork& work, std::unique_ptr<StreamTransport> transport, Clock& clock, MailNewsBox& box);

// The message that is sent: its text in "iso-8859-1", as all mail of this program, where that can carry it, else in
// the code page. Nothing, and the problem, when an address is missing or none.
struct MailMade {
    MailMessage message;
    std::optional<MailProblem> problem{};
};
[[nodiscard]] MailMade MakeMessage(const MailWork& work);

}  // namespace brennvar
