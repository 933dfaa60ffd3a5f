#include "mail/MailSending.h"

#include <gtest/gtest.h>

#include "support/FakeTransport.h"
#include "support/TempFolder.h"

namespace brennvar {
namespace {

using test::FakeClock;
using test::FakePeer;
using Kind = MailLine::Kind;

class MailSendingTest : public testing::Test {
protected:
    FakeClock clock;
    FakePeer peer{clock};
    MailNewsBox box;
    MailWork work{
        .account = {.from = "a@b", .to = "c@d", .cc = {}, .subject = "S", .server = {}}, .text = "hi", .date = {}};

    MailSendingTest() {
        work.account.server.host = "192.0.2.25";
        work.account.server.computerName = "pc";
    }
    MailNews Sent() {
        SendMailNow(work, peer.Transport(), clock, box);
        return box.Take();
    }
    void TakesAll(std::initializer_list<const char*> recipients) {
        peer.Say("MAIL FROM: <a@b>\r\n", {"250 ok\r\n"});
        for (const char* reply : recipients) peer.Say(">\r\n", {reply});
        peer.Say("DATA\r\n", {"354 go on\r\n"});
        peer.Say("\r\n.\r\n", {"250 taken\r\n"});
        peer.Say("QUIT\r\n", {"221 bye\r\n"});
    }
};

TEST_F(MailSendingTest, ShowsTheDialogueWithoutThePassword) {
    work.account.server.user = "fred";
    work.account.server.password = Password("s3cret");
    peer.Say("", {"220 hello\r\n"});
    peer.Say("EHLO pc\r\n", {"250-ok\r\n250 \x1B[2J\r\n"});
    peer.Say("AUTH LOGIN\r\n", {"334 VXNlcm5hbWU6\r\n"});
    peer.Say("ZnJlZA==\r\n", {"334 UGFzc3dvcmQ6\r\n"});
    peer.Say("czNjcmV0\r\n", {"535 not s3cret, czNjcmV0\r\n"});
    peer.Say("MAIL FROM: <a@b>\r\n", {"530 not s3cret\r\n"});
    peer.Say("AUTH LOGIN\r\n", {"535 s3cret\r\n"});
    peer.Say("MAIL FROM: <a@b>\r\n", {"550 czNjcmV0s3crets3cret\r\n"});
    peer.Say("QUIT\r\n", {"221 bye\r\n"});
    const MailNews news = Sent();
    EXPECT_EQ(news.lines, (std::vector<MailLine>{{Kind::Servers, "220 hello"},
                                                 {Kind::Ours, "EHLO pc"},
                                                 {Kind::Servers, "250-ok"},
                                                 {Kind::Servers, "250  [2J"},
                                                 {Kind::Ours, "AUTH LOGIN"},
                                                 {Kind::Servers, "334 VXNlcm5hbWU6"},
                                                 {Kind::Ours, "ZnJlZA=="},
                                                 {Kind::Servers, "334 UGFzc3dvcmQ6"},
                                                 {Kind::Ours, "********"},
                                                 {Kind::Servers, "535 not ********, ********"},
                                                 {Kind::Ours, "MAIL FROM: <a@b>"},
                                                 {Kind::Servers, "530 not ********"},
                                                 {Kind::Ours, "AUTH LOGIN"},
                                                 {Kind::Servers, "535 ********"},
                                                 {Kind::Ours, "MAIL FROM: <a@b>"},
                                                 {Kind::Servers, "550 ************************"},
                                                 {Kind::Ours, "QUIT"},
                                                 {Kind::Servers, "221 bye"}}));
    ASSERT_TRUE(news.outcome && news.outcome->failure);
    EXPECT_EQ(news.outcome->failure->problem, MailProblem::LoginRefused);
    EXPECT_EQ(news.outcome->failure->reply, "550 ************************");
}

TEST_F(MailSendingTest, SendsTheFileAndNamesWhoWasRefused) {
    const test::TempFolder folder;
    work.account.cc = "\"E, F\" <e@f>; g@h";
    work.text = "\xCF\xF0\xE8";  // Cyrillic
    work.page = CodePage::Cyrillic;
    work.file = MailFilePart{.path = folder.Write("x", "1\r\n"), .name = "log.csv", .contentType = "text/csv"};
    peer.Say("", {"220 hello\r\n"});
    peer.Say("EHLO pc\r\n", {"250 ok\r\n"});
    TakesAll({"250 ok\r\n", "550 no\r\n", "251 yes\r\n"});
    const MailNews news = Sent();
    ASSERT_TRUE(news.outcome);
    EXPECT_FALSE(news.outcome->failure);
    EXPECT_EQ(news.outcome->refused, (std::vector<std::string>{"e@f"}));
    EXPECT_EQ(news.sent, news.total);
    EXPECT_NE(peer.sent.find("To: <c@d>,\r\n\t\"E, F\" <e@f>,\r\n\t<g@h>\r\nFrom: <a@b>\r\n"), std::string::npos);
    EXPECT_NE(
        peer.sent.find("charset=\"windows-1251\"\r\nContent-Transfer-Encoding: quoted-printable\r\n\r\n=CF=F0=E8"),
        std::string::npos);
    EXPECT_NE(peer.sent.find("\tfilename=\"log.csv\"\r\n\r\nMQ0K\r\n--"), std::string::npos);
    EXPECT_FALSE(box.Take().outcome);
}

TEST_F(MailSendingTest, ConnectsToNobodyWithoutAddresses) {
    const auto problem = [this](const auto& change) {
        const MailWork before = work;
        change(work);
        const MailNews news = Sent();
        work = before;
        EXPECT_TRUE(news.lines.empty());
        return news.outcome.value().failure.value().problem;
    };
    EXPECT_EQ(problem([](MailWork& it) { it.account.server.host.clear(); }), MailProblem::NoServer);
    EXPECT_EQ(problem([](MailWork& it) {
                  OptionValues options;
                  options.SetText(OptionId::MailServer, "mail.example:0");
                  it.account = MailAccountOf(options);
              }),
              MailProblem::WrongServer);
    EXPECT_EQ(problem([](MailWork& it) { it.account = MailAccountOf(OptionValues()); }), MailProblem::NoServer);
    EXPECT_EQ(problem([](MailWork& it) { it.account.from.clear(); }), MailProblem::NoSender);
    EXPECT_EQ(problem([](MailWork& it) { it.account.from = "a@b, c@d"; }), MailProblem::NoSender);
    EXPECT_EQ(problem([](MailWork& it) { it.account.to.clear(); }), MailProblem::NoRecipient);
    EXPECT_EQ(problem([](MailWork& it) { it.account.cc = "nobody"; }), MailProblem::NoRecipient);
    EXPECT_TRUE(peer.connections.empty());
}

TEST_F(MailSendingTest, TextIsLatin1WhereThatCarriesIt) {
    const auto charset = [this](std::string text, CodePage page) {
        work.text = std::move(text);
        work.page = page;
        return MakeMessage(work).message.texts.front().charset;
    };
    EXPECT_EQ(charset("a", CodePage::Cyrillic), "iso-8859-1");
    EXPECT_EQ(charset("\xFC", CodePage::Western), "iso-8859-1");
    EXPECT_EQ(charset("\x80", CodePage::Western), "windows-1252");  // the euro sign
    EXPECT_EQ(charset("\xFC", CodePage::CentralEuropean), "windows-1250");
}

TEST_F(MailSendingTest, KeepsNoMoreLinesThanAreShown) {
    for (std::size_t i = 0; i < MailNewsBox::kMostLines + 10; ++i) box.PutLine({.text = "x"});
    EXPECT_EQ(box.Take().lines.size(), MailNewsBox::kMostLines);
    box.PutLine({.text = "x"});
    EXPECT_TRUE(box.Take().lines.empty());
}

}  // namespace
}  // namespace brennvar
