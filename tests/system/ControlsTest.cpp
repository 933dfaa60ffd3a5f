// The controls as the keyboard works them: a dialog of the gallery with one of each, in a process of its own.
#include <gtest/gtest.h>

#include <initializer_list>
#include <optional>
#include <sstream>

#include "Desktop.h"
#include "Programs.h"
#include "gallery/EventsPage.h"
#include "tree/TreeMessages_win.h"
// Needs windows.h, which Desktop.h brings.
#include <commctrl.h>

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

// Letters, digits and dots.
void Type(const std::string& text) {
    for (const char character : text) {
        const bool isCapital = character >= 'A' && character <= 'Z';
        Press({LOBYTE(::VkKeyScanA(character))}, isCapital ? VK_SHIFT : 0);
    }
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

    [[nodiscard]] bool WaitForAnswer(HWND window, UINT message, LRESULT answer) const {
        return WaitUntil([&] { return Ask(window, message) == answer; }, kBrief);
    }
    [[nodiscard]] bool WaitForText(int id, const std::string& text) const {
        return WaitUntil([&] { return WindowText(Item(id)) == text; }, kBrief);
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
    EXPECT_TRUE(WaitForFocus(kName));

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

    const HWND combo = Item(kMode);
    ASSERT_TRUE(SetFocusTo(kMode));
    EXPECT_TRUE(Gives({VK_DOWN}, "combo 231 selected 1"));
    EXPECT_TRUE(Gives({'B'}, "combo 231 selected 2"));
    // Closed by Enter, which is not the dialog's then; nor is Esc.
    Press({VK_F4});
    ASSERT_TRUE(WaitForAnswer(combo, CB_GETDROPPEDSTATE, TRUE));
    EXPECT_TRUE(Gives({VK_HOME, VK_RETURN}, "combo 231 selected 0"));
    ASSERT_TRUE(WaitForAnswer(combo, CB_GETDROPPEDSTATE, FALSE));
    Press({VK_DOWN}, VK_MENU);
    ASSERT_TRUE(WaitForAnswer(combo, CB_GETDROPPEDSTATE, TRUE));
    Press({VK_ESCAPE});
    EXPECT_TRUE(WaitForAnswer(combo, CB_GETDROPPEDSTATE, FALSE));

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

TEST_F(ControlsTest, FieldsTakeTextDigitsAndAnAddress) {
    ASSERT_TRUE(SetFocusTo(kName));
    Type("Ab");
    EXPECT_TRUE(Happened("edit 241 changed to A\nedit 241 changed to Ab"));
    EXPECT_TRUE(Gives({VK_LEFT, VK_BACK}, "edit 241 changed to b"));
    ASSERT_TRUE(SetFocusTo(kPort));
    Type("8x0");
    EXPECT_TRUE(Happened("edit 242 changed to 8\nedit 242 changed to 80"));
    Type("1234");
    EXPECT_TRUE(WaitForText(kPort, "80123")) << WindowText(Item(kPort)) << ": five digits are the limit";
    Press({VK_TAB});
    ASSERT_TRUE(WaitForFocus(kHost));
    Type("10.1.192168");  // three digits go on to the next number
    EXPECT_TRUE(WaitForText(kHost, "10.1.192.168")) << WindowText(Item(kHost));
}

TEST_F(ControlsTest, TreeAndItsMenuAreWorkedByKeys) {
    const HWND tree = Item(kRules);
    constexpr int kRows = kPrograms + kRulesEach;  // one program shows its rules
    const LRESULT page = Ask(tree, kTreeGetVisibleRowCount);
    ASSERT_TRUE(page > 5 && page < kRows) << page;
    ASSERT_TRUE(SetFocusTo(kRules));
    Press({VK_END});
    EXPECT_TRUE(WaitForAnswer(tree, kTreeGetFocusedRow, kRows - 1));
    EXPECT_EQ(Ask(tree, kTreeGetFirstVisibleRow), kRows - page);
    Press({VK_HOME, VK_NEXT, VK_NEXT});
    EXPECT_TRUE(WaitForAnswer(tree, kTreeGetFocusedRow, 2 * (page - 1)));
    // The row of the keyboard, for screen readers.
    Press({VK_HOME, VK_DOWN, VK_DOWN, VK_DOWN});
    EXPECT_TRUE(WaitForText(kRules, "Rule 2\t2")) << WindowText(tree);

    EXPECT_EQ(Ask(tree, kTreeGetCheck, 0, 0), -1) << "a program has none";
    EXPECT_TRUE(Gives({VK_HOME, VK_DOWN, VK_SPACE}, "row 1 checked"));
    EXPECT_EQ(Ask(tree, kTreeToggleCheck, 1, 0), 1);
    EXPECT_TRUE(Happened("row 1 unchecked"));
    Press({VK_HOME, VK_LEFT});
    EXPECT_TRUE(WaitForAnswer(tree, kTreeGetRowCount, kRows - kRulesEach));
    Press({VK_RIGHT, VK_RIGHT});  // opened, and into the children
    EXPECT_TRUE(WaitForAnswer(tree, kTreeGetFocusedRow, 1));
    EXPECT_TRUE(Gives({VK_HOME, VK_RETURN}, "row 0 opened")) << "Enter is not the dialog's here";

    Press({VK_APPS});
    const auto isOpen = [] { return ::IsWindowVisible(::FindWindowA("#32768", nullptr)) != FALSE; };
    ASSERT_TRUE(WaitUntil(isOpen, kBrief));
    EXPECT_TRUE(Gives({'A'}, "menu 301 chosen")) << "by its mnemonic";
    EXPECT_TRUE(WaitForFocus(kRules));
}

}  // namespace
}  // namespace brennvar::test
