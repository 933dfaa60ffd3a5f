#include "tools/ToolDialog_win.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "config/ResourceIds.h"
#include "dialogs/MessageDialog_win.h"
#include "support/AskedTools.h"
#include "support/ModalOwner_win.h"
#include "tree/TreeMessages_win.h"
#include "ui/ChildControls_win.h"
#include "ui/ToolkitIds.h"

namespace brennvar {
namespace {

// A tool whose work ends with the stop signal, or when the test lets it.
class TestTool final : public ToolDialog {
public:
    TestTool(const CFonts& fonts, const Language& language, AddressTools& tools)
        : ToolDialog(fonts, language, tools,
                     {.templateId = IDD_TRACE_ROUTE, .finishedMessage = 4845, .ofLine = AddressTool::WhoIs}) {}

    std::vector<std::string> lines{"IP: 10.0.0.1 [-]", "no address", "IP: 10.0.0.2 [-]"};
    std::vector<std::string> started;
    bool heedsStop = true;
    StopSignal letGo;
    std::vector<POINT> dragged;
    bool couldSavePart = false;  // at any time, of what it has printed

private:
    ToolJob MakeJob(const std::string& text) override {
        started.push_back(text);
        return [this, printed = lines](ToolOutput& output, const StopSignal& stop) {
            for (const std::string& line : printed) output.Print(line);
            (void)(heedsStop ? stop : letGo).WaitFor(std::chrono::hours(1));
            if (heedsStop) output.Print("end");
        };
    }
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message != WM_NCLBUTTONDOWN || wParam != HTCAPTION) {
            const std::optional<LRESULT> result = ToolDialog::OnMessage(message, wParam, lParam);
            const auto rows = ::SendMessageA(Item(IDC_TOOL_LINES), kTreeGetRowCount, 0, 0);
            couldSavePart |=
                rows > 0 && rows < static_cast<LRESULT>(lines.size()) && ::IsWindowEnabled(Item(IDC_TOOL_SAVE));
            return result;
        }
        dragged.push_back({static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))});
        return 0;
    }
};

// The loop in whose turns a dialog without one is worked.
class Loop final : public CDialog {
public:
    // Until the condition holds after a message. The test program's own limit ends what never comes.
    void RunUntil(std::function<bool()> condition) {
        m_condition = std::move(condition);
        DoModal(nullptr, IDD_MESSAGE_OK);
    }

private:
    void OnInitDialog() override {
        ::ShowWindow(Window(), SW_HIDE);
        ::SetTimer(Window(), 1, 10, nullptr);
    }
    void OnTimer(UINT_PTR) override {
        if (m_condition()) End(1);
    }
    std::function<bool()> m_condition;
};

class ToolDialogTest : public testing::Test {
protected:
    ToolDialogTest() { EXPECT_TRUE(m_dialog.OpenNear(m_owner.Window())); }

    void Press(int id) { ::SendMessageA(m_dialog.Item(id), BM_CLICK, 0, 0); }
    void PressKey(int id, WPARAM key) { ::PostMessageA(m_dialog.Item(id), WM_KEYDOWN, key, 0); }
    void RunUntil(std::function<bool()> condition) { Loop().RunUntil(std::move(condition)); }
    [[nodiscard]] bool IsEnabled(int id) const { return ::IsWindowEnabled(m_dialog.Item(id)) != FALSE; }
    [[nodiscard]] int RowCount() const {
        return static_cast<int>(::SendMessageA(m_dialog.Item(IDC_TOOL_LINES), kTreeGetRowCount, 0, 0));
    }
    std::string Copied() {
        Press(IDC_TOOL_COPY);
        std::string text;
        if (!::OpenClipboard(m_dialog.Window())) return "the clipboard is held";
        if (const HANDLE memory = ::GetClipboardData(CF_TEXT)) {
            text = static_cast<const char*>(::GlobalLock(memory));
            ::GlobalUnlock(memory);
        }
        ::CloseClipboard();
        return text;
    }

