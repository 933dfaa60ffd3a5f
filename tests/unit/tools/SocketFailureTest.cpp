#include "tools/SocketFailure.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

TEST(SocketFailureTest, HasASentenceForEveryFailure) {
    using enum SocketMessage;
    using enum SocketPeer;
    struct Row {
        SocketMessage message;
        std::uint32_t code;
        SocketPeer peer;
        int text;
    };
    const Row rows[] = {
        {UnknownAddress, 11001, Server, 1701},
        {UnknownAddress, 11002, Server, 1716},
        {UnknownAddress, 10060, Server, 1716},
        {UnknownProxy, 11001, Proxy, 1702},
        {UnknownProxy, 11002, Proxy, 1716},
        {UnknownRemote, 10065, Server, 1710},
        {Connect, 10060, Server, 1703},
        {Connect, 10060, Proxy, 1704},
        {Connect, 10061, Server, 1705},
        {Connect, 10061, Proxy, 1706},
        {Connect, 10013, Server, 1714},
        {Connect, 10013, Proxy, 1708},
        {Connect, 10051, Server, 1710},
        {Connect, 10065, Proxy, 1710},
        {Connect, 10049, Server, 1710},
        {Connect, 10054, Server, 1711},
        {Connect, 10053, Server, 1711},
        {Connect, 10054, Proxy, 1709},
        {Connect, 10055, Server, 1715},
        {Socket, 10024, Proxy, 1715},
        {Startup, 10091, Server, 1715},
        {ProxyNeedsLogin, 407, Proxy, 1707},
        {ProxyNeedsLogin, 10061, Proxy, 1707},
        {ProxyLogin, 5, Proxy, 1707},
        {ProxyLogin, 401, Proxy, 1707},
        {ProxyLogin, 300, Proxy, 1708},
        {ProxyLogin, 599, Proxy, 1708},
        {ProxyLogin, 0, Proxy, 1709},
        {ProxyLogin, 10054, Proxy, 1709},
        {ProxyLogin, 10061, Proxy, 1709},
        {InvalidParameters, 87, Server, 1712},
        {InvalidParameters, 87, Proxy, 1713},
        {Connect, 1223, Server, 0},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(SentenceOf(SocketError(row.message, row.code, row.peer)).number, row.text)
            << TextOf(row.message) << ' ' << row.code;
    }
}

}  // namespace
}  // namespace brennvar
