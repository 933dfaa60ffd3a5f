// The controls as a user and as automation work them: a dialog of the gallery with one of each, in a process of its
// own, worked by keys, by the mouse and by messages.
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

constexpr WORD kFirstLetter = 'A', kLastLetter = 'Z';

void AddKey(std::vector<INPUT>& inputs, WORD key, bool isDown) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.dwFlags = isDown ? 0 : KEYEVENTF_KEYUP;
    // The cursor block, not the number pad.
    const bool isCursorKey = (key >= VK_PRIOR && key <= VK_DOWN) || key == VK_APPS;
    if (isCursorKey) input.ki.dwFlags |= KEYEVENTF_EXTENDEDKEY;
    inputs.push_back(input);
}

void Send(std::vector<INPUT> inputs) {
    ASSERT_EQ(::SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT)), inputs.size());
}

// Keys that are pressed one after the other.
void Press(std::initializer_list<WORD> keys) {
    std::vector<INPUT> inputs;
    for (const WORD key : keys) {
        AddKey(inputs, key, true);
        AddKey(inputs, key, false);
    }
    Send(std::move(inputs));
}

void PressWith(WORD modifier, WORD key) {
    std::vector<INPUT> inputs;
    AddKey(inputs, modifier, true);
    AddKey(inputs, key, true);
    AddKey(inputs, key, false);
    AddKey(inputs, modifier, false);
    Send(std::move(inputs));
}

// Letters, digits and dots.
void Type(const std::string& text) {
    for (const char character : text) {
        const auto letter = static_cast<WORD>(character);
        if (letter >= kFirstLetter && letter <= kLastLetter) {
            PressWith(VK_SHIFT, letter);
        } else {
            Press({LOBYTE(::VkKeyScanA(character))});
        }
    }
}

// What the mouse does, in client coordinates: MAKELPARAM(x, y). Posted to the window itself and not by SendInput:
// where the system sees the pointer is settled with the display at leisure, and input meanwhile goes astray.
void ClickAt(HWND window, LRESULT position) {
    ASSERT_TRUE(::PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, position));
    ASSERT_TRUE(::PostMessageA(window, WM_LBUTTONUP, 0, position));
}
// Notches above zero turn away from the user.
void TurnWheel(HWND window, int notches) {
    RECT place;
    ASSERT_TRUE(::GetWindowRect(window, &place));
    ASSERT_TRUE(::PostMessageA(window, WM_MOUSEWHEEL, MAKEWPARAM(0, notches * WHEEL_DELTA),
                               MAKELPARAM(place.left + 80, place.top + 100)));
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

    [[nodiscard]] std::vector<std::string> Events() const {
        std::istringstream text(WindowText(Item(kEventLog)));
        std::vector<std::string> events;
        for (std::string event; std::getline(text, event);) events.push_back(event);
        return events;
    }
    // Waits until just this has happened since the last call.
    [[nodiscard]] ::testing::AssertionResult Happened(const std::vector<std::string>& expected) const {
        std::vector<std::string> events;
        const bool isSo = WaitUntil([&] { return (events = Events()) == expected; }, kBrief);
        Ask(Item(kEventLog), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(""));
        if (isSo) return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure() << ::testing::PrintToString(events);
    }

    [[nodiscard]] ::testing::AssertionResult Gives(std::initializer_list<WORD> keys,
                                                   const std::string& event) const {
        Press(keys);
        return Happened({event});
    }

    [[nodiscard]] bool WaitForAnswer(HWND window, UINT message, LRESULT answer, WPARAM wParam = 0,
                                     LPARAM lParam = 0) const {
        return WaitUntil([&] { return Ask(window, message, wParam, lParam) == answer; }, kBrief);
    }
    [[nodiscard]] bool WaitForText(int id, const std::string& text) const {
        return WaitUntil([&] { return WindowText(Item(id)) == text; }, kBrief);
    }
    [[nodiscard]] std::vector<int> CheckedChoices() const {
        std::vector<int> checked;
        for (int id = kFirstChoice; id <= kLastChoice; ++id) {
            if (Ask(Item(id), BM_GETCHECK) == BST_CHECKED) checked.push_back(id);
        }
        return checked;
    }

    // Presses a key that opens the menu of the list, and waits for it.
    [[nodiscard]] static bool OpenMenu() {
        Press({VK_APPS});
        return WaitUntil([] { return ::IsWindowVisible(::FindWindowA("#32768", nullptr)) != FALSE; }, kBrief);
    }

    // What comes after a key comes at once; a test that has failed need not wait for ever.
    static constexpr std::chrono::seconds kBrief{10};

    std::optional<RunningProgram> m_gallery;
    HWND m_dialog = nullptr;
};