    const CFonts m_fonts;
    const Language m_english{nullptr};
    test::AskedTools m_tools;
    test::ModalOwner m_owner;
    TestTool m_dialog{m_fonts, m_english, m_tools};
};

TEST_F(ToolDialogTest, AsksForAnAddressWhenThereIsNone) {
    ::SetWindowTextA(m_dialog.Item(IDC_TOOL_ADDRESS), " \t");
    std::string message;
    m_owner.Post([&] {
        const HWND box = ::GetLastActivePopup(m_dialog.Window());
        message = TextOfWindow(::GetDlgItem(box, IDC_MESSAGE));
        m_dialog.StartWith("10.0.0.1");  // not below a message
        ::SendMessageA(::GetDlgItem(box, IDOK), BM_CLICK, 0, 0);
    });
    Press(IDC_TOOL_START);
    EXPECT_EQ(message, "Destination address is missing!");
    EXPECT_TRUE(m_dialog.started.empty());
    EXPECT_FALSE(IsEnabled(IDC_TOOL_COPY));
}

TEST_F(ToolDialogTest, EnterStartsAndEscStopsBeforeItCloses) {
    ::SetWindowTextA(m_dialog.Item(IDC_TOOL_ADDRESS), " 10.0.0.9 ");
    PressKey(IDC_TOOL_ADDRESS, VK_RETURN);
    RunUntil([this] { return RowCount() == 3; });
    EXPECT_EQ(m_dialog.started, std::vector<std::string>{"10.0.0.9"});
    EXPECT_TRUE(!IsEnabled(IDC_TOOL_START) && IsEnabled(IDC_TOOL_STOP) && !IsEnabled(IDC_TOOL_SAVE));
    m_dialog.StartWith("10.0.0.8");
    ::SendMessageA(m_dialog.Window(), 4845, 0, 0);  // from whom it may be: the tool has not finished
    EXPECT_EQ(m_dialog.started.size(), 1U);
    EXPECT_FALSE(IsEnabled(IDC_TOOL_START));

    PressKey(IDC_TOOL_ADDRESS, VK_ESCAPE);
    RunUntil([this] { return !m_dialog.IsAtWork(); });
    RunUntil([this] { return RowCount() == 4; });
    EXPECT_TRUE(m_dialog.IsOpen());
    EXPECT_TRUE(IsEnabled(IDC_TOOL_START) && !IsEnabled(IDC_TOOL_STOP) && IsEnabled(IDC_TOOL_SAVE));
    EXPECT_EQ(TextOfWindow(m_dialog.Item(IDC_TOOL_STATUS)), "Stopped.");

    m_dialog.lines.assign(2000, "line");
    m_dialog.StartWith("10.0.0.7");
    RunUntil([this] { return RowCount() == 2000; });  // the old ones are gone
    EXPECT_EQ(m_dialog.started.back(), "10.0.0.7");
    Press(IDC_TOOL_STOP);
    RunUntil([this] { return !m_dialog.IsAtWork(); });
    PressKey(IDC_TOOL_ADDRESS, VK_ESCAPE);
    RunUntil([this] { return !m_dialog.IsOpen(); });
}

TEST_F(ToolDialogTest, GoesAtOnceAndEndsWithItsTool) {
    m_dialog.heedsStop = false;
    m_dialog.StartWith("10.0.0.1");
    Press(IDCANCEL);
    EXPECT_FALSE(::IsWindowVisible(m_dialog.Window()));
    EXPECT_TRUE(m_dialog.IsOpen());
    // Wanted back meanwhile, it stays.
    EXPECT_TRUE(m_dialog.OpenNear(m_owner.Window()));
    EXPECT_TRUE(::IsWindowVisible(m_dialog.Window()));
    ::SendMessageA(m_dialog.Window(), WM_CLOSE, 0, 0);
    EXPECT_FALSE(::IsWindowVisible(m_dialog.Window()));
    m_dialog.letGo.Request();
    RunUntil([this] { return !m_dialog.IsOpen(); });
    const HWND last = m_dialog.Window();
    EXPECT_TRUE(m_dialog.OpenNear(nullptr));
    EXPECT_EQ(RowCount(), 0);
    EXPECT_FALSE(::IsWindow(last)) << "every window of it would stay";
}

