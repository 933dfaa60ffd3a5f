#include "dialogs/DetailsPanel_win.h"

#include <algorithm>

#include "ui/OwnMessages_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kPadding = 12;
constexpr int kGroupGap = 12;   // above a heading that is not the first
constexpr int kHeadingGap = 4;  // below it
constexpr int kLineGap = 4;     // between lines
constexpr int kLabelGap = 16;   // between label and value
constexpr int kRowHeight = 24;  // for what a page key goes over
// Of the width, at most, in hundredths.
constexpr int kLabelShare = 45;

// The numbers of the controls: far from IDOK and IDCANCEL, which mean something to a dialog.
constexpr int kFirstId = 100;

}  // namespace

std::vector<bool> DetailsPanel::ShapeOf(const std::vector<DetailsGroup>& groups) const {
    std::vector<bool> shape;
    for (const DetailsGroup& group : groups) {
        if (!group.heading.empty()) shape.push_back(true);
        shape.insert(shape.end(), group.lines.size(), false);
    }
    return shape;
}

void DetailsPanel::Show(const std::vector<DetailsGroup>& groups) {
    bool isChanged = false;
    if (std::vector<bool> shape = ShapeOf(groups); shape != m_shape) {
        m_shape = std::move(shape);
        Rebuild();
        isChanged = true;
    }
    auto row = m_rows.begin();
    for (const DetailsGroup& group : groups) {
        if (!group.heading.empty()) (row++)->label.SetText(group.heading);
        for (const DetailsLine& line : group.lines) isChanged = ShowLine(*row++, line) || isChanged;
    }
    if (!isChanged) return;
    const RECT client = ClientRect();
    OnSize(client.right, client.bottom);
}

void DetailsPanel::Rebuild() {
    const bool hadFocus = ::IsChild(Window(), ::GetFocus()) != FALSE;
    for (const Row& row : m_rows) {
        EndWindow(row.label.Window());
        if (!IsHeading(row)) EndWindow(row.value.Window());
    }
    m_rows.clear();
    for (const bool isHeading : m_shape) AddRow(isHeading);
    const std::vector<HWND> values = Values();
    if (values.empty()) return;
    ::SetWindowLongPtrA(values[0], GWL_STYLE, ::GetWindowLongPtrA(values[0], GWL_STYLE) | WS_TABSTOP);
    if (hadFocus) FocusValue(0);
}

void DetailsPanel::AddRow(bool isHeading) {
    const int id = kFirstId + 2 * static_cast<int>(m_rows.size());
    Row& row = m_rows.emplace_back();
    // A label stands before its value, so that screen readers take it for the value's name.
    row.label.Create(Window(), {}, isHeading ? LabelKind::Bold : LabelKind::Quiet, SS_LEFT | SS_NOPREFIX, id,
                     GetLook());
    if (!isHeading) row.value.Create(Window(), id + 1, GetLook());
}

bool DetailsPanel::ShowLine(Row& row, const DetailsLine& line) {
    const Look& look = GetLook();
    const std::optional<COLORREF> pill = line.value.empty() ? std::nullopt : PillColour(look.skin, line.tone);
    bool isChanged = row.label.Text() != line.label || row.isPill != pill.has_value();
    row.label.SetText(line.label);
    isChanged = row.value.Show(line.value) || isChanged;
    row.isPill = pill.has_value();
    row.value.SetColours(ToneColour(look.skin, line.tone), pill);
    return isChanged;
}

int DetailsPanel::LabelWidth(int width) const {
    int labelWidth = 0;
    for (const Row& row : m_rows) {
        if (!IsHeading(row)) labelWidth = std::max(labelWidth, static_cast<int>(row.label.Measure(0).cx));
    }
    return std::min(labelWidth, width * kLabelShare / 100);
}

int DetailsPanel::OnPlaceContent(int width, int top) {
    const int left = Scale(kPadding);
    const int room = std::max(1, width - 2 * left);
    const int labelWidth = LabelWidth(room);
    int y = top + Scale(kPadding);
    bool isFirst = true;
    for (Row& row : m_rows) {
        if (!IsHeading(row)) {
            y += PlaceLine(row, left, room, labelWidth, y) + Scale(kLineGap);
        } else {
            if (!isFirst) y += Scale(kGroupGap);
            const int height = row.label.Measure(room).cy;
            row.label.Place({left, y, left + room, y + height});
            y += height + Scale(kHeadingGap);
        }
        isFirst = false;
    }
    return y - Scale(kLineGap) + Scale(kPadding) - top;
}

// The height of the line.
int DetailsPanel::PlaceLine(Row& row, int left, int width, int labelWidth, int top) {
    // A remark without a label takes the whole width.
    const bool hasLabel = ::GetWindowTextLengthA(row.label.Window()) > 0;
    const int labelHeight = hasLabel ? row.label.Measure(labelWidth).cy : 0;
    row.label.Place({left, top, left + (hasLabel ? labelWidth : 0), top + labelHeight});
    int valueLeft = hasLabel ? left + labelWidth + Scale(kLabelGap) : left;
    int valueWidth = std::max(1, left + width - valueLeft);
    // The text of a pill stands where the others do.
    const SIZE margin = row.value.PillMargin();
    valueLeft -= margin.cx;
    valueWidth += margin.cx;
    if (row.isPill) valueWidth = std::min(valueWidth, row.value.FullWidth());
    const int valueHeight = row.value.HeightAt(valueWidth);
    const int valueTop = top - margin.cy;
    row.value.Place({valueLeft, valueTop, valueLeft + valueWidth, valueTop + valueHeight});
    return std::max(labelHeight, valueHeight);
}

std::vector<HWND> DetailsPanel::Values() const {
    std::vector<HWND> values;
    for (const Row& row : m_rows) {
        if (!IsHeading(row)) values.push_back(row.value.Window());
    }
    return values;
}

void DetailsPanel::FocusValue(std::size_t index) {
    const std::vector<HWND> values = Values();
    // Tab comes back to the value that was left.
    for (std::size_t other = 0; other < values.size(); ++other) {
        const LONG_PTR style = ::GetWindowLongPtrA(values[other], GWL_STYLE) & ~LONG_PTR{WS_TABSTOP};
        ::SetWindowLongPtrA(values[other], GWL_STYLE, other == index ? style | WS_TABSTOP : style);
    }
    ::SetFocus(values[index]);
    ::SendMessageA(values[index], EM_SETSEL, 0, -1);
}

bool DetailsPanel::OnKeyDown(UINT key) {
    const std::vector<HWND> values = Values();
    const auto focused = std::find(values.begin(), values.end(), ::GetFocus());
    if (focused == values.end()) return false;
    const int page = std::max(1, static_cast<int>(ClientRect().bottom) / Scale(kRowHeight) - 1);
    int steps = 0;
    switch (key) {
        case VK_UP: steps = -1; break;
        case VK_DOWN: steps = 1; break;
        case VK_PRIOR: steps = -page; break;
        case VK_NEXT: steps = page; break;
        default: return false;
    }
    const int wanted = static_cast<int>(focused - values.begin()) + steps;
    FocusValue(static_cast<std::size_t>(std::clamp(wanted, 0, static_cast<int>(values.size()) - 1)));
    return true;
}

}  // namespace brennvar
