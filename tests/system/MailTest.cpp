// Mail of the finished program: the form on the Traffic Log page and the test on the Options page, against a mail
// server of the test's own on this machine. What goes over the line is compared byte for byte.
#include "base/Windows_win.h"

#include <gtest/gtest.h>

#include <winsock2.h>
#include <ws2tcpip.h>

#include <atomic>
#include <mutex>
#include <regex>
#include <string>
#include <thread>

#include "Product.h"
#include "support/TempFolder.h"

namespace brennvar::test {
namespace {

constexpr int kTrafficLogPage = 463, kLogging = 2;
constexpr int kTestMailHere = 992, kMailAction = 105;
constexpr int kTo = 1461, kText = 1467, kMailStatus = 1470, kSend = 1471, kStop = 1472;
constexpr int kTestLines = 1481, kTestStatus = 1482, kTestCopy = 1485;

// One connection after the other on a port of its own; answers each line, or swallows it without a word.
class MailServer {
public:
    MailServer() {
        WSADATA data{};
        Require(::WSAStartup(MAKEWORD(2, 2), &data) == 0);
        m_listener = ::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
        sockaddr_in place{};
        place.sin_family = AF_INET;
        place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        Require(::bind(m_listener, reinterpret_cast<sockaddr*>(&place), sizeof place) == 0);
        int size = sizeof place;
        Require(::getsockname(m_listener, reinterpret_cast<sockaddr*>(&place), &size) == 0);
        Require(::listen(m_listener, 4) == 0);
        m_port = ntohs(place.sin_port);
        m_thread = std::thread([this] { Serve(); });
    }
    MailServer(const MailServer&) = delete;
    MailServer& operator=(const MailServer&) = delete;
    ~MailServer() {
        m_stops = true;
        // What the thread waits for is a connection, or bytes of one.
        ::shutdown(m_connection, SD_BOTH);
        const SOCKET waker = ::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
        sockaddr_in place{};
        place.sin_family = AF_INET;
        place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        place.sin_port = htons(static_cast<u_short>(m_port));
        ::connect(waker, reinterpret_cast<sockaddr*>(&place), sizeof place);
        ::closesocket(waker);
        m_thread.join();
        ::closesocket(m_listener);
        ::WSACleanup();
    }

    [[nodiscard]] std::string Address() const { return "127.0.0.1:" + std::to_string(m_port); }
    // The recipient is refused from now on.
    void Refuse() { m_refuses = true; }
    // Nothing is answered any more once a command begins so.
    void FallSilentAt(const std::string& command) {
        const std::lock_guard lock(m_mutex);
        m_silentAt = command;
    }
    [[nodiscard]] std::string Received() const {
        const std::lock_guard lock(m_mutex);
        return m_received;
    }

private:
    static void Require(bool condition) {
        if (!condition) throw std::runtime_error("no mail server");
    }
    void Serve() {
        while (!m_stops) {
            m_connection = ::accept(m_listener, nullptr, nullptr);
            if (m_stops || m_connection == INVALID_SOCKET) return;
            Say("220 ready\r\n");
            Talk();
            ::closesocket(m_connection);
        }
    }
    void Say(const std::string& text) const { ::send(m_connection, text.data(), static_cast<int>(text.size()), 0); }
    void Talk() {
        std::string line;
        bool isText = false;
        for (char c = 0; ::recv(m_connection, &c, 1, 0) == 1;) {
            line += c;
            const std::lock_guard lock(m_mutex);
            m_received += c;
            if (c != '\n') continue;
            const std::string said = std::exchange(line, {});
            if (!m_silentAt.empty() && said.starts_with(m_silentAt)) m_isSilent = true;
            if (isText && said != ".\r\n") continue;
            if (m_isSilent) continue;
            if (isText) {
                isText = false;
                Say("250 taken\r\n");
            } else if (said == "DATA\r\n") {
                isText = true;
                Say("354 go on\r\n");
            } else if (said == "QUIT\r\n") {
                Say("221 bye\r\n");
            } else {
                Say(m_refuses && said.starts_with("RCPT") ? "550 no such user\r\n" : "250 ok\r\n");
            }
        }
    }

