// The Applications page of the finished program against the service stand-in.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "Product.h"
#include "support/GoldenCipher.h"
#include "support/TempFolder.h"
#include "tree/TreeMessages_win.h"

namespace brennvar::test {
namespace {

constexpr int kSearch = 915, kAllow = 1270, kDeny = 1271, kAsk = 1272, kRemove = 1273;
constexpr int kNameColumn = 0, kPathColumn = 1, kActionColumn = 2;

// Command 22 for C:\Tools\a.exe, without its value, which is zero for "deny".
const std::string kChangeA = "COMMAND 5596 0:16 132:433A5C546F6F6C735C612E657865";
const std::string kChangeB = "COMMAND 5596 0:16 132:433A5C546F6F6C735C622E657865";

std::string RuleRecord(const std::string& path, char action) {
    std::string record = path;
    record.resize(260, '\0');
    return record + action + std::string(3, '\0');
}

class ApplicationsTest : public ProductFixture {
protected:
    void OpenPage(int rowCount) {
        Ask(m_window, WM_COMMAND, kApplicationsPage);
        Require((m_list = List()) != nullptr);
        Require(WaitUntil([&] { return ListRowCount(m_list) == rowCount; }));
    }
    [[nodiscard]] LPARAM PlaceOf(int row, int column) const {
        const LRESULT corner =
            ::SendMessageA(m_list, kTreeGetCellLeftTop, static_cast<WPARAM>(row), static_cast<LPARAM>(column));
        return MAKELPARAM(LOWORD(corner) + 12, HIWORD(corner) + 8);
    }
    void Click(int row, int column, WPARAM keys = 0) const {
        Ask(m_list, WM_LBUTTONDOWN, MK_LBUTTON | keys, PlaceOf(row, column));
        Ask(m_list, WM_LBUTTONUP, keys, PlaceOf(row, column));
    }
    [[nodiscard]] std::string Actions() const {
        std::string actions;
        for (const auto& row : ReadList(3)) actions += row[kActionColumn] + " ";
        return actions;
    }
    [[nodiscard]] bool WaitForActions(const std::string& wanted) const {
        return WaitUntil([&] { return Actions() == wanted; });
    }

