// GIF: the first frame on its transparent canvas.
#include <array>

#include "image/ByteReader.h"
#include "image/Decoders.h"
#include "image/LzwDecoder.h"

namespace brennvar {
namespace {

constexpr std::size_t kSignatureSize = 6;
constexpr std::uint8_t kExtension = 0x21, kImage = 0x2C;
constexpr std::uint8_t kGraphicControl = 0xF9, kPlainText = 0x01;

struct Palette {
    std::array<std::uint32_t, 256> colours{};
    unsigned count = 0;
};

struct Frame {
    unsigned left = 0, top = 0, width = 0, height = 0;
    bool isInterlaced = false;
    Palette palette;
    std::vector<std::uint8_t> indices;
};

struct Canvas {
    unsigned width = 0, height = 0;
    Palette palette;
};

// flags: bit 7 says that there is a palette, bits 0 to 2 that it has 2 << n colours.
Palette ReadPalette(ByteReader& reader, std::uint8_t flags) {
    Palette palette;
    if (!(flags & 0x80)) return palette;
    palette.count = 2U << (flags & 7);
    for (unsigned i = 0; i < palette.count; ++i) {
        const std::uint8_t red = reader.U8(), green = reader.U8(), blue = reader.U8();
        palette.colours[i] = Premultiplied(red, green, blue, 255);
    }
    return palette;
}

Canvas ReadCanvas(ByteReader& reader) {
    Canvas canvas;
    canvas.width = reader.U16();
    canvas.height = reader.U16();
    const std::uint8_t flags = reader.U8();
    reader.Skip(2);  // background colour, which no viewer paints, and pixel aspect ratio
    canvas.palette = ReadPalette(reader, flags);
    return canvas;
}

// The transparent palette index that holds for the next frame, or nothing.
std::optional<std::uint8_t> ReadExtension(ByteReader& reader, std::optional<std::uint8_t> transparent) {
    const std::uint8_t kind = reader.U8();
    if (kind == kPlainText) transparent.reset();  // it was meant for the text
    while (const std::uint8_t size = reader.U8()) {
        const auto block = reader.Take(size);
        if (kind != kGraphicControl || block.size() < 4) continue;
        transparent.reset();
        if ((block[0] & std::byte{1}) != std::byte{0}) transparent = std::to_integer<std::uint8_t>(block[3]);
    }
    return transparent;
}

bool ReadFrameHead(ByteReader& reader, const Canvas& canvas, Frame& frame) {
    frame.left = reader.U16();
    frame.top = reader.U16();
    frame.width = reader.U16();
    frame.height = reader.U16();
    const std::uint8_t flags = reader.U8();
    frame.isInterlaced = (flags & 0x40) != 0;
    frame.palette = (flags & 0x80) ? ReadPalette(reader, flags) : canvas.palette;
    return reader.IsGood() && frame.palette.count > 0 && frame.width > 0 && frame.height > 0 &&
           frame.left + frame.width <= canvas.width && frame.top + frame.height <= canvas.height;
}

bool ReadIndices(ByteReader& reader, Frame& frame) {
    const std::uint8_t symbolBits = reader.U8();
    if (symbolBits < LzwDecoder::kFewestSymbolBits || symbolBits > LzwDecoder::kMostSymbolBits) return false;
    frame.indices.resize(std::size_t{frame.width} * frame.height);
    LzwDecoder decoder(symbolBits, frame.indices);
    while (const std::uint8_t size = reader.U8()) {
        if (!decoder.Decode(reader.Take(size))) return false;
    }
    return reader.IsGood() && decoder.IsFull();
}

// The rows of the canvas in the order in which a frame stores them. Interlaced: every 8th, those between, and so
// on.
std::vector<unsigned> RowOrder(const Frame& frame) {
    std::vector<unsigned> order;
    order.reserve(frame.height);
    struct Pass {
        unsigned first, step;
    };
    static constexpr Pass kInterlaced[] = {{0, 8}, {4, 8}, {2, 4}, {1, 2}};
    static constexpr Pass kPlain[] = {{0, 1}};
    const std::span<const Pass> passes = frame.isInterlaced ? std::span<const Pass>(kInterlaced) : kPlain;
    for (const Pass& pass : passes) {
        for (unsigned y = pass.first; y < frame.height; y += pass.step) order.push_back(y);
    }
    return order;
}

bool PutFrame(const Frame& frame, std::optional<std::uint8_t> transparent, Bitmap& bitmap) {
    const std::uint8_t* from = frame.indices.data();
    for (const unsigned y : RowOrder(frame)) {
        const std::size_t row = std::size_t{frame.top + y} * static_cast<unsigned>(bitmap.width) + frame.left;
        for (unsigned x = 0; x < frame.width; ++x, ++from) {
            if (*from == transparent) continue;
            if (*from >= frame.palette.count) return false;
            bitmap.pixels[row + x] = frame.palette.colours[*from];
        }
    }
    return true;
}

}  // namespace

std::optional<Bitmap> DecodeGif(std::span<const std::byte> file) {
    ByteReader reader(file);
    reader.Skip(kSignatureSize);
    const Canvas canvas = ReadCanvas(reader);
    std::optional<std::uint8_t> transparent;
    std::uint8_t block = reader.U8();
    for (; block == kExtension; block = reader.U8()) transparent = ReadExtension(reader, transparent);
    Frame frame;
    if (block != kImage || !ReadFrameHead(reader, canvas, frame)) return std::nullopt;
    std::optional<Bitmap> bitmap = MakeBitmap(canvas.width, canvas.height);
    if (!bitmap || !ReadIndices(reader, frame) || !PutFrame(frame, transparent, *bitmap)) return std::nullopt;
    return bitmap;
}

}  // namespace brennvar
