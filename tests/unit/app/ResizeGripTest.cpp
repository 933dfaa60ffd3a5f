#include "app/ResizeGrip.h"

#include <gtest/gtest.h>

#include "ui/Fonts.h"

namespace brennvar {

TEST(ResizeGripTest, SwitchesTheFrameWithoutMovingTheClientArea) {
    const HWND window = ::CreateWindowExA(0, "STATIC", "", WS_CAPTION | WS_SYSMENU | WS_VISIBLE, 100, 100, 400, 300,
                                          nullptr, nullptr, ::GetModuleHandleA(nullptr), nullptr);
    const auto clientOnScreen = [window] {
        RECT client{};
        ::GetClientRect(window, &client);
        ::MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&client), 2);
        return client;
    };
    const RECT before = clientOnScreen();
    const int zone = Scale(ResizeGrip::kZoneSize);
    ResizeGrip grip;
    for (const bool on : {true, false}) {
        grip.Update(window, on);
        const RECT now = clientOnScreen();
        EXPECT_TRUE(::EqualRect(&before, &now));
        EXPECT_EQ(ResizeGrip::IsHit(window, {now.right - zone, now.bottom - 1}), on);
        EXPECT_FALSE(ResizeGrip::IsHit(window, {now.right - zone - 1, now.bottom - 1}));
        EXPECT_FALSE(ResizeGrip::IsHit(window, {now.right, now.bottom - 1}));  // the frame is not the zone
    }
    ::DestroyWindow(window);
}

}  // namespace brennvar