    HWND m_list = nullptr;
};

TEST_F(ApplicationsTest, ChangesArriveInOrderAndAreShownAtOnce) {
    const Lines rules = {R"(rule deny C:\Tools\a.exe)", R"(rule deny C:\Tools\b.exe)",
                         R"(rule allow C:\Tools\c.exe)"};
    Start(rules);
    Require(m_service->WaitForJournal("EVENT scenario-done"));
    OpenPage(static_cast<int>(rules.size()));
    for (const int button : {kAllow, kDeny, kAsk, kRemove}) EXPECT_FALSE(IsEnabled(button)) << button;
    // Faster than anybody can click.
    for (int click = 0; click < 3; ++click)
        ::PostMessageA(m_list, WM_LBUTTONDOWN, MK_LBUTTON, PlaceOf(0, kActionColumn));
    ExpectSent({kChangeA + " 644:02", kChangeA + " 644:01", kChangeA});
    EXPECT_EQ(Actions(), "Deny Deny Allow ");
    Click(0, kActionColumn);
    EXPECT_EQ(Actions(), "Ask Deny Allow ");
    ExpectSent({kChangeA + " 644:02"});
    // The same with the keyboard, on the row with the focus.
    Click(1, kPathColumn);
    Ask(m_list, WM_KEYDOWN, VK_SPACE);
    EXPECT_EQ(Actions(), "Ask Ask Allow ");
    ExpectSent({kChangeB + " 644:02"});

    Click(0, kPathColumn);
    Click(1, kPathColumn, MK_CONTROL);
    ASSERT_TRUE(WaitUntil([&] { return IsEnabled(kAllow); }));
    Press(kAllow);
    EXPECT_TRUE(WaitForActions("Allow Allow Allow "));
    ExpectSent({kChangeA + " 644:01", kChangeB + " 644:01"});
    // Several rules go only when the user says so.
    for (const int answer : {IDCANCEL, IDOK}) {
        ::PostMessageA(m_list, WM_KEYDOWN, VK_DELETE, 0);
        Answer(NextMessage(), answer);
    }
    ExpectSent({kChangeA + " 644:03", kChangeB + " 644:03"});
    EXPECT_TRUE(WaitUntil([&] { return ReadList(1) == Rows{{"c.exe"}}; }));
    EXPECT_TRUE(WaitUntil([&] { return !IsEnabled(kRemove); }));

    // What the service cannot take any more is as it was.
    m_service->Stop();
    Click(0, kActionColumn);  // it says something else until the service is given up
    EXPECT_TRUE(WaitForActions("Allow "));
}

TEST_F(ApplicationsTest, TwentyThousandRulesAndOddOnesAreAtHand) {
    constexpr int kRules = 20'000;
    const std::string longest = R"(C:\)" + std::string(256, 'x');  // all that the field holds
    const std::string twice = R"(C:\Tools\a.exe)";
    const std::string odd[] = {"", longest, "C:\\\xCF\xF0\xEE\xE3.exe", R"(\\nowhere\share\a.exe)", twice, twice};
    std::string records;
    for (const std::string& path : odd) records += RuleRecord(path, 1);
    records += RuleRecord(R"(C:\Tools\seven.exe)", 7);
    for (int rule = 7; rule < kRules; ++rule) {
        records += RuleRecord(
            "C:\\Programs\\Maker " + std::to_string(rule % 31) + "\\program" + std::to_string(rule) + ".exe",
            static_cast<char>(rule % 3));
    }
    std::filesystem::create_directories(m_data + "\\Rules");
    std::ofstream(m_data + R"(\Rules\rules.conf)", std::ios::binary) << EncipherByHand(records, 264);
    Start({});
    OpenPage(kRules);
    const Rows first = ReadList(3, 6);
    for (std::size_t row = 0; row < std::size(odd); ++row) {
        EXPECT_EQ(first[row][kPathColumn], odd[row]);
        EXPECT_EQ(first[row][kActionColumn], "Deny");
    }
    Activate();
    // Icons and details of what is not there, or must not be looked into.
    for (const auto& [row, words] : {std::pair{1, "does not exist"}, std::pair{3, "another machine"}}) {
        Click(row, kNameColumn);
        EXPECT_TRUE(WaitUntil([&, words = words] {
            const HWND balloon = ::FindWindowA("BrennvarBalloon", nullptr);
            return ::IsWindowVisible(balloon) && WindowText(balloon).find(words) != std::string::npos;
        })) << words;
    }
    SetText(Control(kSearch), "SEVEN");
    EXPECT_TRUE(WaitUntil([&] { return ReadList(3) == Rows{{"seven.exe", R"(C:\Tools\seven.exe)", "Ask"}}; }));
}

TEST_F(ApplicationsTest, RulesGoOutAndComeBackAndTheImportIsTakenBack) {
    constexpr int kUndo = 1500, kExport = 1501, kImport = 1502, kPreview = 1512;
    const std::string kReload = "COMMAND 5596 0:0C";
    const TempFolder folder;
    const Lines rules = {R"(rule deny C:\Tools\a.exe)", R"(rule deny C:\Tools\b.exe)",
                         R"(rule allow C:\Tools\c.exe)"};
    Start(rules);
    Require(m_service->WaitForJournal("EVENT scenario-done"));
    OpenPage(static_cast<int>(rules.size()));
    EXPECT_FALSE(IsEnabled(kUndo));
    Press(kExport);
    AnswerFileDialog(NextWindow("Export the rules"), folder.File("mine.txt"));
    const HWND done = NextMessage();
    EXPECT_TRUE(SaysAnywhere(done, "mine.fxz"));
    Answer(done, IDOK);
    EXPECT_TRUE(std::filesystem::exists(folder.File("mine.fxz")));
    ExpectSent({});

    // Other rules meanwhile: one is changed, one has gone.
    Click(0, kActionColumn);
    Click(2, kPathColumn);
    ::PostMessageA(m_list, WM_KEYDOWN, VK_DELETE, 0);
    Require(WaitUntil([&] { return ListRowCount(m_list) == 2; }));
    EXPECT_TRUE(WaitForActions("Ask Deny "));
    EXPECT_TRUE(IsEnabled(kUndo));
    ExpectSent({kChangeA + " 644:02", "COMMAND 5596 0:16 132:433A5C546F6F6C735C632E657865 644:03"});

    for (const int answer : {IDCANCEL, IDOK}) {
        Press(kImport);
        AnswerFileDialog(NextWindow("Import rules"), folder.File("mine.fxz"));
        const HWND preview = NextWindowWith(kPreview);
        EXPECT_TRUE(SaysAnywhere(preview, "Added: 1     Removed: 0     Changed: 1     Unchanged: 1"));
        EXPECT_EQ(ListRowCount(FindVisibleControl(preview, kPreview)), 2);
        Answer(preview, answer);
        if (answer == IDCANCEL) ExpectSent({});
    }
    ExpectSent({kReload});
    EXPECT_TRUE(WaitForActions("Deny Deny Allow "));
    EXPECT_TRUE(WaitUntil([&] { return IsEnabled(kUndo); }));
    Press(kUndo);
    ExpectSent({kReload});
    EXPECT_TRUE(WaitForActions("Ask Deny "));
    // The service goes on with what it finds.
    Click(0, kActionColumn);
    ExpectSent({kChangeA + " 644:01"});
    EXPECT_TRUE(WaitForActions("Allow Deny "));

    // What is no archive changes nothing.
    std::ofstream(folder.File("damaged.fxz"), std::ios::binary) << "PK\3\4 and nothing more";
    Press(kImport);
    AnswerFileDialog(NextWindow("Import rules"), folder.File("damaged.fxz"));
    Answer(NextMessage(), IDOK);
    ExpectSent({});
    EXPECT_EQ(Actions(), "Allow Deny ");
}

}  // namespace
}  // namespace brennvar::test
