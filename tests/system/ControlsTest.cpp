// The controls as the keyboard works them: a dialog of the gallery with one of each, in a process of its own.
#include <gtest/gtest.h>

#include <initializer_list>

#include "Desktop.h"
#include "Programs.h"
#include "Typing.h"
#include "gallery/EventsPage.h"

namespace brennvar::test {
namespace {

using namespace gallery;

TEST(ControlsTest, KeysReachAndWorkEveryControlOfADialog) {
    // What comes after a key comes at once; a test that has failed need not wait for ever.
    constexpr std::chrono::seconds kBrief{10};
    (void)EmptyDataFolder();  // the skin and the language that stand first
    const RunningProgram program(Quoted(BuiltProgram(R"(gallery\gallery.exe)")) + " --page events");
    const HWND dialog = WaitForProgramWindow(program.Id(), kEventsCaption);
    ASSERT_TRUE(WaitUntil([&] { return dialog != nullptr && ::GetForegroundWindow() == dialog; }));
    const auto waitForFocus = [&](int id) {
        const HWND control = ::GetDlgItem(dialog, id);
        // Or a part of it.
        return WaitUntil(
            [&] {
                const HWND focus = FocusOf(dialog);
                return focus != nullptr && (focus == control || ::IsChild(control, focus));
            },
            kBrief);
    };
    const auto setFocusTo = [&](int id) {
        ::PostMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(::GetDlgItem(dialog, id)), TRUE);
        return waitForFocus(id);
    };
    // Just this happens.
    const auto gives = [&](std::initializer_list<WORD> keys, const std::string& expected, WORD modifier = 0) {
        Type(keys, modifier);
        const HWND log = ::GetDlgItem(dialog, kEventLog);
        std::string events;
        const bool isSo = WaitUntil([&] { return (events = WindowText(log)) == expected; }, kBrief);
        Ask(log, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(""));
        return (isSo ? ::testing::AssertionSuccess() : ::testing::AssertionFailure()) << events;
    };
    const auto waitForDropped = [&](bool isDropped) {
        const HWND combo = ::GetDlgItem(dialog, kMode);
        return WaitUntil([&] { return Ask(combo, CB_GETDROPPEDSTATE) == LRESULT{isDropped}; }, kBrief);
    };

    for (const int id : {int{kApply}, int{kRemember}, int{kFirstChoice}, int{kMode}, int{kName}, int{kPort},
                         int{kHost}, int{kRules}, IDOK, IDCANCEL}) {
        ASSERT_TRUE(waitForFocus(id)) << id;
        Type({VK_TAB});
    }
    EXPECT_TRUE(waitForFocus(kApply)) << "it goes round";
    EXPECT_TRUE(gives({}, "")) << "nothing is changed on the way";

    ASSERT_TRUE(setFocusTo(kMode));
    EXPECT_TRUE(gives({'P'}, "button 201 clicked", VK_MENU));
    EXPECT_TRUE(gives({'R'}, "check 211 on", VK_MENU));
    ASSERT_TRUE(waitForFocus(kRemember));
    EXPECT_TRUE(gives({VK_SPACE}, "check 211 off"));
    // That of a label leads to the field behind it.
    Type({'N'}, VK_MENU);
    ASSERT_TRUE(waitForFocus(kName));
    EXPECT_TRUE(gives({'B'}, "edit 241 changed to b"));

    ASSERT_TRUE(setFocusTo(kFirstChoice));
    EXPECT_TRUE(gives({VK_DOWN}, "radio 222 chosen"));
    EXPECT_TRUE(gives({VK_RIGHT}, "radio 223 chosen"));
    EXPECT_TRUE(gives({VK_DOWN}, "radio 221 chosen")) << "the group is a ring";
    EXPECT_TRUE(gives({VK_UP}, "radio 223 chosen"));
    // The group is one stop of Tab, at the choice.
    Type({VK_TAB});
    ASSERT_TRUE(waitForFocus(kMode));
    Type({VK_TAB}, VK_SHIFT);
    EXPECT_TRUE(waitForFocus(kLastChoice));

    ASSERT_TRUE(setFocusTo(kMode));
    EXPECT_TRUE(gives({VK_DOWN}, "combo 231 selected 1"));
    EXPECT_TRUE(gives({'B'}, "combo 231 selected 2"));
    // Closed by Enter, which is not the dialog's then; nor is Esc.
    Type({VK_F4});
    ASSERT_TRUE(waitForDropped(true));
    EXPECT_TRUE(gives({VK_HOME, VK_RETURN}, "combo 231 selected 0"));
    ASSERT_TRUE(waitForDropped(false));
    for (const int id : {kRemember, kName, kMode}) {
        ASSERT_TRUE(setFocusTo(id));
        EXPECT_TRUE(gives({VK_RETURN}, "button 1 clicked")) << id;
    }
    ASSERT_TRUE(setFocusTo(kApply));
    EXPECT_TRUE(gives({VK_RETURN}, "button 201 clicked")) << "a button with the focus is the default one";
    EXPECT_TRUE(gives({VK_TAB, VK_RETURN}, "button 1 clicked")) << "and no longer when it has lost it";
    Type({VK_ESCAPE});
    EXPECT_EQ(program.WaitForEnd(), IDCANCEL);
}

}  // namespace
}  // namespace brennvar::test
