#include "ui/Clipboard_win.h"

#include <gtest/gtest.h>

#include "support/ClipboardText_win.h"
#include "ui/Fonts_win.h"

namespace brennvar {

TEST(ClipboardTest, TextsKeepTheLettersOfTheirLanguage) {
    CopyToClipboard(::GetDesktopWindow(), "\xC4\xE0 a", CFonts(RUSSIAN_CHARSET).Text());
    EXPECT_EQ(test::ClipboardText(), L"\u0414\u0430 a");
    CopyToClipboard(::GetDesktopWindow(), "\xC4\xE0 a", CFonts(ANSI_CHARSET).Text());
    EXPECT_EQ(test::ClipboardText(), L"\u00C4\u00E0 a");
}

}  // namespace brennvar
