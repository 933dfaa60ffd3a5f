// The cipher of the record files (config.conf, rules.conf, trusted.conf ...): RC4, each record on its own from a
// fresh key schedule. The same call enciphers and deciphers.
#pragma once

#include <cstddef>
#include <span>

namespace brennvar::standin {

void CipherRecord(std::span<std::byte> record);

}  // namespace brennvar::standin
