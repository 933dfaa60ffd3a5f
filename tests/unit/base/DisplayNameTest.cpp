#include "base/DisplayName.h"

#include <gtest/gtest.h>

namespace brennvar {

TEST(DisplayNameTest, TakesTheDescriptionCutTo40OrTheWholeFileName) {
    const std::string forty(40, 'd');
    const struct {
        std::string path, description, expected;
    } rows[] = {{R"(C:\a\mail.exe)", forty, forty},
                {R"(C:\a\mail.exe)", forty + "d", std::string(37, 'd') + "..."},
                {"C:\\a\\n" + forty, "", "n" + forty},
                {R"(C:\Program Files\)", "", R"(C:\Program Files\)"},  // nothing behind the last backslash
                {"C:/bin/mail.exe", "", "C:/bin/mail.exe"},            // only the backslash parts
                // Nothing to be read, or pushed out of sight.
                {R"(C:\a\mail.exe)", " \t\r\n\x7F", "mail.exe"},
                {R"(C:\a\mail.exe)", "  Mail " + std::string(90, ' ') + "\n Reader  ", "Mail Reader"},
                {"", "", ""}};
    for (const auto& row : rows) EXPECT_EQ(DisplayNameOf(row.path, row.description), row.expected) << row.path;
}

TEST(DisplayNameTest, NamesTheMarksThatTurnTheOrderOfLetters) {
    const std::pair<std::u16string, std::string> rows[] = {
        {u"a\u061C\u200E\u200F", "a[ALM][LRM][RLM]"},
        {u"\u202A\u202B\u202C\u202D\u202E", "[LRE][RLE][PDF][LRO][RLO]"},
        {u"\u2066\u2067\u2068\u2069z", "[LRI][RLI][FSI][PDI]z"},
        {u"\u2029\u202F\u2065\u206A", ""}};  // their neighbours are none
    for (const auto& [wide, named] : rows) {
        const std::u16string expected = named.empty() ? wide : std::u16string(named.begin(), named.end());
        EXPECT_EQ(NameDirections(wide), expected);
    }
    EXPECT_EQ(ShownText("\xE2\x80\xAEgpj.exe \xE2\x81\xA6\xD8\x9C \xE2\x80\xA9\xE2\x80"),
              "[RLO]gpj.exe [LRI][ALM] \xE2\x80\xA9\xE2\x80");
}

TEST(DisplayNameTest, CutsATextAtItsBeginning) {
    const std::string host = "www.bank.example.evil.example";
    for (std::size_t room = 3; room <= host.size(); ++room) {
        const auto fits = [&](const std::string& text) { return text.size() <= room; };
        const std::string expected = room == host.size() ? host : "..." + host.substr(host.size() - (room - 3));
        EXPECT_EQ(EndThatFits(host, fits), expected) << room;
    }
}

}  // namespace brennvar
