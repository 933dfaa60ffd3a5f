#include "tools/TraceRouteDialog_win.h"

#include "config/ResourceIds.h"
#include "tools/IcmpNetwork_win.h"
#include "tools/TraceRoute.h"

namespace brennvar {

ToolSetup TraceRouteDialog::Setup() {
    return {.templateId = IDD_TRACE_ROUTE,
            .finishedMessage = kFinishedMessage,
            .title = Text{122, "Trace Route"},
            .addressLabel = Text{1749, "&Address or host name:"},
            .emptyText = Text{1750, "Enter an address or a host name and press Start."},
            .ofLine = AddressTool::WhoIs,
            .fileName = "trace"};
}

TraceRouteDialog::TraceRouteDialog(const CFonts& fonts, const Language& language, AddressTools& tools)
    : ToolDialog(fonts, language, tools, Setup()) {}

ToolDialog::ToolJob TraceRouteDialog::MakeJob(const std::string& text) {
    return [&language = GetLanguage(), text](ToolOutput& output, const StopSignal& stop) {
        WinIcmpNetwork network;
        RouteTracer(network, language, output, stop).TraceRoute(text);
    };
}

}  // namespace brennvar
