// The cipher of the record files that the service shares with the interface: RC4 under one 16-byte key, with a
// fresh key schedule for every record. Every record therefore meets the same keystream, which is made once.
#pragma once

#include <cstddef>
#include <span>

namespace brennvar {

// Enciphers or deciphers (the same operation) records that lie one after another, in place. A partial record at the
// end is treated like the head of a whole one. Any thread.
void CipherRecords(std::span<std::byte> bytes, std::size_t recordSize);

}  // namespace brennvar
