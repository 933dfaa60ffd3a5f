#include "config/SkinTones.h"

#include <array>
#include <cstddef>

#include "config/Contrast.h"

namespace brennvar {
namespace {

struct ToneKey {
    const char* name;
    int red, green, blue;  // where the skin has no such colour
};
// By tone.
constexpr std::array<ToneKey, kToneCount> kTones = {{{"COLOR_TEXT", 27, 39, 51},
                                                     {"COLOR_TEXT_QUIET", 86, 101, 115},
                                                     {"COLOR_ALLOW", 0, 0, 0},
                                                     {"COLOR_DENY", 165, 14, 44},
                                                     {"COLOR_ASK", 255, 128, 64}}};

// What a bright colour reads on: the text colour of the light skin.
constexpr std::uint32_t kDarkPill = 0x33271B;

}  // namespace

std::uint32_t ToneColour(const Skin& skin, Tone tone) {
    const ToneKey& key = kTones.at(static_cast<std::size_t>(tone));
    return skin.GetSkinColor(key.name, key.red, key.green, key.blue);
}

std::optional<std::uint32_t> PillColour(const Skin& skin, Tone tone) {
    if (!IsAction(tone)) return std::nullopt;
    const std::uint32_t colour = ToneColour(skin, tone);
    const std::uint32_t list = skin.GetSkinColor("COLOR_LIST", 255, 255, 255);
    if (Contrast(colour, list) >= kTextContrast) return std::nullopt;
    const std::uint32_t light = skin.GetSkinColor("COLOR_PILL", 226, 232, 240);
    return Contrast(colour, light) >= kTextContrast ? light : kDarkPill;
}

}  // namespace brennvar
