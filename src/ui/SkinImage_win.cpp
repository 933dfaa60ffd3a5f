#include "ui/SkinImage_win.h"

#include <cstdint>
#include <cstring>
#include <optional>
#include <vector>

#include "image/DecodeImage.h"
#include "image/NinePieces.h"
#include "image/StateStrip.h"
#include "ui/Paint_win.h"
#include "ui/PixelSheet_win.h"

namespace brennvar {
namespace {

constexpr LONGLONG kLargestFileSize = 8 << 20;

std::optional<std::vector<std::byte>> ReadWholeFile(const std::string& path) {
    const UniqueFile file(::CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
    LARGE_INTEGER size{};
    if (!file || !::GetFileSizeEx(file.Get(), &size) || size.QuadPart > kLargestFileSize) return std::nullopt;
    std::vector<std::byte> bytes(static_cast<std::size_t>(size.QuadPart));
    DWORD readSize = 0;
    if (!::ReadFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &readSize, nullptr) ||
        readSize != bytes.size()) {
        return std::nullopt;
    }
    return bytes;
}

ImageRect ToImageRect(const RECT& rect) {
    return {rect.left, rect.top, WidthOf(rect), HeightOf(rect)};
}
RECT ToRect(const ImageRect& rect) {
    return {rect.left, rect.top, rect.left + rect.width, rect.top + rect.height};
}

// Takes each pixel from one pixel of the source: a mean of neighbours would let those of the next frame in.
class CHardStretch {
public:
    explicit CHardStretch(HDC dc) : m_dc(dc), m_old(::SetStretchBltMode(dc, COLORONCOLOR)) {}
    CHardStretch(const CHardStretch&) = delete;
    CHardStretch& operator=(const CHardStretch&) = delete;
    ~CHardStretch() { ::SetStretchBltMode(m_dc, m_old); }

private:
    HDC m_dc;
    int m_old;
};

// One in memory that the thread keeps: to make one takes longer than most pictures take to be drawn. Null without
// memory.
HDC SourceDc() {
    static thread_local UniqueMemoryDc s_memory;
    if (!s_memory) s_memory = UniqueMemoryDc(::CreateCompatibleDC(nullptr));
    return s_memory.Get();
}

}  // namespace

CSkinImage CSkinImage::Load(const std::string& path) {
    const auto file = ReadWholeFile(path);
    const auto bitmap = file ? DecodeImage(*file) : std::nullopt;
    return bitmap ? FromBitmap(*bitmap) : CSkinImage();
}

CSkinImage CSkinImage::FromBitmap(const Bitmap& bitmap) {
    CSkinImage image;
    if (bitmap.pixels.empty()) return image;
    std::uint32_t* pixels = nullptr;
    image.m_bitmap = MakePixelBitmap(bitmap.width, bitmap.height, pixels);
    if (!image.m_bitmap) return image;
    std::memcpy(pixels, bitmap.pixels.data(), bitmap.pixels.size() * sizeof(std::uint32_t));
    image.m_width = bitmap.width;
    image.m_height = bitmap.height;
    return image;
}

SIZE CSkinImage::FrameSizeOr(SIZE plainSize, int frameCount) const {
    constexpr LONG kLeast = 8;
    constexpr LONG kMostTimes = 4;
    const SIZE frame{m_width / frameCount, m_height};
    const auto isUsable = [](LONG size, LONG plain) { return size >= kLeast && size <= kMostTimes * plain; };
    return isUsable(frame.cx, plainSize.cx) && isUsable(frame.cy, plainSize.cy) ? frame : plainSize;
}

void CSkinImage::Draw(HDC target, int left, int top) const {
    DrawPart(target, {left, top, left + m_width, top + m_height}, {0, 0, m_width, m_height});
}

void CSkinImage::DrawPart(HDC target, const RECT& to, const RECT& from, BYTE opacity) const {
    const RECT whole{0, 0, m_width, m_height};
    RECT part{};
    if (!m_bitmap || ::IsRectEmpty(&to) || !::IntersectRect(&part, &from, &whole)) return;
    const HDC source = SourceDc();
    if (!source) return;
    const CSelect select(source, m_bitmap.Get());
    const CHardStretch stretch(target);
    const BLENDFUNCTION blend{AC_SRC_OVER, 0, opacity, AC_SRC_ALPHA};
    ::AlphaBlend(target, to.left, to.top, WidthOf(to), HeightOf(to), source, part.left, part.top, WidthOf(part),
                 HeightOf(part), blend);
}

void CSkinImage::DrawFrame(HDC target, const RECT& to, int frame, int frameCount, BYTE opacity) const {
    DrawPart(target, to, ToRect(FrameRect(m_width, m_height, frame, frameCount)), opacity);
}

void CSkinImage::DrawNine(HDC target, const RECT& to, const RECT& borders) const {
    if (!m_bitmap || ::IsRectEmpty(&to)) return;
    const ImageBorders widths{borders.left, borders.top, borders.right, borders.bottom};
    for (const NinePiece& piece : NinePieces(m_width, m_height, ToImageRect(to), widths)) {
        DrawPart(target, ToRect(piece.to), ToRect(piece.from));  // which leaves out those without pixels
    }
}

}  // namespace brennvar
