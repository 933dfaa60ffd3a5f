// Another language, from the Options page to the restarted program, in an installation of the test's own.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "Product.h"

namespace brennvar::test {
namespace {

using namespace std::chrono_literals;

constexpr int kMessage = 905, kSkins = 962, kLanguages = 964, kApply = 1101;
constexpr int kResourcesSection = 7;

class LanguageTest : public ProductFixture {
protected:
    void SetUp() override {
        ProductFixture::SetUp();
        const std::filesystem::path installation = m_installation.Path();
        std::filesystem::copy(m_program, installation);
        m_program = m_installation.File("BrennvarGUI.exe");
        std::filesystem::copy(std::filesystem::path(BRENNVAR_SOURCE_FOLDER) / "assets" / "Languages",
                              installation / "Languages", std::filesystem::copy_options::recursive);
        std::filesystem::create_directories(installation / "Skins" / "Default");
    }
    void TearDown() override {
        if (m_restarted) ::TerminateProcess(m_restarted.Get(), 1);
    }

    // Opens the page and selects a language; false when the list does not have it.
    [[nodiscard]] bool Choose(const char* language) const {
        OpenOptions(kResourcesSection);
        const HWND list = FindVisibleControl(m_window, kLanguages);
        const LRESULT row =
            Ask(list, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(language));
        return list != nullptr && row >= 0 && Ask(list, CB_SETCURSEL, static_cast<WPARAM>(row)) == row;
    }
    // Presses the button and waits for the message that follows.
    [[nodiscard]] HWND Apply() const {
        ::PostMessageA(FindVisibleControl(m_window, kApply), BM_CLICK, 0, 0);
        return WaitForOther();
    }
    // The main window of the program that the first one has started.
    [[nodiscard]] HWND WaitForRestarted() {
        HWND window = nullptr;
        const bool isThere = WaitUntil([&] {
            window = ::FindWindowA(nullptr, kCaption);
            return window != nullptr && ProcessOf(window) != m_interface->Id() && ::IsWindowVisible(window);
        });
        if (!isThere) return nullptr;
        m_restarted.Reset(::OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE, FALSE, ProcessOf(window)));
        return window;
    }

    const TempFolder m_installation;
    UniqueProcess m_restarted;
};

TEST_F(LanguageTest, ChoiceIsSentWhateverTheAnswerAndShowsAfterTheRestart) {
    ASSERT_NO_FATAL_FAILURE(Start({}));
    ASSERT_TRUE(WaitForRecords("COMMAND", 3));
    std::vector<std::string> expected = m_service->Journal("COMMAND");
    ASSERT_EQ(WindowText(::GetDlgItem(m_window, kOptionsPage)), "Options");

    // The lists have what is installed, with the current names selected.
    OpenOptions(kResourcesSection);
    const HWND list = FindVisibleControl(m_window, kLanguages);
    ASSERT_EQ(Ask(list, CB_GETCOUNT), 4);
    EXPECT_EQ(WindowText(list), "English");
    EXPECT_EQ(WindowText(FindVisibleControl(m_window, kSkins)), "Default");
    std::set<std::string> names;
    for (WPARAM row = 0; row < 4; ++row) {
        EXPECT_EQ(Ask(list, CB_GETITEMDATA, row), static_cast<LRESULT>(row));
        Ask(list, CB_SETCURSEL, row);
        names.insert(WindowText(list));
    }
    EXPECT_EQ(names, (std::set<std::string>{"English", "German", "Russian", "Slovak"}));

    // The same again: no message, or the button would not come back, and no command, as the journal says below.
    ASSERT_TRUE(Choose("English"));
    EXPECT_NE(Ask(FindVisibleControl(m_window, kApply), BM_CLICK), kNoAnswer);
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
    ASSERT_TRUE(WaitForRecords("COMMAND", expected.size()));
    EXPECT_TRUE(
        m_service->WaitForFile("settings.ini", "[Skin]\r\nDirectory=Default\r\n[Language]\r\nDirectory=German\r\n"))
        << m_service->Read("settings.ini");
    EXPECT_EQ(WindowText(::GetDlgItem(m_window, kOptionsPage)), "Options");

    ASSERT_TRUE(Choose("Slovak"));
    message = Apply();
    ASSERT_NE(message, nullptr);
    ASSERT_TRUE(PressWhenEnabled(message, IDOK));
    const HWND restarted = WaitForRestarted();
    ASSERT_NE(restarted, nullptr);
    EXPECT_EQ(m_interface->WaitForEnd(), 0);
    EXPECT_EQ(WindowText(::GetDlgItem(restarted, kOptionsPage)), "Mo\x9Enosti");
    // The choice, and then the start: protection has not been switched off in between.
    expected.insert(expected.end(), {"COMMAND 5596 0:12 5472:44656661756C74", "COMMAND 5596 0:13 5472:536C6F76616B",
                                     "COMMAND 5596 0:18 644:01", "COMMAND 5596 0:0C", "COMMAND 5596 0:0A"});
    ASSERT_TRUE(WaitForRecords("COMMAND", expected.size()));
    EXPECT_EQ(m_service->Journal("COMMAND"), expected);

    // It is a program like the first one.
    ::PostMessageA(restarted, WM_COMMAND, kExitCommand, 0);
    message = WaitForProgramWindow(ProcessOf(restarted), kCaption, restarted);
    ASSERT_NE(message, nullptr);
    ASSERT_TRUE(PressWhenEnabled(message, IDOK));
    ASSERT_EQ(::WaitForSingleObject(m_restarted.Get(), 30000), WAIT_OBJECT_0);
    m_restarted.Reset();
}

TEST_F(LanguageTest, OpenQuestionKeepsTheProgramRunning) {
    Start({R"(question tcp 10.1.2.3:1 10.9.9.9:2 4242 C:\Aurora\aurora.exe)"});
    const HWND question = WaitForQuestion();
    ASSERT_NE(question, nullptr);
    ASSERT_TRUE(Choose("German"));
    const HWND message = Apply();
    ASSERT_NE(message, nullptr);
    ASSERT_TRUE(Answer(message, IDOK));
    ASSERT_TRUE(WaitForRecords("COMMAND", 5));
    EXPECT_EQ(m_service->Journal("COMMAND").back(), "COMMAND 5596 0:13 5472:4765726D616E");
    ASSERT_TRUE(PressWhenEnabled(question, kNo));
    ASSERT_TRUE(WaitUntil([&] { return !m_service->Journal("CONFIRM").empty(); }));
    EXPECT_LT(AnswerTime(m_window, 5s), 5s);
    EXPECT_TRUE(::IsWindowVisible(m_window));
    EXPECT_TRUE(m_interface->IsRunning());
}

}  // namespace
}  // namespace brennvar::test
