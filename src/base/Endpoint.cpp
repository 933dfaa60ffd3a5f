#include "base/Endpoint.h"

#include <array>
#include <charconv>

namespace brennvar {
namespace {

// The decimal digits of all numbers that a byte can hold, since lists of addresses are made of little else.
struct ByteDigits {
    char digits[3];
    std::uint8_t size;
};
constexpr std::array<ByteDigits, 256> kBytes = [] {
    std::array<ByteDigits, 256> all{};
    for (unsigned n = 0; n < all.size(); ++n) {
        ByteDigits& one = all[n];
        if (n >= 100) one.digits[one.size++] = static_cast<char>('0' + n / 100);
        if (n >= 10) one.digits[one.size++] = static_cast<char>('0' + n / 10 % 10);
        one.digits[one.size++] = static_cast<char>('0' + n % 10);
    }
    return all;
}();

char* PutByte(char* at, unsigned number) {
    const ByteDigits& digits = kBytes[number & 0xFFU];
    at[0] = digits.digits[0];  // three at any rate: what is too much is written over
    at[1] = digits.digits[1];
    at[2] = digits.digits[2];
    return at + digits.size;
}

}  // namespace

char* PutEndpoint(char* at, Ipv4 address, std::uint32_t port) {
    for (unsigned shift = 0; shift < 32; shift += 8) {
        at = PutByte(at, address >> shift);
        *at++ = shift < 24 ? '.' : ':';
    }
    return PutNumber(at, port);
}

char* PutNumber(char* at, std::uint32_t number) {
    constexpr std::size_t kMostDigits = 10;  // 4294967295
    return std::to_chars(at, at + kMostDigits, number).ptr;
}

}  // namespace brennvar
