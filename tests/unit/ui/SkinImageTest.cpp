#include "ui/SkinImage_win.h"

#include <gtest/gtest.h>

#include "support/TempFolder.h"

namespace brennvar {

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

}  // namespace brennvar
