#include "app/MachineWatch.h"

#include <utility>

namespace brennvar {

MachineWatch::MachineWatch(const Clock& clock, const Language& language, Commander& commander,
                           ReadAddresses readAddresses)
    : m_clock(clock),
      m_language(language),
      m_commander(commander),
      m_readAddresses(readAddresses),
      m_clockCheck(clock.UtcNow()),
      m_networkSignature(NetworkSignature(readAddresses())) {}

void MachineWatch::CheckNetwork() {
    const std::uint32_t signature = NetworkSignature(m_readAddresses());
    if (std::exchange(m_networkSignature, signature) == signature) return;
    m_commander.Send(Batch(UserCommand::ReloadNetwork));
}

void MachineWatch::CheckClock() {
    switch (m_clockCheck.Tick(m_clock.UtcNow())) {
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
