// The security password and the commands behind it, from the window to what the service receives.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <utility>

#include "Product.h"

namespace brennvar::test {
namespace {

constexpr int kResetFingerprints = 971, kReset = 972, kTestMail = 973, kUpdate = 974, kDeleteLogs = 975,
              kSetPassword = 976, kNetworkOff = 701;
constexpr int kOldEdit = 1202, kEdit = 1204, kConfirmEdit = 1206;
constexpr int kDayList = 1212, kDayAndOlder = 523;
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
    void EnterPassword(const std::string& password, Place place = Place::current()) const {
        const HWND dialog = NextPassword(place);
        Fill(dialog, {{kEdit, password}, {kConfirmEdit, password}});
        Answer(dialog, IDOK, place);
    }
    void ChangePassword(const std::string& old, const std::string& changed) const {
        const HWND dialog = NextPassword();
        Fill(dialog, {{kOldEdit, old}, {kEdit, changed}, {kConfirmEdit, changed}});
        Require(PressWhenEnabled(dialog, IDOK));
        AnswerMessage("Security password has been changed.");
        Require(WaitUntil([&] { return !::IsWindow(dialog); }));
    }
    void AskToExit(Place place = Place::current()) const {
        Command(kExitCommand);
        const HWND question = NextMessage(place);
        EXPECT_EQ(FindProgramWindow(m_interface->Id(), kPasswordCaption), nullptr) << "not before the answer";
        Require(PressWhenEnabled(question, IDOK), place);
    }
};

TEST_F(SecurityTest, PasswordIsSetAndStandsBeforeProtectedCommandsAndExit) {
    Start({});
    Command(kSetPassword);
    ChangePassword("", "Secret1");
    ExpectSent({"COMMAND 5596 0:09 5472:53656372657431 5592:04", kPasswordChanged});
    // From now on it is asked for.
    Command(kResetFingerprints);
    const HWND dialog = NextPassword();
    EXPECT_FALSE(::IsWindowEnabled(m_window));
    Fill(dialog, {{kEdit, "secret1"}, {kConfirmEdit, "Secret1"}});
    Require(PressWhenEnabled(dialog, IDOK));
    AnswerMessage("Password is wrong!");
    EXPECT_TRUE(::IsWindowVisible(dialog));
    // What needs no password is sent at once.
    Command(kNetworkOff);
    ExpectSent({"COMMAND 5596 0:19"});
    EnterPassword("Secret1");
    ExpectSent({kValid, "COMMAND 5596 0:11", "COMMAND 5596 0:19", kFingerprintsReset});

    // Cancelled, nothing is sent but that.
    AskToExit();
    Answer(NextPassword(), IDCANCEL);
    ExpectSent({kInvalid});
    EXPECT_TRUE(::IsWindowVisible(m_window));
    {
        UniqueFile held;
        ASSERT_TRUE(WaitUntil([&] {
            held.Reset(::CreateFileA((m_data + "\\config.conf").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0,
                                     nullptr));
            return bool(held);
        }));
        Command(kTestMail);
        AnswerMessage("The settings cannot be read at the moment. Please try again.");
        ExpectSent({kInvalid});
    }
    // It stays behind when the service goes, and nobody learns of a change that is lost.
    m_service->Stop();
    Command(kSetPassword);
    ChangePassword("Secret1", "");
    // The same from the tray, with no window on the screen.
    ::ShowWindow(m_window, SW_HIDE);
    ASSERT_TRUE(WaitUntil([&] { return !::IsWindowVisible(m_window); }));
    AskToExit();
    EnterPassword("Secret1");
    ExpectEnd();
    ExpectSent({});
}

TEST_F(SecurityTest, CommandsNeedNoPasswordWhereNoneIsSet) {
    SYSTEMTIME today;
    ::GetLocalTime(&today);
    const std::string year = std::to_string(today.wYear - 1);
    std::string yearHex;
    for (const char digit : year) yearHex += std::string("3") + digit;
    Start({});
    Command(kUpdate);
    AnswerMessage("Signatures has been sucessfully updated!");
    ExpectSent({"COMMAND 5596 0:15"});
    // What cannot be undone is asked about.
    for (const int button : {IDCANCEL, IDOK}) {
        Command(kReset);
        AnswerMessage("Reset all settings of the firewall to their first values?", button);
    }
    // "Options changed", "Reset"
    ExpectSent({"COMMAND 5596 0:1D", "COMMAND 5596 0:01 4:4F7074696F6E73206368616E676564 132:5265736574"});

    // Logs of last year only: the newest day comes first, and each once.
    const auto log = [&](const std::string& name) { return m_data + "\\Log\\" + year + name + ".log"; };
    const auto forgetLogs = [&] {
        for (const auto& file : std::filesystem::directory_iterator(m_data + "\\Log")) {
            std::filesystem::remove(file);
        }
    };
    forgetLogs();
    for (const char* name : {"0227_dns", "0228_dns", "0228", "0301_mac"}) std::ofstream(log(name)) << "x";
    const std::pair<int, const char*> choices[] = {{IDOK, ""}, {kDayAndOlder, " 644:01"}};
    for (const auto& [button, older] : choices) {
        Command(kDeleteLogs);
        const HWND dialog = NextWindow("Delete logs");
        const HWND days = ::GetDlgItem(dialog, kDayList);
        ASSERT_TRUE(WaitUntil([&] { return ::IsWindowEnabled(days) != FALSE; }));
        EXPECT_EQ(LOWORD(::SendMessageA(dialog, DM_GETDEFID, 0, 0)), IDCANCEL) << "Enter deletes nothing";
        EXPECT_EQ(WindowText(days), year + "-03-01");
        EXPECT_EQ(Ask(days, CB_GETCOUNT), button == IDOK ? 3 : 2);
        const WPARAM row = 1;
        Ask(days, CB_SETCURSEL, row);
        const std::string day = button == IDOK ? "0228" : "0227";
        std::string dayHex;
        for (const char digit : day) dayHex += std::string("3") + digit;
        Answer(dialog, button);
        ExpectSent({"COMMAND 5596 0:17 132:" + yearHex + dayHex + older});
        EXPECT_TRUE(WaitUntil([&] {
            return !std::filesystem::exists(log(day + "_dns")) &&
                   std::filesystem::exists(log("0227_dns")) == (button == IDOK);
        }));
    }
    EXPECT_TRUE(std::filesystem::exists(log("0301_mac")));
    // Without logs there is nothing to delete, whatever is pressed.
    forgetLogs();
    Command(kDeleteLogs);
    const HWND dialog = NextWindow("Delete logs");
    EXPECT_TRUE(WaitUntil([&] { return SaysAnywhere(dialog, "There are no logs."); }));
    EXPECT_FALSE(::IsWindowEnabled(::GetDlgItem(dialog, IDOK)) ||
                 ::IsWindowEnabled(::GetDlgItem(dialog, kDayAndOlder)));
    Ask(dialog, WM_COMMAND, IDOK);
    EXPECT_TRUE(::IsWindowVisible(dialog));
    Leave();  // with the dialog open
}

}  // namespace
}  // namespace brennvar::test
