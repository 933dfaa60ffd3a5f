// The watch over what may change under the firewall's feet: the system's time and the addresses of its interfaces.
// User-interface thread only.
#pragma once

#include <cstdint>
#include <vector>

#include "base/Clock.h"
#include "base/ClockCheck.h"
#include "base/NetworkSignature.h"
#include "commands/Commander.h"
#include "config/Language.h"

namespace brennvar {

class MachineWatch {
public:
    // Every address of this machine with the status of its interface.
    using ReadAddresses = std::vector<InterfaceAddress> (*)();

    // Begins with the time and the addresses of this moment. Clock, language and commander are borrowed.
    MachineWatch(const Clock& clock, const Language& language, Commander& commander, ReadAddresses readAddresses);

    // Once a second each. The service is told to read the network's configuration anew when an address has come or
    // gone, and of a clock that was set back, or ahead by more than 20 s.
    void CheckNetwork();
    void CheckClock();
    // This thread, or the machine, has slept: the next check of the clock only takes note of the time.
    void SkipNextClockCheck() { m_clockCheck.SkipNext(); }

private:
    const Clock& m_clock;
    const Language& m_language;
    Commander& m_commander;
    const ReadAddresses m_readAddresses;
    ClockCheck m_clockCheck;
    std::uint32_t m_networkSignature;
};

}  // namespace brennvar
