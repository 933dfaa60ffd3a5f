// The controls as the keyboard works them: a dialog of the gallery with one of each, in a process of its own.
#include <gtest/gtest.h>

#include <initializer_list>
#include <optional>

#include "Desktop.h"
#include "Programs.h"
#include "gallery/EventsPage.h"

namespace brennvar::test {
namespace {

using namespace gallery;

// Keys that are pressed one after the other, while the modifier is held.
void Press(std::initializer_list<WORD> keys, WORD modifier = 0) {
    std::vector<INPUT> inputs;
    const auto add = [&](WORD key, DWORD flags) {
        // The cursor block, not the number pad.
        const bool isCursorKey = (key >= VK_PRIOR && key <= VK_DOWN) || key == VK_APPS;
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = key;
        input.ki.dwFlags = flags | (isCursorKey ? KEYEVENTF_EXTENDEDKEY : 0U);
        inputs.push_back(input);
    };
    if (modifier != 0) add(modifier, 0);
    for (const WORD key : keys) {
        add(key, 0);
        add(key, KEYEVENTF_KEYUP);
    }
    if (modifier != 0) add(modifier, KEYEVENTF_KEYUP);
    ASSERT_EQ(::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT)), inputs.size());
}

class ControlsTest : public ::testing::Test {
protected:
    void SetUp() override {
        (void)EmptyDataFolder();  // the skin and the language that stand first
        m_gallery.emplace(Quoted(BuiltProgram(R"(gallery\gallery.exe)")) + " --page events");
        m_dialog = WaitForProgramWindow(m_gallery->Id(), kEventsCaption);
        ASSERT_NE(m_dialog, nullptr);
        ASSERT_TRUE(WaitUntil([&] { return ::GetForegroundWindow() == m_dialog; }));
        ASSERT_TRUE(WaitForFocus(kApply)) << FocusedId();
    }

    [[nodiscard]] HWND Item(int id) const { return ::GetDlgItem(m_dialog, id); }

    // The dialog's control that has the keyboard, or whose part has it.
    [[nodiscard]] int FocusedId() const {
        GUITHREADINFO info{};
        info.cbSize = sizeof info;
        if (!::GetGUIThreadInfo(::GetWindowThreadProcessId(m_dialog, nullptr), &info)) return 0;
        HWND window = info.hwndFocus;
        while (window != nullptr && ::GetParent(window) != m_dialog) window = ::GetParent(window);
        return window != nullptr ? ::GetDlgCtrlID(window) : 0;
    }
    [[nodiscard]] bool WaitForFocus(int id) const {
        return WaitUntil([&] { return FocusedId() == id; }, kBrief);
    }
    [[nodiscard]] bool SetFocusTo(int id) const {
        ::PostMessageA(m_dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Item(id)), TRUE);
        return WaitForFocus(id);
    }

    // Waits until just this has happened since the last call.
    [[nodiscard]] ::testing::AssertionResult Happened(const std::string& expected) const {
        std::string events;
        const bool isSo = WaitUntil([&] { return (events = WindowText(Item(kEventLog))) == expected; }, kBrief);
        Ask(Item(kEventLog), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(""));
        return (isSo ? ::testing::AssertionSuccess() : ::testing::AssertionFailure()) << events;
    }
    [[nodiscard]] ::testing::AssertionResult Gives(std::initializer_list<WORD> keys, const std::string& event,
                                                   WORD modifier = 0) const {
        Press(keys, modifier);
        return Happened(event);
    }

    [[nodiscard]] bool WaitForDropped(bool isDropped) const {
        return WaitUntil([&] { return Ask(Item(kMode), CB_GETDROPPEDSTATE) == LRESULT{isDropped}; }, kBrief);
    }

    // What comes after a key comes at once; a test that has failed need not wait for ever.
    static constexpr std::chrono::seconds kBrief{10};

    std::optional<RunningProgram> m_gallery;
    HWND m_dialog = nullptr;
};

TEST_F(ControlsTest, KeysReachAndWorkEveryControlOfADialog) {
    for (const int id : {int{kApply}, int{kRemember}, int{kFirstChoice}, int{kMode}, int{kName}, int{kPort},
                         int{kHost}, int{kRules}, IDOK, IDCANCEL}) {
        ASSERT_TRUE(WaitForFocus(id)) << id << " is wanted, it is at " << FocusedId();
        Press({VK_TAB});
    }
    EXPECT_TRUE(WaitForFocus(kApply)) << "it goes round: " << FocusedId();
    EXPECT_TRUE(Happened("")) << "nothing is changed on the way";

    ASSERT_TRUE(SetFocusTo(kMode));
    EXPECT_TRUE(Gives({'P'}, "button 201 clicked", VK_MENU));
    EXPECT_TRUE(Gives({'R'}, "check 211 on", VK_MENU));
    ASSERT_TRUE(WaitForFocus(kRemember));
    EXPECT_TRUE(Gives({VK_SPACE}, "check 211 off"));
    // That of a label leads to the field behind it.
    Press({'N'}, VK_MENU);
    ASSERT_TRUE(WaitForFocus(kName));
    EXPECT_TRUE(Gives({'B'}, "edit 241 changed to b"));

    ASSERT_TRUE(SetFocusTo(kFirstChoice));
    EXPECT_TRUE(Gives({VK_DOWN}, "radio 222 chosen"));
    EXPECT_TRUE(Gives({VK_RIGHT}, "radio 223 chosen"));
    EXPECT_TRUE(Gives({VK_DOWN}, "radio 221 chosen")) << "the group is a ring";
    EXPECT_TRUE(Gives({VK_UP}, "radio 223 chosen"));
    // The group is one stop of Tab, at the choice.
    Press({VK_TAB});
    ASSERT_TRUE(WaitForFocus(kMode));
    Press({VK_TAB}, VK_SHIFT);
    EXPECT_TRUE(WaitForFocus(kLastChoice)) << FocusedId();

    ASSERT_TRUE(SetFocusTo(kMode));
    EXPECT_TRUE(Gives({VK_DOWN}, "combo 231 selected 1"));
    EXPECT_TRUE(Gives({'B'}, "combo 231 selected 2"));
    // Closed by Enter, which is not the dialog's then; nor is Esc.
    Press({VK_F4});
    ASSERT_TRUE(WaitForDropped(true));
    EXPECT_TRUE(Gives({VK_HOME, VK_RETURN}, "combo 231 selected 0"));
    ASSERT_TRUE(WaitForDropped(false));
    Press({VK_DOWN}, VK_MENU);
    ASSERT_TRUE(WaitForDropped(true));
    Press({VK_ESCAPE});
    EXPECT_TRUE(WaitForDropped(false));

    for (const int id : {kRemember, kName, kMode}) {
        ASSERT_TRUE(SetFocusTo(id));
        EXPECT_TRUE(Gives({VK_RETURN}, "button 1 clicked")) << id;
    }
    ASSERT_TRUE(SetFocusTo(kApply));
    EXPECT_TRUE(Gives({VK_RETURN}, "button 201 clicked")) << "a button with the focus is the default one";
    EXPECT_TRUE(Gives({VK_TAB, VK_RETURN}, "button 1 clicked")) << "and no longer when it has lost it";
    Press({VK_ESCAPE});
    EXPECT_EQ(m_gallery->WaitForEnd(), IDCANCEL);
}

}  // namespace
}  // namespace brennvar::test
