// Numbers as people read them: counts in groups of three digits, bytes as "640 KB" or "1,5 MB/s" with the decimal
// sign and the units of the user's language. 1 KB is 1024 bytes.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "config/Language.h"

namespace brennvar {

// How a language writes them; in English as they stand here.
struct AmountWords {
    std::string decimalSign = ".";
    std::array<std::string, 5> units = {"B", "KB", "MB", "GB", "TB"};
    std::string perSecond = "/s";

    AmountWords() = default;
    explicit AmountWords(const Language& language);
};

// Between groups of three digits: the no-break space, which all our code pages have at this place (1250, 1251,
// 1252), and none of them a narrower one.
inline constexpr char kGroupSign = '\xA0';
// "9999", "10 000", "1 234 567": four digits are read at a glance, and stay together.
[[nodiscard]] std::string FormatCount(std::uint64_t count);

// "512 B", "1.5 KB", "640 KB": one decimal below 100. An amount is never written as 1024 of a unit.
[[nodiscard]] std::string FormatBytes(std::uint64_t bytes, const AmountWords& words = {});
// Bytes in so many milliseconds, "512 B/s".
[[nodiscard]] std::string FormatRate(std::uint64_t bytes, std::uint64_t milliseconds,
                                     const AmountWords& words = {});

}  // namespace brennvar
