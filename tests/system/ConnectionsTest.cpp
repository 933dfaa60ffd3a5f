// The Connections page of the finished program against the stand-ins of service and driver.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>

#include "Product.h"
#include "config/ResourceIds.h"
#include "support/TempFolder.h"
#include "tree/TreeMessages_win.h"

namespace brennvar::test {
namespace {

using namespace std::chrono_literals;

constexpr int kDetails = 1280, kBlock = 1281, kTerminate = 1282, kRule = 1284, kLocate = 1285;
constexpr int kFilter = 1286, kGrouped = 1287, kSearch = 915;

// Another command for what the shell opens addresses of the web with, as long as this lives. Wine looks for it
// among those of the machine only, which are those of the prefix.
class BrowserInstead {
public:
    explicit BrowserInstead(const std::string& command) {
        std::array<char, 1024> text{};
        DWORD size = text.size();
        if (::RegGetValueA(HKEY_LOCAL_MACHINE, kKey, nullptr, RRF_RT_ANY | RRF_NOEXPAND, nullptr, text.data(),
                           &size) == ERROR_SUCCESS) {
            m_before = text.data();
        }
        Set(command);
    }
    BrowserInstead(const BrowserInstead&) = delete;
    BrowserInstead& operator=(const BrowserInstead&) = delete;
    ~BrowserInstead() { Set(m_before); }

private:
    static constexpr char kKey[] = R"(Software\Classes\https\shell\open\command)";
    static void Set(const std::string& command) {
        ::RegSetKeyValueA(HKEY_LOCAL_MACHINE, kKey, nullptr, REG_SZ, command.c_str(),
                          static_cast<DWORD>(command.size() + 1));
    }
    std::string m_before;
};

class ConnectionsTest : public ProductFixture {
protected:
    void OpenPage(int rowCount) {
        Require(m_service->WaitForJournal("EVENT driver-loaded"));
        Ask(m_window, WM_COMMAND, kConnectionsPage);
        Require((m_list = List()) != nullptr);
        Require(WaitForRows(rowCount));
    }
    [[nodiscard]] bool WaitForRows(int count) const {
        return WaitUntil([&] { return ListRowCount(m_list) == count; });
    }
    void Select(int row) const {
        Ask(m_list, kTreeSelectRow, static_cast<WPARAM>(row));
        Ask(m_list, kTreeFocusRow, static_cast<WPARAM>(row));
    }
    // An action of the menu, as a button would tell the page of it.
    void Do(int action) const { ::PostMessageA(::GetParent(m_list), WM_COMMAND, static_cast<WPARAM>(action), 0); }
    // The first column of all rows.
    [[nodiscard]] std::string Names() const {
        std::string names;
        for (const auto& row : ReadList(1)) names += row[0] + " ";
        return names;
    }
    [[nodiscard]] std::string Column(int column, int columns = 10) const {
        std::string texts;
        for (const auto& row : ReadList(columns)) texts += row[static_cast<std::size_t>(column)] + " ";
        return texts;
    }
    HWND m_list = nullptr;
};

TEST_F(ConnectionsTest, TellsOfARowGoesToItsRuleAndItsPlaceTerminatesAndBlocks) {
    const TempFolder folder;
    const std::string file = folder.File("asked.txt");
    const BrowserInstead browser(R"(cmd.exe /c echo "%1">)" + file);
    // The rule as the service has it, in other letters than those of the list. Blocked for 5 seconds.
    Start({"option 18 5", "process 900077 C:\\Windows\\Aurora.exe", R"(rule deny C:\Tools\a.exe)",
           R"(rule allow C:\WINDOWS\aurora.EXE)", "dns 93.184.216.34 www.example.com",
           "connection ESTAB-OUT 10.1.2.3:49152 93.184.216.34:443 900077 655360 2000", "start-process victim",
           "connection ESTAB-OUT 10.1.2.3:49153 93.184.216.35:443 victim 0 0", "listener udp 10.0.0.1:53 900077"});
    OpenPage(3);
    ASSERT_TRUE(WaitUntil([&] { return Names() == "aurora.exe brennvar.exe aurora.exe "; })) << Names();
    EXPECT_EQ(Column(5), "640 KB 0 B  ") << "received; a listener has none";
    EXPECT_EQ(ReadList(9, 1)[0][8], R"(c:\windows\aurora.exe)");
    Select(0);
    ASSERT_TRUE(WaitUntil([&] { return IsEnabled(kDetails) && IsEnabled(kBlock); }));
    ::PostMessageA(m_list, WM_KEYDOWN, VK_RETURN, 0);
    const HWND details = NextWindow("Connection details");
    for (const char* const text : {"10.1.2.3 -> 93.184.216.34", "ESTAB-OUT", "www.example.com"}) {
        EXPECT_TRUE(WaitUntil([&] { return SaysAnywhere(details, text); })) << text;
    }
    Close(details);
    Do(kLocate);
    EXPECT_TRUE(WaitUntil([&] {
        return Content(file).find("https://www.brennvar.example/locate/index.php?ip=93%2E184%2E216%2E34") !=
               std::string::npos;
    })) << Content(file);
    Do(kRule);
    EXPECT_TRUE(WaitUntil([&] {
        const HWND list = List();
        return list != nullptr && list != m_list && Ask(list, kTreeGetFocusedRow) == 1 &&
               Ask(list, kTreeIsRowSelected, 1) == 1;
    }));
    OpenPage(3);

    constexpr std::string_view kStarted = "EVENT process-started";
    const auto id = static_cast<DWORD>(std::stoul(m_service->Journal(kStarted).at(0).substr(kStarted.size())));
    const UniqueProcess victim(::OpenProcess(SYNCHRONIZE, FALSE, id));
    ASSERT_TRUE(victim);
    for (const int answer : {IDCANCEL, IDOK}) {
        Select(1);
        ASSERT_TRUE(WaitUntil([&] { return IsEnabled(kTerminate); }));
        Press(kTerminate);
        const HWND question = NextMessage();
        EXPECT_TRUE(SaysAnywhere(question, "Process ID: " + std::to_string(id)));
        EXPECT_TRUE(SaysAnywhere(question, "brennvar.exe"));
        EXPECT_EQ(Sent(), Lines());
        Answer(question, answer);
    }
    ASSERT_TRUE(WaitForRecords("COMMAND", 5));
    const Lines sent = Sent();
    // The journal leaves out zeros, with which an identifier may begin as well.
    std::string bytes(reinterpret_cast<const char*>(&id), sizeof id);
    while (bytes.ends_with('\0')) bytes.pop_back();
    const std::size_t first = bytes.find_first_not_of('\0');
    EXPECT_EQ(sent[0], "COMMAND 5596 0:03 " + std::to_string(4748 + first) + ":" + Hex(bytes.substr(first)));
    EXPECT_TRUE(sent[1].starts_with("COMMAND 5596 0:01 4:" + Hex("Process termination") + " 132:")) << sent[1];
    EXPECT_NE(sent[1].find(Hex("\\brennvar.exe") + " 644:02"), std::string::npos) << sent[1];
    EXPECT_EQ(::WaitForSingleObject(victim.Get(), 30'000), WAIT_OBJECT_0);
    EXPECT_TRUE(WaitForRows(2));
    m_sent = sent;

    Select(1);
    EXPECT_TRUE(WaitUntil([&] { return !IsEnabled(kBlock); })) << "a listener has no other side";
    Select(0);
    ASSERT_TRUE(WaitUntil([&] { return IsEnabled(kBlock); }));
    Press(kBlock);
    ExpectSent({"COMMAND 5596 0:02 4744:5DB8D822",
                "COMMAND 5596 0:01 4:" + Hex("Blocked connection") + " 132:" + Hex("93.184.216.34") +
                    " 644:02 648:" + Hex("IP: 93.184.216.34. Blocking IP address for 5 seconds")});
    EXPECT_TRUE(WaitForRows(1));
    EXPECT_TRUE(WaitForRows(2)) << "blocked for a time only";
    EXPECT_TRUE(WaitUntil([] {
        const HWND balloon = ::FindWindowA("BrennvarBalloon", nullptr);
        return ::IsWindowVisible(balloon) &&
               WindowText(balloon).find("Blocking IP address for 5 seconds") != std::string::npos;
    }));
}

TEST_F(ConnectionsTest, KeepsSelectionSortAndGroupsWhileRowsComeAndGo) {
    Start({"process 1 C:\\Z\\one.exe", "process 2 C:\\A\\two.exe",
           "connection ESTAB-OUT 10.1.2.3:1 93.184.216.34:443 1 0 0",
           "connection ESTAB-OUT 10.1.2.3:3 93.184.216.34:443 2 0 0", "wait-for-records COMMAND 4", "clear-tables",
           "connection ESTAB-OUT 10.1.2.3:2 93.184.216.34:443 2 0 0",
           "connection ESTAB-OUT 10.1.2.3:3 93.184.216.34:443 2 0 0", "listener tcp 10.1.2.3:9 1"});
    OpenPage(2);
    ASSERT_TRUE(WaitUntil([&] { return Names() == "one.exe two.exe "; }));
    Ask(m_list, kTreeClickHeader, 8);  // by path
    ASSERT_TRUE(WaitUntil([&] { return Names() == "two.exe one.exe "; }));
    Select(0);
    SendToService();
    // The one that went is gone after one more reading.
    ASSERT_TRUE(WaitUntil(
        [&] { return Names() == "two.exe two.exe one.exe " && Column(2) == "ESTAB-OUT ESTAB-OUT LISTEN-TCP "; }));
    EXPECT_EQ(Ask(m_list, kTreeIsRowSelected, 1), 1);
    EXPECT_EQ(Ask(m_list, kTreeGetSelectedCount), 1);
    EXPECT_TRUE(WaitForText(IDC_STATUS_CONNECTIONS, "Connections: 2 (+1)"));

    Press(kGrouped);
    ASSERT_TRUE(WaitUntil([&] { return Names() == "two.exe two.exe two.exe one.exe one.exe "; }));
    EXPECT_EQ(Ask(m_list, kTreeIsRowSelected, 2), 1);
    Ask(m_list, kTreeSetExpanded, 0, 0);
    EXPECT_EQ(Names(), "two.exe one.exe one.exe ");
    SetText(Control(kSearch), "listen");
    ASSERT_TRUE(WaitUntil([&] { return Names() == "one.exe one.exe "; }));
    SetText(Control(kSearch), "");
    ASSERT_TRUE(WaitUntil([&] { return Names() == "two.exe one.exe one.exe "; })) << "still closed";

    // What was chosen is there again with the next start.
    m_interface.reset();
    StartInterface();
    OpenPage(5);
    const HWND filter = Control(kFilter);
    Ask(filter, CB_SETCURSEL, 2);
    Ask(::GetParent(filter), WM_COMMAND, MAKEWPARAM(kFilter, CBN_SELCHANGE), reinterpret_cast<LPARAM>(filter));
    EXPECT_TRUE(WaitUntil([&] { return Names() == "one.exe one.exe "; }));
}

TEST_F(ConnectionsTest, FullTablesDoNotHoldUpTheWindow) {
    // As much as the driver's buffers hold.
    Start({"connections 196608", "listeners 196608"});
    // What the machine's other work makes of the answers of a window that has little to do.
    AnswerRounds before(m_window);
    for (int round = 0; round < 2; ++round) {
        for (int look = 0; look < 25; ++look) {
            before.Look();
            ::Sleep(10);
        }
        before.EndRound();
    }
    OpenPage(2 * 196'608);
    Ask(m_list, kTreeClickHeader, 1);
    Select(5);
    // How long the first one has been there: a new reading tells.
    const auto age = [this] {
        const Rows first = ReadList(8, 1);
        return first.empty() ? std::string() : first[0][7];
    };
    AnswerRounds answers(m_window);
    for (int reading = 0; reading < 3; ++reading) {
        const std::string last = age();
        ASSERT_TRUE(WaitUntil([&] {
            answers.Look();
            return age() != last;
        }));
        answers.EndRound();
    }
    RecordProperty("longest_answer_ms", static_cast<int>(answers.LongestOfEach().count()));
    // A table that is made on the window's thread would take hundreds of milliseconds with every reading.
    EXPECT_LT(answers.LongestOfEach(), 250ms + 4 * before.LongestOfEach());
    EXPECT_EQ(Ask(m_list, kTreeGetSelectedCount), 1);
}

}  // namespace
}  // namespace brennvar::test
