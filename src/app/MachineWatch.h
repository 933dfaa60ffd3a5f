// The watch over what may change under the firewall's feet: the system's time and the addresses of its interfaces.
// User-interface thread only.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include "base/Clock.h"
#include "base/ClockCheck.h"
#include "base/OwnAddresses.h"
#include "commands/Commander.h"
#include "config/Language.h"

namespace brennvar {

class MachineWatch {
public:
    // Where the system reports no change of the addresses they are looked at as often as this.
    static constexpr std::chrono::seconds kLookAnyway{30};

    // Begins with the time of this moment, and with the addresses at the first check: the library that tells them
    // need not be loaded before the window is there. All are borrowed.
    MachineWatch(const Clock& clock, const Language& language, Commander& commander, OwnAddresses& addresses);

    // Once a second each. The service is told to read the network's configuration anew when an address has come or
    // gone, and of a clock that was set back, or ahead by more than 20 s.
    void CheckNetwork();
    void CheckClock();

private:
    const Clock& m_clock;
    const Language& m_language;
    Commander& m_commander;
    OwnAddresses& m_addresses;
    ClockCheck m_clockCheck;
    std::chrono::milliseconds m_lastLook;             // at the addresses
    std::optional<std::uint32_t> m_networkSignature;  // none: not looked at yet
};

}  // namespace brennvar
