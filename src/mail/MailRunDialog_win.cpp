#include "mail/MailRunDialog_win.h"

#include <utility>

namespace brennvar {
namespace {

constexpr UINT kMessageFinished = WM_APP + 1;
constexpr UINT_PTR kTimerNews = 1;
constexpr UINT kNewsPeriodMs = 50;

}  // namespace

MailRunDialog::MailRunDialog(const MailParts& parts)
    : CSkinDialog(parts.fonts), m_parts(parts), m_run(kMessageFinished) {}

void MailRunDialog::OnCreateContent() {
    m_run.PostTo(Window());
}

bool MailRunDialog::StartRun(MailWork work) {
    if (!m_run.Start(std::move(work))) return false;
    ::SetTimer(Window(), kTimerNews, kNewsPeriodMs, nullptr);
    return true;
}

void MailRunDialog::OnFinished() {
    if (!m_run.Finish()) return;
    ::KillTimer(Window(), kTimerNews);
    ShowNews();
    if (m_isClosing) return End(IDCANCEL);
    ShowState();
}

void MailRunDialog::OnTimer(UINT_PTR id) {
    if (id == kTimerNews) ShowNews();
}

void MailRunDialog::OnCancel() {
    m_isClosing = true;
    if (!m_run.IsUnderWay()) return End(IDCANCEL);
    m_run.RequestStop();  // OnFinished ends the dialog
}

bool MailRunDialog::OnLoopMessage(const MSG& message) {
    if (message.message != WM_KEYDOWN || message.wParam != VK_ESCAPE || !m_run.IsUnderWay()) return false;
    m_run.RequestStop();
    return true;
}

void MailRunDialog::OnDestroy() {
    m_run.PostTo(nullptr);
    m_run.RequestStop();
    CSkinDialog::OnDestroy();
}

std::optional<LRESULT> MailRunDialog::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == kMessageFinished) {
        OnFinished();
        return 0;
    }
    return CSkinDialog::OnMessage(message, wParam, lParam);
}

}  // namespace brennvar
