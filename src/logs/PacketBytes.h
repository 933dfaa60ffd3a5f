// The bytes of a captured packet. A field of which a byte is missing is nothing, so that whoever reads a header
// neither reads past what was captured nor guesses. Numbers come out in host order, addresses stay in network
// order.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "base/Bytes.h"
#include "base/Ipv4.h"

namespace brennvar {

class PacketBytes {
public:
    explicit PacketBytes(std::span<const std::byte> bytes) : m_bytes(bytes) {}

    [[nodiscard]] std::size_t Size() const { return m_bytes.size(); }
    [[nodiscard]] bool IsEmpty() const { return m_bytes.empty(); }
    [[nodiscard]] std::span<const std::byte> All() const { return m_bytes; }

    [[nodiscard]] std::optional<std::uint8_t> Byte(std::size_t offset) const { return Read<std::uint8_t>(offset); }
    [[nodiscard]] std::optional<std::uint16_t> Word(std::size_t offset) const {
        const auto word = Read<std::uint16_t>(offset);
        return word ? std::optional(SwapPort(*word)) : std::nullopt;
    }
    [[nodiscard]] std::optional<std::uint32_t> Long(std::size_t offset) const {
        const auto number = Read<std::uint32_t>(offset);
        return number ? std::optional(SwapAddress(*number)) : std::nullopt;
    }
    [[nodiscard]] std::optional<Ipv4> Address(std::size_t offset) const { return Read<Ipv4>(offset); }

    // As much of these as there is.
    [[nodiscard]] PacketBytes From(std::size_t offset) const {
        return PacketBytes(m_bytes.subspan(std::min(offset, Size())));
    }
    [[nodiscard]] PacketBytes First(std::size_t size) const {
        return PacketBytes(m_bytes.first(std::min(size, Size())));
    }
    // All of these, or nothing.
    [[nodiscard]] std::optional<PacketBytes> Piece(std::size_t offset, std::size_t size) const {
        if (From(offset).Size() < size) return std::nullopt;
        return From(offset).First(size);
    }

private:
    template <class Field>
    [[nodiscard]] std::optional<Field> Read(std::size_t offset) const {
        return DecodeRecord<Field>(From(offset).All());
    }

    std::span<const std::byte> m_bytes;
};

}  // namespace brennvar
