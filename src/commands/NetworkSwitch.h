// The command that switches all network connections on and off. Nothing tells how they are, so what is known of
// them is what the service has taken from here. User-interface thread only.
#pragma once

#include <cstdint>
#include <optional>

#include "commands/Batch.h"
#include "commands/Commander.h"
#include "ipc/WatchedConnector.h"

namespace brennvar {

class NetworkSwitch {
public:
    // The commander is borrowed.
    explicit NetworkSwitch(Commander& commander) : m_commander(commander) {}
    NetworkSwitch(const NetworkSwitch&) = delete;
    NetworkSwitch& operator=(const NetworkSwitch&) = delete;

    void Switch(bool isOn);
    // Behind the security password. The network stays as it is when that has been entered.
    void ResetFingerprints();
    // A service that has gone may come back with the network as it likes.
    void OnService(PeerState service);

    // Whether the network is on. Nothing: not known, as at the start, or as long as a command is on its way.
    [[nodiscard]] std::optional<bool> State() const { return m_state; }

private:
    void Send(UserCommand command);

    Commander& m_commander;
    bool m_isWanted = true;    // as the user switched it last; a start finds it on
    std::uint64_t m_sent = 0;  // commands
    std::optional<bool> m_state;
};

}  // namespace brennvar
