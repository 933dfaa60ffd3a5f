#include "dialogs/DetailsDialog_win.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

#include "support/AskedTools.h"
#include "support/ClipboardText_win.h"
#include "support/FakeIni.h"
#include "support/ModalOwner_win.h"
#include "ui/ChildControls_win.h"
#include "ui/ToolkitIds.h"

namespace brennvar {
namespace {

DetailsSheet SheetOf(int lines, int rowsOfBytes) {
    DetailsSheet sheet;
    sheet.title = "Packet data";
    sheet.bytesHeading = "Captured bytes:";
    for (int group = 0; group < 2; ++group) {
        sheet.groups.push_back({"Header " + std::to_string(group), {}});
        for (int line = 0; line < lines; ++line) {
            sheet.groups.back().lines.push_back({"Label " + std::to_string(line) + ":", "Value of the line"});
        }
    }
    for (int row = 0; row < rowsOfBytes; ++row) {
        sheet.bytes.push_back("row " + std::to_string(1000 + row) + "  45 00 00 3c");
    }
    return sheet;
}

class DetailsDialogTest : public testing::Test {
protected:
    // The steps run while the dialog is open; Esc closes it when they have not.
    void ShowAndRun(std::function<void()> steps) {
        m_owner.Post(std::move(steps));
        m_owner.PostKey(VK_ESCAPE);
        m_dialog.Show(m_owner.Window());
    }
    [[nodiscard]] std::vector<HWND> Children(int part, const char* className) const {
        std::vector<HWND> found;
        for (HWND child = ::GetWindow(m_dialog.Item(part), GW_CHILD); child;
             child = ::GetWindow(child, GW_HWNDNEXT)) {
            char name[16] = {};
            ::GetClassNameA(child, name, sizeof(name));
            if (::lstrcmpiA(name, className) == 0) found.push_back(child);
        }
        return found;
    }
    [[nodiscard]] std::vector<HWND> Values() const { return Children(IDC_DETAILS_PANEL, "EDIT"); }
    [[nodiscard]] HWND Bytes() const { return Children(IDC_DETAILS_BYTES, "EDIT").at(0); }
    [[nodiscard]] static RECT PlaceOf(HWND window) {
        RECT place{};
        ::GetWindowRect(window, &place);
        return place;
    }
    static std::pair<DWORD, DWORD> SelectionOf(HWND edit) {
        std::pair<DWORD, DWORD> range;
        ::SendMessageA(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&range.first),
                       reinterpret_cast<LPARAM>(&range.second));
        return range;
    }

