#include "Commands.h"
#include "ConnectionArguments.h"
#include "PrintedOutput.h"
#include "base/StopSignal.h"
#include "base/SystemClock.h"
#include "config/Language.h"
#include "tools/IcmpNetwork_win.h"
#include "tools/StreamTransport_win.h"
#include "tools/TraceRoute.h"
#include "tools/Whois.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <memory>
#include <string>

namespace brennvar::peers {
namespace {

StreamEndpoint EndpointFrom(const Arguments& arguments, const std::string& key) {
    const std::string portKey = key == "server" ? "port" : key + "-port";
    return {.host = arguments.Text(key), .port = static_cast<std::uint16_t>(arguments.Number(portKey, kWhoisPort))};
}

bool IsSocketMessage(const std::string& line) {
    constexpr SocketMessage kAll[] = {
        SocketMessage::Startup,        SocketMessage::Socket,          SocketMessage::Bind,
        SocketMessage::Accept,         SocketMessage::Connect,         SocketMessage::InvalidParameters,
        SocketMessage::UnknownAddress, SocketMessage::UnknownProxy,    SocketMessage::UnknownRemote,
        SocketMessage::ProxyLogin,     SocketMessage::ProxyNeedsLogin,
    };
    return std::any_of(std::begin(kAll), std::end(kAll),
                       [&](SocketMessage message) { return line == TextOf(message); });
}

}  // namespace

// A failure is shown in two lines below the answer, the socket's text and a sentence: they are the outcome.
void AskWhois(const Arguments& arguments) {
    const StopSignal stop;
    SystemClock clock(stop);
    CWSocket socket(std::make_unique<WinsockTransport>(stop), clock);
    PrintedOutput output;
    Whois whois(socket, ProxyFrom(arguments),
                {.first = EndpointFrom(arguments, "server"), .referral = EndpointFrom(arguments, "referral")});
    whois.LookUp(arguments.Text("query"), Language(nullptr), output);
    std::vector<std::string>& lines = output.Lines();
    std::string outcome = "done";
    if (lines.size() > 1 && IsSocketMessage(lines[lines.size() - 2])) {
        outcome = lines[lines.size() - 2] + ": " + lines.back();
        lines.resize(lines.size() - 2);
    }
    output.Flush();
    (void)std::printf("outcome: %s\n", Printable(outcome).c_str());
}

void TracePath(const Arguments& arguments) {
    const StopSignal stop;
    WinIcmpNetwork network;
    const Language english(nullptr);
    PrintedOutput output;
    RouteTracer(network, english, output, stop).TraceRoute(arguments.Text("host"));
    output.Flush();
    (void)std::printf("outcome: done\n");
}

}  // namespace brennvar::peers
