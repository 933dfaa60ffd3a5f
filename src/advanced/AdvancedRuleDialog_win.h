// The editor of an advanced rule: every field with what is wrong beside it, and below them the rule in plain words,
// which changes as one types. What is typed is judged by RuleForm; here it is shown.
//
// OK is enabled while the rule is whole. Enter, or a click on OK while it is not, tells what is missing in a
// message and leads to the field; before that a field says so itself when the user has left it. F4 or Alt and the
// down key open what can be picked for a field. Esc stops a look-up that is under way, and else closes the dialog.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "advanced/RuleChoices.h"
#include "advanced/RuleEditor.h"
#include "advanced/RuleFieldRow_win.h"
#include "advanced/RuleForm.h"
#include "base/Clock.h"
#include "base/WhileAlive.h"
#include "config/Language.h"
#include "controls/Button_win.h"
#include "controls/CheckBox_win.h"
#include "controls/ComboBox_win.h"
#include "controls/GroupBox_win.h"
#include "controls/RadioButton_win.h"
#include "dialogs/SkinDialog_win.h"

namespace brennvar {

// What the dialogs borrow for their life.
struct RuleDialogParts {
    const CFonts& fonts;
    const Language& language;
    RuleChoices& choices;
    const Clock& clock;
};

class AdvancedRuleDialog : public CSkinDialog {
public:
    // Returns when the user has answered; nothing: he would rather not.
    [[nodiscard]] std::optional<AdvancedRule> Ask(HWND owner);

protected:
    struct Heading {
        std::string title;
        std::string note;  // one line or two, above the fields
    };
    // first: what stands in the fields.
    AdvancedRuleDialog(const RuleDialogParts& parts, const AdvancedRule& first, Heading heading);

private:
    struct EndParts {
        CGroupBox frame;
        CButton lookUp;
    };

    void OnCreateContent() override;
    void OnPaintGround(HDC dc) override;
    void OnCommand(int id, int notification) override;
    void OnCancel() override;
    void OnDestroy() override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnLoopMessage(const MSG& message) override;

    // In the order in which Tab goes through them (AdvancedRuleControls_win.cpp).
    void CreateControls();
    void CreateChoiceRow();
    void CreateEnd(EndParts& end, const std::string& title, RuleField host, int lookUpId);
    void CreateRow(RuleField field, const RuleFieldRow::Setup& setup);
    void PlaceControls();
    int PlaceChoiceRow(int top) const;
    void PlaceEnd(const EndParts& end, RuleField host, const RECT& place) const;
    void PlaceWhoAndWhen(int& top) const;
    void PlaceLimits(const CCheckBox& box, RuleField first, const RECT& place, int fieldWidth) const;
    [[nodiscard]] int RowHeight() const;

    void ShowForm(const RuleForm& form);
    [[nodiscard]] RuleForm ReadForm() const;
    // Judges what stands in the fields, and shows it.
    void ShowState();
    void ShowRemarks();
    void ShowLookUp(const EndParts& end, RuleField host, const RuleForm& form) const;
    [[nodiscard]] std::string Sentence() const;

    void OnTyped(RuleField field);
    void OnLeft(RuleField field);
    void OnLimitsChosen(const CCheckBox& box, RuleField first, const std::string& from, const std::string& to);
    void Confirm();
    void TellFirstFault();
    void Browse();
    void Suggest();

    void Pick(RuleField field);
    // Lets one of the texts be chosen below a field; nothing: none was.
    struct PickItem {
        std::string text;   // typed
        std::string label;  // shown
    };
    void PickOf(RuleField field, const std::vector<PickItem>& items, const std::string& none);
    void PickPort(RuleField field);
    // Of those that were found for the name that stands there.
    void PickAddress(RuleField host);
    [[nodiscard]] bool CanPick(RuleField field) const {
        return Row(field).HasPicks() || (m_found && m_found->host == field);
    }
    void LookUp(RuleField host);
    void StopLookUp();
    void TakeAddresses(RuleField host, const std::vector<Ipv4>& addresses);

    [[nodiscard]] RuleFieldRow& Row(RuleField field) { return m_rows[field]; }
    [[nodiscard]] const RuleFieldRow& Row(RuleField field) const { return m_rows[field]; }

    const RuleDialogParts m_parts;
    const AdvancedRule m_first;
    const Heading m_heading;

    CLabel m_note;
    CLabel m_actionName;
    CRadioButton m_deny;
    CRadioButton m_allow;
    CLabel m_protocolName;
    CComboBox m_protocol;
    CLabel m_routeName;
    CComboBox m_route;
    EndParts m_local;
    EndParts m_remote;
    OfRuleFields<RuleFieldRow> m_rows;
    CButton m_browse;
    CCheckBox m_hours;
    CCheckBox m_dates;
    CButton m_suggest;
    CLabel m_sentence;
    CCheckBox m_enabled;
    CCheckBox m_logged;
    CButton m_ok;
    CButton m_cancel;
    RECT m_card{};  // around the sentence

    bool m_isFilled = false;  // the controls are there and show a rule
    RuleCheck m_check;
    OfRuleFields<bool> m_tells{};                        // the field has been left: it says what is wrong with it
    std::optional<std::vector<std::string>> m_programs;  // nothing: not known yet
    std::optional<std::vector<std::string>> m_users;
    std::optional<RuleField> m_lookingUp;  // the host whose name is looked up
    std::optional<RuleField> m_notFound;   // the host whose name has no address
    // The name of a host has several addresses.
    struct Found {
        RuleField host;
        std::vector<Ipv4> addresses;
    };
    std::optional<Found> m_found;
    std::optional<AdvancedRule> m_answer;
    WhileAlive m_alive;
};

class AddCustomRuleDialog final : public AdvancedRuleDialog {
public:
    AddCustomRuleDialog(const RuleDialogParts& parts, const AdvancedRule& first);
};

// Of a rule that is stored. A damaged one shows what could be read.
class EditCustomRuleDialog final : public AdvancedRuleDialog {
public:
    EditCustomRuleDialog(const RuleDialogParts& parts, const AdvancedRule& stored, RulePlace place);
};

}  // namespace brennvar
