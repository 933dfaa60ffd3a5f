// What a text in a list means, and the colour that a skin gives to it. Lists speak of tones only; this is the one
// place where a tone becomes a colour.
#pragma once

#include <cstddef>
#include <cstdint>

#include "config/Skin.h"

namespace brennvar {

enum class Tone : std::uint8_t {
    Plain,
    Muted,  // less important than the rest of the row
    // The actions of a rule. Their colours are made for a light ground.
    Allow,
    Deny,
    Ask,
};
inline constexpr std::size_t kToneCount = 5;

// As GetSkinColor gives it.
[[nodiscard]] std::uint32_t ToneColour(const Skin& skin, Tone tone);

// A dark list puts a light pill of this colour behind a text of such a tone.
[[nodiscard]] constexpr bool StandsOnPill(Tone tone) {
    return tone == Tone::Allow || tone == Tone::Deny || tone == Tone::Ask;
}
[[nodiscard]] std::uint32_t PillColour(const Skin& skin);

}  // namespace brennvar
