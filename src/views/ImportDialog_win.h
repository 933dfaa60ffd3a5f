// Shows what an import of rules would change, and asks whether it is to be done.
#pragma once

#include "config/Language.h"
#include "controls/Button_win.h"
#include "controls/Label_win.h"
#include "dialogs/SkinDialog_win.h"
#include "tree/Tree_win.h"
#include "views/ImportRows.h"

namespace brennvar {

class ImportDialog final : public CSkinDialog, private TreeRows {
public:
    // All are borrowed for the life of the dialog.
    ImportDialog(const CFonts& fonts, const Language& language, const ImportRows& rows)
        : CSkinDialog(fonts), m_language(language), m_rows(rows) {}

    // True: it is to be done.
    [[nodiscard]] bool Ask(HWND owner);

private:
    void OnCreateContent() override;
    void OnPaintGround(HDC dc) override;
    void OnCommand(int id, int notification) override;
    [[nodiscard]] int RowCount() const override { return m_rows.Count(); }
    [[nodiscard]] TreeCell Cell(int row, int column) const override;
    [[nodiscard]] bool CreateList();
    void PlaceParts();

    const Language& m_language;
    const ImportRows& m_rows;
    CLabel m_counts;
    CLabel m_remarks;
    CTree m_list;
    CButton m_import;
    CButton m_cancel;
    RECT m_card{};  // around the list
};

}  // namespace brennvar
