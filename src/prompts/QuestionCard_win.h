// What a question asks, painted: a card with a table of the facts that do not decide, and below it the question
// itself with the advice beside it. The control's text says all of the question at once, for screen readers and
// automation.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "prompts/PromptQuestion.h"
#include "ui/Control_win.h"

namespace brennvar {

class QuestionCard final : public CControl {
public:
    struct Row {
        std::string label;
        std::string value;
    };
    struct Advice {
        std::string label;
        std::string word;
        PromptAdvice kind;
    };
    struct Content {
        std::string tableTitle;  // empty: there is no table
        std::vector<Row> rows;
        std::string askText;
        std::optional<Advice> advice = std::nullopt;
    };

    // Takes over a static text of a dialog template.
    void Adopt(HWND control, const Look& look, Content content);
    // What it takes at this width. Pixels of the screen.
    [[nodiscard]] int HeightAt(int width) const;
    void TellAccessible(AccessibleThing& thing) const override;
    // All that it shows, line by line.
    [[nodiscard]] std::string Lines() const;

private:
    void OnPaint(HDC dc, const RECT& client) override;
    void PaintTable(HDC dc, const RECT& card) const;
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
};

}  // namespace brennvar
