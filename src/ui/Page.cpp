#include "ui/Page.h"

#include "ui/Controls.h"
#include "ui/ResourceIds.h"

namespace brennvar {
namespace {

constexpr int kMargin = 16;
constexpr int kTitleHeight = 24;
constexpr int kLineTop = 44;
constexpr int kLineHeight = 20;
constexpr int kContentTop = 72;

}  // namespace

CPage::CPage(const CFonts& fonts, std::string title, std::string line)
    : m_fonts(fonts), m_title(std::move(title)), m_line(std::move(line)) {}

bool CPage::Create(HWND parent) {
    return CreateModeless(parent, IDD_PAGE);
}

void CPage::OnInitDialog() {
    constexpr DWORD kOneLine = SS_LEFT | SS_NOPREFIX | SS_ENDELLIPSIS;
    CreateControl(Window(), "STATIC", m_title, kOneLine, IDC_PAGE_TITLE, m_fonts.Title());
    CreateControl(Window(), "STATIC", m_line, kOneLine, IDC_PAGE_LINE, m_fonts.Text());
    OnCreateContent();
}

void CPage::OnSize(int width, int height) {
    const int margin = Scale(kMargin);
    const int inner = width - 2 * margin;
    constexpr UINT kKeep = SWP_NOZORDER | SWP_NOACTIVATE;
    ::SetWindowPos(Item(IDC_PAGE_TITLE), nullptr, margin, margin, inner, Scale(kTitleHeight), kKeep);
    ::SetWindowPos(Item(IDC_PAGE_LINE), nullptr, margin, Scale(kLineTop), inner, Scale(kLineHeight), kKeep);
    OnPlaceContent({margin, Scale(kContentTop), margin + inner, height - margin});
}

void CPage::Place(const RECT& place) {
    ::SetWindowPos(Window(), nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                   SWP_NOZORDER | SWP_NOACTIVATE);
}

void CPage::Show() {
    if (m_shown || Window() == nullptr) return;
    m_shown = true;
    ::ShowWindow(Window(), SW_SHOWNA);
    OnShow();
}

void CPage::Hide() {
    if (!m_shown) return;
    m_shown = false;
    OnHide();
    ::ShowWindow(Window(), SW_HIDE);
}

}  // namespace brennvar
