// The texts in the sources against the language files, and these against one another.
#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>
#include <tuple>
#include <utility>

#include "config/Charset.h"
#include "unit/texts/LanguageFile.h"

namespace brennvar::test {
namespace {

namespace fs = std::filesystem;
using Texts = std::map<int, std::string>;

struct SourceTexts {
    Texts texts;
    std::vector<std::string> faults;  // what looks like a text and cannot be read, or says something else elsewhere
};

// Reads GetText(N, "..."), Text{N, "..."}, Text(N, "...") and Text name{N, "..."}, with adjacent literals joined;
// what stands behind // does not count. GetText(x) without a number or literal only hands a text on.
void ScanTexts(const std::string& source, SourceTexts& into) {
    static const std::regex kText(
        R"re((?:GetText\(|Text(?: \w+)?[{(])\s*([1-9]\d*),\s*((?:"[^"\\\n]*"\s*)+),?\s*[)}])re");
    static const std::regex kFault(R"re(GetText\(\s*(?:\d|[^;){]*"|(?:[^;(){"]|\([^;(){"]*\))*[,"]|\))|)re"
                                   R"re(Text(?: \w+)?\{(?!\s*\})|Text\((?!\s*\))|Text \w+\(\s*\d)re");
    static const std::regex kJoint(R"("\s*"|"\s*$|^")");
    for (std::size_t at = source.find("Text"); at != std::string::npos; at = source.find("Text", at + 1)) {
        const std::string before = source.substr(source.rfind('\n', at) + 1, at - source.rfind('\n', at) - 1);
        const bool isCall = before.ends_with("Get");
        const std::string_view prefix = std::string_view(before).substr(0, before.size() - (isCall ? 3 : 0));
        const char last = prefix.empty() ? ' ' : prefix.back();
        const bool isPartOfAName = std::isalnum(static_cast<unsigned char>(last)) != 0 || last == '_';
        // Behind a point or an arrow it is another class's member of this name.
        const bool isMember = !isCall && (last == '.' || prefix.ends_with("->"));
        if (isPartOfAName || isMember || prefix.find("//") != prefix.npos) continue;
        const auto start = source.begin() + static_cast<std::ptrdiff_t>(isCall ? at - 3 : at);
        const auto here = std::regex_constants::match_continuous;
        std::smatch match;
        if (std::regex_search(start, source.end(), match, kText, here)) {
            const std::string english = std::regex_replace(match[2].str(), kJoint, "");
            const auto [known, isNew] = into.texts.try_emplace(std::stoi(match[1]), english);
            if (!english.empty() && known->second == english) continue;
        } else if (!std::regex_search(start, source.end(), match, kFault, here)) {
            continue;
        }
        into.faults.push_back(source.substr(at, 60));
    }
}

SourceTexts ScanSources() {
    SourceTexts all;
    for (const auto& entry : fs::recursive_directory_iterator(kSourceFolder / "src")) {
        const std::string name = entry.path().filename().string();
        if (!name.ends_with(".cpp") && !name.ends_with(".h")) continue;
        // The places where texts are passed on by number.
        if (name != "Language.cpp" && name != "Language.h" && name != "Text.h") {
            ScanTexts(ReadWholeFile(entry.path()), all);
        }
    }
    return all;
}

std::vector<std::string> Languages() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(kSourceFolder / "assets" / "Languages")) {
        names.push_back(entry.path().filename().string());
    }
    return names;
}

// The lines that others lack, to be pasted into a language file.
std::string Missing(const Texts& texts, const Texts& others) {
    std::string lines;
    for (const auto& [number, text] : texts) {
        if (!others.contains(number)) lines += "DL_N_201_" + std::to_string(number) + "=" + text + "\n";
    }
    return lines;
}

TEST(LanguageFilesTest, EnglishHasTheTextsOfTheSources) {
    const SourceTexts sources = ScanSources();
    EXPECT_GT(sources.texts.size(), 200U);
    EXPECT_EQ(sources.faults, std::vector<std::string>());
    Texts english = ReadLanguageFile("English").texts;
    EXPECT_EQ(Missing(sources.texts, english), "") << "only in the sources";
    EXPECT_EQ(Missing(english, sources.texts), "") << "only in English/default.ini";
    for (const auto& [number, text] : sources.texts) EXPECT_EQ(text, english[number]) << number;
}

