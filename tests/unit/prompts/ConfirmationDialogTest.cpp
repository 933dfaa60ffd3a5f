#include "prompts/ConfirmationDialog_win.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

#include "base/ComOfThread_win.h"
#include "support/AccessibleReader_win.h"
#include "support/AskedTools.h"
#include "support/ControlWindow.h"
#include "support/DrawnTexts_win.h"
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

TEST_F(ConfirmationDialogTest, IsReadOutAndAnsweredByScreenReadersNoSoonerThanByHand) {
    const ComOfThread com;
    question.displayName = "A & B";
    question.path = R"(C:\Tools\a.exe)";
    question.wantsText = "is trying to communicate to";
    question.remoteHost = std::string(200, 'w') + ".example.com";
    question.serviceLabel = "Reason:";
    question.service = "HTTPS";
    question.remoteLabel = "Remote host:";
    question.remoteAddress = "93.184.216.34:443";
    question.adviceLabel = "Advice:";
    question.advice = "Deny";
    question.askText = "Allow?";
    question.onceText = "Once.";
    question.alwaysText = "Always.";
    static int s_alerts;
    s_alerts = 0;
    const HWINEVENTHOOK hook = ::SetWinEventHook(
        EVENT_SYSTEM_ALERT, EVENT_SYSTEM_ALERT, nullptr,
        [](HWINEVENTHOOK, DWORD, HWND window, LONG object, LONG child, DWORD, DWORD) {
            const bool isQuestion = ::FindWindowA(nullptr, "Confirm network connection") == window;
            if (isQuestion && object == OBJID_CLIENT && child == CHILDID_SELF) ++s_alerts;
        },
        ::GetCurrentProcessId(), 0, WINEVENT_OUTOFCONTEXT);
    ASSERT_NE(hook, nullptr);
    const PromptAnswer answer = Ask([&] {
        const test::AccessibleReader reader(dialogWindow), yes(Item(334)), tick(Item(573));
        EXPECT_EQ(reader.Role(), ROLE_SYSTEM_ALERT);
        EXPECT_EQ(reader.Name(), L"Confirm network connection");
        const std::wstring told = reader.Description();
        std::size_t at = 0;
        for (const wchar_t* const part :
             {L"A & B\n", L"C:\\Tools\\a.exe\n", L"communicate to\nwww", L"www.example.com\n", L"Reason: HTTPS\n",
              L"Remote host: 93.184.216.34:443\n", L"Advice: Deny\n", L"Allow?\n", L"Once."}) {
            at = told.find(part, at);
            ASSERT_NE(at, std::wstring::npos) << "part not in its place";
        }
        EXPECT_TRUE(yes.Is(STATE_SYSTEM_UNAVAILABLE));
        EXPECT_EQ(yes.Do(), E_FAIL) << "too early";
        EXPECT_EQ(tick.Do(), S_OK);
        modalOwner.Post([&] {
            ASSERT_TRUE(::IsWindow(dialogWindow));
            PassDelay();
            const test::AccessibleReader later(dialogWindow);
            EXPECT_TRUE(later.Description().ends_with(L"\nAlways."));
            EXPECT_EQ(test::AccessibleReader(Item(334)).Do(), S_OK);
        });
    });
    ::UnhookWinEvent(hook);
    EXPECT_EQ(answer, (PromptAnswer{.allow = true, .remember = true}));
    EXPECT_EQ(s_alerts, 1);
}

TEST_F(ConfirmationDialogTest, TellsWhatTheAnswersDoAndTakesTheirFirstLettersOnceTheyWork) {
    question.onceText = "Once.";
    question.alwaysText = "Always.";
    for (const auto& [letter, allow] : {std::pair{'y', true}, {'Y', true}, {'n', false}}) {
        const PromptAnswer answer = Ask([this, letter = letter] {
            const auto type = [this](char key) { ::PostMessageA(Item(573), WM_CHAR, static_cast<WPARAM>(key), 0); };
            EXPECT_TRUE(::IsWindowVisible(Item(909)));
            EXPECT_FALSE(::IsWindowVisible(Item(919)));
            type(letter);  // too early
            modalOwner.Post([this, letter, type] {
                ASSERT_TRUE(::IsWindow(dialogWindow));
                PassDelay();
                Click(573);
                EXPECT_FALSE(::IsWindowVisible(Item(909)));
                EXPECT_TRUE(::IsWindowVisible(Item(919)));
                type('q');
                modalOwner.Post([this, letter, type] {
                    EXPECT_TRUE(::IsWindow(dialogWindow)) << "no answer begins with it";
                    type(letter);
                });
            });
        });
        EXPECT_EQ(answer, (PromptAnswer{.allow = allow, .remember = true}));
    }
}

