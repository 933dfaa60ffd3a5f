#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "config/ResourceIds.h"
#include "security/EnterPasswordDialog_win.h"
#include "security/SecurityPasswordGate_win.h"
#include "security/VerifyPasswordDialog_win.h"
#include "support/CommanderRig.h"
#include "support/FakeTaskQueue.h"
#include "support/ModalOwner_win.h"
#include "ui/ChildControls_win.h"
#include "ui/ToolkitIds.h"

namespace brennvar {
namespace {

class ShownPassword final : public PasswordSource {
public:
    std::optional<Password> password{std::in_place};
    [[nodiscard]] std::optional<Password> Read() const override { return password; }
};

// The stored password is read when the test says so.
class PasswordDialogsTest : public testing::Test {
protected:
    test::ModalOwner owner;
    test::FakeTaskQueue reads;
    ShownPassword stored;
    CFonts fonts;
    test::CommanderRig rig;
    const PasswordDialogContext context{.fonts = fonts, .language = rig.language, .reads = reads, .stored = stored};
    SecurityPasswordGate gate{fonts, rig.language, rig.commander, reads, stored};
    std::string outcome;

    void SetUp() override {
        rig.commander.GuardWith(gate);
        gate.SetOwner(owner.Window());
    }
    void Ask() {
        outcome.clear();
        rig.commander.AskFor(
            UserCommand::ResetFirewall, [this] { outcome += "allowed"; }, [this] { outcome += "refused"; });
    }
    static std::string TextOfMessage() { return TextOfWindow(::GetDlgItem(::GetActiveWindow(), IDC_MESSAGE)); }
};

TEST_F(PasswordDialogsTest, ReadsThePasswordOnceForEachOkAndNotAfterCancel) {
    EnterPasswordDialog dialog(context, rig.commander);
    const auto press = [] { ::SendMessageA(::GetActiveWindow(), WM_COMMAND, IDOK, 0); };
    owner.Post(press);
    owner.Post(press);  // the first one waits for the file
    owner.Post([&] {
        EXPECT_EQ(reads.Waiting(), 1U);
        EXPECT_FALSE(::IsWindowEnabled(dialog.Item(IDOK)));
        ::SendMessageA(dialog.Window(), WM_COMMAND, IDCANCEL, 0);
        reads.Run();  // comes too late, before the dialog has gone
    });
    EXPECT_FALSE(dialog.Ask(owner.Window()));
    {
        VerifyPasswordDialog gone(context);
        owner.Post(press);
        owner.PostKey(VK_ESCAPE);
        EXPECT_FALSE(gone.Ask(owner.Window()));
    }
    reads.Run();  // and after it
    EXPECT_TRUE(rig.TakeRecords().empty());
}

TEST_F(PasswordDialogsTest, GateAsksLaterThanTheCallAndRefusesWhatItCannotTell) {
    Ask();
    EXPECT_EQ(outcome, "") << "later than the call";
    reads.Run();
    EXPECT_EQ(outcome, "allowed");
    EXPECT_TRUE(rig.TakeRecords().empty());
    stored.password.reset();
    Ask();
    Ask();
    owner.Post([this] {
        EXPECT_EQ(TextOfMessage(), "The settings cannot be read at the moment. Please try again.");
        reads.Run();  // the second one: no second message
        EXPECT_EQ(outcome, "refusedrefused");
        ::SendMessageA(::GetActiveWindow(), WM_COMMAND, IDOK, 0);
    });
    reads.Run();
    const auto records = rig.TakeRecords();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_STREQ(reinterpret_cast<const char*>(&records[0][132]), "Invalid");
}

TEST_F(PasswordDialogsTest, OpensAboveAQuestionThatStandsByItself) {
    // A question of the driver; any dialog of the program will do.
    struct Question final : CDialog {
        void Stand(HWND window) { (void)DoModal(window, IDD_MESSAGE_OK, Appearance::Unfocused); }
        using CDialog::End;
    } question;
    stored.password = Password("Secret1");
    owner.Post([&] {
        owner.Post([&] {
            const HWND password = ::FindWindowA(nullptr, "Security password");
            EXPECT_EQ(::GetWindow(password, GW_OWNER), question.Window());
            EXPECT_FALSE(::IsWindowEnabled(question.Window()));
            EXPECT_EQ(outcome, "");
            ::SendMessageA(password, WM_COMMAND, IDCANCEL, 0);
        });
        Ask();
        reads.Run();
        EXPECT_EQ(outcome, "refused") << "by the user";
        EXPECT_TRUE(::IsWindowEnabled(question.Window()));
        question.End(0);
    });
    question.Stand(owner.Window());
    EXPECT_EQ(rig.TakeRecords().size(), 1U) << "it is told who was refused";
}

TEST_F(PasswordDialogsTest, OpensInFrontOverAHiddenOwnerAndTakesNothingUnreadForNoPassword) {
    ::ShowWindow(owner.Window(), SW_HIDE);
    const test::ModalOwner other;
    ::SetForegroundWindow(other.Window());
    stored.password.reset();
    owner.Post([] {});  // the step that lets the dialog come forward
    owner.Post([this] {
        const HWND dialog = FindWindowA(nullptr, "Security password");
        EXPECT_TRUE(::IsWindowVisible(dialog));
        EXPECT_EQ(::GetForegroundWindow(), dialog);
        EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), IDC_PASSWORD);
        EXPECT_EQ(::SendDlgItemMessageA(dialog, IDC_PASSWORD, EM_GETLIMITTEXT, 0, 0), 119);
        EXPECT_NE(::SendDlgItemMessageA(dialog, IDC_PASSWORD, EM_GETPASSWORDCHAR, 0, 0), 0);
        owner.Post([] {
            EXPECT_EQ(TextOfMessage(), "The settings cannot be read at the moment. Please try again.");
            ::SendMessageA(::GetActiveWindow(), WM_COMMAND, IDOK, 0);
        });
        owner.PostKey(VK_ESCAPE);
        ::SendMessageA(dialog, WM_COMMAND, IDOK, 0);
        reads.Run();
    });
    EXPECT_FALSE(VerifyPasswordDialog(context).Ask(owner.Window()));
}

}  // namespace
}  // namespace brennvar
