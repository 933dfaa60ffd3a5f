// What the headers of a packet have in common when they are put into words: labelled lines, checksums, options.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "config/DetailsSheet.h"
#include "config/Language.h"
#include "config/Text.h"
#include "logs/PacketBytes.h"

namespace brennvar {

// Where the groups of a packet go.
struct PacketGroups {
    const Language& language;
    std::vector<DetailsGroup>& groups;
    // The packet stands in an ICMP message: what was not quoted of it is not missing.
    bool isQuoted = false;
};

struct HeaderValue {
    std::string text;
    Tone tone = Tone::Plain;
};

enum class ChecksumState { Right, Wrong, NotUsed, BytesMissing, IsFragment, WrongLength };
struct Checksum {
    ChecksumState state = ChecksumState::BytesMissing;
    std::uint16_t expected = 0;  // when it is wrong
};
// The internet checksum (RFC 1071) over bytes that are all there and hold it at fieldOffset. pseudoSum: what
// SumOfWords gave for a pseudo header.
[[nodiscard]] Checksum CheckInternetChecksum(const PacketBytes& bytes, std::size_t fieldOffset,
                                             std::uint64_t pseudoSum = 0);
[[nodiscard]] std::uint64_t SumOfWords(const PacketBytes& bytes);

// "0x1c46", with so many digits at least.
[[nodiscard]] std::string HexText(std::uint32_t number, int digits);
// "0a 1b 2c", or with another character between.
[[nodiscard]] std::string HexBytesText(const PacketBytes& bytes, char between = ' ');
// "number (name)"; an empty name leaves the number alone.
[[nodiscard]] std::string NumberAndName(std::uint32_t number, std::string_view name);

// The lines of one header: a new group of the packet.
class HeaderLines {
public:
    // A header of which nothing was captured says so in its only line.
    HeaderLines(PacketGroups& packet, const Text& heading, const PacketBytes& bytes);

    [[nodiscard]] const PacketBytes& Bytes() const { return m_bytes; }
    [[nodiscard]] const Language& Texts() const { return m_packet.language; }
    [[nodiscard]] std::string Say(const Text& text) const { return Texts().GetText(text); }

    void Add(const Text& label, std::string value, Tone tone = Tone::Plain);
    void Add(const Text& label, HeaderValue value) { Add(label, std::move(value.text), value.tone); }
    // A sentence without a label.
    void AddRemark(const Text& remark);
    // A field that may be missing; say makes a text or a HeaderValue of it.
    template <class Field, class SayField>
    void AddField(const Text& label, const std::optional<Field>& field, SayField say) {
        if (field) {
            Add(label, say(*field));
        } else {
            AddMissing(label);
        }
    }
    void AddNumber(const Text& label, std::optional<std::uint32_t> number);
    void AddAddress(const Text& label, std::optional<Ipv4> address);
    void AddMissing(const Text& label);
    void AddChecksum(std::optional<std::uint16_t> field, const Checksum& checksum);
    // The number with a wrong length's reason behind it.
    [[nodiscard]] HeaderValue Wrong(std::uint32_t number, const Text& reason) const;

    // What an option says, without its kind and length; an empty text for an unknown kind, nothing when its length
    // does not fit.
    using OptionText = std::optional<std::string> (*)(std::uint8_t kind, const PacketBytes& data);
    // The options of an IPv4 or TCP header, which are built alike: declaredSize bytes from offset on, if they are
    // there.
    void AddOptions(std::size_t offset, std::size_t declaredSize, OptionText describe);

private:
    void AddLine(DetailsLine line);

    PacketGroups& m_packet;
    const PacketBytes m_bytes;
    const std::size_t m_group;  // among the packet's
};

}  // namespace brennvar
