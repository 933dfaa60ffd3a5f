// The program with looks and texts that nobody should have made, and windows opened and closed in odd orders. It
// stays on the screen and goes on answering.
#include <gtest/gtest.h>

#include <filesystem>

#include "Product.h"
#include "support/HexBytes.h"
#include "tree/TreeMessages_win.h"
#include "unit/image/ImageSamples.h"

namespace brennvar::test {
namespace {

using namespace std::chrono_literals;

constexpr char kValues[] = R"(Software\Quorlan\Brennvar Firewall)";
constexpr int kCloseButton = 943;

// The driver asks when the test says so: with a command beside the three that the interface starts with.
constexpr char kOnOrder[] = "wait-for-records COMMAND 4";
constexpr char kAsks[] = R"(question tcp 10.1.2.3:1 10.9.9.9:2 4242 C:\Aurora\aurora.exe)";

class HostileTest : public ProductFixture {
protected:
    void SetUp() override {
        ProductFixture::SetUp();
        std::filesystem::copy(m_program, m_installation.Path());
        m_program = m_installation.File("BrennvarGUI.exe");
        m_caption.clear();  // whatever the language says
    }

    [[nodiscard]] bool OrderQuestion() const {
        return WaitUntil([this] { return m_service->Journal("COMMAND").size() == 3; }) && SendToService();
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
            EXPECT_LT(AnswerTime(m_window, 5s), 1s) << page;
        }
        const HWND question = WaitForOther();
        ASSERT_NE(question, nullptr);
        ExpectInSight(question, {334, 337, 573});
        ASSERT_TRUE(Answer(question, kNo));
        Command(kAboutCommand);
        const HWND about = WaitForOther();
        ASSERT_NE(about, nullptr);
        ExpectInSight(about, {IDOK});
        ASSERT_TRUE(Answer(about, IDOK));
        Leave();
    }
    void Leave() {
        Command(kExitCommand);
        const HWND exit = WaitForOther();
        ASSERT_NE(exit, nullptr);
        ExpectInSight(exit, {IDOK, IDCANCEL});
        ASSERT_TRUE(PressWhenEnabled(exit, IDOK));
        EXPECT_EQ(m_interface->WaitForEnd(), 0);
    }

    void ExpectQuestionTakesAClick() const;

