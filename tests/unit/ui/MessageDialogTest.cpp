#include "ui/MessageDialog.h"

#include <gtest/gtest.h>

#include "ui/Controls.h"
#include "ui/ResourceIds.h"

namespace brennvar {
namespace {

BOOL CALLBACK PostCommand(HWND window, LPARAM command) {
    if (TextOfWindow(window) == "question") ::PostMessageA(window, WM_COMMAND, static_cast<WPARAM>(command), 0);
    return TRUE;
}
void CALLBACK AnswerSoon(HWND window, UINT, UINT_PTR command, DWORD) {
    ::EnumThreadWindows(::GetCurrentThreadId(), &PostCommand, static_cast<LPARAM>(command));
    ::KillTimer(window, command);
}

class MessageDialogTest : public testing::Test {
protected:
    CFonts fonts;
    HWND helper = ::CreateWindowExA(0, "STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    ~MessageDialogTest() override { ::DestroyWindow(helper); }

    bool AskAndPress(int button, const std::string& cancel) {
        ::SetTimer(helper, static_cast<UINT_PTR>(button), USER_TIMER_MINIMUM, &AnswerSoon);
        MessageDialog dialog(fonts, {.caption = "question", .message = "text", .ok = "OK", .cancel = cancel});
        return dialog.Ask(nullptr);
    }
};

TEST_F(MessageDialogTest, OnlyOkMeansYes) {
    EXPECT_TRUE(AskAndPress(IDOK, "Cancel"));
    EXPECT_FALSE(AskAndPress(IDCANCEL, "Cancel"));
    EXPECT_TRUE(AskAndPress(IDOK, ""));
    EXPECT_FALSE(AskAndPress(IDCANCEL, ""));
}

}  // namespace
}  // namespace brennvar
