// A full repaint of the control center at 1280 x 800: the frame, the buttons, the status band and a page, once with
// a list of connections and once with the full graphs of the statistics; and a change from one of these pages to
// the other. Each until the screen shows it, against a window of that size that only copies a bitmap, which takes
// turns with them. Prints the ratios of the medians.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <functional>
#include <vector>

#include "NoOwner.h"
#include "app/FrameDialog_win.h"
#include "app/PageList.h"
#include "app/StatusLine_win.h"
#include "base/StopSignal.h"
#include "base/SystemClock.h"
#include "config/ResourceIds.h"
#include "config/UserValues.h"
#include "lists/ListPage_win.h"
#include "ui/Paint_win.h"
#include "ui/Window_win.h"
#include "views/StatisticsPage_win.h"
#include "views/TopPrograms.h"
// windows.h must stand before this.
#include <commctrl.h>

namespace brennvar {
namespace {

constexpr int kRounds = 101;
constexpr int kConnections = 200;
constexpr std::uint64_t kSeconds = 300;  // more than a graph shows

constexpr SIZE kSize{1280, 800};

// What has been painted is on the screen when this returns: messages that wait may paint as well, and reading a
// pixel waits for those that have been sent there.
void WaitForScreen() {
    MSG message;
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        ::TranslateMessage(&message);
        ::DispatchMessageA(&message);
    }
    ::GdiFlush();
    const HDC screen = ::GetDC(nullptr);
    (void)::GetPixel(screen, 0, 0);
    ::ReleaseDC(nullptr, screen);
}

// In milliseconds, in a window that lies above the others.
double TimeToShow(HWND window, const std::function<void()>& change) {
    ::SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    WaitForScreen();
    LARGE_INTEGER frequency;
    LARGE_INTEGER before;
    LARGE_INTEGER after;
    ::QueryPerformanceFrequency(&frequency);
    ::QueryPerformanceCounter(&before);
    change();
    WaitForScreen();
    ::QueryPerformanceCounter(&after);
    return 1000.0 * static_cast<double>(after.QuadPart - before.QuadPart) / static_cast<double>(frequency.QuadPart);
}

double TimeToRepaint(HWND window) {
    return TimeToShow(window, [window] {
        ::RedrawWindow(window, nullptr, nullptr,
                       RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
    });
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// The yardstick.
class CopyWindow final : public CWindow {
public:
    // False: there is no window.
    [[nodiscard]] bool Show() {
        return CWindow::Create({.text = "", .style = WS_POPUP | WS_VISIBLE, .place = {0, 0, kSize.cx, kSize.cy}});
    }

private:
    bool OnCreate() override {
        const HDC screen = ::GetDC(Window());
        m_memory = UniqueMemoryDc(::CreateCompatibleDC(screen));
        m_bitmap = UniqueBitmap(::CreateCompatibleBitmap(screen, kSize.cx, kSize.cy));
        ::ReleaseDC(Window(), screen);
        ::SelectObject(m_memory.Get(), m_bitmap.Get());
        FillGradient(m_memory.Get(), {0, 0, kSize.cx, kSize.cy}, RGB(0, 64, 128), RGB(255, 192, 0), true);
        return m_memory && m_bitmap;
    }
    std::optional<LRESULT> OnMessage(UINT message, WPARAM, LPARAM) override {
        if (message != WM_PAINT) return std::nullopt;
        PAINTSTRUCT paint{};
        const HDC dc = ::BeginPaint(Window(), &paint);
        ::BitBlt(dc, 0, 0, kSize.cx, kSize.cy, m_memory.Get(), 0, 0, SRCCOPY);
        ::EndPaint(Window(), &paint);
        return 0;
    }

    UniqueBitmap m_bitmap;
    UniqueMemoryDc m_memory;
};

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

// What a window is made of must be there before it.
struct Parts {
    CFonts fonts;
    Language language{nullptr};
    NoUserValues values;
};

class BenchWindow final : private Parts, public FrameDialog {
public:
    BenchWindow() : FrameDialog(fonts, language, values) {}

    // False: there is no window.
    [[nodiscard]] bool Show() {
        if (!CreateModeless(nullptr, IDD_CONTROL_CENTER)) return false;
        ::SetWindowPos(Window(), nullptr, 0, 0, kSize.cx, kSize.cy, SWP_NOZORDER | SWP_SHOWWINDOW);
        return true;
    }
    void OpenPage(int command) { Pages().Open(command); }

private:
    void OnInitDialog() override {
        std::vector<PageHost::Entry> entries;
        for (const PageInfo& info : PageList()) {
            entries.push_back({.command = info.command,
                               .caption = language.GetText(info.caption),
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
        return {.title = language.GetText(info.caption), .line = language.GetText(info.line)};
    }

    std::unique_ptr<CPage> MakeStatistics(const PageInfo& info) {
        for (std::uint64_t second = 0; second < kSeconds; ++second) {
            m_statistics.Tick(TrafficIncrease{second * 7919 % 500'000, second * 7907 % 500'000}, 1000);
            m_statistics.AddNotice("Access of a program was denied.", second);
        }
        const ProgramSum sum{.path = "aurora.exe", .bytesIn = 1'288'490'188, .bytesOut = 84'213'000};
        m_statistics.SetPrograms(
            std::vector<Statistics::ProgramUse>(TopPrograms::kMostShown, {.name = "Aurora", .sum = sum}));
        return std::make_unique<StatisticsPage>(fonts, language, TextsOf(info), m_statistics, m_clock);
    }

    std::unique_ptr<CPage> MakeConnections(const PageInfo& info) {
        return std::make_unique<ListPage>(
            ListPageContext{.fonts = fonts, .language = language, .userValues = values, .owner = m_owner},
            TextsOf(info), std::make_unique<ConnectionRows>());
    }

    NoOwner m_owner;
    Statistics m_statistics;
    StopSignal m_never;
    SystemClock m_clock{m_never};
    StatusLine m_status{language};
};

int Run() {
    BenchWindow window;
    CopyWindow yardstick;
    if (!window.Show() || !yardstick.Show()) {
        std::fprintf(stderr, "the windows were not made\n");
        return 1;
    }
    constexpr std::array<int, 2> kPages = {IDM_CONNECTIONS, IDM_STATISTICS};
    for (const int page : kPages) window.OpenPage(page);
    std::array<std::vector<double>, 2> repaints;
    std::vector<double> changes;
    std::vector<double> copies;
    for (int round = 0; round < kRounds; ++round) {
        for (std::size_t page = 0; page < kPages.size(); ++page) {
            copies.push_back(TimeToRepaint(yardstick.Window()));
            changes.push_back(TimeToShow(window.Window(), [&] { window.OpenPage(kPages[page]); }));
            repaints[page].push_back(TimeToRepaint(window.Window()));
        }
    }
    const double copy = Median(copies);
    const double list = Median(repaints[0]);
    const double graphs = Median(repaints[1]);
    const double change = Median(changes);
    std::fprintf(stderr, "list %.2f ms, graphs %.2f ms, page change %.2f ms against %.2f ms\n", list, graphs,
                 change, copy);
    std::printf("repaint %.3f\nrepaint_graphs %.3f\npage_change %.3f\n", list / copy, graphs / copy, change / copy);
    return 0;
}

}  // namespace
}  // namespace brennvar

int main() {
    INITCOMMONCONTROLSEX classes{sizeof(classes), ICC_STANDARD_CLASSES | ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&classes);
    return brennvar::Run();
}
