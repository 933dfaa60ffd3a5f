#include "ui/Accessible_win.h"

#include <gtest/gtest.h>

#include <limits>
#include <thread>

#include "base/ComOfThread_win.h"
#include "controls/Button_win.h"
#include "controls/CheckBox_win.h"
#include "controls/ComboBox_win.h"
#include "controls/DrawnText_win.h"
#include "controls/Edit_win.h"
#include "controls/GroupBox_win.h"
#include "controls/IpAddressBox_win.h"
#include "controls/ListBox_win.h"
#include "controls/ProgressBar_win.h"
#include "controls/RadioButton_win.h"
#include "support/AccessibleReader_win.h"
#include "support/ControlWindow.h"
#include "ui/OwnMessages_win.h"

namespace brennvar {
namespace {

using test::AccessibleReader;
using test::Part;

constexpr int kButtonId = 11, kFieldId = 12;

// Draws texts beside its controls.
class Sheet final : public CWindow {
public:
    DrawnTexts texts{DrawnTexts::PaintedIn::Paint};
    std::vector<int> commands;

    Sheet() {
        (void)Create({.parent = nullptr, .text = "", .style = WS_POPUP | WS_VISIBLE, .place = {40, 30, 540, 430}});
        texts.SetWindow(Window());
    }
    [[nodiscard]] AccessibleParts* GetAccessibleParts() override { return &texts; }

private:
    void OnCommand(int id, int) override { commands.push_back(id); }
};

class AccessibleTest : public testing::Test {
protected:
    const ComOfThread com;
    const test::TestSkin skin;
    const Look look = skin.MakeLook();
    Sheet sheet;

