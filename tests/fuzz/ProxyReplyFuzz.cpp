// Whatever a proxy answers opens the tunnel or fails; what the server gets to say is what stands behind the answer.
// Input: a byte of choices (bit 0 SOCKS, bit 1 with a login, bits 2 to 4 the size of the pieces less one), then
// what the proxy sends, whatever it is sent.
#include "FuzzInput.h"
#include "support/FakeTransport.h"
#include "tools/WSocket.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace brennvar;
    using fuzz::Require;
    if (size == 0) return 0;
    const std::string said = fuzz::TextOfInput(data + 1, size - 1);
    const std::size_t pieceSize = std::size_t{1} + (data[0] >> 2 & 7);

    test::FakeClock clock;
    test::FakePeer peer(clock);
    test::FakePeer::Exchange exchange;
    for (std::size_t i = 0; i < said.size(); i += pieceSize) {
        exchange.pieces.push_back({.bytes = said.substr(i, pieceSize)});
    }
    peer.script.push_back(std::move(exchange));
    ProxySettings proxy;
    proxy.host = "127.0.0.1";
    proxy.port = 1080;
    proxy.kind = data[0] & 1 ? ProxyKind::Socks5 : ProxyKind::Http;
    if (data[0] & 2) proxy.user = proxy.password = "fred";

    CWSocket socket(peer.Transport(), clock);
    try {
        socket.Connect({.host = "whois.example", .port = 43}, proxy, ConnectStyle::Http10);
    } catch (const SocketError&) {
        Require(peer.closes == 1);
        return 0;
    }
    if (proxy.kind == ProxyKind::Socks5) {
        Require(said.starts_with('\5'));
    } else {
        Require(said.starts_with("HTTP/") && said.find('\n') < ConnectReply::kMostBytes);
    }
    std::string rest;
    for (;;) {
        const std::string piece = socket.Receive(64, std::chrono::milliseconds(1));
        if (piece.empty()) break;
        rest += piece;
    }
    Require(rest.size() < said.size() && said.ends_with(rest));
    return 0;
}
