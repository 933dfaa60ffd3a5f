#include "base/OwnAddresses_win.h"

#include "base/NetworkAddresses_win.h"

namespace brennvar {

WinOwnAddresses::~WinOwnAddresses() {
    if (m_isArmed) {
        // The system must not write into an object that has gone. Waited for by the event, as the state in m_change
        // may look like the end from the beginning; a call that is cancelled normally ends at once.
        constexpr DWORD kCancelLimitMs = 1000;
        ::CancelIoEx(reinterpret_cast<HANDLE>(m_socket), &m_change);
        ::WaitForSingleObject(m_event.Get(), kCancelLimitMs);
    }
    if (m_socket != INVALID_SOCKET) ::closesocket(m_socket);
    if (m_isStarted) ::WSACleanup();
}

std::vector<InterfaceAddress> WinOwnAddresses::Read() {
    return ReadInterfaceAddresses();
}

bool WinOwnAddresses::HaveChanged() {
    // At the first call, so that the start of the program does not wait for the socket layer; what has changed
    // since the start nobody would report.
    if (!m_isListening) return Listen();
    // Not by the state in m_change, which some systems only write when the call has ended.
    if (!m_isArmed || ::WaitForSingleObject(m_event.Get(), 0) != WAIT_OBJECT_0) return false;
    Arm();
    return true;
}

bool WinOwnAddresses::Listen() {
    m_isListening = true;
    WSADATA data{};
    m_isStarted = ::WSAStartup(MAKEWORD(2, 2), &data) == 0;
    if (!m_isStarted) return false;
    m_event.Reset(::CreateEventA(nullptr, TRUE, FALSE, nullptr));
    // No byte ever goes through it.
    m_socket = ::WSASocketW(AF_INET, SOCK_DGRAM, IPPROTO_UDP, nullptr, 0, WSA_FLAG_OVERLAPPED);
    if (!m_event || m_socket == INVALID_SOCKET) return false;
    Arm();
    return m_isArmed;
}

void WinOwnAddresses::Arm() {
    m_change = {};
    m_change.hEvent = m_event.Get();
    DWORD ignored = 0;
    const int result =
        ::WSAIoctl(m_socket, SIO_ADDRESS_LIST_CHANGE, nullptr, 0, nullptr, 0, &ignored, &m_change, nullptr);
    m_isArmed = result == 0 || ::WSAGetLastError() == WSA_IO_PENDING;
}

}  // namespace brennvar
