// Another language, from the Options page to the restarted program, in an installation of the test's own.
#include <gtest/gtest.h>

#include <filesystem>

#include "Product.h"

namespace brennvar::test {
namespace {

constexpr int kSkins = 962, kLanguages = 964;
constexpr int kResourcesSection = 8;

const std::string kDefaultSkin = "COMMAND 5596 0:12 5472:44656661756C74";
const std::string kGerman = "COMMAND 5596 0:13 5472:4765726D616E";

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

    // Opens the page, selects a language and applies it.
    void Choose(const char* language, Place place = Place::current()) const {
        OpenOptions(kResourcesSection);
        const HWND list = Control(kLanguages);
        const LRESULT row =
            Ask(list, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(language));
        Require(list != nullptr && row >= 0 && Ask(list, CB_SETCURSEL, static_cast<WPARAM>(row)) == row, place);
        Press(kApply);
    }
    // The main window of a process that is, or is not, the first one.
    [[nodiscard]] HWND WaitForMainWindow(bool isOfFirst) const {
        HWND window = nullptr;
        Require(WaitUntil([&] {
            window = FindVisible(nullptr, [&](HWND other) {
                return (ProcessOf(other) == m_interface->Id()) == isOfFirst &&
                       ::GetDlgItem(other, kOptionsPage) != nullptr;
            });
            return window != nullptr;
        }));
        return window;
    }
    [[nodiscard]] static std::string OptionsButton(HWND window) {
        return WindowText(::GetDlgItem(window, kOptionsPage));
    }

    UniqueProcess m_restarted;
};

TEST_F(LanguageTest, ChoiceIsSentWhateverTheAnswerAndShowsAfterTheRestart) {
    Start({"wait-for-records COMMAND 6", R"(question tcp 10.1.2.3:1 10.9.9.9:2 4242 C:\Aurora\aurora.exe)"});
    ASSERT_EQ(OptionsButton(m_window), "Options");
    // The lists have what is installed, with the current names selected.
    OpenOptions(kResourcesSection);
    ASSERT_EQ(Ask(Control(kLanguages), CB_GETCOUNT), 4);
    EXPECT_EQ(Text(kLanguages), "English");
    EXPECT_EQ(Text(kSkins), "Default");

    Choose("German");
    (void)NextMessage();
    EXPECT_EQ(Sent(), Lines()) << "sent before the answer";
    AnswerMessage(
        "Your skin and language setting has been changed. Changes will not be fully visible until program restart. "
        "Restart now?",
        IDCANCEL);
    ExpectSent({kDefaultSkin, kGerman});
    EXPECT_TRUE(WaitUntil([this] {
        return m_service->Read("settings.ini") ==
               "[Skin]\r\nDirectory=Default\r\n[Language]\r\nDirectory=German\r\n";
    })) << m_service->Read("settings.ini");
    EXPECT_EQ(OptionsButton(m_window), "Options");

    // An open question, which is in the new language, keeps the program running.
    SendToService();
    const HWND question = NextWindowWith(kNo);
    Choose("Slovak");
    Answer(NextMessage(), IDOK);
    ExpectSent({"COMMAND 5596 0:11", kDefaultSkin, "COMMAND 5596 0:13 5472:536C6F76616B"});
    Answer(question, kNo);
    ExpectAnswers();
    EXPECT_TRUE(::IsWindowVisible(m_window) && m_interface->IsRunning());

    // Without the program's file the same process comes back, in the new language, with a word why.
    const std::filesystem::path program = m_program, gone = m_installation->File("Gone.exe");
    std::filesystem::rename(program, gone);
    Choose("German");
    Answer(NextMessage(), IDOK);
    ASSERT_TRUE(WaitUntil([this] { return !::IsWindow(m_window); }));
    m_window = WaitForMainWindow(true);
    AnswerMessage("Das Programm konnte nicht neu gestartet werden. Es l\xE4uft weiter.");
    ExpectAnswers();
    ExpectSent({kDefaultSkin, kGerman, "COMMAND 5596 0:18 644:01", "COMMAND 5596 0:0C", "COMMAND 5596 0:0A"});
    std::filesystem::rename(gone, program);

    Choose("Slovak");
    Require(PressWhenEnabled(NextMessage(), IDOK));
    ExpectEnd();
    const HWND restarted = WaitForMainWindow(false);
    m_restarted.Reset(::OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE, FALSE, ProcessOf(restarted)));
    EXPECT_EQ(OptionsButton(restarted), "Mo\x9Enosti");
    // The choice, and then the start: protection has not been switched off in between.
    ExpectSent({kDefaultSkin, "COMMAND 5596 0:13 5472:536C6F76616B", "COMMAND 5596 0:18 644:01",
                "COMMAND 5596 0:0C", "COMMAND 5596 0:0A"});
}

}  // namespace
}  // namespace brennvar::test
