// The dialog of every question that the driver or the service puts to the user: a heading with the decisive facts,
// a table of the others, a box to tick, Yes and No. It opens above all other windows, stays there and within the
// work area, and leaves the keyboard where it is; its buttons do not work at first, so that nobody answers it by
// accident.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "base/Handles_win.h"
#include "controls/Button_win.h"
#include "controls/CheckBox_win.h"
#include "controls/Label_win.h"
#include "dialogs/SkinDialog_win.h"
#include "prompts/PromptQuestion.h"

namespace brennvar {

class QuestionDialog : public CSkinDialog {
public:
    // How long the buttons stay disabled: longer than a click or a key that was meant for another window takes.
    static constexpr UINT kButtonDelay = 700;  // ms
    static constexpr UINT_PTR kButtonTimer = 1;
    // How often it is looked whether the question has been covered or left behind.
    static constexpr UINT kPlacePeriod = 250;  // ms
    static constexpr UINT_PTR kPlaceTimer = 2;

    // Returns when the question is answered; messages of all windows of this thread go on meanwhile, but the owner
    // takes no input. Esc, the close button and a window that could not be shown deny, whatever is ticked.
    [[nodiscard]] PromptAnswer Ask(HWND owner);

protected:
    // A label of the template (IDD_CONFIRMATION) beside the picture; from top to bottom.
    struct Heading {
        int id;
        std::string text;
        LabelKind kind;
        int gapBelow = 0;  // at 96 pixels per inch
    };
    // A line of the table.
    struct Row {
        std::string label;
        std::string value;
        std::optional<PromptAdvice> mark = std::nullopt;  // the value stands in a pill of this kind
    };
    struct Content {
        std::string caption;
        std::shared_ptr<const QuestionIcon> icon;  // null: the plain one
        std::vector<Heading> heading;
        std::string tableTitle;
        std::vector<Row> rows;
        std::string askText;    // below the table
        std::string message;    // all of the above as one text, which screen readers and automation find
        std::string tickText;   // may have several lines
        std::string whyNoTick;  // the box cannot be ticked for this reason; empty: it can
        std::string allowText;
        std::string denyText;
    };
    // The fonts are borrowed for the life of the dialog.
    QuestionDialog(const CFonts& fonts, Content content);

private:
    // What can bring another window over this one.
    struct Surroundings {
        HWND foreground = nullptr;
        bool isOwnerVisible = false;
        bool isOwnerIconic = false;
        friend bool operator==(const Surroundings&, const Surroundings&) = default;
    };

    void OnInitDialog() final;
    void OnCreateContent() final;
    [[nodiscard]] RECT OpeningPlace(SIZE size) const final;
    void OnPaintGround(HDC dc) final;
    void OnCancel() final;
    void OnCommand(int id, int notification) final;
    void OnTimer(UINT_PTR id) final;
    void OnDrawItem(const DRAWITEMSTRUCT& item) final;

    void AdoptControls();
    void PlaceControls();
    // Places the labels of the heading, unless only measuring; the height of all.
    int PlaceHeading(bool measuresOnly);
    [[nodiscard]] int CardHeight() const;
    void PaintTable(HDC dc, const RECT& card) const;
    void PaintPill(HDC dc, const RECT& place, const Row& row) const;
    void SetButtonsEnabled(bool enabled);
    void Answer(int result);
    void KeepInSight();

    const Content m_content;
    HWND m_owner = nullptr;
    UniqueIcon m_plainIcon;
    std::deque<CLabel> m_heading;
    CCheckBox m_tickBox;
    CLabel m_whyNoTick;
    CButton m_allow;
    CButton m_deny;
    bool m_buttonsWork = false;
    bool m_isTicked = false;
    Surroundings m_surroundings;
    int m_raisesLeft;
};

}  // namespace brennvar
