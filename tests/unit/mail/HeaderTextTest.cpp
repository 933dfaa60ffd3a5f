#include "mail/HeaderText.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

TEST(HeaderTextTest, LeavesAsciiAsItIsAndEncodesTheRest) {
    EXPECT_EQ(EncodeHeaderText("Blocked: 3 \"attacks\"", CodePage::Cyrillic, 9), "Blocked: 3 \"attacks\"");
    EXPECT_EQ(EncodeHeaderText("Gr\xFC\xDF"
                               "e",
                               CodePage::Western, 9),
              "=?windows-1252?B?R3L832U=?=");
    EXPECT_EQ(EncodeHeaderText("\x8E", CodePage::CentralEuropean, 9), "=?windows-1250?B?jg==?=");
    // What a reader would take for an encoded word.
    EXPECT_EQ(EncodeHeaderText("=?x?=", CodePage::Cyrillic, 9), "=?windows-1251?B?PT94Pz0=?=");
}

TEST(HeaderTextTest, NeverBeginsAnotherHeader) {
    EXPECT_EQ(EncodeHeaderText(std::string_view("a\r\nBcc: x\ny\0z", 13), CodePage::Western, 9), "a  Bcc: x y z");
    EXPECT_EQ(EncodeDisplayName("a\r\n.\"\\", CodePage::Western), "\"a  .\\\"\\\\\"");
    EXPECT_EQ(EncodeFileName("..\\a\"\r\nX: b.txt", CodePage::Western), "\".._a_  X_ b.txt\"");
}

TEST(HeaderTextTest, KeepsEncodedWordsWithinTheirLines) {
    const std::string text(100, '\xE4');
    // 67 characters are left of the first line, 75 of the others: 36 and 42 bytes.
    const std::string begin = "=?windows-1252?B?";
    std::string expected = begin;
    for (int i = 0; i < 12; ++i) expected += "5OTk";
    expected += "?=\r\n " + begin;
    for (int i = 0; i < 14; ++i) expected += "5OTk";
    expected += "?=\r\n " + begin;
    for (int i = 0; i < 7; ++i) expected += "5OTk";
    expected += "5A==?=";
    EXPECT_EQ(EncodeHeaderText(text, CodePage::Western, 9), expected);
    // Behind "From: " there is room for 70 characters: 36 bytes, not 39.
    EXPECT_EQ(EncodeDisplayName(std::string(40, '\xE4'), CodePage::Western).find("?=\r\n "), 65U);
    // A plain line that is too long for mail is made of words as well.
    EXPECT_EQ(EncodeHeaderText(std::string(901, 'a'), CodePage::Western, 9).find("=?windows-1252?B?YWFh"), 0U);
}

TEST(HeaderTextTest, DoesNotQuoteEncodedNames) {
    EXPECT_EQ(EncodeDisplayName("J\xF6rg", CodePage::Western), "=?windows-1252?B?SvZyZw==?=");
    EXPECT_EQ(EncodeFileName("\xFC.csv", CodePage::Western), "\"=?windows-1252?B?/C5jc3Y=?=\"");
}

}  // namespace
}  // namespace brennvar
