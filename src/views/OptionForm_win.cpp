#include "views/OptionForm_win.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "config/OptionValues.h"
#include "controls/FieldFrame_win.h"
#include "ui/ChildControls_win.h"
#include "ui/Enabling_win.h"
#include "ui/Paint_win.h"
#include "views/OptionFields.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kMargin = 12;
constexpr int kColumnGap = 24;
constexpr int kFieldGap = 8;    // between fields, and around buttons
constexpr int kHeadingGap = 8;  // above a heading that is not the first
constexpr int kLabelGap = 12;
constexpr int kNumberWidth = 72;
constexpr int kFieldWidth = 240;
constexpr int kLeastFieldWidth = 112;
constexpr int kFlagIndent = 24;  // of a check box's text, and of what belongs to it
constexpr int kFlagPadding = 8;  // right of that text
constexpr int kLeastList = 128;  // height

// Digits of 32 and of 16 bits.
constexpr WPARAM kNumberLimit = 10;
constexpr WPARAM kPortLimit = 5;

constexpr DWORD kSeveralLines = SS_LEFT;
constexpr DWORD kOneLine = kSeveralLines | SS_CENTERIMAGE;

}  // namespace

struct OptionForm::Row {
    const RowInfo& info;
    CDrawnText label;
    CCheckBox box;
    CEdit edit;
    CComboBox list;
    CButton button;
    std::unique_ptr<COptionList> entries;
    std::vector<Item> items;
    std::string content;  // of a list: what it was filled with, kept where that is none of its items

    explicit Row(const RowInfo& rowInfo) : info(rowInfo) {}
    [[nodiscard]] bool HasField() const { return info.kind == RowKind::Field; }
    [[nodiscard]] bool Is(OptionKind kind) const { return HasField() && info.field == kind; }
    [[nodiscard]] bool IsNumber() const {
        return Is(OptionKind::Number) || Is(OptionKind::Port) || Is(OptionKind::NumberOfFlag);
    }
    // A field with its name on the left.
    [[nodiscard]] bool IsNamed() const { return HasField() && label.IsCreated() && !Is(OptionKind::NumberOfFlag); }
    [[nodiscard]] std::string Content() const {
        if (Is(OptionKind::Flag)) return box.IsChecked() ? "1" : "0";
        if (Is(OptionKind::List)) {
            const int index = list.Selected();
            return index < 0 ? content : items[static_cast<std::size_t>(index)].content;
        }
        return edit.Text().substr(0, kOptionTextLimit);
    }
    void Show(const std::string& wanted) {
        if (Is(OptionKind::Flag)) {
            if (box.IsChecked() != (wanted == "1")) box.SetChecked(wanted == "1");
        } else if (Is(OptionKind::List)) {
            content = wanted;
            SelectContent();
        } else {
            edit.SetText(wanted);
        }
    }
    // Not the control's own search, which disregards case.
    void SelectContent() {
        const auto at =
            std::find_if(items.begin(), items.end(), [&](const Item& item) { return item.content == content; });
        const int index = at == items.end() ? -1 : static_cast<int>(at - items.begin());
        if (index != list.Selected()) list.Select(index);
    }
};

OptionForm::OptionForm(const Look& look, const Language& language, const SectionInfo& section, const Lists& lists)
    : CScrollPanel(look), m_language(language), m_section(section), m_lists(lists) {}

OptionForm::~OptionForm() = default;

bool OptionForm::CreateForm(HWND parent, int id) {
    if (!CreatePanel(parent, id)) return false;
    for (const RowInfo& info : m_section.rows) {
        m_rows.push_back(std::make_unique<Row>(info));
        CreateRow(*m_rows.back());
    }
    return true;
}

void OptionForm::CreateRow(Row& row) {
    const RowInfo& info = row.info;
    const std::string caption = m_language.GetText(info.caption);
    switch (info.kind) {
        case RowKind::Heading: CreateLabel(row, LabelKind::Bold, kOneLine); break;
        case RowKind::Remark: CreateLabel(row, LabelKind::Quiet, kSeveralLines); break;
        case RowKind::Field: CreateField(row); break;
        case RowKind::List:
            row.entries = std::make_unique<COptionList>(m_language, *m_lists.at(info.control));
            if (!row.entries->CreateList(Window(), info.control, GetLook())) throw std::runtime_error("no list");
            break;
        case RowKind::Button:
        case RowKind::Action: {
            const auto fits = [&](const ButtonKind& kind) { return FitsButton(kind, GetLook(), caption); };
            const bool isNarrow = info.kind == RowKind::Action && fits(kButtonDialog);
            const ButtonKind& roomy = fits(kButtonMedium) ? kButtonMedium : kButtonLarge;
            const ButtonRank rank = info.destroys ? ButtonRank::Destructive : ButtonRank::Plain;
            row.button.Create(Window(), Ranked(isNarrow ? kButtonDialog : roomy, rank), caption, info.control,
                              GetLook());
            break;
        }
    }
}

