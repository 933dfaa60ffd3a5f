// Whatever arrives at the raw socket, its bytes are looked at only as far as they go, and they become lines of the
// known kinds and an end of the trace, or a further wait.
#include "FuzzInput.h"
#include "support/FakeIcmp.h"
#include "tools/TraceRoute.h"

namespace {

using namespace brennvar;
using fuzz::Require;

class Lines final : public ToolOutput {
public:
    void Print(const std::string& line) override {
        Require(line.size() < 200 && line.find_first_of("\r\n") == std::string::npos);
        ++count;
    }
    int count = 0;
};

// A datagram alone, in memory of its own size.
void CheckDatagram(std::span<const std::byte> datagram) {
    const std::vector<std::byte> alone(datagram.begin(), datagram.end());
    test::FakeIcmp network;
    const Language english(nullptr);
    Lines lines;
    const StopSignal stop;
    RouteTracer tracer(network, english, lines, stop);
    const RouteTracer::Reply reply = tracer.DecodeReply(alone, alone.size(), 0);
    Require(lines.count == (reply == RouteTracer::Reply::Foreign ? 0 : 1));
    Require(reply == RouteTracer::Reply::Stop || alone.size() >= 8);
}

}  // namespace

// The first byte of each piece says how long it is and whether the receive fails; the pieces are the datagrams of
// one trace.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto input = std::as_bytes(std::span(data, size));
    CheckDatagram(input);
    test::FakeIcmp network;
    network.hosts["target"] = 1;
    for (std::size_t at = 0; at < input.size() && network.script.size() < 200;) {
        const auto head = std::to_integer<unsigned>(input[at++]);
        const auto piece = input.subspan(at, std::min<std::size_t>(head & 0x7F, input.size() - at));
        const bool fails = (head & 0x80) != 0;
        network.script.push_back({.receiveError = fails ? 10040U : 0U, .datagram = {piece.begin(), piece.end()}});
        at += piece.size();
    }
    const Language english(nullptr);
    Lines lines;
    const StopSignal stop;
    RouteTracer(network, english, lines, stop).TraceRoute("target");
    for (const std::size_t asked : network.receiveSizes) Require(asked == RouteTracer::kReceiveSize);
    Require(lines.count <= 1 + 2 * 200 + 100 && network.requests.size() <= 100);
    return 0;
}
