// Asks for the name of a site that browsers are to be kept from. What is wrong with a name is said below the field
// as it is typed, and OK waits for one that is right.
#pragma once

#include <optional>
#include <string>

#include "config/Language.h"
#include "controls/Button_win.h"
#include "controls/Edit_win.h"
#include "controls/Label_win.h"
#include "dialogs/SkinDialog_win.h"
#include "views/ServiceList.h"

namespace brennvar {

class SpamListAddDialog final : public CSkinDialog {
public:
    // All are borrowed; the list says what is wrong with a name.
    SpamListAddDialog(const CFonts& fonts, const Language& language, const ServiceList& sites);
    // Returns when the dialog has been closed; nothing: by Cancel.
    [[nodiscard]] std::optional<std::string> Ask(HWND owner);

private:
    void OnCreateContent() override;
    void OnCommand(int id, int notification) override;
    [[nodiscard]] int PlaceControls(bool measuresOnly);
    void ShowProblem();

    const Language& m_language;
    const ServiceList& m_sites;
    CLabel m_label;
    CEdit m_name;
    CLabel m_problem;
    CButton m_ok;
    CButton m_cancel;
    std::string m_entered;
};

}  // namespace brennvar
