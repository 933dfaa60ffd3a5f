#include "mail/MailMessage.h"

#include <gtest/gtest.h>

#include "support/TempFolder.h"

namespace brennvar {
namespace {

// Nothing when the text could not be read to its end; its size is checked on the way.
std::optional<std::string> TextOf(MailSource& source) {
    std::string text;
    while (true) {
        const auto piece = source.Next();
        if (!piece) return std::nullopt;
        if (piece->empty()) break;
        text += *piece;
    }
    EXPECT_EQ(text.size(), source.Size());
    return text;
}

std::string Composed(const MailMessage& message, std::uint32_t number = 0x1A2B) {
    const auto text = ComposeMail(message, number);
    return text ? TextOf(*text).value_or("unreadable") : "none";
}

MailMessage Simple() {
    MailMessage message;
    message.from = {"Fire Wall", "fw@a.example"};
    message.to = {{"", "to@b.example"}};
    message.subject = "Blocked";
    message.date = {.day = {.year = 2026, .month = 3, .day = 9}, .hour = 8, .minute = 5, .second = 9, .zone = 100};
    message.texts.push_back({.text = "Hello\n.world"});
    return message;
}

// Of Simple, without what tells of its parts.
constexpr char kHead[] =
    "X-Priority: 3 (Normal)\r\n"
    "X-MSMail-Priority: Normal\r\n"
    "X-Mailer: Brennvar Personal Firewall\r\n"
    "Importance: Normal\r\n"
    "Date: Mon, 9 Mar 2026 8:05:09 +0100\r\n"
    "Subject: Blocked\r\n"
    "To: <to@b.example>\r\n"
    "From: \"Fire Wall\" <fw@a.example>\r\n";

TEST(MailDateTest, CountsTheZoneFromTheBias) {
    struct Row {
        int bias;
        int offset;
        std::string_view printed;
    };
    const Row rows[] = {{-60, 100, "+0100"},  {0, 0, "-0000"},       {300, -500, "--0500"},
                        {-330, 530, "+0530"}, {210, -330, "--0330"}, {-1, 1, "+0001"}};
    for (const Row& row : rows) {
        EXPECT_EQ(ZoneOffset(row.bias), row.offset);
        MailDate date{.day = {.year = 2024, .month = 12, .day = 31}, .hour = 23, .minute = 0, .second = 59};
        date.zone = ZoneOffset(row.bias);
        EXPECT_EQ(FormatMailDate(date), "Tue, 31 Dec 2024 23:00:59 " + std::string(row.printed));
    }
    EXPECT_EQ(FormatMailDate({.day = {.year = 2026, .month = 2, .day = 30}}), "");
    EXPECT_EQ(FormatMailDate({}), "");
}

TEST(MailMessageTest, WritesOneTextWithItsHeadersInOrder) {
    EXPECT_EQ(Composed(Simple()), std::string(kHead) +
                                      "Content-Type: text/plain;\r\n\tcharset=\"iso-8859-1\"\r\n"
                                      "Content-Transfer-Encoding: 7bit\r\n"
                                      "MIME-Version: 1.0\r\n"
                                      "\r\n"
                                      "Hello\r\n..world");
}

TEST(MailMessageTest, NamesAllButBlindCopies) {
    MailMessage message = Simple();
    message.cc = {{"J\xF6rg", "c@d"}, {"e \"f\"", "e@f"}};
    message.bcc = {{"Secret", "secret@g"}};
    message.messageId = "1@a.example";
    const std::string text = Composed(message);
    EXPECT_NE(text.find("To: <to@b.example>,\r\n\t=?windows-1252?B?SvZyZw==?= <c@d>,\r\n\t\"e \\\"f\\\"\" <e@f>\r\n"
                        "From: "),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("MIME-Version: 1.0\r\nMessage-ID: <1@a.example>\r\n\r\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("ecret"), std::string::npos);
    EXPECT_EQ(message.Recipients().size(), 4U);
    EXPECT_EQ(message.Recipients().back().address, "secret@g");
    // "From: ", 27 characters of a word, a blank and 42 are 76; one more goes to the next line.
    for (const bool fits : {true, false}) {
        const std::string address = std::string(fits ? 38 : 39, 'a') + "@b";
        message.cc = {{"J\xF6rg", address}};
        EXPECT_NE(Composed(message).find((fits ? "?= <" : "?=\r\n <") + address), std::string::npos) << fits;
    }
}

TEST(MailMessageTest, PutsTheCallersHeadersFirstAndOnce) {
    MailMessage message = Simple();
    message.headers.Add("x-priority", "1");
    message.headers.Add("X-Other", "a\r\nBcc: x@y\r\n\tfolded");
    message.headers.Add("X-Other", "again");
    message.headers.Add("BCC", "x@y");
    message.headers.Add("Bad name", "x");
    message.headers.Add("Bad:", "x");
    message.headers.Add("", "x");
    const std::string text = Composed(message);
    EXPECT_TRUE(
        text.starts_with("x-priority: 1\r\nX-Other: a  Bcc: x@y\r\n\tfolded\r\nX-MSMail-Priority: Normal\r\n"
                         "X-Mailer: "))
        << text;
}

TEST(MailMessageTest, NoFieldCanBeginAHeader) {
    MailMessage message = Simple();
    const std::string evil = std::string("x\r\nEvil: 1\nEvil: 2\rEvil: 3") + '\0' + "\n\n.\r\n";
    message.from = {evil, evil};
    message.to = {{evil, evil}};
    message.subject = evil;
    message.messageId = evil;
    message.texts.push_back(
        {.contentType = evil, .charset = evil, .encoding = TransferEncoding::SevenBit, .contentId = evil});
    const test::TempFolder folder;
    message.files.push_back({.path = folder.Write("a", "b"), .name = evil, .contentType = evil});
    const std::string text = Composed(message);
    for (std::size_t at = text.find("Evil"); at != std::string::npos; at = text.find("Evil", at + 1)) {
        EXPECT_EQ(text[at - 1], ' ') << text.substr(0, at + 8);
    }
    EXPECT_EQ(text.find("\n."), text.find("\n..world"));
}

TEST(MailMessageTest, AttachesFilesBehindTheText) {
    const test::TempFolder folder;
    MailMessage message = Simple();
    message.files.push_back({.path = folder.Write("log", "1,2\r\n"), .name = "log.csv", .contentType = "text/csv"});
    message.files.push_back({.path = folder.Write("raw", std::string("\0\xFF", 2)), .name = "r", .isInline = true});
    EXPECT_EQ(Composed(message), std::string(kHead) +
                                     "Content-Type: multipart/mixed;\r\n"
                                     "\tboundary=\"CSmtpMsgPart123X456_000_00001A2B\"\r\n"
                                     "MIME-Version: 1.0\r\n"
                                     "\r\n"
                                     "This is a multipart message in MIME format"
                                     "\r\n--CSmtpMsgPart123X456_000_00001A2B\r\n"
                                     "Content-Type: text/plain;\r\n\tcharset=\"iso-8859-1\"\r\n"
                                     "Content-Transfer-Encoding: 7bit\r\n"
                                     "\r\n"
                                     "Hello\r\n..world"
                                     "\r\n--CSmtpMsgPart123X456_000_00001A2B\r\n"
                                     "Content-Type: text/csv;\r\n\tname=\"log.csv\"\r\n"
                                     "Content-Transfer-Encoding: base64\r\n"
                                     "Content-Disposition: attachment;\r\n\tfilename=\"log.csv\"\r\n"
                                     "\r\n"
                                     "MSwyDQo="
                                     "\r\n--CSmtpMsgPart123X456_000_00001A2B\r\n"
                                     "Content-Type: application/octet-stream;\r\n\tname=\"r\"\r\n"
                                     "Content-Transfer-Encoding: base64\r\n"
                                     "Content-Disposition: inline;\r\n\tfilename=\"r\"\r\n"
                                     "\r\n"
                                     "AP8="
                                     "\r\n--CSmtpMsgPart123X456_000_00001A2B--\r\n");
}

TEST(MailMessageTest, NestsAlternativesBesideFiles) {
    const test::TempFolder folder;
    MailMessage message = Simple();
    // The boundary that is tried first stands in a text.
    message.texts.push_back({.contentType = "text/html",
                             .encoding = TransferEncoding::QuotedPrintable,
                             .contentId = "id1",
                             .text = "CSmtpMsgPart123X456_001_00001A2B=\xFC"});
    EXPECT_NE(Composed(message).find("multipart/alternative;\r\n\tboundary=\"CSmtpMsgPart123X456_000_00001A2B\""),
              std::string::npos);
    message.files.push_back({.path = folder.Write("log", ""), .name = "log.csv", .isInline = true});
    const std::string text = Composed(message);
    EXPECT_EQ(text.substr(text.find("Content-Type")),
              "Content-Type: multipart/related;\r\n"
              "\tboundary=\"CSmtpMsgPart123X456_000_00001A2B\"\r\n"
              "MIME-Version: 1.0\r\n"
              "\r\n"
              "This is a multipart message in MIME format"
              "\r\n--CSmtpMsgPart123X456_000_00001A2B\r\n"
              "Content-Type: multipart/alternative;\r\n\tboundary=\"CSmtpMsgPart123X456_001_00001A2C\"\r\n"
              "\r\n--CSmtpMsgPart123X456_001_00001A2C\r\n"
              "Content-Type: text/plain;\r\n\tcharset=\"iso-8859-1\"\r\n"
              "Content-Transfer-Encoding: 7bit\r\n"
              "\r\n"
              "Hello\r\n..world"
              "\r\n--CSmtpMsgPart123X456_001_00001A2C\r\n"
              "Content-Type: text/html;\r\n\tcharset=\"iso-8859-1\"\r\n"
              "Content-Transfer-Encoding: quoted-printable\r\n"
              "Content-ID: <id1>\r\n"
              "\r\n"
              "CSmtpMsgPart123X456_001_00001A2B=3D=FC"
              "\r\n--CSmtpMsgPart123X456_001_00001A2C--\r\n"
              "\r\n--CSmtpMsgPart123X456_000_00001A2B\r\n"
              "Content-Type: application/octet-stream;\r\n\tname=\"log.csv\"\r\n"
              "Content-Transfer-Encoding: base64\r\n"
              "Content-Disposition: inline;\r\n\tfilename=\"log.csv\"\r\n"
              "\r\n"
              "\r\n--CSmtpMsgPart123X456_000_00001A2B--\r\n");
}

TEST(MailMessageTest, ReadsLargeFilesInPiecesAndNoticesThatTheyShrink) {
    const test::TempFolder folder;
    const std::string path = folder.Write("large", std::string(2 * MailText::kFilePiece + 1, 'a'));
    MailText text;
    text.AddText("head\r\n");
    ASSERT_TRUE(text.AddFile(path));
    text.AddText("\r\nend");
    const auto whole = TextOf(text);
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->find_first_not_of("YWFh\r\n", 6), whole->find("YQ==") + 1);
    EXPECT_TRUE(whole->ends_with("h\r\nYQ==\r\nend"));

    MailText cut;
    ASSERT_TRUE(cut.AddFile(path));
    std::filesystem::resize_file(path, MailText::kFilePiece + 5);
    EXPECT_TRUE(cut.Next());
    EXPECT_FALSE(cut.Next());

    EXPECT_FALSE(MailText().AddFile(folder.File("none")));
    EXPECT_FALSE(MailText().AddFile(folder.Path()));
}

}  // namespace
}  // namespace brennvar
