// What a question asks, painted: a card with a table of the facts that do not decide, and below it the question
// itself with the advice beside it. The control's text says all of the question at once, for screen readers and
// automation.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "controls/DrawnText_win.h"
#include "prompts/PromptQuestion.h"
#include "prompts/QuestionTips_win.h"
#include "ui/Control_win.h"

namespace brennvar {

class QuestionCard final : public CControl {
public:
    struct Row {
        int id;  // of the value, which is a drawn text of the control (controls/DrawnTextQuery_win.h)
        std::string label;
        std::string value;
        bool isAlarming = false;  // in the colour of danger
        std::string note{};       // what a tip says below the value
    };
    struct Advice {
        std::string label;
        std::string word;
        PromptAdvice kind;
    };
    struct Content {
        std::string tableTitle;  // empty: the table, if there is one, begins with its first row
        std::vector<Row> rows;   // of the table; none: there is no table
        std::string askText;
        std::optional<Advice> advice = std::nullopt;
    };

    // Takes over a static text of a dialog template.
    void Adopt(HWND control, const Look& look, Content content);
    // What it takes at this width. Pixels of the screen.
    [[nodiscard]] int HeightAt(int width) const;
    // In its parent, with the rows of the table. Values that their places have no room for, and those with a note,
    // get tips of the parent.
    void PlaceWith(const RECT& place, QuestionTips& tips);
    void TellAccessible(AccessibleThing& thing) const override;
    // All that it shows, line by line.
    [[nodiscard]] std::string Lines() const;

private:
    void OnPaint(HDC dc, const RECT& client) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    [[nodiscard]] bool IsHarmless(UINT message) const override;
    void MakeTexts(const Look& look);
    [[nodiscard]] LONG LabelWidth() const;
    void PaintAdvice(HDC dc, const RECT& line) const;
    void PaintPill(HDC dc, const RECT& pill) const;

    [[nodiscard]] int TableHeight() const;  // 0: there is none
    [[nodiscard]] int AdviceWidth() const;
    [[nodiscard]] int PillWidth() const;
    // The question and the advice have room beside one another.
    [[nodiscard]] bool IsOneLine(int width) const;

    Palette m_colours;
    HFONT m_font = nullptr;
    HFONT m_bold = nullptr;
    Content m_content;
    DrawnTexts m_texts{DrawnTexts::PaintedIn::Paint};
    CDrawnText m_title;
    std::deque<CDrawnText> m_labels;  // as many as there are rows
    std::deque<CDrawnText> m_values;
};

}  // namespace brennvar
