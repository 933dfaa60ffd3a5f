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

constexpr int kCloseButton = 943;

// The driver asks when the test says so: with a command beside the three that the interface starts with.
constexpr char kOnOrder[] = "wait-for-records COMMAND 4";
constexpr char kAsks[] = R"(question tcp 10.1.2.3:1 10.9.9.9:2 4242 C:\Aurora\aurora.exe)";

class HostileTest : public ProductFixture {
protected:
    void SetUp() override {
        ProductFixture::SetUp();
        Install();
        m_caption.clear();  // whatever the language says
    }

    // The dialog with this button, whatever its texts say. Other windows come and go, such as the tip of a list
    // below the mouse.
    [[nodiscard]] HWND NextDialog(int button, Place place = Place::current()) const {
        HWND dialog = nullptr;
        const auto fits = [&](HWND window) {
            return window != m_window && ProcessOf(window) == m_interface->Id() &&
                   ::GetDlgItem(window, button) != nullptr;
        };
        Require(WaitUntil([&] { return (dialog = FindVisible(nullptr, fits)) != nullptr; }), place);
        return dialog;
    }
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

    // Opens everything there is and leaves.
    void UseAllOfIt() {
        ExpectInSight(m_window, {461, 462, 429, 437, 439, 463, 427, kCloseButton});
        for (const int page : kPages) {
            Command(page);
            ExpectAnswers();
        }
        for (const auto& buttons : {std::initializer_list<int>{kNo, kYes, kRemember}, {IDOK}}) {
            const HWND dialog = NextDialog(*buttons.begin());
            ExpectInSight(dialog, buttons);
            Answer(dialog, *buttons.begin());
            if (*buttons.begin() == kNo) Command(kAboutCommand);
        }
        Leave();
    }
    void Leave() {
        Command(kExitCommand);
        const HWND exit = NextDialog(IDOK);
        ExpectInSight(exit, {IDOK, IDCANCEL});
        Require(PressWhenEnabled(exit, IDOK));
        ExpectEnd();
    }
};

using namespace std::string_literals;

TEST_F(HostileTest, IsUsedWithEveryPictureSpoilt) {
    const std::filesystem::path assets = std::filesystem::path(BRENNVAR_SOURCE_FOLDER) / "assets" / "Skins";
    std::vector<std::string> pictures;
    for (const auto& entry : std::filesystem::directory_iterator(assets / "Default")) {
        if (entry.path().extension() == ".png") pictures.push_back(entry.path().filename().string());
    }
    ASSERT_GT(pictures.size(), 20U);
    // The last ones are black and white bitmaps: width and height in groups of seven bits, then the rows.
    const struct {
        const char* name;
        std::string content;
    } skins[] = {{"garbage", std::string(5000, '\x5A')},
                 {"jpeg", TextFromHex(kRgbJpeg)},
                 {"line", "\0\0\x81\x80\0\1"s + std::string(2048, '\xAA')},
                 {"pole", "\0\0\3\x81\x80\0"s + std::string(16384, '\xAA')},
                 {"huge", "\0\0\xA0\0\xA0\0"s + std::string(512 * 4096, '\xAA')}};
    for (const auto& skin : skins) {
        SCOPED_TRACE(skin.name);
        for (const std::string& picture : pictures) {
            m_installation->Write(std::string("Skins/") + skin.name + "/" + picture, skin.content);
        }
        m_installation->Write(std::string("Skins/") + skin.name + "/default.ini",
                              "[Color]\r\nCOLOR_TEXT_R=99999999999999999999\r\nCOLOR_TEXT_G\r\nCOLOR_PAGE_R=-1\r\n"
                              "[Image]\r\nBUTTON=..\\..\\x.png\r\nMAIN_TOP=\r\nBUTTON_CLOSE=NUL\r\n");
        std::ofstream(m_data + "\\settings.ini") << "[Skin]\r\nDirectory=" << skin.name << "\r\n";
        Start({kAsks});
        UseAllOfIt();
        Stop();
    }
}

