// The security password and the commands behind it, from the window to what the service receives.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <utility>

#include "Product.h"
#include "tree/TreeMessages_win.h"

namespace brennvar::test {
namespace {

using namespace std::chrono_literals;

constexpr int kResetTrusted = 970, kResetFingerprints = 971, kReset = 972, kTestMail = 973, kUpdate = 974,
              kDeleteLogs = 975, kSetPassword = 976, kNetworkOn = 700, kNetworkOff = 701;
constexpr int kMessage = 905, kApply = 1101, kSecurityMessages = 1005, kDiscard = 1120, kOldEdit = 1202,
              kEdit = 1204, kConfirmEdit = 1206;
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
    void Start(std::vector<std::string> scenario) {
        ProductFixture::Start(scenario);
        ExpectCommands({"COMMAND 5596 0:18 644:01", "COMMAND 5596 0:0C", "COMMAND 5596 0:0A"});
    }
    // These and nothing else have come since the last time.
    void ExpectCommands(const std::vector<std::string>& lines) {
        m_expected.insert(m_expected.end(), lines.begin(), lines.end());
        EXPECT_TRUE(WaitForRecords("COMMAND", m_expected.size()));
        EXPECT_EQ(m_service->Journal("COMMAND"), m_expected);
    }
    [[nodiscard]] HWND WaitForPassword() const { return WaitForProgramWindow(m_interface->Id(), kPasswordCaption); }
    static void Fill(HWND dialog, const std::vector<std::pair<int, std::string>>& texts) {
        for (const auto& [edit, text] : texts) {
            Ask(::GetDlgItem(dialog, edit), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
        }
    }
    [[nodiscard]] bool AnswerMessage(const std::string& expected, int button = IDOK) const {
        const HWND message = WaitForOther();
        EXPECT_EQ(WindowText(::GetDlgItem(message, kMessage)), expected);
        return Answer(message, button);
    }
    // OK must bring this message, and leave the dialog open.
    void ExpectComplaint(HWND dialog, const std::string& expected) const {
        ASSERT_TRUE(PressWhenEnabled(dialog, IDOK));
        ASSERT_TRUE(AnswerMessage(expected));
        EXPECT_TRUE(::IsWindowVisible(dialog));
    }
    [[nodiscard]] bool EnterPassword(const std::string& password) const {
        const HWND dialog = WaitForPassword();
        Fill(dialog, {{kEdit, password}, {kConfirmEdit, password}});
        return Answer(dialog, IDOK);
    }
    void AskToExit() const {
        Command(kExitCommand);
        const HWND question = WaitForOther();
        ASSERT_NE(question, nullptr);
        EXPECT_EQ(FindProgramWindow(m_interface->Id(), kPasswordCaption), nullptr) << "not before the answer";
        ASSERT_TRUE(PressWhenEnabled(question, IDOK));
    }

    std::vector<std::string> m_expected;
};

TEST_F(SecurityTest, PasswordStandsBeforeAProtectedCommand) {
    ASSERT_NO_FATAL_FAILURE(Start({"option-text 4 Secret1"}));
    Command(kResetFingerprints);
    const HWND dialog = WaitForPassword();
    ASSERT_NE(dialog, nullptr);
    EXPECT_FALSE(::IsWindowEnabled(m_window));
    Fill(dialog, {{kEdit, "secret1"}, {kConfirmEdit, "Secret1"}});
    ASSERT_NO_FATAL_FAILURE(ExpectComplaint(dialog, "Password is wrong!"));
    Fill(dialog, {{kEdit, "Secret1"}, {kConfirmEdit, "secret1"}});
    ASSERT_NO_FATAL_FAILURE(ExpectComplaint(dialog, "Password and confirmation password do not match!"));
    // What needs no password is sent at once.
    Command(kNetworkOff);
    ExpectCommands({"COMMAND 5596 0:19"});
    ASSERT_TRUE(EnterPassword("Secret1"));
    ExpectCommands({kValid, "COMMAND 5596 0:11", "COMMAND 5596 0:19", kFingerprintsReset});

    // Cancelled, nothing is sent but that.
    Command(kResetFingerprints);
    ASSERT_TRUE(Answer(WaitForPassword(), IDCANCEL));
    ExpectCommands({kInvalid});
}

TEST_F(SecurityTest, CommandsNeedNoPasswordWhereNoneIsSet) {
    ASSERT_NO_FATAL_FAILURE(Start({}));
    Command(kResetFingerprints);
    ExpectCommands({"COMMAND 5596 0:11", "COMMAND 5596 0:19 644:01", kFingerprintsReset});
    Command(kTestMail);  // "E-mail notification test"
    ExpectCommands({"COMMAND 5596 0:14", "COMMAND 5596 0:01 4:452D6D61696C206E6F74696669636174696F6E2074657374"});
    Command(kUpdate);
    ASSERT_TRUE(AnswerMessage("Signatures has been sucessfully updated!"));
    ExpectCommands({"COMMAND 5596 0:15"});
    Command(kNetworkOn);
    ExpectCommands({"COMMAND 5596 0:19 644:01"});
    // What cannot be undone is asked about.
    const auto ask = [&](int command, const char* question) {
        for (const int button : {IDCANCEL, IDOK}) {
            Command(command);
            EXPECT_TRUE(AnswerMessage(question, button));
        }
    };
    ask(kResetTrusted, "Do you want to reset the list of trusted programs?");  // "Reset Trusted"
    ExpectCommands({"COMMAND 5596 0:1B", "COMMAND 5596 0:01 4:52657365742054727573746564"});
    ask(kReset, "Do you want to reset all settings of the firewall?");  // "Options changed", "Reset"
    ExpectCommands({"COMMAND 5596 0:1D", "COMMAND 5596 0:01 4:4F7074696F6E73206368616E676564 132:5265736574"});
}

TEST_F(SecurityTest, DeletesTheLogsOfTheChosenDay) {
    SYSTEMTIME today;
    ::GetLocalTime(&today);
    const std::string year = std::to_string(today.wYear - 1);
    std::string yearHex;
    for (const char digit : year) yearHex += std::string("3") + digit;
    ASSERT_NO_FATAL_FAILURE(Start({}));
    const auto log = [&](const char* day) { return m_data + "\\Log\\" + year + day + "_dns.log"; };
    for (const char* day : {"0227", "0228", "0301"}) std::ofstream(log(day)) << "x";
    const auto choose = [&](int button) {
        Command(kDeleteLogs);
        const HWND dialog = WaitForProgramWindow(m_interface->Id(), "Delete logs");
        const std::pair<int, WPARAM> rows[] = {{kYearList, 1}, {kMonthList, 1}, {kDayList, 27}};
        for (const auto& [list, row] : rows) {
            Ask(::GetDlgItem(dialog, list), CB_SETCURSEL, row);
            Ask(dialog, WM_COMMAND, MAKEWPARAM(list, CBN_SELCHANGE));
        }
        // February: the days have followed the month.
        EXPECT_LE(Ask(::GetDlgItem(dialog, kDayList), CB_GETCOUNT), 29);
        return Answer(dialog, button);
    };
    ASSERT_TRUE(choose(IDOK));
    ExpectCommands({"COMMAND 5596 0:17 132:" + yearHex + "30323238"});
    EXPECT_TRUE(WaitUntil([&] { return !std::filesystem::exists(log("0228")); }));
    EXPECT_TRUE(std::filesystem::exists(log("0227")));
    ASSERT_TRUE(choose(kDayAndOlder));
    ExpectCommands({"COMMAND 5596 0:17 132:" + yearHex + "30323238 644:01"});
    EXPECT_TRUE(WaitUntil([&] { return !std::filesystem::exists(log("0227")); }));
    EXPECT_TRUE(std::filesystem::exists(log("0301")));
}

TEST_F(SecurityTest, PasswordIsSetChangedAndCleared) {
    ASSERT_NO_FATAL_FAILURE(Start({}));
    const std::string longest(119, 'x');
    std::string longestHex;
    for (std::size_t i = 0; i < longest.size(); ++i) longestHex += "78";
    const auto change = [&](const std::string& old, const std::string& changed) {
        const HWND dialog = WaitForPassword();
        Fill(dialog, {{kOldEdit, old}, {kEdit, changed}, {kConfirmEdit, changed}});
        EXPECT_TRUE(PressWhenEnabled(dialog, IDOK));
        return AnswerMessage("Security password has been changed.") &&
               WaitUntil([&] { return !::IsWindow(dialog); });
    };
    Command(kSetPassword);
    const HWND dialog = WaitForPassword();
    ASSERT_NE(dialog, nullptr);
    Fill(dialog, {{kOldEdit, "x"}, {kEdit, "new"}, {kConfirmEdit, "new"}});
    ASSERT_NO_FATAL_FAILURE(ExpectComplaint(dialog, "Old password is wrong!"));
    Fill(dialog, {{kOldEdit, ""}, {kConfirmEdit, "New"}});
    ASSERT_NO_FATAL_FAILURE(ExpectComplaint(dialog, "New password and confirmation password do not match!"));
    ASSERT_TRUE(change("", longest));
    ExpectCommands({"COMMAND 5596 0:09 5472:" + longestHex + " 5592:04", kPasswordChanged});

    // From now on it is asked for, all of it.
    Command(kTestMail);
    const HWND question = WaitForPassword();
    ASSERT_NE(question, nullptr);
    Fill(question, {{kEdit, longest.substr(1)}, {kConfirmEdit, longest.substr(1)}});
    ASSERT_NO_FATAL_FAILURE(ExpectComplaint(question, "Password is wrong!"));
    ASSERT_TRUE(EnterPassword(longest));
    ExpectCommands(
        {kValid, "COMMAND 5596 0:14", "COMMAND 5596 0:01 4:452D6D61696C206E6F74696669636174696F6E2074657374"});
    Command(kSetPassword);
    ASSERT_TRUE(change(longest, ""));
    ExpectCommands({"COMMAND 5596 0:09 5592:04", kPasswordChanged});
    Command(kResetFingerprints);
    ExpectCommands({"COMMAND 5596 0:11", "COMMAND 5596 0:19 644:01", kFingerprintsReset});
}

TEST_F(SecurityTest, ExitAsksForThePasswordAfterItsQuestion) {
    ASSERT_NO_FATAL_FAILURE(Start({"option-text 4 Secret1"}));
    ASSERT_NO_FATAL_FAILURE(AskToExit());
    ASSERT_TRUE(Answer(WaitForPassword(), IDCANCEL));
    ExpectCommands({kInvalid});
    EXPECT_TRUE(m_interface->IsRunning());
    EXPECT_TRUE(::IsWindowVisible(m_window));

    // The same from the tray, with no window on the screen.
    ::ShowWindow(m_window, SW_HIDE);
    ASSERT_TRUE(WaitUntil([&] { return !::IsWindowVisible(m_window); }));
    ASSERT_NO_FATAL_FAILURE(AskToExit());
    ASSERT_TRUE(EnterPassword("Secret1"));
    EXPECT_EQ(m_interface->WaitForEnd(), 0);
    ExpectCommands({kValid, "COMMAND 5596 0:0D", "COMMAND 5596 0:0B"});
}

TEST_F(SecurityTest, AsksOnceAtATimeOverADialogAndNotBesideAQuestion) {
    ASSERT_NO_FATAL_FAILURE(
        Start({"option-text 4 Secret1", R"(rule allow C:\rule.exe)", "wait-for-records COMMAND 5",
               R"(question tcp 10.1.2.3:1 10.9.9.9:2 4242 C:\Aurora\aurora.exe)"}));
    Command(kAboutCommand);
    const HWND about = WaitForProgramWindow(m_interface->Id(), "About");
    ASSERT_NE(about, nullptr);
    Command(kTestMail);
    HWND password = WaitForPassword();
    ASSERT_NE(password, nullptr);
    EXPECT_EQ(::GetWindow(password, GW_OWNER), about);
    Command(kResetFingerprints);  // refused without a word, as no second report says below
    Command(kExitCommand);        // would be refused in the end, so it asks nothing
    EXPECT_LT(AnswerTime(m_window, 5s), 5s);
    EXPECT_EQ(FindProgramWindow(m_interface->Id(), m_caption, m_window), nullptr);
    ASSERT_TRUE(Answer(password, IDCANCEL));
    ASSERT_TRUE(WaitUntil([&] { return ::IsWindowEnabled(about) != FALSE; }));
    ASSERT_TRUE(Answer(about, IDOK));
    ExpectCommands({kInvalid});

    // The driver waits for an answer that must not wait for the password, nor for what becomes of changes.
    OpenOptions(0);
    ASSERT_TRUE(WaitUntil([&] { return ::IsWindowEnabled(FindVisibleControl(m_window, kApply)) != FALSE; }));
    Ask(FindVisibleControl(m_window, kSecurityMessages), BM_CLICK);
    Command(kNetworkOn);
    const HWND question = WaitForQuestion();
    ASSERT_NE(question, nullptr);
    Command(kResetFingerprints);
    Command(kApplicationsPage);  // stays on the page with the changes
    EXPECT_LT(AnswerTime(m_window, 5s), 5s);
    ASSERT_TRUE(Answer(question, kNo));
    ASSERT_TRUE(WaitForRecords("CONFIRM", 1));
    // The rules are read after the password that was asked for above.
    Command(kApplicationsPage);
    ASSERT_TRUE(Answer(WaitForOther(), kDiscard));
    ASSERT_TRUE(WaitUntil([&] {
        const HWND list = FindVisibleChild(m_window, kTreeClass);
        return list != nullptr && ListRows(list, 1, 1) == std::vector<std::vector<std::string>>{{"rule.exe"}};
    }));
    EXPECT_EQ(FindProgramWindow(m_interface->Id(), kPasswordCaption), nullptr);
    Command(kTestMail);
    password = WaitForPassword();
    ASSERT_TRUE(Answer(password, IDCANCEL));
    ExpectCommands({"COMMAND 5596 0:19 644:01", kInvalid});
}

TEST_F(SecurityTest, ProgramEndsWithADialogOpen) {
    ASSERT_NO_FATAL_FAILURE(Start({}));
    Command(kDeleteLogs);
    ASSERT_NE(WaitForProgramWindow(m_interface->Id(), "Delete logs"), nullptr);
    Command(kExitCommand);
    const HWND exit = WaitForOther();
    ASSERT_NE(exit, nullptr);
    ASSERT_TRUE(PressWhenEnabled(exit, IDOK));
    EXPECT_EQ(m_interface->WaitForEnd(5s), 0);
}

TEST_F(SecurityTest, AbsentServiceHoldsUpNoDialog) {
    ASSERT_NO_FATAL_FAILURE(Start({"option-text 4 Secret1"}));
    m_service->Stop();
    Command(kUpdate);
    ASSERT_TRUE(EnterPassword("Secret1"));
    EXPECT_LT(AnswerTime(m_window, 5s), 5s);
    // Nobody learns of a change that is lost.
    Command(kSetPassword);
    const HWND dialog = WaitForPassword();
    Fill(dialog, {{kOldEdit, "Secret1"}});
    ASSERT_TRUE(PressWhenEnabled(dialog, IDOK));
    ASSERT_TRUE(AnswerMessage("Security password has been changed."));
    ASSERT_TRUE(WaitUntil([&] { return !::IsWindow(dialog); }));
    ASSERT_NO_FATAL_FAILURE(AskToExit());
    ASSERT_TRUE(EnterPassword("Secret1"));
    EXPECT_EQ(m_interface->WaitForEnd(), 0);
}

}  // namespace
}  // namespace brennvar::test
