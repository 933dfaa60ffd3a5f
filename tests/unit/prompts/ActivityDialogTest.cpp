#include <gtest/gtest.h>

#include <functional>

#include "prompts/MessageDialogAllowDeny_win.h"
#include "prompts/QuestionMessage_win.h"
#include "support/ModalOwner_win.h"
#include "support/ObjectCounts_win.h"
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

TEST_F(ActivityDialogTest, AMessageIsNotAnsweredByAccidentEither) {
    for (const int button : {IDOK, IDCANCEL}) {
        QuestionMessage message(fonts, {.caption = "x", .message = "y", .ok = "OK", .cancel = "Cancel"}, Count());
        message.Open(owner);
        EXPECT_NE(::GetWindowLongPtrA(message.Window(), GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
        EXPECT_NE(::GetActiveWindow(), message.Window());
        for (const WPARAM id : {WPARAM{IDOK}, WPARAM{IDCANCEL}}) {
            EXPECT_FALSE(::IsWindowEnabled(message.Item(static_cast<int>(id))));
            ::SendMessageA(message.Window(), WM_COMMAND, id, 0);
        }
        ::SendMessageA(message.Window(), WM_CLOSE, 0, 0);
        EXPECT_EQ(message.Answer(), std::nullopt);
        PassDelay(message.Window());
        Click(message.Window(), button);
        EXPECT_EQ(message.Answer(), button == IDOK);
    }
}

TEST_F(ActivityDialogTest, QuestionsStandClearOfEachOtherAndGiveTheOwnerBackWithTheLast) {
    MessageDialogAllowDeny first(fonts, question);
    first.Open(owner, Count());
    QuestionMessage second(fonts, {.caption = "x", .message = "y", .ok = "OK", .cancel = "Cancel"}, Count());
    second.Open(owner);
    MessageDialogAllowDeny third(fonts, question);
    third.Open(owner, Count());
    const HWND windows[] = {first.Window(), second.Window(), third.Window()};
    const auto overlap = [](HWND a, HWND b) {
        RECT x{}, y{}, both{};
        ::GetWindowRect(a, &x);
        ::GetWindowRect(b, &y);
        return ::IntersectRect(&both, &x, &y) != FALSE;
    };
    EXPECT_FALSE(overlap(windows[0], windows[1]));
    EXPECT_FALSE(overlap(windows[0], windows[2]));
    // Back into the work area, and not over another one on the way.
    ::SetWindowPos(windows[1], nullptr, 20000, 20000, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE);
    ::SendMessageA(windows[1], WM_TIMER, QuestionStand::kPlaceTimer, 0);
    EXPECT_FALSE(overlap(windows[0], windows[1]));
    // A little over the edge, it comes back that little.
    RECT area{}, place{};
    ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
    ::SetWindowPos(windows[1], nullptr, area.left - 10, area.top + 5, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE);
    ASSERT_FALSE(overlap(windows[1], windows[0]) || overlap(windows[1], windows[2]));
    ::SendMessageA(windows[1], WM_TIMER, QuestionStand::kPlaceTimer, 0);
    ::GetWindowRect(windows[1], &place);
    EXPECT_EQ(place.left, area.left);
    EXPECT_EQ(place.top, area.top + 5);
    for (const HWND window : windows) PassDelay(window);
    Click(windows[0], 334);
    EXPECT_EQ(first.Given(), (PromptAnswer{.allow = true}));
    Click(windows[2], 337);
    EXPECT_FALSE(::IsWindowEnabled(owner));
    Click(windows[1], IDOK);
    EXPECT_TRUE(::IsWindowEnabled(owner));
}

TEST_F(ActivityDialogTest, LeavesNothingBehind) {
    test::ExpectNothingLeftBy([this] {
        MessageDialogAllowDeny dialog(fonts, question);
        dialog.Open(owner, Count());
        ::UpdateWindow(dialog.Window());
    });
    EXPECT_TRUE(::IsWindowEnabled(owner));
}

}  // namespace
}  // namespace brennvar
