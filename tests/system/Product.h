// What the tests of the finished program share: names and numbers that automation relies on, and the program with
// the service stand-in. What a test cannot go on without is required: it ends the test and tells the place.
#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>

#include "Desktop.h"
#include "StandInProcess.h"

namespace brennvar::test {

inline constexpr char kCaption[] = "Brennvar Personal Firewall";
inline constexpr char kQuestionCaption[] = "Confirm network connection";
inline constexpr char kUserKey[] = R"(Software\Quorlan\Brennvar Firewall)";
inline constexpr int kExitCommand = 376, kAboutCommand = 427;
inline constexpr int kOptionsPage = 437, kApplicationsPage = 439, kConnectionsPage = 462;
inline constexpr int kPages[] = {461, kConnectionsPage, 429, kOptionsPage, kApplicationsPage, 463};
inline constexpr int kOptionSections = 1100, kApply = 1101, kDiscard = 1120;
inline constexpr int kYes = 334, kNo = 337, kRemember = 573;
inline constexpr int kMessage = 905;

using Lines = std::vector<std::string>;
using Rows = std::vector<std::vector<std::string>>;

// As the journal writes bytes.
[[nodiscard]] std::string Hex(std::string_view text);
// All of a file; empty when there is none.
[[nodiscard]] std::string Content(const std::string& path);

class ProductFixture : public ::testing::Test {
protected:
    void SetUp() override;

    // Whether the user has been welcomed already: the balloon is a window of the program that comes at any time.
    static void SetWelcomed(DWORD isWelcomed);
    // The program in a folder of the test's own, for skins and languages beside it.
    void Install();

    void StartService(const Lines& scenario, const std::string& options = "");
    // Starts the interface and waits for its window.
    void StartInterface();
    // Both, and waits for what the interface sends at its start.
    void Start(const Lines& scenario, const std::string& options = "");
    // Begins anew in the same folders.
    void Stop();

    void Command(int command) const { ::PostMessageA(m_window, WM_COMMAND, static_cast<WPARAM>(command), 0); }
    // Opens a section of the Options page; its number counts from 0.
    void OpenOptions(int section) const;

    // A control of the page that is shown.
    [[nodiscard]] HWND Control(int id) const { return FindVisibleControl(m_window, id); }
    // What it holds, or a text of this number that the window or its page draws.
    [[nodiscard]] std::string Text(int id) const;
    [[nodiscard]] bool WaitForText(int id, const std::string& text) const {
        return WaitUntil([&] { return Text(id) == text; });
    }
    [[nodiscard]] bool IsEnabled(int id) const { return ::IsWindowEnabled(Control(id)) != FALSE; }
    void Press(int id) const { ::PostMessageA(Control(id), BM_CLICK, 0, 0); }
    static void SetText(HWND field, const std::string& text) {
        Ask(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
    }
    // The list of the page that is shown.
    [[nodiscard]] HWND List() const;
    [[nodiscard]] Rows ReadList(int columns, int maxRows = 1000) const;
    // Opens the page and waits for a list with these rows, each cut to as many columns as the first one has. One
    // that is filled while its cells are read one by one answers with some of the old and some of the new.
    void ExpectList(int page, const Rows& expected, Place place = Place::current()) const;

    // What the service got after the three commands of the start.
    [[nodiscard]] virtual Lines Sent() const;
    // These and no others have been sent since the last time.
    void ExpectSent(const Lines& lines, Place place = Place::current());
    // A command (17) beside those of the program, for a scenario that waits for it.
    static void SendToService(Place place = Place::current());
    // Waits until that many records have come in on the channel.
    [[nodiscard]] bool WaitForRecords(const std::string& channel, std::size_t count) const {
        return WaitUntil([&] { return m_service->Journal(channel).size() >= count; });
    }

    // Some control of the window holds the text.
    [[nodiscard]] static bool SaysAnywhere(HWND window, const std::string& text);
    // Another window of the program's, waited for.
    [[nodiscard]] HWND NextWindow(const std::string& caption, Place place = Place::current()) const;
    // One that has a control of this number in sight, whatever its texts say. Others come and go, such as the tip
    // of a list below the mouse.
    [[nodiscard]] HWND NextWindowWith(int control, Place place = Place::current()) const;
    // One with the main window's caption.
    [[nodiscard]] HWND NextMessage(Place place = Place::current()) const { return NextWindow(m_caption, place); }
    [[nodiscard]] HWND NextQuestion(Place place = Place::current()) const {
        return NextWindow(kQuestionCaption, place);
    }
    // Presses the button when it is enabled, and waits until the dialog has gone.
    static void Answer(HWND dialog, int button, Place place = Place::current());
    // As Windows' own menu does; waits until it has gone and the main window takes input.
    void Close(HWND dialog, Place place = Place::current()) const;
    // Windows' own dialog for a file.
    static void AnswerFileDialog(HWND dialog, const std::string& path);
    // The same with the message that comes now and says this.
    void AnswerMessage(const std::string& expected, int button = IDOK, Place place = Place::current()) const;
    // It ends of its own accord, with 0.
    void ExpectEnd(Place place = Place::current()) const;
    // Exits, as the user confirms.
    void Leave(Place place = Place::current()) const;
    // The window is there and not held up.
    void ExpectAnswers(Place place = Place::current()) const;
    // A window that is activated only now would close what a click has opened.
    void Activate() const;

    std::string m_program = BuiltProgram(R"(src\app\BrennvarGUI.exe)");
    std::string m_caption = kCaption;
    std::string m_data;
    std::optional<TempFolder> m_installation;
    std::optional<StandInProcess> m_service;
    std::optional<RunningProgram> m_interface;
    HWND m_window = nullptr;
    Lines m_sent;  // what has been expected
};

}  // namespace brennvar::test
