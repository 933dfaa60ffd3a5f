// The finished program against the stand-ins: what a user sees, and what the service receives.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <utility>

#include "Product.h"
#include "config/ResourceIds.h"
#include "ui/ToolkitIds.h"

namespace brennvar::test {
namespace {

using namespace std::chrono_literals;

constexpr int kMessageText = 340, kServiceStatus = 920;

// A program that is asked about, and its path in hexadecimal.
constexpr char kAurora[] = R"(C:\Program Files\Aurora\aurora.exe)";
constexpr char kAuroraHex[] = "433A5C50726F6772616D2046696C65735C4175726F72615C6175726F72612E657865";

class ProductTest : public ProductFixture {};

TEST_F(ProductTest, TellsTheServiceWhenItStartsAndWhenItEnds) {
    constexpr int kMostAtStart = 22;  // the mode twice, and of the statistics five graphs and lists
    Start({});
    EXPECT_EQ(m_service->Journal("COMMAND"),
              (Lines{"COMMAND 5596 0:18 644:01", "COMMAND 5596 0:0C", "COMMAND 5596 0:0A"}));
    // Only what takes input is a window.
    int count = 1;
    (void)FindVisible(m_window, [&](HWND) { return ++count == 0; });
    EXPECT_LE(count, kMostAtStart);
    std::string title;
    for (const int page : kPages) {
        Command(page);
        const std::string before = title;
        ASSERT_TRUE(WaitUntil([&] { return (title = Text(IDC_PAGE_TITLE)) != before && !title.empty(); })) << page;
        EXPECT_EQ(FindVisibleChild(m_window, "Static"), nullptr) << page;
    }
    // Cancelled, nothing happens; confirmed, the service is told and the process ends with 0.
    Command(kExitCommand);
    Answer(NextMessage(), IDCANCEL);
    ExpectAnswers();
    EXPECT_EQ(Sent(), Lines());
    Leave();
    ExpectSent({"COMMAND 5596 0:0D", "COMMAND 5596 0:0B"});
}

TEST_F(ProductTest, RememberedAnswerBecomesARuleThatAnswersTheNextQuestion) {
    const std::string question = std::string("question tcp 10.1.2.3:49152 93.184.216.34:443 4242 ") + kAurora;
    Start({"dns 93.184.216.34 www.example.com", std::string("advice allow ") + kAurora, question,
           "wait-for-answers 1", question, "wait-for-answers 2"});
    const HWND dialog = NextQuestion();
    EXPECT_EQ(WindowText(::GetDlgItem(dialog, kMessageText)),
              "aurora.exe\n"
              "is trying to communicate to www.example.com.\n\n"
              "Connection details:\n"
              "Remote host: 93.184.216.34:443\n"
              "Reason: HTTPS - Secure web connection\n"
              "Protocol: TCP\n\n"
              "General advice: Allow\n\n"
              "Allow this network communication?");
    EXPECT_EQ(WindowText(::GetDlgItem(dialog, kRemember)),
              "Remember my answer\nand do not ask me next time\nfor this application.");
    EXPECT_FALSE(::IsWindowEnabled(m_window)) << "the question is modal to the control center";

    ASSERT_TRUE(PressWhenEnabled(dialog, kRemember));
    ASSERT_TRUE(WaitUntil([&] { return ::IsDlgButtonChecked(dialog, kRemember) == BST_CHECKED; }));
    ASSERT_TRUE(PressWhenEnabled(dialog, kYes));
    ASSERT_TRUE(m_service->WaitForJournal("EVENT scenario-done"));

    const auto answers = m_service->Journal("CONFIRM");
    ASSERT_EQ(answers.size(), 2U);
    // Kind 3, decision 3 (allow and remember), question 1 and then 2, process 4242.
    EXPECT_EQ(answers[0], std::string("CONFIRM 276 0:03 4:03 8:01 12:") + kAuroraHex + " 272:9210");
    EXPECT_EQ(answers[1], std::string("CONFIRM 276 0:03 4:03 8:02 12:") + kAuroraHex + " 272:9210");
    EXPECT_EQ(FindProgramWindow(m_interface->Id(), kQuestionCaption), nullptr);
    ExpectList(kApplicationsPage, {{"aurora.exe", kAurora, "Allow"}});
}

TEST_F(ProductTest, ShowsTrafficNoticesAndConnections) {
    // The process ids are higher than those of the programs that run here.
    Start({"process 900077 C:\\Windows\\Aurora.exe", "connection 12 10.1.2.3:49153 93.184.216.34:80 900078 0 0",
           "connection ESTAB-OUT 10.1.2.3:49152 93.184.216.34:443 900077 1000 2000",
           "listener udp 10.0.0.1:53 900077", "listener udp 10.0.0.2:53 900077", "totals 4000000000 7",
           "rate 0 700000", "wait-for-records TRAY 1", "notice ATTACK", "notice The first one.| https://x",
           "notice ATTACK", "notice REFRESH", "notice The second one."});
    // What flowed before the program was started does not count.
    EXPECT_TRUE(WaitForText(IDC_STATISTICS_IN + 2, "Total: 0 B"));
    // How much of a second each tick measures differs; that it flows does not.
    EXPECT_TRUE(WaitUntil([&] { return Text(IDC_STATISTICS_OUT + 1).ends_with("KB/s"); }))
        << Text(IDC_STATISTICS_OUT + 1);
    EXPECT_TRUE(WaitForText(IDC_STATISTICS_CONNECTIONS + 1, "2"));
    EXPECT_TRUE(WaitForText(IDC_STATISTICS_CONNECTIONS + 2, "listening: 2"));
    EXPECT_TRUE(WaitForText(IDC_STATISTICS_ATTACKS + 1, "2"));
    EXPECT_TRUE(WaitForText(IDC_STATISTICS_ATTACK_GRAPH, "Attack History: 0"));
    const HWND notices = Control(IDC_STATISTICS_NOTICES);
    ASSERT_TRUE(WaitUntil([&] { return ListRowCount(notices) == 2; }));
    const Rows rows = ListRows(notices, 2, 10);
    EXPECT_EQ(rows[0][1] + rows[1][1], "The second one.The first one.");

    // By the driver's state number, even where it is shown as unknown; listeners last, the higher address first.
    ExpectList(kConnectionsPage, {{"aurora.exe", "10.1.2.3:49152 -> 93.184.216.34:443", "ESTAB-OUT"},
                                  {"no process associated", "10.1.2.3:49153 -> 93.184.216.34:80", "?"},
                                  {"aurora.exe", "10.0.0.2:53", "LISTEN-UDP"},
                                  {"aurora.exe", "10.0.0.1:53", "LISTEN-UDP"}});
    // The status line goes on counting, whatever page is shown.
    EXPECT_TRUE(WaitForText(IDC_STATUS_CONNECTIONS, "Connections: 2 (+2)"));
}

TEST_F(ProductTest, DeadServiceNeverFreezesTheWindow) {
    // The service dies with its first process path to tell; the driver goes on with its table and its questions, of
    // which neither says what program it is about.
    StartService({"connection ESTAB-OUT 10.1.2.3:49152 93.184.216.34:443 900077 0 0",
                  "question tcp 10.1.2.3:1 10.9.9.9:2 900078", "question tcp 10.1.2.3:1 10.9.9.9:2 900079"},
                 "--die-after 1");
    StartInterface();
    EXPECT_EQ(m_service->WaitForEnd(), 3);
    ExpectList(kConnectionsPage, {{"no process associated"}});
    ASSERT_TRUE(WaitForText(kServiceStatus, "Firewall service: not reachable"));
    AnswerRounds answers(m_window);
    for (int question = 1; question <= 2; ++question) {
        const HWND dialog = NextQuestion();
        ASSERT_TRUE(PressWhenEnabled(dialog, kNo));
        ASSERT_TRUE(WaitUntil([&] {
            answers.Look();
            return !::IsWindow(dialog);
        }));
        // Each round is long enough for every timer and for the waits of the transports, with the pages opened
        // meanwhile.
        for (const int page : kPages) {
            Command(page);
            for (int look = 0; look < 25; ++look) {
                answers.Look();
                ::Sleep(10);
            }
        }
        answers.EndRound();
    }
    RecordProperty("longest_answer_ms", static_cast<int>(answers.LongestOfEach().count()));
    // A wait of a transport on the window's thread is longer (600 ms), and comes again with every tick.
    EXPECT_LT(answers.LongestOfEach(), 500ms);
    Leave();  // a dead service must not keep the process alive
}

TEST_F(ProductTest, SurvivesADriverThatAnswersNonsenseAndRandomBytesInEveryFile) {
    std::mt19937 random(20260309);
    const auto noise = [&](std::size_t size) {
        std::string bytes(size, '\0');
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random()); });
        return bytes;
    };
    std::filesystem::create_directories(m_data + R"(\Rules)");
    for (const char* name : {"config.conf", "settings.ini", "advice.dat", R"(Rules\rules.conf)"}) {
        std::ofstream(m_data + "\\" + name, std::ios::binary) << noise(5000);
    }
    // The connections' answer claims more than was asked for, the listeners' request fails, the totals are cut
    // short, and the question is longer than any path, without an end.
    Start({"connection ESTAB-OUT 10.1.2.3:49152 93.184.216.34:443 900077 0 0", "listener udp 10.0.0.1:53 900077",
           "hostile connections long 1000", "hostile listeners fail 1000", "hostile totals short 1000",
           "hostile question odd", std::string("question 47 10.1.2.3:0 10.9.9.9:0 4242 ") + kAurora});
    Answer(NextQuestion(), kNo);
    // What stands behind the real entry is zeros: the buffer of 196,608 is full of unknown connections, and all of
    // it is ours. 5,000 bytes hold 18 whole rule records, whatever their bytes mean.
    for (const auto& [page, count] : {std::pair{kConnectionsPage, 196608}, std::pair{kApplicationsPage, 18}}) {
        Ask(m_window, WM_COMMAND, static_cast<WPARAM>(page));
        EXPECT_TRUE(WaitUntil([&, count = count] { return ListRowCount(List()) == count; }))
            << ListRowCount(List());
    }
    ExpectAnswers();
}

