// Mail of the finished program: the form on the Traffic Log page and the test on the Options page, against a mail
// server of the test's own on this machine. What goes over the line is compared byte for byte.
#include <gtest/gtest.h>

#include <regex>

#include "LoopbackServer.h"
#include "Product.h"

namespace brennvar::test {
namespace {

constexpr int kTrafficLogPage = 463, kLogging = 2;
constexpr int kTestMailHere = 992, kMailAction = 105;
constexpr int kTo = 1461, kText = 1467, kMailStatus = 1470, kSend = 1471, kStop = 1472;
constexpr int kTestLines = 1481, kTestStatus = 1482;

using Steps = std::vector<LoopbackServer::Step>;

const Steps kTakesAll = {{"", "220 ready\r\n"},          {"\r\n", "250 ok\r\n"},     {"\r\n", "250 ok\r\n"},
                         {"\r\n", "250 ok\r\n"},         {"\r\n", "250 ok\r\n"},     {"DATA\r\n", "354 go on\r\n"},
                         {"\r\n.\r\n", "250 taken\r\n"}, {"QUIT\r\n", "221 bye\r\n"}};
const Steps kRefuses = {{"", "220 ready\r\n"},
                        {"\r\n", "250 ok\r\n"},
                        {"\r\n", "250 ok\r\n"},
                        {"\r\n", "550 no such user\r\n"},
                        {"\r\n", "550 no such user\r\n"},
                        {"QUIT\r\n", ""}};
const LoopbackServer::Connection kFallsSilent = {.steps = {{"", "220 ready\r\n"}, {"\r\n", "250 ok\r\n"}},
                                                 .closes = false};

// Without what differs from one time and machine to another.
std::string Comparable(std::string text) {
    text = std::regex_replace(text, std::regex("EHLO [^\r]+"), "EHLO pc");
    text = std::regex_replace(text, std::regex("\r\nDate: [^\r]+"), "\r\nDate: now");
    text = std::regex_replace(text, std::regex("_000_[0-9A-F]{8}"), "_000_N");
    text = std::regex_replace(text, std::regex("Traffic [0-9-]{10}"), "Traffic DAY");
    // The file: letters of base64.
    return std::regex_replace(text, std::regex("\r\n\r\n77u/[A-Za-z0-9+/=\r\n]+\r\n--"), "\r\n\r\nFILE\r\n--");
}

const std::string kEnvelope =
    "EHLO pc\r\n"
    "MAIL FROM: <fw@a.example>\r\n"
    "RCPT TO: <to@b.example>\r\n"
    "RCPT TO: <cc@c.example>\r\n"
    "DATA\r\n"
    "X-Priority: 3 (Normal)\r\n"
    "X-MSMail-Priority: Normal\r\n"
    "X-Mailer: Brennvar Personal Firewall\r\n"
    "Importance: Normal\r\n"
    "Date: now\r\n";

class MailTest : public ProductFixture {
protected:
    static void ExpectStatus(HWND dialog, int id, const std::string& text, Place place = Place::current()) {
        const HWND status = ::GetDlgItem(dialog, id);
        (void)WaitUntil([&] { return WindowText(status) == text; });
        EXPECT_EQ(WindowText(status), text) << "line " << place.line();
    }
};

TEST_F(MailTest, TriesTheOptionsOutSendsTheLogAndStopsWhenNothingIsSaid) {
    const LoopbackServer server(
        {{.steps = kTakesAll}, {.steps = kRefuses}, {.steps = kTakesAll}, kFallsSilent, kFallsSilent});
    Start({"option-text 35 \"Fire Wall\" <fw@a.example>", "option-text 36 to@b.example",
           "option-text 37 cc@c.example", "option-text 38 Events",
           "option-text 39 127.0.0.1:" + std::to_string(server.Port()),
           R"(log allowed tcp 10.0.0.5:1025 93.184.216.34:443 out C:\Tools\aurora.exe)",
           "log denied udp 10.0.0.5:137 10.0.0.9:138 in C:\\Tools\\b.exe"});
    const auto received = [&](std::size_t connection) { return Comparable(server.Received().at(connection)); };
    OpenOptions(kLogging);
    Command(kTestMailHere);
    HWND dialog = NextWindow("Send a test mail");
    ExpectStatus(dialog, kTestStatus, "The mail server has taken the mail.");
    EXPECT_EQ(received(0), kEnvelope +
                               "Subject: Events\r\n"
                               "To: <to@b.example>,\r\n\t<cc@c.example>\r\n"
                               "From: \"Fire Wall\" <fw@a.example>\r\n"
                               "Content-Type: text/plain;\r\n\tcharset=\"iso-8859-1\"\r\n"
                               "Content-Transfer-Encoding: 7bit\r\n"
                               "MIME-Version: 1.0\r\n"
                               "\r\n"
                               "This is a test mail. The options for mail are right.\r\n"
                               "\r\n.\r\n"
                               "QUIT\r\n");
    const HWND lines = FindVisibleControl(dialog, kTestLines);
    EXPECT_TRUE(WaitUntil([&] { return ListRowCount(lines) == 15; })) << ListRowCount(lines);
    const Rows said = ListRows(lines, 1, 20);
    ASSERT_GE(said.size(), 4U);
    EXPECT_EQ(said[0][0], "< 220 ready");
    EXPECT_EQ(said[3][0], "> MAIL FROM: <fw@a.example>");
    Close(dialog);
    Command(kTestMailHere);
    dialog = NextWindow("Send a test mail");
    ExpectStatus(dialog, kTestStatus,
                 "The mail server refused the recipient. Check the recipient's address. (550 no such user)");
    Close(dialog);

    const auto openForm = [&] {
        Ask(m_window, WM_COMMAND, kTrafficLogPage);
        EXPECT_TRUE(WaitUntil([&] { return ListRowCount(List()) == 2; }));
        Press(kMailAction);
        const HWND form = NextWindow("Send by mail");
        EXPECT_TRUE(WaitUntil([&] { return WindowText(::GetDlgItem(form, kTo)) == "to@b.example"; }));
        return form;
    };
    HWND form = openForm();
    SetText(::GetDlgItem(form, kText), "See below.\r\n.\r\n");
    ASSERT_TRUE(PressWhenEnabled(form, kSend));
    ExpectStatus(form, kMailStatus, "The mail server has taken the mail.");
    EXPECT_EQ(received(2), kEnvelope +
                               "Subject: Traffic DAY\r\n"
                               "To: <to@b.example>,\r\n\t<cc@c.example>\r\n"
                               "From: \"Fire Wall\" <fw@a.example>\r\n"
                               "Content-Type: multipart/mixed;\r\n\tboundary=\"CSmtpMsgPart123X456_000_N\"\r\n"
                               "MIME-Version: 1.0\r\n"
                               "\r\n"
                               "This is a multipart message in MIME format\r\n"
                               "--CSmtpMsgPart123X456_000_N\r\n"
                               "Content-Type: text/plain;\r\n\tcharset=\"iso-8859-1\"\r\n"
                               "Content-Transfer-Encoding: 7bit\r\n"
                               "\r\n"
                               "See below.\r\n..\r\n\r\n"
                               "--CSmtpMsgPart123X456_000_N\r\n"
                               "Content-Type: text/csv;\r\n\tname=\"Traffic DAY.csv\"\r\n"
                               "Content-Transfer-Encoding: base64\r\n"
                               "Content-Disposition: attachment;\r\n\tfilename=\"Traffic DAY.csv\"\r\n"
                               "\r\n"
                               "FILE\r\n"
                               "--CSmtpMsgPart123X456_000_N--\r\n"
                               "\r\n.\r\n"
                               "QUIT\r\n");
    EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(form, kSend))) << "it would be sent twice";
    Close(form);

    form = openForm();
    const auto sendToTheSilent = [&](std::size_t connections) {
        Require(PressWhenEnabled(form, kSend));
        Require(WaitUntil([&] {
            const Lines heard = server.Received();
            return heard.size() == connections && heard.back().find("MAIL FROM") != std::string::npos &&
                   ::IsWindowEnabled(::GetDlgItem(form, kStop));
        }));
    };
    sendToTheSilent(4);
    ExpectAnswers();
    const ULONGLONG before = ::GetTickCount64();
    ASSERT_TRUE(PressWhenEnabled(form, kStop));
    ExpectStatus(form, kMailStatus, "Stopped: the mail was not sent.");
    EXPECT_LT(::GetTickCount64() - before, 5000U) << "not only when the server's time is over";
    // Closing stops as well.
    sendToTheSilent(5);
    Close(form);
}

}  // namespace
}  // namespace brennvar::test
