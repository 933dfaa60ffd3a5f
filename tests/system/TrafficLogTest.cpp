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

constexpr char kFirst[] = "10.0.0.5:1025 -> 93.184.216.34:443";
constexpr char kSecond[] = "10.0.0.5:137 <- 10.0.0.9:138";

class TrafficLogTest : public ProductFixture {
protected:
    [[nodiscard]] bool WaitForRows(int count) const {
        return WaitUntil([&] { return ListRowCount(m_list) == count; });
    }
    // Action, protocol, address and program of all rows, once all of them have come.
    void ExpectLines(const Lines& expected, Place place = Place::current()) const {
        Lines lines;
        (void)WaitUntil([&] {
            lines.clear();
            for (const auto& row : ReadList(5)) {
                lines.push_back(row[1] + "|" + row[2] + "|" + row[3] + "|" + row[4]);
            }
            return lines == expected;
        });
        EXPECT_EQ(lines, expected) << "line " << place.line();
    }
    void Pick(int choice, int item) const {
        const HWND box = Control(choice);
        Ask(box, CB_SETCURSEL, static_cast<WPARAM>(item));
        Ask(::GetParent(box), WM_COMMAND, MAKEWPARAM(choice, CBN_SELCHANGE), reinterpret_cast<LPARAM>(box));
    }
    // The details of a row say all of this.
    void ExpectDetails(int row, const std::string& caption, std::initializer_list<const char*> texts) const {
        Ask(m_list, kTreeSelectRow, static_cast<WPARAM>(row));
        ::PostMessageA(m_list, WM_KEYDOWN, VK_RETURN, 0);
        const HWND details = NextWindow(caption);
        for (const char* const text : texts) {
            EXPECT_TRUE(WaitUntil([&] { return SaysAnywhere(details, text); })) << text;
        }
        Close(details);
    }

    HWND m_list = nullptr;
};

TEST_F(TrafficLogTest, ListsFindsTellsExportsFollowsAndForgetsWhatTheServiceWrites) {
    // A datagram with a right checksum of its header, and of itself.
    Start({"log-message Service started",
           R"(log allowed tcp 10.0.0.5:1025 93.184.216.34:443 out C:\Tools\aurora.exe)",
           R"(log denied udp 10.0.0.5:137 10.0.0.9:138 in C:\Tools\b, c.exe)", "dns 93.184.216.34 www.example.com",
           "packet udp 10.0.0.5:137 10.0.0.9:138 out "
           "4500001e00010000401166c10a0000050a0000090089008a000aa9774142",
           "wait-for-records COMMAND 4", "log asked icmp 10.0.0.5:0 10.0.0.7:0 out", "wait-for-records COMMAND 5",
           "log-many 2000"});
    Ask(m_window, WM_COMMAND, kTrafficLogPage);
    Require((m_list = List()) != nullptr);
    const std::string message = "Message|IP|Service started|";
    const std::string denied = std::string("Denied|UDP|") + kSecond + "|b, c.exe";
    const std::string allowed = std::string("Allowed|TCP|") + kFirst + "|aurora.exe";
    ExpectLines({denied, allowed, message});  // newest first
    ExpectDetails(1, "Log details", {kFirst, R"(C:\Tools\aurora.exe)", "www.example.com", "Allowed"});
    Pick(kLogs, 1);
    ASSERT_TRUE(WaitForRows(1));
    ExpectDetails(0, "Packet data", {"0000  45 00 00 1e 00 01", "right"});
    Pick(kLogs, 0);

    Pick(kFilter, 2);
    ExpectLines({denied});
    const TempFolder folder;
    const std::string path = folder.File("log.csv");
    Press(kExport);
    AnswerFileDialog(NextWindow("Export the log"), path);
    ASSERT_TRUE(WaitUntil([&] { return !Content(path).empty(); }));
    const std::string text = Content(path);
    EXPECT_TRUE(text.starts_with("\xEF\xBB\xBFTime,Action,Protocol,Address,Program,Rule or event,Path\r\n"))
        << text;
    EXPECT_NE(text.find(std::string(",Denied,UDP,") + kSecond + ",\"b, c.exe\",,\"C:\\Tools\\b, c.exe\"\r\n"),
              std::string::npos)
        << text;
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 2) << "only what is shown";
    Pick(kFilter, 0);
    SetText(Control(kSearch), "AURORA");
    ExpectLines({allowed});
    SetText(Control(kSearch), "");
    ASSERT_TRUE(WaitForRows(3));

    Ask(m_list, kTreeSelectRow, 1);
    SendToService();
    ExpectLines({"Asked|ICMP|10.0.0.5:0 -> 10.0.0.7:0|", denied, allowed, message});  // while it is shown
    EXPECT_EQ(Ask(m_list, kTreeIsRowSelected, 2), 1) << "the selection goes with its row";
    // Who looks at older events goes on looking at them.
    Ask(m_list, kTreeEnsureVisible, 3);
    SendToService();
    EXPECT_TRUE(WaitForRows(2004));
    EXPECT_EQ(Ask(m_list, kTreeIsRowSelected, 2002), 1);

    Command(kDeleteLogs);
    Answer(NextWindow("Delete logs"), IDOK);  // today
    EXPECT_TRUE(WaitForRows(0));
    ExpectAnswers();
}

}  // namespace
}  // namespace brennvar::test
