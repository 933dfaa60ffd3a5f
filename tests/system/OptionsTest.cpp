// The sections of the Options page against the service stand-in: what is sent, and what the page shows afterwards.
#include <gtest/gtest.h>

#include "Product.h"

namespace brennvar::test {
namespace {

enum Section { kGeneral, kLogging = 2, kMiscellaneous, kFileSharing = 5, kFiltering };

constexpr int kNote = 1102;
constexpr int kSiteControl = 1110, kCookies = 1114, kFilterPort = 1079;
constexpr char kEdited[] = "Changes are not applied yet.";
constexpr char kLost[] = "The change was not stored.";

// Journal lines. Offsets and bytes are those of the record on the wire.
std::string Value(int id, const std::string& value) {
    char idHex[8];
    std::snprintf(idHex, sizeof idHex, "%02X", id);
    return "COMMAND 5596 0:08" + (value.empty() ? "" : " 5468:" + value) + " 5592:" + idHex;
}
std::string TextOption(int id, const std::string& hex) {
    char idHex[8];
    std::snprintf(idHex, sizeof idHex, "%02X", id);
    return "COMMAND 5596 0:09" + (hex.empty() ? "" : " 5472:" + hex) + " 5592:" + idHex;
}
// "Options changed", and the section's name.
std::string Event(const std::string& subjectHex) {
    return "COMMAND 5596 0:01 4:4F7074696F6E73206368616E676564 132:" + subjectHex;
}

class OptionsTest : public ProductFixture {
protected:
    void StartAt(int section, const Lines& scenario = {}, const std::string& options = "") {
        Start(scenario, options);
        OpenOptions(section);
        Require(WaitUntil([&] { return IsEnabled(kApply); }));
    }
    void Type(int id, const std::string& text) const { SetText(Control(id), text); }
    [[nodiscard]] bool IsChecked(int id) const { return Ask(Control(id), BM_GETCHECK) == BST_CHECKED; }
    void Click(int id) const { Ask(Control(id), BM_CLICK); }
    [[nodiscard]] bool WaitForNote(const std::string& note) const { return WaitForText(kNote, note); }
    [[nodiscard]] static std::optional<DWORD> UserValue(const char* name) {
        DWORD value = 0, size = sizeof value;
        const LSTATUS got = ::RegGetValueA(HKEY_CURRENT_USER, kUserKey, name, RRF_RT_DWORD, nullptr, &value, &size);
        return got == ERROR_SUCCESS ? std::optional(value) : std::nullopt;
    }
};

TEST_F(OptionsTest, SendsASectionAndShowsWhatIsStored) {
    StartAt(kMiscellaneous);
    EXPECT_EQ(Text(1067), "");
    Type(1066, std::string(119, 'x') + "yz");
    Ask(Control(1070), CB_SETCURSEL, 1);
    Click(kApply);
    EXPECT_TRUE(WaitForNote("Stored."));
    std::string longest;
    for (int i = 0; i < 119; ++i) longest += "78";
    ExpectSent({Value(64, "01"), Value(65, "01"), TextOption(66, longest), Value(67, ""), TextOption(68, ""),
                TextOption(69, ""), Value(70, "01"), Event("4D697363656C6C616E656F7573")});
    EXPECT_EQ(Text(1066), std::string(119, 'x'));
    EXPECT_EQ(Text(1067), "");
    EXPECT_EQ(Text(1070), "SOCKS5");
}

TEST_F(OptionsTest, FollowsTheFileButForTheFieldThatTheUserEdits) {
    StartAt(kLogging, {"option 33 40", "option 27 5", "wait-for-records COMMAND 4", "option 33 50",
                       "option 31 7777", "option-text 35 mail@example.org"});
    EXPECT_EQ(Text(1033), "40");
    EXPECT_TRUE(IsChecked(1027));
    Type(1033, "41");
    EXPECT_EQ(Text(kNote), kEdited);
    SendToService();
    EXPECT_TRUE(WaitUntil([&] { return Text(1035) == "mail@example.org"; }));
    EXPECT_EQ(Text(1031), "7777");
    EXPECT_EQ(Text(1033), "41");
    EXPECT_EQ(Text(kNote), kEdited);
}

TEST_F(OptionsTest, ShowsWhatIsStoredWhenTheServiceGoesInBetween) {
    // The three commands of the start, and the first option.
    StartAt(kGeneral, {}, "--die-after-command 4");
    for (const int id : {1005, 1006, 1007}) Click(id);
    Click(kApply);
    ASSERT_TRUE(WaitForNote(kLost));
    EXPECT_EQ(m_service->WaitForEnd(), 3);
    EXPECT_FALSE(IsChecked(1005));  // arrived
    EXPECT_FALSE(IsChecked(1006));
    EXPECT_TRUE(IsChecked(1007));
    // The window has not waited, and the next change starts from what is stored.
    Click(1006);
    EXPECT_EQ(Text(kNote), kEdited);
    EXPECT_TRUE(IsEnabled(kApply));
}

TEST_F(OptionsTest, BrowserFilteringWritesThePortOnlyWhenThereIsOne) {
    StartAt(kFiltering);
    EXPECT_EQ(Text(kFilterPort), "8215");
    const auto apply = [&] {
        Press(kApply);
        AnswerMessage("Please restart your Internet browser to apply changes.");
        EXPECT_TRUE(WaitForNote("Stored."));
    };
    Click(kSiteControl);
    Type(kFilterPort, "");
    apply();
    EXPECT_EQ(UserValue("FilteringProxyPort"), std::nullopt);
    EXPECT_EQ(UserValue("EnableSCS"), 1U);
    for (const char* name :
         {"EnableAdBlocking", "EnableActiveXBlocking", "EnableReferBlocking", "EnableCookiesBlocking"}) {
        EXPECT_EQ(UserValue(name), 0U) << name;
    }
    EXPECT_EQ(Text(kFilterPort), "8215");
    EXPECT_TRUE(m_service->Journal("QUEUE").empty());

    Click(kCookies);
    Type(kFilterPort, "8080");
    apply();
    EXPECT_EQ(UserValue("FilteringProxyPort"), 8080U);
    EXPECT_EQ(UserValue("EnableCookiesBlocking"), 1U);
    EXPECT_EQ(m_service->Journal("QUEUE"), Lines{"QUEUE 6168 0:02 6160:901F"});
    EXPECT_TRUE(Sent().empty());
    EXPECT_EQ(Text(kFilterPort), "8080");
    EXPECT_TRUE(IsChecked(kSiteControl));
}

TEST_F(OptionsTest, LeavingWithChangesAsksWhatToDoWithThem) {
    StartAt(kFileSharing);
    const auto leave = [&](int command, int answer) {
        Click(1002);
        EXPECT_EQ(Text(kNote), kEdited);
        Command(command);
        const HWND question = NextMessage();
        EXPECT_TRUE(WindowText(::GetDlgItem(question, kMessage)).starts_with("This section has changes"));
        Answer(question, answer);
    };
    leave(kConnectionsPage, IDCANCEL);
    EXPECT_NE(Control(1002), nullptr);
    EXPECT_TRUE(IsChecked(1002));
    Click(1002);  // as it is stored: nothing to ask about
    leave(kExitCommand, IDCANCEL);
    EXPECT_TRUE(m_interface->IsRunning());
    EXPECT_EQ(FindProgramWindow(m_interface->Id(), kCaption, m_window), nullptr);
    Click(1002);

    leave(kConnectionsPage, kDiscard);
    ASSERT_TRUE(WaitUntil([&] { return Control(1002) == nullptr; }));
    OpenOptions(kFileSharing);
    EXPECT_FALSE(IsChecked(1002));
    EXPECT_TRUE(Sent().empty());

    leave(kConnectionsPage, IDOK);
    ASSERT_TRUE(WaitUntil([&] { return Control(1002) == nullptr; }));
    ExpectSent({Value(2, "01"), Value(3, ""), "COMMAND 5596 0:07", Event("46696C652073686172696E67")});
    OpenOptions(kFileSharing);
    EXPECT_TRUE(WaitUntil([&] { return IsChecked(1002) && Text(kNote) != kEdited; }));
}

}  // namespace
}  // namespace brennvar::test
