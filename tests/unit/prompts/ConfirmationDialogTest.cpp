#include "prompts/ConfirmationDialog_win.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

#include "base/ComOfThread_win.h"
#include "support/AccessibleReader_win.h"
#include "support/AskedTools.h"
#include "support/ModalOwner_win.h"
#include "support/ObjectCounts_win.h"
#include "support/QuestionTime_win.h"
#include "ui/ChildControls_win.h"
#include "ui/OwnMessages_win.h"

namespace brennvar {
namespace {

constexpr int kLink = 1421;

// Asks, and looks at the dialog from inside its loop. A posted message comes before every timer, so the buttons'
// delay cannot have passed by then, however slow the machine is.
class ConfirmationDialogTest : public testing::Test {
protected:
    CFonts fonts;
    test::AskedTools tools;
    PromptQuestion question;
    HWND dialogWindow = nullptr;
    test::ModalOwner modalOwner;
    const HWND owner = modalOwner.Window();
    const test::QuestionTime time;

    ConfirmationDialogTest() {
        question.body = "A & B\nis trying to communicate to x.\n\nAllow?";
        question.caption = "Confirm network connection";
        question.allowButton = "Yes";
        question.denyButton = "No";
        question.address = 0x22D8B85D;
        question.addressLink = "&Address...";
    }

