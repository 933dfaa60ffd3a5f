#include "advanced/RuleFieldRow_win.h"

#include "config/ResourceIds.h"
#include "ui/ChildControls_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kNameGap = 8;    // between a name and its field
constexpr int kRemarkGap = 1;  // between a field and its remark

// Longer than anything that a rule can hold, so that what is too long can be told, and not only cut.
constexpr WPARAM kMostLetters = 1000;

int LineHeight(const Look& look) {
    return MeasureText(look.fonts.Text(), "Ag", 0).cy;
}

}  // namespace

void RuleFieldRow::Create(HWND parent, RuleField field, const Setup& setup, const Look& look) {
    const int number = static_cast<int>(field);
    m_look = &look;
    // Before the field: a screen reader takes the label that stands before a field for its name.
    if (!setup.name.empty()) {
        m_name.Create(parent, setup.name, LabelKind::Plain, SS_LEFT | SS_CENTERIMAGE, IDC_RULE_LABEL, look);
    }
    m_edit.Create(parent, "", ES_AUTOHSCROLL, IDC_RULE_FIELD + number, look);
    m_edit.SetCue(setup.cue);
    ::SendMessageA(m_edit.Window(), EM_LIMITTEXT, kMostLetters, 0);
    if (!setup.picks.empty()) m_pick.Create(parent, setup.picks, IDC_RULE_PICK + number, look);
    if (setup.hasRemark) {
        m_remark.Create(parent, "", LabelKind::Quiet, SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS,
                        IDC_RULE_REMARK + number, look);
    }
}

int RuleFieldRow::NameWidth() const {
    return m_name.Window() ? m_name.Measure(0).cx : 0;
}

int RuleFieldRow::HeightWithRemark(const Look& look) {
    return FieldHeight() + Scale(kRemarkGap) + LineHeight(look);
}

void RuleFieldRow::Place(const RECT& place, int nameWidth, int remarkRoom) const {
    RECT field = place;
    field.bottom = field.top + FieldHeight();
    if (m_name.Window()) {
        m_name.Place({field.left, field.top, field.left + nameWidth, field.bottom});
        field.left += nameWidth + Scale(kNameGap);
    }
    if (m_remark.Window()) {
        const LONG top = field.bottom + Scale(kRemarkGap);
        m_remark.Place({field.left, top, field.right + remarkRoom, top + LineHeight(*m_look)});
    }
    m_edit.Place(HasPicks() ? m_pick.PlaceIn(field) : field);
}

void RuleFieldRow::Enable(bool isEnabled) const {
    for (const HWND control : {m_edit.Window(), m_pick.Window(), m_name.Window()}) {
        if (control && (::IsWindowEnabled(control) != FALSE) != isEnabled) ::EnableWindow(control, isEnabled);
    }
}

void RuleFieldRow::ShowRemark(const std::string& text, RemarkKind kind) {
    const Palette& colours = m_look->colours;
    m_remark.SetColour(kind == RemarkKind::Warning ? colours.warning : colours.quietText);
    m_remark.SetText(text);
}

void RuleFieldRow::Focus() const {
    ::SetFocus(m_edit.Window());
    ::SendMessageA(m_edit.Window(), EM_SETSEL, 0, -1);
}

}  // namespace brennvar
