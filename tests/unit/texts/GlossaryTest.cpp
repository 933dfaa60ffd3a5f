// docs/glossary.md against the language files: what it says of a word is so in every text.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <set>
#include <string_view>

#include "config/CodePage.h"
#include "unit/texts/LanguageFile.h"

namespace brennvar::test {
namespace {

using Words = std::vector<std::u32string>;
using Texts = std::map<int, std::u32string>;
constexpr std::array<const char*, 4> kLanguages = {"English", "German", "Slovak", "Russian"};

// Small letters of what the languages of the program have: ASCII, Latin-1, Latin Extended-A (where the small letter
// follows its capital, which is even but for two ranges) and Cyrillic.
char32_t Small(char32_t c) {
    const auto isIn = [c](char32_t first, char32_t last) { return c >= first && c <= last; };
    if (isIn(U'A', U'Z') || isIn(0xC0, 0xDE) || isIn(0x410, 0x42F)) return c + 0x20;
    if (isIn(0x400, 0x40F)) return c + 0x50;
    const bool isCapitalOdd = isIn(0x139, 0x148) || isIn(0x179, 0x17E);
    return isIn(0x100, 0x17E) && (c % 2 == 1) == isCapitalOdd ? c + 1 : c;
}

std::u32string SmallLetters(std::string_view utf8) {
    std::u32string text;
    for (const char byte : utf8) {
        const auto c = static_cast<unsigned char>(byte);
        if (c >= 0x80 && c < 0xC0) {
            text.back() = text.back() << 6 | (c & 0x3F);
        } else {
            text += c < 0x80 ? c : c & (c < 0xE0 ? 0x1F : 0x0F);
        }
    }
    std::transform(text.begin(), text.end(), text.begin(), Small);
    return text;
}

// What stands in bold.
Words BoldOf(const std::string& cell) {
    static const std::regex kBold(R"(\*\*(.+?)\*\*)");
    Words words;
    for (std::sregex_iterator at(cell.begin(), cell.end(), kBold), end; at != end; ++at) {
        words.push_back(SmallLetters((*at)[1].str()));
    }
    return words;
}

// The rows of all tables with this number of columns, without their heads.
std::vector<std::vector<std::string>> RowsOf(std::size_t columns) {
    std::vector<std::vector<std::string>> rows;
    std::ifstream file(kSourceFolder / "docs" / "glossary.md");
    for (std::string line; std::getline(file, line);) {
        if (!line.starts_with("| ") || line.find("**") == line.npos) continue;
        std::vector<std::string> cells;
        for (std::size_t at = 2; at < line.size();) {
            const std::size_t end = std::min(line.find('|', at), line.size());
            cells.push_back(line.substr(at, end - at));
            at = end + 1;
        }
        if (cells.size() == columns) rows.push_back(cells);
    }
    return rows;
}

// Without the marks for the keyboard, which may stand in the middle of a word, and the name of the product.
Texts TextsOf(const std::string& language) {
    Texts texts;
    for (auto [number, text] : ReadLanguageFile(language).texts) {
        std::erase(text, '&');
        constexpr std::string_view kProduct = "Brennvar Personal Firewall";
        if (const std::size_t at = text.find(kProduct); at != text.npos) text.erase(at, kProduct.size());
        std::string utf8;
        AppendUtf8(utf8, text, CodePageOf(language));
        texts[number] = SmallLetters(utf8);
    }
    return texts;
}

enum class Place { Anywhere, WordBegins, WholeWord };

bool Has(const std::u32string& text, const Words& words, Place place) {
    const auto isLetter = [&](std::size_t at) {
        return at < text.size() &&
               (text[at] >= 0xC0 || (text[at] < 0x80 && std::isalpha(static_cast<int>(text[at])) != 0));
    };
    return std::any_of(words.begin(), words.end(), [&](const std::u32string& word) {
        for (std::size_t at = text.find(word); at != text.npos; at = text.find(word, at + 1)) {
            const bool isBegin = at == 0 || !isLetter(at - 1);
            if (place == Place::Anywhere || (isBegin && place == Place::WordBegins) ||
                (isBegin && !isLetter(at + word.size()))) {
                return true;
            }
        }
        return false;
    });
}

// "German 449, 569; Russian 1671"
std::set<int> NumbersOf(const std::string& language, const std::string& cell) {
    std::smatch list;
    std::set<int> numbers;
    if (!std::regex_search(cell, list, std::regex(language + " ([0-9, ]+)"))) return numbers;
    const std::string text = list[1];
    const std::regex number("[0-9]+");
    for (std::sregex_iterator at(text.begin(), text.end(), number), end; at != end; ++at) {
        numbers.insert(std::stoi(at->str()));
    }
    return numbers;
}

std::map<std::string, Texts> AllTexts() {
    std::map<std::string, Texts> all;
    for (const char* language : kLanguages) all[language] = TextsOf(language);
    return all;
}

TEST(GlossaryTest, OneWordForOneThingInEveryText) {
    const auto rows = RowsOf(5);
    EXPECT_GE(rows.size(), 30U);
    std::map<std::string, Texts> texts = AllTexts();
    for (const auto& row : rows) {
        const Words english = BoldOf(row[0]);
        std::vector<int> meant;
        for (const auto& [number, text] : texts["English"]) {
            if (Has(text, english, Place::WholeWord)) meant.push_back(number);
        }
        for (std::size_t column = 1; column < kLanguages.size(); ++column) {
            const std::string language = kLanguages[column];
            const Words terms = BoldOf(row[column]);
            std::set<int> otherwise;
            for (const int number : meant) {
                if (!Has(texts[language][number], terms, Place::Anywhere)) otherwise.insert(number);
            }
            EXPECT_LT(otherwise.size(), meant.size()) << language << " never has " << row[column];
            EXPECT_EQ(otherwise, NumbersOf(language, row[4])) << language << " lacks " << row[column];
        }
    }
}

TEST(GlossaryTest, NoTextHasAWordThatIsNeverUsed) {
    const auto rows = RowsOf(3);
    EXPECT_GE(rows.size(), 20U);
    std::map<std::string, Texts> texts = AllTexts();
    for (const auto& row : rows) {
        const std::string language = row[0].substr(0, row[0].find(' '));
        const Words never = BoldOf(row[1]);
        const Words instead = BoldOf(row[2]);
        bool isInsteadUsed = false;
        for (const auto& [number, text] : texts[language]) {
            EXPECT_FALSE(Has(text, never, Place::WordBegins)) << language << " " << number << " has " << row[1];
            isInsteadUsed |= Has(text, instead, Place::Anywhere);
        }
        EXPECT_TRUE(isInsteadUsed) << language << ": " << row[2];
    }
}

// What the tests above rely on: capitals, umlauts and carons, word by word.
TEST(GlossaryTest, FindsAWordInAnyCaseWhereItIsMeant) {
    struct Row {
        const char* text;
        const char* word;
        bool anywhere, begins, whole;
    };
    const Row rows[] = {
        {"Die \xC3\x84nderung", "\xC3\xA4nderung", true, true, true},  // A umlaut
        {"\xC4\x8Cin, \xC4\xBD", "\xC4\x8Din", true, true, true},      // C caron, even
        {"\xC5\xBDiadne", "\xC5\xBEi", true, true, false},             // Z caron, odd
        {"\xD0\xA4\xD0\xB0\xD0\xB9\xD0\xBB\xD1\x8B", "\xD1\x84\xD0\xB0\xD0\xB9\xD0\xBB", true, true, false},
        {"\xD0\x81", "\xD1\x91", true, true, true},  // Cyrillic Io
        {"Datenverkehrsprotokoll", "Verkehrsprotokoll", true, false, false},
        {"blog, log.", "log", true, true, true},
        {"login", "log", true, true, false},
        {"Protokoll", "denn\xC3\xADk", false, false, false},
    };
    for (const Row& row : rows) {
        const Words word = {SmallLetters(row.word)};
        const std::u32string text = SmallLetters(row.text);
        EXPECT_EQ(Has(text, word, Place::Anywhere), row.anywhere) << row.text;
        EXPECT_EQ(Has(text, word, Place::WordBegins), row.begins) << row.text;
        EXPECT_EQ(Has(text, word, Place::WholeWord), row.whole) << row.text;
    }
}

}  // namespace
}  // namespace brennvar::test