    PromptAnswer Ask(const std::function<void()>& look) {
        modalOwner.Post([&] {
            dialogWindow = ::FindWindowA(nullptr, question.caption.c_str());
            look();
        });
        return ConfirmationDialog(fonts, tools, question).Ask(owner);
    }
    [[nodiscard]] HWND Item(int id) const { return ::GetDlgItem(dialogWindow, id); }
    void Send(UINT message, WPARAM wParam) const { ::SendMessageA(dialogWindow, message, wParam, 0); }
    void PassDelay() const {
        test::PassQuestionTime(QuestionStand::kButtonDelay);
        Send(WM_TIMER, ConfirmationDialog::kButtonTimer);
    }
    void Click(int id) const { ::SendMessageA(Item(id), BM_CLICK, 0, 0); }
};

TEST_F(ConfirmationDialogTest, YesAllowsAndNoDeniesWithTheCheckBox) {
    for (const int button : {334, 337}) {
        for (const bool remember : {false, true}) {
            for (const char* const why : {"", "It is unknown."}) {
                question.whyNotRemembered = why;
                const bool isKnown = *why == '\0';
                const PromptAnswer answer = Ask([&] {
                    PassDelay();
                    EXPECT_EQ(::IsWindowEnabled(Item(573)) != FALSE, isKnown);
                    EXPECT_EQ(::IsWindowVisible(Item(907)) == FALSE, isKnown);
                    if (remember) Click(573);
                    Click(button);
                });
                EXPECT_EQ(answer, (PromptAnswer{.allow = button == 334, .remember = remember && isKnown}));
            }
        }
    }
}

TEST_F(ConfirmationDialogTest, FirstLettersAnswerOnceTheButtonsWork) {
    for (const auto& [letter, allow] : {std::pair{'y', true}, {'Y', true}, {'n', false}}) {
        const PromptAnswer answer = Ask([this, letter = letter] {
            const auto type = [this, letter] {
                ::PostMessageA(Item(573), WM_CHAR, static_cast<WPARAM>(letter), 0);
            };
            type();  // too early
            modalOwner.Post([this, type] {
                ASSERT_TRUE(::IsWindow(dialogWindow));
                PassDelay();
                Click(573);
                type();
            });
        });
        EXPECT_EQ(answer, (PromptAnswer{.allow = allow, .remember = true}));
    }
}

TEST_F(ConfirmationDialogTest, NothingAnswersBeforeTheButtonsWork) {
    const ComOfThread com;
    const PromptAnswer answer = Ask([this] {
        EXPECT_FALSE(::IsWindowEnabled(owner));
        for (const int id : {337, IDCANCEL, IDOK, kLink}) Send(WM_COMMAND, static_cast<WPARAM>(id));
        Send(WM_CLOSE, 0);
        Send(WM_TIMER, 99);
        EXPECT_EQ(test::AccessibleReader(Item(334)).Do(), E_FAIL) << "of a screen reader";
        // The timer's message comes from anybody, and what the user is asked nobody changes.
        test::PassQuestionTime(QuestionStand::kButtonDelay - 1);
        Send(WM_TIMER, ConfirmationDialog::kButtonTimer);
        for (const int id : {334, 337, IDCANCEL, kLink}) EXPECT_FALSE(::IsWindowEnabled(Item(id))) << id;
        for (const HWND window : {dialogWindow, Item(340), Item(334), Item(337), Item(573), Item(IDCANCEL)}) {
            const std::string text = TextOfWindow(window);
            ::SetWindowTextA(window, "Something else");
            EXPECT_EQ(TextOfWindow(window), text);
        }
        test::PassQuestionTime(1);
        Send(WM_TIMER, ConfirmationDialog::kButtonTimer);
        for (const int id : {334, 337, IDCANCEL, kLink}) EXPECT_TRUE(::IsWindowEnabled(Item(id))) << id;
        Send(WM_COMMAND, IDOK);  // Enter, without a default button, is no answer either
        Click(334);
    });
    EXPECT_TRUE(answer.allow);
    EXPECT_TRUE(::IsWindowEnabled(owner));
}

TEST_F(ConfirmationDialogTest, OpensToolsForTheAddressAndStandsOn) {
    const PromptAnswer answer = Ask([this] {
        PassDelay();
        const auto press = [this](WPARAM key) {
            // The menu takes the key from the queue.
            ::PostMessageA(dialogWindow, WM_KEYDOWN, key, 0);
            Click(kLink);
        };
        press('L');
        press(VK_ESCAPE);
        press('W');
        EXPECT_TRUE(::IsWindowVisible(dialogWindow));
        Click(334);
    });
    EXPECT_TRUE(answer.allow);
    const std::string address = "93.184.216.34";
    EXPECT_EQ(tools.asked, (decltype(tools.asked){{AddressTool::Locate, address}, {AddressTool::WhoIs, address}}));
}

TEST_F(ConfirmationDialogTest, ClosingDeniesOnceWhateverIsTicked) {
    const std::function<void()> rows[] = {[this] { Send(WM_CLOSE, 0); }, [this] { Send(WM_COMMAND, IDCANCEL); },
                                          [this] { EndWindow(dialogWindow); }};
    for (const auto& close : rows) {
        const PromptAnswer answer = Ask([&] {
            PassDelay();
            Click(573);
            close();
        });
        EXPECT_EQ(answer, (PromptAnswer{.allow = false, .remember = false}));
    }
}

TEST_F(ConfirmationDialogTest, ShowsItsTextOnTopAndTakesNoFocus) {
    ::SetForegroundWindow(owner);
    ::SetFocus(owner);
    (void)Ask([this] {
        EXPECT_EQ(TextOfWindow(Item(340)), question.body);
        EXPECT_TRUE(::IsWindowVisible(dialogWindow));
        EXPECT_EQ(::GetActiveWindow(), owner);
        EXPECT_NE(::GetWindowLongPtrA(dialogWindow, GWL_EXSTYLE) & WS_EX_TOPMOST, 0);
        // Neither button is the default one: Enter would answer.
        for (const int id : {334, 337}) {
            EXPECT_NE(LOWORD(::SendMessageA(dialogWindow, DM_GETDEFID, 0, 0)), id);
            EXPECT_EQ(::GetWindowLongPtrA(Item(id), GWL_STYLE) & BS_TYPEMASK, BS_PUSHBUTTON) << id;
        }
        EndWindow(dialogWindow);
    });
}

TEST_F(ConfirmationDialogTest, ShowsTheEndOfALongHostName) {
    constexpr int kHost = 903;
    question.displayName = "Mail";
    question.remoteHost = "www.bank.example." + std::string(200, 'a') + ".evil.example";
    (void)Ask([&] {
        const std::string host = TextOfWindow(Item(kHost));
        EXPECT_TRUE(host.starts_with("...a") && host.ends_with("aa.evil.example")) << host;
        EXPECT_TRUE(question.remoteHost.ends_with(host.substr(3)));
        EndWindow(dialogWindow);
    });
}

TEST_F(ConfirmationDialogTest, OpensTheFolderOnceTheButtonsWork) {
    constexpr int kFolder = 1710;
    static std::vector<std::string> s_opened;
    s_opened.clear();
    const auto openFolder =
        std::exchange(QuestionDialog::s_openFolder, [](const std::string& file) { s_opened.push_back(file); });
    question.path = R"(C:\R&D\mail.exe)";
    question.program.file = R"(C:\R&D\  mail.exe)";  // as it is, and not as it is shown
    (void)Ask([&] {
        EXPECT_EQ(TextOfWindow(Item(kFolder)), R"(C:\R&&D\mail.exe)") << "D is no mnemonic";
        Click(kFolder);
        EXPECT_TRUE(s_opened.empty());
        PassDelay();
        Click(kFolder);
        EXPECT_EQ(s_opened, std::vector{question.program.file});
        EndWindow(dialogWindow);
    });
    QuestionDialog::s_openFolder = openFolder;
}

TEST_F(ConfirmationDialogTest, LeavesNothingBehind) {
    question.adviceKind = PromptAdvice::Deny;
    question.advice = "Deny";
    test::ExpectNothingLeftBy([this] {
        (void)Ask([this] {
            ::UpdateWindow(dialogWindow);
            PassDelay();
            Click(334);
        });
    });
}

}  // namespace
}  // namespace brennvar