    static void RunPosted() {
        MSG message;
        while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageA(&message);
    }
};

TEST_F(AccessibleTest, EveryControlSaysWhatItIs) {
    CButton button, page;
    CCheckBox check;
    CRadioButton radio;
    CComboBox combo;
    CEdit edit, secret;
    CLabel label;
    CGroupBox group;
    CProgressBar bar;
    CIpAddressBox address;
    button.Create(sheet.Window(), kButton, "&Save && close", kButtonId, look);
    page.Create(sheet.Window(), kButtonMenuOptions, "Options", 1, look);
    page.SetSelected(true);
    check.Create(sheet.Window(), "Remember\nme", 2, look);
    check.SetChecked(true);
    radio.Create(sheet.Window(), "All", RadioPlace::FirstOfGroup, 3, look);
    label.Create(sheet.Window(), "N&ame:", LabelKind::Plain, SS_LEFT, -1, look);
    edit.Create(sheet.Window(), "Anna", ES_READONLY, 4, look);
    secret.Create(sheet.Window(), "hidden", ES_PASSWORD, 5, look);
    secret.SetCue("Password");
    combo.Create(sheet.Window(), 6, look);
    (void)combo.Add("First");
    (void)combo.Add("Second");
    combo.Select(1);
    group.Create(sheet.Window(), "Mail", 7, look);
    bar.Create(sheet.Window(), 8, look);
    bar.SetPosition(40);
    address.Create(sheet.Window(), 9, look);
    address.SetAddress(0x7F000001);
    struct Row {
        HWND window;
        LONG role;
        const wchar_t* name;
        const wchar_t* value;
        const wchar_t* shortcut;
        const wchar_t* action;
        DWORD state;  // that it has
    };
    const Row rows[] = {
        {button.Window(), ROLE_SYSTEM_PUSHBUTTON, L"Save & close", L"", L"Alt+S", L"Press", STATE_SYSTEM_FOCUSABLE},
        {page.Window(), ROLE_SYSTEM_PAGETAB, L"Options", L"", L"", L"Select", STATE_SYSTEM_SELECTED},
        {check.Window(), ROLE_SYSTEM_CHECKBUTTON, L"Remember me", L"", L"", L"Uncheck", STATE_SYSTEM_CHECKED},
        {radio.Window(), ROLE_SYSTEM_RADIOBUTTON, L"All", L"", L"", L"Check", STATE_SYSTEM_FOCUSABLE},
        {label.Window(), ROLE_SYSTEM_STATICTEXT, L"Name:", L"", L"Alt+A", L"", 0},
        // Named by the label before it, and by the cue.
        {edit.Window(), ROLE_SYSTEM_TEXT, L"Name", L"Anna", L"Alt+A", L"", STATE_SYSTEM_READONLY},
        {secret.Window(), ROLE_SYSTEM_TEXT, L"Password", L"", L"", L"", STATE_SYSTEM_PROTECTED},
        {combo.Window(), ROLE_SYSTEM_COMBOBOX, L"", L"Second", L"", L"Expand", STATE_SYSTEM_COLLAPSED},
        {group.Window(), ROLE_SYSTEM_GROUPING, L"Mail", L"", L"", L"", 0},
        {bar.Window(), ROLE_SYSTEM_PROGRESSBAR, L"", L"40%", L"", L"", STATE_SYSTEM_READONLY},
        {address.Window(), ROLE_SYSTEM_IPADDRESS, L"", L"127.0.0.1", L"", L"", 0},
    };
    for (const Row& row : rows) {
        const AccessibleReader reader(row.window);
        const SCOPED_TRACE(testing::Message() << "role " << row.role);
        ASSERT_TRUE(reader) << std::hex << reader.Found();
        EXPECT_EQ(reader.Role(), row.role);
        EXPECT_EQ(reader.Name(), row.name);
        EXPECT_EQ(reader.Value(), row.value);
        EXPECT_EQ(reader.Shortcut(), row.shortcut);
        EXPECT_EQ(reader.Action(), row.action);
        EXPECT_EQ(static_cast<DWORD>(reader.State()) & row.state, row.state);
        EXPECT_FALSE(reader.Is(STATE_SYSTEM_UNAVAILABLE | STATE_SYSTEM_INVISIBLE));
    }
    // What is hidden or does not work says so.
    for (const Row& row : rows) {
        const AccessibleReader reader(row.window);
        ::EnableWindow(row.window, FALSE);
        ::ShowWindow(row.window, SW_HIDE);
        EXPECT_TRUE(reader.Is(STATE_SYSTEM_UNAVAILABLE) && reader.Is(STATE_SYSTEM_INVISIBLE));
    }
}

TEST_F(AccessibleTest, TextsThatAWindowDrawsAreItsPartsAndNameItsFields) {
    CDrawnText title, unit, own, hidden;
    CEdit number, field;
    CCheckBox check;
    check.Create(sheet.Window(), "Ask after", 1, look);
    number.Create(sheet.Window(), "5", 0, 2, look);
    field.Create(sheet.Window(), "", 0, kFieldId, look);
    title.Create(sheet.texts, "A & B", LabelKind::Title, SS_LEFT, -1, look);
    unit.Create(sheet.texts, "minutes", LabelKind::Plain, SS_LEFT, -1, look);
    own.Create(sheet.texts, "Server:", LabelKind::Plain, SS_LEFT, kFieldId, look);
    hidden.Create(sheet.texts, "Nothing", LabelKind::Plain, SS_LEFT, -1, look);
    hidden.SetShown(false);
    title.Place({10, 10, 110, 30});
    check.Place({10, 40, 100, 60});
    number.Place({110, 40, 150, 60});
    unit.Place({160, 40, 260, 60});
    hidden.Place({152, 40, 158, 60});
    own.Place({10, 70, 100, 90});
    field.Place({110, 70, 200, 90});
    EXPECT_EQ(AccessibleReader(number.Window()).Name(), L"Ask after minutes");
    EXPECT_EQ(AccessibleReader(field.Window()).Name(), L"Server");

    const AccessibleReader reader(sheet.Window());
    ASSERT_TRUE(reader);
    ASSERT_EQ(reader.Count(), 7);
    EXPECT_EQ(reader.Name(1), L"A & B");
    EXPECT_EQ(reader.Role(1), ROLE_SYSTEM_STATICTEXT);
    EXPECT_FALSE(reader.Is(STATE_SYSTEM_INVISIBLE, 1));
    EXPECT_TRUE(reader.Is(STATE_SYSTEM_INVISIBLE, 4));
    LONG left = 0, top = 0, width = 0, height = 0;
    EXPECT_EQ(reader->accLocation(&left, &top, &width, &height, Part(1)), S_OK);
    EXPECT_EQ(std::vector({left, top, width, height}), std::vector<LONG>({50, 40, 100, 20}));
    VARIANT hit{};
    EXPECT_EQ(reader->accHitTest(60, 50, &hit), S_OK);
    EXPECT_EQ(hit.lVal, 1);
    EXPECT_EQ(reader->accHitTest(45, 425, &hit), S_OK);
    EXPECT_EQ(hit.lVal, CHILDID_SELF);
    EXPECT_EQ(reader->accHitTest(20, 20, &hit), S_FALSE);
    // From part to part and on to the windows.
    VARIANT next{};
    EXPECT_EQ(reader->accNavigate(NAVDIR_FIRSTCHILD, Part(0), &next), S_OK);
    EXPECT_EQ(next.lVal, 1);
    EXPECT_EQ(reader->accNavigate(NAVDIR_PREVIOUS, Part(1), &next), S_FALSE);
    EXPECT_EQ(reader->accNavigate(NAVDIR_NEXT, Part(4), &next), S_OK);
    EXPECT_EQ(next.vt, VT_DISPATCH);
    next.pdispVal->Release();
    EXPECT_EQ(reader->accNavigate(NAVDIR_NEXT, Part(7), &next), S_FALSE);
    // A text of the program is in the character set of its language.
    const CFonts russian(RUSSIAN_CHARSET);
    CDrawnText cyrillic;
    cyrillic.Create(sheet.texts, "\xC4\xE0", LabelKind::Plain, SS_LEFT, -1,
                    Look(russian, Skin(std::make_unique<test::FakeIni>(test::FakeIni::Values{}), "")));
    EXPECT_EQ(reader.Name(5), L"\x0414\x0430");
}

TEST_F(AccessibleTest, DefaultActionIsAClickThatTheUserCouldMake) {
    CButton button;
    CCheckBox check;
    CListBox list;
    button.Create(sheet.Window(), kButton, "Save", kButtonId, look);
    check.Create(sheet.Window(), "Remember", 2, look);
    list.Create(sheet.Window(), 3, look);
    check.Place({0, 40, 200, 60});
    list.Place({0, 100, 200, 300});
    list.Add("One");
    list.Add("Two");
    const AccessibleReader pressed(button.Window()), checked(check.Window()), listed(list.Window());
    // Later, so that a client does not wait for what the click opens.
    EXPECT_EQ(pressed.Do(), S_OK);
    EXPECT_TRUE(sheet.commands.empty());
    RunPosted();
    EXPECT_EQ(sheet.commands, std::vector{kButtonId});
    EXPECT_EQ(checked.Do(), S_OK);
    RunPosted();
    EXPECT_TRUE(checked.Is(STATE_SYSTEM_CHECKED));
    EXPECT_EQ(listed.Role(2), ROLE_SYSTEM_LISTITEM);
    EXPECT_EQ(listed.Do(2), S_OK);
    RunPosted();
    EXPECT_TRUE(listed.Is(STATE_SYSTEM_SELECTED, 2));
    EXPECT_FALSE(listed.Is(STATE_SYSTEM_SELECTED, 1));
    VARIANT selected{};
    EXPECT_EQ(listed->get_accSelection(&selected), S_OK);
    EXPECT_EQ(selected.lVal, 2);
    // Neither when it is asked for nor when it comes to it may the button be out of reach.
    sheet.commands.clear();
    for (const HWND kept : {button.Window(), sheet.Window()}) {
        EXPECT_EQ(pressed.Do(), S_OK);
        ::EnableWindow(kept, FALSE);
        RunPosted();
        EXPECT_EQ(pressed.Do(), E_FAIL);
        ::EnableWindow(kept, TRUE);
    }
    EXPECT_TRUE(sheet.commands.empty());
}

TEST_F(AccessibleTest, BearsNumbersThatMeanNothingAndOutlivesItsWindow) {
    CDrawnText text;
    text.Create(sheet.texts, "Text", LabelKind::Plain, SS_LEFT, -1, look);
    CButton button;
    button.Create(sheet.Window(), kButton, "Save", kButtonId, look);
    const AccessibleReader reader(sheet.Window());
    ASSERT_TRUE(reader);
    // Every call, about something.
    const auto results = [&](const VARIANT& child) {
        BSTR told = nullptr;
        VARIANT value{};
        LONG a = 0, b = 0, c = 0, d = 0;
        IDispatch* object = nullptr;
        return std::vector<HRESULT>{reader->get_accName(child, &told),
                                    reader->get_accRole(child, &value),
                                    reader->get_accState(child, &value),
                                    reader->accLocation(&a, &b, &c, &d, child),
                                    reader->accSelect(SELFLAG_TAKEFOCUS, child),
                                    reader->accDoDefaultAction(child),
                                    reader->accNavigate(NAVDIR_NEXT, child, &value),
                                    reader->get_accChild(child, &object)};
    };
    const auto all = [](HRESULT result) { return std::vector<HRESULT>(8, result); };
    VARIANT odd = Part(1);
    odd.vt = VT_R8;
    EXPECT_EQ(results(odd), all(E_INVALIDARG));
    for (const LONG number : {-1L, 3L, std::numeric_limits<LONG>::max(), std::numeric_limits<LONG>::min()}) {
        EXPECT_EQ(results(Part(number)), all(E_INVALIDARG)) << number;
    }
    EXPECT_EQ(reader->get_accName(Part(1), nullptr), E_POINTER);
    EXPECT_EQ(reader->get_accChildCount(nullptr), E_POINTER);
    EXPECT_EQ(reader->accSelect(SELFLAG_TAKESELECTION, Part(1)), E_INVALIDARG);
    // One object for all who ask, and none but for what the window shows.
    std::vector<AccessibleReader> held;
    for (int index = 0; index < 500; ++index) held.emplace_back(sheet.Window());
    for (const AccessibleReader& other : held) ASSERT_EQ(other.operator->(), reader.operator->());
    for (const LONG object : {OBJID_NATIVEOM, 0L, 1L, -25L}) {
        EXPECT_EQ(::SendMessageA(sheet.Window(), WM_GETOBJECT, 0, object), 0) << object;
    }
    HRESULT elsewhere = S_OK;
    std::thread([&] {
        LONG count = 0;
        elsewhere = reader->get_accChildCount(&count);
    }).join();
    EXPECT_EQ(elsewhere, RPC_E_WRONG_THREAD);

    const AccessibleReader ended(button.Window());
    EXPECT_EQ(ended.Do(), S_OK);  // under way when the window goes
    EndWindow(sheet.Window());
    RunPosted();
    EXPECT_EQ(results(Part(0)), all(CO_E_OBJNOTCONNECTED));
    EXPECT_EQ(results(Part(1)), all(CO_E_OBJNOTCONNECTED));
    LONG count = 0;
    EXPECT_EQ(ended->get_accChildCount(&count), CO_E_OBJNOTCONNECTED);
    VARIANT child{};
    EXPECT_EQ(reader->get_accFocus(&child), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(reader->get_accSelection(&child), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(reader->accHitTest(0, 0, &child), CO_E_OBJNOTCONNECTED);
}

}  // namespace
}  // namespace brennvar
