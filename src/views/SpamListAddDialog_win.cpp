#include "views/SpamListAddDialog_win.h"

#include "config/ResourceIds.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kWidth = 376;
constexpr int kLabelGap = 4;
constexpr int kProblemGap = 6;
constexpr int kButtonTop = 12;
constexpr int kButtonGap = 8;
constexpr int kProblemLines = 2;

// Far above what the list takes: a longer name is told of, not cut.
constexpr WPARAM kLongestTyped = 1000;

}  // namespace

SpamListAddDialog::SpamListAddDialog(const CFonts& fonts, const Language& language, const ServiceList& sites)
    : CSkinDialog(fonts), m_language(language), m_sites(sites) {}

std::optional<std::string> SpamListAddDialog::Ask(HWND owner) {
    if (DoModal(owner, IDD_ADD_SITE) != IDOK) return std::nullopt;
    return m_entered;
}

void SpamListAddDialog::OnCreateContent() {
    ::SetWindowTextA(Window(), m_language.GetText(2121, "Filter a site").c_str());
    ::SetDlgItemTextA(Window(), IDC_SITE_LABEL,
                      m_language.GetText(2122, "Name of the site, as www.example.com:").c_str());
    ::SetDlgItemTextA(Window(), IDOK, m_language.GetText(125, "OK").c_str());
    ::SetDlgItemTextA(Window(), IDCANCEL, m_language.GetText(1001, "Cancel").c_str());
    m_label.Adopt(Item(IDC_SITE_LABEL), LabelKind::Plain, GetLook());
    m_name.Adopt(Item(IDC_SITE_NAME), GetLook());
    m_problem.Adopt(Item(IDC_SITE_PROBLEM), LabelKind::Quiet, GetLook());
    m_ok.Adopt(Item(IDOK), kPrimaryButton, GetLook());
    m_cancel.Adopt(Item(IDCANCEL), kButtonDialog, GetLook());
    ::SendMessageA(m_name.Window(), EM_LIMITTEXT, kLongestTyped, 0);
    SetContentPixels({Scale(kWidth), PlaceControls(true)});
    (void)PlaceControls(false);
    ShowProblem();
}

int SpamListAddDialog::PlaceControls(bool measuresOnly) {
    const RECT content = ContentRect();
    const int width = Scale(kWidth);
    LONG top = content.top;
    const auto place = [&](const CControl& control, LONG height, int gap) {
        if (!measuresOnly) control.Place({content.left, top, content.left + width, top + height});
        top += height + Scale(gap);
    };
    const int labelHeight = m_label.Measure(width).cy;
    place(m_label, labelHeight, kLabelGap);
    place(m_name, FieldHeight(), kProblemGap);
    place(m_problem, labelHeight * kProblemLines, kButtonTop);
    if (!measuresOnly) {
        const LONG left = content.left + width - m_cancel.Size().cx;
        m_cancel.MoveTo(left, top);
        m_ok.MoveTo(left - Scale(kButtonGap) - m_ok.Size().cx, top);
    }
    return top + m_ok.Size().cy - content.top;
}

void SpamListAddDialog::ShowProblem() {
    const std::string name = m_name.Text();
    const Text problem = m_sites.ProblemOf(name);
    // Nothing is wrong with somebody who has not typed yet.
    m_problem.SetText(problem.number != 0 && !name.empty() ? m_language.GetText(problem) : std::string());
    const bool isRight = problem.number == 0;
    if ((::IsWindowEnabled(m_ok.Window()) != FALSE) != isRight) ::EnableWindow(m_ok.Window(), isRight);
}

void SpamListAddDialog::OnCommand(int id, int notification) {
    if (id == IDC_SITE_NAME && notification == EN_CHANGE) return ShowProblem();
    if (id != IDOK || notification != BN_CLICKED) return;
    // The list may have been read again since.
    ShowProblem();
    if (m_sites.ProblemOf(m_name.Text()).number != 0) return;
    m_entered = m_name.Text();
    End(IDOK);
}

}  // namespace brennvar
