#include "ui/SkinImage_win.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "support/TempFolder.h"
#include "ui/Paint_win.h"
#include "unit/image/ImageSamples.h"

namespace brennvar {
namespace {

constexpr std::uint32_t kRed = 0xFFFF0000, kGreen = 0xFF00FF00, kBlue = 0xFF0000FF;
using Pixels = std::vector<std::uint32_t>;

// A grey picture in memory to draw on.
class Canvas {
public:
    Canvas(int width, int height) : m_width(width), m_dc(::CreateCompatibleDC(nullptr)) {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof(info.bmiHeader), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* pixels = nullptr;
        m_bitmap = UniqueBitmap(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels, nullptr, 0));
        m_pixels = {static_cast<std::uint32_t*>(pixels), static_cast<std::size_t>(width * height)};
        std::fill(m_pixels.begin(), m_pixels.end(), kGround);
        m_old = ::SelectObject(m_dc.Get(), m_bitmap.Get());
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    ~Canvas() { ::SelectObject(m_dc.Get(), m_old); }

    [[nodiscard]] HDC Dc() const { return m_dc.Get(); }
    // Colours without alpha, which drawing leaves undefined on a screen.
    [[nodiscard]] Pixels Colours() const {
        ::GdiFlush();
        Pixels colours;
        for (const std::uint32_t pixel : m_pixels) colours.push_back(pixel & 0xFFFFFF);
        return colours;
    }
    [[nodiscard]] Pixels Row(int y) const {
        const Pixels all = Colours();
        return {all.begin() + std::ptrdiff_t{y} * m_width, all.begin() + std::ptrdiff_t{y + 1} * m_width};
    }
    static constexpr std::uint32_t kGround = 0x404040;

private:
    int m_width;
    UniqueMemoryDc m_dc;
    UniqueBitmap m_bitmap;
    std::span<std::uint32_t> m_pixels;
    HGDIOBJ m_old = nullptr;
};

constexpr std::uint32_t kGround = Canvas::kGround;
constexpr std::uint32_t kR = kRed & 0xFFFFFF, kG = kGreen & 0xFFFFFF, kB = kBlue & 0xFFFFFF;

TEST(SkinImageTest, LoadsAndDrawsOverWhatIsThere) {
    const test::TempFolder folder;
    const auto file = test::FromHex(test::kPalettePng);
    const CSkinImage image =
        CSkinImage::Load(folder.Write("a.png", {reinterpret_cast<const char*>(file.data()), file.size()}));
    ASSERT_TRUE(image);
    EXPECT_EQ(image.Width(), 3);
    EXPECT_EQ(image.Height(), 2);
    const Canvas canvas(5, 3);
    image.Draw(canvas.Dc(), 1, 1);
    const Pixels colours = canvas.Colours();
    EXPECT_EQ(canvas.Row(0), Pixels(5, kGround));
    EXPECT_EQ(colours[6], kR);
    EXPECT_EQ(colours[7] & 0xFF, 0x20U);             // half green over grey
    EXPECT_NEAR(colours[7] >> 8 & 0xFF, 0xA0U, 1U);  // the rounding of the system's own blending
    EXPECT_EQ(colours[8], kGround);
    EXPECT_EQ(colours[13], kB);
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
    const CSkinImage strip = CSkinImage::FromBitmap({4, 1, {kRed, kGreen, kBlue, kRed}});
    for (const int mode : {COLORONCOLOR, HALFTONE}) {
        const Canvas canvas(9, 2);
        ::SetStretchBltMode(canvas.Dc(), mode);
        strip.DrawFrame(canvas.Dc(), {1, 0, 8, 2}, 1, 3);
        const Pixels expected = {kGround, kG, kG, kG, kG, kG, kG, kG, kGround};
        EXPECT_EQ(canvas.Row(0), expected);
        EXPECT_EQ(canvas.Row(1), expected);
        EXPECT_EQ(::GetStretchBltMode(canvas.Dc()), mode);  // as it was
        strip.DrawFrame(canvas.Dc(), {1, 0, 8, 2}, 3, 3);   // there is no such frame
        strip.DrawFrame(canvas.Dc(), {8, 0, 1, 2}, 0, 3);   // nor such a place
        EXPECT_EQ(canvas.Row(0), expected);
    }
}

}  // namespace
}  // namespace brennvar
