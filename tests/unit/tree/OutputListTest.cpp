#include "tree/OutputList_win.h"

#include <gtest/gtest.h>

#include "support/ControlWindow.h"
#include "tree/TreeMessages_win.h"

namespace brennvar {
namespace {

TEST(COutputListTest, KeepsTheLastLinesAndFollowsThemUnlessTheUserReads) {
    const test::TestSkin skin;
    const Look look = skin.MakeLook();
    const test::ControlWindow window;
    COutputList list(100);
    ASSERT_TRUE(list.Create(window.Window(), 1, look, "No output yet."));
    list.Place({0, 0, 300, 200});
    const auto ask = [&](UINT message) { return static_cast<int>(::SendMessageA(list.Window(), message, 0, 0)); };
    list.Append("one\r\ntwo\n\nfour\n", RGB(1, 2, 3));
    EXPECT_EQ(list.Text(), "one\r\ntwo\r\n\r\nfour\r\n");
    list.Clear();
    for (int line = 0; line < 100; ++line) list.Append("line" + std::to_string(line));
    // The user reads further up: what is in sight stays there, although the oldest lines go.
    ::SendMessageA(list.Window(), WM_MOUSEWHEEL, MAKEWPARAM(0, 5 * WHEEL_DELTA), 0);
    const int before = ask(kTreeGetFirstVisibleRow);
    for (int line = 100; line < 120; ++line) list.Append("line" + std::to_string(line));
    EXPECT_EQ(list.LineCount(), 100U);
    EXPECT_EQ(ask(kTreeGetFirstVisibleRow), before - 20);
    // At the end again, new lines are followed.
    ::SendMessageA(list.Window(), WM_VSCROLL, SB_BOTTOM, 0);
    list.Append(std::string(500, 'w'));  // longer than the list is wide: a second scroll bar comes
    EXPECT_EQ(ask(kTreeGetFirstVisibleRow), 100 - ask(kTreeGetVisibleRowCount));
}

}  // namespace
}  // namespace brennvar
