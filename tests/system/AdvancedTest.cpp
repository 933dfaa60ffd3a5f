// The Advanced page of the finished program against the service stand-in, which keeps the rules and their order.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>

#include "Product.h"
#include "support/GoldenCipher.h"
#include "support/TempFolder.h"
#include "tree/TreeMessages_win.h"

namespace brennvar::test {
namespace {

constexpr int kAdvancedPage = 429, kSearch = 915, kLine = 911;
constexpr int kAdd = 1620, kEdit = 1621, kDelete = 1623, kUp = 1624, kDown = 1625, kUndo = 1628, kExport = 1629,
              kImport = 1630;
constexpr int kActionColumn = 1, kWhatColumn = 2, kDescriptionColumn = 7;

const std::string kReload = "COMMAND 5596 0:07";
// Commands that carry nothing but an identifier.
std::string ById(const std::string& code, char id) {
    return "COMMAND 5596 0:" + code + " 5464:" + Hex({&id, 1});
}

// Command 5 for the first of the four rules, switched off: its record begins at 4752.
const std::string kChangeOne = "COMMAND 5596 0:05 4752:01 4764:06 4768:01 4784:01 4786:01 5204:" + Hex("one");

class AdvancedTest : public ProductFixture {
protected:
    void StartWithRules(const Lines& rules) {
        Start(rules);
        const auto count = std::count_if(
            rules.begin(), rules.end(), [](const std::string& line) { return line.starts_with("advanced-rule "); });
        Require(m_service->WaitForJournal("EVENT scenario-done"));
        Ask(m_window, WM_COMMAND, kAdvancedPage);
        Require((m_list = List()) != nullptr);
        Require(WaitUntil([&] { return ListRowCount(m_list) == count; }));
    }
    [[nodiscard]] POINT PlaceOf(int row, int column) const {
        const LRESULT corner =
            ::SendMessageA(m_list, kTreeGetCellLeftTop, static_cast<WPARAM>(row), static_cast<LPARAM>(column));
        return {LOWORD(corner) + 12, HIWORD(corner) + 4};
    }
    void Mouse(UINT message, POINT point, WPARAM keys = 0) const {
        Ask(m_list, message, keys, MAKELPARAM(point.x, point.y));
    }
    void Click(int row, WPARAM keys = 0) const {
        Mouse(WM_LBUTTONDOWN, PlaceOf(row, kWhatColumn), MK_LBUTTON | keys);
        Mouse(WM_LBUTTONUP, PlaceOf(row, kWhatColumn), keys);
    }
    void Drag(int row, int before) const {
        Mouse(WM_LBUTTONDOWN, PlaceOf(row, kWhatColumn), MK_LBUTTON);
        Mouse(WM_MOUSEMOVE, {PlaceOf(row, kWhatColumn).x, PlaceOf(row, kWhatColumn).y + 8}, MK_LBUTTON);
        Mouse(WM_MOUSEMOVE, PlaceOf(before, kWhatColumn), MK_LBUTTON);
    }
    // "one two" with a star at each that is selected, and a minus at each that is off.
    [[nodiscard]] std::string Shown() const {
        std::string shown;
        // Read once: the list may be filled anew, with fewer rows, at any time.
        const Rows rows = ReadList(kDescriptionColumn + 1);
        for (std::size_t row = 0; row < rows.size(); ++row) {
            if (row > 0) shown += ' ';
            shown += rows[row][kDescriptionColumn];
            if (::SendMessageA(m_list, kTreeGetCheck, row, kActionColumn) == 0) shown += '-';
            if (::SendMessageA(m_list, kTreeIsRowSelected, row, 0) == 1) shown += '*';
        }
        return shown;
    }
    [[nodiscard]] bool WaitForShown(const std::string& wanted) const {
        const bool isShown = WaitUntil([&] { return Shown() == wanted; });
        if (!isShown) ADD_FAILURE() << "shown: " << Shown();
        return isShown;
    }
    [[nodiscard]] LRESULT SelectedCount() const { return ::SendMessageA(m_list, kTreeGetSelectedCount, 0, 0); }
    // What stands in the service's file, with a minus at each that is off.
    [[nodiscard]] bool WaitForStored(const std::string& wanted) const {
        constexpr std::size_t kRecord = 712, kEnabled = 8, kDescription = 452;
        std::string stored;
        const bool isStored = WaitUntil([&] {
            std::ifstream file(m_data + R"(\Rules\rules_advanced.conf)", std::ios::binary);
            const std::string rules = EncipherByHand({std::istreambuf_iterator<char>(file), {}}, kRecord);
            stored.clear();
            for (std::size_t at = 0; at + kRecord <= rules.size(); at += kRecord) {
                if (at > 0) stored += ' ';
                stored += rules.c_str() + at + kDescription;
                if (rules[at + kEnabled] == 0) stored += '-';
            }
            return stored == wanted;
        });
        if (!isStored) ADD_FAILURE() << "stored: " << stored;
        return isStored;
    }

