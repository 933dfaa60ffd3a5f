// The models of the pages inside the list page: what depends on fonts.
#include <gtest/gtest.h>

#include "config/ResourceIds.h"
#include "lists/ListPage_win.h"
#include "support/CommanderRig.h"
#include "support/FakeDevice.h"
#include "support/FakeTaskQueue.h"
#include "tree/TreeMessages_win.h"
#include "views/ConnectionsModel.h"

namespace brennvar {
namespace {

class NoUserValues final : public UserValues {
    [[nodiscard]] bool ReadUserValue(const std::string&, std::uint32_t&) const override { return false; }
    bool WriteUserValue(const std::string&, std::uint32_t) override { return false; }
};

TEST(ConnectionsPageTest, NoStateIsCutHoweverWideTheFontIs) {
    for (const char* const face : {"Segoe UI", "Courier New", "Verdana", "Arial Black"}) {
        const CFonts fonts(ANSI_CHARSET, face);
        NoUserValues values;
        test::CommanderRig rig;
        test::FakeTaskQueue reads;
        test::FakeDriver driver;
        ListPage page({fonts, rig.language, values}, {"title", "line", ""},
                      std::make_unique<ConnectionsModel>(rig.language, driver, reads, rig.link));
        const HWND parent = ::CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 800, 500, nullptr,
                                              nullptr, ::GetModuleHandleA(nullptr), nullptr);
        ASSERT_TRUE(page.Create(parent));
        page.Place({0, 0, 800, 500});
        constexpr WPARAM kStateColumn = 2;
        const auto width = ::SendMessageA(page.Item(IDC_PAGE_LIST), kTreeGetColumnWidth, kStateColumn, 0);
        const LRESULT margins = 2 * Scale(8);
        const HDC dc = ::GetDC(parent);
        const HGDIOBJ before = ::SelectObject(dc, fonts.Text());
        for (std::uint32_t state = 0; state <= kStateListenOther; ++state) {
            const std::string_view text = ConnectionStateText(state);
            SIZE size{};
            ::GetTextExtentPoint32A(dc, text.data(), static_cast<int>(text.size()), &size);
            EXPECT_LE(size.cx + margins, width) << face << ": " << text;
        }
        ::SelectObject(dc, before);
        ::ReleaseDC(parent, dc);
        ::DestroyWindow(parent);
    }
}

}  // namespace
}  // namespace brennvar
