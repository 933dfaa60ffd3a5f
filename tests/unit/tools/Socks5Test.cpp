#include <gtest/gtest.h>

#include "support/FakeTransport.h"
#include "tools/WSocket.h"

namespace brennvar {
namespace {

using std::chrono::milliseconds;
using test::FakeClock;
using test::FakePeer;

// Bytes of a literal with zeros in it.
template <std::size_t size>
std::string Raw(const char (&text)[size]) {
    return {text, size - 1};
}

class Socks5Test : public testing::Test {
protected:
    FakeClock clock;
    FakePeer peer{clock};
    CWSocket socket{peer.Transport(), clock};
    ProxySettings proxy{.host = "127.0.0.1", .port = 1080, .user = {}, .password = {}, .kind = ProxyKind::Socks5};
    StreamEndpoint server{.host = "whois.example", .port = 43};

    void Connect() { socket.Connect(server, proxy, ConnectStyle::Http10); }
    void ExpectFailure(SocketMessage message, std::uint32_t code, SocketPeer which) {
        try {
            Connect();
            ADD_FAILURE() << "connected";
        } catch (const SocketError& error) {
            EXPECT_STREQ(error.what(), TextOf(message));
            EXPECT_EQ(error.code, code);
            EXPECT_EQ(error.peer, which);
        }
        peer.script.clear();
    }
};

TEST_F(Socks5Test, AsksForANameWithoutALogin) {
    // The reply comes byte by byte, and with it the server's first words.
    peer.Say(Raw("\5\1\0"), {"\5", Raw("\0")});
    peer.Say(Raw("\0\53"), {"\5", Raw("\0"), Raw("\0"), "\1", Raw("\0\0\0\0\0"), Raw("\0hello")});
    Connect();
    EXPECT_EQ(peer.sent, Raw("\5\1\0\5\1\0\3\15whois.example\0\53"));
    EXPECT_EQ(socket.Receive(100, milliseconds(1)), "hello");
}

TEST_F(Socks5Test, LogsInAndAsksForADottedAddress) {
    proxy.user = "fred";
    proxy.password = "s3cret";
    server = {.host = "192.0.2.7", .port = 0x1234};
    peer.Say(Raw("\5\2\0\2"), {"\5\2"});
    peer.Say("s3cret", {Raw("\1\0")});
    peer.Say("\x12\x34", {Raw("\5\0\0\4") + std::string(16, '\0') + "\1\2"});
    Connect();
    EXPECT_EQ(peer.sent, Raw("\5\2\0\2\1\4fred\6s3cret\5\1\0\1\300\0\2\7\x12\x34"));
    EXPECT_EQ(socket.Receive(100, milliseconds(1)), "");
}

TEST_F(Socks5Test, DoesNotLogInWhereNothingIsAsked) {
    proxy.user = "fred";
    peer.Say(Raw("\5\2\0\2"), {Raw("\5\0")});
    peer.Say(Raw("\0\53"), {Raw("\5\0\0\3\2ab\1\2")});  // bound to a name
    Connect();
    EXPECT_EQ(peer.sent, Raw("\5\2\0\2\5\1\0\3\15whois.example\0\53"));
    EXPECT_EQ(socket.Receive(100, milliseconds(1)), "");
}

TEST_F(Socks5Test, TellsWhyItWasRefused) {
    struct Row {
        std::string method;
        SocketMessage message;
    };
    const Row rows[] = {
        {"\5\xFF", SocketMessage::ProxyNeedsLogin}, {"\5\2", SocketMessage::ProxyNeedsLogin},
        {"\5\1", SocketMessage::ProxyLogin},        {Raw("\4\0"), SocketMessage::ProxyLogin},
        {"HT", SocketMessage::ProxyLogin},
    };
    for (const Row& row : rows) {
        peer.Say(Raw("\5\1\0"), {row.method});
        ExpectFailure(row.message, kErrorRefused, SocketPeer::Proxy);
    }
    proxy.user = "fred";
    peer.Say(Raw("\5\2\0\2"), {"\5\xFF"});
    ExpectFailure(SocketMessage::ProxyLogin, kErrorRefused, SocketPeer::Proxy);
    peer.Say(Raw("\5\2\0\2"), {"\5\2"});
    peer.Say(Raw("\4fred\0"), {"\1\1"});
    ExpectFailure(SocketMessage::ProxyLogin, kErrorAccessDenied, SocketPeer::Proxy);
    peer.Say(Raw("\5\2\0\2"), {"\5"});
    ExpectFailure(SocketMessage::ProxyLogin, kErrorConnectionLost, SocketPeer::Proxy);
}

TEST_F(Socks5Test, TellsWhatTheProxySaysOfTheServer) {
    struct Row {
        std::string reply;
        SocketMessage message;
        std::uint32_t code;
        SocketPeer which;
    };
    const Row rows[] = {
        {Raw("\5\1\0\1"), SocketMessage::Connect, 10061, SocketPeer::Proxy},
        {Raw("\5\2\0\1"), SocketMessage::Connect, 10013, SocketPeer::Proxy},
        {Raw("\5\3\0\1"), SocketMessage::Connect, 10051, SocketPeer::Server},
        {Raw("\5\4\0\1"), SocketMessage::UnknownRemote, 10065, SocketPeer::Server},
        {Raw("\5\5\0\1"), SocketMessage::Connect, 10061, SocketPeer::Server},
        {Raw("\5\6\0\1"), SocketMessage::Connect, 10060, SocketPeer::Server},
        {Raw("\5\7\0\1"), SocketMessage::Connect, 10061, SocketPeer::Proxy},
        {Raw("\5\0\0\2"), SocketMessage::ProxyLogin, 10061, SocketPeer::Proxy},  // no kind of address
        {Raw("\4\0\0\1"), SocketMessage::ProxyLogin, 10061, SocketPeer::Proxy},  // no SOCKS 5
    };
    for (const Row& row : rows) {
        peer.Say(Raw("\5\1\0"), {Raw("\5\0")});
        peer.Say(Raw("\0\53"), {row.reply});
        ExpectFailure(row.message, row.code, row.which);
    }
}

TEST_F(Socks5Test, RefusesALoginThatDoesNotFitItsLengths) {
    proxy.user = std::string(255, 'u');
    proxy.password = std::string(255, 'p');
    peer.Say(Raw("\5\2\0\2"), {"\5\2"});
    peer.Say("ppp", {Raw("\1\0")});
    peer.Say(Raw("\0\53"), {Raw("\5\0\0\1\0\0\0\0\0\0")});
    EXPECT_NO_THROW(Connect());
    EXPECT_EQ(peer.sent.substr(4, 257), "\1\xFF" + proxy.user);

    for (const bool isUser : {true, false}) {
        proxy.user.resize(isUser ? 256 : 255, 'u');
        proxy.password = std::string(isUser ? 255 : 256, 'p');
        peer.Say(Raw("\5\2\0\2"), {"\5\2"});
        peer.sent.clear();
        ExpectFailure(SocketMessage::InvalidParameters, 87, SocketPeer::Proxy);
        EXPECT_EQ(peer.sent, Raw("\5\2\0\2"));
    }
    server.host = std::string(255, 'h');
    proxy.user.clear();
    peer.sent.clear();
    peer.Say(Raw("\5\1\0"), {Raw("\5\0")});
    peer.Say(Raw("\0\53"), {Raw("\5\0\0\1\0\0\0\0\0\0")});
    EXPECT_NO_THROW(Connect());
    EXPECT_EQ(peer.sent, Raw("\5\1\0\5\1\0\3\xFF") + server.host + Raw("\0\53"));
}

}  // namespace
}  // namespace brennvar
