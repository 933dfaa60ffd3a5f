#include "config/Contrast.h"

#include <algorithm>
#include <cmath>

namespace brennvar {
namespace {

double Luminance(std::uint32_t colour) {
    const auto part = [](std::uint32_t value) {
        const double share = (value & 0xFF) / 255.0;
        return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(colour) + 0.7152 * part(colour >> 8) + 0.0722 * part(colour >> 16);
}

}  // namespace

double Contrast(std::uint32_t first, std::uint32_t second) {
    const auto [darker, lighter] = std::minmax({Luminance(first), Luminance(second)});
    return (lighter + 0.05) / (darker + 0.05);
}

}  // namespace brennvar
