// The dialogs of the network tools, with what they print in the middle of their work; nothing is sent anywhere.
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "GalleryPage.h"
#include "NoTools.h"
#include "config/ResourceIds.h"
#include "config/Resources_win.h"
#include "tools/TraceRouteDialog_win.h"
#include "tools/WhoIsDialog_win.h"

namespace brennvar::gallery {
namespace {

// A tool that prints its lines and then works until it is stopped.
class SampleTool final : public ToolDialog {
public:
    SampleTool(const CFonts& fonts, const Language& language, AddressTools& tools, const ToolSetup& setup,
               std::vector<std::string> lines)
        : ToolDialog(fonts, language, tools, setup), m_lines(std::move(lines)) {}

private:
    ToolJob MakeJob(const std::string&) override {
        return [lines = m_lines](ToolOutput& output, const StopSignal& stop) {
            for (const std::string& line : lines) output.Print(line);
            (void)stop.WaitFor(std::chrono::hours(1));
        };
    }

    const std::vector<std::string> m_lines;
};

std::vector<std::string> TraceLines(const Language& language, const std::string& host) {
    std::vector<std::string> lines{language.GetText(54, "Sending") + " 32 " + language.GetText(55, "bytes to") +
                                   ' ' + host};
    const std::string reached = "] " + language.GetText(40, "reached in:") + ' ';
    lines.push_back("IP: 192.0.2.1 [gateway.example" + reached + "1 ms.");
    lines.push_back("IP: 198.51.100.17 [-" + reached + "14 ms.");
    lines.push_back(language.GetText(57, "Request time out"));
    lines.push_back("IP: 198.51.100.201 [a-router-with-a-very-long-name.backbone.provider.example" + reached +
                    "2047 ms.");
    return lines;
}

std::vector<std::string> WhoIsLines(const Language&, const std::string&) {
    return {
        "NetRange:       192.0.2.0 - 192.0.2.255",
        "CIDR:           192.0.2.0/24",
        "NetName:        EXAMPLE-NET",
        "OrgName:        Example Organisation for Documentation",
        "Address:        1 Long Street, Building with a Very Long Name, Ground Floor, Room 17, Example City, 12345",
        "Country:        XX",
        "Comment:        This block is used as an example in documents."};
}

class ToolPage final : public GalleryPage {
public:
    using MakeLines = std::vector<std::string> (*)(const Language& language, const std::string& host);
    ToolPage(const ToolSetup& setup, std::string host, MakeLines makeLines)
        : m_setup(setup), m_host(std::move(host)), m_makeLines(makeLines) {}

    [[nodiscard]] SIZE Size() const override { return {960, 640}; }
    void Fill(HWND, const Look&) override {}
    void OnShown(HWND window, const Look& look) override {
        m_tool =
            std::make_unique<SampleTool>(look.fonts, m_language, m_tools, m_setup, m_makeLines(m_language, m_host));
        if (m_tool->OpenNear(window)) m_tool->StartWith(m_host);
    }

private:
    const ToolSetup m_setup;
    const std::string m_host;
    const MakeLines m_makeLines;
    const Language m_language = OpenLanguage();
    NoTools m_tools;
    std::unique_ptr<SampleTool> m_tool;
};

}  // namespace

std::unique_ptr<GalleryPage> MakeTraceGallery() {
    return std::make_unique<ToolPage>(TraceRouteDialog::Setup(), "www.target.example", &TraceLines);
}
std::unique_ptr<GalleryPage> MakeWhoIsGallery() {
    return std::make_unique<ToolPage>(WhoIsDialog::Setup(), "192.0.2.17", &WhoIsLines);
}

}  // namespace brennvar::gallery
