#include "dialogs/MessageDialog_win.h"

#include <gtest/gtest.h>

#include <functional>

#include "support/ModalOwner_win.h"
#include "ui/WorkArea_win.h"

namespace brennvar {
namespace {

class MessageDialogTest : public testing::Test {
protected:
    // Asks, with the steps that have been posted to the owner.
    bool Ask(const std::string& cancel = "&Cancel") {
        m_dialog.emplace(m_fonts,
                         MessageTexts{.caption = "Caption", .message = m_message, .ok = "&OK", .cancel = cancel});
        return m_dialog->Ask(m_owner.Window());
    }
    void ExpectFocus(int id) {
        m_owner.Post([this, id] { EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), id); });
    }

    CFonts m_fonts;
    std::string m_message = "A message.";
    test::ModalOwner m_owner;
    std::optional<MessageDialog> m_dialog;
};

TEST_F(MessageDialogTest, IsAnsweredWithTheKeyboard) {
    ExpectFocus(IDOK);
    m_owner.PostKey(VK_RETURN);
    EXPECT_TRUE(Ask());
    // Tab goes round the two buttons only, and Enter presses the one that it has reached.
    m_owner.PostKey(VK_TAB);
    m_owner.PostKey(VK_TAB);
    ExpectFocus(IDOK);
    m_owner.PostKey(VK_TAB);
    m_owner.PostKey(VK_RETURN);
    EXPECT_FALSE(Ask());
    // Alt+Space opens the system menu: Move, and Close below it.
    m_owner.Post([this] {
        ::PostMessageA(m_dialog->Window(), WM_SYSCOMMAND, SC_KEYMENU, ' ');
        for (int i = 0; i < 2; ++i) ::PostMessageA(m_dialog->Window(), WM_KEYDOWN, VK_DOWN, 0);
        ::PostMessageA(m_dialog->Window(), WM_KEYDOWN, VK_RETURN, 0);
    });
    EXPECT_FALSE(Ask());
    m_owner.PostMnemonic('o');
    EXPECT_TRUE(Ask());
    m_owner.PostKey(VK_RETURN);
    EXPECT_FALSE(
        MessageDialog(
            m_fonts,
            {.caption = "Caption", .message = m_message, .ok = "OK", .cancel = "Cancel", .isCancelDefault = true})
            .Ask(m_owner.Window()));
    // With OK alone Esc is no OK.
    m_owner.PostKey(VK_ESCAPE);
    EXPECT_FALSE(Ask(""));
}

TEST_F(MessageDialogTest, HasAThirdAnswerBetweenTheOthers) {
    m_message = "A question.";
    const auto choose = [this](int tabs, WPARAM key) {
        for (int i = 0; i < tabs; ++i) m_owner.PostKey(VK_TAB);
        m_owner.PostKey(key);
        return MessageDialog(m_fonts, {.caption = "Caption",
                                       .message = m_message,
                                       .ok = "Apply",
                                       .cancel = "Stay",
                                       .other = "Discard"})
            .Choose(m_owner.Window());
    };
    EXPECT_EQ(choose(0, VK_RETURN), MessageAnswer::Ok);
    EXPECT_EQ(choose(1, VK_RETURN), MessageAnswer::Other);
    EXPECT_EQ(choose(2, VK_RETURN), MessageAnswer::Cancel);
    EXPECT_EQ(choose(1, VK_ESCAPE), MessageAnswer::Cancel);
}

TEST_F(MessageDialogTest, GivesTheActivationBackToItsOwner) {
    // Another window that Windows could choose stands on top.
    const test::ModalOwner other;
    for (const WPARAM key : {VK_RETURN, VK_ESCAPE}) {
        ::SetForegroundWindow(m_owner.Window());
        ASSERT_EQ(::GetActiveWindow(), m_owner.Window());
        HWND active[2] = {};
        m_owner.Post([&] { active[0] = ::GetActiveWindow(); });
        m_owner.PostKey(key);
        (void)Ask();
        active[1] = ::GetActiveWindow();
        EXPECT_NE(active[0], m_owner.Window()) << key;
        EXPECT_EQ(active[1], m_owner.Window()) << key;
        EXPECT_EQ(::GetForegroundWindow(), m_owner.Window()) << key;
    }
}

TEST_F(MessageDialogTest, CanBeAnsweredWhateverItsTextIs) {
    std::string words;
    for (int i = 0; i < 2500; ++i) words += "bad ";
    for (const std::string& text : {words, std::string(10'000, 'W')}) {
        m_message = text;
        m_owner.Post([this] {
            const RECT area = MainWorkArea();
            for (const HWND window : {m_dialog->Window(), m_dialog->Item(IDOK), m_dialog->Item(IDCANCEL)}) {
                RECT place{}, dialog{}, both{};
                ::GetWindowRect(window, &place);
                ::GetWindowRect(m_dialog->Window(), &dialog);
                ::IntersectRect(&both, &dialog, &area);
                ::UnionRect(&both, &both, &place);
                EXPECT_TRUE(::EqualRect(&both, &dialog)) << ::GetDlgCtrlID(window);
            }
        });
        m_owner.PostKey(VK_ESCAPE);
        EXPECT_FALSE(Ask());
    }
}

}  // namespace
}  // namespace brennvar
