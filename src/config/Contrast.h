// How well one colour reads on another.
#pragma once

#include <cstdint>

namespace brennvar {

// What a text has to reach on its ground, and what a frame or a mark that tells something (WCAG 2.1, 1.4.3
// and 1.4.11).
inline constexpr double kTextContrast = 4.5;
inline constexpr double kFrameContrast = 3.0;

// The contrast ratio of WCAG 2.1, from 1 to 21; colours as 0xBBGGRR. The order does not matter.
[[nodiscard]] double Contrast(std::uint32_t first, std::uint32_t second);

}  // namespace brennvar