TEST_F(ControlsTest, TabVisitsEveryControlAndShiftTabGoesBack) {
    const int order[] = {kApply, kRemember, kFirstChoice, kMode, kName, kPort, kHost, kRules, IDOK, IDCANCEL};
    for (const int id : order) {
        ASSERT_TRUE(WaitForFocus(id)) << id << " is wanted, it is at " << FocusedId();
        Press({VK_TAB});
    }
    EXPECT_TRUE(WaitForFocus(kApply)) << "it goes round: " << FocusedId();
    for (auto id = std::rbegin(order); id != std::rend(order); ++id) {
        PressWith(VK_SHIFT, VK_TAB);
        ASSERT_TRUE(WaitForFocus(*id)) << *id << " is wanted, it is at " << FocusedId();
    }
    EXPECT_TRUE(Happened({})) << "nothing is changed on the way";
}

TEST_F(ControlsTest, MnemonicsSpaceAndClicksWorkButtonsAndCheckBoxes) {
    ASSERT_TRUE(SetFocusTo(kMode));
    PressWith(VK_MENU, 'P');
    EXPECT_TRUE(Happened({"button 201 clicked"}));
    PressWith(VK_MENU, 'R');
    EXPECT_TRUE(Happened({"check 211 on"}));
    ASSERT_TRUE(WaitForFocus(kRemember));
    EXPECT_TRUE(Gives({VK_SPACE}, "check 211 off"));
    EXPECT_EQ(Ask(Item(kRemember), BM_GETCHECK), BST_UNCHECKED);
    ClickAt(Item(kRemember), MAKELPARAM(8, 12));
    EXPECT_TRUE(Happened({"check 211 on"}));
    EXPECT_EQ(Ask(Item(kRemember), BM_GETCHECK), BST_CHECKED);
    Ask(Item(kRemember), BM_CLICK);
    EXPECT_TRUE(Happened({"check 211 off"}));
    Ask(Item(kRemember), BM_SETCHECK, BST_CHECKED);
    EXPECT_TRUE(Happened({})) << "what a program sets is no event";
    ClickAt(Item(kApply), MAKELPARAM(20, 10));
    EXPECT_TRUE(Happened({"button 201 clicked"}));
    // That of a label leads to the field behind it.
    PressWith(VK_MENU, 'N');
    EXPECT_TRUE(WaitForFocus(kName));
    EXPECT_TRUE(Happened({}));
}

TEST_F(ControlsTest, ArrowsChooseWithinTheRadioGroup) {
    ASSERT_TRUE(SetFocusTo(kFirstChoice));
    EXPECT_EQ(CheckedChoices(), std::vector<int>{221});
    EXPECT_TRUE(Gives({VK_DOWN}, "radio 222 chosen"));
    EXPECT_EQ(CheckedChoices(), std::vector<int>{222});
    EXPECT_TRUE(Gives({VK_RIGHT}, "radio 223 chosen"));
    EXPECT_TRUE(Gives({VK_DOWN}, "radio 221 chosen")) << "the group is a ring";
    EXPECT_TRUE(Gives({VK_UP}, "radio 223 chosen"));
    // The group is one stop of Tab, at the choice.
    Press({VK_TAB});
    EXPECT_TRUE(WaitForFocus(kMode));
    PressWith(VK_SHIFT, VK_TAB);
    EXPECT_TRUE(WaitForFocus(kLastChoice)) << FocusedId();
    ClickAt(Item(222), MAKELPARAM(8, 12));
    EXPECT_TRUE(Happened({"radio 222 chosen"}));
    EXPECT_EQ(CheckedChoices(), std::vector<int>{222});
}

TEST_F(ControlsTest, EnterPressesTheDefaultButtonAndEscapeCancels) {
    for (const int id : {static_cast<int>(kRemember), static_cast<int>(kName), static_cast<int>(kMode)}) {
        ASSERT_TRUE(SetFocusTo(id));
        EXPECT_TRUE(Gives({VK_RETURN}, "button 1 clicked")) << id;
    }
    ASSERT_TRUE(SetFocusTo(kApply));
    EXPECT_TRUE(Gives({VK_RETURN}, "button 201 clicked")) << "a button with the focus is the default one";
    EXPECT_TRUE(Gives({VK_TAB, VK_RETURN}, "button 1 clicked")) << "and no longer when it has lost it";
    Press({VK_ESCAPE});
    EXPECT_EQ(m_gallery->WaitForEnd(), IDCANCEL);
}

