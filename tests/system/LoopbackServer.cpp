#include "LoopbackServer.h"

#include <utility>

#include "Programs.h"

namespace brennvar::test {

LoopbackServer::LoopbackServer(std::deque<Connection> script) : m_script(std::move(script)) {
    WSADATA data{};
    Require(::WSAStartup(MAKEWORD(2, 2), &data) == 0);
    m_listener = ::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    sockaddr_in here{};
    here.sin_family = AF_INET;
    here.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
    int size = sizeof here;
    Require(::bind(m_listener, reinterpret_cast<sockaddr*>(&here), size) == 0);
    Require(::listen(m_listener, 4) == 0);
    Require(::getsockname(m_listener, reinterpret_cast<sockaddr*>(&here), &size) == 0);
    m_port = ::ntohs(here.sin_port);
    m_thread = std::thread([this] { Run(); });
}

LoopbackServer::~LoopbackServer() {
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
        if (m_peer != INVALID_SOCKET) ::shutdown(m_peer, SD_BOTH);
    }
    // What waits for a connection gets one, which says nothing.
    const SOCKET waker = ::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    sockaddr_in here{};
    here.sin_family = AF_INET;
    here.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
    here.sin_port = ::htons(m_port);
    (void)::connect(waker, reinterpret_cast<const sockaddr*>(&here), sizeof here);
    ::closesocket(waker);
    m_thread.join();
    ::closesocket(m_listener);
    ::WSACleanup();
}

std::vector<std::string> LoopbackServer::Received() const {
    const std::lock_guard lock(m_mutex);
    return m_received;
}

void LoopbackServer::Run() {
    for (const Connection& connection : m_script) {
        const SOCKET peer = ::accept(m_listener, nullptr, nullptr);
        {
            const std::lock_guard lock(m_mutex);
            if (m_isEnding || peer == INVALID_SOCKET) {
                ::closesocket(peer);
                return;
            }
            m_peer = peer;
            m_received.emplace_back();
        }
        Serve(peer, connection);
        const std::lock_guard lock(m_mutex);
        m_peer = INVALID_SOCKET;
        ::closesocket(peer);
    }
}

void LoopbackServer::Serve(SOCKET peer, const Connection& connection) {
    for (const Step& step : connection.steps) {
        std::string heard;
        while (!heard.ends_with(step.until)) {
            if (!ReceiveByte(peer, heard)) return;
        }
        if (!step.answer.empty()) ::send(peer, step.answer.data(), static_cast<int>(step.answer.size()), 0);
    }
    if (connection.closes) {
        ::shutdown(peer, SD_SEND);
        return;
    }
    for (std::string heard; ReceiveByte(peer, heard);) {
    }
}

bool LoopbackServer::ReceiveByte(SOCKET peer, std::string& heard) {
    char byte = 0;
    if (::recv(peer, &byte, 1, 0) != 1) return false;
    heard += byte;
    const std::lock_guard lock(m_mutex);
    m_received.back() += byte;
    return true;
}

}  // namespace brennvar::test
