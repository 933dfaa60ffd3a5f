// Says what the product is, in which version, and whose.
#pragma once

#include "config/Language.h"
#include "controls/Button_win.h"
#include "controls/Label_win.h"
#include "dialogs/SkinDialog_win.h"

namespace brennvar {

class AboutDialog final : public CSkinDialog {
public:
    // Both are borrowed for the life of the dialog.
    AboutDialog(const CFonts& fonts, const Language& language) : CSkinDialog(fonts), m_language(language) {}
    // Returns when it has been closed.
    void Show(HWND owner);

private:
    void OnCreateContent() override;
    void OnPaintGround(HDC dc) override;
    void OnCommand(int id, int notification) override;
    [[nodiscard]] RECT CardPlace() const;

    const Language& m_language;
    UniqueIcon m_shield;
    CLabel m_name;
    CLabel m_version;
    CLabel m_copyright;
    CButton m_ok;
};

}  // namespace brennvar
