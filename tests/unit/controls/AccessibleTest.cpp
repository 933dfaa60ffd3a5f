#include "ui/Accessible_win.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <set>
#include <thread>

#include "base/ComOfThread_win.h"
#include "controls/Button_win.h"
#include "controls/CheckBox_win.h"
#include "controls/DrawnText_win.h"
#include "controls/Edit_win.h"
#include "controls/ListBox_win.h"
#include "support/AccessibleReader_win.h"
#include "support/ControlWindow.h"
#include "support/DrawnTexts_win.h"
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
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        return texts.Answer(message, wParam, lParam);
    }
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

// The pages of the gallery show what every control tells; here is what a user would not see there.
TEST_F(AccessibleTest, ControlsSayWhatTheyAreHoldAndDo) {
    CButton button;
    CCheckBox check;
    CEdit edit, secret;
    CLabel label;
    button.Create(sheet.Window(), kButton, "&Save && close", kButtonId, look);
    check.Create(sheet.Window(), "Remember\nme", 2, look);
    check.SetChecked(true);
    label.Create(sheet.Window(), "N&ame:", LabelKind::Plain, SS_LEFT, -1, look);
    edit.Create(sheet.Window(), "Anna", ES_READONLY, 4, look);
    secret.Create(sheet.Window(), "hidden", ES_PASSWORD, 5, look);
    secret.SetCue("Password");
    const struct {
        HWND window;
        const wchar_t *name, *value, *shortcut, *action;
        DWORD state;  // that it has
    } rows[] = {
        {button.Window(), L"Save & close", L"", L"Alt+S", L"Press", STATE_SYSTEM_FOCUSABLE},
        {check.Window(), L"Remember me", L"", L"", L"Uncheck", STATE_SYSTEM_CHECKED},
        // Named by the label before it, and by the cue.
        {edit.Window(), L"Name", L"Anna", L"Alt+A", L"", STATE_SYSTEM_READONLY},
        {secret.Window(), L"Password", L"", L"", L"", STATE_SYSTEM_PROTECTED},
    };
    for (const auto& row : rows) {
        const AccessibleReader reader(row.window);
        const SCOPED_TRACE(testing::Message() << "row " << &row - rows);
        ASSERT_TRUE(reader) << std::hex << reader.Found();
        EXPECT_EQ(reader.Name(), row.name);
        EXPECT_EQ(reader.Value(), row.value);
        EXPECT_EQ(reader.Shortcut(), row.shortcut);
        EXPECT_EQ(reader.Action(), row.action);
        EXPECT_EQ(static_cast<DWORD>(reader.State()) & row.state, row.state);
        EXPECT_FALSE(reader.Is(STATE_SYSTEM_UNAVAILABLE | STATE_SYSTEM_INVISIBLE));
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
    ASSERT_EQ(reader.Count(), 7);
    EXPECT_EQ(reader.Name(1), L"A & B");
    EXPECT_TRUE(reader.Is(STATE_SYSTEM_INVISIBLE, 4) && !reader.Is(STATE_SYSTEM_INVISIBLE, 1));
    VARIANT hit{}, next{};
    EXPECT_EQ(reader->accHitTest(60, 50, &hit), S_OK);
    EXPECT_EQ(hit.lVal, 1);
    EXPECT_EQ(reader->accHitTest(20, 20, &hit), S_FALSE);
    // From part to part and on to the windows.
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

TEST_F(AccessibleTest, ADrawnTextRepaintsWhereSomethingHasChangedAndIsReadByItsNumber) {
    constexpr RECT kNothing{}, kPlace{10, 20, 110, 60}, kOther{120, 0, 160, 30};
    CDrawnText text;
    text.Create(sheet.texts, "text", LabelKind::Plain, SS_LEFT, 7, look);
    text.Place(kPlace);
    const std::pair<std::function<void()>, RECT> rows[] = {
        {[&] { text.SetText("text"); }, kNothing},
        {[&] { text.SetText("abcdefg"); }, kPlace},
        {[&] { text.SetColour(look.colours.text); }, kNothing},
        {[&] { text.SetColour(look.colours.warning); }, kPlace},
        {[&] { text.SetShown(false); }, kPlace},
        {[&] { text.SetColour(look.colours.text); }, kNothing},
        {[&] { text.SetShown(true); }, kPlace},
        {[&] { text.Place(kOther); }, {kPlace.left, kOther.top, kOther.right, kPlace.bottom}},
    };
    for (const auto& [step, expected] : rows) {
        ::ValidateRect(sheet.Window(), nullptr);
        step();
        RECT invalid{};
        ::GetUpdateRect(sheet.Window(), &invalid, FALSE);
        EXPECT_TRUE(::EqualRect(&invalid, &expected)) << invalid.left << ' ' << invalid.right;
    }
    for (const int id : {6, -1}) EXPECT_EQ(test::DrawnText(sheet.Window(), id), std::nullopt);
    EXPECT_EQ(test::DrawnText(sheet.Window(), 7), "abcdefg");
    // Behind the end, and what no text is long enough for.
    for (const LPARAM before : {LPARAM{7}, LPARAM{1000}, LPARAM{-1}, LPARAM{-3}}) {
        EXPECT_EQ(::SendMessageA(sheet.Window(), kDrawnTextQuery, 7, before), 0x1'0000'0000);
    }
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
    EXPECT_EQ(listed.Do(2), S_OK);
    RunPosted();
    EXPECT_TRUE(listed.Is(STATE_SYSTEM_SELECTED, 2));
    EXPECT_FALSE(listed.Is(STATE_SYSTEM_SELECTED, 1));
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
    using All = std::set<HRESULT>;  // of every call about something
    const auto results = [&](const VARIANT& child) {
        BSTR told = nullptr;
        VARIANT value{};
        LONG a = 0, b = 0, c = 0, d = 0;
        IDispatch* object = nullptr;
        All all = {reader->get_accName(child, &told), reader->get_accRole(child, &value)};
        all.insert({reader->get_accState(child, &value), reader->accLocation(&a, &b, &c, &d, child)});
        all.insert({reader->accSelect(SELFLAG_TAKEFOCUS, child), reader->accDoDefaultAction(child)});
        all.insert({reader->accNavigate(NAVDIR_NEXT, child, &value), reader->get_accChild(child, &object)});
        return all;
    };
    VARIANT odd = Part(1);
    odd.vt = VT_R8;
    EXPECT_EQ(results(odd), All{E_INVALIDARG});
    for (const LONG number : {-1L, 3L, std::numeric_limits<LONG>::max(), std::numeric_limits<LONG>::min()}) {
        EXPECT_EQ(results(Part(number)), All{E_INVALIDARG}) << number;
    }
    EXPECT_EQ(reader->get_accName(Part(1), nullptr), E_POINTER);
    EXPECT_EQ(reader->get_accChildCount(nullptr), E_POINTER);
    EXPECT_EQ(reader->accSelect(SELFLAG_TAKESELECTION, Part(1)), E_INVALIDARG);
    // One object for all who ask, and none but for what the window shows.
    EXPECT_EQ(AccessibleReader(sheet.Window()).operator->(), reader.operator->());
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
    EXPECT_EQ(results(Part(0)), All{CO_E_OBJNOTCONNECTED});
    EXPECT_EQ(results(Part(1)), All{CO_E_OBJNOTCONNECTED});
    LONG count = 0;
    EXPECT_EQ(ended->get_accChildCount(&count), CO_E_OBJNOTCONNECTED);
    VARIANT child{};
    EXPECT_EQ(reader->get_accFocus(&child), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(reader->get_accSelection(&child), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(reader->accHitTest(0, 0, &child), CO_E_OBJNOTCONNECTED);
}

}  // namespace
}  // namespace brennvar
