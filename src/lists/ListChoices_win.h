// The band above a list: what the user chooses there, and, at its right end, how far something has come that takes
// long, with the button that stops it.
#pragma once

#include <deque>
#include <optional>
#include <utility>
#include <vector>

#include "config/Language.h"
#include "controls/Button_win.h"
#include "controls/CheckBox_win.h"
#include "controls/ComboBox_win.h"
#include "controls/DrawnText_win.h"
#include "controls/ProgressBar_win.h"
#include "lists/ListModel.h"
#include "ui/Look_win.h"

namespace brennvar {

class ListChoices {
public:
    // The controls become children of the window that draws the texts, which gets their commands. Which choices
    // there are stays as it is now; what can be chosen and what is chosen may change. Look and language are
    // borrowed.
    void Create(DrawnTexts& texts, const Look& look, const Language& language,
                const std::vector<ListChoice>& choices);
    void Show(const std::vector<ListChoice>& choices);
    // Nothing: bar and button go.
    void ShowProgress(const std::optional<ListProgress>& progress);

    // 0 without choices, else with the gap to the list; pixels of the screen.
    [[nodiscard]] int Height() const;
    void Place(const RECT& band);

    // What the user has chosen: the number of the choice and its item. Nothing: the command is another one.
    [[nodiscard]] std::optional<std::pair<int, int>> Chosen(int id, int notification) const;

private:
    struct Control {
        int id = 0;
        int width = 0;  // of the box, pixels of the screen
        std::vector<std::string> items{};
        CDrawnText label{};
        CComboBox box{};
        CCheckBox check{};
        [[nodiscard]] bool IsCheck() const { return check.Window() != nullptr; }
    };

    void PlaceControl(Control& control, LONG& left, const RECT& band) const;

    HFONT m_font = nullptr;  // borrowed
    RECT m_band{};           // where they stand
    std::deque<Control> m_controls;
    CDrawnText m_progressText;
    CProgressBar m_progress;
    CButton m_stop;
};

}  // namespace brennvar
