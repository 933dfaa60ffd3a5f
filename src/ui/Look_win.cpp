#include "ui/Look_win.h"

#include <utility>

#include "config/Resources_win.h"
#include "config/SkinTones.h"

namespace brennvar {

Palette::Palette() : Palette(Skin(nullptr, "")) {}

Palette::Palette(const Skin& skin)
    : frame1(skin.GetSkinColor("COLOR_FRAME_1", 168, 168, 168)),
      frame2(skin.GetSkinColor("COLOR_FRAME_2", 223, 223, 223)),
      accent(skin.GetSkinColor("COLOR_FRAME_3", 255, 173, 27)),
      text(ToneColour(skin, Tone::Plain)),
      quietText(ToneColour(skin, Tone::Muted)),
      page(skin.GetSkinColor("COLOR_PAGE", 245, 247, 250)),
      list(skin.GetSkinColor("COLOR_LIST", 255, 255, 255)),
      listAlternate(skin.GetSkinColor("COLOR_LIST_ALTERNATE", 249, 250, 252)),
      selection(skin.GetSkinColor("COLOR_SELECTION", 255, 236, 204)),
      warning(skin.GetSkinColor("COLOR_WARNING", 154, 84, 0)),
      button(skin.GetSkinColor("COLOR_BUTTON", 238, 241, 245)),
      danger(skin.GetSkinColor("COLOR_DANGER", 165, 14, 44)),
      fieldFrame(skin.GetSkinColor("COLOR_FIELD_FRAME", 130, 141, 152)),
      captionText(skin.GetSkinColor("COLOR_CAPTION_TEXT", 27, 39, 51)),
      statusText(skin.GetSkinColor("COLOR_STATUS_TEXT", 86, 101, 115)) {}

Look::Look(const CFonts& borrowedFonts) : Look(borrowedFonts, OpenSkin()) {}

Look::Look(const CFonts& borrowedFonts, Skin ownSkin)
    : skin(std::move(ownSkin)), colours(skin), fonts(borrowedFonts) {}

}  // namespace brennvar
