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
        {"GetText(7,\n  \"A \"\n  \"b\" \"c\")", "A bc"},
        {R"({IDM_ABC, Text{7, "A"}, 5})", "A"},
        {R"(constexpr Text kName{7, "A",};)", "A"},
        {R"(Text(7, "A"))", "A"},
        {R"(GetText(past ? Text{7, "A"} : other))", "A"},
        {R"(Text{7, "\"q\" \\ \n\t"})", "\"q\" \\ \n\t"},
    };
    for (const Row& row : rows) {
        const ScanResult result = ScanTexts(row.source);
        ASSERT_EQ(result.texts.size(), 1U) << row.source;
        EXPECT_EQ(result.texts[0].number, 7) << row.source;
        EXPECT_EQ(result.texts[0].english, row.english) << row.source;
        EXPECT_TRUE(result.faults.empty()) << row.source;
    }
}

TEST(TextScannerTest, LeavesAloneWhatIsNoTextAndReportsWhatItCannotRead) {
    const auto expect = [](const std::string& source, std::size_t faults) {
        const ScanResult result = ScanTexts(std::string(1, '\n').append(source));
        EXPECT_TRUE(result.texts.empty()) << source;
        ASSERT_EQ(result.faults.size(), faults) << source;
        EXPECT_TRUE(faults == 0 || result.faults[0].starts_with("line 2:")) << source;
    };
    for (const char* source :
         {"GetText(TextOf(page, 7))", "GetText(texts[7])", "Text{}", "Text caption;", "fonts.Text()",
          "page->Text(7, dc)", "OptionKind::Text, 7, \"x\"", "Text CaptionOf(int page);", "// GetText(7, x)",
          "SetText(7, \"x\")", "std::optional<Text>{}"}) {
        expect(source, 0);
    }

    for (const char* rest :
         {"number, \"x\")", "7, english)", "7)", "7, \"a\" + b)", "7, kA \"b\")", "\"x\")", ")", "7, \"\")",
          "0, \"x\")", "-7, \"x\")", "TextOf(7, \"x\"))", "0x7, \"x\")", "7, \"x\""}) {
        expect(std::string("GetText(").append(rest), 1);
    }
    for (const char* source : {"Text{7, english}", "Text{number, \"x\"}", "Text name{number, x}",
                               "Text(number, english)", "Text{7, \"\\q\"}", "Text{7, \"\\x41\"}",
                               "Text{7, \"no end", "Text{7, R\"(x)\"}", "Text{7, \"a\" /* b */}"}) {
        expect(source, 1);
    }
}

}  // namespace
}  // namespace brennvar::test
