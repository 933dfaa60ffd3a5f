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

class ToolPage final : public GalleryPage {
public:
    [[nodiscard]] SIZE Size() const override { return {960, 640}; }
    void Fill(HWND, const Look&) override {}
    void OnShown(HWND window, const Look& look) override {
        const std::string host = "www.target.example";
        m_tool = std::make_unique<SampleTool>(look.fonts, m_language, m_tools, TraceRouteDialog::Setup(),
                                              TraceLines(m_language, host));
        if (m_tool->OpenNear(window)) m_tool->StartWith(host);
    }

private:
    const Language m_language = OpenLanguage();
    NoTools m_tools;
    std::unique_ptr<SampleTool> m_tool;
};

}  // namespace

std::unique_ptr<GalleryPage> MakeTraceGallery() {
    return std::make_unique<ToolPage>();
}

}  // namespace brennvar::gallery
