// What a screen reader, which is another process, is told by the finished program.
#include <gtest/gtest.h>

#include <algorithm>

#include "Product.h"
#include "base/ComOfThread_win.h"
#include "support/AccessibleReader_win.h"

namespace brennvar::test {
namespace {

constexpr char kAurora[] = R"(C:\Program Files\Aurora\aurora.exe)";
constexpr int kGeneral = 0;

class AccessibilityTest : public ProductFixture {
protected:
    const ComOfThread m_com;
};

TEST_F(AccessibilityTest, QuestionIsReadOutAndAnswered) {
    Start({"dns 93.184.216.34 www.example.com", std::string("advice deny ") + kAurora,
           std::string("question tcp 10.1.2.3:49152 93.184.216.34:443 4242 ") + kAurora, "wait-for-answers 1"});
    const HWND dialog = NextQuestion();
    {
        const AccessibleReader reader(dialog);
        ASSERT_TRUE(reader) << std::hex << reader.Found();
        EXPECT_EQ(reader.Role(), ROLE_SYSTEM_ALERT);
        EXPECT_EQ(reader.Name(), L"Confirm network connection");
        EXPECT_EQ(reader.Description(),
                  L"aurora.exe\n"
                  L"C:\\Program Files\\Aurora\\aurora.exe\n"
                  L"is trying to communicate to\n"
                  L"www.example.com\n"
                  L"Reason: HTTPS - Secure web connection\n"
                  L"Connection details:\n"
                  L"Publisher: unknown\n"
                  L"Remote host: 93.184.216.34:443\n"
                  L"Protocol: TCP\n"
                  L"Local address: 10.1.2.3:49152\n"
                  L"Process ID: 4242\n"
                  L"General advice: Deny\n"
                  L"Allow this network communication?\n"
                  L"Yes allows and No blocks this connection only.");
    }
    std::vector<Told> told;
    WalkAccessible(dialog, told);
    const auto has = [&](LONG role, const std::wstring& name) {
        return std::any_of(told.begin(), told.end(),
                           [&](const Told& one) { return one.role == role && one.name == name; });
    };
    EXPECT_TRUE(has(ROLE_SYSTEM_STATICTEXT, L"www.example.com"));
    EXPECT_TRUE(
        has(ROLE_SYSTEM_CHECKBUTTON, L"Remember my answer and do not ask me next time for this application."));
    EXPECT_TRUE(has(ROLE_SYSTEM_LINK, L"Address..."));
    for (const wchar_t* const name : {L"Yes", L"No", L"Close"}) EXPECT_TRUE(has(ROLE_SYSTEM_PUSHBUTTON, name));

    const AccessibleReader yes(::GetDlgItem(dialog, kYes));
    ASSERT_TRUE(WaitUntil([&] { return !yes.Is(STATE_SYSTEM_UNAVAILABLE); }));
    EXPECT_EQ(yes.Do(), S_OK);
    ASSERT_TRUE(m_service->WaitForJournal("EVENT scenario-done"));
    // Decision 1: allow, this time.
    EXPECT_EQ(m_service->Journal("CONFIRM").at(0).substr(0, 25), "CONFIRM 276 0:03 4:01 8:0");
    EXPECT_TRUE(WaitUntil([&] { return yes.Role() == -1; })) << "the object of a question that has gone";
}

TEST_F(AccessibilityTest, PagesTellOfTheirFieldsAndRows) {
    Start({R"(rule deny C:\Tools\a.exe)", R"(rule allow C:\Tools\b.exe)"});
    Require(m_service->WaitForJournal("EVENT scenario-done"));
    std::vector<Told> told;
    // Every check box and field of every section has a name; the pages are tabs.
    std::size_t fields = 0;
    for (int section = kGeneral; section < 8; ++section) {
        OpenOptions(section);
        told.clear();
        WalkAccessible(m_window, told);
        for (const Told& one : told) {
            const bool isField = one.role == ROLE_SYSTEM_CHECKBUTTON || one.role == ROLE_SYSTEM_TEXT ||
                                 one.role == ROLE_SYSTEM_COMBOBOX || one.role == ROLE_SYSTEM_PUSHBUTTON;
            if (!isField) continue;
            ++fields;
            EXPECT_FALSE(one.name.empty())
                << "section " << section << ", role " << one.role << ", number " << ::GetDlgCtrlID(one.window);
        }
    }
    EXPECT_GT(fields, 50U);
    const auto tab = std::find_if(told.begin(), told.end(), [](const Told& one) {
        return one.role == ROLE_SYSTEM_PAGETAB && one.Is(STATE_SYSTEM_SELECTED);
    });
    ASSERT_NE(tab, told.end());
    EXPECT_EQ(tab->name, L"Options");

    OpenOptions(kGeneral);
    std::vector<Told> general;
    WalkAccessible(m_window, general);
    const auto box = std::find_if(general.begin(), general.end(),
                                  [](const Told& one) { return one.role == ROLE_SYSTEM_CHECKBUTTON; });
    ASSERT_NE(box, general.end());
    const AccessibleReader check(box->window);
    const bool before = check.Is(STATE_SYSTEM_CHECKED);
    EXPECT_EQ(check.Do(), S_OK);
    EXPECT_TRUE(WaitUntil([&] { return check.Is(STATE_SYSTEM_CHECKED) != before; }));
    EXPECT_EQ(check.Do(), S_OK);
    EXPECT_TRUE(WaitUntil([&] { return check.Is(STATE_SYSTEM_CHECKED) == before; }));

    Ask(m_window, WM_COMMAND, kApplicationsPage);
    Require(WaitUntil([&] { return ListRowCount(List()) == 2; }));
    const AccessibleReader list(List());
    EXPECT_EQ(list.Role(), ROLE_SYSTEM_LIST);
    EXPECT_TRUE(WaitUntil([&] { return list.Name(1).starts_with(L"Name: a.exe; "); }));
    for (const wchar_t* const cell : {LR"(Path: C:\Tools\a.exe)", L"Action: Deny"}) {
        EXPECT_NE(list.Name(1).find(cell), std::wstring::npos) << list.Name(1).c_str();
    }
    EXPECT_NE(list.Name(2).find(L"Action: Allow"), std::wstring::npos);
    EXPECT_EQ(list.Role(3), ROLE_SYSTEM_COLUMNHEADER);
    EXPECT_EQ(list.Name(3), L"Name");
    EXPECT_FALSE(list.Is(STATE_SYSTEM_SELECTED, 2));
    EXPECT_EQ(list->accSelect(SELFLAG_TAKESELECTION, Part(2)), S_OK);
    EXPECT_TRUE(list.Is(STATE_SYSTEM_SELECTED, 2));
    // Numbers that are none of its rows.
    for (const LONG row : {-1L, list.Count() + 1, 0x7FFFFFFFL}) EXPECT_EQ(list.Role(row), -1) << row;
    ExpectAnswers();
}

}  // namespace
}  // namespace brennvar::test
