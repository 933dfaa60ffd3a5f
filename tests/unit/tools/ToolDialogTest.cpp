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

private:
    ToolJob MakeJob(const std::string& text) override {
        started.push_back(text);
        return [this, printed = lines](ToolOutput& output, const StopSignal& stop) {
            for (const std::string& line : printed) output.Print(line);
            (void)(heedsStop ? stop : letGo).WaitFor(std::chrono::hours(1));
            if (heedsStop) output.Print("end");
        };
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

    const CFonts m_fonts;
    const Language m_english{nullptr};
    test::AskedTools m_tools;
    test::ModalOwner m_owner;
    TestTool m_dialog{m_fonts, m_english, m_tools};
};

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

}  // namespace
}  // namespace brennvar
