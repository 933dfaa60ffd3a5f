#include "commands/NetworkSwitch.h"

namespace brennvar {

void NetworkSwitch::Switch(bool isOn) {
    m_isWanted = isOn;
    Send(UserCommand::SwitchNetwork);
}

void NetworkSwitch::ResetFingerprints() {
    m_commander.AskFor(UserCommand::ResetFingerprints, [this] { Send(UserCommand::ResetFingerprints); });
}

void NetworkSwitch::Send(UserCommand command) {
    m_state.reset();
    m_commander.Send(Batch(command, {.value = m_isWanted ? kNetworkOn : kNetworkOff}),
                     [this, isOn = m_isWanted, number = ++m_sent](bool wasThere) {
                         // The last one counts, and one that is lost may have arrived nevertheless.
                         if (wasThere && number == m_sent) m_state = isOn;
                     });
}

void NetworkSwitch::OnService(PeerState service) {
    if (service != PeerState::Reachable) m_state.reset();
}

}  // namespace brennvar
