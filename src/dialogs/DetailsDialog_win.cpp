#include "dialogs/DetailsDialog_win.h"

#include <algorithm>
#include <utility>

#include "dialogs/AddressMenu_win.h"
#include "ui/Clipboard_win.h"
#include "ui/Paint_win.h"
#include "ui/ToolkitIds.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kLeastWidth = 560;
constexpr int kMostHeight = 640;  // of the content: what does not fit is scrolled
constexpr int kGap = 16;          // above the bytes and the buttons
constexpr int kHeadingGap = 8;
constexpr int kButtonGap = 8;
constexpr int kFrame = 1;  // pixels

constexpr std::size_t kMostLinesShown = 10;  // of the bytes at once
constexpr int kMostBytesShare = 40;          // of the height, in hundredths

}  // namespace

DetailsDialog::DetailsDialog(const CFonts& fonts, const Language& language, AddressTools& tools, DetailsSheet sheet)
    : CSkinDialog(fonts), m_language(language), m_tools(tools), m_sheet(std::move(sheet)) {}

void DetailsDialog::Show(HWND owner) {
    DoModal(owner, IDD_DETAILS);
}

void DetailsDialog::Update(const DetailsSheet& sheet) {
    const bool hadBytes = HasBytes();
    m_sheet = sheet;
    if (!Window()) return;
    ShowSheet();
    if (hadBytes == HasBytes()) return;
    PlaceParts();
    RepaintGround();
}

void DetailsDialog::OnCreateContent() {
    ::SetDlgItemTextA(Window(), IDOK, m_language.GetText(1043, "Close").c_str());
    ::SetDlgItemTextA(Window(), IDC_DETAILS_COPY, m_language.GetText(1070, "&Copy").c_str());
    ::SetDlgItemTextA(Window(), IDC_DETAILS_ADDRESS, m_language.GetText(1722, "&Address...").c_str());
    m_close.Adopt(Item(IDOK), kPrimaryButton, GetLook());
    m_copy.Adopt(Item(IDC_DETAILS_COPY), kButtonDialog, GetLook());
    m_address.Adopt(Item(IDC_DETAILS_ADDRESS), kButtonDialog, GetLook());
    m_panel.emplace(GetLook());
    m_bytes.emplace(GetLook());
    if (!m_panel->CreatePanel(Window(), IDC_DETAILS_PANEL) || !m_bytes->CreateArea(Window(), IDC_DETAILS_BYTES)) {
        End(IDCANCEL);
        return;
    }
    m_bytesHeading.Adopt(Item(IDC_DETAILS_BYTES_HEADING), LabelKind::Bold, GetLook());
    // Tab goes from top to bottom: groups, bytes, buttons.
    HWND above = HWND_TOP;
    for (const HWND control : {m_panel->Window(), m_bytesHeading.Window(), m_bytes->Window(), m_address.Window(),
                               m_copy.Window(), m_close.Window()}) {
        ::SetWindowPos(control, above, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        above = control;
    }
    SetFirstFocus(IDOK);
    ShowSheet();
    SizeToContent();
    PlaceParts();
    ::ShowWindow(m_panel->Window(), SW_SHOWNA);
}

void DetailsDialog::ShowSheet() {
    ::SetWindowTextA(Window(), m_sheet.title.c_str());
    m_panel->Show(m_sheet.groups);
    m_bytesHeading.SetText(m_sheet.bytesHeading);
    std::string text;
    for (const std::string& line : m_sheet.bytes) text.append(text.empty() ? "" : "\r\n").append(line);
    m_bytes->Show(text);
    for (const HWND part : {m_bytesHeading.Window(), m_bytes->Window()}) {
        ::ShowWindow(part, HasBytes() ? SW_SHOWNA : SW_HIDE);
    }
    ::ShowWindow(m_address.Window(), m_sheet.address != 0 ? SW_SHOWNA : SW_HIDE);
}

int DetailsDialog::BytesHeight() const {
    const auto lines = static_cast<int>(std::min(m_sheet.bytes.size(), kMostLinesShown));
    return m_bytesHeading.Measure(0).cy + Scale(kHeadingGap) + m_bytes->HeightOfLines(lines);
}

void DetailsDialog::SizeToContent() {
    int width = Scale(kLeastWidth);
    std::size_t letters = 0;
    for (const std::string& line : m_sheet.bytes) letters = std::max(letters, line.size());
    if (HasBytes()) width = std::max(width, m_bytes->WidthOfLetters(static_cast<int>(letters)));
    int height = m_panel->HeightAt(width - 2 * kFrame) + 2 * kFrame + Scale(kGap) + m_close.Size().cy;
    if (HasBytes()) height += Scale(kGap) + BytesHeight();
    SetContentPixels({width, std::min(height, Scale(kMostHeight))});
}

void DetailsDialog::PlaceParts() {
    RECT rest = ContentRect();
    // From below: what the work area cuts off is cut off the groups, which scroll.
    LONG right = rest.right;
    for (const CButton* button : {&m_close, &m_copy}) {
        button->MoveTo(right - button->Size().cx, rest.bottom - button->Size().cy);
        right -= button->Size().cx + Scale(kButtonGap);
    }
    m_address.MoveTo(rest.left, rest.bottom - m_address.Size().cy);
    rest.bottom -= m_close.Size().cy + Scale(kGap);
    if (HasBytes()) {
        const int height = std::min(BytesHeight(), HeightOf(rest) * kMostBytesShare / 100);
        RECT bytes = rest;
        bytes.top = bytes.bottom - height;
        const LONG headingHeight = m_bytesHeading.Measure(0).cy;
        m_bytesHeading.Place({bytes.left, bytes.top, bytes.right, bytes.top + headingHeight});
        bytes.top += headingHeight + Scale(kHeadingGap);
        m_bytes->Place(bytes);
        rest.bottom -= height + Scale(kGap);
    }
    m_card = rest;
    m_panel->Place(Inset(rest, kFrame));
}

void DetailsDialog::OnPaintGround(HDC dc) {
    DrawFrame(dc, m_card, GetLook().colours.frame2);
}

void DetailsDialog::OnCommand(int id, int notification) {
    if (notification != BN_CLICKED) return;
    if (id == IDOK) End(IDOK);
    if (id == IDC_DETAILS_COPY) CopyToClipboard(Window(), TextOf(m_sheet), GetLook().fonts.Text());
    if (id == IDC_DETAILS_ADDRESS && m_sheet.address != 0) {
        OpenToolFromMenu(m_address.Window(), m_sheet.address, AddressItems::ToolsAndRules, m_tools, m_language,
                         GetLook());
    }
}

}  // namespace brennvar
