#include "ui/Dialog.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>

#include "ui/ResourceIds.h"

namespace brennvar {
namespace {

// Shows what reaches it; what it does then is the test's.
class TestDialog final : public CDialog {
public:
    using CDialog::End;
    std::function<void()> onInit = [] {};
    std::function<void(int)> onCommand = [](int) {};
    std::function<void(UINT_PTR)> onTimer = [](UINT_PTR) {};
    int destroyed = 0;

private:
    void OnInitDialog() override { onInit(); }
    void OnDestroy() override { ++destroyed; }
    void OnCommand(int id, int) override { onCommand(id); }
    void OnTimer(UINT_PTR id) override { onTimer(id); }
};

// A window to be the owner of dialogs.
class OwnerWindow {
public:
    OwnerWindow()
        : m_window(::CreateWindowExA(0, "STATIC", "owner", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr, nullptr,
                                     ::GetModuleHandleA(nullptr), nullptr)) {}
    ~OwnerWindow() { ::DestroyWindow(m_window); }
    OwnerWindow(const OwnerWindow&) = delete;
    OwnerWindow& operator=(const OwnerWindow&) = delete;
    [[nodiscard]] HWND Get() const { return m_window; }

private:
    HWND m_window;
};

TEST(CDialogTest, WindowAndObjectMayGoInEitherOrder) {
    TestDialog windowFirst;
    ASSERT_TRUE(windowFirst.CreateModeless(nullptr, IDD_MESSAGE_OK));
    ASSERT_NE(windowFirst.Window(), nullptr);
    ::DestroyWindow(windowFirst.Window());
    EXPECT_EQ(windowFirst.Window(), nullptr);
    EXPECT_EQ(windowFirst.destroyed, 1);
    // And the object serves another window.
    EXPECT_TRUE(windowFirst.CreateModeless(nullptr, IDD_MESSAGE_OK));

    auto objectFirst = std::make_unique<TestDialog>();
    ASSERT_TRUE(objectFirst->CreateModeless(nullptr, IDD_MESSAGE_OK));
    const HWND window = objectFirst->Window();
    objectFirst.reset();
    EXPECT_FALSE(::IsWindow(window));
}

TEST(CDialogTest, MissingTemplateGivesNoWindow) {
    TestDialog dialog;
    EXPECT_FALSE(dialog.CreateModeless(nullptr, 9999));
    EXPECT_EQ(dialog.DoModal(nullptr, 9999), -1);
}

TEST(CDialogTest, HandlesMessagesInsideAHandler) {
    TestDialog dialog;
    std::string order;
    dialog.onCommand = [&](int id) {
        order.append("c").append(std::to_string(id));
        if (id == 7) ::SendMessageA(dialog.Window(), WM_TIMER, 3, 0);
        order += ";";
    };
    dialog.onTimer = [&](UINT_PTR id) {
        order.append("t").append(std::to_string(id));
        ::SendMessageA(dialog.Window(), WM_COMMAND, 8, 0);
    };
    ASSERT_TRUE(dialog.CreateModeless(nullptr, IDD_MESSAGE_OK));
    ::SendMessageA(dialog.Window(), WM_COMMAND, 7, 0);
    EXPECT_EQ(order, "c7t3c8;;");
    // A handler may end its own window.
    dialog.onCommand = [&](int) { ::DestroyWindow(dialog.Window()); };
    ::SendMessageA(dialog.Window(), WM_COMMAND, 9, 0);
    EXPECT_EQ(dialog.Window(), nullptr);
}

TEST(CDialogTest, DropsWhatAHandlerThrows) {
    TestDialog dialog;
    dialog.onCommand = [](int) { throw std::runtime_error("command"); };
    ASSERT_TRUE(dialog.CreateModeless(nullptr, IDD_MESSAGE_OK));
    ::SendMessageA(dialog.Window(), WM_COMMAND, 7, 0);
    EXPECT_TRUE(::IsWindow(dialog.Window()));

    TestDialog unfilled;
    unfilled.onInit = [] { throw std::runtime_error("init"); };
    EXPECT_FALSE(unfilled.CreateModeless(nullptr, IDD_MESSAGE_OK));
    EXPECT_EQ(unfilled.DoModal(nullptr, IDD_MESSAGE_OK), -1);
    EXPECT_EQ(unfilled.Window(), nullptr);
}

TEST(CDialogTest, ModalDialogDisablesItsOwnerAndReturnsItsResult) {
    const OwnerWindow owner;
    TestDialog dialog;
    bool ownerWasEnabled = true;
    dialog.onInit = [&] { ::PostMessageA(dialog.Window(), WM_COMMAND, 7, 0); };
    dialog.onCommand = [&](int id) {
        ownerWasEnabled = ::IsWindowEnabled(owner.Get()) != FALSE;
        dialog.End(id + 100);
        dialog.End(1);  // the first answer counts
    };
    EXPECT_EQ(dialog.DoModal(owner.Get(), IDD_MESSAGE_OK), 107);
    EXPECT_FALSE(ownerWasEnabled);
    EXPECT_TRUE(::IsWindowEnabled(owner.Get()));
    EXPECT_EQ(dialog.Window(), nullptr);

    // Somebody else's modal dialog has disabled the owner already: it stays so.
    ::EnableWindow(owner.Get(), FALSE);
    EXPECT_EQ(dialog.DoModal(owner.Get(), IDD_MESSAGE_OK), 107);
    EXPECT_FALSE(::IsWindowEnabled(owner.Get()));
}

TEST(CDialogTest, OuterModalDialogWaitsForTheInnerOne) {
    TestDialog outer;
    TestDialog inner;
    std::string order;
    outer.onInit = [&] { ::PostMessageA(outer.Window(), WM_COMMAND, 7, 0); };
    outer.onCommand = [&](int id) {
        if (id == 8) {
            outer.End(1);
            order += "outer answered;";
            ::PostMessageA(inner.Window(), WM_COMMAND, 9, 0);
            return;
        }
        inner.onInit = [&] { ::PostMessageA(outer.Window(), WM_COMMAND, 8, 0); };
        inner.onCommand = [&](int) {
            order += "inner answered;";
            inner.End(2);
        };
        EXPECT_EQ(inner.DoModal(nullptr, IDD_MESSAGE_OK), 2);
        order += "inner gone;";
    };
    EXPECT_EQ(outer.DoModal(nullptr, IDD_MESSAGE_OK), 1);
    EXPECT_EQ(order, "outer answered;inner answered;inner gone;");
}

TEST(CDialogTest, PassesTheEndOfTheProgramOn) {
    TestDialog dialog;
    dialog.onInit = [] { ::PostQuitMessage(5); };
    EXPECT_EQ(dialog.DoModal(nullptr, IDD_MESSAGE_OK), -1);
    MSG message;
    ASSERT_TRUE(::PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 5U);
}

TEST(CDialogTest, EscAndTheCloseButtonCancel) {
    const struct {
        UINT message;
        WPARAM wParam;
    } rows[] = {{WM_CLOSE, 0}, {WM_COMMAND, IDCANCEL}, {WM_KEYDOWN, VK_ESCAPE}};
    for (const auto& row : rows) {
        TestDialog dialog;
        dialog.onInit = [&] { ::PostMessageA(dialog.Window(), row.message, row.wParam, 0); };
        EXPECT_EQ(dialog.DoModal(nullptr, IDD_MESSAGE_OK), IDCANCEL) << row.message;
    }
}

TEST(CDialogTest, UnfocusedDialogIsOnTopAndLeavesTheFocusWhereItIs) {
    const OwnerWindow owner;
    ::SetForegroundWindow(owner.Get());
    ::SetFocus(owner.Get());
    ASSERT_EQ(::GetActiveWindow(), owner.Get());
    TestDialog dialog;
    bool visible = false;
    HWND active = nullptr;
    LONG_PTR exStyle = 0;
    dialog.onInit = [&] { ::PostMessageA(dialog.Window(), WM_COMMAND, 7, 0); };
    dialog.onCommand = [&](int) {
        visible = ::IsWindowVisible(dialog.Window()) != FALSE;
        active = ::GetActiveWindow();
        exStyle = ::GetWindowLongPtrA(dialog.Window(), GWL_EXSTYLE);
        dialog.End(0);
    };
    EXPECT_EQ(dialog.DoModal(owner.Get(), IDD_MESSAGE_OK, CDialog::Appearance::Unfocused), 0);
    EXPECT_TRUE(visible);
    EXPECT_EQ(active, owner.Get());
    EXPECT_NE(exStyle & WS_EX_TOPMOST, 0);
    EXPECT_TRUE(::IsWindowEnabled(owner.Get()));
}

}  // namespace
}  // namespace brennvar