    const CFonts m_fonts;
    const Language m_english{std::make_unique<test::FakeIni>(test::FakeIni::Values())};
    test::ModalOwner m_owner;
    test::AskedTools m_tools;
    DetailsSheet m_sheet = SheetOf(40, 100);
    DetailsDialog m_dialog{m_fonts, m_english, m_tools, m_sheet};
};

TEST_F(DetailsDialogTest, HasEveryTextInWindowsThatOthersCanReadAndCopiesAll) {
    m_sheet.groups[0].lines[1] = {"Label & more:", R"(c:\a & b\c.exe)", Tone::Deny};
    m_dialog.Update(m_sheet);  // before it is open
    std::wstring copied;
    ShowAndRun([&] {
        ASSERT_EQ(Values().size(), 80U);
        EXPECT_EQ(TextOfWindow(Values()[1]), R"(c:\a & b\c.exe)");
        // The label stands right before its value, as screen readers want it.
        EXPECT_EQ(TextOfWindow(::GetWindow(Values()[1], GW_HWNDPREV)), "Label & more:");
        const std::string bytes = TextOfWindow(Bytes());
        EXPECT_TRUE(bytes.starts_with("row 1000  45 00 00 3c\r\nrow 1001  ")) << bytes;
        EXPECT_TRUE(bytes.ends_with("row 1099  45 00 00 3c")) << bytes;
        for (const HWND edit : {Values()[1], Bytes()}) {
            EXPECT_NE(::GetWindowLongPtrA(edit, GWL_STYLE) & ES_READONLY, 0);
        }
        ::SendMessageA(m_dialog.Item(IDC_DETAILS_COPY), BM_CLICK, 0, 0);
        copied = test::ClipboardText();
    });
    EXPECT_EQ(std::string(copied.begin(), copied.end()), TextOf(m_sheet));
}

TEST_F(DetailsDialogTest, OpensTheToolsForAnAddressOnly) {
    const auto isOffered = [&] { return ::IsWindowVisible(m_dialog.Item(IDC_DETAILS_ADDRESS)) != FALSE; };
    const auto press = [&](WPARAM key) {
        // The menu takes the key from the queue.
        ::PostMessageA(m_dialog.Window(), WM_KEYDOWN, key, 0);
        ::SendMessageA(m_dialog.Item(IDC_DETAILS_ADDRESS), BM_CLICK, 0, 0);
    };
    ShowAndRun([&] {
        EXPECT_FALSE(isOffered());
        ::SendMessageA(m_dialog.Window(), WM_COMMAND, IDC_DETAILS_ADDRESS, 0);
        m_sheet.address = 0x22D8B85D;
        m_dialog.Update(m_sheet);
        EXPECT_TRUE(isOffered());
        for (const int key : {int{'T'}, int{'W'}, int{'L'}, VK_ESCAPE}) press(static_cast<WPARAM>(key));
        EXPECT_NE(m_dialog.Window(), nullptr) << "it stays open";
        m_sheet.address = 0;
        m_dialog.Update(m_sheet);
        EXPECT_FALSE(isOffered());
    });
    const std::string address = "93.184.216.34";
    EXPECT_EQ(m_tools.asked, (decltype(m_tools.asked){{AddressTool::TraceRoute, address},
                                                      {AddressTool::WhoIs, address},
                                                      {AddressTool::Locate, address}}));
}

TEST_F(DetailsDialogTest, KeepsPlacesAndSelectionsWhenTheSheetChanges) {
    bool hasRun = false;
    ShowAndRun([&] {
        hasRun = true;
        // Scrolled by the wheel, away from the user.
        const LONG top = PlaceOf(Values()[0]).top;
        ::SendMessageA(m_dialog.Item(IDC_DETAILS_PANEL), WM_MOUSEWHEEL, MAKEWPARAM(0, -240), 0);
        const LONG scrolled = PlaceOf(Values()[0]).top;
        EXPECT_LT(scrolled, top);
        ::SendMessageA(Bytes(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-360)), 0);
        const HWND value = Values()[3];
        ::SendMessageA(value, EM_SETSEL, 2, 5);
        // Among the lines that are seen, of 24 letters each: Windows may scroll to it.
        ::SendMessageA(Bytes(), EM_SETSEL, 10 * 24, 10 * 24 + 8);
        m_sheet.groups[0].lines[3].value = "Another value";
        m_sheet.bytes[50] += " 01";
        m_dialog.Update(m_sheet);
        EXPECT_EQ(TextOfWindow(value), "Another value");
        EXPECT_EQ(Values()[3], value);
        EXPECT_EQ(SelectionOf(value), (std::pair<DWORD, DWORD>{2, 5}));
        EXPECT_EQ(SelectionOf(Bytes()), (std::pair<DWORD, DWORD>{240, 248}));
        EXPECT_EQ(::SendMessageA(Bytes(), EM_GETFIRSTVISIBLELINE, 0, 0), 9);
        // Another shape: other controls at the same place.
        m_sheet.groups[0].lines.pop_back();
        m_sheet.bytes.clear();
        m_dialog.Update(m_sheet);
        EXPECT_EQ(Values().size(), 79U);
        EXPECT_EQ(PlaceOf(Values()[0]).top, scrolled);
        EXPECT_FALSE(::IsWindowVisible(m_dialog.Item(IDC_DETAILS_BYTES)));
    });
    EXPECT_TRUE(hasRun);
}

TEST_F(DetailsDialogTest, IsWorkedWithTheKeyboard) {
    // From the button: Tab to the values, down, down over the last one that is seen, Tab to the bytes and on.
    std::vector<HWND> focused, expected;
    m_owner.Post([&] {
        EXPECT_EQ(::GetFocus(), m_dialog.Item(IDOK));
        expected = {Values()[0], Values()[1], Values()[79], Bytes(), m_dialog.Item(IDC_DETAILS_COPY)};
    });
    for (const WPARAM key : {VK_TAB, VK_DOWN, VK_NEXT, VK_TAB, VK_TAB}) {
        for (int times = key == VK_NEXT ? 20 : 1; times > 0; --times) m_owner.PostKey(key);
        m_owner.Post([&, key] {
            focused.push_back(::GetFocus());
            if (key != VK_NEXT) return;
            const RECT panel = PlaceOf(m_dialog.Item(IDC_DETAILS_PANEL)), last = PlaceOf(Values()[79]);
            EXPECT_TRUE(last.top >= panel.top && last.bottom <= panel.bottom);
            EXPECT_EQ(SelectionOf(Values()[79]), (std::pair<DWORD, DWORD>{0, 17}));
        });
    }
    m_owner.PostKey(VK_ESCAPE);
    m_dialog.Show(m_owner.Window());
    EXPECT_EQ(focused, expected);
}

// Windows' own fields of several lines would keep these keys.
TEST_F(DetailsDialogTest, ClosesOnEnterAndEscWhereverTheKeyboardIs) {
    for (const WPARAM key : {VK_RETURN, VK_ESCAPE}) {
        m_owner.Post([&] { ::SetFocus(Bytes()); });
        m_owner.PostKey(key);
        bool isStillOpen = false;
        m_owner.Post([&] {
            isStillOpen = m_dialog.Window() != nullptr;
            if (isStillOpen) ::PostMessageA(m_dialog.Window(), WM_CLOSE, 0, 0);
        });
        m_dialog.Show(m_owner.Window());
        EXPECT_FALSE(isStillOpen) << key;
        // The step may still be there for the next loop.
        for (MSG message; ::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);) ::DispatchMessageA(&message);
    }
}

}  // namespace
}  // namespace brennvar
