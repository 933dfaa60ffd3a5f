// Another language, from the Options page to the restarted program, in an installation of the test's own.
#include <gtest/gtest.h>

#include <filesystem>

#include "Product.h"

namespace brennvar::test {
namespace {

constexpr int kSkins = 962, kLanguages = 964;
constexpr int kResourcesSection = 8;

class LanguageTest : public ProductFixture {
protected:
    void SetUp() override {
        ProductFixture::SetUp();
        Install();
        const std::filesystem::path installation = m_installation->Path();
        std::filesystem::copy(std::filesystem::path(BRENNVAR_SOURCE_FOLDER) / "assets" / "Languages",
                              installation / "Languages", std::filesystem::copy_options::recursive);
        std::filesystem::create_directories(installation / "Skins" / "Default");
    }
    void TearDown() override {
        if (m_restarted && ::TerminateProcess(m_restarted.Get(), 1))
            ::WaitForSingleObject(m_restarted.Get(), INFINITE);
    }

    // Opens the page and selects a language.
    void Choose(const char* language, Place place = Place::current()) const {
        OpenOptions(kResourcesSection);
        const HWND list = Control(kLanguages);
        const LRESULT row =
            Ask(list, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(language));
        Require(list != nullptr && row >= 0 && Ask(list, CB_SETCURSEL, static_cast<WPARAM>(row)) == row, place);
    }
    // The main window of the program that the first one has started.
    [[nodiscard]] HWND NextProgram() {
        HWND window = nullptr;
        Require(WaitUntil([&] {
            window = ::FindWindowA(nullptr, kCaption);
            return window != nullptr && ProcessOf(window) != m_interface->Id() && ::IsWindowVisible(window);
        }));
        m_restarted.Reset(::OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE, FALSE, ProcessOf(window)));
        return window;
    }

    UniqueProcess m_restarted;
};

TEST_F(LanguageTest, ChoiceIsSentWhateverTheAnswerAndShowsAfterTheRestart) {
    Start({});
    ASSERT_EQ(WindowText(::GetDlgItem(m_window, kOptionsPage)), "Options");

    // The lists have what is installed, with the current names selected.
    OpenOptions(kResourcesSection);
    const HWND list = Control(kLanguages);
    ASSERT_EQ(Ask(list, CB_GETCOUNT), 4);
    EXPECT_EQ(WindowText(list), "English");
    EXPECT_EQ(Text(kSkins), "Default");

    Choose("German");
    Press(kApply);
    (void)NextMessage();
    EXPECT_EQ(Sent(), Lines()) << "sent before the answer";
    AnswerMessage(
        "Your skin and language setting has been changed. Changes will not be fully visible until program restart. "
        "Restart now?",
        IDCANCEL);
    ExpectSent({"COMMAND 5596 0:12 5472:44656661756C74", "COMMAND 5596 0:13 5472:4765726D616E"});
    EXPECT_TRUE(WaitUntil([this] {
        return m_service->Read("settings.ini") ==
               "[Skin]\r\nDirectory=Default\r\n[Language]\r\nDirectory=German\r\n";
    })) << m_service->Read("settings.ini");
    EXPECT_EQ(WindowText(::GetDlgItem(m_window, kOptionsPage)), "Options");

    Choose("Slovak");
    Press(kApply);
    Require(PressWhenEnabled(NextMessage(), IDOK));
    const HWND restarted = NextProgram();
    ExpectEnd();
    EXPECT_EQ(WindowText(::GetDlgItem(restarted, kOptionsPage)), "Mo\x9Enosti");
    // The choice, and then the start: protection has not been switched off in between.
    ExpectSent({"COMMAND 5596 0:12 5472:44656661756C74", "COMMAND 5596 0:13 5472:536C6F76616B",
                "COMMAND 5596 0:18 644:01", "COMMAND 5596 0:0C", "COMMAND 5596 0:0A"});
}

TEST_F(LanguageTest, OpenQuestionKeepsTheProgramRunning) {
    Start({R"(question tcp 10.1.2.3:1 10.9.9.9:2 4242 C:\Aurora\aurora.exe)"});
    const HWND question = NextQuestion();
    Choose("German");
    Press(kApply);
    Answer(NextMessage(), IDOK);
    ExpectSent({"COMMAND 5596 0:12 5472:44656661756C74", "COMMAND 5596 0:13 5472:4765726D616E"});
    Require(PressWhenEnabled(question, kNo));
    ASSERT_TRUE(WaitForRecords("CONFIRM", 1));
    ExpectAnswers();
    EXPECT_TRUE(::IsWindowVisible(m_window));
    EXPECT_TRUE(m_interface->IsRunning());
}

}  // namespace
}  // namespace brennvar::test