TEST_F(ControlsTest, ComboBoxSelectsByKeysAndMessages) {
    const HWND combo = Item(kMode);
    ASSERT_TRUE(SetFocusTo(kMode));
    EXPECT_TRUE(Gives({VK_DOWN}, "combo 231 selected 1"));
    EXPECT_TRUE(Gives({'B'}, "combo 231 selected 2"));
    // Opened, chosen from, and closed by Enter, which is not the dialog's then; nor is Esc.
    Press({VK_F4});
    ASSERT_TRUE(WaitForAnswer(combo, CB_GETDROPPEDSTATE, TRUE));
    EXPECT_TRUE(Gives({VK_HOME, VK_RETURN}, "combo 231 selected 0"));
    EXPECT_TRUE(WaitForAnswer(combo, CB_GETDROPPEDSTATE, FALSE));
    EXPECT_EQ(WindowText(combo), kModes[0]);
    PressWith(VK_MENU, VK_DOWN);
    ASSERT_TRUE(WaitForAnswer(combo, CB_GETDROPPEDSTATE, TRUE));
    Press({VK_ESCAPE});
    EXPECT_TRUE(WaitForAnswer(combo, CB_GETDROPPEDSTATE, FALSE));

    EXPECT_EQ(Ask(combo, CB_SETCURSEL, 2), 2);
    EXPECT_EQ(WindowText(combo), kModes[2]);
    EXPECT_TRUE(Happened({})) << "a program's choice is no event";
    Ask(m_dialog, WM_COMMAND, MAKEWPARAM(kMode, CBN_SELCHANGE), reinterpret_cast<LPARAM>(combo));
    EXPECT_TRUE(Happened({"combo 231 selected 2"}));
}

TEST_F(ControlsTest, FieldsTakeTextDigitsAndAnAddress) {
    ASSERT_TRUE(SetFocusTo(kName));
    Type("Ab1");
    EXPECT_TRUE(Happened({"edit 241 changed to A", "edit 241 changed to Ab", "edit 241 changed to Ab1"}));
    EXPECT_TRUE(Gives({VK_LEFT, VK_BACK}, "edit 241 changed to A1"));
    Ask(Item(kName), WM_SETTEXT, 0, reinterpret_cast<LPARAM>("set"));
    EXPECT_TRUE(Happened({"edit 241 changed to set"}));
    Press({VK_TAB});
    ASSERT_TRUE(WaitForFocus(kPort));
    Type("8x0");
    EXPECT_TRUE(Happened({"edit 242 changed to 8", "edit 242 changed to 80"}));
    Type("1234");
    EXPECT_TRUE(WaitForText(kPort, "80123")) << WindowText(Item(kPort)) << ": five digits are the limit";
    PressWith(VK_SHIFT, VK_TAB);
    ASSERT_TRUE(WaitForFocus(kName));
    Type("n");
    EXPECT_TRUE(WaitForText(kName, "n")) << "Tab has selected what was there: " << WindowText(Item(kName));

    const HWND box = Item(kHost);
    EXPECT_EQ(Ask(box, IPM_ISBLANK), TRUE);
    ASSERT_TRUE(SetFocusTo(kHost));
    Type("10.1.2.34");
    EXPECT_TRUE(WaitForText(kHost, "10.1.2.34")) << WindowText(box);
    ASSERT_FALSE(Events().empty());
    EXPECT_EQ(Events().back(), "address 251 changed to 10.1.2.34");
    // Three digits go on to the next number.
    Ask(box, IPM_CLEARADDRESS);
    ASSERT_TRUE(SetFocusTo(kApply));
    ASSERT_TRUE(SetFocusTo(kHost));
    Type("1921682551");
    EXPECT_TRUE(WaitForText(kHost, "192.168.255.1")) << WindowText(box);
    Ask(box, IPM_SETADDRESS, 0, MAKEIPADDRESS(127, 0, 0, 1));
    EXPECT_EQ(WindowText(box), "127.0.0.1");
}

