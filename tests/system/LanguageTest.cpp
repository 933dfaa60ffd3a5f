// Another language, from the Options page to the restarted program, in an installation of the test's own.
#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <set>

#include "Desktop.h"
#include "StandInProcess.h"

namespace brennvar::test {
namespace {

using namespace std::chrono_literals;

constexpr char kCaption[] = "Brennvar Personal Firewall";
constexpr char kRunningMutex[] = "Local\\BrennvarGUI";
constexpr char kQuestionCaption[] = "Confirm network connection";

// Numbers of commands and controls that automation relies on.
constexpr int kExitCommand = 376;
constexpr int kOptionsCommand = 437;
constexpr int kNo = 337;
constexpr int kMessage = 905;
constexpr int kSkins = 962;
constexpr int kLanguages = 964;
constexpr int kApply = 965;

class LanguageTest : public ::testing::Test {
protected:
    void SetUp() override {
        m_data = EmptyDataFolder();
        ::RegDeleteTreeA(HKEY_CURRENT_USER, R"(Software\Quorlan)");
        const std::filesystem::path installation = m_installation.Path();
        std::filesystem::copy(BuiltProgram(R"(src\app\BrennvarGUI.exe)"), installation);
        std::filesystem::copy(std::filesystem::path(BRENNVAR_SOURCE_FOLDER) / "assets" / "Languages",
                              installation / "Languages", std::filesystem::copy_options::recursive);
        std::filesystem::create_directories(installation / "Skins" / "Default");
    }
    void TearDown() override {
        if (m_restarted) ::TerminateProcess(m_restarted.Get(), 1);
    }

    void Start(const std::vector<std::string>& scenario) {
        m_service.emplace(scenario, "", m_data);
        ASSERT_TRUE(m_service->WaitForJournal("EVENT started")) << m_service->Output();
        ASSERT_TRUE(WaitUntil([] { return !UniqueMutex(::OpenMutexA(SYNCHRONIZE, FALSE, kRunningMutex)); }));
        m_interface.emplace(Quoted(m_installation.File("BrennvarGUI.exe")));
        m_window = WaitForProgramWindow(m_interface->Id(), kCaption);
        ASSERT_NE(m_window, nullptr);
        ASSERT_TRUE(WaitForCommands(3));
    }

    [[nodiscard]] bool WaitForCommands(std::size_t count) const {
        return WaitUntil([&] { return m_service->Journal("COMMAND").size() >= count; });
    }

    // A control of the page that is open.
    [[nodiscard]] HWND PageControl(int id) const {
        struct Search {
            int id;
            HWND found;
        } search{id, nullptr};
        ::EnumChildWindows(
            m_window,
            [](HWND window, LPARAM parameter) -> BOOL {
                auto& wanted = *reinterpret_cast<Search*>(parameter);
                if (::GetDlgCtrlID(window) != wanted.id || !::IsWindowVisible(window)) return TRUE;
                wanted.found = window;
                return FALSE;
            },
            reinterpret_cast<LPARAM>(&search));
        return search.found;
    }

    static LRESULT Ask(HWND window, UINT message, WPARAM first = 0, LPARAM second = 0) {
        DWORD_PTR answer = 0;
        ::SendMessageTimeoutA(window, message, first, second, SMTO_NORMAL, 5000, &answer);
        return static_cast<LRESULT>(answer);
    }

    // Opens the page and selects a language; false when the list does not have it.
    [[nodiscard]] bool Choose(const char* language) const {
        Ask(m_window, WM_COMMAND, kOptionsCommand);
        const HWND list = PageControl(kLanguages);
        const LRESULT row =
            Ask(list, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(language));
        return list != nullptr && row >= 0 && Ask(list, CB_SETCURSEL, static_cast<WPARAM>(row)) == row;
    }

    // Presses the button and waits for the message that follows.
    [[nodiscard]] HWND Apply() const {
        ::PostMessageA(PageControl(kApply), BM_CLICK, 0, 0);
        HWND message = nullptr;
        (void)WaitUntil(
            [&] { return (message = FindProgramWindow(m_interface->Id(), kCaption, m_window)) != nullptr; });
        return message;
    }

    [[nodiscard]] static bool Answer(HWND message, int button) {
        return PressWhenEnabled(message, button) && WaitUntil([&] { return !::IsWindow(message); });
    }

    // The main window of the program that the first one has started.
    [[nodiscard]] HWND WaitForRestarted() {
        HWND window = nullptr;
        (void)WaitUntil([&] {
            window = ::FindWindowA(nullptr, kCaption);
            return window != nullptr && ProcessOf(window) != m_interface->Id() && ::IsWindowVisible(window);
        });
        if (window == nullptr || ProcessOf(window) == m_interface->Id()) return nullptr;
        m_restarted.Reset(::OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE, FALSE, ProcessOf(window)));
        return window;
    }

    static DWORD ProcessOf(HWND window) {
        DWORD id = 0;
        ::GetWindowThreadProcessId(window, &id);
        return id;
    }

