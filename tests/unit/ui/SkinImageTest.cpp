#include "ui/SkinImage_win.h"

#include <gtest/gtest.h>
#include <psapi.h>

#include "support/TempFolder.h"
#include "ui/PixelSheet_win.h"

namespace brennvar {
namespace {

// Of the first pixel, drawn on a black ground: 0x00RRGGBB.
std::uint32_t Drawn(const CSkinImage& image) {
    const CPixelSheet sheet(1, 1);
    sheet.At(0, 0) = 0;
    image.Draw(sheet.Dc(), 0, 0);
    ::GdiFlush();
    return sheet.At(0, 0) & 0xFFFFFF;
}

// Bytes that are nobody else's.
std::size_t PrivateMemory() {
    PROCESS_MEMORY_COUNTERS counters{};
    ::GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof counters);
    return counters.PagefileUsage;
}

}  // namespace

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

TEST(SkinImageTest, GivesUpItsPixelsUntilItIsDrawn) {
    const test::TempFolder folder;
    const std::string header("\0\0\x90\0\x90\0", 6);  // 2048 x 2048 pixels of one bit
    constexpr std::size_t kRow = 256;
    constexpr std::size_t kPixels = std::size_t{4} * 2048 * 2048;
    const std::string path = folder.Write("white.wbmp", header + std::string(kRow * 2048, '\xFF'));
    CSkinImage loaded;
    loaded = CSkinImage::Load(path);
    ASSERT_TRUE(::DeleteFileA(path.c_str()));
    std::string point("\0\0\1\1\x80", 5);
    const CSkinImage small = CSkinImage::Load(folder.Write("point.wbmp", point));
    const CSkinImage made = CSkinImage::FromBitmap({.width = 1, .height = 1, .pixels = {0xFF123456}});
    (void)CSkinImage::Load(folder.Write("gone.wbmp", point));
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(Drawn(loaded), 0xFFFFFFU);
        const std::size_t before = PrivateMemory();
        CSkinImage::DropPixels();
        EXPECT_LE(PrivateMemory() + kPixels - (kPixels >> 3), before);
        EXPECT_TRUE(loaded);
        EXPECT_EQ(loaded.Width(), 2048);
        EXPECT_EQ(loaded.Height(), 2048);
        EXPECT_EQ(Drawn(small), 0xFFFFFFU);
        EXPECT_EQ(Drawn(made), 0x123456U);
    }
}

}  // namespace brennvar
