// The program with looks and texts that nobody should have made, and windows opened and closed in odd orders. It
// stays on the screen and goes on answering.
#include <gtest/gtest.h>

#include <filesystem>

#include "Product.h"
#include "support/HexBytes.h"
#include "unit/image/ImageSamples.h"

namespace brennvar::test {
namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;

constexpr int kCloseButton = 943;
constexpr char kAsks[] = R"(question tcp 10.1.2.3:1 10.9.9.9:2 4242 C:\Aurora\aurora.exe)";

// Clicks on the middle of a window, as a user does.
void ClickOn(HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    ::SetCursorPos((place.left + place.right) / 2, (place.top + place.bottom) / 2);
    INPUT inputs[2]{};
    for (INPUT& input : inputs) input.type = INPUT_MOUSE;
    inputs[0].mi.dwFlags = MOUSEEVENTF_LEFTDOWN;
    inputs[1].mi.dwFlags = MOUSEEVENTF_LEFTUP;
    ::SendInput(2, inputs, sizeof(INPUT));
}

// More than a megabyte of texts, of which some are long enough for anybody.
std::string EndlessLanguage() {
    std::string language = "[Language]\r\nDL_N_201_1\r\nDL_N_201_2=\r\nno key\r\n=no key\r\n";
    for (int number = 3; number < 1200; ++number) {
        language += "DL_N_201_" + std::to_string(number) + "=";
        if (number == 41 || number == 343 || number == 505) language += std::string(10'000, 'W');
        for (int word = 0; word < 160; ++word) language += number % 2 == 0 ? "endless" : "end less ";
        language += "\r\n";
    }
    return language;
}

class HostileTest : public ProductFixture {
protected:
    // The window lies on the screen, and its buttons of these numbers lie in it.
    static void ExpectInSight(HWND window, std::initializer_list<int> buttons) {
        RECT area{}, place{}, both{};
        ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
        ::GetWindowRect(window, &place);
        ::UnionRect(&both, &place, &area);
        EXPECT_TRUE(::EqualRect(&both, &area))
            << place.left << " " << place.top << " " << place.right << " " << place.bottom;
        for (const int id : buttons) {
            RECT button{};
            ::GetWindowRect(::GetDlgItem(window, id), &button);
            EXPECT_GE(std::min(button.right - button.left, button.bottom - button.top), 8L) << id;
            ::UnionRect(&both, &place, &button);
            EXPECT_TRUE(::EqualRect(&both, &place)) << id;
        }
    }
    void LeaveWhateverItSays() {
        Command(kExitCommand);
        const HWND exit = NextWindowWith(IDOK);
        ExpectInSight(exit, {IDOK, IDCANCEL});
        Require(PressWhenEnabled(exit, IDOK));
        ExpectEnd();
    }
};

TEST_F(HostileTest, IsUsedWithSpoiltPicturesEndlessTextsAndNoPlaceOnTheScreen) {
    Install();
    m_caption.clear();  // whatever the language says
    const std::filesystem::path assets = std::filesystem::path(BRENNVAR_SOURCE_FOLDER) / "assets" / "Skins";
    std::vector<std::string> pictures;
    for (const auto& entry : std::filesystem::directory_iterator(assets / "Default")) {
        if (entry.path().extension() == ".png") pictures.push_back(entry.path().filename().string());
    }
    std::sort(pictures.begin(), pictures.end());
    ASSERT_GT(pictures.size(), 20U);
    m_installation->Write("Languages/Endless/default.ini", EndlessLanguage());
    // The last ones are black and white bitmaps: width and height in groups of seven bits, then the rows.
    const struct {
        const char* name;
        std::vector<std::string> contents;  // of the pictures, in turn
        const char* language;
        DWORD place[5];  // as it was remembered
    } looks[] = {
        {"mixed",
         {std::string(5000, '\x5A'), TextFromHex(kRgbJpeg), "\0\0\x81\x80\0\1"s + std::string(2048, '\xAA'),
          "\0\0\3\x81\x80\0"s + std::string(16384, '\xAA')},
         "Endless",
         {0x7FFFFFFF, 0x7FFFFFFF, 0x80000000, 0x80000000, 0}},
        {"huge", {"\0\0\x88\0\x88\0"s + std::string(128 * 1024, '\xAA')}, "..\\x", {5000, 5000, 5001, 5001, 1}}};
    for (const auto& look : looks) {
        SCOPED_TRACE(look.name);
        for (std::size_t i = 0; i < pictures.size(); ++i) {
            m_installation->Write(std::string("Skins/") + look.name + "/" + pictures[i],
                                  look.contents[i % look.contents.size()]);
        }
        m_installation->Write(std::string("Skins/") + look.name + "/default.ini",
                              "[Color]\r\nCOLOR_TEXT_R=99999999999999999999\r\nCOLOR_TEXT_G\r\nCOLOR_PAGE_R=-1\r\n"
                              "[Image]\r\nBUTTON=..\\..\\x.png\r\nMAIN_TOP=\r\nBUTTON_CLOSE=NUL\r\n");
        std::ofstream(m_data + "\\settings.ini")
            << "[Skin]\r\nDirectory=" << look.name << "\r\n[Language]\r\nDirectory=" << look.language << "\r\n";
        const char* const values[] = {"WindowLeft", "WindowTop", "WindowRight", "WindowBottom", "WindowMaximised"};
        for (std::size_t i = 0; i < std::size(values); ++i) {
            ::RegSetKeyValueA(HKEY_CURRENT_USER, kUserKey, values[i], REG_DWORD, &look.place[i], sizeof(DWORD));
        }
        Start({kAsks});
        ExpectInSight(m_window, {461, 462, 429, 437, 439, 463, 427, kCloseButton});
        for (const int page : kPages) {
            Command(page);
            ExpectAnswers();
        }
        const HWND question = NextWindowWith(kNo);
        ExpectInSight(question, {kNo, kYes, kRemember});
        Answer(question, kNo);
        Command(kAboutCommand);
        const HWND about = NextWindowWith(IDOK);
        ExpectInSight(about, {IDOK});
        Answer(about, IDOK);
        LeaveWhateverItSays();
        Stop();
    }
}

TEST_F(HostileTest, QuestionsComeInTheMiddleOfAMenuAMoveAndAnExit) {
    // Each comes when the test says so: with a command beside the three that the interface starts with.
    Lines scenario;
    for (int command = 4; command < 8; ++command) {
        scenario.insert(scenario.end(), {"wait-for-records COMMAND " + std::to_string(command), kAsks});
    }
    Start(scenario);
    Activate();
    for (const DWORD mode : {GUI_INMENUMODE, GUI_INMOVESIZE}) {
        SCOPED_TRACE(mode);
        if (mode == GUI_INMENUMODE) {
            Ask(m_window, WM_COMMAND, kConnectionsPage);
            // Posted: where the system sees the pointer of a window that has just come is settled with the display
            // at leisure, and a click meanwhile goes astray.
            const HWND list = List();
            ::PostMessageA(list, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(200, 200));
            ::PostMessageA(list, WM_RBUTTONUP, 0, MAKELPARAM(200, 200));
        } else {
            ::PostMessageA(m_window, WM_SYSCOMMAND, SC_MOVE, 0);
        }
        ASSERT_TRUE(WaitUntil([&] { return (ModeOf(m_window) & mode) != 0; }));
        SendToService();
        const HWND question = NextWindowWith(kNo);
        ASSERT_TRUE(WaitUntil([&] { return ::IsWindowEnabled(::GetDlgItem(question, kNo)) != FALSE; }));
        // The window may still be on its way to the top when its buttons work already: as a user does, click again.
        bool isGone = false;
        for (int click = 0; click < 10 && !isGone; ++click) {
            ClickOn(::GetDlgItem(question, kNo));
            isGone = WaitUntil([&] { return !::IsWindow(question); }, 1s);
        }
        EXPECT_TRUE(isGone) << "no click has reached the button";
        EXPECT_EQ(ModeOf(m_window) & mode, 0U);
    }
    for (const bool exitFirst : {true, false}) {
        SCOPED_TRACE(exitFirst);
        Command(kExitCommand);
        const HWND exit = NextWindowWith(IDOK);
        SendToService();
        const HWND question = NextWindowWith(kNo);
        if (exitFirst) {
            ::PostMessageA(::GetDlgItem(exit, IDOK), WM_KEYDOWN, VK_ESCAPE, 0);
            EXPECT_TRUE(WaitUntil([&] { return !::IsWindowVisible(exit); }));
        }
        Answer(question, kNo);
        if (!exitFirst) Require(PressWhenEnabled(exit, IDCANCEL));
        ASSERT_TRUE(WaitUntil([&] { return !::IsWindow(exit) && ::IsWindowEnabled(m_window); }));
    }
    LeaveWhateverItSays();
}

}  // namespace
}  // namespace brennvar::test
