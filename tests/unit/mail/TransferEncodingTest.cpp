#include "mail/TransferEncoding.h"

#include <gtest/gtest.h>

#include <string>

namespace brennvar {
namespace {

std::string Quoted(std::string_view text) {
    return EncodeText(TransferEncoding::QuotedPrintable, text);
}

TEST(TransferEncodingTest, WritesWhatCouldBeHarmedAsCodes) {
    struct Row {
        std::string_view text;
        std::string_view expected;
    };
    const Row rows[] = {
        {"", ""},
        {"plain text, 1 < 2?", "plain text, 1 < 2?"},
        {"a=b", "a=3Db"},
        {"!#@[\\]^`{|}~\"", "=21=23=40=5B=5C=5D=5E=60=7B=7C=7D=7E=22"},
        {"$%&'()*+/:<>_", "$%&'()*+/:<>_"},
        {"gr\xFC\xDF", "gr=FC=DF"},
        {std::string_view("\0\x7F\x1B", 3), "=00=7F=1B"},
        // Line ends become CR LF; a CR alone is none.
        {"a\nb\r\nc\rd", "a\r\nb\r\nc=0Dd"},
        // A blank at the end of a line could be lost.
        {"a \nb\t\r\n \nc ", "a=20\r\nb=09\r\n=20\r\nc=20"},
        {"a\tb c", "a\tb c"},
        {".", "."},
    };
    for (const Row& row : rows) EXPECT_EQ(Quoted(row.text), row.expected) << row.text;
}

TEST(TransferEncodingTest, BreaksLinesAtSeventySix) {
    const std::string a70(70, 'a');
    const std::string a75(75, 'a');
    // No place to break at: in the middle, and 75 characters with the "=" behind them.
    EXPECT_EQ(Quoted(a75), a75);
    EXPECT_EQ(Quoted(a75 + "bc"), a75 + "=\r\nbc");
    // A code is never torn: 73 and 3 are one too many before the "=".
    EXPECT_EQ(Quoted(std::string(72, 'a') + "\xFC"), std::string(72, 'a') + "=FC");
    EXPECT_EQ(Quoted(std::string(73, 'a') + "\xFC"), std::string(73, 'a') + "=\r\n=FC");
    // Rather behind a blank, one of "-;.,?!", or a "!" as its code.
    EXPECT_EQ(Quoted(a70 + " bcdefgh"), a70 + " =\r\nbcdefgh");
    for (const char c : std::string("-;.,?")) EXPECT_EQ(Quoted(a70 + c + "bcdefgh"), a70 + c + "=\r\nbcdefgh");
    EXPECT_EQ(Quoted(a70 + "!bcdefgh"), a70 + "=21=\r\nbcdefgh");
    EXPECT_EQ(Quoted(a70 + "(21bcdefgh"), a70 + "(21bc=\r\ndefgh");
    // But not so far back that lines become short.
    EXPECT_EQ(Quoted("a " + a75), "a " + std::string(73, 'a') + "=\r\naa");
    // The code of a blank at the end still has to fit.
    EXPECT_EQ(Quoted(std::string(73, 'a') + " \n"), std::string(73, 'a') + "=20\r\n");
    EXPECT_EQ(Quoted(std::string(74, 'a') + " \n"), std::string(74, 'a') + "=\r\n=20\r\n");
}

TEST(TransferEncodingTest, EncodesLongTextPieceByPiece) {
    // Lines of 64 bytes behind one byte more: each piece ends between CR and LF, and inside of a line.
    static_assert(QuotedPrintable::kPiece % 64 == 0);
    std::string text = "b";
    while (text.size() < 2 * QuotedPrintable::kPiece + 64) text += std::string(62, 'a') + "\r\n";
    text += "c ";
    std::string encoded;
    int pieces = 0;
    QuotedPrintable lines(text);
    while (lines.AppendNext(encoded)) ++pieces;
    EXPECT_EQ(pieces, 3);
    text.back() = '=';
    EXPECT_TRUE(encoded == text + "20");
}

TEST(TransferEncodingTest, MakesLinesOfBase64) {
    EXPECT_EQ(EncodeText(TransferEncoding::Base64, "a\nb"), "YQ0KYg==");  // of "a\r\nb"
    const std::string line = [] {
        std::string letters;
        for (int i = 0; i < 19; ++i) letters += "YWFh";  // "aaa"
        return letters;
    }();
    EXPECT_EQ(EncodeText(TransferEncoding::Base64, std::string(57, 'a')), line);
    EXPECT_EQ(EncodeText(TransferEncoding::Base64, std::string(115, 'a')), line + "\r\n" + line + "\r\nYQ==");
    // Piece by piece it is the same.
    std::string pieces;
    AppendBase64Lines(pieces, std::string(57, 'a'), true);
    AppendBase64Lines(pieces, std::string(58, 'a'), false);
    EXPECT_EQ(pieces, line + "\r\n" + line + "\r\nYQ==");
    for (const std::size_t size : {0, 1, 3, 56, 57, 58, 114, 115, 57 * 7 - 2}) {
        EXPECT_EQ(SizeOfBase64Lines(size), [&] {
            std::string lines;
            AppendBase64Lines(lines, std::string(size, 'x'), true);
            return lines.size();
        }()) << size;
    }
}

TEST(TransferEncodingTest, ChoosesWhatBringsTheTextOver) {
    using enum TransferEncoding;
    struct Row {
        TransferEncoding wanted;
        std::string text;
        TransferEncoding expected;
    };
    const Row rows[] = {
        {SevenBit, std::string(998, 'a') + "\r\n" + std::string(998, 'a'), SevenBit},
        {SevenBit, std::string(999, 'a'), QuotedPrintable},
        {SevenBit, "\x80", QuotedPrintable},
        {SevenBit, std::string(1, '\0'), QuotedPrintable},
        {EightBit, "\x80", EightBit},
        {EightBit, std::string(999, '\x80'), QuotedPrintable},
        {Base64, "\x80", Base64},
    };
    for (const Row& row : rows) EXPECT_EQ(FittingEncoding(row.wanted, row.text), row.expected) << row.text;
    EXPECT_EQ(EncodeText(SevenBit, "a\nb\rc\r\n"), "a\r\nb\r\nc\r\n");
}

TEST(TransferEncodingTest, DoublesDotsAtTheBeginningOfLines) {
    const auto doubled = [](std::string_view text) {
        std::string out;
        AppendWithDotsDoubled(out, text);
        return out;
    };
    EXPECT_EQ(doubled(""), "");
    EXPECT_EQ(doubled("."), "..");
    EXPECT_EQ(doubled("a.b\r\n.\r\n..c\r\n\r\n.d"), "a.b\r\n..\r\n...c\r\n\r\n..d");
}

}  // namespace
}  // namespace brennvar
