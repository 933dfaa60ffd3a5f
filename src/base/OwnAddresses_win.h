// The addresses of this machine, from IP Helper; their changes, from the socket layer, which every system reports
// there (NotifyAddrChange is not implemented by all). One thread.
#pragma once

#include <vector>

#include "base/Handles_win.h"
#include "base/OwnAddresses.h"
#include "base/Windows_win.h"

namespace brennvar {

class WinOwnAddresses final : public OwnAddresses {
public:
    WinOwnAddresses() = default;
    WinOwnAddresses(const WinOwnAddresses&) = delete;
    WinOwnAddresses& operator=(const WinOwnAddresses&) = delete;
    ~WinOwnAddresses() override;

    [[nodiscard]] std::vector<InterfaceAddress> Read() override;
    [[nodiscard]] bool HaveChanged() override;

private:
    // Changes from now on are reported; false: they cannot be.
    [[nodiscard]] bool Listen();
    void Arm();

    bool m_isListening = false;  // it has been tried
    bool m_isStarted = false;    // WSAStartup is to be undone
    bool m_isArmed = false;      // the system writes into m_change when something happens
    SOCKET m_socket = INVALID_SOCKET;
    UniqueEvent m_event;
    OVERLAPPED m_change{};
};

}  // namespace brennvar
