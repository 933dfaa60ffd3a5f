// Addresses with their ports as text, written where there is room already: lists have millions of them.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/Ipv4.h"

namespace brennvar {

// What PutEndpoint may write over: address, colon and the longest number, and two bytes behind the end.
inline constexpr std::size_t kEndpointRoom = 15 + 1 + 10 + 2;

// "a.b.c.d:port". Returns the end.
[[nodiscard]] char* PutEndpoint(char* at, Ipv4 address, std::uint32_t port);

// The number in decimal, at most 10 characters. Returns the end.
[[nodiscard]] char* PutNumber(char* at, std::uint32_t number);

}  // namespace brennvar
