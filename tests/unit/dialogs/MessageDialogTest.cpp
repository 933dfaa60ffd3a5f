#include "dialogs/MessageDialog_win.h"

#include <gtest/gtest.h>

#include <initializer_list>

#include "support/ModalOwner_win.h"

namespace brennvar {
namespace {

TEST(MessageDialogTest, IsAnsweredWithTheKeyboard) {
    const CFonts fonts;
    test::ModalOwner owner;
    MessageTexts texts{.caption = "Caption", .message = "A message.", .ok = "&OK", .cancel = "&Cancel"};
    const auto askWith = [&](std::initializer_list<WPARAM> keys) {
        for (const WPARAM key : keys) owner.PostKey(key);
        return MessageDialog(fonts, texts).Ask(owner.Window());
    };
    EXPECT_TRUE(askWith({VK_RETURN}));
    // Tab goes round the two buttons only, and Enter presses the one that it has reached.
    EXPECT_FALSE(askWith({VK_TAB, VK_TAB, VK_TAB, VK_RETURN}));
    owner.PostMnemonic('o');
    EXPECT_TRUE(askWith({}));
    texts.isCancelDefault = true;
    EXPECT_FALSE(askWith({VK_RETURN}));
    // With OK alone Esc is no OK.
    texts = {.caption = "Caption", .message = "A message.", .ok = "&OK", .cancel = ""};
    EXPECT_FALSE(askWith({VK_ESCAPE}));
}

}  // namespace
}  // namespace brennvar