void OptionForm::CreateLabel(Row& row, LabelKind kind, DWORD style, int control) {
    row.label.Create(Texts(), m_language.GetText(row.info.caption), kind, style, control, GetLook());
}

void OptionForm::CreateField(Row& row) {
    const RowInfo& info = row.info;
    const auto createEdit = [&](DWORD style, WPARAM limit) {
        row.edit.Create(Window(), "", style | ES_AUTOHSCROLL, info.control, GetLook());
        ::SendMessageA(row.edit.Window(), EM_LIMITTEXT, limit, 0);
    };
    if (info.field == OptionKind::Flag) {
        row.box.Create(Window(), m_language.GetText(info.caption), info.control, GetLook());
        return;
    }
    if (info.field == OptionKind::NumberOfFlag) {
        createEdit(ES_NUMBER, kNumberLimit);
        CreateLabel(row, LabelKind::Plain, kOneLine);
        return;
    }
    CreateLabel(row, LabelKind::Plain, kSeveralLines, info.control);
    switch (info.field) {
        case OptionKind::Number: createEdit(ES_NUMBER, kNumberLimit); break;
        case OptionKind::Port: createEdit(ES_NUMBER, kPortLimit); break;
        case OptionKind::List: {
            row.list.Create(Window(), info.control, GetLook());
            std::vector<Item> items;
            for (const char* entry : EntriesOf(info.control)) {
                items.push_back({.content = std::to_string(items.size()), .text = entry});
            }
            FillList(row, std::move(items));
            break;
        }
        case OptionKind::Secret: createEdit(ES_PASSWORD, kOptionTextLimit); break;
        default: createEdit(0, kOptionTextLimit); break;
    }
}

int OptionForm::LabelWidth(int column, int width) const {
    LONG wanted = 0;
    int field = kNumberWidth;
    for (const auto& row : m_rows) {
        if (!row->IsNamed() || row->info.column != column) continue;
        wanted = std::max(wanted, row->label.Measure(0).cx);
        if (!row->IsNumber()) field = kLeastFieldWidth;
    }
    // A name that is longer than that is broken.
    return std::min<int>(wanted, width - Scale(kLabelGap + field));
}

int OptionForm::OnPlaceContent(int width, int top) {
    const int least = Scale(kLeastList);
    const int height = PlaceColumns(width, top, least);
    // A list gets what is left below.
    const int room = ClientRect().bottom - height;
    if (room <= 0 || m_section.List() == 0) return height;
    return PlaceColumns(width, top, least + room);
}

int OptionForm::PlaceColumns(int width, int top, int listHeight) const {
    const int inside = width - 2 * Scale(kMargin);
    int count = 1;
    for (const auto& row : m_rows) count = std::max(count, row->info.column + 1);
    const bool isSideBySide = inside >= count * Scale(m_section.columnWidth) + (count - 1) * Scale(kColumnGap);
    const int columnWidth = isSideBySide ? (inside - (count - 1) * Scale(kColumnGap)) / count : inside;
    int bottom = top + Scale(kMargin);
    int height = bottom;
    for (int index = 0; index < count; ++index) {
        Column column{.left = Scale(kMargin),
                      .width = columnWidth,
                      .labelWidth = LabelWidth(index, columnWidth),
                      .begin = 0,
                      .top = top + Scale(kMargin)};
        column.begin = column.top;
        if (isSideBySide) {
            column.left += index * (columnWidth + Scale(kColumnGap));
        } else if (index > 0) {
            column.top = bottom;
        }
        for (const auto& row : m_rows) {
            if (row->info.column == index) PlaceRow(*row, column, listHeight);
        }
        bottom = column.top;
        height = std::max(height, bottom);
    }
    return height + Scale(kMargin) - top;
}

void OptionForm::PlaceButton(Row& row, Column& column) const {
    const int left = row.info.isBeside ? column.beside + Scale(kFieldGap) : column.left;
    // Where there is no room beside the last one it stands below.
    if (row.info.isBeside && left + row.button.Size().cx <= column.left + column.width) {
        column.top -= row.button.Size().cy;
        row.button.MoveTo(left, column.top);
        column.beside = left + row.button.Size().cx;
    } else {
        column.top += Scale(kFieldGap);
        row.button.MoveTo(column.left, column.top);
        column.beside = column.left + row.button.Size().cx;
    }
    column.top += row.button.Size().cy;
}

