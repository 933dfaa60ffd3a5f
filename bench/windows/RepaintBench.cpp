// A full repaint of the control center at 1280 x 800 with a page of connections: the frame, the buttons, the status
// band and the list. Prints the median in milliseconds.
#include <algorithm>
#include <cstdio>
#include <vector>

#include "app/FrameDialog.h"
#include "app/PageList.h"
#include "app/StatusLine.h"
#include "config/UserValues.h"
#include "ui/ResourceIds.h"
#include "views/ConnectionsPage_win.h"
// windows.h must stand before this.
#include <commctrl.h>

namespace brennvar {
namespace {

constexpr int kRounds = 101;
constexpr int kConnections = 200;

class NoUserValues final : public UserValues {
    [[nodiscard]] bool ReadUserValue(const std::string&, std::uint32_t&) const override { return false; }
    bool WriteUserValue(const std::string&, std::uint32_t) override { return false; }
};

class BenchWindow final : public FrameDialog {
public:
    BenchWindow() : FrameDialog(m_fonts, m_language, m_values) {}

    double Measure() {
        if (!CreateModeless(nullptr, IDD_CONTROL_CENTER)) return -1;
        ::SetWindowPos(Window(), nullptr, 0, 0, 1280, 800, SWP_NOZORDER | SWP_SHOWWINDOW);
        ::UpdateWindow(Window());
        std::vector<double> times;
        for (int round = 0; round < kRounds; ++round) times.push_back(RepaintOnce());
        std::sort(times.begin(), times.end());
        return times[times.size() / 2];
    }

private:
    void OnInitDialog() override {
        std::vector<PageHost::Entry> entries;
        for (const PageInfo& info : PageList()) {
            entries.push_back({.command = info.command,
                               .caption = m_language.GetText(info.caption),
                               .make = [this, &info] { return MakePage(info); }});
        }
        CreateFrame("Bench", std::move(entries));
        m_status.Create(Window(), GetLook());
        Pages().Open(IDM_CONNECTIONS);
    }
    void OnPlaceStatus(const RECT& band) override { m_status.Place(band); }

    std::unique_ptr<CPage> MakePage(const PageInfo& info) {
        const auto read = [](const ConnectionsReader::Done& done) {
            std::vector<ConnectionRow> rows;
            for (std::uint32_t row = 0; row < kConnections; ++row) {
                rows.push_back({.address = "10.1.2.3:49152 -> 93.184.216.34:443",
                                .name = "aurora.exe",
                                .path = R"(C:\Program Files\Aurora\aurora.exe)",
                                .state = 4,
                                .processId = row,
                                .bytesIn = 1000 * row,
                                .bytesOut = 10 * row});
            }
            done(std::move(rows));
        };
        return std::make_unique<ConnectionsPage>(
            ListPageContext{.fonts = m_fonts, .language = m_language, .userValues = m_values},
            PageTexts{
                .title = m_language.GetText(info.caption), .line = m_language.GetText(info.line), .empty = {}},
            read, [](std::optional<std::size_t>) {});
    }

    double RepaintOnce() {
        LARGE_INTEGER frequency;
        LARGE_INTEGER before;
        LARGE_INTEGER after;
        ::QueryPerformanceFrequency(&frequency);
        ::QueryPerformanceCounter(&before);
        ::RedrawWindow(Window(), nullptr, nullptr,
                       RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
        ::GdiFlush();
        ::QueryPerformanceCounter(&after);
        return 1000.0 * static_cast<double>(after.QuadPart - before.QuadPart) /
               static_cast<double>(frequency.QuadPart);
    }

    CFonts m_fonts;
    Language m_language{nullptr};
    NoUserValues m_values;
    StatusLine m_status{m_language};
};

}  // namespace
}  // namespace brennvar

int main() {
    INITCOMMONCONTROLSEX classes{sizeof(classes), ICC_STANDARD_CLASSES | ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&classes);
    const double time = brennvar::BenchWindow().Measure();
    if (time < 0) {
        std::fprintf(stderr, "the window was not made\n");
        return 1;
    }
    std::printf("repaint %.2f\n", time);
    return 0;
}
