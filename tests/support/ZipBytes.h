// ZIP archives byte by byte, after the format's description and not by the library under test, with whatever fault
// a test wants in them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace brennvar::test {

struct ZipEntry {
    std::string name;
    std::string packed{};  // as it lies in the archive
    std::uint16_t method = 0;
    std::uint16_t flags = 0;
    std::uint32_t crc = 0;
    std::optional<std::uint32_t> size{};        // unpacked; else that of the packed bytes
    std::optional<std::uint32_t> packedSize{};  // as the headers tell it
    std::optional<std::string> localName{};     // where the local header has another one
    std::optional<std::uint32_t> offset{};      // of the local header, as the directory tells it
    bool hasLocal = true;                       // else it stands in the directory alone
};

inline void Put16(std::string& out, std::uint32_t value) {
    out += static_cast<char>(value & 0xFF);
    out += static_cast<char>(value >> 8 & 0xFF);
}
inline void Put32(std::string& out, std::uint32_t value) {
    Put16(out, value & 0xFFFF);
    Put16(out, value >> 16);
}
inline void Put64(std::string& out, std::uint64_t value) {
    Put32(out, static_cast<std::uint32_t>(value));
    Put32(out, static_cast<std::uint32_t>(value >> 32));
}

// CRC-32 bit by bit, polynomial 0xEDB88320.
inline std::uint32_t CrcByHand(const std::string& bytes) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ ((crc & 1) != 0 ? 0xEDB88320U : 0U);
    }
    return ~crc;
}

inline ZipEntry StoredEntry(const std::string& name, const std::string& content) {
    return {.name = name, .packed = content, .crc = CrcByHand(content)};
}
// Deflated, in one block that is not compressed (RFC 1951, 3.2.4): at most 65,535 bytes.
inline ZipEntry DeflatedEntry(const std::string& name, const std::string& content) {
    std::string packed = "\x01";
    Put16(packed, static_cast<std::uint32_t>(content.size()));
    Put16(packed, ~static_cast<std::uint32_t>(content.size()) & 0xFFFF);
    return {.name = name,
            .packed = packed + content,
            .method = 8,
            .crc = CrcByHand(content),
            .size = static_cast<std::uint32_t>(content.size())};
}

struct ZipEnd {
    std::optional<std::uint16_t> count{};
    std::string comment{};
    bool isZip64 = false;  // its numbers stand in the record of zip64
};

inline std::string ZipBytes(const std::vector<ZipEntry>& entries, const ZipEnd& end = {}) {
    std::string out;
    std::string directory;
    std::uint32_t listed = 0;
    for (const ZipEntry& entry : entries) {
        const auto length = static_cast<std::uint32_t>(entry.packed.size());
        const std::uint32_t packedSize = entry.packedSize.value_or(length);
        const std::uint32_t size = entry.size.value_or(length);
        const auto offset = static_cast<std::uint32_t>(out.size());
        if (entry.hasLocal) {
            const std::string& name = entry.localName ? *entry.localName : entry.name;
            Put32(out, 0x04034B50);
            Put16(out, end.isZip64 ? 45 : 20);
            Put16(out, entry.flags);
            Put16(out, entry.method);
            Put32(out, 0x5A690000);  // 2025-03-09
            Put32(out, entry.crc);
            Put32(out, packedSize);
            Put32(out, size);
            Put16(out, static_cast<std::uint32_t>(name.size()));
            Put16(out, 0);  // extra field
            out += name + entry.packed;
        }
        ++listed;
        Put32(directory, 0x02014B50);
        Put16(directory, end.isZip64 ? 45 : 20);
        Put16(directory, end.isZip64 ? 45 : 20);
        Put16(directory, entry.flags);
        Put16(directory, entry.method);
        Put32(directory, 0x5A690000);
        Put32(directory, entry.crc);
        Put32(directory, packedSize);
        Put32(directory, size);
        Put16(directory, static_cast<std::uint32_t>(entry.name.size()));
        Put16(directory, 0);  // extra field
        Put16(directory, 0);  // comment
        Put16(directory, 0);  // disk
        Put16(directory, 0);
        Put32(directory, 0);
        Put32(directory, entry.offset.value_or(offset));
        directory += entry.name;
    }
    const auto start = static_cast<std::uint32_t>(out.size());
    out += directory;
    if (end.isZip64) {
        const std::uint64_t place = out.size();
        Put32(out, 0x06064B50);
        Put64(out, 44);
        Put16(out, 45);
        Put16(out, 45);
        Put32(out, 0);
        Put32(out, 0);
        Put64(out, listed);
        Put64(out, listed);
        Put64(out, directory.size());
        Put64(out, start);
        Put32(out, 0x07064B50);
        Put32(out, 0);
        Put64(out, place);
        Put32(out, 1);
    }
    Put32(out, 0x06054B50);
    Put16(out, 0);
    Put16(out, 0);
    const std::uint32_t count = end.isZip64 ? 0xFFFF : end.count.value_or(static_cast<std::uint16_t>(listed));
    Put16(out, count);
    Put16(out, count);
    Put32(out, end.isZip64 ? 0xFFFFFFFF : static_cast<std::uint32_t>(directory.size()));
    Put32(out, end.isZip64 ? 0xFFFFFFFF : start);
    Put16(out, static_cast<std::uint32_t>(end.comment.size()));
    return out + end.comment;
}

}  // namespace brennvar::test
