#include "dialogs/Page_win.h"

#include <utility>

#include "ui/Paint_win.h"
#include "ui/ToolkitIds.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kMargin = 16;
constexpr int kTitleHeight = 24;
constexpr int kLineTop = 40;
constexpr int kLineHeight = 20;
constexpr int kContentTop = 72;

}  // namespace

CPage::CPage(const CFonts& fonts, PageTexts texts) : m_fonts(fonts), m_texts(std::move(texts)) {}

bool CPage::Create(HWND parent) {
    return CreateModeless(parent, IDD_PAGE);
}

void CPage::OnInitDialog() {
    m_look.emplace(m_fonts);
    m_drawn.SetWindow(Window());
    constexpr DWORD kOneLine = SS_LEFT | SS_ENDELLIPSIS;
    m_title.Create(m_drawn, m_texts.title, LabelKind::Title, kOneLine, IDC_PAGE_TITLE, *m_look);
    m_line.Create(m_drawn, m_texts.line, LabelKind::Quiet, kOneLine, IDC_PAGE_LINE, *m_look);
    OnCreateContent();
}

void CPage::OnSize(int width, int height) {
    const LONG left = Scale(kMargin);
    const LONG right = width - Scale(kMargin);
    const LONG titleRight = right - RoomBesideTitle();
    m_title.Place({left, Scale(kMargin), titleRight, Scale(kMargin + kTitleHeight)});
    m_line.Place({left, Scale(kLineTop), right, Scale(kLineTop + kLineHeight)});
    OnPlaceContent({left, Scale(kContentTop), right, height - Scale(kMargin)});
}

std::optional<LRESULT> CPage::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (const std::optional<LRESULT> answer = m_drawn.Answer(message, wParam, lParam)) return answer;
    if (const std::optional<LRESULT> answer = m_cards.OnMessage(Window(), message, lParam)) return answer;
    return CDialog::OnMessage(message, wParam, lParam);
}

bool CPage::OnEraseBackground(HDC dc) {
    PaintGroundAtOnce(Window(), dc, [this](HDC target) { PaintGround(target); });
    return true;
}

void CPage::PaintGround(HDC dc) const {
    RECT client{};
    ::GetClientRect(Window(), &client);
    FillSolid(dc, client, m_look->colours.page);
    m_cards.Paint(dc, m_look->colours);
    m_drawn.Paint(dc);
}

bool CPage::TellParts(PictureParts& parts) const {
    m_drawn.TellParts(parts, m_ground);
    m_cards.TellParts(parts);
    return true;
}

void CPage::SetCards(std::vector<PageCard> cards) {
    m_cards.Set(std::move(cards));
    m_ground = NextLook();
    ::InvalidateRect(Window(), nullptr, TRUE);
}

void CPage::PostToOwner(int command) const {
    ::PostMessageA(::GetParent(Window()), WM_COMMAND, static_cast<WPARAM>(command), 0);
}

void CPage::Place(const RECT& place) {
    ::SetWindowPos(Window(), nullptr, place.left, place.top, WidthOf(place), HeightOf(place),
                   SWP_NOZORDER | SWP_NOACTIVATE);
}

void CPage::SetVisible(bool isVisible) const {
    // Deferred, or Windows would erase at once what the window that this one is in has left to erase.
    ::SetWindowPos(Window(), nullptr, 0, 0, 0, 0,
                   SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW | SWP_DEFERERASE |
                       static_cast<UINT>(isVisible ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
}

void CPage::Show() {
    if (m_shown || Window() == nullptr) return;
    m_shown = true;
    // What Windows' own controls paint at once must not be seen in parts either.
    OnShow();
    SetVisible(true);
    ::RedrawWindow(Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

void CPage::Hide() {
    if (!m_shown) return;
    m_shown = false;
    OnHide();
    SetVisible(false);
}

void CPage::TellAccessible(AccessibleThing& thing) const {
    thing.role = AccessibleRole::PropertyPage;
    thing.name = m_texts.title;
    thing.description = m_line.Text();
    thing.font = m_look->fonts.Text();
}

}  // namespace brennvar