    const TempFolder m_installation;
    std::string m_data;
    std::optional<StandInProcess> m_service;
    std::optional<RunningProgram> m_interface;
    UniqueProcess m_restarted;
    HWND m_window = nullptr;
};

TEST_F(LanguageTest, ChoiceIsSentWhateverTheAnswerAndShowsAfterTheRestart) {
    Start({});
    std::vector<std::string> expected = m_service->Journal("COMMAND");
    ASSERT_EQ(WindowText(::GetDlgItem(m_window, kOptionsCommand)), "Options");

    // The lists have what is installed, with the current names selected.
    Ask(m_window, WM_COMMAND, kOptionsCommand);
    const HWND list = PageControl(kLanguages);
    ASSERT_EQ(Ask(list, CB_GETCOUNT), 4);
    EXPECT_EQ(WindowText(list), "English");
    EXPECT_EQ(WindowText(PageControl(kSkins)), "Default");
    std::set<std::string> names;
    for (WPARAM row = 0; row < 4; ++row) {
        EXPECT_EQ(Ask(list, CB_GETITEMDATA, row), static_cast<LRESULT>(row));
        Ask(list, CB_SETCURSEL, row);
        names.insert(WindowText(list));
    }
    EXPECT_EQ(names, (std::set<std::string>{"English", "German", "Russian", "Slovak"}));

    // The same again: no message, or the button would not come back, and no command, as the journal says below.
    ASSERT_TRUE(Choose("English"));
    DWORD_PTR ignored = 0;
    EXPECT_TRUE(::SendMessageTimeoutA(PageControl(kApply), BM_CLICK, 0, 0, SMTO_NORMAL, 5000, &ignored));
    EXPECT_EQ(FindProgramWindow(m_interface->Id(), kCaption, m_window), nullptr);

    ASSERT_TRUE(Choose("German"));
    HWND message = Apply();
    ASSERT_NE(message, nullptr);
    EXPECT_EQ(WindowText(::GetDlgItem(message, kMessage)),
              "Your skin and language setting has been changed. Changes will not be fully visible until program "
              "restart. Restart now?");
    EXPECT_EQ(m_service->Journal("COMMAND"), expected) << "sent before the answer";
    ASSERT_TRUE(Answer(message, IDCANCEL));
    expected.insert(expected.end(),
                    {"COMMAND 5596 0:12 5472:44656661756C74", "COMMAND 5596 0:13 5472:4765726D616E"});
    ASSERT_TRUE(WaitForCommands(expected.size()));
    EXPECT_TRUE(
        m_service->WaitForFile("settings.ini", "[Skin]\r\nDirectory=Default\r\n[Language]\r\nDirectory=German\r\n"))
        << m_service->Read("settings.ini");
    EXPECT_EQ(WindowText(::GetDlgItem(m_window, kOptionsCommand)), "Options");

    ASSERT_TRUE(Choose("Slovak"));
    message = Apply();
    ASSERT_NE(message, nullptr);
    ASSERT_TRUE(PressWhenEnabled(message, IDOK));
    const HWND restarted = WaitForRestarted();
    ASSERT_NE(restarted, nullptr);
    EXPECT_EQ(m_interface->WaitForEnd(), 0);
    EXPECT_EQ(WindowText(::GetDlgItem(restarted, kOptionsCommand)), "Mo\x9Enosti");
    // The choice, and then the start: protection has not been switched off in between.
    expected.insert(expected.end(), {"COMMAND 5596 0:12 5472:44656661756C74", "COMMAND 5596 0:13 5472:536C6F76616B",
                                     "COMMAND 5596 0:18 644:01", "COMMAND 5596 0:0C", "COMMAND 5596 0:0A"});
    ASSERT_TRUE(WaitForCommands(expected.size()));
    EXPECT_EQ(m_service->Journal("COMMAND"), expected);

    // It is a program like the first one.
    ::PostMessageA(restarted, WM_COMMAND, kExitCommand, 0);
    ASSERT_TRUE(WaitUntil(
        [&] { return (message = FindProgramWindow(ProcessOf(restarted), kCaption, restarted)) != nullptr; }));
    ASSERT_TRUE(PressWhenEnabled(message, IDOK));
    ASSERT_EQ(::WaitForSingleObject(m_restarted.Get(), 30000), WAIT_OBJECT_0);
    m_restarted.Reset();
}

TEST_F(LanguageTest, OpenQuestionKeepsTheProgramRunning) {
    Start({R"(question tcp 10.1.2.3:1 10.9.9.9:2 4242 C:\Aurora\aurora.exe)"});
    const HWND question = WaitForProgramWindow(m_interface->Id(), kQuestionCaption);
    ASSERT_NE(question, nullptr);
    ASSERT_TRUE(Choose("German"));
    const HWND message = Apply();
    ASSERT_NE(message, nullptr);
    ASSERT_TRUE(Answer(message, IDOK));
    ASSERT_TRUE(WaitForCommands(5));
    EXPECT_EQ(m_service->Journal("COMMAND").back(), "COMMAND 5596 0:13 5472:4765726D616E");
    ASSERT_TRUE(PressWhenEnabled(question, kNo));
    ASSERT_TRUE(WaitUntil([&] { return !m_service->Journal("CONFIRM").empty(); }));
    EXPECT_LT(AnswerTime(m_window, 5s), 5s);
    EXPECT_TRUE(::IsWindowVisible(m_window));
    EXPECT_TRUE(m_interface->IsRunning());
}

}  // namespace
}  // namespace brennvar::test
