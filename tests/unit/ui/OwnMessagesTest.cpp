// Another thread stands for another program: what it sends is told apart in the same way, and its addresses come as
// they are.
#include "ui/OwnMessages_win.h"

#include <gtest/gtest.h>
// windows.h must stand before commctrl.h.
#include <commctrl.h>

#include <atomic>
#include <functional>
#include <thread>

#include "controls/ComboBox_win.h"
#include "controls/Edit_win.h"
#include "controls/ListBox_win.h"
#include "controls/ProgressBar_win.h"
#include "support/ControlWindow.h"
#include "ui/ChildControls_win.h"
#include "ui/Dialog_win.h"
#include "ui/ToolkitIds.h"

namespace brennvar {
namespace {

struct Sent {
    UINT message;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
};

// What a window is told of its own life, and what needs an address.
constexpr Sent kMadeUp[] = {{WM_INITDIALOG, 0, 1},
                            {WM_NCCREATE},
                            {WM_CREATE},
                            {WM_DESTROY},
                            {WM_NCDESTROY},
                            {WM_GETMINMAXINFO},
                            {WM_NCCALCSIZE, 0, 1},
                            {WM_NCCALCSIZE, 1},
                            {WM_DRAWITEM},
                            {WM_DRAWITEM, 7, 1},
                            {WM_MEASUREITEM},
                            {WM_GETTEXT, 10},
                            {WM_WINDOWPOSCHANGED},
                            {WM_GETDLGCODE, 0, 1},
                            {WM_CTLCOLORBTN, 1, 1},
                            {WM_APP + 0x1000 + WM_DRAWITEM, 1, 1}};

// Answers messages until the step, on another thread, is over.
void FromAnotherThread(const std::function<void()>& step) {
    std::atomic<bool> isOver = false;
    const DWORD here = ::GetCurrentThreadId();
    std::thread other([&] {
        step();
        isOver = true;
        ::PostThreadMessageA(here, WM_NULL, 0, 0);
    });
    for (MSG message; !isOver && ::GetMessageA(&message, nullptr, 0, 0) > 0;) ::DispatchMessageA(&message);
    other.join();
}

void SendFromAnotherThread(HWND window, std::span<const Sent> messages) {
    FromAnotherThread([&] {
        for (const Sent& sent : messages) ::SendMessageA(window, sent.message, sent.wParam, sent.lParam);
    });
}

// As the loop of a menu or of a message box does, which asks nobody what it dispatches.
void Post(HWND window, std::span<const Sent> messages) {
    for (const Sent& sent : messages) ::PostMessageA(window, sent.message, sent.wParam, sent.lParam);
    for (MSG message; ::PeekMessageA(&message, window, 0, 0, PM_REMOVE);) ::DispatchMessageA(&message);
}

constexpr Sent kEnds[] = {{WM_DESTROY}, {WM_NCDESTROY}};

class TestWindow final : public CWindow {
public:
    int begins = 0, ends = 0;
    SIZE size{};

private:
    bool OnCreate() override { return ++begins > 0; }
    void OnDestroy() override { ++ends; }
    void OnSize(int width, int height) override { size = {width, height}; }
};

class TestDialog final : public CDialog {
public:
    int begins = 0, ends = 0;
    SIZE size{};
    std::function<void()> onCommand = [] {};

private:
    void OnInitDialog() override { ++begins; }
    void OnDestroy() override { ++ends; }
    void OnSize(int width, int height) override { size = {width, height}; }
    void OnCommand(int, int) override { onCommand(); }
};

TEST(OwnMessagesTest, NobodyElseBeginsOrEndsAWindow) {
    TestWindow window;
    ASSERT_TRUE(window.Create({.text = {}, .style = WS_POPUP, .place = {0, 0, 300, 200}}));
    TestDialog dialog;
    ASSERT_TRUE(dialog.Open(nullptr, IDD_MESSAGE_OK));
    const auto expectUnharmed = [&] {
        EXPECT_EQ(window.begins, 1);
        EXPECT_EQ(dialog.begins, 1);
        EXPECT_EQ(window.ends + dialog.ends, 0);
        EXPECT_TRUE(::IsWindow(window.Window()) && ::IsWindow(dialog.Window()) && dialog.IsOpen());
    };
    for (const HWND target : {window.Window(), dialog.Window()}) {
        SendFromAnotherThread(target, kMadeUp);
        expectUnharmed();
        Post(target, kEnds);
        expectUnharmed();
        // It may be told any size; it has the one that it has.
        const Sent sizes[] = {{WM_SIZE, SIZE_RESTORED, MAKELPARAM(9999, 9999)}};
        SendFromAnotherThread(target, sizes);
    }
    EXPECT_EQ(window.size.cx, 300);
    RECT client{};
    ::GetClientRect(dialog.Window(), &client);
    EXPECT_EQ(dialog.size.cx, client.right);
    const Sent close[] = {{WM_CLOSE}};
    SendFromAnotherThread(window.Window(), close);
    expectUnharmed();

    // What really ends in the middle of somebody's message ends.
    TestDialog inner;
    dialog.onCommand = [&] {
        ASSERT_TRUE(inner.CreateModeless(nullptr, IDD_MESSAGE_OK));
        const HWND first = inner.Window();
        EndWindow(first);
        EXPECT_EQ(inner.Window(), nullptr);
        EXPECT_FALSE(::IsWindow(first));
    };
    const Sent command[] = {{WM_COMMAND, 7}};
    SendFromAnotherThread(dialog.Window(), command);
    EXPECT_EQ(inner.ends, 1);
    EndWindow(window.Window());
    EndWindow(dialog.Window());
    EXPECT_EQ(window.ends + dialog.ends, 2);
    EXPECT_FALSE(dialog.IsOpen());
}

TEST(OwnMessagesTest, ControlsUseNoAddressesOfOthersAndKeepTheirItems) {
    const test::ControlWindow parent;
    const test::TestSkin skin;
    const Look look = skin.MakeLook();
    CEdit edit;
    CComboBox combo;
    CListBox list;
    CProgressBar bar;
    edit.Create(parent.Window(), "Text", ES_MULTILINE, 1, look);
    combo.Create(parent.Window(), 2, look);
    list.Create(parent.Window(), 3, look);
    bar.Create(parent.Window(), 4, look);
    for (const char* text : {"One", "Two"}) {
        (void)combo.Add(text);
        list.Add(text);
    }
    constexpr Sent kAddresses[] = {{EM_SETHANDLE, 1},          {EM_SETWORDBREAKPROC, 0, 1}, {PBM_GETRANGE, 1, 1},
                                   {EM_SETCUEBANNER, 0, 1},    {BCM_GETIDEALSIZE, 0, 1},    {CB_SETCUEBANNER, 0, 1},
                                   {CB_GETCOMBOBOXINFO, 0, 1}, {LB_RESETCONTENT},           {LB_DELETESTRING},
                                   {CB_RESETCONTENT},          {CB_DELETESTRING},           {WM_CLOSE}};
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    WNDCLASSA windowsOwn{};
    ASSERT_TRUE(::GetClassInfoA(nullptr, "COMBOBOX", &windowsOwn));
    ASSERT_TRUE(::CallWindowProcA(windowsOwn.lpfnWndProc, combo.Window(), CB_GETCOMBOBOXINFO, 0,
                                  reinterpret_cast<LPARAM>(&info)));
    for (const HWND control : {edit.Window(), combo.Window(), info.hwndList, list.Window(), bar.Window()}) {
        SendFromAnotherThread(control, kMadeUp);
        SendFromAnotherThread(control, kAddresses);
        Post(control, kEnds);
        EXPECT_TRUE(::IsWindow(control));
    }
    EXPECT_EQ(combo.Count(), 2);
    EXPECT_EQ(combo.ItemText(1), "Two");
    EXPECT_EQ(::SendMessageA(list.Window(), LB_GETCOUNT, 0, 0), 2);
    EXPECT_EQ(TextOfWindow(edit.Window()), "Text");
    // They go on telling their owner, who may change them.
    edit.SetText("Else");
    EXPECT_EQ(TextOfWindow(edit.Window()), "Else");
    combo.Clear();
    EXPECT_EQ(combo.Count(), 0);
    bar.SetPosition(40);
    EXPECT_EQ(::SendMessageA(bar.Window(), PBM_GETPOS, 0, 0), 40);
    // What nobody may change any more.
    edit.KeepText();
    edit.SetText("Again");
    EXPECT_EQ(TextOfWindow(edit.Window()), "Else");
    EndWindow(edit.Window());
    EXPECT_EQ(edit.Window(), nullptr);
}

}  // namespace
}  // namespace brennvar
