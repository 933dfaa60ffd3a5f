// Numbers of bytes as people read them, "640 KB" or "1,5 MB/s", with the decimal sign and the units of the user's
// language. 1 KB is 1024 bytes.
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

// "512 B", "1.5 KB", "640 KB": one decimal below 100. An amount is never written as 1024 of a unit.
[[nodiscard]] std::string FormatBytes(std::uint64_t bytes, const AmountWords& words = {});
// Bytes in so many milliseconds, "512 B/s".
[[nodiscard]] std::string FormatRate(std::uint64_t bytes, std::uint64_t milliseconds,
                                     const AmountWords& words = {});

}  // namespace brennvar
