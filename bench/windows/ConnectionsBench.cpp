// The Connections page with both of the driver's tables full, 196,608 connections and as many listeners, while it
// is read again and again: how long the window is held up at a time. Another thread sends it empty messages; the
// longest answer during one reading counts, and of several readings the median. Prints "connections_hold ms", for
// comparison "connections_idle_hold ms", the same with empty tables, and "connections_swap ms": what the window's
// thread does for a reading at least, however busy the machine is.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "NoOwner.h"
#include "base/SystemClock.h"
#include "base/TaskThread.h"
#include "commands/Commander.h"
#include "config/OptionSource.h"
#include "config/ResourceIds.h"
#include "config/UserValues.h"
#include "lists/ListPage_win.h"
#include "tree/TreeMessages_win.h"
#include "ui/OwnMessages_win.h"
#include "views/ConnectionsModel.h"

namespace brennvar {
namespace {

constexpr int kReadings = 15;

class NoUserValues final : public UserValues {
    [[nodiscard]] bool ReadUserValue(const std::string&, std::uint32_t&) const override { return false; }
    bool WriteUserValue(const std::string&, std::uint32_t) override { return false; }
};
class NoService final : public PipeConnector {
    bool WaitForInstance(const std::string&, std::chrono::milliseconds) override { return false; }
    OpenedPipe Open(const std::string&) override { return {}; }
};
class NoOptions final : public OptionSource {
    [[nodiscard]] std::optional<StoredOptions> Read() const override { return std::nullopt; }
    [[nodiscard]] FileStamp Stamp() const override { return {}; }
};
class NoPrograms final : public ProgramFiles {
    [[nodiscard]] FileStamp Stamp(const std::string&) const override { return {}; }
    [[nodiscard]] std::string Description(const std::string&) const override { return {}; }
};
// Tables in which a little is other with each reading.
class FullDriver final : public DeviceOpener {
public:
    explicit FullDriver(std::size_t count) : m_connections(count), m_listeners(count) {
        for (ConnectionEntry& entry : m_connections) {
            entry = {.state = Random() % 11,
                     .localAddress = Random() % 4,
                     .localPort = static_cast<std::uint16_t>(Random()),
                     .remoteAddress = Random(),
                     .remotePort = static_cast<std::uint16_t>(Random()),
                     .processId = 1000 + Random() % 300,
                     .bytesIn = Random() % 1'000'000,
                     .bytesOut = Random() % 1'000'000};
        }
        for (ListenerEntry& entry : m_listeners) {
            entry = {.protocol = kProtocolTcp,
                     .localAddress = Random() % 4,
                     .localPort = static_cast<std::uint16_t>(Random()),
                     .processId = 1000 + Random() % 300};
        }
    }
    [[nodiscard]] std::unique_ptr<Device> Open(const std::string&) override {
        return std::make_unique<OpenDevice>(*this);
    }

private:
    class OpenDevice final : public Device {
    public:
        explicit OpenDevice(FullDriver& driver) : m_driver(driver) {}
        [[nodiscard]] std::optional<std::size_t> Read(std::uint32_t code, std::span<std::byte> output) override {
            return code == kControlReadConnections ? m_driver.Answer(m_driver.m_connections, output)
                                                   : m_driver.Answer(m_driver.m_listeners, output);
        }
        [[nodiscard]] bool Exchange(std::uint32_t, std::span<std::byte>) override { return false; }

    private:
        FullDriver& m_driver;
    };

    [[nodiscard]] std::uint32_t Random() { return static_cast<std::uint32_t>(m_random()); }
    template <class Entry>
    std::size_t Answer(std::vector<Entry>& entries, std::span<std::byte> output) {
        for (std::size_t row = 0; row < entries.size(); row += 100) {
            entries[row].localPort = static_cast<std::uint16_t>(Random());
        }
        const auto bytes = std::as_bytes(std::span(entries));
        if (!bytes.empty()) std::memcpy(output.data(), bytes.data(), bytes.size());
        return bytes.size();
    }