TEST_F(ConfirmationDialogTest, ComesBackIntoTheWorkAreaAndAboveWhatWasPutOverIt) {
    (void)Ask([this] {
        RECT area{}, place{}, both{};
        ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
        for (const POINT corner : {POINT{area.right - 50, area.bottom - 50}, POINT{-5000, -5000}}) {
            ::SetWindowPos(dialogWindow, nullptr, corner.x, corner.y, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE);
            Send(WM_TIMER, ConfirmationDialog::kPlaceTimer);
            ::GetWindowRect(dialogWindow, &place);
            ::UnionRect(&both, &place, &area);
            EXPECT_TRUE(::EqualRect(&both, &area)) << place.left << " " << place.bottom;
        }
        // Nobody is told of windows that are put in order: the question looks whether it may have happened.
        const HWND other = ::CreateWindowExA(WS_EX_TOPMOST, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50,
                                             nullptr, nullptr, ::GetModuleHandleA(nullptr), nullptr);
        const auto isAbove = [&] {
            for (HWND below = dialogWindow; below; below = ::GetWindow(below, GW_HWNDNEXT)) {
                if (below == other) return true;
            }
            return false;
        };
        EXPECT_FALSE(isAbove());
        for (const int change : {SW_HIDE, SW_SHOWNA, SW_SHOWMINNOACTIVE}) {
            for (int tick = 0; tick < 8; ++tick) Send(WM_TIMER, ConfirmationDialog::kPlaceTimer);
            ::SetWindowPos(other, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
            Send(WM_TIMER, ConfirmationDialog::kPlaceTimer);
            EXPECT_FALSE(isAbove()) << "nothing has happened that it could tell";
            ::ShowWindow(owner, change);
            Send(WM_TIMER, ConfirmationDialog::kPlaceTimer);
            EXPECT_TRUE(isAbove()) << change;
        }
        EndWindow(other);
        EndWindow(dialogWindow);
    });
}

TEST_F(ConfirmationDialogTest, NothingAnswersBeforeTheButtonsWork) {
    const PromptAnswer answer = Ask([this] {
        EXPECT_FALSE(::IsWindowEnabled(owner));
        for (const int id : {337, IDCANCEL, IDOK, kLink}) Send(WM_COMMAND, static_cast<WPARAM>(id));
        Send(WM_CLOSE, 0);
        Send(WM_TIMER, 99);
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
    question.addressLink.clear();
    (void)Ask([this] {
        EXPECT_FALSE(::IsWindowVisible(Item(kLink)));
        EndWindow(dialogWindow);
    });
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

// On the screen as soon as the dialog is: it opens as one picture, for which each window is asked to print itself.
TEST_F(ConfirmationDialogTest, ShowsTheFactsAndTheAdviceBesideTheQuestion) {
    question.detailsTitle = "Connection details:";
    question.askText = "Allow this network communication?";
    question.adviceKind = PromptAdvice::Deny;
    question.advice = "Deny";
    const std::string longText(80, 'w');
    for (const std::string& text : {question.askText, longText}) {
        question.askText = text;
        const bool isOneLine = text != longText;
        (void)Ask([&] {
            const test::Screenshot card(Item(340));
            const SIZE size = card.Size();
            EXPECT_GT(card.Count({8, 2, 16, 10}, RGB(255, 255, 255)), 50);
            // Beside the question, or above one that leaves it no room.
            const LONG line = size.cy - (isOneLine ? 20 : 44);
            const RECT left{0, line, size.cx / 2, line + 20};
            const RECT right{size.cx / 2, line, size.cx, line + 20};
            EXPECT_GT(card.Count(isOneLine ? right : left, RGB(165, 14, 44)), 50);
            EXPECT_EQ(card.Count(isOneLine ? left : right, RGB(165, 14, 44)), 0);
            EndWindow(dialogWindow);
        });
    }
}

TEST_F(ConfirmationDialogTest, ShowsTheEndOfALongHostNameAndTheWholeOfWhatIsCutInATip) {
    constexpr int kName = 902, kHost = 903;
    question.displayName = "Mail";
    question.path = "C:\\" + std::string(300, 'p') + "\\mail.exe";
    question.remoteHost = "www.bank.example." + std::string(200, 'a') + ".evil.example";
    question.detailsTitle = "Details";
    question.program.file = question.path;
    question.program.publisher = std::string(150, 'W');
    question.program.publisherNote = "Nobody has checked it.";
    (void)Ask([&] {
        const std::string host = TextOfWindow(Item(kHost));
        EXPECT_TRUE(host.starts_with("...a") && host.ends_with("aa.evil.example")) << host;
        EXPECT_TRUE(question.remoteHost.ends_with(host.substr(3)));
        struct Row {
            int id;
            POINT at;
            std::string whole;
        };
        const POINT edge{3, 10};
        const POINT publisher{200, Scale(12 + 24 + 12)};  // in the table's first row, below its title
        const Row rows[] = {{kHost, edge, question.remoteHost},
                            {340, publisher, question.program.publisher + "\nNobody has checked it."},
                            {340, {publisher.x, publisher.y + Scale(24)}, ""},
                            {kName, edge, ""}};
        for (const auto& [id, at, whole] : rows) {
            RECT place{};
            ::GetWindowRect(Item(id), &place);
            POINT mouse{place.left + at.x, place.top + at.y};
            EXPECT_EQ(::WindowFromPoint(mouse), dialogWindow) << "which is told of the mouse, and not the label";
            ::ScreenToClient(dialogWindow, &mouse);
            ::SendMessageA(dialogWindow, WM_MOUSEMOVE, 0, MAKELPARAM(mouse.x, mouse.y));
            Send(WM_TIMER, QuestionTips::kTimer);
            const HWND tip = ::FindWindowA("BrennvarTip", nullptr);
            EXPECT_EQ(tip && ::IsWindowVisible(tip) ? TextOfWindow(tip) : "", whole);
        }
        EndWindow(dialogWindow);
    });
}

TEST_F(ConfirmationDialogTest, ShowsThePathAndOpensItsFolderOnceTheButtonsWork) {
    constexpr int kPath = 901, kFolder = 1710;
    static std::vector<std::string> s_opened;
    s_opened.clear();
    const auto openFolder =
        std::exchange(QuestionDialog::s_openFolder, [](const std::string& file) { s_opened.push_back(file); });
    question.path = R"(C:\R&D\mail.exe)";
    question.program.file = R"(C:\R&D\  mail.exe)";  // as it is, and not as it is shown
    question.closeTip = "Blocks this time";
    const auto point = [this](int id) { ::PostMessageA(Item(id), WM_MOUSEMOVE, 0, MAKELPARAM(3, 3)); };
    const auto tip = [this] {
        Send(WM_TIMER, QuestionTips::kTimer);
        const HWND window = ::FindWindowA("BrennvarTip", nullptr);
        return window && ::IsWindowVisible(window) ? TextOfWindow(window) : "";
    };
    (void)Ask([&] {
        EXPECT_FALSE(::IsWindowVisible(Item(kPath)));
        EXPECT_TRUE(::IsWindowVisible(Item(kFolder)));
        EXPECT_EQ(TextOfWindow(Item(kPath)), question.path);
        EXPECT_EQ(TextOfWindow(Item(kFolder)), R"(C:\R&&D\mail.exe)") << "D is no mnemonic";
        Click(kFolder);
        EXPECT_TRUE(s_opened.empty());
        PassDelay();
        Click(kFolder);
        EXPECT_EQ(s_opened, std::vector{question.program.file});
        // Over controls the mouse is followed by the loop.
        point(kFolder);
        modalOwner.Post([&, point, tip] {
            EXPECT_EQ(tip(), question.path) << "though it is not cut";
            point(IDCANCEL);
            modalOwner.Post([&, tip] {
                EXPECT_EQ(tip(), question.closeTip);
                EndWindow(dialogWindow);
            });
        });
    });
    QuestionDialog::s_openFolder = openFolder;
}

TEST_F(ConfirmationDialogTest, TellsAllFactsAsTextAndMarksWhatIsSuspicious) {
    constexpr int kPlace = 1711, kPublisher = 1712;
    constexpr COLORREF kAlarm = RGB(165, 14, 44), kOrange = RGB(255, 128, 64);
    question.remoteAddress = "203.0.113.7:25";
    question.protocol = "TCP";
    question.localAddress = "192.168.0.5:49152";
    question.processId = "4711";
    question.program.file = question.path = R"(C:\Temp\mail.exe)";
    question.program.publisher = "none given";
    for (const bool isSuspicious : {true, false}) {
        question.program.isPublisherMissing = isSuspicious;
        question.program.placeWarning = isSuspicious ? "from a temporary folder" : "";
        (void)Ask([&] {
            const std::pair<int, std::string> rows[] = {{kPublisher, question.program.publisher},
                                                        {1713, question.remoteAddress},
                                                        {1714, question.protocol},
                                                        {1715, question.localAddress},
                                                        {1716, question.processId}};
            for (const auto& [id, text] : rows) EXPECT_EQ(test::DrawnText(Item(340), id), text);
            EXPECT_EQ(TextOfWindow(Item(kPlace)), question.program.placeWarning);
            const test::Screenshot dialog(dialogWindow), card(Item(340));
            const SIZE size = dialog.Size();
            EXPECT_EQ(dialog.Count({0, 0, size.cx, size.cy}, kOrange) > 40, isSuspicious) << "the triangle";
            EXPECT_EQ(card.Count({0, 0, card.Size().cx, 36}, kAlarm) > 0, isSuspicious);
            EndWindow(dialogWindow);
        });
    }
    // Nobody knows the program, so there is nobody to name a publisher.
    question.program = {};
    (void)Ask([&] {
        EXPECT_EQ(test::DrawnText(Item(340), kPublisher), std::nullopt);
        EXPECT_EQ(test::DrawnText(Item(340), 1716), question.processId);
        EndWindow(dialogWindow);
    });
}

TEST_F(ConfirmationDialogTest, MarksTheButtonsInTheirColoursOnceTheyWork) {
    (void)Ask([&] {
        const auto look = [this](bool works) {
            for (const auto& [id, colour] : {std::pair{334, RGB(46, 158, 91)}, std::pair{337, RGB(165, 14, 44)}}) {
                const test::Screenshot button(Item(id));
                const SIZE size = button.Size();
                const RECT left{0, 0, size.cx / 2, size.cy}, right{size.cx / 2, 0, size.cx, size.cy};
                EXPECT_EQ(button.Count(left, colour) > 3, works) << id;
                EXPECT_EQ(button.Count(left, RGB(255, 255, 255)) > 30, works) << id << ", the disc";
                EXPECT_EQ(button.Count(right, colour), 0) << id;
            }
        };
        look(false);
        PassDelay();
        look(true);
        EndWindow(dialogWindow);
    });
}

TEST_F(ConfirmationDialogTest, IsReachedWithTheKeyboardOnceItIsActive) {
    question.program.file = R"(C:\Mail\mail.exe)";
    question.allowButton = "&Yes";
    question.denyButton = "&No";
    const auto press = [this](WPARAM key) {
        MSG message{};
        message.hwnd = ::GetFocus();
        message.message = WM_KEYDOWN;
        message.wParam = key;
        ::IsDialogMessageA(dialogWindow, &message);
        return ::GetDlgCtrlID(::GetFocus());
    };
    const PromptAnswer answer = Ask([&] {
        ::SetActiveWindow(dialogWindow);
        EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), 573) << "not a button that would answer";
        press(VK_SPACE);
        PassDelay();
        EXPECT_EQ(press(VK_TAB), 334);
        EXPECT_EQ(press(VK_TAB), 337);
        EXPECT_EQ(press(VK_TAB), kLink);
        EXPECT_EQ(press(VK_TAB), 1710) << "the folder";
        EXPECT_EQ(press(VK_TAB), 573);
        ::PostMessageA(::GetFocus(), WM_SYSCHAR, 'n', 1L << 29);  // Alt+N
    });
    EXPECT_FALSE(answer.allow);
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
