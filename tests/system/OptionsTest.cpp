// The sections of the Options page against the service stand-in: what is sent, and what the page shows afterwards.
#include <gtest/gtest.h>

#include "Product.h"
#include "tree/TreeMessages_win.h"

namespace brennvar::test {
namespace {

enum Section { kMiscellaneous = 3, kFileSharing = 5, kFiltering = 6, kTrusted = 7 };

constexpr int kNote = 1102;
constexpr int kTrustedList = 1650, kAddTrusted = 1651, kSites = 1652, kAddSite = 1653, kRemoveSites = 1654;
constexpr int kSiteName = 1656, kSiteProblem = 1657;
constexpr int kResetTrusted = 970;
constexpr char kRestartBrowser[] = "Please restart your Internet browser to apply changes.";

// "Options changed", and the section's name.
std::string Event(const std::string& subjectHex) {
    return "COMMAND 5596 0:01 4:4F7074696F6E73206368616E676564 132:" + subjectHex;
}

class OptionsTest : public ProductFixture {
protected:
    [[nodiscard]] bool IsChecked(int id) const { return Ask(Control(id), BM_GETCHECK) == BST_CHECKED; }
    void Click(int id) const { Ask(Control(id), BM_CLICK); }
    // The list of the section, waited for.
    void ExpectEntries(const Lines& expected, Place place = Place::current()) const {
        Lines entries;
        (void)WaitUntil([&] {
            entries.clear();
            for (const auto& row : ReadList(1)) entries.push_back(row.front());
            return entries == expected;
        });
        EXPECT_EQ(entries, expected) << "line " << place.line();
    }
    // These filter requests and no others have come.
    void ExpectRequests(const Lines& expected, Place place = Place::current()) const {
        (void)WaitForRecords("QUEUE", expected.size());
        EXPECT_EQ(m_service->Journal("QUEUE"), expected) << "line " << place.line();
    }
};

TEST_F(OptionsTest, SendsASectionShowsWhatIsStoredAndAsksAboutChangesThatAreLeft) {
    Start({});
    OpenOptions(kMiscellaneous);
    EXPECT_FALSE(IsEnabled(kApply)) << "nothing is changed";
    EXPECT_EQ(Text(1067), "");
    SetText(Control(1066), std::string(119, 'x') + "yz");
    Ask(Control(1070), CB_SETCURSEL, 1);  // tells nobody
    ASSERT_TRUE(WaitUntil([&] { return IsEnabled(kApply); }));
    Click(kApply);
    EXPECT_TRUE(WaitForText(kNote, "Stored."));
    std::string longest;
    for (int i = 0; i < 119; ++i) longest += "78";
    ExpectSent({"COMMAND 5596 0:08 5468:01 5592:40", "COMMAND 5596 0:08 5468:01 5592:41",
                "COMMAND 5596 0:09 5472:" + longest + " 5592:42", "COMMAND 5596 0:08 5592:43",
                "COMMAND 5596 0:09 5592:44", "COMMAND 5596 0:09 5592:45", "COMMAND 5596 0:08 5468:01 5592:46",
                Event("4D697363656C6C616E656F7573")});
    EXPECT_EQ(Text(1066), std::string(119, 'x'));
    EXPECT_EQ(Text(1067), "");
    EXPECT_EQ(Text(1070), "SOCKS5");

    OpenOptions(kFileSharing);
    Click(1002);
    EXPECT_EQ(Text(kNote), "Changes are not applied yet.");
    const auto leave = [&](int command, int answer) {
        Command(command);
        const HWND question = NextMessage();
        EXPECT_TRUE(WindowText(::GetDlgItem(question, kMessage)).starts_with("This section has changes"));
        Answer(question, answer);
    };
    leave(kExitCommand, IDCANCEL);
    EXPECT_TRUE(m_interface->IsRunning());
    EXPECT_EQ(FindProgramWindow(m_interface->Id(), kCaption, m_window), nullptr);
    EXPECT_TRUE(IsChecked(1002));
    leave(kConnectionsPage, kDiscard);
    ASSERT_TRUE(WaitUntil([&] { return Control(1002) == nullptr; }));
    OpenOptions(kFileSharing);
    EXPECT_FALSE(IsChecked(1002));
    ExpectSent({});

    Click(1002);
    leave(kConnectionsPage, IDOK);
    ASSERT_TRUE(WaitUntil([&] { return Control(1002) == nullptr; }));
    ExpectSent({"COMMAND 5596 0:08 5468:01 5592:02", "COMMAND 5596 0:08 5592:03", "COMMAND 5596 0:07",
                Event("46696C652073686172696E67")});
    OpenOptions(kFileSharing);
    EXPECT_TRUE(WaitUntil([&] { return IsChecked(1002); }));
}

TEST_F(OptionsTest, FieldsOfWhatIsOffCannotBeWorkedWith) {
    constexpr int kLogging = 2, kNotification = 1034, kFrom = 1035, kTestMail = 973, kDiscardEdits = 1106;
    Start({});
    OpenOptions(kLogging);
    ASSERT_TRUE(WaitUntil([&] { return IsEnabled(kNotification); }));
    for (const int control : {kFrom, kTestMail}) EXPECT_FALSE(IsEnabled(control)) << control;
    Click(kNotification);
    for (const int control : {kFrom, kTestMail}) EXPECT_TRUE(IsEnabled(control)) << control;
    Click(kDiscardEdits);
    for (const int control : {kFrom, kTestMail}) EXPECT_FALSE(IsEnabled(control)) << control;
    // The port is for whatever is filtered.
    OpenOptions(kFiltering);
    const auto hasPort = [&] { return IsEnabled(1079); };
    EXPECT_TRUE(WaitUntil([&] { return Control(1079) != nullptr && !hasPort(); }));
    for (const int filter : {1111, 1113}) {
        Click(filter);
        EXPECT_TRUE(hasPort());
        Click(filter);
        EXPECT_FALSE(hasPort());
    }
}

TEST_F(OptionsTest, AddsAndRemovesFilteredSites) {
    Start({"site one.example", "site Two.example", "site three.example"});
    OpenOptions(kFiltering);
    ExpectEntries({"one.example", "Two.example", "three.example"});
    EXPECT_FALSE(IsEnabled(kRemoveSites));

    Press(kAddSite);
    const HWND dialog = NextWindow("Filter a site");
    const HWND name = ::GetDlgItem(dialog, kSiteName);
    EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(dialog, IDOK)));
    SetText(name, " TWO.example");
    EXPECT_EQ(WindowText(::GetDlgItem(dialog, kSiteProblem)), "This name is in the list already.");
    EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(dialog, IDOK)));
    SetText(name, " four.example ");
    EXPECT_EQ(WindowText(::GetDlgItem(dialog, kSiteProblem)), "");
    Answer(dialog, IDOK);
    const std::string added = "QUEUE 6168 0:04 12:" + Hex("four.example");
    ExpectRequests({added});
    AnswerMessage(kRestartBrowser);
    ExpectEntries({"one.example", "Two.example", "three.example", "four.example"});
    EXPECT_TRUE(WaitForText(kNote, "Stored."));

    const HWND list = Control(kSites);
    Ask(list, kTreeSelectRow, 1);
    Ask(list, WM_KEYDOWN, VK_DELETE);
    const std::string second = "QUEUE 6168 0:05 5132:02";
    ExpectRequests({added, second});
    AnswerMessage(kRestartBrowser);
    ExpectEntries({"one.example", "three.example", "four.example"});
    EXPECT_FALSE(IsEnabled(kRemoveSites));
    Ask(list, kTreeSelectRow, 2);
    ASSERT_TRUE(WaitUntil([&] { return IsEnabled(kRemoveSites); }));
    Press(kRemoveSites);
    ExpectRequests({added, second, "QUEUE 6168 0:05 5132:04"});
    AnswerMessage(kRestartBrowser);
    ExpectEntries({"one.example", "three.example"});
    ExpectSent({});
}

