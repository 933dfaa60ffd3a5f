// The texts in the sources against the language files, and these against one another.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "unit/texts/LanguageFile.h"
#include "unit/texts/TextScanner.h"

namespace brennvar::test {
namespace {

namespace fs = std::filesystem;

// The one place where texts are passed on by number.
bool IsLanguageItself(const fs::path& file) {
    return file.parent_path().filename() == "config" && (file.stem() == "Language" || file.filename() == "Text.h");
}

struct SourceTexts {
    std::map<int, std::string> texts;
    std::vector<std::string> faults;
    int files = 0;
};

SourceTexts ScanSources() {
    SourceTexts all;
    for (const auto& entry : fs::recursive_directory_iterator(SourceFolder() / "src")) {
        const fs::path& path = entry.path();
        if ((path.extension() != ".cpp" && path.extension() != ".h") || IsLanguageItself(path)) continue;
        ++all.files;
        const std::string place = path.lexically_relative(SourceFolder()).generic_string() + ": ";
        const ScanResult result = ScanTexts(ReadWholeFile(path));
        for (const std::string& fault : result.faults) all.faults.push_back(place + fault);
        for (const FoundText& text : result.texts) {
            const auto [at, isNew] = all.texts.try_emplace(text.number, text.english);
            if (isNew || at->second == text.english) continue;
            std::string fault = place + "line " + std::to_string(text.line);
            fault += ": another text elsewhere has the number " + std::to_string(text.number) + ": " + at->second;
            all.faults.push_back(std::move(fault));
        }
    }
    return all;
}

std::vector<std::string> Languages() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(SourceFolder() / "assets" / "Languages")) {
        names.push_back(entry.path().filename().string());
    }
    return names;
}

LanguageFile Read(const std::string& language) {
    return ReadLanguageFile(ReadWholeFile(LanguageFileIn(language)));
}

// One per line, to be pasted into a language file.
std::string LinesOf(const std::map<int, std::string>& texts) {
    std::string lines;
    for (const auto& [number, text] : texts) lines += "DL_N_201_" + std::to_string(number) + "=" + text + "\n";
    return lines;
}

std::map<int, std::string> Without(std::map<int, std::string> texts, const std::map<int, std::string>& others) {
    std::erase_if(texts, [&](const auto& text) { return others.contains(text.first); });
    return texts;
}

TEST(LanguageFilesTest, EnglishHasTheTextsOfTheSources) {
    const SourceTexts sources = ScanSources();
    EXPECT_GT(sources.files, 100);
    for (const std::string& fault : sources.faults) ADD_FAILURE() << fault;
    const LanguageFile english = Read("English");
    EXPECT_EQ(LinesOf(Without(sources.texts, english.texts)), "") << "only in the sources";
    EXPECT_EQ(LinesOf(Without(english.texts, sources.texts)), "") << "only in English/default.ini";
    for (const auto& [number, text] : english.texts) {
        if (const auto at = sources.texts.find(number); at != sources.texts.end()) {
            EXPECT_EQ(text, at->second) << number;
        }
    }
}

// What the program relies on in a text: where blanks stand that join it to others, the colon of a label, the dots
// of a caption that opens a dialog, place holders and marks for the keyboard.
auto Shape(const std::string& text) {
    const auto count = [&](char c) { return std::count(text.begin(), text.end(), c); };
    return std::tuple(text.starts_with(' '), text.ends_with(' '), text.ends_with(':'), text.ends_with("..."),
                      text.ends_with('.'), count('%'), count('&'), count('\n'), count('\t'), count('|'));
}

TEST(LanguageFilesTest, EveryLanguageHasTheKeysOfEnglishAndTheShapeOfItsTexts) {
    const LanguageFile english = Read("English");
    ASSERT_FALSE(english.texts.empty());
    ASSERT_EQ(Languages().size(), 4U);
    for (const std::string& language : Languages()) {
        const LanguageFile file = Read(language);
        for (const std::string& fault : file.faults) ADD_FAILURE() << language << ": " << fault;
        EXPECT_EQ(LinesOf(Without(english.texts, file.texts)), "") << "missing in " << language;
        EXPECT_EQ(LinesOf(Without(file.texts, english.texts)), "") << "unknown in " << language;
        for (const auto& [number, text] : file.texts) {
            const auto at = english.texts.find(number);
            if (at == english.texts.end()) continue;
            EXPECT_EQ(Shape(text), Shape(at->second)) << language << " " << number << ": " << text;
        }
    }
}

TEST(LanguageFilesTest, NoticesAreShownWhole) {
    for (const std::string& language : Languages()) {
        std::map<int, std::string> texts = Read(language).texts;
        EXPECT_LE(texts[317].size(), 127U) << language;  // tool tip of the icon
        EXPECT_LE((texts[318] + " " + texts[319] + " " + texts[320] + " " + texts[321]).size(), 600U) << language;
        for (const int title : {41, 323}) EXPECT_LE(texts[title].size(), 63U) << language << " " << title;
    }
}

bool IsUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const auto lead = static_cast<unsigned char>(text[at++]);
        int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : 0;
        if (lead >= 0x80 && lead < 0xC0) return false;
        for (; more > 0; --more, ++at) {
            if (at == text.size() || (static_cast<unsigned char>(text[at]) & 0xC0) != 0x80) return false;
        }
    }
    return true;
}

TEST(LanguageFilesTest, OnlyEnglishIsAsciiAndNoneIsUtf8) {
    for (const std::string& language : Languages()) {
        const std::string content = Read(language).content;
        const bool isAscii = std::all_of(content.begin(), content.end(), [](char c) { return c > 0; });
        EXPECT_EQ(isAscii, language == "English") << language;
        EXPECT_EQ(IsUtf8(content), isAscii) << language;
    }
}

TEST(LanguageFilesTest, ReaderTakesValuesAsTheSystemDoesAndReportsTheRest) {
    const std::pair<std::string_view, std::string_view> values[] = {
        {" a b\t", "a b"}, {"\" a \"", " a "}, {"'a'", "a"}, {"\"\"a\"\"", "\"a\""}, {"\"a", "\"a"}, {"\"", "\""},
        {"a;b", "a;b"},    {"", ""},           {"\"\"", ""}};
    for (const auto& [given, expected] : values) EXPECT_EQ(IniValue(given), expected) << given;

    const LanguageFile good = ReadLanguageFile("; x\r\n[Language]\r\n\r\nDL_N_201_1=a=b\r\nDL_N_201_22=\" \"\r\n");
    EXPECT_TRUE(good.faults.empty());
    EXPECT_EQ(good.texts, (std::map<int, std::string>{{1, "a=b"}, {22, " "}}));
    for (const std::string_view line :
         {"DL_N_201_2=b\r\nDL_N_201_1=a\r\n", "DL_N_201_1=a\r\nDL_N_201_1=a\r\n", "DL_N_201_1=a\n", "DL_N_201_1=a",
          "DL_N_201_1= a\r\n", "DL_N_201_1=a \r\n", "DL_N_201_1=\r\n", "DL_N_201_=a\r\n", "DL_N_201_01=a\r\n",
          "DL_N_201_1x=a\r\n", "X=a\r\n", "DL_N_201_1=a\tb\r\n", "[Other]\r\n"}) {
        EXPECT_EQ(ReadLanguageFile("[Language]\r\n" + std::string(line)).faults.size(), 1U) << line;
    }
    EXPECT_EQ(ReadLanguageFile("DL_N_201_1=a\r\n").faults.size(), 2U);  // outside, and no section at all
}

}  // namespace
}  // namespace brennvar::test
