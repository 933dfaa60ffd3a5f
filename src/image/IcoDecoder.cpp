// ICO: the largest of its images and, among these, the deepest. Each is a PNG or a BMP without file header: colours
// ("XOR mask"), then one bit a pixel that is set where nothing is drawn ("AND mask"), both from the bottom row up.
#include <algorithm>
#include <array>
#include <tuple>

#include "image/ByteReader.h"
#include "image/Decoders.h"

namespace brennvar {
namespace {

constexpr std::size_t kBmpHeaderSize = 40;

// One image of the file, as its own header has it: the sizes in the directory end at 255, its depths are often
// zero.
struct Entry {
    std::span<const std::byte> bytes;
    std::uint32_t width = 0, height = 0;
    unsigned bits = 0;  // a pixel
};

struct BmpHeader {
    std::uint32_t headerSize = 0, width = 0, bothHeights = 0, compression = 0, colourCount = 0;
    unsigned bits = 0;
};

BmpHeader ReadBmpHeader(ByteReader& reader) {
    BmpHeader header;
    header.headerSize = reader.U32();
    header.width = reader.U32();
    header.bothHeights = reader.U32();  // of colours and mask; negative, that is huge, if the top row came first
    reader.Skip(2);                     // planes
    header.bits = reader.U16();
    header.compression = reader.U32();
    reader.Skip(4 + 4 + 4);  // size of the pixels, pixels a metre
    header.colourCount = reader.U32();
    reader.Skip(4);  // important colours
    return header;
}

// IHDR is the first chunk: signature, length and name, then width and height with the highest byte first, bits a
// channel and colour type.
Entry DescribePng(std::span<const std::byte> bytes) {
    Entry entry{bytes};
    ByteReader reader(bytes);
    reader.Skip(8 + 4 + 4);
    const auto number = [&reader] {
        std::uint32_t value = 0;
        for (int i = 0; i < 4; ++i) value = value << 8 | reader.U8();
        return value;
    };
    entry.width = number();
    entry.height = number();
    const unsigned channelBits = reader.U8();
    constexpr std::array<unsigned, 7> kChannels = {1, 0, 3, 1, 2, 0, 4};  // by colour type
    const std::uint8_t colourType = reader.U8();
    entry.bits = channelBits * (colourType < kChannels.size() ? kChannels[colourType] : 0);
    return entry;
}

Entry DescribeBmp(std::span<const std::byte> bytes) {
    ByteReader reader(bytes);
    const BmpHeader header = ReadBmpHeader(reader);
    return {bytes, header.width, header.bothHeights / 2, header.bits};
}

// Nothing when the directory points outside of the file: such a file is damaged, whatever its other entries.
std::optional<Entry> BestEntry(std::span<const std::byte> file) {
    ByteReader reader(file);
    reader.Skip(2 + 2);  // reserved, type
    const unsigned count = reader.U16();
    std::optional<Entry> best;
    const auto rank = [](const Entry& e) { return std::tuple(std::uint64_t{e.width} * e.height, e.bits); };
    for (unsigned i = 0; i < count; ++i) {
        reader.Skip(1 + 1 + 1 + 1 + 2 + 2);  // width, height, colours, reserved, planes, bits a pixel
        const std::uint32_t size = reader.U32();
        const std::uint32_t offset = reader.U32();
        if (!reader.IsGood() || offset > file.size() || size > file.size() - offset) return std::nullopt;
        const auto bytes = file.subspan(offset, size);
        const Entry entry = IsPng(bytes) ? DescribePng(bytes) : DescribeBmp(bytes);
        if (!best || rank(entry) > rank(*best)) best = entry;
    }
    return best;
}

// Rows are filled up to four bytes.
std::size_t RowSize(std::uint32_t width, unsigned bits) {
    return (std::size_t{width} * bits + 31) / 32 * 4;
}

unsigned BitsAt(std::span<const std::byte> row, std::uint32_t x, unsigned bits) {
    const std::size_t bit = std::size_t{x} * bits;
    const unsigned shift = 8 - bits - static_cast<unsigned>(bit % 8);
    return std::to_integer<unsigned>(row[bit / 8]) >> shift & ((1U << bits) - 1);
}

// Colours and mask of a BMP entry that were found to lie inside of it.
struct Planes {
    unsigned bits = 0;
    std::size_t rowSize = 0, maskRowSize = 0;
    std::vector<std::uint32_t> palette;
    std::span<const std::byte> colours, mask;  // an empty mask: everything is drawn
    bool hasAlpha = false;
};

// One pixel, or nothing for a colour that the palette does not have.
std::optional<std::uint32_t> PixelAt(const Planes& planes, std::size_t y, std::uint32_t x) {
    const auto row = planes.colours.subspan(y * planes.rowSize, planes.rowSize);
    const auto part = [&](std::size_t i) {
        return std::to_integer<std::uint32_t>(row[std::size_t{x} * (planes.bits / 8) + i]);
    };
    if (planes.hasAlpha) return Premultiplied(part(2), part(1), part(0), part(3));
    if (!planes.mask.empty()) {
        const auto maskRow = planes.mask.subspan(y * planes.maskRowSize, planes.maskRowSize);
        if (BitsAt(maskRow, x, 1)) return 0;
    }
    if (planes.bits > 8) return Premultiplied(part(2), part(1), part(0), 255);
    const unsigned index = BitsAt(row, x, planes.bits);
    if (index >= planes.palette.size()) return std::nullopt;
    return planes.palette[index];
}

bool IsKnownDepth(unsigned bits) {
    return bits == 1 || bits == 4 || bits == 8 || bits == 24 || bits == 32;
}

std::vector<std::uint32_t> ReadBmpPalette(ByteReader& reader, const BmpHeader& header) {
    std::vector<std::uint32_t> palette;
    if (header.bits > 8) return palette;
    const std::uint32_t most = 1U << header.bits;
    const std::uint32_t count = header.colourCount == 0 ? most : std::min(header.colourCount, most);
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint8_t blue = reader.U8(), green = reader.U8(), red = reader.U8();
        reader.Skip(1);
        palette.push_back(Premultiplied(red, green, blue, 255));
    }
    return palette;
}

// The fourth byte is alpha unless all of them are zero, as in files from before there was alpha.
bool HasAlpha(std::span<const std::byte> colours) {
    for (std::size_t i = 3; i < colours.size(); i += 4) {
        if (colours[i] != std::byte{0}) return true;
    }
    return false;
}

std::optional<Planes> ReadPlanes(ByteReader& reader, const BmpHeader& header, std::uint32_t height) {
    Planes planes;
    planes.bits = header.bits;
    planes.rowSize = RowSize(header.width, header.bits);
    planes.maskRowSize = RowSize(header.width, 1);
    planes.palette = ReadBmpPalette(reader, header);
    planes.colours = reader.Take(planes.rowSize * height);
    if (!reader.IsGood()) return std::nullopt;
    planes.hasAlpha = header.bits == 32 && HasAlpha(planes.colours);
    planes.mask = reader.Take(planes.maskRowSize * height);
    // Alpha says more than the mask, which is then often left out.
    if (!reader.IsGood() && !planes.hasAlpha) return std::nullopt;
    return planes;
}

std::optional<Bitmap> DecodeBmp(std::span<const std::byte> bytes) {
    ByteReader reader(bytes);
    const BmpHeader header = ReadBmpHeader(reader);
    if (!reader.IsGood() || header.headerSize != kBmpHeaderSize || header.compression != 0 ||
        header.bothHeights % 2 != 0 || !IsKnownDepth(header.bits)) {
        return std::nullopt;
    }
    const std::uint32_t height = header.bothHeights / 2;
    std::optional<Bitmap> bitmap = MakeBitmap(header.width, height);
    if (!bitmap) return std::nullopt;
    const std::optional<Planes> planes = ReadPlanes(reader, header, height);
    if (!planes) return std::nullopt;
    auto to = bitmap->pixels.begin();
    for (std::uint32_t y = height; y-- > 0;) {
        for (std::uint32_t x = 0; x < header.width; ++x, ++to) {
            const std::optional<std::uint32_t> pixel = PixelAt(*planes, y, x);
            if (!pixel) return std::nullopt;
            *to = *pixel;
        }
    }
    return bitmap;
}

}  // namespace

std::optional<Bitmap> DecodeIco(std::span<const std::byte> file) {
    const std::optional<Entry> best = BestEntry(file);
    if (!best) return std::nullopt;
    return IsPng(best->bytes) ? DecodePng(best->bytes) : DecodeBmp(best->bytes);
}

}  // namespace brennvar
