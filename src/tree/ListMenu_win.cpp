#include "tree/ListMenu_win.h"

namespace brennvar {

int TrackListMenu(HWND owner, POINT point, const Look& look, const Language& language, bool hasSelection,
                  CPopupMenu menu) {
    menu.Add(static_cast<int>(ListCommand::Copy), language.GetText(1070, "&Copy") + "\tCtrl+C", MenuImage::Copy,
             {.isDisabled = !hasSelection});
    menu.Add(static_cast<int>(ListCommand::SelectAll), language.GetText(1071, "Select &all") + "\tCtrl+A",
             MenuImage::SelectAll);
    menu.AddSeparator();
    menu.Add(static_cast<int>(ListCommand::Refresh), language.GetText(1072, "&Refresh") + "\tF5",
             MenuImage::Refresh);
    const CSkinImage images = LoadMenuImages();
    return menu.Track(owner, point, TPM_RETURNCMD, look, &images);
}

}  // namespace brennvar
