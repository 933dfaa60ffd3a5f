#include "mail/MailRun_win.h"

#include <array>
#include <utility>

#include "tools/StreamTransport_win.h"

namespace brennvar {
namespace {

std::string ComputerName() {
    std::array<char, 256> name{};
    auto size = static_cast<DWORD>(name.size());
    return ::GetComputerNameA(name.data(), &size) ? std::string(name.data(), size) : "localhost";
}

}  // namespace

MailRun::MailRun(UINT finishedMessage)
    : m_worker([this, finishedMessage] {
          if (const HWND target = m_target) ::PostMessageA(target, finishedMessage, 0, 0);
      }) {}

bool MailRun::Start(MailWork work) {
    if (m_isUnderWay) return false;
    work.date = MailDate::Now();
    work.account.server.computerName = ComputerName();
    m_box = std::make_shared<MailNewsBox>();
    m_isUnderWay = m_worker.Start([work = std::move(work), box = m_box](const StopSignal& stop) {
        SystemClock clock(stop);
        SendMailNow(work, std::make_unique<WinsockTransport>(stop), clock, *box);
    });
    return m_isUnderWay;
}

bool MailRun::Finish() {
    if (!m_isUnderWay || m_worker.Running()) return false;
    m_worker.Stop();
    m_isUnderWay = false;
    return true;
}

}  // namespace brennvar