    const TempFolder m_installation;
};

using namespace std::string_literals;

TEST_F(HostileTest, IsUsedWithEveryPictureSpoilt) {
    const std::filesystem::path assets = std::filesystem::path(BRENNVAR_SOURCE_FOLDER) / "assets" / "Skins";
    std::vector<std::string> pictures;
    for (const auto& entry : std::filesystem::directory_iterator(assets / "Default")) {
        if (entry.path().extension() == ".png") pictures.push_back(entry.path().filename().string());
    }
    ASSERT_GT(pictures.size(), 20U);
    const auto jpeg = FromHex(kRgbJpeg);
    // The last ones are black and white bitmaps: width and height in groups of seven bits, then the rows.
    const struct {
        const char* name;
        std::string content;
    } skins[] = {{"garbage", std::string(5000, '\x5A')},
                 {"jpeg", {reinterpret_cast<const char*>(jpeg.data()), jpeg.size()}},
                 {"line", "\0\0\x81\x80\0\1"s + std::string(2048, '\xAA')},
                 {"pole", "\0\0\3\x81\x80\0"s + std::string(16384, '\xAA')},
                 {"huge", "\0\0\xA0\0\xA0\0"s + std::string(512 * 4096, '\xAA')}};
    for (const auto& skin : skins) {
        SCOPED_TRACE(skin.name);
        for (const std::string& picture : pictures) {
            m_installation.Write(std::string("Skins/") + skin.name + "/" + picture, skin.content);
        }
        m_installation.Write(std::string("Skins/") + skin.name + "/default.ini",
                             "[Color]\r\nCOLOR_TEXT_R=99999999999999999999\r\nCOLOR_TEXT_G\r\nCOLOR_PAGE_R=-1\r\n"
                             "[Image]\r\nBUTTON=..\\..\\x.png\r\nMAIN_TOP=\r\nBUTTON_CLOSE=NUL\r\n");
        std::filesystem::remove(m_data + "\\journal.txt");
        std::ofstream(m_data + "\\settings.ini") << "[Skin]\r\nDirectory=" << skin.name << "\r\n";
        ASSERT_NO_FATAL_FAILURE(Start({kAsks}));
        ASSERT_NO_FATAL_FAILURE(UseAllOfIt());
        m_service.reset();
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
    m_installation.Write("Languages/Endless/default.ini", language);
    std::ofstream(m_data + "\\settings.ini") << "[Language]\r\nDirectory=Endless\r\n[Skin]\r\nDirectory=..\\x\r\n";
    ASSERT_NO_FATAL_FAILURE(Start({kAsks}));
    ASSERT_NO_FATAL_FAILURE(UseAllOfIt());
}

TEST_F(HostileTest, OpensInSightWhateverPlaceIsRemembered) {
    const DWORD rows[][5] = {{0x7FFFFFFF, 0x7FFFFFFF, 0x80000000, 0x80000000, 0},
                             {0x80000000, 0x80000000, 0x7FFFFFFF, 0x7FFFFFFF, 1},
                             {5000, 5000, 5001, 5001, 0},
                             {0xFFFFFFFF, 0, 0, 0xFFFFFFFF, 0xFFFFFFFF}};
    for (const auto& row : rows) {
        const char* const names[] = {"WindowLeft", "WindowTop", "WindowRight", "WindowBottom", "WindowMaximised"};
        for (std::size_t i = 0; i < 5; ++i) {
            ::RegSetKeyValueA(HKEY_CURRENT_USER, kValues, names[i], REG_DWORD, &row[i], sizeof row[i]);
        }
        for (int column = 0; column < 7; ++column) {
            const DWORD width = column % 2 == 0 ? 0xFFFFFFFF : 0;
            ::RegSetKeyValueA(HKEY_CURRENT_USER, kValues, ("ConnectionsColumn" + std::to_string(column)).c_str(),
                              REG_DWORD, &width, sizeof width);
        }
        ASSERT_NO_FATAL_FAILURE(StartInterface());
        ExpectInSight(m_window, {kCloseButton});
        // Out of the screen by the user, it comes back as well.
        ::SetWindowPos(m_window, nullptr, -3000, 3000, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        Leave();
        ASSERT_NO_FATAL_FAILURE(StartInterface());
        ExpectInSight(m_window, {kCloseButton});
        Leave();
    }
}

// Presses a mouse button on a place of the screen, as a user does.
void ClickAt(POINT point, bool isRight) {
    ::SetCursorPos(point.x, point.y);
    INPUT inputs[2]{};
    for (INPUT& input : inputs) input.type = INPUT_MOUSE;
    inputs[0].mi.dwFlags = isRight ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_LEFTDOWN;
    inputs[1].mi.dwFlags = isRight ? MOUSEEVENTF_RIGHTUP : MOUSEEVENTF_LEFTUP;
    ::SendInput(2, inputs, sizeof(INPUT));
}
POINT MiddleOf(HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

// A question comes now, and the mouse answers it.
void HostileTest::ExpectQuestionTakesAClick() const {
    ASSERT_TRUE(OrderQuestion());
    const HWND question = WaitForOther();
    ASSERT_NE(question, nullptr);
    ASSERT_TRUE(WaitUntil([&] { return ::IsWindowEnabled(::GetDlgItem(question, kNo)) != FALSE; }));
    // The window may still be on its way to the top when its buttons work already: as a user does, click again.
    bool isGone = false;
    for (int click = 0; click < 10 && !isGone; ++click) {
        ClickAt(MiddleOf(::GetDlgItem(question, kNo)), false);
        isGone = WaitUntil([&] { return !::IsWindow(question); }, 1s);
    }
    EXPECT_TRUE(isGone) << "no click has reached the button";
}

// What keeps the input of the program's windows to itself at present (GUI_ flags).
DWORD ModeOf(HWND window) {
    GUITHREADINFO state{};
    state.cbSize = sizeof state;
    return ::GetGUIThreadInfo(::GetWindowThreadProcessId(window, nullptr), &state) ? state.flags : 0;
}

TEST_F(HostileTest, QuestionEndsAMenuOrAMoveAndIsAnsweredWithTheMouse) {
    for (const DWORD mode : {GUI_INMENUMODE, GUI_INMOVESIZE}) {
        std::filesystem::remove(m_data + "\\journal.txt");
        ASSERT_NO_FATAL_FAILURE(Start({kOnOrder, kAsks}));
        ::SetForegroundWindow(m_window);
        if (mode == GUI_INMENUMODE) {
            Ask(m_window, WM_COMMAND, kConnectionsPage);
            ClickAt(MiddleOf(FindVisibleChild(m_window, kTreeClass)), true);
        } else {
            ::PostMessageA(m_window, WM_SYSCOMMAND, SC_MOVE, 0);
        }
        ASSERT_TRUE(WaitUntil([&] { return (ModeOf(m_window) & mode) != 0; }));
        ASSERT_NO_FATAL_FAILURE(ExpectQuestionTakesAClick());
        EXPECT_EQ(ModeOf(m_window) & mode, 0U);
        Leave();
        m_service.reset();
    }
}

TEST_F(HostileTest, ExitQuestionAndConnectionQuestionEndInEitherOrder) {
    for (const bool exitFirst : {true, false}) {
        std::filesystem::remove(m_data + "\\journal.txt");
        Start({kOnOrder, kAsks});
        Command(kExitCommand);
        const HWND exit = WaitForOther();
        ASSERT_NE(exit, nullptr);
        ASSERT_TRUE(OrderQuestion());
        const HWND question = WaitForOther(exit);
        ASSERT_NE(question, nullptr);
        if (exitFirst) {
            ::PostMessageA(::GetDlgItem(exit, IDOK), WM_KEYDOWN, VK_ESCAPE, 0);
            EXPECT_TRUE(WaitUntil([&] { return !::IsWindowVisible(exit); }, 3s));
        }
        ASSERT_TRUE(Answer(question, kNo));
        if (!exitFirst) {
            ASSERT_TRUE(PressWhenEnabled(exit, IDCANCEL));
        }
        ASSERT_TRUE(WaitUntil([&] { return !::IsWindow(exit) && ::IsWindowEnabled(m_window); }));
        Leave();
        m_service.reset();
    }
}

}  // namespace
}  // namespace brennvar::test
