#include "mail/MailDialog_win.h"

#include <algorithm>
#include <utility>

#include "base/FileSize.h"
#include "config/Amounts.h"
#include "config/ResourceIds.h"
#include "mail/MailWords.h"
#include "ui/ChildControls_win.h"
#include "ui/Enabling_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kWidth = 560;  // of the content
constexpr int kRowGap = 8;
constexpr int kLabelGap = 12;  // between a label and its field
constexpr int kTextHeight = 132;
constexpr int kProgressHeight = 8;
constexpr int kStatusLines = 3;  // that a sentence may take, with what the server said
constexpr int kGap = 16;         // above the state and the buttons
constexpr int kButtonGap = 8;

constexpr int kMostLineLetters = 1000;
constexpr int kMostTextLetters = 30'000;  // that an edit field of Windows takes by itself

}  // namespace

MailDialog::MailDialog(const MailParts& parts, MailWish wish) : MailRunDialog(parts), m_wish(std::move(wish)) {}

void MailDialog::Show(HWND owner) {
    DoModal(owner, IDD_MAIL);
}

void MailDialog::OnCreateContent() {
    MailRunDialog::OnCreateContent();
    ::SetWindowTextA(Window(), m_parts.language.GetText(1803, "Send by mail").c_str());
    AdoptControls();
    PlaceControls();
    SetFirstFocus(IDC_MAIL_TO);
    AskForOptions();
    ShowState();
}

void MailDialog::AdoptRow(Row& row, int label, int field, const std::string& text, int limit) {
    ::SetDlgItemTextA(Window(), label, text.c_str());
    row.label.Adopt(Item(label), LabelKind::Plain, GetLook());
    ::SendMessageA(Item(field), EM_LIMITTEXT, static_cast<WPARAM>(limit), 0);
    row.field.Adopt(Item(field), GetLook());
}

void MailDialog::AdoptControls() {
    const Language& language = m_parts.language;
    AdoptRow(m_to, IDC_MAIL_TO_LABEL, IDC_MAIL_TO, language.GetText(353, "To:"), kMostLineLetters);
    AdoptRow(m_cc, IDC_MAIL_CC_LABEL, IDC_MAIL_CC, language.GetText(354, "Cc:"), kMostLineLetters);
    AdoptRow(m_subject, IDC_MAIL_SUBJECT_LABEL, IDC_MAIL_SUBJECT, language.GetText(355, "Subject:"),
             kMostLineLetters);
    AdoptRow(m_text, IDC_MAIL_TEXT_LABEL, IDC_MAIL_TEXT, language.GetText(1801, "Message:"), kMostTextLetters);
    m_file.Adopt(Item(IDC_MAIL_FILE), LabelKind::Quiet, GetLook());
    m_progress.Adopt(Item(IDC_MAIL_PROGRESS), GetLook());
    m_status.Adopt(Item(IDC_MAIL_STATUS), LabelKind::Plain, GetLook());
    ::SetDlgItemTextA(Window(), IDC_MAIL_SEND, language.GetText(1798, "&Send").c_str());
    ::SetDlgItemTextA(Window(), IDC_MAIL_STOP, language.GetText(1403, "Stop").c_str());
    ::SetDlgItemTextA(Window(), IDCANCEL, language.GetText(1043, "Close").c_str());
    m_send.Adopt(Item(IDC_MAIL_SEND), kPrimaryButton, GetLook());
    m_stop.Adopt(Item(IDC_MAIL_STOP), kButtonDialog, GetLook());
    m_close.Adopt(Item(IDCANCEL), kButtonDialog, GetLook());
    m_subject.field.SetText(m_wish.subject);
    m_file.SetText(language.GetText(1802, "Attached:") + ' ' + m_wish.name);
}

LONG MailDialog::PlaceRow(const Row& row, LONG top, int labelWidth, int height) const {
    const RECT content = ContentRect();
    const LONG labelHeight = row.label.Measure(0).cy;
    const LONG labelTop = top + (FieldHeight() - labelHeight) / 2;
    row.label.Place({content.left, labelTop, content.left + labelWidth, labelTop + labelHeight});
    row.field.Place({content.left + labelWidth + Scale(kLabelGap), top, content.right, top + height});
    return top + height + Scale(kRowGap);
}

