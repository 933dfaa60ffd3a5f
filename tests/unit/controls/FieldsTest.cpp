// Edit field and combo box: the fields to be filled in.
#include <gtest/gtest.h>

#include "controls/ComboBox_win.h"
#include "controls/Edit_win.h"
#include "support/ControlWindow.h"

namespace brennvar {
namespace {

TEST(CEditTest, TakesOverAFieldOfATemplateWithoutItsBorder) {
    const test::TestSkin skin;
    test::ControlWindow window;
    const HWND control = ::CreateWindowExA(WS_EX_CLIENTEDGE, "EDIT", "text", WS_CHILD | WS_VISIBLE | WS_BORDER, 0,
                                           0, 80, FieldHeight(), window.Window(), nullptr, nullptr, nullptr);
    {
        CEdit edit;
        edit.Adopt(control, skin.MakeLook());
        EXPECT_EQ(test::Screenshot(control).At(40, 0), Palette().frame1);
        EXPECT_EQ(test::Screenshot(control).At(40, 1), Palette().frame2);
        ::SendMessageA(control, EM_SETREADONLY, TRUE, 0);
        EXPECT_EQ(test::Screenshot(control).At(70, FieldHeight() / 2), Palette().page) << "Windows' part as well";
        ::SendMessageA(control, EM_SETREADONLY, FALSE, 0);
        ::SetFocus(control);
        EXPECT_EQ(test::Screenshot(control).At(40, 0), Palette().accent);
        ::SetFocus(window.Window());
        EXPECT_EQ(test::Screenshot(control).At(40, 0), Palette().frame1);
        EXPECT_EQ(edit.Text(), "text");
    }
    ::SetWindowTextA(control, "given back");
    EXPECT_NE(test::Screenshot(control).Count(Palette().list), 0);
}

TEST(CComboBoxTest, KeepsEveryByteOfItsTextsItsHeightAndStaysHidden) {
    const test::TestSkin skin;
    test::ControlWindow window;
    CComboBox combo;
    combo.Create(window.Window(), 7, skin.MakeLook());
    combo.Place({0, 0, 80, 300});
    RECT place{};
    ::GetWindowRect(combo.Window(), &place);
    EXPECT_EQ(HeightOf(place), FieldHeight());
    EXPECT_EQ(::SendMessageA(combo.Window(), CB_GETITEMHEIGHT, 0, 0), Scale(24));
    std::string high;  // letters of any language's code page
    for (int c = 0x80; c <= 0xFF; ++c) high += static_cast<char>(c);
    ::ShowWindow(combo.Window(), SW_HIDE);
    EXPECT_EQ(combo.Add("first"), 0);
    EXPECT_EQ(combo.Add(high), 1);
    combo.Select(1);
    EXPECT_EQ(combo.ItemText(1), high);
    EXPECT_EQ(combo.Text(), high);
    EXPECT_EQ(combo.ItemText(2), "");
    EXPECT_EQ(combo.ItemText(-1), "");
    EXPECT_FALSE(::IsWindowVisible(combo.Window()));
    combo.Clear();
    EXPECT_EQ(combo.Count(), 0);
    EXPECT_EQ(combo.Selected(), -1);
}

}  // namespace
}  // namespace brennvar