void OptionForm::PlaceRow(Row& row, Column& column, int listHeight) const {
    const int left = column.left;
    const int right = column.left + column.width;
    int& top = column.top;
    const int line = FieldHeight();
    const bool isFirst = top == column.begin;
    switch (row.info.kind) {
        case RowKind::Heading:
            if (!isFirst) top += Scale(kHeadingGap);
            row.label.Place({left, top, right, top + line});
            top += line + Scale(kFieldGap);
            return;
        case RowKind::Remark: {
            const int height = row.label.Measure(column.width).cy;
            row.label.Place({left, top, right, top + height});
            top += height + Scale(kFieldGap);
            return;
        }
        case RowKind::List:
            row.entries->Place({left, top, right, top + listHeight});
            top += listHeight;
            return;
        case RowKind::Button:
        case RowKind::Action: return PlaceButton(row, column);
        case RowKind::Field: return PlaceField(row, column);
    }
}

void OptionForm::PlaceField(Row& row, Column& column) const {
    const int left = column.left;
    const int right = column.left + column.width;
    int& top = column.top;
    const int line = FieldHeight();
    if (row.Is(OptionKind::Flag)) {
        const int height = std::max(line, row.box.HeightAt(column.width));
        // Not wider than its text: a click beside it is none.
        const SIZE text = MeasureText(GetLook().fonts.Text(), row.box.Text(), 0);
        const int wanted = text.cx + Scale(kFlagIndent + kFlagPadding);
        row.box.Place({left, top, std::min(right, left + wanted), top + height});
        top += height;
        return;
    }
    if (row.Is(OptionKind::NumberOfFlag)) {
        const int field = left + Scale(kFlagIndent);
        const int unit = field + Scale(kNumberWidth) + Scale(kFieldGap);
        row.edit.Place({field, top, field + Scale(kNumberWidth), top + line});
        row.label.Place({unit, top, right, top + line});
        top += line + Scale(kFieldGap);
        return;
    }
    top += Scale(kFieldGap) / 2;
    const int field = left + column.labelWidth + Scale(kLabelGap);
    const int fieldWidth = std::min(right - field, Scale(row.IsNumber() ? kNumberWidth : kFieldWidth));
    // In the middle of the field's height, or of its own where it takes several lines.
    const int labelHeight = row.label.Measure(column.labelWidth).cy;
    const int height = std::max(line, labelHeight);
    const int labelTop = top + (height - labelHeight) / 2;
    row.label.Place({left, labelTop, left + column.labelWidth, labelTop + labelHeight});
    const int fieldTop = top + (height - line) / 2;
    const RECT place{field, fieldTop, field + fieldWidth, fieldTop + line};
    if (row.Is(OptionKind::List)) {
        row.list.Place(place);
    } else {
        row.edit.Place(place);
    }
    top += height + Scale(kFieldGap) / 2;
}

OptionForm::Row* OptionForm::Find(int control) const {
    for (const auto& row : m_rows) {
        if (row->HasField() && row->info.control == control) return row.get();
    }
    return nullptr;
}

void OptionForm::SetItems(int control, const std::vector<std::string>& names) {
    std::vector<Item> items;
    items.reserve(names.size());
    for (const std::string& name : names) items.push_back({.content = name, .text = name});
    if (Row* const row = Find(control)) FillList(*row, std::move(items));
}

void OptionForm::FillList(Row& row, std::vector<Item> items) const {
    row.content = row.Content();
    row.items = std::move(items);
    row.list.Clear();
    for (std::size_t index = 0; index < row.items.size(); ++index) {
        const int at = row.list.Add(row.items[index].text);
        if (at < 0) continue;
        ::SendMessageA(row.list.Window(), CB_SETITEMDATA, static_cast<WPARAM>(at), static_cast<LPARAM>(index));
    }
    row.SelectContent();
}

void OptionForm::ShowFields(const FormDraft::Fields& fields) {
    for (const auto& [control, content] : fields) {
        if (Row* const row = Find(control)) row->Show(content);
    }
    EnableRows();
}

void OptionForm::EnableRows() const {
    const auto isOn = [this](int flag) {
        const Row* const row = Find(flag);
        return row && row->box.IsChecked();
    };
    for (const auto& row : m_rows) {
        const std::vector<int>& needs = row->info.needs;
        if (needs.empty()) continue;
        SetEnabled({{ControlWindow(row->info.control), std::any_of(needs.begin(), needs.end(), isOn)}},
                   ControlWindow(needs.front()));
    }
}

FormDraft::Fields OptionForm::ReadFields() const {
    FormDraft::Fields fields;
    for (const auto& row : m_rows) {
        if (row->HasField()) fields[row->info.control] = row->Content();
    }
    return fields;
}

COptionList* OptionForm::List() const {
    for (const auto& row : m_rows) {
        if (row->entries) return row->entries.get();
    }
    return nullptr;
}

HWND OptionForm::ControlWindow(int control) const {
    return ::GetDlgItem(Window(), control);
}

}  // namespace brennvar