TEST_F(HostileTest, IsUsedWithALanguageOfEndlessTexts) {
    std::string language = "[Language]\r\nDL_N_201_1\r\nDL_N_201_2=\r\nno key\r\n=no key\r\n";
    for (int number = 3; number < 1200; ++number) {
        language += "DL_N_201_" + std::to_string(number) + "=";
        for (int word = 0; word < 160; ++word) language += number % 2 == 0 ? "endless" : "end less ";
        language += "\r\n";
    }
    // These are long enough for anybody.
    for (const int number : {41, 343, 505}) {
        const std::string key = "DL_N_201_" + std::to_string(number) + "=";
        language.replace(language.find(key), key.size(), key + std::string(10'000, 'W'));
    }
    ASSERT_GT(language.size(), 1'000'000U);
    m_installation->Write("Languages/Endless/default.ini", language);
    std::ofstream(m_data + "\\settings.ini") << "[Language]\r\nDirectory=Endless\r\n[Skin]\r\nDirectory=..\\x\r\n";
    Start({kAsks});
    UseAllOfIt();
}

TEST_F(HostileTest, OpensInSightWhateverPlaceIsRemembered) {
    const DWORD rows[][5] = {{0x7FFFFFFF, 0x7FFFFFFF, 0x80000000, 0x80000000, 0},
                             {0x80000000, 0x80000000, 0x7FFFFFFF, 0x7FFFFFFF, 1},
                             {5000, 5000, 5001, 5001, 0},
                             {0xFFFFFFFF, 0, 0, 0xFFFFFFFF, 0xFFFFFFFF}};
    for (const auto& row : rows) {
        const char* const names[] = {"WindowLeft", "WindowTop", "WindowRight", "WindowBottom", "WindowMaximised"};
        for (std::size_t i = 0; i < 5; ++i) {
            ::RegSetKeyValueA(HKEY_CURRENT_USER, kUserKey, names[i], REG_DWORD, &row[i], sizeof row[i]);
        }
        StartInterface();
        ExpectInSight(m_window, {kCloseButton});
        m_interface.reset();  // it is not to leave a better place behind
    }
}

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

TEST_F(HostileTest, QuestionEndsAMenuOrAMoveAndIsAnsweredWithTheMouse) {
    for (const DWORD mode : {GUI_INMENUMODE, GUI_INMOVESIZE}) {
        Start({kOnOrder, kAsks});
        Activate();
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
        const HWND question = NextDialog(kNo);
        ASSERT_TRUE(WaitUntil([&] { return ::IsWindowEnabled(::GetDlgItem(question, kNo)) != FALSE; }));
        // The window may still be on its way to the top when its buttons work already: as a user does, click again.
        bool isGone = false;
        for (int click = 0; click < 10 && !isGone; ++click) {
            ClickOn(::GetDlgItem(question, kNo));
            isGone = WaitUntil([&] { return !::IsWindow(question); }, 1s);
        }
        EXPECT_TRUE(isGone) << "no click has reached the button";
        EXPECT_EQ(ModeOf(m_window) & mode, 0U);
        Leave();
        Stop();
    }
}

TEST_F(HostileTest, ExitQuestionAndConnectionQuestionEndInEitherOrder) {
    for (const bool exitFirst : {true, false}) {
        Start({kOnOrder, kAsks});
        Command(kExitCommand);
        const HWND exit = NextDialog(IDOK);
        SendToService();
        const HWND question = NextDialog(kNo);
        if (exitFirst) {
            ::PostMessageA(::GetDlgItem(exit, IDOK), WM_KEYDOWN, VK_ESCAPE, 0);
            EXPECT_TRUE(WaitUntil([&] { return !::IsWindowVisible(exit); }));
        }
        Answer(question, kNo);
        if (!exitFirst) Require(PressWhenEnabled(exit, IDCANCEL));
        ASSERT_TRUE(WaitUntil([&] { return !::IsWindow(exit) && ::IsWindowEnabled(m_window); }));
        Leave();
        Stop();
    }
}

}  // namespace
}  // namespace brennvar::test
