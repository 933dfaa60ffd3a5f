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
    m_owner.PostMnemonic('o');
    EXPECT_TRUE(Ask());
    m_owner.PostKey(VK_RETURN);
    EXPECT_FALSE(
        MessageDialog(m_fonts,
                      {.caption = "", .message = m_message, .ok = "OK", .cancel = "No", .isCancelDefault = true})
            .Ask(m_owner.Window()));
    // With OK alone Esc is no OK.
    m_owner.PostKey(VK_ESCAPE);
    EXPECT_FALSE(Ask(""));
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
