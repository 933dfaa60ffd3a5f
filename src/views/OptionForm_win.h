// One section of the Options page: its rows as controls, laid out in columns where there is room for them. What
// stands in the fields comes from and goes to the page as texts.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "config/Language.h"
#include "controls/Button_win.h"
#include "controls/CheckBox_win.h"
#include "controls/ComboBox_win.h"
#include "controls/DrawnText_win.h"
#include "controls/Edit_win.h"
#include "controls/ScrollPanel_win.h"
#include "views/FormDraft.h"
#include "views/OptionList_win.h"
#include "views/OptionSections.h"

namespace brennvar {

class OptionForm final : public CScrollPanel {
public:
    // What lists show, by the numbers of their rows.
    using Lists = std::map<int, const ServiceList*>;

    // All are borrowed; the section is one of OptionSections.
    OptionForm(const Look& look, const Language& language, const SectionInfo& section, const Lists& lists);
    ~OptionForm() override;
    // Hidden, of no size yet. The parent gets the controls' notifications.
    [[nodiscard]] bool CreateForm(HWND parent, int id);

    // What the list of no option offers, whose contents are its entries. What it contains stays chosen, if it can.
    void SetItems(int control, const std::vector<std::string>& names);
    // Fills the fields; the parent is told of it as of the user's own changes. Unknown numbers are left out.
    void ShowFields(const FormDraft::Fields& fields);
    // Lets what needs a flag be worked with while the flag is on. ShowFields does so as well.
    void EnableRows() const;
    // What stands in every field.
    [[nodiscard]] FormDraft::Fields ReadFields() const;
    [[nodiscard]] HWND ControlWindow(int control) const;
    // The list of the section; null where it has none.
    [[nodiscard]] COptionList* List() const;

private:
    struct Row;
    struct Item {
        std::string content;  // what the field then contains
        std::string text;     // what the list shows
    };
    struct Column {
        int left;
        int width;
        int labelWidth;
        int begin;       // its upper end
        int top;         // of the next row
        int beside = 0;  // the right end of the button that was placed last
    };
    void CreateRow(Row& row);
    // control: what the text names, -1 for none.
    void CreateLabel(Row& row, LabelKind kind, DWORD style, int control = -1);
    void CreateField(Row& row);
    void FillList(Row& row, std::vector<Item> items) const;
    int OnPlaceContent(int width, int top) override;
    [[nodiscard]] int PlaceColumns(int width, int top, int listHeight) const;
    void PlaceButton(Row& row, Column& column) const;
    void PlaceRow(Row& row, Column& column, int listHeight) const;
    void PlaceField(Row& row, Column& column) const;
    [[nodiscard]] int LabelWidth(int column, int width) const;
    [[nodiscard]] Row* Find(int control) const;

    const Language& m_language;
    const SectionInfo& m_section;
    const Lists& m_lists;
    std::vector<std::unique_ptr<Row>> m_rows;
};

}  // namespace brennvar