TEST_F(ToolDialogTest, GoesBackToTheDialogThatItWasOpenedFrom) {
    HWND over = nullptr;
    HWND active = nullptr;
    m_owner.Post([&] {
        over = ::GetLastActivePopup(m_owner.Window());
        EXPECT_TRUE(m_dialog.OpenNear(m_owner.Window()));
        EXPECT_TRUE(::IsWindowEnabled(m_dialog.Window()));
        EXPECT_EQ(::GetActiveWindow(), m_dialog.Window());
        Press(IDCANCEL);
        active = ::GetActiveWindow();
    });
    m_owner.PostKey(VK_RETURN);
    MessageDialog(m_fonts, {.caption = "", .message = "m", .ok = "OK", .cancel = ""}).Ask(m_owner.Window());
    EXPECT_NE(over, m_owner.Window());
    EXPECT_EQ(active, over);
}

TEST_F(ToolDialogTest, AsksTheNextQuestionWhenTheOneThatWasClosedHasEnded) {
    m_dialog.heedsStop = false;
    m_dialog.StartWith("10.0.0.1");
    Press(IDCANCEL);
    EXPECT_TRUE(m_dialog.OpenNear(m_owner.Window()));
    m_dialog.StartWith("10.0.0.2");
    EXPECT_EQ(m_dialog.started.size(), 1U);
    m_dialog.letGo.Request();
    RunUntil([this] { return m_dialog.started.size() == 2; });
    EXPECT_EQ(m_dialog.started.back(), "10.0.0.2");
    RunUntil([this] { return !m_dialog.IsAtWork(); });
}

TEST_F(ToolDialogTest, IsSavedOnlyWhenAllLinesAreShown) {
    m_dialog.heedsStop = false;
    m_dialog.letGo.Request();
    m_dialog.lines.assign(20'000, "line");
    m_dialog.StartWith("10.0.0.1");
    RunUntil([this] { return RowCount() == 20'000 && IsEnabled(IDC_TOOL_SAVE); });
    EXPECT_FALSE(m_dialog.couldSavePart);
    EXPECT_TRUE(IsEnabled(IDC_TOOL_START) && !IsEnabled(IDC_TOOL_STOP));
}

TEST_F(ToolDialogTest, AsksFurtherAboutAnAddressInALineAndCopiesLines) {
    m_dialog.StartWith("10.0.0.9");
    RunUntil([this] { return RowCount() == 3; });
    EXPECT_EQ(Copied(), "IP: 10.0.0.1 [-]\r\nno address\r\nIP: 10.0.0.2 [-]\r\n");
    const HWND list = m_dialog.Item(IDC_TOOL_LINES);
    for (const WPARAM key : {VK_HOME, VK_RETURN, VK_DOWN, VK_RETURN, VK_DOWN}) {
        ::SendMessageA(list, WM_KEYDOWN, key, 0);
    }
    EXPECT_EQ(m_tools.asked, (decltype(m_tools.asked){{AddressTool::WhoIs, "10.0.0.1"}}));
    EXPECT_EQ(Copied(), "IP: 10.0.0.2 [-]\r\n");
    Press(IDC_TOOL_STOP);
    RunUntil([this] { return !m_dialog.IsAtWork(); });
}

TEST_F(ToolDialogTest, IsDraggedByAnyPlace) {
    POINT place{30, 200};
    ::SendMessageA(m_dialog.Window(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(place.x, place.y));
    ::ClientToScreen(m_dialog.Window(), &place);
    ASSERT_EQ(m_dialog.dragged.size(), 1U);
    EXPECT_EQ(m_dialog.dragged[0].x, place.x);
    EXPECT_EQ(m_dialog.dragged[0].y, place.y);
}

}  // namespace
}  // namespace brennvar
