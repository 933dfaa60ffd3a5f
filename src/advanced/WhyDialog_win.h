// "Why?": which rule decides about a connection, and what would. All that is asked stands in fields, so that
// another program, port or hour can be tried; the answer follows as one types. It stands beside the control center.
// One at most; each line of the answer leads to the page where it is changed.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "advanced/DecisionFiles.h"
#include "advanced/WhyFields.h"
#include "advanced/WhyReport.h"
#include "base/Clock.h"
#include "base/Refreshed.h"
#include "base/TaskQueue.h"
#include "base/WhileAlive.h"
#include "commands/BlockedAddresses.h"
#include "config/Language.h"
#include "controls/Button_win.h"
#include "controls/ComboBox_win.h"
#include "controls/Edit_win.h"
#include "controls/Label_win.h"
#include "dialogs/SkinDialog_win.h"
#include "lists/PageOwner.h"
#include "tree/Tree_win.h"

namespace brennvar {

class WhyDialog final : public CSkinDialog, private TreeRows {
public:
    // All are borrowed for the life of the dialog; the files are read on the queue.
    struct Parts {
        const CFonts& fonts;
        const Language& language;
        TaskQueue& reads;
        const DecisionFiles& files;
        const BlockedAddresses& blocked;
        const Clock& clock;
        PageOwner& pages;
    };
    explicit WhyDialog(const Parts& parts);

    // Shows the dialog, over the middle of that window where it is seen, or brings it to the front, and asks about
    // these facts.
    void AskNear(HWND window, const TrafficFacts& facts);

private:
    void OnCreateContent() override;
    void OnPaintGround(HDC dc) override;
    void OnCommand(int id, int notification) override;
    [[nodiscard]] RECT OpeningPlace(SIZE size) const override;
    [[nodiscard]] int RowCount() const override { return static_cast<int>(m_report.lines.size()); }
    [[nodiscard]] TreeCell Cell(int row, int column) const override;

    void CreateField(WhyField field);
    [[nodiscard]] bool CreateList();
    void PlaceParts();
    void SetFields(const TrafficFacts& facts);
    [[nodiscard]] WhyTexts Typed() const;
    // All files, once more.
    void Read();
    // Of the program that is typed now, unless that is known.
    void LookUpProgram();
    void Answer();
    void Show(WhyReport report);
    // Whether the selected line leads anywhere.
    void ShowButton();
    void OpenLine(int row);

    const Parts m_parts;
    HWND m_near = nullptr;

    CLabel m_answer;
    std::array<CLabel, kWhyFieldCount> m_labels;
    std::array<CEdit, kWhyFieldCount> m_edits;  // but of the choices
    CComboBox m_protocol;
    CComboBox m_direction;
    std::vector<std::string> m_protocols;  // numbers behind the items; empty: not known
    CTree m_list;
    CLabel m_remark;
    CButton m_show;
    CButton m_close;
    RECT m_card{};  // around the list

    std::optional<DecisionReading> m_reading;  // nothing: not read yet
    // Of the program m_program.
    std::optional<RuleAction> m_action;
    std::optional<std::string> m_program;
    bool m_isFilling = false;  // the fields change by themselves
    WhyReport m_report;
    // The rule of a program, which is asked for with every key stroke.
    Refreshed<RuleAction, std::string> m_ruleOf;
    WhileAlive m_alive;
};

}  // namespace brennvar
