// The security password and the commands behind it, from the window to what the service receives.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <utility>

#include "Product.h"

namespace brennvar::test {
namespace {

constexpr int kResetTrusted = 970, kResetFingerprints = 971, kReset = 972, kTestMail = 973, kUpdate = 974,
              kDeleteLogs = 975, kSetPassword = 976, kNetworkOn = 700, kNetworkOff = 701;
constexpr int kSecurityMessages = 1005, kOldEdit = 1202, kEdit = 1204, kConfirmEdit = 1206;
constexpr int kDayList = 1212, kMonthList = 1214, kYearList = 1216, kDayAndOlder = 523;
constexpr char kPasswordCaption[] = "Security password";

// Title "Security password entered", subject "Valid" or "Invalid".
constexpr char kValid[] = "COMMAND 5596 0:01 4:53656375726974792070617373776F726420656E7465726564 132:56616C6964";
constexpr char kInvalid[] =
    "COMMAND 5596 0:01 4:53656375726974792070617373776F726420656E7465726564 132:496E76616C6964";
// "Options changed", "Password"
constexpr char kPasswordChanged[] = "COMMAND 5596 0:01 4:4F7074696F6E73206368616E676564 132:50617373776F7264";
// "Fingerprints reset"
constexpr char kFingerprintsReset[] = "COMMAND 5596 0:01 4:46696E6765727072696E7473207265736574";

class SecurityTest : public ProductFixture {
protected:
    [[nodiscard]] HWND NextPassword(Place place = Place::current()) const {
        return NextWindow(kPasswordCaption, place);
    }
    static void Fill(HWND dialog, const std::vector<std::pair<int, std::string>>& texts) {
        for (const auto& [edit, text] : texts) SetText(::GetDlgItem(dialog, edit), text);
    }
    // OK must bring this message, and leave the dialog open.
    void ExpectComplaint(HWND dialog, const std::string& expected, Place place = Place::current()) const {
        Require(PressWhenEnabled(dialog, IDOK), place);
        AnswerMessage(expected, IDOK, place);
        EXPECT_TRUE(::IsWindowVisible(dialog));
    }
    void EnterPassword(const std::string& password, Place place = Place::current()) const {
        const HWND dialog = NextPassword(place);
        Fill(dialog, {{kEdit, password}, {kConfirmEdit, password}});
        Answer(dialog, IDOK, place);
    }
    [[nodiscard]] bool IsPasswordAsked() const {
        return FindProgramWindow(m_interface->Id(), kPasswordCaption) != nullptr;
    }
    void AskToExit(Place place = Place::current()) const {
        Command(kExitCommand);
        const HWND question = NextMessage(place);
        EXPECT_FALSE(IsPasswordAsked()) << "not before the answer";
        Require(PressWhenEnabled(question, IDOK), place);
    }
};

TEST_F(SecurityTest, PasswordStandsBeforeAProtectedCommand) {
    Start({"option-text 4 Secret1"});
    Command(kResetFingerprints);
    const HWND dialog = NextPassword();
    EXPECT_FALSE(::IsWindowEnabled(m_window));
    Fill(dialog, {{kEdit, "secret1"}, {kConfirmEdit, "Secret1"}});
    ExpectComplaint(dialog, "Password is wrong!");
    Fill(dialog, {{kEdit, "Secret1"}, {kConfirmEdit, "secret1"}});
    ExpectComplaint(dialog, "Password and confirmation password do not match!");
    // What needs no password is sent at once.
    Command(kNetworkOff);
    ExpectSent({"COMMAND 5596 0:19"});
    EnterPassword("Secret1");
    ExpectSent({kValid, "COMMAND 5596 0:11", "COMMAND 5596 0:19", kFingerprintsReset});

    // Cancelled, nothing is sent but that.
    Command(kResetFingerprints);
    Answer(NextPassword(), IDCANCEL);
    ExpectSent({kInvalid});
}

TEST_F(SecurityTest, CommandsNeedNoPasswordWhereNoneIsSet) {
    Start({});
    Command(kResetFingerprints);
    ExpectSent({"COMMAND 5596 0:11", "COMMAND 5596 0:19 644:01", kFingerprintsReset});
    Command(kTestMail);  // "E-mail notification test"
    ExpectSent({"COMMAND 5596 0:14", "COMMAND 5596 0:01 4:452D6D61696C206E6F74696669636174696F6E2074657374"});
    Command(kUpdate);
    AnswerMessage("Signatures has been sucessfully updated!");
    ExpectSent({"COMMAND 5596 0:15"});
    Command(kNetworkOn);
    ExpectSent({"COMMAND 5596 0:19 644:01"});
    // What cannot be undone is asked about.
    const auto ask = [&](int command, const char* question) {
        for (const int button : {IDCANCEL, IDOK}) {
            Command(command);
            AnswerMessage(question, button);
        }
    };
    ask(kResetTrusted, "Do you want to reset the list of trusted programs?");  // "Reset Trusted"
    ExpectSent({"COMMAND 5596 0:1B", "COMMAND 5596 0:01 4:52657365742054727573746564"});
    ask(kReset, "Do you want to reset all settings of the firewall?");  // "Options changed", "Reset"
    ExpectSent({"COMMAND 5596 0:1D", "COMMAND 5596 0:01 4:4F7074696F6E73206368616E676564 132:5265736574"});
}

TEST_F(SecurityTest, DeletesTheLogsOfTheChosenDay) {
    SYSTEMTIME today;
    ::GetLocalTime(&today);
    const std::string year = std::to_string(today.wYear - 1);
    std::string yearHex;
    for (const char digit : year) yearHex += std::string("3") + digit;
    Start({});
    const auto log = [&](const char* day) { return m_data + "\\Log\\" + year + day + "_dns.log"; };
    for (const char* day : {"0227", "0228", "0301"}) std::ofstream(log(day)) << "x";
    const auto choose = [&](int button) {
        Command(kDeleteLogs);
        const HWND dialog = NextWindow("Delete logs");
        const std::pair<int, WPARAM> rows[] = {{kYearList, 1}, {kMonthList, 1}, {kDayList, 27}};
        for (const auto& [list, row] : rows) {
            Ask(::GetDlgItem(dialog, list), CB_SETCURSEL, row);
            Ask(dialog, WM_COMMAND, MAKEWPARAM(list, CBN_SELCHANGE));
        }
        // February: the days have followed the month.
        EXPECT_LE(Ask(::GetDlgItem(dialog, kDayList), CB_GETCOUNT), 29);
        Answer(dialog, button);
    };
    choose(IDOK);
    ExpectSent({"COMMAND 5596 0:17 132:" + yearHex + "30323238"});
    EXPECT_TRUE(WaitUntil([&] { return !std::filesystem::exists(log("0228")); }));
    EXPECT_TRUE(std::filesystem::exists(log("0227")));
    choose(kDayAndOlder);
    ExpectSent({"COMMAND 5596 0:17 132:" + yearHex + "30323238 644:01"});
    EXPECT_TRUE(WaitUntil([&] { return !std::filesystem::exists(log("0227")); }));
    EXPECT_TRUE(std::filesystem::exists(log("0301")));
}

TEST_F(SecurityTest, PasswordIsSetChangedAndCleared) {
    Start({});
    const std::string longest(119, 'x');
    std::string longestHex;
    for (std::size_t i = 0; i < longest.size(); ++i) longestHex += "78";
    const auto change = [&](const std::string& old, const std::string& changed) {
        const HWND dialog = NextPassword();
        Fill(dialog, {{kOldEdit, old}, {kEdit, changed}, {kConfirmEdit, changed}});
        Require(PressWhenEnabled(dialog, IDOK));
        AnswerMessage("Security password has been changed.");
        Require(WaitUntil([&] { return !::IsWindow(dialog); }));
    };
    Command(kSetPassword);
    const HWND dialog = NextPassword();
    Fill(dialog, {{kOldEdit, "x"}, {kEdit, "new"}, {kConfirmEdit, "new"}});
    ExpectComplaint(dialog, "Old password is wrong!");
    Fill(dialog, {{kOldEdit, ""}, {kConfirmEdit, "New"}});
    ExpectComplaint(dialog, "New password and confirmation password do not match!");
    change("", longest);
    ExpectSent({"COMMAND 5596 0:09 5472:" + longestHex + " 5592:04", kPasswordChanged});

    // From now on it is asked for, all of it.
    Command(kTestMail);
    const HWND question = NextPassword();
    Fill(question, {{kEdit, longest.substr(1)}, {kConfirmEdit, longest.substr(1)}});
    ExpectComplaint(question, "Password is wrong!");
    EnterPassword(longest);
    ExpectSent(
        {kValid, "COMMAND 5596 0:14", "COMMAND 5596 0:01 4:452D6D61696C206E6F74696669636174696F6E2074657374"});
    Command(kSetPassword);
    change(longest, "");
    ExpectSent({"COMMAND 5596 0:09 5592:04", kPasswordChanged});
    Command(kResetFingerprints);
    ExpectSent({"COMMAND 5596 0:11", "COMMAND 5596 0:19 644:01", kFingerprintsReset});
}

TEST_F(SecurityTest, ExitAsksForThePasswordAfterItsQuestion) {
    Start({"option-text 4 Secret1"});
    AskToExit();
    Answer(NextPassword(), IDCANCEL);
    ExpectSent({kInvalid});
    EXPECT_TRUE(m_interface->IsRunning());
    EXPECT_TRUE(::IsWindowVisible(m_window));

    // The same from the tray, with no window on the screen.
    ::ShowWindow(m_window, SW_HIDE);
    ASSERT_TRUE(WaitUntil([&] { return !::IsWindowVisible(m_window); }));
    AskToExit();
    EnterPassword("Secret1");
    ExpectEnd();
    ExpectSent({kValid, "COMMAND 5596 0:0D", "COMMAND 5596 0:0B"});
}

TEST_F(SecurityTest, AsksOnceAtATimeOverADialogAndNotBesideAQuestion) {
    Start({"option-text 4 Secret1", R"(rule allow C:\rule.exe)", "wait-for-records COMMAND 5",
           R"(question tcp 10.1.2.3:1 10.9.9.9:2 4242 C:\Aurora\aurora.exe)"});
    Command(kAboutCommand);
    const HWND about = NextWindow("About");
    Command(kTestMail);
    HWND password = NextPassword();
    EXPECT_EQ(::GetWindow(password, GW_OWNER), about);
    Command(kResetFingerprints);  // refused without a word, as no second report says below
    Command(kExitCommand);        // would be refused in the end, so it asks nothing
    ExpectAnswers();
    EXPECT_EQ(FindProgramWindow(m_interface->Id(), m_caption, m_window), nullptr);
    Answer(password, IDCANCEL);
    ASSERT_TRUE(WaitUntil([&] { return ::IsWindowEnabled(about) != FALSE; }));
    Answer(about, IDOK);
    ExpectSent({kInvalid});

    // The driver waits for an answer that must not wait for the password, nor for what becomes of changes.
    OpenOptions(0);
    ASSERT_TRUE(WaitUntil([&] { return IsEnabled(kApply); }));
    Ask(Control(kSecurityMessages), BM_CLICK);
    Command(kNetworkOn);
    const HWND question = NextQuestion();
    Command(kResetFingerprints);
    Command(kApplicationsPage);  // stays on the page with the changes
    ExpectAnswers();
    Answer(question, kNo);
    ASSERT_TRUE(WaitForRecords("CONFIRM", 1));
    // The rules are read after the password that was asked for above.
    Command(kApplicationsPage);
    Answer(NextMessage(), kDiscard);
    ASSERT_TRUE(WaitUntil([&] { return ReadList(1) == Rows{{"rule.exe"}}; }));
    EXPECT_FALSE(IsPasswordAsked());
    Command(kTestMail);
    password = NextPassword();
    Answer(password, IDCANCEL);
    ExpectSent({"COMMAND 5596 0:19 644:01", kInvalid});
}

TEST_F(SecurityTest, ProgramEndsWithADialogOpen) {
    Start({});
    Command(kDeleteLogs);
    (void)NextWindow("Delete logs");
    Leave();
}

TEST_F(SecurityTest, AbsentServiceHoldsUpNoDialog) {
    Start({"option-text 4 Secret1"});
    m_service->Stop();
    Command(kUpdate);
    EnterPassword("Secret1");
    ExpectAnswers();
    // Nobody learns of a change that is lost.
    Command(kSetPassword);
    const HWND dialog = NextPassword();
    Fill(dialog, {{kOldEdit, "Secret1"}});
    ASSERT_TRUE(PressWhenEnabled(dialog, IDOK));
    AnswerMessage("Security password has been changed.");
    ASSERT_TRUE(WaitUntil([&] { return !::IsWindow(dialog); }));
    AskToExit();
    EnterPassword("Secret1");
    ExpectEnd();
}

}  // namespace
}  // namespace brennvar::test
