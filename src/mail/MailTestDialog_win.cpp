#include "mail/MailTestDialog_win.h"

#include <utility>

#include "config/ResourceIds.h"
#include "mail/MailWords.h"
#include "ui/ChildControls_win.h"
#include "ui/Clipboard_win.h"
#include "ui/Enabling_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kWidth = 600;  // of the content
constexpr int kListHeight = 280;
constexpr int kStatusLines = 3;  // that a sentence may take, with what the server said
constexpr int kGap = 12;
constexpr int kButtonGap = 8;
constexpr int kFrame = 1;  // pixels

}  // namespace

MailTestDialog::MailTestDialog(const MailParts& parts) : MailRunDialog(parts) {}

void MailTestDialog::Show(HWND owner) {
    DoModal(owner, IDD_MAIL_TEST);
}

void MailTestDialog::OnCreateContent() {
    MailRunDialog::OnCreateContent();
    const Language& language = m_parts.language;
    ::SetWindowTextA(Window(), language.GetText(1796, "Send a test mail").c_str());
    ::SetDlgItemTextA(Window(), IDC_MAIL_TEST_NOTE,
                      language
                          .GetText(1797,
                                   "The options are used as they are stored; changes that have not been applied "
                                   "do not count.")
                          .c_str());
    ::SetDlgItemTextA(Window(), IDC_MAIL_TEST_AGAIN, language.GetText(1799, "&Send again").c_str());
    ::SetDlgItemTextA(Window(), IDC_MAIL_TEST_STOP, language.GetText(1403, "Stop").c_str());
    ::SetDlgItemTextA(Window(), IDC_MAIL_TEST_COPY, language.GetText(1070, "&Copy").c_str());
    ::SetDlgItemTextA(Window(), IDCANCEL, language.GetText(1043, "Close").c_str());
    m_note.Adopt(Item(IDC_MAIL_TEST_NOTE), LabelKind::Quiet, GetLook());
    m_status.Adopt(Item(IDC_MAIL_TEST_STATUS), LabelKind::Plain, GetLook());
    m_again.Adopt(Item(IDC_MAIL_TEST_AGAIN), kButtonMedium, GetLook());
    m_stop.Adopt(Item(IDC_MAIL_TEST_STOP), kButtonDialog, GetLook());
    m_copy.Adopt(Item(IDC_MAIL_TEST_COPY), kButtonDialog, GetLook());
    m_close.Adopt(Item(IDCANCEL), kPrimaryButton, GetLook());
    if (!m_lines.Create(Window(), IDC_MAIL_TEST_LINES, GetLook())) {
        End(IDCANCEL);
        return;
    }
    ::SetWindowPos(m_lines.Window(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    SetFirstFocus(IDCANCEL);
    PlaceControls();
    Begin();
}

void MailTestDialog::PlaceControls() {
    const int width = Scale(kWidth);
    const int noteHeight = m_note.Measure(width).cy;
    const int statusHeight = kStatusLines * m_again.Size().cy * 2 / 3;
    SetContentPixels({width, noteHeight + Scale(kGap) + Scale(kListHeight) + Scale(kGap) + statusHeight +
                                 Scale(kGap) + m_close.Size().cy});
    RECT rest = ContentRect();
    m_note.Place({rest.left, rest.top, rest.right, rest.top + noteHeight});
    rest.top += noteHeight + Scale(kGap);
    const LONG buttonTop = rest.bottom - m_close.Size().cy;
    LONG left = rest.left;
    for (const CButton* button : {&m_again, &m_stop, &m_copy}) {
        button->MoveTo(left, buttonTop);
        left += button->Size().cx + Scale(kButtonGap);
    }
    m_close.MoveTo(rest.right - m_close.Size().cx, buttonTop);
    rest.bottom = buttonTop - Scale(kGap);
    m_status.Place({rest.left, rest.bottom - statusHeight, rest.right, rest.bottom});
    rest.bottom -= statusHeight + Scale(kGap);
    m_card = rest;
    m_lines.Place(Inset(rest, kFrame));
}

void MailTestDialog::OnPaintGround(HDC dc) {
    DrawFrame(dc, m_card, GetLook().colours.frame2);
}

void MailTestDialog::Begin() {
    if (m_isReading || IsSending()) return;
    m_isReading = true;
    m_lines.Clear();
    m_status.SetText(m_parts.language.GetText(1807, "Sending..."));
    m_parts.reads.Ask<std::optional<StoredOptions>>(
        [&options = m_parts.options] { return options.Read(); },
        m_alive.Guard([this](const std::optional<std::optional<StoredOptions>>& read) {
            m_isReading = false;
            if (Window()) Send(read.value_or(std::nullopt));
        }));
    ShowState();
}

void MailTestDialog::Send(const std::optional<StoredOptions>& options) {
    if (!options) {
        m_status.SetText(
            m_parts.language.GetText(1812, "The options cannot be read at the moment. Please try again."));
    } else {
        (void)StartRun(
            TestMail(MailAccountOf(options->values), m_parts.language, m_parts.page));  // none is under way
    }
    ShowState();
}

void MailTestDialog::ShowNews() {
    const MailNews news = TakeNews();
    for (const MailLine& line : news.lines) {
        const bool isOurs = line.kind == MailLine::Kind::Ours;
        m_lines.Append((isOurs ? "> " : "< ") + line.text,
                       isOurs ? std::nullopt : std::optional(GetLook().colours.quietText));
    }
    if (news.outcome) m_status.SetText(DescribeOutcome(*news.outcome, m_parts.language));
}

void MailTestDialog::ShowState() {
    const bool isBusy = IsSending() || m_isReading;
    SetEnabled({{m_again.Window(), !isBusy}, {m_stop.Window(), IsSending()}, {m_copy.Window(), !isBusy}},
               m_close.Window());
}

void MailTestDialog::OnCommand(int id, int notification) {
    if (notification != BN_CLICKED) return;
    switch (id) {
        case IDC_MAIL_TEST_AGAIN: Begin(); break;
        case IDC_MAIL_TEST_STOP: StopRun(); break;
        case IDC_MAIL_TEST_COPY:
            CopyToClipboard(Window(), m_lines.Text() + m_status.Text() + "\r\n", GetLook().fonts.Text());
            break;
        default: break;
    }
}

}  // namespace brennvar
