// The owner of a socket; empty is INVALID_SOCKET.
#pragma once

#include "base/UniqueHandle.h"
#include "base/Windows_win.h"

namespace brennvar {

struct SocketTraits {
    using Type = SOCKET;
    static Type Empty() noexcept { return INVALID_SOCKET; }
    static void Close(Type socket) noexcept { ::closesocket(socket); }
};
using UniqueSocket = UniqueHandle<SocketTraits>;

}  // namespace brennvar
