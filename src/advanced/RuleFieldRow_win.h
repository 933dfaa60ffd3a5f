// One field of the editor of rules: its name before it, the text, what can be picked for it, and below it a remark,
// which says what is wrong or why the field means nothing now.
#pragma once

#include <string>

#include "advanced/RuleForm.h"
#include "controls/DropButton_win.h"
#include "controls/Edit_win.h"
#include "controls/Label_win.h"

namespace brennvar {

class RuleFieldRow {
public:
    struct Setup {
        std::string name{};     // empty: what stands before the field is its name
        std::string cue{};      // what an empty field means
        std::string picks{};    // names what the arrow opens; empty: there is nothing to pick
        bool hasRemark = true;  // else another field's stands for it
    };
    // The look is borrowed for the life of the row. Tab goes through rows in the order in which they are created.
    void Create(HWND parent, RuleField field, const Setup& setup, const Look& look);

    // Pixels of the screen.
    [[nodiscard]] int NameWidth() const;
    [[nodiscard]] static int HeightWithRemark(const Look& look);
    // place: of one line, name included; the remark stands below the field, as wide as that and remarkRoom more.
    void Place(const RECT& place, int nameWidth, int remarkRoom = 0) const;

    [[nodiscard]] std::string Text() const { return m_edit.Text(); }
    void SetText(const std::string& text) const { m_edit.SetText(text); }
    void Enable(bool isEnabled) const;
    enum class RemarkKind { Quiet, Warning };
    void ShowRemark(const std::string& text, RemarkKind kind);
    // With all of its text selected.
    void Focus() const;
    [[nodiscard]] bool HasPicks() const { return m_pick.Window() != nullptr; }
    [[nodiscard]] HWND Field() const { return m_edit.Window(); }

private:
    const Look* m_look = nullptr;
    CLabel m_name;
    CEdit m_edit;
    CDropButton m_pick;
    CLabel m_remark;
};

}  // namespace brennvar