    SOCKET m_listener = INVALID_SOCKET;
    std::atomic<SOCKET> m_connection = INVALID_SOCKET;
    unsigned m_port = 0;
    std::atomic<bool> m_stops = false;
    std::atomic<bool> m_refuses = false;
    mutable std::mutex m_mutex;
    std::string m_received;
    std::string m_silentAt;
    bool m_isSilent = false;
    std::thread m_thread;
};

class MailTest : public ProductFixture {
protected:
    void StartWithMail() {
        Start({"option-text 35 \"Fire Wall\" <fw@a.example>", "option-text 36 to@b.example",
               "option-text 37 cc@c.example", "option-text 38 Events", "option-text 39 " + m_server.Address(),
               R"(log allowed tcp 10.0.0.5:1025 93.184.216.34:443 out C:\Tools\aurora.exe)",
               "log denied udp 10.0.0.5:137 10.0.0.9:138 in C:\\Tools\\b.exe"});
    }
    [[nodiscard]] HWND OpenForm() {
        Ask(m_window, WM_COMMAND, kTrafficLogPage);
        EXPECT_TRUE(WaitUntil([&] { return ListRowCount(List()) == 2; }));
        Press(kMailAction);
        const HWND form = NextWindow("Send by mail");
        EXPECT_TRUE(WaitUntil([&] { return WindowText(::GetDlgItem(form, kTo)) == "to@b.example"; }));
        return form;
    }
    void Close(HWND dialog) const {
        ::PostMessageA(dialog, WM_CLOSE, 0, 0);
        EXPECT_TRUE(WaitUntil([&] { return !::IsWindow(dialog) && ::IsWindowEnabled(m_window); }));
    }
    // Without what differs from one time and machine to another.
    [[nodiscard]] std::string Received() const {
        std::string text = m_server.Received();
        text = std::regex_replace(text, std::regex("EHLO [^\r]+"), "EHLO pc");
        text = std::regex_replace(text, std::regex("\r\nDate: [^\r]+"), "\r\nDate: now");
        text = std::regex_replace(text, std::regex("_000_[0-9A-F]{8}"), "_000_N");
        text = std::regex_replace(text, std::regex("Traffic [0-9-]{10}"), "Traffic DAY");
        // The file: letters of base64.
        return std::regex_replace(text, std::regex("\r\n\r\n77u/[A-Za-z0-9+/=\r\n]+\r\n--"), "\r\n\r\nFILE\r\n--");
    }

    MailServer m_server;
};

constexpr char kEnvelope[] =
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

TEST_F(MailTest, SendsTheRowsOfTheLogAsAFile) {
    StartWithMail();
    const HWND form = OpenForm();
    SetText(::GetDlgItem(form, kText), "See below.\r\n.\r\n");
    ASSERT_TRUE(PressWhenEnabled(form, kSend));
    EXPECT_TRUE(WaitUntil([&] {
        return WindowText(::GetDlgItem(form, kMailStatus)) == "The mail server has taken the mail.";
    })) << WindowText(::GetDlgItem(form, kMailStatus));
    EXPECT_EQ(Received(), std::string(kEnvelope) +
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
}

TEST_F(MailTest, TriesTheOptionsOutAndSaysWhatFailed) {
    StartWithMail();
    OpenOptions(kLogging);
    Command(kTestMailHere);
    HWND dialog = NextWindow("Send a test mail");
    const auto status = [&] { return WindowText(::GetDlgItem(dialog, kTestStatus)); };
    EXPECT_TRUE(WaitUntil([&] { return status() == "The mail server has taken the mail."; })) << status();
    EXPECT_EQ(Received(), std::string(kEnvelope) +
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

    m_server.Refuse();
    Command(kTestMailHere);
    dialog = NextWindow("Send a test mail");
    EXPECT_TRUE(WaitUntil([&] {
        return status() ==
               "The mail server refused the recipient. Check the recipient's address. (550 no such user)";
    })) << status();
    Close(dialog);
}

TEST_F(MailTest, StopsAtOnceAndLeavesWhileAServerSaysNothing) {
    m_server.FallSilentAt("MAIL");
    StartWithMail();
    HWND form = OpenForm();
    const auto waitsForServer = [&] {
        return m_server.Received().find("MAIL FROM") != std::string::npos &&
               ::IsWindowEnabled(::GetDlgItem(form, kStop));
    };
    ASSERT_TRUE(PressWhenEnabled(form, kSend));
    ASSERT_TRUE(WaitUntil(waitsForServer));
    ExpectAnswers();
    const ULONGLONG before = ::GetTickCount64();
    ASSERT_TRUE(PressWhenEnabled(form, kStop));
    EXPECT_TRUE(WaitUntil(
        [&] { return WindowText(::GetDlgItem(form, kMailStatus)) == "Stopped: the mail was not sent."; }));
    EXPECT_LT(::GetTickCount64() - before, 5000U) << "not only when the server's time is over";
    // Closing stops as well.
    ASSERT_TRUE(PressWhenEnabled(form, kSend));
    ASSERT_TRUE(WaitUntil(waitsForServer));
    Close(form);
}

}  // namespace
}  // namespace brennvar::test
