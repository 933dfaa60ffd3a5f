#include <gtest/gtest.h>

#include "controls/ComboBox_win.h"
#include "controls/FieldFrame_win.h"
#include "support/ControlWindow.h"

namespace brennvar {
namespace {

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
