#pragma once

#include <gtest/gtest.h>

#include "mail/Smtp.h"
#include "support/FakeTransport.h"

namespace brennvar::test {

// Records what it is told, and answers as it was set.
class RecordingSmtp final : public CSmtp {
public:
    using CSmtp::CSmtp;

    std::vector<std::string> told;
    int answerToWarnings = 0;
    int warningsAnswered = 100;  // so many; then 0
    std::vector<std::pair<std::uint64_t, std::uint64_t>> progress;
    std::uint64_t stopsAt = ~0ULL;

private:
    int OnWarning(int code, const std::string& reply) override {
        told.push_back("warning " + std::to_string(code) + " " + reply);
        return warningsAnswered-- > 0 ? answerToWarnings : 0;
    }
    void OnError(int code, const std::string& reply) override {
        told.push_back("error " + std::to_string(code) + " " + reply);
        CSmtp::OnError(code, reply);
    }
    void OnReply(std::string_view command, int code, const std::string& reply) override {
        told.push_back("reply " + std::string(command) + "-> " + std::to_string(code) + " " + reply);
    }
    bool OnProgress(std::string_view, std::uint64_t sent, std::uint64_t total) override {
        progress.emplace_back(sent, total);
        return sent < stopsAt;
    }
};

// A dialogue with a server that says what the test wants.
class SmtpRig : public testing::Test {
protected:
    FakeClock clock;
    FakePeer peer{clock};
    SmtpServer server{.host = "mail.example", .computerName = "pc"};
    std::optional<RecordingSmtp> smtp;
    MailMessage message;

    SmtpRig() {
        peer.names = {{"mail.example", "192.0.2.25"}, {"proxy.example", "192.0.2.31"}};
        message.from = {"", "a@b"};
        message.to = {{"", "c@d"}};
        message.texts.push_back({.text = "hi"});
    }
    RecordingSmtp& Make() { return smtp.emplace(peer.Transport(), clock, server); }
    // Begins a dialogue anew.
    void Greets(const std::string& hello = "250 ok\r\n") {
        peer.script.clear();
        peer.sent.clear();
        peer.Say("", {"220 hello\r\n"});
        peer.Say("EHLO pc\r\n", {hello});
    }
    void AsksForLogin(const std::string& outcome) {
        peer.Say("AUTH LOGIN\r\n", {"334 VXNlcm5hbWU6\r\n"});  // "Username:"
        peer.Say("ZnJlZA==\r\n", {"334 cGFzc3dvcmQ6\r\n"});    // "fred"; "password:"
        peer.Say("czNjcmV0\r\n", {outcome});                   // "s3cret"
    }
    void SetLogin() {
        server.user = "fred";
        server.password = Password("s3cret");
    }
    void TakesTheRest() {
        peer.Say("MAIL FROM: <a@b>\r\n", {"250 ok\r\n"});
        peer.Say("RCPT TO: <c@d>\r\n", {"250 ok\r\n"});
        peer.Say("DATA\r\n", {"354 go on\r\n"});
        peer.Say("\r\n.\r\n", {"250 taken\r\n"});
        peer.Say("QUIT\r\n", {"221 bye\r\n"});
    }
    // What was sent, without the text of the message.
    [[nodiscard]] std::string Commands() const {
        const std::size_t begin = peer.sent.find("DATA\r\n");
        if (begin == std::string::npos) return peer.sent;
        const std::size_t end = peer.sent.find("\r\n.\r\n", begin);
        return peer.sent.substr(0, begin + 6) + peer.sent.substr(std::min(end, peer.sent.size()));
    }
};

}  // namespace brennvar::test
