// Asks whose day's logs are to be deleted: one of the days that have any.
#pragma once

#include <string>
#include <vector>

#include "base/Clock.h"
#include "base/Refreshed.h"
#include "config/Language.h"
#include "controls/Button_win.h"
#include "controls/ComboBox_win.h"
#include "controls/Label_win.h"
#include "dialogs/SkinDialog_win.h"

namespace brennvar {

class DeleteLogDialog final : public CSkinDialog {
public:
    // fonts, language and the queue, on which the folder of the logs is read, are borrowed for the life of the
    // dialog.
    DeleteLogDialog(const CFonts& fonts, const Language& language, TaskQueue& reads, const std::string& dataFolder,
                    const LocalDate& today);

    enum class Choice { None, Day, DayAndOlder };
    // Begins with the newest day.
    [[nodiscard]] Choice Ask(HWND owner);
    // What was chosen, unless that was Choice::None.
    [[nodiscard]] const LocalDate& Day() const { return m_day; }

private:
    void OnCreateContent() override;
    void OnCommand(int id, int notification) override;
    void PlaceControls();
    void OnDays(std::vector<LocalDate> days);

    const Language& m_language;
    const LocalDate m_today;
    LocalDate m_day;
    std::vector<LocalDate> m_days;  // as the list shows them
    Refreshed<std::vector<LocalDate>> m_reading;
    CLabel m_heading;
    CComboBox m_list;
    CLabel m_note;  // why nothing can be chosen
    CButton m_ok;
    CButton m_older;
    CButton m_cancel;
};

}  // namespace brennvar
