#include "app/MachineWatch.h"

#include <utility>

namespace brennvar {

MachineWatch::MachineWatch(const Clock& clock, const Language& language, Commander& commander,
                           OwnAddresses& addresses)
    : m_clock(clock),
      m_language(language),
      m_commander(commander),
      m_addresses(addresses),
      m_clockCheck(clock.UtcNow(), clock.Elapsed()),
      m_lastLook(clock.Elapsed()) {}

void MachineWatch::CheckNetwork() {
    // Reading them costs more than everything else that is done in an idle second.
    const std::chrono::milliseconds now = m_clock.Elapsed();
    if (!m_addresses.HaveChanged() && m_networkSignature && now - m_lastLook < kLookAnyway) return;
    m_lastLook = now;
    const std::uint32_t signature = NetworkSignature(m_addresses.Read());
    if (std::exchange(m_networkSignature, signature).value_or(signature) == signature) return;
    m_commander.Send(Batch(UserCommand::ReloadNetwork));
}

void MachineWatch::CheckClock() {
    switch (m_clockCheck.Tick(m_clock.UtcNow(), m_clock.Elapsed())) {
        case ClockCheck::Jump::None: break;
        case ClockCheck::Jump::Past:
            m_commander.Send(Batch(UserCommand::ReportClockSetBack,
                                   {.detail = m_language.GetText(61, "System time changed to the past")}));
            break;
        case ClockCheck::Jump::Future:
            m_commander.Send(Batch(UserCommand::ReportClockSetAhead,
                                   {.detail = m_language.GetText(63, "System time changed to the future")}));
            break;
    }
}

}  // namespace brennvar