// What the program relies on in a text: where blanks stand that join it to others, the colon of a label, the dots
// of a caption that opens a dialog, place holders and marks for the keyboard.
auto Shape(const std::string& text) {
    const auto count = [&](char c) { return std::count(text.begin(), text.end(), c); };
    return std::tuple(text.starts_with(' '), text.ends_with(' '), text.ends_with(':'), text.ends_with("..."),
                      text.ends_with('.'), count('%'), count('&'), count('\n'), count('\t'), count('|'));
}

TEST(LanguageFilesTest, EveryLanguageHasTheKeysOfEnglishAndTheShapeOfItsTexts) {
    const Texts english = ReadLanguageFile("English").texts;
    ASSERT_EQ(Languages().size(), 4U);
    for (const std::string& language : Languages()) {
        LanguageFile file = ReadLanguageFile(language);
        EXPECT_EQ(file.faults, std::vector<std::string>()) << language;
        EXPECT_EQ(Missing(english, file.texts), "") << "missing in " << language;
        EXPECT_EQ(Missing(file.texts, english), "") << "unknown in " << language;
        for (const auto& [number, text] : english) {
            // The dot of these names is of the English abbreviation.
            const bool isLonger = (number == 1109 || number == 1110) && language != "English";
            const std::string model = isLonger ? text.substr(0, text.size() - 1) : text;
            EXPECT_EQ(Shape(file.texts[number]), Shape(model)) << language << " " << number;
        }
        // Notices are shown whole: the tool tip of the icon, a message, two titles.
        Texts& texts = file.texts;
        EXPECT_LE(texts[317].size(), 127U) << language;
        EXPECT_LE((texts[318] + " " + texts[319] + " " + texts[320] + " " + texts[321]).size(), 600U) << language;
        for (const int title : {41, 323}) EXPECT_LE(texts[title].size(), 63U) << language << " " << title;
        // In the code page of the language.
        const std::string content = ReadWholeFile(LanguageFileIn(language));
        const bool isAscii = std::all_of(content.begin(), content.end(), [](char c) { return c > 0; });
        EXPECT_EQ(isAscii, language == "English") << language;
        // In UTF-8 no byte of 0xC0 and more stands before a letter.
        const auto breach = std::adjacent_find(content.begin(), content.end(), [](char byte, char next) {
            return (byte & 0xC0) == 0xC0 && (next & 0xC0) != 0x80;
        });
        EXPECT_EQ(breach == content.end(), isAscii) << language;
    }
}

// What the tests above rely on: both readers find faults.
TEST(LanguageFilesTest, ReadersReportWhatTheyCannotRead) {
    const auto scan = [](const std::string& source) {
        SourceTexts result;
        ScanTexts(source, result);
        return result;
    };
    EXPECT_EQ(scan("GetText(7,\n  \"A\"\n  \" b\"), Text kName{8, \"c\",};").texts, (Texts{{7, "A b"}, {8, "c"}}));
    for (const char* source : {"GetText(7, english)", "GetText(7, \"\")", "Text{7, \"a\"}, Text{7, \"b\"}"}) {
        EXPECT_EQ(scan(source).faults.size(), 1U) << source;
    }
    for (const char* line : {"DL_N_201_1=a\r\nDL_N_201_1=a\r\n", "DL_N_201_1=a\n\r\n", "X=a\r\n", "; no end"}) {
        EXPECT_FALSE(ParseLanguageFile("[Language]\r\n" + std::string(line)).faults.empty()) << line;
    }
}

TEST(CharsetTest, ComparesTheFolderNameExactly) {
    const std::pair<const char*, int> rows[] = {{"Slovak", 238},  {"Russian", 204}, {"ChineseT", 1},
                                                {"Turkish", 162}, {"Arabic", 178},  {"Japanese", 128},
                                                {"German", 0},    {"russian", 0},   {"Russian ", 0}};
    for (const auto& [language, charset] : rows) EXPECT_EQ(GetFontCharset(language), charset) << language;
}

}  // namespace
}  // namespace brennvar::test
