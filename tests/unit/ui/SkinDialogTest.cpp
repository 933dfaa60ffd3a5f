// Dialogs in the skin: the frame that we paint, and the keyboard in the message dialogs.
#include "ui/SkinDialog.h"

#include <gtest/gtest.h>

#include <functional>

#include "support/ModalOwner_win.h"
#include "support/ObjectCounts_win.h"
#include "ui/Controls.h"
#include "ui/MessageDialog.h"
#include "ui/Paint.h"
#include "ui/ResourceIds.h"
#include "ui/WorkArea.h"

namespace brennvar {
namespace {

class SizedDialog final : public CSkinDialog {
public:
    SizedDialog(const CFonts& fonts, SIZE size, Kind kind) : CSkinDialog(fonts, kind), m_size(size) {}
    using CSkinDialog::ContentRect;

private:
    void OnCreateContent() override { SetContentSize(m_size); }
    const SIZE m_size;
};

LRESULT HitTest(HWND window, LONG x, LONG y) {
    POINT point{x, y};
    ::ClientToScreen(window, &point);
    return ::SendMessageA(window, WM_NCHITTEST, 0, MAKELPARAM(point.x, point.y));
}

TEST(CSkinDialogTest, IsMovedByItsBandAndNotPaintedByWindows) {
    const CFonts fonts;
    for (const auto& [kind, band] :
         {std::pair{CSkinDialog::Kind::Ordinary, 40}, std::pair{CSkinDialog::Kind::Large, 48}}) {
        SizedDialog dialog(fonts, {300, 200}, kind);
        ASSERT_TRUE(dialog.CreateModeless(nullptr, IDD_MESSAGE_OK));
        RECT window{}, client{};
        ::GetWindowRect(dialog.Window(), &window);
        ::GetClientRect(dialog.Window(), &client);
        EXPECT_EQ(WidthOf(window), client.right);
        EXPECT_EQ(HeightOf(window), client.bottom);
        EXPECT_EQ(WidthOf(dialog.ContentRect()), Scale(300));
        EXPECT_EQ(HeightOf(dialog.ContentRect()), Scale(200));
        EXPECT_EQ(HitTest(dialog.Window(), 100, band - 1), HTCAPTION);
        EXPECT_EQ(HitTest(dialog.Window(), 100, band), HTCLIENT);
        EXPECT_EQ(::SendMessageA(dialog.Window(), WM_NCLBUTTONDBLCLK, HTCAPTION, 0), 0);
        EXPECT_FALSE(::IsZoomed(dialog.Window()));
        // Its close button is the last way out, and Tab does not go there.
        const HWND close = dialog.Item(IDCANCEL);
        EXPECT_EQ(TextOfWindow(close), "Close");
        EXPECT_EQ(::GetWindowLongPtrA(close, GWL_STYLE) & WS_TABSTOP, 0);
    }
}

TEST(CSkinDialogTest, OpensOverItsOwnerInsideTheWorkArea) {
    const CFonts fonts;
    const RECT area = MainWorkArea();
    const test::ModalOwner owner;
    struct Row {
        POINT owner;
        SIZE size;
    };
    const Row rows[] = {{{200, 150}, {200, 100}},
                        {{area.right - 20, area.bottom - 20}, {200, 100}},
                        {{area.left - 350, area.top - 250}, {200, 100}},
                        {{200, 150}, {10'000, 10'000}}};
    for (const Row& row : rows) {
        ::SetWindowPos(owner.Window(), nullptr, row.owner.x, row.owner.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        SizedDialog dialog(fonts, row.size, CSkinDialog::Kind::Ordinary);
        ASSERT_TRUE(dialog.CreateModeless(owner.Window(), IDD_MESSAGE_OK));
        RECT place{}, both{};
        ::GetWindowRect(dialog.Window(), &place);
        ::UnionRect(&both, &place, &area);
        EXPECT_TRUE(::EqualRect(&both, &area)) << row.owner.x << "," << row.owner.y;
    }
}

class MessageDialogTest : public testing::Test {
protected:
    // Asks, with the steps that have been posted to the owner.
    bool Ask(const std::string& cancel = "&Cancel") {
        m_dialog.emplace(m_fonts,
                         MessageTexts{.caption = "Caption", .message = m_message, .ok = "&OK", .cancel = cancel});
        return m_dialog->Ask(m_owner.Window());
    }
    void ExpectFocus(int id) {
        m_owner.Post([this, id] { EXPECT_EQ(::GetDlgCtrlID(::GetFocus()), id); });
    }

    CFonts m_fonts;
    std::string m_message = "A message.";
    test::ModalOwner m_owner;
    std::optional<MessageDialog> m_dialog;
};

TEST_F(MessageDialogTest, IsAnsweredWithTheKeyboard) {
    ExpectFocus(IDOK);
    m_owner.PostKey(VK_RETURN);
    EXPECT_TRUE(Ask());
    m_owner.PostKey(VK_ESCAPE);
    EXPECT_FALSE(Ask());
    // Tab goes round the two buttons only, and Enter presses the one that it has reached.
    m_owner.PostKey(VK_TAB);
    m_owner.PostKey(VK_TAB);
    ExpectFocus(IDOK);
    m_owner.PostKey(VK_TAB);
    ExpectFocus(IDCANCEL);
    m_owner.PostKey(VK_RETURN);
    EXPECT_FALSE(Ask());
    m_owner.Post([] { ::PostMessageA(::GetFocus(), WM_SYSKEYDOWN, VK_F4, 1L << 29); });  // Alt+F4
    EXPECT_FALSE(Ask());
    // Alt+Space opens the system menu: Move, and Close below it.
    m_owner.Post([this] {
        ::PostMessageA(m_dialog->Window(), WM_SYSCOMMAND, SC_KEYMENU, ' ');
        for (int i = 0; i < 2; ++i) ::PostMessageA(m_dialog->Window(), WM_KEYDOWN, VK_DOWN, 0);
        ::PostMessageA(m_dialog->Window(), WM_KEYDOWN, VK_RETURN, 0);
    });
    EXPECT_FALSE(Ask());
    m_owner.PostMnemonic('c');
    EXPECT_FALSE(Ask());
    m_owner.PostMnemonic('o');
    EXPECT_TRUE(Ask());
    // With OK alone Esc and the close button are no OK.
    m_owner.PostKey(VK_ESCAPE);
    EXPECT_FALSE(Ask(""));
    m_owner.Post([this] { ::PostMessageA(m_dialog->Item(IDCANCEL), BM_CLICK, 0, 0); });
    EXPECT_FALSE(Ask(""));
}

TEST_F(MessageDialogTest, HasRoomForEveryText) {
    std::string words;
    for (int i = 0; i < 150; ++i) words += "word ";
    for (const std::string& text : {std::string("Short."), words, std::string(90, 'W'), std::string("A & B\nC")}) {
        m_message = text;
        m_owner.Post([this] {
            const HWND label = m_dialog->Item(IDC_MESSAGE);
            RECT client{};
            ::GetClientRect(label, &client);
            const SIZE needed = MeasureText(label, m_fonts.Text(), m_message, client.right);
            EXPECT_LE(needed.cx, client.right);
            EXPECT_LE(needed.cy, client.bottom);
            RECT place{}, button{};
            ::GetWindowRect(label, &place);
            ::GetWindowRect(m_dialog->Item(IDOK), &button);
            EXPECT_LT(place.bottom, button.top);
            EXPECT_EQ(TextOfWindow(label), m_message);
        });
        m_owner.PostKey(VK_ESCAPE);
        EXPECT_FALSE(Ask());
    }
}

TEST_F(MessageDialogTest, CanBeAnsweredWhateverItsTextIs) {
    std::string words;
    for (int i = 0; i < 2500; ++i) words += "bad ";
    for (const std::string& text : {words, std::string(10'000, 'W')}) {
        m_message = text;
        m_owner.Post([this] {
            const RECT area = MainWorkArea();
            for (const HWND window : {m_dialog->Window(), m_dialog->Item(IDOK), m_dialog->Item(IDCANCEL)}) {
                RECT place{}, dialog{}, both{};
                ::GetWindowRect(window, &place);
                ::GetWindowRect(m_dialog->Window(), &dialog);
                ::IntersectRect(&both, &dialog, &area);
                ::UnionRect(&both, &both, &place);
                EXPECT_TRUE(::EqualRect(&both, &dialog)) << ::GetDlgCtrlID(window);
            }
        });
        m_owner.PostKey(VK_ESCAPE);
        EXPECT_FALSE(Ask());
    }
}

TEST_F(MessageDialogTest, LeavesNothingBehind) {
    for (const char* cancel : {"", "&Cancel"}) {
        test::ExpectNothingLeftBy([&] {
            m_owner.Post([this] { ::UpdateWindow(m_dialog->Window()); });
            m_owner.PostKey(VK_ESCAPE);
            (void)Ask(cancel);
            m_dialog.reset();
        });
    }
}

}  // namespace
}  // namespace brennvar
