// What fuzz targets do with their input: bytes become a file, and what must hold is checked in every build.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "ipc/RecordCipher.h"
#include "support/DataFolder.h"

namespace brennvar::fuzz {

// The data folder of the whole run. Kept in memory where the system can: rewriting a file on disk thousands of
// times a second is slower by a factor of twenty.
inline const test::DataFolder& Folder() {
    static const test::DataFolder folder = [] {
        (void)setenv("TMPDIR", "/dev/shm", 0);
        return test::DataFolder();
    }();
    return folder;
}

inline std::string TextOfInput(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

// The file as the service would write it. The inputs are plain, so that the engine sees which bytes matter.
inline std::string Enciphered(std::string bytes, std::size_t recordSize) {
    CipherRecords(std::as_writable_bytes(std::span(bytes)), recordSize);
    return bytes;
}

inline void Require(bool condition) {
    if (!condition) std::abort();
}

}  // namespace brennvar::fuzz
