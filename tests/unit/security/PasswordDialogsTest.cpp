#include <gtest/gtest.h>

#include <deque>

#include "config/ResourceIds.h"
#include "security/EnterPasswordDialog_win.h"
#include "security/VerifyPasswordDialog_win.h"
#include "support/ModalOwner_win.h"
#include "ui/WorkArea_win.h"

namespace brennvar {
namespace {

class PasswordDialogsTest : public testing::Test {
protected:
    // The stored password is read when the test says so.
    PasswordDialog::Parts Parts() {
        return {
            .fonts = fonts, .language = language, .readStored = [this](std::function<void(const Password&)> done) {
                reads.push_back(std::move(done));
            }};
    }
    void AnswerRead() {
        const auto done = reads.front();
        reads.pop_front();
        done(Password());
    }
    CFonts fonts;
    Language language{nullptr};
    test::ModalOwner owner;
    std::deque<std::function<void(const Password&)>> reads;
};

TEST_F(PasswordDialogsTest, ReadsThePasswordOnceForEachOkAndNotAfterCancel) {
    int sent = 0;
    EnterPasswordDialog dialog(Parts(), [&](const Password&) { ++sent; });
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
    EXPECT_EQ(sent, 0);
    {
        VerifyPasswordDialog gone(Parts());
        owner.Post(press);
        owner.PostKey(VK_ESCAPE);
        EXPECT_FALSE(gone.Ask(owner.Window()));
    }
    AnswerRead();  // and after it
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
        EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), IDC_PASSWORD);
        EXPECT_EQ(::SendDlgItemMessageA(dialog, IDC_PASSWORD, EM_GETLIMITTEXT, 0, 0), 119);
        EXPECT_NE(::SendDlgItemMessageA(dialog, IDC_PASSWORD, EM_GETPASSWORDCHAR, 0, 0), 0);
    });
    owner.PostKey(VK_ESCAPE);
    EXPECT_FALSE(VerifyPasswordDialog(Parts()).Ask(owner.Window()));
}

}  // namespace
}  // namespace brennvar