void MailDialog::PlaceControls() {
    int labelWidth = 0;
    for (const Row* row : {&m_to, &m_cc, &m_subject, &m_text}) {
        labelWidth = std::max<int>(labelWidth, row->label.Measure(0).cx);
    }
    const LONG lineHeight = m_file.Measure(0).cy;
    const int height = 3 * (FieldHeight() + Scale(kRowGap)) + Scale(kTextHeight) + Scale(kRowGap) + lineHeight +
                       Scale(kGap) + Scale(kProgressHeight) + Scale(kRowGap) + kStatusLines * lineHeight +
                       Scale(kGap) + m_send.Size().cy;
    SetContentPixels({Scale(kWidth), height});

    const RECT content = ContentRect();
    LONG top = content.top;
    for (const Row* row : {&m_to, &m_cc, &m_subject}) top = PlaceRow(*row, top, labelWidth, FieldHeight());
    top = PlaceRow(m_text, top, labelWidth, Scale(kTextHeight));
    const LONG fieldLeft = content.left + labelWidth + Scale(kLabelGap);
    m_file.Place({fieldLeft, top, content.right, top + lineHeight});
    top += lineHeight + Scale(kGap);
    m_progress.Place({content.left, top, content.right, top + Scale(kProgressHeight)});
    top += Scale(kProgressHeight) + Scale(kRowGap);
    m_status.Place({content.left, top, content.right, top + kStatusLines * lineHeight});
    LONG right = content.right;
    for (const CButton* button : {&m_close, &m_stop, &m_send}) {
        button->MoveTo(right - button->Size().cx, content.bottom - button->Size().cy);
        right -= button->Size().cx + Scale(kButtonGap);
    }
}

void MailDialog::AskForOptions() {
    m_parts.reads.Ask<Read>(
        [&options = m_parts.options, path = m_wish.path] {
            Read read;
            if (const auto stored = options.Read()) read.account = MailAccountOf(stored->values);
            read.size = SizeOfFile(path);
            return read;
        },
        m_alive.Guard([this](const std::optional<Read>& read) {
            if (Window()) TakeOptions(read.value_or(Read()));
        }));
}

void MailDialog::TakeOptions(const Read& read) {
    const Language& language = m_parts.language;
    m_account = read.account;
    if (read.size) {
        m_file.SetText(language.GetText(1802, "Attached:") + ' ' + m_wish.name + ", " +
                       FormatBytes(*read.size, AmountWords(language)));
    }
    if (m_account) {
        // What the user has typed meanwhile stays.
        if (m_to.field.Text().empty()) m_to.field.SetText(m_account->to);
        if (m_cc.field.Text().empty()) m_cc.field.SetText(m_account->cc);
        if (m_subject.field.Text().empty()) m_subject.field.SetText(m_account->subject);
    } else {
        m_status.SetText(language.GetText(1812, "The options cannot be read at the moment. Please try again."));
    }
    ShowState();
}

void MailDialog::Send() {
    if (!m_account || IsSending()) return;
    MailWork work{.account = *m_account,
                  .text = m_text.field.Text(),
                  .page = m_parts.page,
                  .file = MailFilePart{.path = m_wish.path, .name = m_wish.name, .contentType = m_wish.contentType},
                  .date = {}};
    work.account.to = m_to.field.Text();
    work.account.cc = m_cc.field.Text();
    work.account.subject = m_subject.field.Text();
    m_wasSent = false;
    if (!StartRun(std::move(work))) return;
    m_progress.SetPosition(0);
    m_status.SetText(m_parts.language.GetText(1807, "Sending..."));
    ShowState();
}

void MailDialog::ShowNews() {
    const MailNews news = TakeNews();
    if (news.total > 0) m_progress.SetPosition(static_cast<int>(news.sent * 100 / news.total));
    if (!news.outcome) return;
    m_wasSent = !news.outcome->failure;
    m_status.SetText(DescribeOutcome(*news.outcome, m_parts.language));
}

void MailDialog::ShowState() {
    const bool isUnderWay = IsSending();
    // What has been sent is not sent again by a key that is pressed once more.
    SetEnabled({{m_send.Window(), m_account.has_value() && !isUnderWay && !m_wasSent},
                {m_stop.Window(), isUnderWay},
                {m_to.field.Window(), !isUnderWay},
                {m_cc.field.Window(), !isUnderWay},
                {m_subject.field.Window(), !isUnderWay},
                {m_text.field.Window(), !isUnderWay}},
               isUnderWay ? m_stop.Window() : m_close.Window());
    ::ShowWindow(m_progress.Window(), isUnderWay || m_wasSent ? SW_SHOWNA : SW_HIDE);
}

void MailDialog::OnCommand(int id, int notification) {
    switch (id) {
        case IDC_MAIL_SEND:
            if (notification == BN_CLICKED) Send();
            break;
        case IDC_MAIL_STOP:
            if (notification == BN_CLICKED) StopRun();
            break;
        case IDC_MAIL_TO:
        case IDC_MAIL_CC:
        case IDC_MAIL_SUBJECT:
        case IDC_MAIL_TEXT:
            // Another mail.
            if (notification == EN_CHANGE && std::exchange(m_wasSent, false)) ShowState();
            break;
        default: break;
    }
}

}  // namespace brennvar
