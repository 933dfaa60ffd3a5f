// Log files for tests, made of bytes: records put together by hand and written as the service does.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

#include "support/DataFolder.h"

namespace brennvar::test {

// A text of so many zeros, into which numbers and texts are put.
class RawRecord {
public:
    explicit RawRecord(std::size_t size) : m_bytes(size, '\0') {}
    RawRecord& U32(std::size_t offset, std::uint32_t number) {
        for (std::size_t i = 0; i < 4; ++i) m_bytes[offset + i] = static_cast<char>(number >> (8 * i));
        return *this;
    }
    RawRecord& Text(std::size_t offset, std::string_view text) {
        m_bytes.replace(offset, text.size(), text);
        return *this;
    }
    // NOLINTNEXTLINE(google-explicit-constructor)
    operator std::string_view() const { return m_bytes; }

private:
    std::string m_bytes;
};

// A connection of the traffic log: 10.0.0.5:1025 to 93.184.216.34:443, TCP, outgoing.
inline RawRecord Event(std::uint32_t action, std::uint32_t hour, std::uint32_t minute, std::uint32_t second,
                       std::string_view path = R"(C:\Program Files\App\app.exe)") {
    return RawRecord(480)
        .U32(0, second)
        .U32(4, minute)
        .U32(8, hour)
        .U32(108, action)
        .Text(112, "Web rule")
        .U32(144, 6)
        .U32(148, 1)
        .Text(152, std::string_view("\x0A\0\0\x05", 4))
        .U32(156, 1025)
        .Text(160, "\x5D\xB8\xD8\x22")
        .U32(164, 443)
        .Text(168, path)
        .U32(472, 1);
}

// A packet log's entry with so many bytes behind its header, which says `said`.
inline std::string Packet(std::uint32_t protocol, std::uint32_t second, std::string_view bytes,
                          std::uint32_t said) {
    const RawRecord header = RawRecord(340)
                                 .U32(0, second)
                                 .U32(40, protocol)
                                 .Text(48, std::string_view("\x0A\0\0\x05", 4))
                                 .U32(52, 1025)
                                 .Text(56, "\x5D\xB8\xD8\x22")
                                 .U32(60, 53)
                                 .Text(64, R"(C:\Tools\dig.exe)")
                                 .U32(336, said);
    return std::string(header) + std::string(bytes);
}
inline std::string Packet(std::uint32_t protocol, std::uint32_t second, std::string_view bytes) {
    return Packet(protocol, second, bytes, static_cast<std::uint32_t>(bytes.size()));
}

// Adds to the end of a file that others may be reading.
inline void AppendTo(const std::string& path, std::string_view bytes) {
    std::FILE* const file = std::fopen(path.c_str(), "ab");
    if (file == nullptr) return;
    (void)std::fwrite(bytes.data(), 1, bytes.size(), file);
    (void)std::fclose(file);
}

}  // namespace brennvar::test
