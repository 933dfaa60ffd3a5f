// Shows a sheet of details: its groups above, its bytes below, all to be selected and copied. What is shown may
// change while it is open.
#pragma once

#include <optional>

#include "config/DetailsSheet.h"
#include "config/Language.h"
#include "controls/Button_win.h"
#include "controls/Label_win.h"
#include "controls/TextArea_win.h"
#include "dialogs/DetailsPanel_win.h"
#include "dialogs/SkinDialog_win.h"

namespace brennvar {

class DetailsDialog final : public CSkinDialog {
public:
    // Fonts and language are borrowed for the life of the dialog.
    DetailsDialog(const CFonts& fonts, const Language& language, DetailsSheet sheet);

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
    DetailsSheet m_sheet;
    // These need the look of the window.
    std::optional<DetailsPanel> m_panel;
    std::optional<CTextArea> m_bytes;
    CLabel m_bytesHeading;
    CButton m_copy;
    CButton m_close;
    RECT m_card{};  // around the panel
};

}  // namespace brennvar