TEST_F(ControlsTest, TreeScrollsByKeysAndWheel) {
    const HWND tree = Item(kRules);
    constexpr int kRows = kPrograms + kRulesEach;  // one program shows its rules
    ASSERT_EQ(Ask(tree, kTreeGetRowCount), kRows);
    const LRESULT page = Ask(tree, kTreeGetVisibleRowCount);
    ASSERT_GT(page, 5);
    ASSERT_LT(page, kRows);
    ASSERT_TRUE(SetFocusTo(kRules));
    Press({VK_END});
    EXPECT_TRUE(WaitForAnswer(tree, kTreeGetFocusedRow, kRows - 1));
    EXPECT_EQ(Ask(tree, kTreeGetFirstVisibleRow), kRows - page);
    EXPECT_EQ(Ask(tree, kTreeIsRowSelected, kRows - 1), 1);
    Press({VK_UP});
    EXPECT_TRUE(WaitForAnswer(tree, kTreeGetFocusedRow, kRows - 2));
    EXPECT_EQ(Ask(tree, kTreeGetFirstVisibleRow), kRows - page) << "it is seen already";
    Press({VK_HOME, VK_NEXT, VK_NEXT});
    EXPECT_TRUE(WaitForAnswer(tree, kTreeGetFocusedRow, 2 * (page - 1)));
    Press({VK_HOME});
    ASSERT_TRUE(WaitForAnswer(tree, kTreeGetFirstVisibleRow, 0));

    UINT lines = 0;
    ::SystemParametersInfoA(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    ASSERT_GT(lines, 0U);
    TurnWheel(tree, -2);
    EXPECT_TRUE(WaitForAnswer(tree, kTreeGetFirstVisibleRow, static_cast<LRESULT>(2 * lines)));
    EXPECT_EQ(Ask(tree, kTreeGetFocusedRow), 0) << "the wheel moves no focus";
    TurnWheel(tree, 1);
    EXPECT_TRUE(WaitForAnswer(tree, kTreeGetFirstVisibleRow, static_cast<LRESULT>(lines)))
        << Ask(tree, kTreeGetFirstVisibleRow);
    TurnWheel(tree, 100);
    EXPECT_TRUE(WaitForAnswer(tree, kTreeGetFirstVisibleRow, 0));
}

TEST_F(ControlsTest, TreeTellsItsCellsChecksAndExpands) {
    const HWND tree = Item(kRules);
    constexpr int kRows = kPrograms + kRulesEach;
    EXPECT_EQ(ListRows(tree, 2, 2),
              (std::vector<std::vector<std::string>>{{"program0.exe", "0"}, {"Rule 1", "1"}}));
    EXPECT_EQ(Ask(tree, kTreeQueryCell, 1000, 0), -1);
    // The row of the keyboard, for screen readers.
    ASSERT_TRUE(SetFocusTo(kRules));
    Press({VK_DOWN, VK_DOWN, VK_DOWN});
    EXPECT_TRUE(WaitForText(kRules, "Rule 2\t2")) << WindowText(tree);

    EXPECT_EQ(Ask(tree, kTreeGetCheck, 0, 0), -1) << "a program has none";
    EXPECT_TRUE(Gives({VK_HOME, VK_DOWN, VK_SPACE}, "row 1 checked"));
    EXPECT_EQ(Ask(tree, kTreeGetCheck, 1, 0), 1);
    ClickAt(tree, Ask(tree, kTreeGetCheckPosition, 1, 0));
    EXPECT_TRUE(Happened({"row 1 unchecked"}));
    EXPECT_EQ(Ask(tree, kTreeToggleCheck, 3, 0), 1);
    EXPECT_TRUE(Happened({"row 3 checked"}));

    Press({VK_HOME, VK_LEFT});
    EXPECT_TRUE(WaitForAnswer(tree, kTreeGetRowCount, kRows - kRulesEach));
    Press({VK_RIGHT, VK_RIGHT});  // opened, and into the children
    EXPECT_TRUE(WaitForAnswer(tree, kTreeGetFocusedRow, 1));
    EXPECT_EQ(Ask(tree, kTreeGetRowCount), kRows);
    // The mark before the text, by the mouse: row 4 is the second program.
    const LRESULT corner = Ask(tree, kTreeGetCellLeftTop, 4, 0);
    ASSERT_NE(corner, -1);
    ClickAt(tree, MAKELPARAM(LOWORD(corner) + 16, HIWORD(corner) + 12));
    EXPECT_TRUE(WaitForAnswer(tree, kTreeGetRowCount, kRows + kRulesEach));
    EXPECT_EQ(Ask(tree, kTreeSetExpanded, 4, 0), 1);
    EXPECT_EQ(Ask(tree, kTreeGetRowCount), kRows);
    EXPECT_TRUE(Gives({VK_HOME, VK_RETURN}, "row 0 opened")) << "Enter is not the dialog's here";
}

TEST_F(ControlsTest, MenuIsWorkedByTheKeyboard) {
    ASSERT_TRUE(SetFocusTo(kRules));
    Press({VK_HOME});
    ASSERT_TRUE(OpenMenu());
    EXPECT_TRUE(Gives({VK_DOWN, VK_DOWN, VK_RETURN}, "menu 302 chosen"));
    ASSERT_TRUE(OpenMenu());
    EXPECT_TRUE(Gives({'A'}, "menu 301 chosen")) << "by its mnemonic";
    ASSERT_TRUE(OpenMenu());
    EXPECT_TRUE(Gives({VK_ESCAPE}, "menu left"));
    EXPECT_TRUE(WaitForFocus(kRules));
}

}  // namespace
}  // namespace brennvar::test
