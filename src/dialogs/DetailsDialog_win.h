// Shows a sheet of details: its groups above, its bytes below, all to be selected and copied. What is shown may
// change while it is open. A button opens the network tools for the address of the sheet, where it has one; they
// stand beside the dialog.
#pragma once

#include <optional>

#include "config/DetailsSheet.h"
#include "config/Language.h"
#include "controls/Button_win.h"
#include "controls/Label_win.h"
#include "controls/TextArea_win.h"
#include "dialogs/AddressTools.h"
#include "dialogs/DetailsPanel_win.h"
#include "dialogs/SkinDialog_win.h"

namespace brennvar {

class DetailsDialog final : public CSkinDialog {
public:
    // All but the sheet is borrowed for the life of the dialog.
    DetailsDialog(const CFonts& fonts, const Language& language, AddressTools& tools, DetailsSheet sheet);

    // Returns when it has been closed; messages of all windows of this thread go on meanwhile.
    void Show(HWND owner);
    // Shows another state of the same thing: places and selections stay as they are, as far as there is still
    // something there.
    void Update(const DetailsSheet& sheet);

private:
    void OnCreateContent() override;
    void OnPaintGround(HDC dc) override;
    void OnCommand(int id, int notification) override;
    void ShowSheet();
    void SizeToContent();
    void PlaceParts();
    [[nodiscard]] bool HasBytes() const { return !m_sheet.bytes.empty(); }
    // What the bytes take, without the room above them.
    [[nodiscard]] int BytesHeight() const;

    const Language& m_language;
    AddressTools& m_tools;
    DetailsSheet m_sheet;
    // These need the look of the window.
    std::optional<DetailsPanel> m_panel;
    std::optional<CTextArea> m_bytes;
    CLabel m_bytesHeading;
    CButton m_address;
    CButton m_copy;
    CButton m_close;
    RECT m_card{};  // around the panel
};

}  // namespace brennvar
