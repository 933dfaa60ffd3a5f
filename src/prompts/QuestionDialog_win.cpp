#include "prompts/QuestionDialog_win.h"

#include <algorithm>
#include <utility>

#include "base/DisplayName.h"
#include "base/LocalPath_win.h"
#include "config/ResourceIds.h"
#include "prompts/QuestionIcon_win.h"
#include "ui/ActionMark_win.h"
#include "ui/ChildControls_win.h"
#include "ui/Paint_win.h"
#include "ui/ProgramIcon_win.h"

namespace brennvar {
namespace {

// The layout, at 96 pixels per inch, from the content's corner.
constexpr int kWidth = 432;
constexpr int kIconSize = 32;
constexpr int kIconTop = 4;
constexpr int kTextLeft = 48;
constexpr int kLineHeight = 20;
constexpr int kFactHeight = 24;  // what decides is larger
constexpr int kHeadingGap = 12;
constexpr int kTickGap = 8;      // above the box
constexpr int kTickIndent = 24;  // where the text beside the box begins
constexpr int kEffectGap = 4;    // above what the answers do
constexpr int kButtonsGap = 16;  // above the buttons
constexpr int kButtonGap = 16;   // between them
constexpr int kLinkGap = 12;     // left of the link
constexpr int kSignSize = 14;    // of the warning's sign, and from it to its text
constexpr int kSignGap = 6;

}  // namespace

QuestionDialog::QuestionDialog(const CFonts& fonts, Content content)
    : CSkinDialog(fonts), m_content(std::move(content)) {}

std::vector<QuestionDialog::Heading> QuestionDialog::ProgramHeading(const std::string& name,
                                                                    const std::string& path,
                                                                    const ProgramWords& program, int gapBelow) {
    const bool opens = !program.file.empty() && IsOnThisMachine(program.file);
    std::vector<Heading> lines = {
        {.id = IDC_PROGRAM_NAME, .text = name, .kind = LabelKind::Title},
        {.id = IDC_PROGRAM_PATH, .text = path, .kind = LabelKind::Plain, .isFolder = opens}};
    if (!program.placeWarning.empty()) {
        lines.push_back(
            {.id = IDC_PROGRAM_PLACE, .text = program.placeWarning, .kind = LabelKind::Plain, .isWarning = true});
    }
    lines.back().gapBelow = gapBelow;
    return lines;
}

std::vector<QuestionCard::Row> QuestionDialog::PublisherRow(const ProgramWords& program) {
    if (program.file.empty()) return {};
    return {{.id = IDC_FACT_PUBLISHER,
             .label = program.publisherLabel,
             .value = program.publisher,
             .isAlarming = program.isPublisherMissing,
             .note = program.publisherNote}};
}

PromptAnswer QuestionDialog::Ask(HWND owner) {
    m_owner = owner;
    const bool isAllowed = DoModal(owner, IDD_CONFIRMATION, Appearance::Unfocused) == IDYES;
    return {.allow = isAllowed, .remember = m_isTicked};
}

void QuestionDialog::Open(HWND owner, std::function<void()> answered) {
    m_owner = owner;
    m_answered = std::move(answered);
    (void)CDialog::Open(owner, IDD_CONFIRMATION, Appearance::Unfocused);
}

std::optional<PromptAnswer> QuestionDialog::Given() const {
    if (IsOpen()) return std::nullopt;
    return PromptAnswer{.allow = Result() == IDYES, .remember = m_isTicked};
}

void QuestionDialog::OnEnded() {
    if (m_answered) m_answered();
}

void QuestionDialog::OnInitDialog() {
    CSkinDialog::OnInitDialog();
    KeepTexts();
    RECT close{};
    ::GetWindowRect(Item(IDCANCEL), &close);
    ::MapWindowPoints(nullptr, Window(), reinterpret_cast<POINT*>(&close), 2);
    if (!m_content.closeTip.empty()) m_tips.AddBelow(close, m_content.closeTip);
    m_stand.Begin(Window(), m_owner, {IDC_ALLOW, IDC_DENY, IDCANCEL, IDC_QUESTION_LINK, IDC_PROGRAM_FOLDER});
}

void QuestionDialog::OnCreateContent() {
    ::SetWindowTextA(Window(), m_content.caption.c_str());
    m_tips.Begin(Window(), GetLook());
    if (!m_content.icon || !m_content.icon->icon) m_plainIcon = LoadNoIcon(IconSize::Large);
    AdoptControls();
    PlaceControls();
}

void QuestionDialog::AdoptControls() {
    for (const Heading& line : m_content.heading) {
        ::SetDlgItemTextA(Window(), line.id, line.text.c_str());
        m_heading.emplace_back().Adopt(Item(line.id), line.kind, GetLook());
        ::ShowWindow(Item(line.id), SW_SHOWNA);  // the template has lines that not every question needs
    }
    ::SetDlgItemTextA(Window(), IDC_QUESTION_LINK, m_content.linkText.c_str());
    ::SetDlgItemTextA(Window(), IDC_MESSAGE_TEXT, m_content.message.c_str());
    m_card.Adopt(Item(IDC_MESSAGE_TEXT), GetLook(), m_content.card);
    ::SetDlgItemTextA(Window(), IDC_REMEMBER, m_content.tickText.c_str());
    ::SetDlgItemTextA(Window(), IDC_WHY_NOT_REMEMBERED, m_content.whyNoTick.c_str());
    ::SetDlgItemTextA(Window(), IDC_ALLOW, m_content.allowText.c_str());
    ::SetDlgItemTextA(Window(), IDC_DENY, m_content.denyText.c_str());
    m_link.Adopt(Item(IDC_QUESTION_LINK), GetLook());
    ::ShowWindow(m_link.Window(), m_content.linkText.empty() ? SW_HIDE : SW_SHOWNA);
    m_tickBox.Adopt(Item(IDC_REMEMBER), GetLook());
    ::EnableWindow(m_tickBox.Window(), m_content.whyNoTick.empty());
    m_whyNoTick.Adopt(Item(IDC_WHY_NOT_REMEMBERED), LabelKind::Quiet, GetLook());
    ::ShowWindow(m_whyNoTick.Window(), m_content.whyNoTick.empty() ? SW_HIDE : SW_SHOWNA);
    if (!m_content.unticked.empty()) {
        constexpr DWORD kLines = SS_LEFT | SS_NOPREFIX;
        m_unticked.Create(Window(), m_content.unticked, LabelKind::Quiet, kLines, IDC_EFFECT_UNTICKED, GetLook());
        m_ticked.Create(Window(), m_content.ticked, LabelKind::Quiet, kLines, IDC_EFFECT_TICKED, GetLook());
        ShowEffect();
    }
    m_allow.Adopt(Item(IDC_ALLOW), kPrimaryButton, GetLook());
    m_deny.Adopt(Item(IDC_DENY), kPrimaryButton, GetLook());
    m_allow.SetMark(ActionMark::Allow);
    m_deny.SetMark(ActionMark::Deny);
}

int QuestionDialog::PlaceHeading(bool measuresOnly) {
    const RECT content = ContentRect();
    LONG top = content.top;
    for (std::size_t index = 0; index < m_content.heading.size(); ++index) {
        const Heading& line = m_content.heading[index];
        const int height = Scale(line.kind == LabelKind::Title ? kFactHeight : kLineHeight);
        if (!measuresOnly) {
            RECT place{content.left + Scale(kTextLeft), top, content.right, top + height};
            if (index + 1 == m_content.heading.size() && !m_content.linkText.empty()) {
                m_link.Place({place.right - m_link.Width(), place.top, place.right, place.bottom});
                place.right -= m_link.Width() + Scale(kLinkGap);
            }
            if (line.isWarning) place = PlaceWarning(place);
            m_heading[index].Place(place);
            if (line.isFolder) {
                PlaceFolder(line, place);
            } else {
                FitHeading(line, place);
            }
        }
        top += height + Scale(line.gapBelow);
    }
    return static_cast<int>(top - content.top);
}

void QuestionDialog::FitHeading(const Heading& line, const RECT& place) {
    const HFONT font = line.kind == LabelKind::Title ? GetLook().fonts.Title() : GetLook().fonts.Text();
    const auto fits = [&](const std::string& text) {
        return MeasureText(font, text, 0, DT_NOPREFIX).cx <= WidthOf(place);
    };
    if (fits(line.text)) return;
    m_tips.Add(place, line.text);
    if (line.showsEnd) ::SetDlgItemTextA(Window(), line.id, EndThatFits(line.text, fits).c_str());
}

void QuestionDialog::PlaceFolder(const Heading& line, RECT place) {
    // The label keeps the path for automation; the link has it with signs of its own.
    ::ShowWindow(Item(line.id), SW_HIDE);
    m_folder.AdoptPath(Item(IDC_PROGRAM_FOLDER), line.text, GetLook());
    ::InflateRect(&place, CLink::Padding(), 0);
    place.right = std::min<LONG>(place.right, place.left + m_folder.Width());
    m_folder.Place(place);
    ::ShowWindow(m_folder.Window(), SW_SHOWNA);
    m_tips.Add(place, line.text);
}

RECT QuestionDialog::PlaceWarning(const RECT& place) {
    const LONG side = Scale(kSignSize);
    m_warningSign = Centred({place.left, place.top, place.left + side, place.bottom}, {side, side});
    return {place.left + side + Scale(kSignGap), place.top, place.right, place.bottom};
}

void QuestionDialog::PlaceControls() {
    const int width = Scale(kWidth);
    const int messageTop = PlaceHeading(true) + Scale(kHeadingGap);
    const int messageHeight = m_card.HeightAt(width);
    const int tickTop = messageTop + messageHeight + Scale(kTickGap);
    const int tickHeight = m_tickBox.HeightAt(width);
    const int whyHeight =
        m_content.whyNoTick.empty() ? 0 : static_cast<int>(m_whyNoTick.Measure(width - Scale(kTickIndent)).cy);
    const int effectHeight = EffectHeight(width - Scale(kTickIndent));
    const int textsHeight = tickTop + tickHeight + whyHeight + effectHeight;
    SetContentPixels({width, textsHeight + Scale(kButtonsGap) + m_allow.Size().cy});
    (void)PlaceHeading(false);
    const RECT content = ContentRect();
    const LONG messagePlace = content.top + messageTop;
    m_card.PlaceWith({content.left, messagePlace, content.right, messagePlace + messageHeight}, m_tips);
    // From below: a window that had to be cut to the work area cuts a text and not its buttons.
    const LONG buttons = content.bottom - m_allow.Size().cy;
    RECT tick{content.left, content.top + tickTop, content.right, 0};
    tick.bottom = std::min<LONG>(tick.top + tickHeight, buttons - Scale(kButtonsGap));
    m_tickBox.Place(tick);
    const LONG textLeft = tick.left + Scale(kTickIndent);
    const LONG effectTop = tick.bottom + whyHeight;
    m_whyNoTick.Place({textLeft, tick.bottom, tick.right, effectTop});
    for (const CLabel* effect : {&m_unticked, &m_ticked}) {
        if (!effect->Window()) continue;
        effect->Place({textLeft, effectTop + Scale(kEffectGap), tick.right, effectTop + effectHeight});
    }
    PlaceButtons(content);
}

void QuestionDialog::PlaceButtons(const RECT& content) {
    const LONG buttons = content.bottom - m_allow.Size().cy;
    const LONG denyLeft = content.right - m_deny.Size().cx;
    m_deny.MoveTo(denyLeft, buttons);
    m_allow.MoveTo(denyLeft - Scale(kButtonGap) - m_allow.Size().cx, buttons);
}

int QuestionDialog::EffectHeight(int width) const {
    if (!m_unticked.Window()) return 0;
    const LONG height = std::max(m_unticked.Measure(width).cy, m_ticked.Measure(width).cy);
    return static_cast<int>(height) + Scale(kEffectGap);
}

bool QuestionDialog::IsTicked() const {
    return ::IsDlgButtonChecked(Window(), IDC_REMEMBER) == BST_CHECKED;
}

void QuestionDialog::TellAccessible(AccessibleThing& thing) const {
    CSkinDialog::TellAccessible(thing);
    std::string& text = thing.description;
    for (const Heading& line : m_content.heading) text += line.text + "\n";
    text += m_card.Lines();
    for (const std::string& line : {m_content.whyNoTick, IsTicked() ? m_content.ticked : m_content.unticked}) {
        if (!line.empty()) text += "\n" + line;
    }
}

void QuestionDialog::ShowEffect() const {
    if (!m_unticked.Window()) return;
    const bool isTicked = IsTicked();
    ::ShowWindow(m_unticked.Window(), isTicked ? SW_HIDE : SW_SHOWNA);
    ::ShowWindow(m_ticked.Window(), isTicked ? SW_SHOWNA : SW_HIDE);
}

// The first letter of a button answers as well, as soon as the buttons work. It needs the keyboard, which a
// question never takes by itself.
bool QuestionDialog::OnLoopMessage(const MSG& message) {
    m_tips.OnLoopMessage(message);
    if (message.message != WM_CHAR || !m_stand.ButtonsWork()) return false;
    const auto isFirstOf = [&](const std::string& caption) {
        const auto upper = [](WPARAM letter) {
            return ::CharUpperA(reinterpret_cast<char*>(static_cast<std::uintptr_t>(letter & 0xFF)));
        };
        return !caption.empty() && upper(message.wParam) == upper(static_cast<unsigned char>(caption[0]));
    };
    const bool isYes = isFirstOf(m_content.allowText);
    if (!isYes && !isFirstOf(m_content.denyText)) return false;
    Answer(isYes ? IDYES : IDNO);
    return true;
}

void QuestionDialog::OnPaintGround(HDC dc) {
    const RECT content = ContentRect();
    if (!::IsRectEmpty(&m_warningSign)) DrawWarningTriangle(dc, m_warningSign);
    const int side = Scale(kIconSize);
    const LONG top = content.top + Scale(kIconTop);
    if (m_content.programFile.empty()) {
        DrawUnknownProgram(dc, {content.left, top, content.left + side, top + side}, GetLook().colours.quietText);
        return;
    }
    const HICON icon = m_plainIcon ? m_plainIcon.Get() : m_content.icon->icon.Get();
    ::DrawIconEx(dc, content.left, top, icon, side, side, 0, nullptr, DI_NORMAL);
}

void QuestionDialog::OnCommand(int id, int notification) {
    if (notification != BN_CLICKED) return;
    if (id == IDC_ALLOW) Answer(IDYES);
    if (id == IDC_DENY) Answer(IDNO);
    if (id == IDC_REMEMBER) {
        ShowEffect();
        Announce(EVENT_OBJECT_DESCRIPTIONCHANGE);
    }
    if (id == IDC_PROGRAM_FOLDER && m_stand.ButtonsWork()) s_openFolder(m_content.programFile);
    if (id == IDC_QUESTION_LINK && m_stand.ButtonsWork()) OnLink(m_link.Window());
}

void QuestionDialog::Answer(int result) {
    if (!m_stand.ButtonsWork()) return;
    m_isTicked = m_content.whyNoTick.empty() && IsTicked();
    End(result);
}

void QuestionDialog::OnCancel() {
    if (m_stand.ButtonsWork()) End(IDNO);
}

void QuestionDialog::OnTimer(UINT_PTR id) {
    m_stand.OnTimer(id);
    m_tips.OnTimer(id);
}

std::optional<LRESULT> QuestionDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    m_tips.OnMessage(message, lParam);
    return CSkinDialog::OnMessage(message, wParam, lParam);
}

}  // namespace brennvar
