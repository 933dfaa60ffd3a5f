// PNG through libpng. Colours are taken as they stand: gamma and colour profiles are not looked at.
#include <png.h>

#include <bit>
#include <csetjmp>
#include <cstring>

#include "image/DecodeImage.h"
#include "image/Decoders.h"

namespace brennvar {
namespace {

static_assert(sizeof(std::uint32_t) == 4 && std::endian::native == std::endian::little,
              "libpng's order blue, green, red, alpha is that of our pixels");

// Deflate makes at most 258 bytes of 2 bits: RFC 1951, 3.2.5.
constexpr std::uint64_t kMostExpansion = 1032;

// What the decoder holds. It stands outside of the function that libpng jumps back into, so that a jump passes no
// destructor.
struct PngState {
    std::span<const std::byte> rest;
    std::uint64_t fileSize = 0;
    png_structp png = nullptr;
    png_infop info = nullptr;
    std::optional<Bitmap> bitmap;
    std::vector<png_bytep> rows;

    explicit PngState(std::span<const std::byte> file) : rest(file), fileSize(file.size()) {}
    PngState(const PngState&) = delete;
    PngState& operator=(const PngState&) = delete;
    ~PngState() { png_destroy_read_struct(&png, &info, nullptr); }
};

[[noreturn]] void OnError(png_structp png, png_const_charp) {
    png_longjmp(png, 1);
}
void OnWarning(png_structp, png_const_charp) {}  // nobody reads what libpng would print

void ReadBytes(png_structp png, png_bytep to, png_size_t size) {
    auto& state = *static_cast<PngState*>(png_get_io_ptr(png));
    if (size > state.rest.size()) png_error(png, "cut");
    std::memcpy(to, state.rest.data(), size);
    state.rest = state.rest.subspan(size);
}

void SetStrictness(png_structp png) {
    png_set_user_limits(png, kLongestSide, kLongestSide);
    // Texts, profiles and times are skipped unread; what is left is small.
    png_set_keep_unknown_chunks(png, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
    png_set_crc_action(png, PNG_CRC_ERROR_QUIT, PNG_CRC_ERROR_QUIT);
    png_set_benign_errors(png, 0);
}

// Whatever the colour type: 8 bits each of blue, green, red, alpha.
void SetOutput(png_structp png) {
    png_set_expand(png);
    png_set_scale_16(png);
    png_set_gray_to_rgb(png);
    png_set_bgr(png);
    png_set_add_alpha(png, 0xFF, PNG_FILLER_AFTER);
    (void)png_set_interlace_handling(png);  // png_read_image makes the passes itself
}

void MakeRows(PngState& state) {
    const auto width = static_cast<std::size_t>(state.bitmap->width);
    for (int y = 0; y < state.bitmap->height; ++y) {
        std::uint32_t* const row = state.bitmap->pixels.data() + static_cast<std::size_t>(y) * width;
        state.rows.push_back(reinterpret_cast<png_bytep>(row));
    }
}

// libpng jumps back here; nothing in this function has a destructor.
bool ReadPng(PngState& state) {
    if (setjmp(png_jmpbuf(state.png))) return false;
    png_set_read_fn(state.png, &state, ReadBytes);
    SetStrictness(state.png);
    png_read_info(state.png, state.info);
    const png_uint_32 width = png_get_image_width(state.png, state.info);
    const png_uint_32 height = png_get_image_height(state.png, state.info);
    if (png_get_rowbytes(state.png, state.info) * std::uint64_t{height} > state.fileSize * kMostExpansion)
        return false;
    state.bitmap = MakeBitmap(width, height);
    if (!state.bitmap) return false;
    SetOutput(state.png);
    png_read_update_info(state.png, state.info);
    if (png_get_rowbytes(state.png, state.info) != std::size_t{width} * 4) return false;
    MakeRows(state);
    png_read_image(state.png, state.rows.data());
    png_read_end(state.png, nullptr);  // the last checksums
    return true;
}

}  // namespace

std::optional<Bitmap> DecodePng(std::span<const std::byte> file) {
    PngState state(file);
    state.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, OnError, OnWarning);
    if (!state.png) return std::nullopt;
    state.info = png_create_info_struct(state.png);
    if (!state.info || !ReadPng(state)) return std::nullopt;
    constexpr std::uint32_t kOpaque = 0xFF000000;
    for (std::uint32_t& pixel : state.bitmap->pixels) {
        if (pixel < kOpaque)
            pixel = Premultiplied(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF, pixel >> 24);
    }
    return std::move(state.bitmap);
}

}  // namespace brennvar