TEST_F(ProductTest, QuestionLiesAboveTheControlCenterWhateverIsBroughtForward) {
    // The welcome brings the control center forward just when the first question comes.
    SetWelcomed(0);
    Start({std::string("question tcp 10.1.2.3:1 10.9.9.9:2 4242 ") + kAurora});
    const HWND question = NextQuestion();
    EXPECT_TRUE(WaitUntil([] {
        const HWND balloon = FindVisibleChild(nullptr, "BrennvarBalloon");
        return balloon && WindowText(balloon).starts_with("Welcome to Brennvar Personal Firewall\nWelcome to ");
    }));
    ASSERT_TRUE(WaitUntil([&] { return ::IsWindowEnabled(::GetDlgItem(question, kNo)) != FALSE; }));
    EXPECT_TRUE(WaitUntil([&] {
        RECT bar{}, place{}, both{};
        ::GetWindowRect(::FindWindowA("Shell_TrayWnd", nullptr), &bar);
        ::GetWindowRect(question, &place);
        return !::IsRectEmpty(&bar) && !::IntersectRect(&both, &place, &bar);
    })) << "the task bar lies over it";

    // Alone on the screen, it shows what has to be seen of it afterwards.
    ::ShowWindow(m_window, SW_HIDE);
    Pixels alone;
    ASSERT_TRUE(WaitUntil([&] {
        const auto before = std::exchange(alone, PixelsAt(question));
        return before == alone;
    }));
    const std::function<void()> ways[] = {
        [&] { ::ShowWindow(m_window, SW_SHOW); }, [&] { ::SetForegroundWindow(m_window); },
        [&] { ::ShowWindow(m_window, SW_MINIMIZE); }, [&] { ::ShowWindow(m_window, SW_RESTORE); },
        [&] { ::SetWindowPos(m_window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE); }};
    for (std::size_t way = 0; way < std::size(ways); ++way) {
        ways[way]();
        ExpectAnswers();
        EXPECT_TRUE(WaitUntil([&] { return PixelsAt(question) == alone; })) << way;
    }
    EXPECT_TRUE(::IsWindowVisible(m_window) && !::IsIconic(m_window));
    Answer(question, kNo);
}

}  // namespace
}  // namespace brennvar::test
