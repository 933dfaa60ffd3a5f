// Base64 as RFC 4648 (4) has it, without line ends: for logins. Mail's lines are made in mail/TransferEncoding.h.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace brennvar {

[[nodiscard]] std::string EncodeBase64(std::string_view bytes);
// Nothing when the text is not base64: other letters, a wrong length, padding in the middle. Bits that padding cuts
// off are not looked at.
[[nodiscard]] std::optional<std::string> DecodeBase64(std::string_view text);

}  // namespace brennvar
