#include "ui/SkinImage_win.h"

#include <cstdint>
#include <cstring>
#include <map>
#include <optional>
#include <utility>
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
    static thread_local std::map<std::string, std::weak_ptr<Picture>> s_inUse;
    std::erase_if(s_inUse, [](const auto& picture) { return picture.second.expired(); });
    std::weak_ptr<Picture>& known = s_inUse[path];
    CSkinImage image;
    image.m_picture = known.lock();
    if (!image.m_picture) {
        known = image.m_picture = std::make_shared<Picture>();
        image.m_picture->unread = path;
    }
    return image;
}

CSkinImage CSkinImage::FromBitmap(const Bitmap& bitmap) {
    CSkinImage image;
    image.m_picture = std::make_shared<Picture>();
    image.m_picture->Take(bitmap);
    return image;
}

void CSkinImage::Picture::Take(const Bitmap& pixels) {
    if (pixels.pixels.empty()) return;
    std::uint32_t* copy = nullptr;
    bitmap = MakePixelBitmap(pixels.width, pixels.height, copy);
    if (!bitmap) return;
    std::memcpy(copy, pixels.pixels.data(), pixels.pixels.size() * sizeof(std::uint32_t));
    width = pixels.width;
    height = pixels.height;
}

const CSkinImage::Picture& CSkinImage::Get() const {
    static const Picture s_none;
    if (!m_picture) return s_none;
    const std::string path = std::exchange(m_picture->unread, {});
    const auto file = path.empty() ? std::nullopt : ReadWholeFile(path);
    const auto pixels = file ? DecodeImage(*file) : std::nullopt;
    if (pixels) m_picture->Take(*pixels);
    return *m_picture;
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
    const Picture& picture = Get();
    const RECT whole{0, 0, picture.width, picture.height};
    RECT part{};
    if (!picture.bitmap || ::IsRectEmpty(&to) || !::IntersectRect(&part, &from, &whole)) return;
    const HDC source = SourceDc();
    if (!source) return;
    const CSelect select(source, picture.bitmap.Get());
    const CHardStretch stretch(target);
    const BLENDFUNCTION blend{AC_SRC_OVER, 0, opacity, AC_SRC_ALPHA};
    ::AlphaBlend(target, to.left, to.top, WidthOf(to), HeightOf(to), source, part.left, part.top, WidthOf(part),
                 HeightOf(part), blend);
}

void CSkinImage::DrawFrame(HDC target, const RECT& to, int frame, int frameCount, BYTE opacity) const {
    DrawPart(target, to, ToRect(FrameRect(Width(), Height(), frame, frameCount)), opacity);
}

void CSkinImage::DrawNine(HDC target, const RECT& to, const RECT& borders) const {
    if (!*this || ::IsRectEmpty(&to)) return;
    const ImageBorders widths{borders.left, borders.top, borders.right, borders.bottom};
    for (const NinePiece& piece : NinePieces(Width(), Height(), ToImageRect(to), widths)) {
        DrawPart(target, ToRect(piece.to), ToRect(piece.from));  // which leaves out those without pixels
    }
}

}  // namespace brennvar
