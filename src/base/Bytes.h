// Fixed-size records: raw bytes in, structs out. All integers of our records are little-endian, and so is every
// host we build for (asserted here once); fields in network byte order say so where they are declared.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

namespace brennvar {

static_assert(std::endian::native == std::endian::little, "records are copied as they stand");

template <class T>
concept RecordType = std::is_trivially_copyable_v<T>;

// The first sizeof(Record) bytes as a record, or nothing when there are fewer.
template <RecordType Record>
[[nodiscard]] std::optional<Record> DecodeRecord(std::span<const std::byte> bytes) {
    if (bytes.size() < sizeof(Record)) return std::nullopt;
    Record record;
    std::memcpy(&record, bytes.data(), sizeof(Record));
    return record;
}

// The record's own bytes, to be sent or written; valid as long as the record.
template <RecordType Record>
[[nodiscard]] std::span<const std::byte> RecordBytes(const Record& record) {
    return std::as_bytes(std::span(&record, 1));
}

// The record's own bytes, to be filled by a peer.
template <RecordType Record>
[[nodiscard]] std::span<std::byte> WritableRecordBytes(Record& record) {
    return std::as_writable_bytes(std::span(&record, 1));
}

// Puts text into a fixed field: at most size - 1 characters, the rest zero, so that it always ends in a zero.
template <std::size_t Size>
void PutText(char (&field)[Size], std::string_view text) {
    const std::size_t length = std::min(text.size(), Size - 1);
    std::memset(field, 0, Size);
    std::memcpy(field, text.data(), length);
}

// The text of a fixed field, up to its first zero. The last byte is taken as zero whatever it holds: no peer is
// trusted to terminate its texts.
template <std::size_t Size>
[[nodiscard]] std::string_view TextOf(const char (&field)[Size]) {
    const void* zero = std::memchr(field, 0, Size - 1);
    return {field, zero ? static_cast<std::size_t>(static_cast<const char*>(zero) - field) : Size - 1};
}

}  // namespace brennvar
