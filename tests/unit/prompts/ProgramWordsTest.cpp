#include "prompts/ProgramWords.h"

#include <gtest/gtest.h>

#include "prompts/ProgramPlace.h"

namespace brennvar {
namespace {

TEST(ProgramPlaceTest, KnowsTheFoldersWhateverTheWayToThem) {
    using enum ProgramPlace;
    const std::pair<ProgramPlace, std::string_view> rows[] = {
        {Temporary, R"(C:\TEMP\x.exe)"},
        {Temporary, "c:/users/a/tMp/x.exe"},
        {Temporary, R"(C:\Users\a\AppData\Local\Temp\7z\x.exe)"},  // before AppData, which holds it
        {Temporary, R"(C:\Users\A~1\DOWNLO~1\x.exe)"},
        {Temporary, R"(C:\downlo~12\x.exe)"},
        {Temporary, R"(C:\Temp. .\x.exe)"},  // the system leaves the end out
        {Temporary, R"(C:\Windows\.\..\Temp\x.exe)"},
        {Temporary, R"(C:temp\x.exe)"},
        {Temporary, R"(\\?\C:\Temp\x.exe)"},
        {Temporary, R"(\Device\HarddiskVolume3\Windows\Temp\x.exe)"},
        {UserData, R"(C:\Users\a\AppData\Roaming\x.exe)"},
        {UserData, R"(C:\DOCUME~1\a\applic~2\x.exe)"},
        {Usual, R"(C:\Program Files\Temp Monitor\x.exe)"},
        {Usual, R"(C:\Templates\x.exe)"},
        {Usual, R"(C:\Tools\temp)"},  // the file itself
        {Usual, R"(C:\Temp\..\Windows\x.exe)"},
        {Usual, R"(C:\temp~1\x.exe)"},  // a name that short has no shorter one
        {Usual, R"(C:\downlo~x\x.exe)"},
        {Usual, R"(C:\downlo~\x.exe)"},
        {Usual, ""}};
    for (const auto& [place, path] : rows) EXPECT_EQ(PlaceOfProgram(path), place) << path;
}

TEST(ProgramWordsTest, TellsAPublisherFromNoneAndFromOneThatIsNotKnown) {
    struct Row {
        std::optional<std::string> company;
        std::string_view publisher;
        bool isMissing, hasNote;
    };
    const std::string longest(200, 'c');
    const std::string cut = longest + "...";
    const Row rows[] = {{std::nullopt, "unknown", false, false},
                        {"", "no publisher given", true, false},
                        {" \x01\r\n ", "no publisher given", true, false},
                        {"\xA0", "no publisher given", true, false},
                        {"Mail   Co\nGeneral advice: Allow", "Mail Co General advice: Allow", false, true},
                        {"oC\xE2\x80\xAE liaM", "oC[RLO] liaM", false, true},
                        {longest, longest, false, true},
                        {longest + "d", cut, false, true}};
    for (const Row& row : rows) {
        const ProgramWords words = DescribeProgram(R"(C:\Mail\mail.exe)", row.company, Language(nullptr));
        EXPECT_EQ(words.publisher, row.publisher);
        EXPECT_EQ(words.isPublisherMissing, row.isMissing) << row.publisher;
        EXPECT_EQ(!words.publisherNote.empty(), row.hasNote) << row.publisher;
        EXPECT_EQ(words.placeWarning, "");
    }
    const auto warning = [](const char* path) { return DescribeProgram(path, "", Language(nullptr)).placeWarning; };
    EXPECT_EQ(warning(R"(C:\Temp\a.exe)"), "runs from a temporary folder");
    EXPECT_EQ(warning(R"(C:\Users\a\AppData\a.exe)"), "runs from a user's data folder (AppData)");
}

}  // namespace
}  // namespace brennvar
