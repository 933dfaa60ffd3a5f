// What a text in a list means, and the colour that a skin gives to it. Lists speak of tones only; this is the one
// place where a tone becomes a colour.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

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

// Told by a mark as well.
[[nodiscard]] constexpr bool IsAction(Tone tone) {
    return tone == Tone::Allow || tone == Tone::Deny || tone == Tone::Ask;
}
// The pill behind a text of such a tone that does not read on the list's ground: the skin's light one, or a dark
// one for a colour that is too bright for it. Nothing where the text needs none.
[[nodiscard]] std::optional<std::uint32_t> PillColour(const Skin& skin, Tone tone);

}  // namespace brennvar
