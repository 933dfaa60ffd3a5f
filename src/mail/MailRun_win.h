// The mail that a dialog is sending: a worker thread sends it over Winsock, the dialog sees what comes of it.
// User-interface thread only.
#pragma once

#include <atomic>
#include <memory>

#include "base/SystemClock.h"
#include "base/Windows_win.h"
#include "mail/MailSending.h"
#include "ui/WorkerThread.h"

namespace brennvar {

class MailRun {
public:
    // Posted to the window when it is over: the window then calls Finish.
    explicit MailRun(UINT finishedMessage);

    // The window that is posted to; null: none any more.
    void PostTo(HWND window) { m_target = window; }
    // False while another mail is under way. Date and computer name are those of now.
    [[nodiscard]] bool Start(MailWork work);
    // Asks it to end, which it does within 100 ms.
    void RequestStop() { m_worker.RequestStop(); }
    // From Start until Finish.
    [[nodiscard]] bool IsUnderWay() const { return m_isUnderWay; }
    // What has come since the last call.
    [[nodiscard]] MailNews Take() { return m_box ? m_box->Take() : MailNews(); }
    // False: the worker has not ended yet.
    bool Finish();

private:
    std::atomic<HWND> m_target = nullptr;
    std::shared_ptr<MailNewsBox> m_box;
    bool m_isUnderWay = false;
    CWorkerThread m_worker;  // last: it uses what stands above
};

}  // namespace brennvar
