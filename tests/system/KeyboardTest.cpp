// The finished program worked by the keyboard alone, as it is typed, and told of to a screen reader, which is
// another process: every page and section is walked by Tab, and what users do most is done without a pointer.
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "Product.h"
#include "TabWalk.h"
#include "Typing.h"
#include "base/ComOfThread_win.h"
#include "support/AccessibleReader_win.h"
#include "tree/TreeMessages_win.h"

namespace brennvar::test {
namespace {

// What comes after a key comes at once; a test that has failed need not wait for long.
constexpr std::chrono::seconds kBrief{10};
constexpr std::size_t kMostStops = 200;

class KeyboardTest : public ProductFixture {
protected:
    void ExpectWalkable(const std::string& where) const {
        const TabWalk walk(m_window);
        for (const auto* const faults : {&walk.Unseen(), &walk.Misplaced()}) {
            for (const std::string& fault : *faults) ADD_FAILURE() << where << ": " << fault;
        }
    }
    // Tab to a control, from wherever the keyboard is.
    void TabTo(HWND window, int id, Place place = Place::current()) const {
        const HWND wanted = FindVisibleControl(window, id);
        Require(wanted != nullptr, place);
        for (std::size_t step = 0; FocusOf(window) != wanted; ++step) {
            Require(step < kMostStops, place);
            const HWND before = FocusOf(window);
            Type({VK_TAB});
            Require(WaitUntil([&] { return FocusOf(window) != before; }, kBrief), place);
        }
    }
    // Where keys go.
    static void WaitForForeground(HWND window, Place place = Place::current()) {
        Require(WaitUntil([&] { return ::GetForegroundWindow() == window && FocusOf(window) != nullptr; }), place);
    }
    // What the window, or one in it, tells of its parts.
    [[nodiscard]] static std::vector<Told> TellAll(HWND window) {
        std::vector<Told> told;
        WalkAccessible(window, told);
        return told;
    }

