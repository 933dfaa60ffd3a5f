#include <gtest/gtest.h>

#include <functional>

#include "prompts/MessageDialogAllowDeny_win.h"
#include "prompts/QuestionMessage_win.h"
#include "support/ModalOwner_win.h"
#include "support/QuestionTime_win.h"
#include "ui/ChildControls_win.h"
#include "ui/OwnMessages_win.h"
#include "ui/ToolkitIds.h"

namespace brennvar {
namespace {

class ActivityDialogTest : public testing::Test {
protected:
    CFonts fonts;
    ActivityQuestion question;
    test::ModalOwner modalOwner;
    const HWND owner = modalOwner.Window();
    const test::QuestionTime time;
    int answers = 0;

    ActivityDialogTest() {
        question.body = "Process:\n\na & b\n\nwrites to\n\nc\n\nAllow?";
        question.caption = "Confirm process activity";
    }
    static void PassDelay(HWND window) {
        test::PassQuestionTime(QuestionStand::kButtonDelay);
        ::SendMessageA(window, WM_TIMER, QuestionStand::kButtonTimer, 0);
    }
    static void Click(HWND window, int id) { ::SendMessageA(::GetDlgItem(window, id), BM_CLICK, 0, 0); }
    std::function<void()> Count() {
        return [this] { ++answers; };
    }
};

TEST_F(ActivityDialogTest, IsAnsweredOnceItsButtonsWork) {
    for (const int button : {334, 337}) {
        for (const bool ticks : {false, true}) {
            MessageDialogAllowDeny dialog(fonts, question);
            dialog.Open(owner, Count());
            EXPECT_EQ(TextOfWindow(dialog.Item(340)), question.body);
            EXPECT_FALSE(::IsWindowEnabled(owner));
            for (const WPARAM id : {WPARAM{334}, WPARAM{IDCANCEL}, WPARAM{IDOK}}) {
                ::SendMessageA(dialog.Window(), WM_COMMAND, id, 0);
            }
            EXPECT_EQ(dialog.Given(), std::nullopt);
            PassDelay(dialog.Window());
            if (ticks) Click(dialog.Window(), 573);
            Click(dialog.Window(), button);
            EXPECT_EQ(dialog.Given(), (PromptAnswer{.allow = button == 334, .remember = ticks}));
            EXPECT_TRUE(::IsWindowEnabled(owner));
            EXPECT_FALSE(::IsWindowVisible(dialog.Window()));
        }
    }
    EXPECT_EQ(answers, 4);
}

TEST_F(ActivityDialogTest, ClosingDeniesWhateverIsTicked) {
    const std::function<void(HWND)> ways[] = {[](HWND window) { ::SendMessageA(window, WM_CLOSE, 0, 0); },
                                              [](HWND window) { EndWindow(window); }};
    for (const auto& close : ways) {
        MessageDialogAllowDeny dialog(fonts, question);
        dialog.Open(owner, Count());
        PassDelay(dialog.Window());
        Click(dialog.Window(), 573);
        close(dialog.Window());
        EXPECT_EQ(dialog.Given(), PromptAnswer());
        QuestionMessage message(fonts, {.caption = "x", .message = "y", .ok = "OK", .cancel = "Cancel"}, Count());
        message.Open(owner);
        PassDelay(message.Window());
        close(message.Window());
        EXPECT_EQ(message.Answer(), false);
    }
    EXPECT_EQ(answers, 4);
    EXPECT_TRUE(::IsWindowEnabled(owner));
}

}  // namespace
}  // namespace brennvar
