// The whole text of a message as it is sent, piece by piece: it may be larger than one would hold in memory.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace brennvar {

class MailSource {
public:
    virtual ~MailSource() = default;
    // Bytes of all pieces together.
    [[nodiscard]] virtual std::uint64_t Size() const = 0;
    // The next piece, valid until the next call; empty behind the last one. Nothing when it cannot be read, because
    // an attached file has gone or changed.
    [[nodiscard]] virtual std::optional<std::string_view> Next() = 0;
};

}  // namespace brennvar
