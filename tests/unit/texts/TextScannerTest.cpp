#include "unit/texts/TextScanner.h"

#include <gtest/gtest.h>

namespace brennvar::test {
namespace {

TEST(TextScannerTest, ReadsEveryWayToWriteAText) {
    struct Row {
        std::string_view source;
        std::string english;
    };
    const Row rows[] = {
        {R"(x = m_language.GetText(7, "A b");)", "A b"},
        {R"(GetText(7,
              "A " // "no", not this
              "b" /* nor "this" */ "c"))",
         "A bc"},
        {R"({IDM_ABC, Text{7, "A"}, 5})", "A"},
        {R"(constexpr Text kName{7, "A",};)", "A"},
        {R"(Text(7, "A"))", "A"},
        {R"(GetText(past ? Text{7, "A"} : other))", "A"},
        {R"(Text{7, "\"q\" \\ \n\t\x41\102\0"})", std::string("\"q\" \\ \n\tAB\0", 11)},
        {"Text{7, R\"-(a)\"\\n)-\"}", "a)\"\\n"},
        {R"('"' + GetText(7, "A") + '\'' + 1'000'000)", "A"},
    };
    for (const Row& row : rows) {
        const ScanResult result = ScanTexts(row.source);
        ASSERT_EQ(result.texts.size(), 1U) << row.source;
        EXPECT_EQ(result.texts[0].number, 7) << row.source;
        EXPECT_EQ(result.texts[0].english, row.english) << row.source;
        EXPECT_TRUE(result.faults.empty()) << row.source;
    }
}

TEST(TextScannerTest, LeavesAloneWhatIsNoText) {
    for (const std::string_view source :
         {"GetText(info.caption)", "GetText(TextOf(page, 7))", "GetText(texts[7])", "Text{}", "Text caption;",
          "const Text& text", "fonts.Text()", "page->Text(7, dc)", "OptionKind::Text, 7, \"x\"",
          "Text CaptionOf(int page);", "// GetText(7, x)", "\"GetText(7, x)\"", "R\"(Text{x})\"",
          "SetText(7, \"x\")", "std::optional<Text>{}"}) {
        const ScanResult result = ScanTexts(source);
        EXPECT_TRUE(result.texts.empty()) << source;
        EXPECT_TRUE(result.faults.empty()) << source << ": " << result.faults.front();
    }
}

TEST(TextScannerTest, ReportsWhatItCannotRead) {
    for (const std::string_view source : {"GetText(number, \"x\")",
                                          "GetText(7, english)",
                                          "GetText(7)",
                                          "GetText(7, \"a\" + b)",
                                          "GetText(7, kA \"b\")",
                                          "GetText(\"x\")",
                                          "GetText(a ? 7 : 8, \"x\")",
                                          "GetText()",
                                          "GetText(7, \"\")",
                                          "GetText(0, \"x\")",
                                          "GetText(-7, \"x\")",
                                          "GetText(TextOf(7, \"x\"))",
                                          "GetText(0x7, \"x\")",
                                          "Text{7, english}",
                                          "Text{number, \"x\"}",
                                          "Text name{number, x}",
                                          "Text(number, english)",
                                          "Text{7, u8\"x\"}",
                                          "Text{7, \"\\q\"}",
                                          "Text{7, \"\\x141\"}",
                                          "Text{7, \"no end",
                                          "GetText(7, \"x\""}) {
        std::string padded(1, '\n');
        padded += source;
        const ScanResult result = ScanTexts(padded);
        EXPECT_TRUE(result.texts.empty()) << source;
        ASSERT_EQ(result.faults.size(), 1U) << source;
        EXPECT_TRUE(result.faults[0].starts_with("line 2:")) << source << " " << result.faults[0];
    }
}

TEST(TextScannerTest, CountsLinesThroughCommentsAndRawStrings) {
    const ScanResult result = ScanTexts("/*\n*/ R\"(\n)\" // \n\nGetText(7, \"a\"\n\"b\") GetText(8, \"c\")");
    EXPECT_EQ(result.texts, (std::vector<FoundText>{{7, "ab", 5}, {8, "c", 6}}));
}

}  // namespace
}  // namespace brennvar::test
