#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <vector>

#include "security/EnterPasswordDialog_win.h"
#include "security/SecurityPasswordGate_win.h"
#include "security/VerifyPasswordDialog_win.h"
#include "support/ModalOwner_win.h"
#include "support/ObjectCounts_win.h"
#include "ui/Controls.h"
#include "ui/ResourceIds.h"
#include "ui/WorkArea.h"

namespace brennvar {
namespace {

class PasswordDialogsTest : public testing::Test {
protected:
    // The stored password is read when the test says so, or at once.
    PasswordDialog::Parts Parts() {
        return {
            .fonts = fonts, .language = language, .readStored = [this](std::function<void(const Password&)> done) {
                reads.push_back(std::move(done));
                if (readsAtOnce) AnswerRead();
            }};
    }
    void AnswerRead() {
        const auto done = reads.front();
        reads.pop_front();
        done(Password(stored));
    }
    // What follows is done while a dialog is open, step by step.
    void Type(int edit, const char* text) {
        owner.Post([=] { ::SetDlgItemTextA(::GetActiveWindow(), edit, text); });
    }
    void ExpectMessage(const std::string& expected) {
        owner.Post([=] { EXPECT_EQ(TextOfWindow(::GetDlgItem(::GetActiveWindow(), IDC_MESSAGE)), expected); });
        owner.PostKey(VK_RETURN);
    }
    void ExpectFocus(int id) {
        owner.Post([=] { EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), id); });
    }

    CFonts fonts;
    Language language{nullptr};
    test::ModalOwner owner;
    std::string stored = "Secret1";
    bool readsAtOnce = true;
    std::deque<std::function<void(const Password&)>> reads;
};

TEST_F(PasswordDialogsTest, VerifyStaysOpenUntilBothAreRight) {
    owner.Post([] {
        const HWND dialog = ::GetActiveWindow();
        EXPECT_EQ(TextOfWindow(dialog), "Security password");
        for (const int edit : {IDC_PASSWORD, IDC_PASSWORD_CONFIRM}) {
            EXPECT_EQ(::SendDlgItemMessageA(dialog, edit, EM_GETLIMITTEXT, 0, 0), 119);
            EXPECT_NE(::SendDlgItemMessageA(dialog, edit, EM_GETPASSWORDCHAR, 0, 0), 0);
        }
    });
    ExpectFocus(IDC_PASSWORD);
    Type(IDC_PASSWORD, "secret1");
    Type(IDC_PASSWORD_CONFIRM, "Secret1");
    owner.PostKey(VK_RETURN);
    ExpectMessage("Password is wrong!");
    ExpectFocus(IDC_PASSWORD);
    Type(IDC_PASSWORD, "Secret1");
    Type(IDC_PASSWORD_CONFIRM, "Secret2");
    owner.PostKey(VK_RETURN);
    ExpectMessage("Password and confirmation password do not match!");
    ExpectFocus(IDC_PASSWORD_CONFIRM);
    Type(IDC_PASSWORD_CONFIRM, "Secret1");
    owner.PostKey(VK_RETURN);
    EXPECT_TRUE(VerifyPasswordDialog(Parts()).Ask(owner.Window()));
    owner.PostKey(VK_ESCAPE);
    EXPECT_FALSE(VerifyPasswordDialog(Parts()).Ask(owner.Window()));
}

TEST_F(PasswordDialogsTest, ReadsThePasswordOnceForEachOkAndNotAfterCancel) {
    readsAtOnce = false;
    std::vector<std::string> sent;
    stored.clear();
    EnterPasswordDialog dialog(Parts(), [&](const Password& changed) { sent.emplace_back(changed.View()); });
    const auto press = [] { ::SendMessageA(::GetActiveWindow(), WM_COMMAND, IDOK, 0); };
    owner.Post(press);
    owner.Post(press);  // the first one waits for the file
    owner.Post([&] {
        EXPECT_EQ(reads.size(), 1U);
        EXPECT_FALSE(::IsWindowEnabled(dialog.Item(IDOK)));
        ::SendMessageA(dialog.Window(), WM_COMMAND, IDCANCEL, 0);
        AnswerRead();  // comes too late, before the dialog has gone
    });
    EXPECT_FALSE(dialog.Ask(owner.Window()));
    EXPECT_TRUE(sent.empty());
    {
        VerifyPasswordDialog gone(Parts());
        owner.Post(press);
        owner.PostKey(VK_ESCAPE);
        EXPECT_FALSE(gone.Ask(owner.Window()));
    }
    AnswerRead();  // and after it
}

TEST_F(PasswordDialogsTest, EnterChecksSendsAndThenTells) {
    std::vector<std::string> sent;
    const auto fill = [&](const char* old, const char* changed, const char* confirmation) {
        Type(IDC_PASSWORD_OLD, old);
        Type(IDC_PASSWORD, changed);
        Type(IDC_PASSWORD_CONFIRM, confirmation);
        owner.PostKey(VK_RETURN);
    };
    fill("secret1", "new", "new");
    ExpectMessage("Old password is wrong!");
    ExpectFocus(IDC_PASSWORD_OLD);
    fill("Secret1", "new", "New");
    ExpectMessage("New password and confirmation password do not match!");
    const std::string tooLong(125, 'x');
    fill("Secret1", tooLong.c_str(), tooLong.c_str());
    owner.Post(
        [&] { EXPECT_EQ(sent, std::vector<std::string>{std::string(119, 'x')}) << "sent before it is told"; });
    ExpectMessage("Security password has been changed.");
    EXPECT_TRUE(EnterPasswordDialog(Parts(), [&](const Password& changed) {
                    sent.emplace_back(changed.View());
                }).Ask(owner.Window()));
    EXPECT_EQ(sent.size(), 1U);
}

TEST_F(PasswordDialogsTest, OpensInFrontInTheMiddleOfTheScreenOverAHiddenOwner) {
    ::ShowWindow(owner.Window(), SW_HIDE);
    const test::ModalOwner other;
    ::SetForegroundWindow(other.Window());
    // The step after the one that has let the dialog come forward.
    owner.Post([] {});
    owner.Post([] {
        const HWND dialog = FindWindowA(nullptr, "Security password");
        RECT place{};
        ::GetWindowRect(dialog, &place);
        const RECT wanted = CenterIn(MainWorkArea(), {place.right - place.left, place.bottom - place.top});
        EXPECT_TRUE(::EqualRect(&place, &wanted));
        EXPECT_TRUE(::IsWindowVisible(dialog));
        EXPECT_EQ(::GetForegroundWindow(), dialog);
    });
    owner.PostKey(VK_ESCAPE);
    EXPECT_FALSE(VerifyPasswordDialog(Parts()).Ask(owner.Window()));
}

TEST_F(PasswordDialogsTest, LeaveNothingBehind) {
    test::ExpectNothingLeftBy([&] {
        owner.Post([] { ::UpdateWindow(::GetActiveWindow()); });
        owner.PostKey(VK_ESCAPE);
        (void)VerifyPasswordDialog(Parts()).Ask(owner.Window());
    });
}

}  // namespace
}  // namespace brennvar