    const ComOfThread m_com;
};

TEST_F(KeyboardTest, TabReachesAllOfEveryPageInTheOrderOfReadingAndFieldsHaveNames) {
    constexpr int kSections = 10;
    Start({R"(rule deny C:\Tools\a.exe)", "advanced-rule deny tcp in any:1 any one",
           "connection ESTAB-OUT 10.0.0.5:1025 93.184.216.34:443 4711 10 20"});
    Require(m_service->WaitForJournal("EVENT scenario-done"));
    Activate();
    for (const int page : kPages) {
        if (page == kOptionsPage) continue;
        Ask(m_window, WM_COMMAND, static_cast<WPARAM>(page));
        // While a log is read, the button that stops it comes and goes.
        constexpr int kStop = 918;
        ASSERT_TRUE(WaitUntil([&] { return FindVisibleControl(m_window, kStop) == nullptr; })) << page;
        ExpectWalkable("page " + std::to_string(page));
    }
    std::size_t fields = 0;
    for (int section = 0; section < kSections; ++section) {
        const std::string where = "section " + std::to_string(section);
        OpenOptions(section);
        ExpectWalkable(where);
        for (const Told& one : TellAll(::GetParent(Control(kOptionSections)))) {
            const bool isField = one.role == ROLE_SYSTEM_CHECKBUTTON || one.role == ROLE_SYSTEM_TEXT ||
                                 one.role == ROLE_SYSTEM_COMBOBOX || one.role == ROLE_SYSTEM_PUSHBUTTON;
            if (!isField) continue;
            ++fields;
            EXPECT_FALSE(one.name.empty())
                << where << ", role " << one.role << ", number " << ::GetDlgCtrlID(one.window);
        }
    }
    EXPECT_GT(fields, 50U);

    Ask(m_window, WM_COMMAND, kApplicationsPage);
    Require(WaitUntil([&] { return ListRowCount(List()) == 1; }));
    const AccessibleReader list(List());
    EXPECT_EQ(list.Role(), ROLE_SYSTEM_LIST);
    EXPECT_TRUE(WaitUntil([&] { return list.Name(1).starts_with(L"Name: a.exe; "); }));
    for (const wchar_t* const cell : {LR"(Path: C:\Tools\a.exe)", L"Action: Deny"}) {
        EXPECT_NE(list.Name(1).find(cell), std::wstring::npos) << list.Name(1).c_str();
    }
    EXPECT_EQ(list->accSelect(SELFLAG_TAKESELECTION, Part(1)), S_OK);
    EXPECT_TRUE(list.Is(STATE_SYSTEM_SELECTED, 1));
    // Numbers that are none of its rows.
    for (const LONG row : {-1L, list.Count() + 1, 0x7FFFFFFFL}) EXPECT_EQ(list.Role(row), -1) << row;
    ExpectAnswers();
}

TEST_F(KeyboardTest, AMenuOpensAtARowAndIsWalkedAndLeft) {
    Start({R"(rule deny C:\Tools\a.exe)", "advanced-rule deny tcp in any:1 any one",
           R"(log allowed tcp 10.0.0.5:1025 93.184.216.34:443 out C:\Tools\aurora.exe)",
           "connection ESTAB-OUT 10.0.0.5:1025 93.184.216.34:443 4711 10 20"});
    Require(m_service->WaitForJournal("EVENT scenario-done"));
    Activate();
    const auto menu = [this] {
        constexpr DWORD kMenuClass = 0x8000;
        return FindVisible(nullptr, [this](HWND window) {
            return ProcessOf(window) == m_interface->Id() && ::GetClassLongA(window, GCW_ATOM) == kMenuClass;
        });
    };
    // What the last key has changed is painted to its end.
    const auto rest = [&] {
        Pixels still;
        (void)WaitUntil([&] {
            ExpectAnswers();
            const Pixels before = std::exchange(still, PixelsAt(menu()));
            return before == still;
        });
        return still;
    };
    const auto walkMenu = [&](HWND from, std::initializer_list<WORD> keys, const std::string& where) {
        ASSERT_TRUE(WaitUntil([&] { return FocusOf(m_window) == from; }, kBrief)) << where;
        Type(keys);
        ASSERT_TRUE(WaitUntil([&] { return menu() != nullptr; }, kBrief)) << where;
        // Each arrow goes to another entry, which is seen, and back again.
        for (const WORD key : std::initializer_list<WORD>{VK_DOWN, VK_DOWN, VK_UP}) {
            const Pixels before = rest();
            Type({key});
            EXPECT_TRUE(WaitUntil([&] { return PixelsAt(menu()) != before; }, kBrief)) << where << ", key " << key;
        }
        Type({VK_ESCAPE});
        EXPECT_TRUE(WaitUntil([&] { return menu() == nullptr && FocusOf(m_window) == from; }, kBrief)) << where;
    };
    for (const int page : {kConnectionsPage, 429, kApplicationsPage, 463}) {
        const std::string where = "page " + std::to_string(page);
        Ask(m_window, WM_COMMAND, static_cast<WPARAM>(page));
        ASSERT_TRUE(WaitUntil([&] { return List() && ListRowCount(List()) > 0; })) << where;
        TabTo(m_window, ::GetDlgCtrlID(List()));
        walkMenu(List(), {VK_HOME, VK_APPS}, where);
    }
    constexpr int kModeCell = 1230;
    TabTo(m_window, kModeCell);
    walkMenu(Control(kModeCell), {VK_SPACE}, "the mode");
    // None of it has done anything.
    ExpectSent({});
}

TEST_F(KeyboardTest, AQuestionIsAnsweredARuleRemovedAnOptionChanged) {
    constexpr int kFileSharing = 5, kFirstOfFileSharing = 1002;
    const std::string path = R"(C:\Tools\a.exe)";
    const std::string hexPath = Hex(path);
    Start({"question tcp 10.1.2.3:49152 93.184.216.34:443 4242 " + path});
    const HWND question = NextQuestion();
    // It leaves the keyboard where it is; a user goes there by Alt and Tab.
    ::SetForegroundWindow(question);
    WaitForForeground(question);
    const AccessibleReader reader(question);
    ASSERT_TRUE(reader) << std::hex << reader.Found();
    EXPECT_EQ(reader.Role(), ROLE_SYSTEM_ALERT);
    const std::wstring told = reader.Description();
    EXPECT_TRUE(told.starts_with(L"a.exe\nC:\\Tools\\a.exe\nis trying to communicate to\n")) << told.c_str();
    const std::vector<Told> parts = TellAll(question);
    for (const wchar_t* const name : {L"Yes", L"No", L"Close"}) {
        EXPECT_TRUE(std::any_of(parts.begin(), parts.end(), [&](const Told& one) {
            return one.role == ROLE_SYSTEM_PUSHBUTTON && one.name == name;
        })) << name;
    }
    const HWND yes = ::GetDlgItem(question, kYes);
    Require(WaitUntil([&] { return ::IsWindowEnabled(yes) != FALSE; }));
    TabTo(question, kRemember);
    Type({VK_SPACE});
    TabTo(question, kNo);
    Type({'Y'});
    ASSERT_TRUE(WaitForRecords("CONFIRM", 1));
    EXPECT_EQ(m_service->Journal("CONFIRM"), Lines{"CONFIRM 276 0:03 4:03 8:01 12:" + hexPath + " 272:9210"});
    EXPECT_TRUE(WaitUntil([&] { return reader.Role() == -1; })) << "the object of a question that has gone";

    // The rule that it has made.
    WaitForForeground(m_window);
    TabTo(m_window, kApplicationsPage);
    Type({VK_SPACE});
    Require(WaitUntil([&] { return List() != nullptr && ListRowCount(List()) == 1; }));
    TabTo(m_window, ::GetDlgCtrlID(List()));
    Type({VK_HOME, VK_DELETE});
    ExpectSent({"COMMAND 5596 0:16 132:" + hexPath + " 644:03"});

    TabTo(m_window, kOptionsPage);
    Type({VK_SPACE});
    Require(WaitUntil([&] { return Control(kOptionSections) != nullptr; }));
    TabTo(m_window, kOptionSections);
    Type({VK_HOME});
    for (int section = 0; section < kFileSharing; ++section) Type({VK_DOWN});
    Require(WaitUntil([&] { return Control(kFirstOfFileSharing) != nullptr; }));
    TabTo(m_window, kFirstOfFileSharing);
    Type({VK_SPACE});
    TabTo(m_window, kApply);
    Type({VK_SPACE});
    ExpectSent({"COMMAND 5596 0:08 5468:01 5592:02", "COMMAND 5596 0:08 5592:03", "COMMAND 5596 0:07",
                "COMMAND 5596 0:01 4:" + Hex("Options changed") + " 132:" + Hex("File sharing")});
}

}  // namespace
}  // namespace brennvar::test
