// The dialog of every question that the driver or the service puts to the user: a heading with the decisive facts,
// a table of the others, a box to tick, Yes and No. It opens above all other windows, stays there and within the
// work area, and leaves the keyboard where it is; its buttons do not work at first, so that nobody answers it by
// accident.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/Handles_win.h"
#include "base/ShellOpen_win.h"
#include "controls/Button_win.h"
#include "controls/CheckBox_win.h"
#include "controls/Label_win.h"
#include "controls/Link_win.h"
#include "dialogs/SkinDialog_win.h"
#include "prompts/ProgramWords.h"
#include "prompts/PromptQuestion.h"
#include "prompts/QuestionCard_win.h"
#include "prompts/QuestionStand_win.h"
#include "prompts/QuestionTips_win.h"

namespace brennvar {

class QuestionDialog : public CSkinDialog {
public:
    static constexpr UINT_PTR kButtonTimer = QuestionStand::kButtonTimer;
    static constexpr UINT_PTR kPlaceTimer = QuestionStand::kPlaceTimer;

    // Returns when the question is answered; messages of all windows of this thread go on meanwhile, but the owner
    // takes no input. Esc, the close button and a window that could not be shown deny, whatever is ticked.
    [[nodiscard]] PromptAnswer Ask(HWND owner);
    // The same without waiting: answered is called when there is an answer, and must not destroy the dialog.
    void Open(HWND owner, std::function<void()> answered);
    // Opens the folder of a program file; tests look at what it is given.
    static inline void (*s_openFolder)(const std::string& file) = &OpenFolderOf;

    // Nothing while the question stands.
    [[nodiscard]] std::optional<PromptAnswer> Given() const;
    // Described by all that the user has to know for the answer, what the answers do included.
    void TellAccessible(AccessibleThing& thing) const final;

protected:
    // A label of the template (IDD_CONFIRMATION) beside the picture; from top to bottom.
    struct Heading {
        int id;
        std::string text;
        LabelKind kind;
        int gapBelow = 0;       // at 96 pixels per inch
        bool showsEnd = false;  // where it does not fit its end is shown, and not its beginning
        bool isFolder = false;  // the path of the program, which opens its folder
        bool isWarning = false;
    };
    struct Content {
        std::string caption;
        std::shared_ptr<const QuestionIcon> icon;  // null: the plain one
        std::string programFile;                   // the program as it is; empty: nobody knows it
        std::vector<Heading> heading;
        QuestionCard::Content card;
        std::string message;     // all of the above as one text, which screen readers and automation find
        std::string tickText;    // may have several lines
        std::string whyNoTick;   // the box cannot be ticked for this reason; empty: it can
        std::string unticked{};  // what the answers do without the tick, below the box; empty: nothing is said
        std::string ticked{};    // and with it
        std::string allowText;
        std::string denyText;
        std::string closeTip{};  // what the close button does
        std::string linkText{};  // at the right of the last line of the heading; empty: there is no link
    };
    // The fonts are borrowed for the life of the dialog.
    QuestionDialog(const CFonts& fonts, Content content);

    // The lines of the heading about the program, with this gap below the last of them (at 96 pixels per inch).
    [[nodiscard]] static std::vector<Heading> ProgramHeading(const std::string& name, const std::string& path,
                                                             const ProgramWords& program, int gapBelow);
    // Nothing for a program that nobody knows.
    [[nodiscard]] static std::vector<QuestionCard::Row> PublisherRow(const ProgramWords& program);

    // The link was pressed, which counts only once the buttons work. The question stands on.
    virtual void OnLink(HWND /*link*/) {}

private:
    void OnInitDialog() final;
    void OnCreateContent() final;
    [[nodiscard]] RECT OpeningPlace(SIZE size) const final { return m_stand.OpeningPlace(size); }
    void OnPaintGround(HDC dc) final;
    void OnCancel() final;
    void OnCommand(int id, int notification) final;
    bool OnLoopMessage(const MSG& message) final;
    void OnTimer(UINT_PTR id) final;
    void OnEnded() final;
    [[nodiscard]] std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) final;

    void AdoptControls();
    // What the answers do, as the box is ticked.
    void ShowEffect() const;
    [[nodiscard]] bool IsTicked() const;
    [[nodiscard]] int EffectHeight(int width) const;
    void PlaceControls();
    // Places the labels of the heading, unless only measuring; the height of all.
    int PlaceHeading(bool measuresOnly);
    // A text that its place has no room for gets a tip.
    void FitHeading(const Heading& line, const RECT& place);
    // The path as a link in the place of its label.
    void PlaceFolder(const Heading& line, RECT place);
    // What is left of the place beside the sign of warning.
    [[nodiscard]] RECT PlaceWarning(const RECT& place);
    void PlaceButtons(const RECT& content);
    void Answer(int result);

    const Content m_content;
    HWND m_owner = nullptr;
    UniqueIcon m_plainIcon;
    std::deque<CLabel> m_heading;
    QuestionCard m_card;
    CLink m_folder;  // no window: the program is not known
    RECT m_warningSign{};
    CLink m_link;
    CCheckBox m_tickBox;
    CLabel m_whyNoTick;
    CLabel m_unticked;
    CLabel m_ticked;
    CButton m_allow;
    CButton m_deny;
    bool m_isTicked = false;
    std::function<void()> m_answered;
    QuestionStand m_stand;
    QuestionTips m_tips;
};

}  // namespace brennvar
