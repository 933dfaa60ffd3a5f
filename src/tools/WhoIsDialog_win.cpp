#include "tools/WhoIsDialog_win.h"

#include <memory>
#include <optional>

#include "base/SystemClock.h"
#include "config/OptionFile_win.h"
#include "config/ResourceIds.h"
#include "tools/StreamTransport_win.h"
#include "tools/Whois.h"

namespace brennvar {
namespace {

void LookUp(const std::string& text, const Language& language, ToolOutput& output, const StopSignal& stop) {
    // The service may hold the file for a while; the stop cuts that wait short as well.
    SystemClock clock(stop);
    const std::optional<StoredOptions> options = OptionFile(clock).Read();
    if (!options) {
        // Without the proxy that the user has set, nobody is asked.
        if (!stop.Requested()) {
            output.Print(language.GetText(1400, "The settings cannot be read at the moment. Please try again."));
        }
        return;
    }
    CWSocket socket(std::make_unique<WinsockTransport>(stop), clock);
    Whois(socket, ProxyOf(options->values)).LookUp(text, language, output);
}

}  // namespace

ToolSetup WhoIsDialog::Setup() {
    return {
        .templateId = IDD_WHOIS,
        .finishedMessage = kMessageFinished,
        .title = Text{1717, "Who is it"},
        .addressLabel = Text{1718, "&Address or host name:"},
        .emptyText = Text{1719, "Type an address or a host name and press Start: a registry tells whose it is."},
        .ofLine = AddressTool::WhoIs,
        .fileName = "whois"};
}

WhoIsDialog::WhoIsDialog(const CFonts& fonts, const Language& language, AddressTools& tools)
    : ToolDialog(fonts, language, tools, Setup()) {}

ToolDialog::ToolJob WhoIsDialog::MakeJob(const std::string& text) {
    return [text, &language = GetLanguage()](ToolOutput& output, const StopSignal& stop) {
        LookUp(text, language, output, stop);
    };
}

}  // namespace brennvar
