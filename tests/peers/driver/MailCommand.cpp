#include "Commands.h"
#include "ConnectionArguments.h"
#include "base/StopSignal.h"
#include "base/SystemClock.h"
#include "config/Language.h"
#include "mail/MailFailure.h"
#include "mail/MailText.h"
#include "mail/Smtp.h"
#include "mail/TransferEncoding.h"
#include "tools/StreamTransport_win.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

namespace brennvar::peers {
namespace {

// Prints the dialogue: "> " what was sent, "< " what the server said, one line each.
class TalkingSmtp final : public CSmtp {
public:
    TalkingSmtp(Clock& clock, SmtpServer server, StopSignal& stop, const Arguments& arguments)
        : CSmtp(std::make_unique<WinsockTransport>(stop), clock, std::move(server)),
          m_retries(arguments.Number("retries", 0)),
          m_cancelAt(arguments.Number("cancel-at", 0)),
          m_stop(stop) {}

private:
    int OnWarning(int code, const std::string& reply) override {
        (void)std::printf("warning %d: %s\n", code, Printable(reply).c_str());
        if (code != 535 || m_retries == 0) return 0;
        --m_retries;
        return 1;
    }
    void OnError(int code, const std::string& reply) override {
        (void)std::printf("error %d: %s\n", code, Printable(reply).c_str());
        CSmtp::OnError(code, reply);
    }
    void OnReply(std::string_view command, int code, const std::string& reply) override {
        (void)std::printf("> %s\n< %d %s\n", Printable(command).c_str(), code, Printable(reply).c_str());
    }
    bool OnProgress(std::string_view /*command*/, std::uint64_t sent, std::uint64_t /*total*/) override {
        if (m_cancelAt == 0 || sent < m_cancelAt) return true;
        m_stop.Request();
        return false;
    }

    std::uint32_t m_retries;
    const std::uint32_t m_cancelAt;
    StopSignal& m_stop;
};

CodePage PageFrom(std::uint32_t number) {
    if (number == 1250) return CodePage::CentralEuropean;
    return number == 1251 ? CodePage::Cyrillic : CodePage::Western;
}

MailMessage MessageFrom(const Arguments& arguments) {
    MailMessage message;
    message.from = {.name = arguments.Text("from-name"), .address = arguments.Text("from")};
    const auto addresses = [&](const char* key) {
        std::vector<MailAddress> list;
        for (const std::string& text : arguments.All(key)) {
            const auto parsed = ParseAddresses(text);
            if (parsed)
                list.insert(list.end(), parsed->begin(), parsed->end());
            else
                list.push_back({.name = {}, .address = text});  // what a caller did not check
        }
        return list;
    };
    message.to = addresses("to");
    message.cc = addresses("cc");
    message.bcc = addresses("bcc");
    message.subject = arguments.Text("subject");
    message.page = PageFrom(arguments.Number("page", 1252));
    message.date = MailDate::Now();
    MailTextPart text;
    text.charset = arguments.Text("charset", "iso-8859-1");
    text.text = arguments.Text("text");
    text.encoding = FittingEncoding(TransferEncoding::SevenBit, text.text);
    message.texts = {text};
    const auto paths = arguments.All("attach");
    const auto names = arguments.All("name");
    const auto types = arguments.All("type");
    for (std::size_t index = 0; index < paths.size() && index < names.size() && index < types.size(); ++index) {
        message.files.push_back({.path = paths[index], .name = names[index], .contentType = types[index]});
    }
    return message;
}

}  // namespace

void SendMessageByMail(const Arguments& arguments) {
    SmtpServer server;
    server.host = arguments.Text("server");
    server.port = static_cast<std::uint16_t>(arguments.Number("port", kSmtpPort));
    server.user = arguments.Text("user");
    server.password = Password(arguments.Text("password"));
    server.proxy = ProxyFrom(arguments);
    server.computerName = arguments.Text("computer", "client.test");
    server.triesExtendedGreeting = !arguments.Has("plain");
    server.replyLimit = std::chrono::seconds(arguments.Number("limit", 30));
    StopSignal stop;
    SystemClock clock(stop);
    TalkingSmtp smtp(clock, server, stop, arguments);
    const int code = smtp.Deliver(MessageFrom(arguments));
    if (code == 0) {
        (void)std::printf("outcome: done\n");
        return;
    }
    const MailFailure failure =
        smtp.IsMessageUnfit() ? MailFailure{.problem = MailProblem::NoAttachment} : FailureOf(smtp, code);
    (void)std::printf("sentence: %s\n", DescribeFailure(failure, Language(nullptr)).c_str());
    (void)std::printf("outcome: %d (%u)\n", code, failure.error);
}

void MeasureEncoding(const Arguments& arguments) {
    std::ifstream file(arguments.Text("file"), std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    const bool isBase64 = arguments.Text("encoding") == "base64";
    std::size_t size = 0;
    double best = 0;
    for (std::uint32_t turn = 0; turn < arguments.Number("times", 3); ++turn) {
        const auto begin = std::chrono::steady_clock::now();
        if (isBase64) {  // as an attachment is: piece by piece
            for (std::size_t at = 0; at < text.size(); at += MailText::kFilePiece) {
                std::string lines;
                AppendBase64Lines(lines, std::string_view(text).substr(at, MailText::kFilePiece), at == 0);
                size += lines.size();
            }
        } else {
            std::string lines;
            for (QuotedPrintable encoder(text); encoder.AppendNext(lines); lines.clear()) size += lines.size();
        }
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
        best = turn == 0 ? took.count() : std::min(best, took.count());
    }
    (void)std::printf("size: %zu\nseconds: %f\noutcome: done\n", size, best);
}

}  // namespace brennvar::peers
