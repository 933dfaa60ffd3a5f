#include "ui/SkinImage_win.h"

#include <cstdint>
#include <cstring>
#include <optional>
#include <utility>
#include <vector>

#include "base/Handles_win.h"
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

// Null without pixels, and without memory.
UniqueBitmap PixelsOf(const Bitmap& bitmap) {
    std::uint32_t* pixels = nullptr;
    if (bitmap.pixels.empty()) return {};
    UniqueBitmap made = MakePixelBitmap(bitmap.width, bitmap.height, pixels);
    if (made) std::memcpy(pixels, bitmap.pixels.data(), bitmap.pixels.size() * sizeof(std::uint32_t));
    return made;
}

}  // namespace

struct CSkinImage::Picture {
    Picture(const Bitmap& bitmap, UniqueBitmap&& drawn, std::vector<std::byte>&& ofFile)
        : width(bitmap.width), height(bitmap.height), pixels(std::move(drawn)), file(std::move(ofFile)) {
        if (s_first) s_first->before = this;
        s_first = this;
    }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;
    ~Picture() {
        (before ? before->after : s_first) = after;
        if (after) after->before = before;
    }

    // Null without memory.
    HBITMAP Pixels() {
        if (!pixels) {
            if (const auto bitmap = DecodeImage(file)) pixels = PixelsOf(*bitmap);
        }
        return pixels.Get();
    }

    // All of the thread.
    static inline thread_local Picture* s_first = nullptr;
    Picture* before = nullptr;
    Picture* after = s_first;

    const int width;
    const int height;
    UniqueBitmap pixels;
    const std::vector<std::byte> file;  // as it was read; empty when there is none, and the pixels have to stay
};

CSkinImage::CSkinImage() = default;
CSkinImage::CSkinImage(CSkinImage&&) noexcept = default;
CSkinImage& CSkinImage::operator=(CSkinImage&&) noexcept = default;
CSkinImage::~CSkinImage() = default;
CSkinImage::CSkinImage(std::unique_ptr<Picture> picture) : m_picture(std::move(picture)) {}

CSkinImage CSkinImage::Load(const std::string& path) {
    auto file = ReadWholeFile(path);
    const auto bitmap = file ? DecodeImage(*file) : std::nullopt;
    if (!bitmap) return {};
    UniqueBitmap pixels = PixelsOf(*bitmap);
    if (!pixels) return {};
    // What takes as much as the pixels do is not kept beside them.
    if (file->size() > bitmap->pixels.size()) file->clear();
    return CSkinImage(std::make_unique<Picture>(*bitmap, std::move(pixels), std::move(*file)));
}

CSkinImage CSkinImage::FromBitmap(const Bitmap& bitmap) {
    UniqueBitmap pixels = PixelsOf(bitmap);
    if (!pixels) return {};
    return CSkinImage(std::make_unique<Picture>(bitmap, std::move(pixels), std::vector<std::byte>()));
}

void CSkinImage::DropPixels() {
    for (Picture* picture = Picture::s_first; picture; picture = picture->after) {
        if (!picture->file.empty()) picture->pixels.Reset();
    }
}

int CSkinImage::Width() const {
    return m_picture ? m_picture->width : 0;
}

int CSkinImage::Height() const {
    return m_picture ? m_picture->height : 0;
}

SIZE CSkinImage::FrameSizeOr(SIZE plainSize, int frameCount) const {
    constexpr LONG kLeast = 8;
    constexpr LONG kMostTimes = 4;
    const SIZE frame{Width() / frameCount, Height()};
    const auto isUsable = [](LONG size, LONG plain) { return size >= kLeast && size <= kMostTimes * plain; };
    return isUsable(frame.cx, plainSize.cx) && isUsable(frame.cy, plainSize.cy) ? frame : plainSize;
}

void CSkinImage::Draw(HDC target, int left, int top) const {
    DrawPart(target, {left, top, left + Width(), top + Height()}, {0, 0, Width(), Height()});
}

void CSkinImage::DrawPart(HDC target, const RECT& to, const RECT& from, BYTE opacity) const {
    const RECT whole{0, 0, Width(), Height()};
    RECT part{};
    if (!m_picture || ::IsRectEmpty(&to) || !::IntersectRect(&part, &from, &whole)) return;
    const HBITMAP pixels = m_picture->Pixels();
    const HDC source = SourceDc();
    if (!pixels || !source) return;
    const CSelect select(source, pixels);
    const CHardStretch stretch(target);
    const BLENDFUNCTION blend{AC_SRC_OVER, 0, opacity, AC_SRC_ALPHA};
    ::AlphaBlend(target, to.left, to.top, WidthOf(to), HeightOf(to), source, part.left, part.top, WidthOf(part),
                 HeightOf(part), blend);
}

void CSkinImage::DrawFrame(HDC target, const RECT& to, int frame, int frameCount, BYTE opacity) const {
    DrawPart(target, to, ToRect(FrameRect(Width(), Height(), frame, frameCount)), opacity);
}

void CSkinImage::DrawNine(HDC target, const RECT& to, const RECT& borders) const {
    if (!m_picture || ::IsRectEmpty(&to)) return;
    const ImageBorders widths{borders.left, borders.top, borders.right, borders.bottom};
    for (const NinePiece& piece : NinePieces(Width(), Height(), ToImageRect(to), widths)) {
        DrawPart(target, ToRect(piece.to), ToRect(piece.from));  // which leaves out those without pixels
    }
}

}  // namespace brennvar
