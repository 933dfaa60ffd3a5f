#include "config/Amounts.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>

namespace brennvar {
namespace {

std::string FormatAmount(double amount, const AmountWords& words, std::string_view per) {
    constexpr double kStep = 1024;
    // From here on an amount is written without a decimal: 99.96 would read "100.0".
    constexpr double kWhole = 99.95;
    std::size_t unit = 0;
    while (amount >= kStep - 0.5 && unit + 1 < words.units.size()) {
        amount /= kStep;
        ++unit;
    }
    std::string text;
    if (unit == 0 || amount >= kWhole) {
        text = FormatCount(static_cast<std::uint64_t>(std::llround(amount)));
    } else {
        const auto tenths = static_cast<std::uint64_t>(std::llround(amount * 10));
        text = std::to_string(tenths / 10) + words.decimalSign + std::to_string(tenths % 10);
    }
    return text.append(" ").append(words.units[unit]).append(per);
}

}  // namespace

AmountWords::AmountWords(const Language& language) : perSecond(language.GetText(1652, "/s")) {
    // What stands between the digits.
    const std::string sample = language.GetText(1650, "1.5");
    if (sample.size() > 2) decimalSign = sample.substr(1, sample.size() - 2);
    // One text for all, with blanks between; what a language leaves out stays English.
    const std::string all = language.GetText(1651, "B KB MB GB TB");
    std::string_view rest = all;
    for (std::string& unit : units) {
        const std::string_view word = rest.substr(0, rest.find(' '));
        if (!word.empty()) unit = word;
        rest.remove_prefix(std::min(word.size() + 1, rest.size()));
    }
}

std::string FormatCount(std::uint64_t count) {
    constexpr std::size_t kGroup = 3;
    constexpr std::uint64_t kFirstGrouped = 10'000;
    std::string text = std::to_string(count);
    if (count < kFirstGrouped) return text;
    for (std::size_t digits = text.size(); digits > kGroup;) text.insert(digits -= kGroup, 1, kGroupSign);
    return text;
}

std::string FormatRate(std::uint64_t bytes, std::uint64_t milliseconds, const AmountWords& words) {
    const double rate =
        milliseconds == 0 ? 0 : static_cast<double>(bytes) * 1000 / static_cast<double>(milliseconds);
    return FormatAmount(rate, words, words.perSecond);
}

std::string FormatBytes(std::uint64_t bytes, const AmountWords& words) {
    return FormatAmount(static_cast<double>(bytes), words, {});
}

}  // namespace brennvar
