#include "tree/ListMenu_win.h"

#include "config/KeyNames.h"

namespace brennvar {

int TrackListMenu(HWND owner, POINT point, const Look& look, const Language& language, bool hasSelection,
                  CPopupMenu menu) {
    menu.Add(static_cast<int>(ListCommand::Copy),
             WithKey(language.GetText(1070, "&Copy"), KeyStroke::ControlC, language), MenuImage::Copy,
             {.isDisabled = !hasSelection});
    menu.Add(static_cast<int>(ListCommand::SelectAll),
             WithKey(language.GetText(1071, "Select &all"), KeyStroke::ControlA, language), MenuImage::SelectAll);
    menu.AddSeparator();
    menu.Add(static_cast<int>(ListCommand::Refresh),
             WithKey(language.GetText(1072, "&Refresh"), KeyStroke::F5, language), MenuImage::Refresh);
    const CSkinImage images = LoadMenuImages();
    return menu.Track(owner, point, TPM_RETURNCMD, look, &images);
}

}  // namespace brennvar
