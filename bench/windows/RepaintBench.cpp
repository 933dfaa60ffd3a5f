// A full repaint of the control center at 1280 x 800: the frame, the buttons, the status band and a page, once with
// a list of connections and once with the full graphs of the statistics. Prints the medians in milliseconds.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <vector>

#include "NoOwner.h"
#include "app/FrameDialog_win.h"
#include "app/PageList.h"
#include "app/StatusLine_win.h"
#include "config/ResourceIds.h"
#include "config/UserValues.h"
#include "lists/ListPage_win.h"
#include "views/StatisticsPage_win.h"
// windows.h must stand before this.
#include <commctrl.h>

namespace brennvar {
namespace {

constexpr int kRounds = 101;
constexpr int kConnections = 200;
constexpr std::uint64_t kSeconds = 300;  // more than a graph shows

class NoUserValues final : public UserValues {
    [[nodiscard]] bool ReadUserValue(const std::string&, std::uint32_t&) const override { return false; }
    bool WriteUserValue(const std::string&, std::uint32_t) override { return false; }
};

// What a busy machine shows on the Connections page.
class ConnectionRows final : public ListModel {
public:
    [[nodiscard]] std::string Name() const override { return "Bench"; }
    [[nodiscard]] std::vector<ListColumn> Columns() const override {
        return {{.title = "Process", .width = 128},
                {.title = "Address", .width = 240},
                {.title = "State", .width = 80},
                {.title = "PID", .width = 48, .isNumber = true},
                {.title = "Bytes in", .width = 80, .isNumber = true},
                {.title = "Bytes out", .width = 80, .isNumber = true},
                {.title = "Path", .width = 96, .takesRoom = true}};
    }
    [[nodiscard]] std::string EmptyText() const override { return {}; }
    [[nodiscard]] int RowCount() const override { return m_rowCount; }
    [[nodiscard]] ListCell Cell(int row, int column) const override {
        switch (column) {
            case 0: return {.text = "aurora.exe"};
            case 1: return {.text = "10.1.2.3:49152 -> 93.184.216.34:443"};
            case 2: return {.text = "ESTAB-OUT"};
            case 6: return {.text = R"(C:\Program Files\Aurora\aurora.exe)"};
            default: return {.text = std::to_string(row * (column == 4 ? 1000 : 10))};
        }
    }
    [[nodiscard]] std::string Key(int row) const override { return std::to_string(row); }
    void Read(ReadReason) override {
        ChangeRows([this] {
            m_rowCount = kConnections;
            return ListView::Change::Rows;
        });
    }

private:
    int m_rowCount = 0;
};

class BenchWindow final : public FrameDialog {
public:
    BenchWindow() : FrameDialog(m_fonts, m_language, m_values) {}

    // False: there is no window.
    [[nodiscard]] bool Show() {
        if (!CreateModeless(nullptr, IDD_CONTROL_CENTER)) return false;
        ::SetWindowPos(Window(), nullptr, 0, 0, 1280, 800, SWP_NOZORDER | SWP_SHOWWINDOW);
        return true;
    }
    // The medians for these pages, which take turns.
    [[nodiscard]] std::array<double, 2> Measure(const std::array<int, 2>& pages) {
        std::array<std::vector<double>, 2> times;
        for (int round = 0; round < kRounds; ++round) {
            for (std::size_t page = 0; page < pages.size(); ++page) {
                Pages().Open(pages[page]);
                ::UpdateWindow(Window());
                times[page].push_back(RepaintOnce());
            }
        }
        std::array<double, 2> medians{};
        for (std::size_t page = 0; page < pages.size(); ++page) {
            std::sort(times[page].begin(), times[page].end());
            medians[page] = times[page][times[page].size() / 2];
        }
        return medians;
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
        m_status.Create(Texts(), GetLook());
    }
    void OnPlaceStatus(const RECT& band) override { m_status.Place(band); }

    std::unique_ptr<CPage> MakePage(const PageInfo& info) {
        return info.command == IDM_STATISTICS ? MakeStatistics(info) : MakeConnections(info);
    }

    [[nodiscard]] PageTexts TextsOf(const PageInfo& info) const {
        return {.title = m_language.GetText(info.caption), .line = m_language.GetText(info.line)};
    }

    std::unique_ptr<CPage> MakeStatistics(const PageInfo& info) {
        for (std::uint64_t second = 0; second < kSeconds; ++second) {
            m_statistics.Tick(TrafficIncrease{second * 7919 % 500'000, second * 7907 % 500'000}, 1000);
            m_statistics.AddNotice("Access of a program was denied.", second);
        }
        return std::make_unique<StatisticsPage>(m_fonts, m_language, TextsOf(info), m_statistics);
    }

    std::unique_ptr<CPage> MakeConnections(const PageInfo& info) {
        return std::make_unique<ListPage>(
            ListPageContext{.fonts = m_fonts, .language = m_language, .userValues = m_values, .owner = m_owner},
            TextsOf(info), std::make_unique<ConnectionRows>());
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
    NoOwner m_owner;
    NoUserValues m_values;
    Statistics m_statistics;
    StatusLine m_status{m_language};
};

}  // namespace
}  // namespace brennvar

int main() {
    INITCOMMONCONTROLSEX classes{sizeof(classes), ICC_STANDARD_CLASSES | ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&classes);
    brennvar::BenchWindow window;
    if (!window.Show()) {
        std::fprintf(stderr, "the window was not made\n");
        return 1;
    }
    const auto [list, graphs] = window.Measure({IDM_CONNECTIONS, IDM_STATISTICS});
    std::printf("repaint %.2f\nrepaint_graphs %.2f\n", list, graphs);
    return 0;
}
