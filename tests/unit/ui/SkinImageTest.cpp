#include "ui/SkinImage_win.h"

#include <gtest/gtest.h>

#include "support/ControlWindow.h"

namespace brennvar {
namespace {

// What was drawn on a window at its left top corner.
class DrawnOn {
public:
    explicit DrawnOn(const std::function<void(HDC)>& draw) {
        const test::ControlWindow window;
        ::UpdateWindow(window.Window());
        const HDC dc = ::GetDC(window.Window());
        draw(dc);
        for (int y = 0; y < 3; ++y) {
            for (int x = 0; x < kWidth; ++x) m_rows[y][x] = ::GetPixel(dc, x, y);
        }
        ::ReleaseDC(window.Window(), dc);
    }
    [[nodiscard]] std::vector<COLORREF> Row(int y, int width) const { return {m_rows[y], m_rows[y] + width}; }

private:
    static constexpr int kWidth = 9;
    COLORREF m_rows[3][kWidth] = {};
};

constexpr COLORREF kGround = test::ControlWindow::kGround;

TEST(SkinImageTest, LoadsAndDrawsOverWhatIsThere) {
    const test::TempFolder folder;
    const CSkinImage image = CSkinImage::Load(folder.Write("a.png", test::TextFromHex(test::kPalettePng)));
    ASSERT_TRUE(image);
    EXPECT_EQ(image.Width(), 3);
    EXPECT_EQ(image.Height(), 2);
    const DrawnOn drawn([&](HDC dc) { image.Draw(dc, 1, 1); });
    EXPECT_EQ(drawn.Row(0, 5), std::vector<COLORREF>(5, kGround));
    const std::vector<COLORREF> first = drawn.Row(1, 5);
    EXPECT_EQ(first[1], RGB(255, 0, 0));
    // Half green over the ground, with the rounding of the system's own blending.
    EXPECT_NEAR(GetRValue(first[2]), 127, 1);
    EXPECT_NEAR(GetGValue(first[2]), 128, 1);
    EXPECT_EQ(first[3], kGround);
    EXPECT_EQ(drawn.Row(2, 5)[3], RGB(0, 0, 255));
}

TEST(SkinImageTest, IsEmptyWithoutAProperFile) {
    const test::TempFolder folder;
    EXPECT_FALSE(CSkinImage::Load(folder.File("missing.png")));
    EXPECT_FALSE(CSkinImage::Load(folder.Path()));
    EXPECT_FALSE(CSkinImage::Load(folder.Write("empty.png", "")));
    EXPECT_FALSE(CSkinImage::Load(folder.Write("text.png", "no image")));
    std::string wbmp("\0\0\1\1\x80", 5);
    wbmp.resize(8 << 20);
    EXPECT_TRUE(CSkinImage::Load(folder.Write("eight.wbmp", wbmp)));
    EXPECT_FALSE(CSkinImage::Load(folder.Write("more.wbmp", wbmp + "x")));
}

TEST(SkinImageTest, StretchesAFrameWithoutItsNeighbours) {
    // Three frames of one column, and one column that is left over.
    const CSkinImage strip = CSkinImage::FromBitmap({4, 1, {0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFFFF0000}});
    for (const int mode : {COLORONCOLOR, HALFTONE}) {
        const DrawnOn drawn([&](HDC dc) {
            ::SetStretchBltMode(dc, mode);
            strip.DrawFrame(dc, {1, 0, 8, 2}, 1, 3);
            EXPECT_EQ(::GetStretchBltMode(dc), mode);  // as it was
            strip.DrawFrame(dc, {1, 0, 8, 2}, 3, 3);   // there is no such frame
            strip.DrawFrame(dc, {8, 0, 1, 2}, 0, 3);   // nor such a place
        });
        std::vector<COLORREF> expected(9, RGB(0, 255, 0));
        expected.front() = expected.back() = kGround;
        EXPECT_EQ(drawn.Row(0, 9), expected);
        EXPECT_EQ(drawn.Row(1, 9), expected);
        EXPECT_EQ(drawn.Row(2, 9), std::vector<COLORREF>(9, kGround));
    }
}

}  // namespace
}  // namespace brennvar
