// Asks whose day's logs are to be deleted. The day is chosen from three lists, which look and work like every other
// one in both skins.
#pragma once

#include <string>

#include "base/Clock.h"
#include "config/Language.h"
#include "controls/Button_win.h"
#include "controls/ComboBox_win.h"
#include "controls/Label_win.h"
#include "dialogs/SkinDialog_win.h"

namespace brennvar {

class DeleteLogDialog final : public CSkinDialog {
public:
    // fonts and language are borrowed for the life of the dialog. It begins with today.
    DeleteLogDialog(const CFonts& fonts, const Language& language, const LocalDate& today);

    enum class Choice { None, Day, DayAndOlder };
    [[nodiscard]] Choice Ask(HWND owner);
    // What was chosen last.
    [[nodiscard]] const LocalDate& Day() const { return m_day; }

private:
    // One part of the date: its name above a list of numbers.
    struct Part {
        CLabel label;
        CComboBox list;
    };

    void OnCreateContent() override;
    void OnCommand(int id, int notification) override;
    void AdoptPart(Part& part, int label, int list, const std::string& text);
    void PlaceControls();
    void FillDays();
    void OnChosen();

    const Language& m_language;
    const LocalDate m_today;
    LocalDate m_day;
    CLabel m_heading;
    Part m_dayPart;
    Part m_monthPart;
    Part m_yearPart;
    CButton m_ok;
    CButton m_older;
    CButton m_cancel;
};

}  // namespace brennvar
