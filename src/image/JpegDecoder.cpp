// JPEG through libjpeg: grey, RGB (from YCbCr) and the four inks of print shops.
#include <csetjmp>
#include <cstdio>
// jpeglib.h uses FILE and size_t without including what declares them.
#include <jpeglib.h>

#include "image/DecodeImage.h"
#include "image/Decoders.h"

namespace brennvar {
namespace {

// Cameras and painting programs write about a dozen; each costs a walk through the whole image.
constexpr int kMostScans = 64;
// A progressive image is kept as coefficients, 2 bytes each, until its last scan: 4 inks of the most pixels.
constexpr long kMostMemorySize = 4L * 2 * kMostPixels + (8L << 20);

// What the decoder holds. It stands outside of the function that libjpeg jumps back into, so that a jump passes no
// destructor.
struct JpegState {
    jpeg_decompress_struct info{};
    jpeg_error_mgr errors{};
    jpeg_progress_mgr progress{};
    std::jmp_buf back{};
    std::optional<Bitmap> bitmap;
    std::vector<JSAMPLE> row;

    JpegState() = default;
    JpegState(const JpegState&) = delete;
    JpegState& operator=(const JpegState&) = delete;
    ~JpegState() { jpeg_destroy_decompress(&info); }
};

[[noreturn]] void OnError(j_common_ptr info) {
    std::longjmp(static_cast<JpegState*>(info->client_data)->back, 1);
}

// A level below zero tells of damage that libjpeg would paint over.
void OnMessage(j_common_ptr info, int level) {
    if (level < 0) OnError(info);
}

void OnProgress(j_common_ptr info) {
    if (static_cast<JpegState*>(info->client_data)->info.input_scan_number > kMostScans) OnError(info);
}

void PutRgbRow(const JpegState& state, std::uint32_t* to) {
    const JSAMPLE* from = state.row.data();
    for (int x = 0; x < state.bitmap->width; ++x, from += 3) to[x] = Premultiplied(from[0], from[1], from[2], 255);
}

// Adobe's programs, and those that follow them, store how much light is left instead of how much ink there is.
void PutInkRow(const JpegState& state, std::uint32_t* to) {
    const std::uint32_t turn = state.info.saw_Adobe_marker ? 0 : 0xFF;
    const JSAMPLE* from = state.row.data();
    for (int x = 0; x < state.bitmap->width; ++x, from += 4) {
        const std::uint32_t black = from[3] ^ turn;
        const auto part = [&](JSAMPLE ink) { return ((ink ^ turn) * black + 127) / 255; };
        to[x] = Premultiplied(part(from[0]), part(from[1]), part(from[2]), 255);
    }
}

// libjpeg jumps back here; nothing in this function has a destructor.
bool ReadJpeg(JpegState& state, std::span<const std::byte> file) {
    jpeg_decompress_struct& info = state.info;
    if (setjmp(state.back)) return false;
    jpeg_create_decompress(&info);
    info.mem->max_memory_to_use = kMostMemorySize;
    info.progress = &state.progress;
    jpeg_mem_src(&info, reinterpret_cast<const unsigned char*>(file.data()),
                 static_cast<unsigned long>(file.size()));
    (void)jpeg_read_header(&info, TRUE);  // TRUE: what holds no image is an error

    const int parts = info.num_components;
    if (parts != 1 && parts != 3 && parts != 4) return false;
    info.out_color_space = parts == 4 ? JCS_CMYK : JCS_RGB;
    state.bitmap = MakeBitmap(info.image_width, info.image_height);
    if (!state.bitmap) return false;
    (void)jpeg_start_decompress(&info);  // never suspended: the whole file is there
    state.row.resize(std::size_t{info.output_width} * static_cast<std::size_t>(info.output_components));
    while (info.output_scanline < info.output_height) {
        std::uint32_t* const to =
            state.bitmap->pixels.data() + std::size_t{info.output_scanline} * info.output_width;
        JSAMPROW row = state.row.data();
        (void)jpeg_read_scanlines(&info, &row, 1);
        if (parts == 4) {
            PutInkRow(state, to);
        } else {
            PutRgbRow(state, to);
        }
    }
    (void)jpeg_finish_decompress(&info);  // reads up to the end marker
    return true;
}

}  // namespace

std::optional<Bitmap> DecodeJpeg(std::span<const std::byte> file) {
    JpegState state;
    state.info.err = jpeg_std_error(&state.errors);
    state.info.client_data = &state;
    state.errors.error_exit = OnError;
    state.errors.emit_message = OnMessage;
    state.progress.progress_monitor = OnProgress;
    if (!ReadJpeg(state, file)) return std::nullopt;
    return std::move(state.bitmap);
}

}  // namespace brennvar