TEST_F(OptionsTest, TrustsProgramsShowsWhatTheServiceHasStoredAndResetsThem) {
    // The second change is refused.
    Start({R"(trusted C:\Tools\known.exe)", "wait-for-records COMMAND 5", "refuse"});
    OpenOptions(kTrusted);
    ExpectEntries({R"(C:\Tools\known.exe)"});
    EXPECT_EQ(Control(kApply), nullptr);
    const auto add = [&](const std::string& path) {
        Press(kAddTrusted);
        AnswerFileDialog(NextWindow("Trust a program"), path);
    };
    const TempFolder folder;
    const std::string path = folder.Write("new.exe", "MZ");
    const auto expectAdded = [&](const std::string& program) {
        ExpectSent({"COMMAND 5596 0:1A 5472:" + Hex(program), "COMMAND 5596 0:01 4:" + Hex("Options changed") +
                                                                  " 132:" + Hex("Trusted programs") +
                                                                  " 648:" + Hex(program)});
    };
    add(path);
    expectAdded(path);
    EXPECT_TRUE(WaitForText(kNote, "Stored."));
    ExpectEntries({R"(C:\Tools\known.exe)", path});
    add(path);
    AnswerMessage("This program is trusted already.");
    ASSERT_TRUE(m_service->WaitForJournal("EVENT scenario-done"));
    const std::string refused = folder.Write("refused.exe", "MZ");
    add(refused);
    expectAdded(refused);
    EXPECT_TRUE(WaitForText(kNote, "The change was not stored."));
    ExpectEntries({R"(C:\Tools\known.exe)", path});
    const std::string tooLong = folder.Write(std::string(120, 'x') + ".exe", "MZ");
    add(tooLong);
    const HWND message = NextMessage();
    EXPECT_TRUE(WindowText(::GetDlgItem(message, kMessage)).starts_with("The path of this program is longer"));
    Answer(message, IDOK);

    Press(kResetTrusted);
    AnswerMessage("Forget all trusted programs?");
    ExpectSent({"COMMAND 5596 0:1B", "COMMAND 5596 0:01 4:" + Hex("Reset Trusted")});
    ExpectEntries({});
    EXPECT_EQ(Text(kTrustedList),
              "No program is trusted. Add one here, or tick the box when the firewall asks about it.");
}

TEST_F(OptionsTest, BearsListsThatAreSpoiledAndLong) {
    Start({"site one.example", "fill sites 20000", "spoil sites same-ids", "spoil sites no-ids", "spoil sites cut",
           "fill trusted 20000", "spoil trusted unterminated", "spoil trusted tail"});
    ASSERT_TRUE(m_service->WaitForJournal("EVENT scenario-done"));
    OpenOptions(kFiltering);
    ASSERT_TRUE(WaitUntil([&] { return ListRowCount(Control(kSites)) == 20'000; })) << "the last one is cut";
    const HWND list = Control(kSites);
    Ask(list, kTreeSelectRow, 0);
    EXPECT_FALSE(IsEnabled(kRemoveSites)) << "it has no identifier";
    Ask(list, kTreeSelectRow, 1);
    EXPECT_TRUE(WaitUntil([&] { return IsEnabled(kRemoveSites); }));
    OpenOptions(kTrusted);
    EXPECT_TRUE(WaitUntil([&] { return ListRowCount(Control(kTrustedList)) == 20'000; }));
    EXPECT_EQ(ReadList(1, 1), (Rows{{std::string(33, 'x')}}));
    ExpectAnswers();
}

}  // namespace
}  // namespace brennvar::test
