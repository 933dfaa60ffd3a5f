// Small image files for tests: some complete, in hexadecimal, and the parts of which others are put together.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "image/DecodeImage.h"
#include "support/HexBytes.h"

namespace brennvar::test {

// 3 x 2, a palette with tRNS, two bits a pixel, compressed: red, half green, nothing; nothing, nothing, blue.
inline constexpr std::string_view kPalettePng =
    "89504e470d0a1a0a 0000000d 49484452 00000003 00000002 0203000000 e01a8e89"
    "0000000c 504c5445 000000 00ff00 ff0000 0000ff da647531"
    "00000002 74524e53 0080 9b2b4e18"
    "0000000c 49444154 08d76398c0c0030001c0009d b6cb8652"
    "00000000 49454e44 ae426082";

// 16 x 8: eight columns (200, 30, 60), eight columns (20, 40, 220).
inline constexpr std::string_view kRgbJpeg =
    "ffd8ffe000104a46494600010100000100010000ffdb0043000302020302020303030304030304050805050404050a070706080c0a0c"
    "0c0b0a0b0b0d0e12100d0e110e0b0b1016101113141515150c0f171816141812141514ffdb00430103040405040509050509140d0b0d"
    "1414141414141414141414141414141414141414141414141414141414141414141414141414141414141414141414141414ffc00011"
    "080008001003011100021101031101ffc40014000100000000000000000000000000000007ffc4001410010000000000000000000000"
    "0000000000ffc400160101010100000000000000000000000000090608ffc40014110100000000000000000000000000000000ffda00"
    "0c03010002110311003f000a4d36e8c48e8df7ffd9";

// 8 x 16, progressive, of grey only: eight rows 40, eight rows 200.
inline constexpr std::string_view kGreyJpegHead =
    "ffd8ffe000104a46494600010100000100010000ffdb0043000302020302020303030304030304050805050404050a070706080c0a0c"
    "0c0b0a0b0b0d0e12100d0e110e0b0b1016101113141515150c0f171816141812141514ffc2000b080010000801011100ffc400150001"
    "0100000000000000000000000000000708";
inline constexpr std::string_view kGreyJpegScans =
    "ffda000801010000000109b5bfffc40014100100000000000000000000000000000010ffda00080101000105023fffc4001410010000"
    "0000000000000000000000000010ffda0008010100063f023fffc40014100100000000000000000000000000000010ffda0008010100"
    "013f213fffda0008010100000010bfffc40014100100000000000000000000000000000010ffda0008010100013f103fffd9";

// 8 x 8 in four inks, all (200, 30, 60): Adobe's marker, then what follows it, stored as YCCK.
inline constexpr std::string_view kAdobeMarker = "ffee000e41646f626500640000000002";
inline constexpr std::string_view kInkJpeg =
    "ffdb0043000302020302020303030304030304050805050404050a070706080c0a0c0c0b0a0b0b0d0e12100d0e110e0b0b1016101113"
    "141515150c0f171816141812141514ffdb00430103040405040509050509140d0b0d1414141414141414141414141414141414141414"
    "141414141414141414141414141414141414141414141414141414141414ffc00014080008000804011100021101031101041100ffc4"
    "001500010100000000000000000000000000000608ffc40014100100000000000000000000000000000000ffc4001501010100000000"
    "000000000000000000000609ffc40014110100000000000000000000000000000000ffda000e040100021103110400003f006a5a9ceb"
    "01ffd9";

// 2 x 2 on a canvas of 3 x 3 from (1, 1), four colours, of which the fourth is transparent: red, green; blue,
// nothing. No end mark, so that every cut of it is one of the image.
inline constexpr std::string_view kGif =
    "474946383961 0300 0300 91 00 00 ff0000 00ff00 0000ff ffffff"
    "21f9 04 01 0000 03 00"
    "2c 0100 0100 0200 0200 00"
    "02 03 443405 00";

// 10 x 2: the first and the last column white.
inline constexpr std::string_view kWbmp = "0000 0a02 8040 8040";

inline std::string LittleEndian(std::uint32_t value, unsigned size) {
    std::string text;
    for (; size > 0; --size, value >>= 8) text += static_cast<char>(value);
    return text;
}
inline std::string BigEndian(std::uint32_t value) {
    const std::string text = LittleEndian(value, 4);
    return {text.rbegin(), text.rend()};
}

// One chunk with its checksum: the CRC of ISO 3309, a bit at a time.
inline std::string PngChunk(std::string_view name, std::string_view data) {
    const std::string content = std::string(name) + std::string(data);
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char c : content) {
        crc ^= static_cast<std::uint8_t>(c);
        for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ (crc & 1 ? 0xEDB88320 : 0);
    }
    return BigEndian(static_cast<std::uint32_t>(data.size())) + content + BigEndian(~crc);
}

// A PNG whose rows are stored without compression (RFC 1950 and 1951, block type 0). rows: as they are before that,
// each with its filter byte, at most 65535 bytes. extra: chunks between IHDR and IDAT.
inline std::vector<std::byte> StoredPng(std::uint32_t width, std::uint32_t height,
                                        std::string_view depthTypeInterlace, std::string_view rows,
                                        std::string_view extra = "") {
    std::uint32_t a = 1, b = 0;  // Adler-32
    for (const char c : rows) {
        a = (a + static_cast<std::uint8_t>(c)) % 65521;
        b = (b + a) % 65521;
    }
    const auto size = static_cast<std::uint32_t>(rows.size());
    const std::string head = BigEndian(width) + BigEndian(height) + std::string(depthTypeInterlace.substr(0, 2)) +
                             std::string(2, '\0') + std::string(depthTypeInterlace.substr(2));
    const std::string stored = "\x78\x01\x01" + LittleEndian(size, 2) + LittleEndian(~size, 2) + std::string(rows) +
                               BigEndian(b << 16 | a);
    const std::string file = "\x89PNG\r\n\x1A\n" + PngChunk("IHDR", head) + std::string(extra) +
                             PngChunk("IDAT", stored) + PngChunk("IEND", "");
    const auto bytes = std::as_bytes(std::span(file));
    return {bytes.begin(), bytes.end()};
}

// None: the file is refused.
inline std::vector<std::uint32_t> PixelsOf(const std::vector<std::byte>& file) {
    const auto bitmap = DecodeImage(file);
    return bitmap ? bitmap->pixels : std::vector<std::uint32_t>{};
}

}  // namespace brennvar::test
