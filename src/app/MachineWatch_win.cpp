#include "app/MachineWatch_win.h"

#include <utility>

#include "base/NetworkAddresses_win.h"

namespace brennvar {
namespace {

// Severity of a clock event in the service's log.
constexpr std::uint32_t kSeverityWarning = 2;

}  // namespace

MachineWatch::MachineWatch(const Clock& clock, const Language& language, ServiceLink& link)
    : m_clock(clock),
      m_language(language),
      m_link(link),
      m_clockCheck(clock.UtcNow()),
      m_networkSignature(NetworkSignature(ReadInterfaceAddresses())) {}

void MachineWatch::CheckNetwork() {
    const std::uint32_t signature = NetworkSignature(ReadInterfaceAddresses());
    if (std::exchange(m_networkSignature, signature) == signature) return;
    m_link.Send([](CommandPipe& pipe) { pipe.CMD_RELOAD_ADVANCED_RULES(); });
}

void MachineWatch::CheckClock() {
    if (m_isCheckingClock) return;
    m_isCheckingClock = true;
    const ClockCheck::Jump jump = m_clockCheck.Tick(m_clock.UtcNow());
    m_isCheckingClock = false;
    if (jump == ClockCheck::Jump::None) return;
    const bool past = jump == ClockCheck::Jump::Past;
    m_link.Send([title = m_language.GetText(59, "System time changed"),
                 subject = past ? m_language.GetText(60, "Past") : m_language.GetText(62, "Future"),
                 detail = past ? m_language.GetText(61, "System time changed to the past")
                               : m_language.GetText(63, "System time changed to the future")](CommandPipe& pipe) {
        pipe.CMD_EVENT_REPORT(title, subject, kSeverityWarning, detail);
    });
}

}  // namespace brennvar