    HWND m_list = nullptr;
};

TEST_F(AdvancedTest, RulesAreSwitchedMovedDeletedWrittenAndImportedCommandByCommand) {
    constexpr int kRemoteHost = 1573, kDescription = 1582, kCounts = 1510, kUndoOfApplications = 1500;
    // "one" to "four", of ports 1 to 4.
    StartWithRules({"advanced-rule deny tcp in any:1 any one", "advanced-rule allow udp out any any:2 two",
                    "advanced-rule deny tcp in any:3 any three", "advanced-rule allow udp out any any:4 four"});
    EXPECT_EQ(ReadList(8, 1), (Rows{{"1", "Deny", "TCP in", "port 1", "any", "any", "always", "one"}}));
    for (const int button : {kEdit, kDelete, kUp, kDown, kUndo}) EXPECT_FALSE(IsEnabled(button)) << button;
    const TempFolder folder;
    Press(kExport);
    AnswerFileDialog(NextWindow("Export the rules"), folder.File("mine"));
    const HWND done = NextMessage();
    EXPECT_TRUE(SaysAnywhere(done, "mine.fxz"));
    Answer(done, IDCANCEL);  // else it goes out by mail

    Ask(m_list, kTreeToggleCheck, 0, kActionColumn);
    EXPECT_TRUE(WaitForShown("one- two three four"));
    ExpectSent({kChangeOne + " 5464:01", kReload});

    // Space switches all that are selected, as the first of them.
    Click(0);
    Click(1, MK_CONTROL);
    Ask(m_list, WM_KEYDOWN, VK_SPACE);
    EXPECT_TRUE(WaitForShown("one* two* three four"));
    EXPECT_TRUE(WaitForRecords("COMMAND", 3 + m_sent.size() + 2));
    m_sent = Sent();

    // Ctrl with an arrow and the buttons move place by place; the selection goes with them.
    Click(3);
    EXPECT_TRUE(WaitUntil([&] { return IsEnabled(kUp); }));
    Press(kUp);
    Press(kUp);
    EXPECT_TRUE(WaitForShown("one four* two three"));
    ExpectSent({ById("1E", 4), kReload, ById("1E", 4), kReload});
    Press(kDown);
    ExpectSent({ById("1F", 4), kReload});
    EXPECT_TRUE(WaitForStored("one two four three"));

    // Dragged to before the first one; of several all go, in their order.
    Drag(2, 0);
    Mouse(WM_LBUTTONUP, PlaceOf(0, kWhatColumn));
    EXPECT_TRUE(WaitForShown("four* one two three"));
    ExpectSent({ById("1E", 4), ById("1E", 4), kReload});
    Click(2, MK_CONTROL);
    Drag(0, 3);
    Mouse(WM_LBUTTONUP, PlaceOf(3, kWhatColumn));
    EXPECT_TRUE(WaitForShown("one four* two* three"));
    ExpectSent({ById("1F", 4), kReload});
    Click(1);
    EXPECT_TRUE(WaitForShown("one four* two three")) << "a click without a drag selects one of them";

    // In another order, or when some are left out, there is nowhere to move to.
    SetText(Control(kSearch), "o");
    EXPECT_TRUE(WaitUntil([&] { return !IsEnabled(kUp) && !IsEnabled(kDown); }));
    EXPECT_NE(Text(kLine).find("end the search"), std::string::npos);
    SetText(Control(kSearch), "");
    EXPECT_TRUE(WaitUntil([&] { return IsEnabled(kUp); }));

    Click(2, MK_CONTROL);
    for (const int answer : {IDCANCEL, IDOK}) {
        ::PostMessageA(m_list, WM_KEYDOWN, VK_DELETE, 0);
        Answer(NextMessage(), answer);
    }
    ExpectSent({ById("06", 4), ById("06", 2), kReload});
    EXPECT_TRUE(WaitForStored("one three"));

    Press(kAdd);
    HWND editor = NextWindow("New rule");
    SetText(FindVisibleControl(editor, kRemoteHost), "192.0.2.7");
    SetText(FindVisibleControl(editor, kDescription), "five");
    Answer(editor, IDOK);
    EXPECT_TRUE(WaitForShown("one three five"));
    ExpectSent(
        {"COMMAND 5596 0:04 4760:01 4764:FFFFFFFF 4796:01 4800:C0 4802:0207FFFFFFFF 5204:" + Hex("five"), kReload});
    Click(1);
    ::PostMessageA(m_list, WM_KEYDOWN, VK_RETURN, 0);
    editor = NextWindow("Edit rule");
    SetText(FindVisibleControl(editor, kDescription), "trois");
    Answer(editor, IDOK);
    EXPECT_TRUE(WaitForShown("one trois* five"));
    ExpectSent(
        {"COMMAND 5596 0:05 4752:03 4760:01 4764:06 4768:01 4784:03 4786:03 5204:" + Hex("trois") + " 5464:03",
         kReload});
    EXPECT_TRUE(WaitForStored("one trois five"));

    Press(kImport);
    AnswerFileDialog(NextWindow("Import rules"), folder.File("mine.fxz"));
    Answer(NextWindowWith(kCounts), IDOK);
    EXPECT_TRUE(WaitForShown("one two three* four"));
    ExpectSent({kReload});
    EXPECT_TRUE(WaitUntil([&] { return IsEnabled(kUndo); }));
    EXPECT_NE(Text(kLine).find("imported"), std::string::npos);
    // The other page has nothing to take back.
    Command(kApplicationsPage);
    EXPECT_TRUE(WaitUntil([&] { return Control(kUndoOfApplications) != nullptr; }));
    EXPECT_FALSE(IsEnabled(kUndoOfApplications));
    Command(kAdvancedPage);
    EXPECT_TRUE(WaitUntil([&] { return Control(kUndo) != nullptr; }));
    Press(kUndo);
    EXPECT_TRUE(WaitForStored("one trois five"));
    ExpectSent({kReload});
}

TEST_F(AdvancedTest, WhatTheServiceDoesNotDoIsTakenBackAndToldOf) {
    StartWithRules(
        {"advanced-rule deny tcp in any:1 any one", "advanced-rule allow udp out any any:2 two", "refuse 1"});
    Ask(m_list, kTreeToggleCheck, 1, kActionColumn);
    EXPECT_TRUE(WaitUntil([&] { return Text(kLine).find("has not stored") != std::string::npos; }));
    EXPECT_EQ(Shown(), "one two");
    // The next one is stored, and the line is as it was.
    Ask(m_list, kTreeToggleCheck, 1, kActionColumn);
    EXPECT_TRUE(WaitForStored("one two-"));
    EXPECT_EQ(Text(kLine).find("has not stored"), std::string::npos);
    EXPECT_TRUE(WaitForRecords("COMMAND", 3 + 2 + 2));
    m_service->Stop();
    Ask(m_list, kTreeToggleCheck, 0, kActionColumn);
    EXPECT_TRUE(WaitUntil([&] { return Text(kLine).find("has not stored") != std::string::npos; }));
    EXPECT_EQ(Shown(), "one two-");
}

}  // namespace
}  // namespace brennvar::test