    std::mt19937 m_random{20260309};
    std::vector<ConnectionEntry> m_connections;
    std::vector<ListenerEntry> m_listeners;
};

double MillisecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// Asks the window for nothing, again and again, from another thread.
class Asker {
public:
    explicit Asker(HWND window) : m_window(window), m_thread([this] { Run(); }) {}
    Asker(const Asker&) = delete;
    Asker& operator=(const Asker&) = delete;
    ~Asker() {
        m_isOver = true;
        m_thread.join();
    }
    // Since the last call.
    [[nodiscard]] double TakeLongest() { return m_longest.exchange(0); }

private:
    void Run() {
        while (!m_isOver) {
            const auto start = std::chrono::steady_clock::now();
            DWORD_PTR answer = 0;
            ::SendMessageTimeoutA(m_window, WM_NULL, 0, 0, SMTO_NORMAL, 1000, &answer);
            m_longest = std::max(m_longest.load(), MillisecondsSince(start));
            ::Sleep(1);
        }
    }

    const HWND m_window;
    std::atomic<bool> m_isOver = false;
    std::atomic<double> m_longest = 0;
    std::thread m_thread;
};

struct Times {
    double hold;       // the median of the longest answers during the readings
    double leastSwap;  // what taking a reading over took when nothing else was in the way
};

Times Measure(std::size_t count) {
    const DWORD thread = ::GetCurrentThreadId();
    const auto wake = [thread] { ::PostThreadMessageA(thread, WM_APP, 0, 0); };
    const CFonts fonts;
    const Language language{nullptr};
    NoUserValues values;
    NoOptions options;
    NoPrograms programs;
    NoOwner owner;
    FullDriver driver(count);
    ServiceLink link(wake, [](const StopSignal&) { return std::make_unique<NoService>(); });
    TaskThread reads(wake);
    TaskThread programQueue(wake);
    SystemClock clock(reads.Stopping());
    ConnectionTables tables(driver, reads, clock);
    Commander commander(link, language);
    const StopSignal neverStopped;
    LogLookups lookups{std::string(), neverStopped};
    BlockedAddresses blocked;
    const HWND parent = ::CreateWindowExA(0, "STATIC", "Connections", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0,
                                          816, 600, nullptr, nullptr, ::GetModuleHandleA(nullptr), nullptr);
    std::vector<double> holds;
    std::vector<double> swaps;
    double swap = 0;
    {
        ListPage page({.fonts = fonts, .language = language, .userValues = values, .owner = owner},
                      {.title = "Connections", .line = "All of them."},
                      std::make_unique<ConnectionsModel>(ConnectionsModel::Parts{.language = language,
                                                                                 .tables = tables,
                                                                                 .reads = reads,
                                                                                 .driverReads = reads,
                                                                                 .clock = clock,
                                                                                 .link = link,
                                                                                 .programQueue = programQueue,
                                                                                 .programFiles = programs,
                                                                                 .commander = commander,
                                                                                 .options = options,
                                                                                 .userValues = values,
                                                                                 .lookups = lookups,
                                                                                 .blocked = blocked}));
        if (!page.Create(parent)) std::exit(1);
        page.Place({0, 0, 816, 600});
        page.Show();
        Asker asker(page.Window());
        auto begin = std::chrono::steady_clock::now();
        MSG message;
        while (holds.size() <= kReadings) {
            if (::GetMessageA(&message, nullptr, 0, 0) <= 0) std::exit(1);
            if (message.hwnd) ::DispatchMessageA(&message);
            link.RunCompletions();
            const auto handed = std::chrono::steady_clock::now();
            reads.RunCompletions();
            swap = std::max(swap, MillisecondsSince(handed));
            programQueue.RunCompletions();
            if (MillisecondsSince(begin) < 2000) continue;  // as often as the window has them read
            begin = std::chrono::steady_clock::now();
            tables.Refresh();
            holds.push_back(asker.TakeLongest());
            swaps.push_back(std::exchange(swap, 0));
        }
        const auto rows =
            static_cast<std::size_t>(::SendMessageA(page.Item(IDC_PAGE_LIST), kTreeGetRowCount, 0, 0));
        if (rows < 2 * count) std::exit(2);  // what has just gone is shown as well
    }
    EndWindow(parent);
    holds.erase(holds.begin());  // opening the page
    swaps.erase(swaps.begin());
    std::sort(holds.begin(), holds.end());
    return {.hold = holds[holds.size() / 2], .leastSwap = *std::min_element(swaps.begin(), swaps.end())};
}

}  // namespace
}  // namespace brennvar

int main() {
    using namespace brennvar;
    const Times idle = Measure(0);
    const Times full = Measure(kConnectionTableSize / sizeof(ConnectionEntry));
    std::printf("connections_idle_hold %.3f\nconnections_hold %.3f\nconnections_swap %.3f\n", idle.hold, full.hold,
                full.leastSwap);
    return 0;
}
