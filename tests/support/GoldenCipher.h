// The record cipher by hand: the head of its keystream, computed with an RC4 of its own apart from the code under
// test, and what it makes of records.
#pragma once

#include <cstddef>
#include <cstring>
#include <string>
#include <type_traits>

#include "support/HexBytes.h"

namespace brennvar::test {

// 736 bytes, longer than any record of the tests.
inline const std::string kKeystream = TextFromHex(
    "0e1a89a0c66093e81f2286a6206f5e578af4d2896ec9bd277853ea89ce428a3f"
    "8572338d85503bd5088aa0d853a9a4f4ba5ba43253b76204db674663f024c9c3"
    "522839f6573f79520948a2453fe86b49c02f6171464e26d63d6ed788becf2449"
    "e7be8bb2ef9e667925ff3f5598589abcfcc59a1742ea9cbd57ce2821ff8e3985"
    "8b5b9890b8355c8d3fb7335ca9845cf742dc3f25ee78d045525848c43e92401d"
    "123e4c106c37f90a01eacdfce3709967f18ca5408791d04321e8ff65c2a5c12c"
    "a7c2fb8688f10340a79ed7fd6604ef5236cc0d10929bc9bf152ac7d743117c5e"
    "4a86b97452186a0739102ed7fd56af05e7e3c2d9e0947fdc061428f8630b46f8"
    "66becb2258f199d1732b94e6cac50fc57a5feea1b6e9808fdbe66471918c4972"
    "5ae3d672b95ede074d212db4fad2c7b099fe361d95154fbb5a6a8a5e56e7d3c9"
    "2130875cc596711f8cc3c86abfa8afec3d69bbb4e30be9ee0df56c885af6fb44"
    "7f3bc38c4a6b7810dca783714477fe1e8ab9ad9b8e61b56f2d0940629f888e96"
    "fb1964d5d36b9273ca14a2134b7bd833951d5995977065cbdce846f64b330f4f"
    "97196089601ad9406385124084410e7b611d5856dfe4620611c63079d4af628a"
    "75b2e5597a7cdb5cf5cc2d14215b14eaa0eb11c259b47915ac768edb2b9b6f9e"
    "f48d3192b843cd94522855704966d77af9ae608d8dd790840ba3a66c2f0e37b6"
    "3965b684266a08427a326366c1092020229d60df4855f485ba9f291c38a6ea9e"
    "623578c9debd2c5025c5469b2a30a4cef180043315d183963f13daa63d3c259e"
    "1aea0307a18f5f5a228605c065fc459b93bb259e16b223905b223e2b613ec1dc"
    "5bf73e917e54a613cefb4c9cf60f08de80a56f19434d5c26d5155dee56e304b1"
    "53fa2ddcfd6f9b7cf317b396d9431cee2c72364478e6785278d143db60ad629e"
    "6912409fb6552f30e94f32e138e0d798fbe20afbe1f403f1f76d32a30019177f"
    "a6fbf79e17325675bfc549a0f66bdf9b979613b1f64dfb581e027892fdb72ac2");

inline std::string EncipherByHand(std::string bytes, std::size_t recordSize) {
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>(bytes[i] ^ kKeystream[i % recordSize]);
    }
    return bytes;
}

// The record's bytes as they stand in a plain file.
template <class Record>
requires std::is_trivially_copyable_v<Record> std::string BytesOf(const Record& record) {
    std::string bytes(sizeof record, '\0');
    std::memcpy(bytes.data(), &record, sizeof record);
    return bytes;
}

}  // namespace brennvar::test
