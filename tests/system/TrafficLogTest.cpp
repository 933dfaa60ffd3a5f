// The Traffic Log page of the finished program, on logs that the service stand-in writes.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "Product.h"
#include "support/TempFolder.h"
#include "tree/TreeMessages_win.h"

namespace brennvar::test {
namespace {

constexpr int kTrafficLogPage = 463;
constexpr int kExport = 103, kLogs = 200, kFilter = 202, kSearch = 915;
constexpr int kDeleteLogs = 975;
constexpr int kFileName = 0x480, kFileNameBox = 0x47C;  // of Windows' own dialog, with and without a history

constexpr char kFirst[] = "10.0.0.5:1025 -> 93.184.216.34:443";
constexpr char kSecond[] = "10.0.0.5:137 <- 10.0.0.9:138";

class TrafficLogTest : public ProductFixture {
protected:
    void StartWithLogs(const Lines& more) {
        Lines scenario = {"log-message Service started",
                          R"(log allowed tcp 10.0.0.5:1025 93.184.216.34:443 out C:\Tools\aurora.exe)",
                          R"(log denied udp 10.0.0.5:137 10.0.0.9:138 in C:\Tools\b, c.exe)",
                          "dns 93.184.216.34 www.example.com"};
        scenario.insert(scenario.end(), more.begin(), more.end());
        Start(scenario);
        Ask(m_window, WM_COMMAND, kTrafficLogPage);
        Require((m_list = List()) != nullptr);
        Require(WaitForRows(3));
    }
    [[nodiscard]] bool WaitForRows(int count) const {
        return WaitUntil([&] { return ListRowCount(m_list) == count; });
    }
    // Action, protocol, address and program of all rows, once all of them have come.
    [[nodiscard]] bool WaitForLines(const Lines& expected) const {
        return WaitUntil([&] { return ReadLines() == expected; });
    }
    [[nodiscard]] Lines ReadLines() const {
        Lines lines;
        for (const auto& row : ReadList(5)) lines.push_back(row[1] + "|" + row[2] + "|" + row[3] + "|" + row[4]);
        return lines;
    }
    void Pick(int choice, int item) const {
        const HWND box = Control(choice);
        Ask(box, CB_SETCURSEL, static_cast<WPARAM>(item));
        Ask(::GetParent(box), WM_COMMAND, MAKEWPARAM(choice, CBN_SELCHANGE), reinterpret_cast<LPARAM>(box));
    }
    void ShowDetails(int row) const {
        Ask(m_list, kTreeSelectRow, static_cast<WPARAM>(row));
        ::PostMessageA(m_list, WM_KEYDOWN, VK_RETURN, 0);
    }
    // The field for a file's name in Windows' own dialog.
    [[nodiscard]] static HWND WaitForFileName(HWND dialog) {
        HWND field = nullptr;
        const bool isThere = WaitUntil([&] {
            field = FindVisibleControl(dialog, kFileName);
            if (!field) field = FindVisibleControl(dialog, kFileNameBox);
            return field != nullptr;
        });
        return isThere ? field : nullptr;
    }
    void Close(HWND dialog) const {
        ::PostMessageA(dialog, WM_CLOSE, 0, 0);
        EXPECT_TRUE(WaitUntil([&] { return !::IsWindow(dialog) && ::IsWindowEnabled(m_window); }));
    }

    HWND m_list = nullptr;
};

TEST_F(TrafficLogTest, ListsFindsAndFollowsWhatTheServiceWrites) {
    StartWithLogs({"wait-for-records COMMAND 4", "log asked icmp 10.0.0.5:0 10.0.0.7:0 out",
                   "wait-for-records COMMAND 5", "log-many 2000"});
    const std::string denied = std::string("Denied|UDP|") + kSecond + "|b, c.exe";
    const std::string allowed = std::string("Allowed|TCP|") + kFirst + "|aurora.exe";
    EXPECT_TRUE(WaitForLines({denied, allowed, "Message|IP|Service started|"})) << "newest first";
    Pick(kFilter, 2);
    EXPECT_TRUE(WaitForLines({denied}));
    Pick(kFilter, 0);
    SetText(Control(kSearch), "AURORA");
    EXPECT_TRUE(WaitForLines({allowed}));
    SetText(Control(kSearch), "");
    ASSERT_TRUE(WaitForRows(3));

    Ask(m_list, kTreeSelectRow, 1);
    SendToService();
    const std::string asked = "Asked|ICMP|10.0.0.5:0 -> 10.0.0.7:0|";
    EXPECT_TRUE(WaitForLines({asked, denied, allowed, "Message|IP|Service started|"})) << "while it is shown";
    EXPECT_EQ(Ask(m_list, kTreeIsRowSelected, 2), 1) << "the selection goes with its row";
    // Who looks at older events goes on looking at them.
    Ask(m_list, kTreeEnsureVisible, 3);
    SendToService();
    EXPECT_TRUE(WaitForRows(2004));
    EXPECT_EQ(Ask(m_list, kTreeIsRowSelected, 2002), 1);
}

TEST_F(TrafficLogTest, TellsAllOfAnEventAndOfAPacket) {
    // A datagram with a right checksum of its header, and of itself.
    StartWithLogs(
        {"packet udp 10.0.0.5:137 10.0.0.9:138 out "
         "4500001e00010000401166c10a0000050a0000090089008a000aa9774142"});
    ShowDetails(1);
    HWND details = NextWindow("Log details");
    for (const char* const text :
         {"10.0.0.5:1025 -> 93.184.216.34:443", R"(C:\Tools\aurora.exe)", "www.example.com", "Allowed"}) {
        EXPECT_TRUE(WaitUntil([&] { return SaysAnywhere(details, text); })) << text;
    }
    Close(details);
    Pick(kLogs, 1);
    ASSERT_TRUE(WaitForRows(1));
    ShowDetails(0);
    details = NextWindow("Packet data");
    EXPECT_TRUE(WaitUntil([&] { return SaysAnywhere(details, "0000  45 00 00 1e 00 01"); }));
    EXPECT_TRUE(SaysAnywhere(details, "right")) << "the checksum of the header";
    Close(details);
}

TEST_F(TrafficLogTest, ExportsWhatIsShownAndForgetsADay) {
    const TempFolder folder;
    StartWithLogs({});
    Pick(kFilter, 2);
    ASSERT_TRUE(WaitForRows(1));
    Press(kExport);
    const HWND dialog = NextWindow("Export the log");
    const HWND name = WaitForFileName(dialog);
    ASSERT_NE(name, nullptr);
    const std::string path = folder.File("log.csv");
    SetText(name, path);
    ::PostMessageA(dialog, WM_COMMAND, IDOK, reinterpret_cast<LPARAM>(::GetDlgItem(dialog, IDOK)));
    ASSERT_TRUE(WaitUntil([&] { return !Content(path).empty(); }));
    const std::string text = Content(path);
    EXPECT_TRUE(text.starts_with("\xEF\xBB\xBFTime,Action,Protocol,Address,Program,Rule or event,Path\r\n"))
        << text;
    EXPECT_NE(text.find(std::string(",Denied,UDP,") + kSecond + ",\"b, c.exe\",,\"C:\\Tools\\b, c.exe\"\r\n"),
              std::string::npos)
        << text;
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 2) << "only what is shown";

    Pick(kFilter, 0);
    ASSERT_TRUE(WaitForRows(3));
    Command(kDeleteLogs);
    Answer(NextWindow("Delete logs"), IDOK);  // today
    EXPECT_TRUE(WaitForRows(0));
    ExpectAnswers();
}

}  // namespace
}  // namespace brennvar::test
