#include "prompts/ConfirmationDialog_win.h"

#include <gtest/gtest.h>

#include <functional>

#include "ui/Controls.h"
#include "ui/ResourceIds.h"

namespace brennvar {
namespace {

constexpr UINT kMessageLook = WM_APP + 1;

PromptQuestion SomeQuestion() {
    PromptQuestion question;
    question.path = R"(C:\no such folder\a&b.exe)";
    question.displayName = "A & B";
    question.body = "A & B\nis trying to communicate to x.\n\nAllow?";
    question.caption = "Confirm network connection";
    question.allowButton = "Yes";
    question.denyButton = "No";
    question.rememberText = "Remember my answer\nand do not ask me next time\nfor this application.";
    return question;
}

// Asks, and looks at the dialog from inside its loop. A posted message comes before every timer, so the buttons'
// delay cannot have passed by then, however slow the machine is.
class ConfirmationDialogTest : public testing::Test {
protected:
    CFonts fonts;
    PromptQuestion question = SomeQuestion();
    HWND dialogWindow = nullptr;
    HWND owner = nullptr;
    std::function<void()> look;

    void SetUp() override {
        WNDCLASSA windowClass{};
        windowClass.lpfnWndProc = &ConfirmationDialogTest::Procedure;
        windowClass.hInstance = ::GetModuleHandleA(nullptr);
        windowClass.lpszClassName = "ConfirmationDialogTest";
        ::RegisterClassA(&windowClass);
        owner = ::CreateWindowExA(0, "ConfirmationDialogTest", "", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                                  nullptr, windowClass.hInstance, nullptr);
        ::SetWindowLongPtrA(owner, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    }
    ~ConfirmationDialogTest() override { ::DestroyWindow(owner); }

    PromptAnswer Ask(std::function<void()> whenOpen) {
        look = std::move(whenOpen);
        ::PostMessageA(owner, kMessageLook, 0, 0);
        return ConfirmationDialog(fonts, question).Ask(owner);
    }
    [[nodiscard]] HWND Item(int id) const { return ::GetDlgItem(dialogWindow, id); }
    void Send(UINT message, WPARAM wParam) const { ::SendMessageA(dialogWindow, message, wParam, 0); }
    void PassDelay() const { Send(WM_TIMER, ConfirmationDialog::kButtonTimer); }
    void Click(int id) const { ::SendMessageA(Item(id), BM_CLICK, 0, 0); }

private:
    static BOOL CALLBACK TakeDialog(HWND window, LPARAM test) {
        if (TextOfWindow(window) != "Confirm network connection") return TRUE;
        reinterpret_cast<ConfirmationDialogTest*>(test)->dialogWindow = window;
        return FALSE;
    }
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message != kMessageLook) return ::DefWindowProcA(window, message, wParam, lParam);
        const LONG_PTR test = ::GetWindowLongPtrA(window, GWLP_USERDATA);
        ::EnumThreadWindows(::GetCurrentThreadId(), &TakeDialog, test);
        reinterpret_cast<ConfirmationDialogTest*>(test)->look();
        return 0;
    }
};

TEST_F(ConfirmationDialogTest, YesAllowsAndNoDeniesWithTheCheckBox) {
    struct Row {
        int button;
        bool remember;
        PromptAnswer expected;
    };
    const Row rows[] = {
        {334, false, {.allow = true, .remember = false}},
        {334, true, {.allow = true, .remember = true}},
        {337, false, {.allow = false, .remember = false}},
        {337, true, {.allow = false, .remember = true}},
    };
    for (const Row& row : rows) {
        const PromptAnswer answer = Ask([&] {
            PassDelay();
            if (row.remember) Click(573);
            Click(row.button);
        });
        EXPECT_EQ(answer, row.expected) << row.button << row.remember;
    }
}

TEST_F(ConfirmationDialogTest, NothingAnswersBeforeTheButtonsWork) {
    const PromptAnswer answer = Ask([this] {
        EXPECT_FALSE(::IsWindowEnabled(Item(334)));
        EXPECT_FALSE(::IsWindowEnabled(Item(337)));
        EXPECT_FALSE(::IsWindowEnabled(owner));
        Send(WM_COMMAND, 337);
        Send(WM_COMMAND, IDCANCEL);
        Send(WM_COMMAND, IDOK);
        Send(WM_CLOSE, 0);
        Send(WM_TIMER, 99);
        EXPECT_FALSE(::IsWindowEnabled(Item(334)));
        PassDelay();
        EXPECT_TRUE(::IsWindowEnabled(Item(334)));
        EXPECT_TRUE(::IsWindowEnabled(Item(337)));
        // Enter, without a default button, is no answer either.
        Send(WM_COMMAND, IDOK);
        Click(334);
    });
    EXPECT_TRUE(answer.allow);
    EXPECT_TRUE(::IsWindowEnabled(owner));
}

TEST_F(ConfirmationDialogTest, ClosingDeniesOnceWhateverIsTicked) {
    const struct {
        UINT message;
        WPARAM wParam;
    } rows[] = {{WM_CLOSE, 0}, {WM_COMMAND, IDCANCEL}};
    for (const auto& row : rows) {
        const PromptAnswer answer = Ask([&] {
            PassDelay();
            Click(573);
            Send(row.message, row.wParam);
        });
        EXPECT_EQ(answer, (PromptAnswer{.allow = false, .remember = false})) << row.message;
    }
    // A window that is torn down from outside answers the same.
    EXPECT_EQ(Ask([this] { ::DestroyWindow(dialogWindow); }), (PromptAnswer{.allow = false, .remember = false}));
}

TEST_F(ConfirmationDialogTest, CarriesTheTextsAndTakesNoFocus) {
    ::SetForegroundWindow(owner);
    ::SetFocus(owner);
    (void)Ask([this] {
        EXPECT_EQ(TextOfWindow(dialogWindow), question.caption);
        EXPECT_EQ(TextOfWindow(Item(340)), question.body);
        EXPECT_EQ(TextOfWindow(Item(573)), question.rememberText);
        EXPECT_EQ(TextOfWindow(Item(334)), "Yes");
        EXPECT_EQ(TextOfWindow(Item(337)), "No");
        EXPECT_TRUE(::IsWindowVisible(dialogWindow));
        EXPECT_EQ(::GetActiveWindow(), owner);
        EXPECT_NE(::GetWindowLongPtrA(dialogWindow, GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
        RECT yes{};
        RECT no{};
        ::GetWindowRect(Item(334), &yes);
        ::GetWindowRect(Item(337), &no);
        EXPECT_EQ(yes.right - yes.left, no.right - no.left);
        EXPECT_EQ(yes.bottom - yes.top, no.bottom - no.top);
        // Neither button is the default one: Enter would answer.
        const WORD defaultId = LOWORD(::SendMessageA(dialogWindow, DM_GETDEFID, 0, 0));
        for (const int id : {334, 337}) {
            EXPECT_NE(defaultId, id);
            EXPECT_EQ(::GetWindowLongPtrA(Item(id), GWL_STYLE) & BS_TYPEMASK, BS_PUSHBUTTON) << id;
        }
        PassDelay();
        Click(337);
    });
}

}  // namespace
}  // namespace brennvar
