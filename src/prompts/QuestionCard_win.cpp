#include "prompts/QuestionCard_win.h"

#include <algorithm>
#include <utility>

#include "controls/DrawnTextQuery_win.h"
#include "ui/ActionMark_win.h"
#include "ui/ChildControls_win.h"
#include "ui/Fonts_win.h"
#include "ui/Look_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kCardPadding = 12;
constexpr int kRowHeight = 24;
constexpr int kLineHeight = 20;
constexpr int kAskGap = 12;  // below the table
constexpr int kLabelGap = 16;
constexpr int kAdviceGap = 16;  // between the question and the advice
// The advice stands on a light tint of its mark's colour, the same in every skin.
constexpr COLORREF kPillText = RGB(27, 39, 51);
constexpr int kPillTint = 36;  // of 255, from white

constexpr UINT kLineFormat = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS;

ActionMark MarkOf(PromptAdvice kind) {
    switch (kind) {
        case PromptAdvice::Allow: return ActionMark::Allow;
        case PromptAdvice::Deny: return ActionMark::Deny;
        case PromptAdvice::None: break;
    }
    return ActionMark::None;
}

}  // namespace

void QuestionCard::Adopt(HWND control, const Look& look, Content content) {
    m_colours = look.colours;
    m_font = look.fonts.Text();
    m_bold = look.fonts.Bold();
    m_content = std::move(content);
    Attach(control, m_font);
    MakeTexts(look);
}

void QuestionCard::MakeTexts(const Look& look) {
    constexpr DWORD kCut = SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS;
    m_texts.SetWindow(Window());
    m_title.Create(m_texts, m_content.tableTitle, LabelKind::Bold, kCut, -1, look);
    for (const Row& row : m_content.rows) {
        m_labels.emplace_back().Create(m_texts, row.label, LabelKind::Quiet, kCut, -1, look);
        m_values.emplace_back().Create(m_texts, row.value, LabelKind::Plain, kCut, row.id, look);
        if (row.isAlarming) m_values.back().SetColour(m_colours.danger);
    }
}

std::optional<LRESULT> QuestionCard::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return m_texts.Answer(message, wParam, lParam);
}

bool QuestionCard::IsHarmless(UINT message) const {
    return message == kDrawnTextQuery;
}

LONG QuestionCard::LabelWidth() const {
    LONG width = 0;
    for (const CDrawnText& label : m_labels) width = std::max(width, label.Measure(0).cx);
    return width + Scale(kLabelGap);
}

void QuestionCard::PlaceWith(const RECT& place, QuestionTips& tips) {
    Place(place);
    const RECT card = Inset({0, 0, WidthOf(place), TableHeight()}, Scale(kCardPadding));
    RECT line = card;
    line.bottom = line.top + (m_content.tableTitle.empty() ? 0 : Scale(kRowHeight));
    m_title.Place(line);
    const LONG split = card.left + std::min<LONG>(LabelWidth(), WidthOf(card) / 2);
    for (std::size_t index = 0; index < m_content.rows.size(); ++index) {
        const Row& row = m_content.rows[index];
        line = {card.left, line.bottom, card.right, line.bottom + Scale(kRowHeight)};
        m_labels[index].Place({line.left, line.top, split, line.bottom});
        RECT value{split, line.top, line.right, line.bottom};
        m_values[index].Place(value);
        const bool isCut = m_values[index].Measure(0).cx > WidthOf(value);
        if (!isCut && row.note.empty()) continue;
        ::OffsetRect(&value, place.left, place.top);
        tips.Add(value, row.note.empty() ? row.value : row.value + "\n" + row.note);
    }
}

int QuestionCard::TableHeight() const {
    if (m_content.rows.empty()) return 0;
    const auto lines = (m_content.tableTitle.empty() ? 0 : 1) + static_cast<int>(m_content.rows.size());
    return Scale(lines * kRowHeight + 2 * kCardPadding);
}

int QuestionCard::PillWidth() const {
    return Scale(kMarkInset) + Scale(kMarkSize) + MeasureText(m_bold, m_content.advice->word, 0).cx +
           3 * Scale(kMarkGap);
}

int QuestionCard::AdviceWidth() const {
    return MeasureText(m_font, m_content.advice->label, 0).cx + Scale(kMarkGap) + PillWidth();
}

bool QuestionCard::IsOneLine(int width) const {
    return !m_content.advice ||
           MeasureText(m_bold, m_content.askText, 0).cx + Scale(kAdviceGap) + AdviceWidth() <= width;
}

int QuestionCard::HeightAt(int width) const {
    const int table = TableHeight() == 0 ? 0 : TableHeight() + Scale(kAskGap);
    return table + (IsOneLine(width) ? Scale(kLineHeight) : Scale(kRowHeight + kLineHeight));
}

void QuestionCard::OnPaint(HDC dc, const RECT& client) {
    RECT line = client;
    if (TableHeight() != 0) {
        RECT card = client;
        card.bottom = card.top + TableHeight();
        FillSolid(dc, card, m_colours.list);
        DrawFrame(dc, card, m_colours.frame2);
        m_texts.Paint(dc);
        line.top = card.bottom + Scale(kAskGap);
    }
    line.bottom = line.top + Scale(kLineHeight);
    if (m_content.advice) PaintAdvice(dc, line);
    if (!IsOneLine(WidthOf(client))) ::OffsetRect(&line, 0, Scale(kRowHeight));
    DrawLabel(dc, m_bold, line, m_content.askText, m_colours.text, kLineFormat);
}

void QuestionCard::PaintAdvice(HDC dc, const RECT& line) const {
    // At the right end of the question's line; a line of its own begins at the left.
    const bool isOneLine = IsOneLine(WidthOf(line));
    const LONG left = isOneLine ? line.right - AdviceWidth() : line.left;
    const LONG pillLeft = left + AdviceWidth() - PillWidth();
    DrawLabel(dc, m_font, {left, line.top, pillLeft, line.bottom}, m_content.advice->label, m_colours.quietText,
              kLineFormat);
    const LONG top = line.top + (HeightOf(line) - Scale(kPillHeight)) / 2;
    const LONG right = std::min<LONG>(pillLeft + PillWidth(), line.right);
    PaintPill(dc, {pillLeft, top, right, top + Scale(kPillHeight)});
}

void QuestionCard::PaintPill(HDC dc, const RECT& pill) const {
    const ActionMark mark = MarkOf(m_content.advice->kind);
    DrawPill(dc, pill, MixColours(RGB(255, 255, 255), ActionColour(mark), kPillTint));
    const int side = Scale(kMarkSize);
    const LONG markLeft = pill.left + Scale(kMarkInset);
    DrawActionMark(dc, Centred({markLeft, pill.top, markLeft + side, pill.bottom}, {side, side}), mark);
    const LONG textLeft = markLeft + side + Scale(kMarkGap);
    DrawLabel(dc, m_bold, {textLeft, pill.top, pill.right, pill.bottom}, m_content.advice->word, kPillText,
              kLineFormat);
}

void QuestionCard::TellAccessible(AccessibleThing& thing) const {
    thing.role = AccessibleRole::StaticText;
    thing.name = Lines();
}

std::string QuestionCard::Lines() const {
    std::string lines = m_content.tableTitle;
    const auto add = [&](const std::string& line) { lines += (lines.empty() ? "" : "\n") + line; };
    for (const Row& row : m_content.rows) add(row.label + " " + row.value);
    if (m_content.advice) add(m_content.advice->label + " " + m_content.advice->word);
    add(m_content.askText);
    return lines;
}

}  // namespace brennvar
