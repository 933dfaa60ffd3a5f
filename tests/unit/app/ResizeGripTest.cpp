#include "app/ResizeGrip.h"

#include <gtest/gtest.h>

#include "ui/Fonts.h"

namespace brennvar {
namespace {

TEST(ResizeGripTest, ZoneIsTheLowerRightCornerOfTheClientArea) {
    const RECT client{0, 0, 800, 600};
    const int size = Scale(ResizeGrip::kZoneSize);
    const struct {
        POINT point;
        bool inside;
    } rows[] = {
        {{799, 599}, true},         {{800 - size, 600 - size}, true},
        {{799 - size, 599}, false}, {{799, 599 - size}, false},
        {{800, 599}, false},  // the frame is not the zone
        {{799, 600}, false},        {{0, 0}, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ResizeGrip::IsInZone(client, row.point), row.inside) << row.point.x << "," << row.point.y;
    }
}

TEST(ResizeGripTest, SwitchesTheFrameWithoutMovingTheClientArea) {
    const HWND window = ::CreateWindowExA(0, "STATIC", "", WS_CAPTION | WS_SYSMENU | WS_VISIBLE, 100, 100, 400, 300,
                                          nullptr, nullptr, ::GetModuleHandleA(nullptr), nullptr);
    const auto clientOnScreen = [window] {
        RECT client{};
        ::GetClientRect(window, &client);
        ::MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&client), 2);
        return client;
    };
    const auto hasFrame = [window] { return (::GetWindowLongPtrA(window, GWL_STYLE) & WS_THICKFRAME) != 0; };
    const RECT before = clientOnScreen();
    ResizeGrip grip;
    grip.Update(window, true);
    EXPECT_TRUE(hasFrame());
    EXPECT_TRUE(ResizeGrip::IsHit(window, {before.right - 2, before.bottom - 2}));
    EXPECT_FALSE(ResizeGrip::IsHit(window, {before.left + 2, before.top + 2}));
    const RECT with = clientOnScreen();
    EXPECT_TRUE(::EqualRect(&before, &with));

    // The mouse may run ahead of a window that is being sized.
    grip.OnEnterSizeMove();
    grip.Update(window, false);
    EXPECT_TRUE(hasFrame());
    grip.OnExitSizeMove();
    grip.Update(window, false);
    EXPECT_FALSE(hasFrame());
    const RECT after = clientOnScreen();
    EXPECT_TRUE(::EqualRect(&before, &after));
    ::DestroyWindow(window);
}

}  // namespace
}  // namespace brennvar
