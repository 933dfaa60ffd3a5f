// The sections of the Options page against the service stand-in: what is sent, and what the page shows afterwards.
#include <gtest/gtest.h>

#include "Product.h"
#include "support/TempFolder.h"
#include "tree/TreeMessages_win.h"

namespace brennvar::test {
namespace {

enum Section { kMiscellaneous = 3, kFileSharing = 5, kFiltering = 6, kTrusted = 7 };

constexpr int kNote = 1102;
constexpr int kAddTrusted = 1651, kSites = 1652, kAddSite = 1653, kRemoveSites = 1654;
constexpr int kSiteName = 1656, kSiteProblem = 1657;
constexpr int kResetTrusted = 970;

// "Options changed", and the section's name.
std::string Event(const std::string& subject) {
    return "COMMAND 5596 0:01 4:4F7074696F6E73206368616E676564 132:" + Hex(subject);
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
};

TEST_F(OptionsTest, SendsASectionShowsWhatIsStoredAndAsksAboutChangesThatAreLeft) {
    constexpr int kLogging = 2, kNotification = 1034, kFrom = 1035, kTestMail = 973;
    Start({});
    OpenOptions(kMiscellaneous);
    EXPECT_FALSE(IsEnabled(kApply)) << "nothing is changed";
    EXPECT_EQ(Text(1067), "");
    SetText(Control(1066), std::string(119, 'x') + "yz");
    Ask(Control(1070), CB_SETCURSEL, 1);  // tells nobody
    ASSERT_TRUE(WaitUntil([&] { return IsEnabled(kApply); }));
    Click(kApply);
    EXPECT_TRUE(WaitForText(kNote, "Stored."));
    ExpectSent({"COMMAND 5596 0:08 5468:01 5592:40", "COMMAND 5596 0:08 5468:01 5592:41",
                "COMMAND 5596 0:09 5472:" + Hex(std::string(119, 'x')) + " 5592:42", "COMMAND 5596 0:08 5592:43",
                "COMMAND 5596 0:09 5592:44", "COMMAND 5596 0:09 5592:45", "COMMAND 5596 0:08 5468:01 5592:46",
                Event("Miscellaneous")});
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
    for (const int answer : {kDiscard, IDOK}) {
        leave(kConnectionsPage, answer);
        ASSERT_TRUE(WaitUntil([&] { return Control(1002) == nullptr; }));
        ExpectSent(answer == kDiscard ? Lines{}
                                      : Lines{"COMMAND 5596 0:08 5468:01 5592:02", "COMMAND 5596 0:08 5592:03",
                                              "COMMAND 5596 0:07", Event("File sharing")});
        OpenOptions(kFileSharing);
        EXPECT_TRUE(WaitUntil([&] { return IsChecked(1002) == (answer == IDOK); }));
        if (answer == kDiscard) Click(1002);
    }

    // The fields of what is off cannot be worked with; the port is for whatever is filtered.
    OpenOptions(kLogging);
    ASSERT_TRUE(WaitUntil([&] { return IsEnabled(kNotification); }));
    for (const bool isOn : {false, true}) {
        EXPECT_TRUE(IsEnabled(kFrom) == isOn && IsEnabled(kTestMail) == isOn);
        if (!isOn) Click(kNotification);
    }
    Click(kNotification);
    OpenOptions(kFiltering);
    EXPECT_TRUE(WaitUntil([&] { return Control(1079) != nullptr && !IsEnabled(1079); }));
    for (const int filter : {1111, 1113}) {
        for (const bool isOn : {true, false}) {
            Click(filter);
            EXPECT_EQ(IsEnabled(1079), isOn) << filter;
        }
    }
}

TEST_F(OptionsTest, ChangesFilteredSitesAndTrustedProgramsAndShowsWhatTheServiceHasStored) {
    // The second trusted program is refused.
    Start({"site one.example", "site Two.example", "site three.example", R"(trusted C:\Tools\known.exe)",
           "wait-for-records COMMAND 5", "refuse"});
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
    Lines requests = {"QUEUE 6168 0:04 12:" + Hex("four.example")};
    const auto expectRequests = [&](const Lines& entries, Place place = Place::current()) {
        (void)WaitForRecords("QUEUE", requests.size());
        EXPECT_EQ(m_service->Journal("QUEUE"), requests) << "line " << place.line();
        AnswerMessage("Please restart your Internet browser to apply changes.", IDOK, place);
        ExpectEntries(entries, place);
    };
    expectRequests({"one.example", "Two.example", "three.example", "four.example"});
    EXPECT_TRUE(WaitForText(kNote, "Stored."));
    // By its identifier, not by its place: the key and then the button.
    const HWND list = Control(kSites);
    Ask(list, kTreeSelectRow, 1);
    Ask(list, WM_KEYDOWN, VK_DELETE);
    requests.emplace_back("QUEUE 6168 0:05 5132:02");
    expectRequests({"one.example", "three.example", "four.example"});
    EXPECT_FALSE(IsEnabled(kRemoveSites));
    Ask(list, kTreeSelectRow, 2);
    ASSERT_TRUE(WaitUntil([&] { return IsEnabled(kRemoveSites); }));
    Press(kRemoveSites);
    requests.emplace_back("QUEUE 6168 0:05 5132:04");
    expectRequests({"one.example", "three.example"});
    ExpectSent({});

    OpenOptions(kTrusted);
    ExpectEntries({R"(C:\Tools\known.exe)"});
    EXPECT_EQ(Control(kApply), nullptr);
    const TempFolder folder;
    const auto add = [&](const std::string& path, const std::string& note) {
        Press(kAddTrusted);
        AnswerFileDialog(NextWindow("Trust a program"), path);
        if (note.empty()) return;
        ExpectSent({"COMMAND 5596 0:1A 5472:" + Hex(path), Event("Trusted programs") + " 648:" + Hex(path)});
        EXPECT_TRUE(WaitForText(kNote, note));
    };
    const std::string path = folder.Write("new.exe", "MZ");
    add(path, "Stored.");
    ExpectEntries({R"(C:\Tools\known.exe)", path});
    add(path, "");
    AnswerMessage("This program is trusted already.");
    ASSERT_TRUE(m_service->WaitForJournal("EVENT scenario-done"));
    add(folder.Write("refused.exe", "MZ"), "The change was not stored.");
    ExpectEntries({R"(C:\Tools\known.exe)", path});
    add(folder.Write(std::string(120, 'x') + ".exe", "MZ"), "");
    const HWND message = NextMessage();
    EXPECT_TRUE(WindowText(::GetDlgItem(message, kMessage)).starts_with("The path of this program is longer"));
    Answer(message, IDOK);
    Press(kResetTrusted);
    AnswerMessage("Forget all trusted programs?");
    ExpectSent({"COMMAND 5596 0:1B", "COMMAND 5596 0:01 4:" + Hex("Reset Trusted")});
    ExpectEntries({});
}

}  // namespace
}  // namespace brennvar::test
