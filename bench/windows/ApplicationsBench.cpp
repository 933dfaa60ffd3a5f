// The Applications page with 20,000 rules in a real file: from opening it to its first painted rows, and from a key
// stroke in its search box to the painted list. A list of 200 rules takes turns with it, because times alone mean
// little on a machine with other work. Prints "name ms" and, against the small list, "name_ratio times".
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "NoOwner.h"
#include "base/SystemClock.h"
#include "base/TaskThread.h"
#include "config/ResourceIds.h"
#include "config/UserValues.h"
#include "ipc/RecordCipher.h"
#include "lists/ListPage_win.h"
#include "rules/ApplicationRules.h"
#include "tree/TreeMessages_win.h"
#include "views/ApplicationsModel.h"

namespace brennvar {
namespace {

constexpr int kRounds = 31;
constexpr int kManyRules = 20'000;
constexpr int kFewRules = 200;
constexpr char kTyped[] = "maker 7\\program1";  // from what nearly all rows hold to what few do

class NoUserValues final : public UserValues {
    [[nodiscard]] bool ReadUserValue(const std::string&, std::uint32_t&) const override { return false; }
    bool WriteUserValue(const std::string&, std::uint32_t) override { return false; }
};

class NoService final : public PipeConnector {
    bool WaitForInstance(const std::string&, std::chrono::milliseconds) override { return false; }
    std::unique_ptr<PipeConnection> Open(const std::string&) override { return nullptr; }
};

std::string WriteRules(int count) {
    std::vector<ApplicationRuleRecord> rules(static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index) {
        ApplicationRuleRecord& rule = rules[static_cast<std::size_t>(index)];
        std::snprintf(rule.path, sizeof rule.path, R"(C:\Program Files\Maker %d\program%d.exe)", index % 97, index);
        rule.action = static_cast<RuleAction>(index % 3);
    }
    const std::span<std::byte> bytes = std::as_writable_bytes(std::span(rules));
    CipherRecords(bytes, sizeof(ApplicationRuleRecord));
    std::string path = "rules" + std::to_string(count) + ".conf";
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return path;
}

double MillisecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

struct Times {
    double open;
    double search;  // the slowest key stroke
};

class Bench {
public:
    Times Measure(const std::string& file, int count) {
        // The page asks for the file as in the program: another thread reads it, this one is woken by a message.
        const DWORD thread = ::GetCurrentThreadId();
        TaskThread reads([thread] { ::PostThreadMessageA(thread, WM_APP, 0, 0); });
        SystemClock clock(reads.Stopping());
        ServiceLink link([] {}, [](const StopSignal&) { return std::make_unique<NoService>(); });
        Commander commander(link, m_language);
        ApplicationChanges changes(commander);
        const auto load = [&] { return LoadApplicationRules(file, clock); };
        NoOwner owner;
        ListPage page({.fonts = m_fonts, .language = m_language, .userValues = m_values, .owner = owner},
                      {.title = "Applications", .line = "All of them."},
                      std::make_unique<ApplicationsModel>(m_language, reads, load, changes, link));
        const auto start = std::chrono::steady_clock::now();
        if (!page.Create(m_parent)) std::exit(1);
        page.Place({0, 0, 816, 600});
        page.Show();
        const HWND list = page.Item(IDC_PAGE_LIST);
        MSG message;
        while (::SendMessageA(list, kTreeGetRowCount, 0, 0) != count) {
            if (::GetMessageA(&message, nullptr, 0, 0) <= 0) std::exit(1);
            message.hwnd ? ::DispatchMessageA(&message) : static_cast<LRESULT>(0);
            reads.RunCompletions();
        }
        Paint(list);
        Times times{.open = MillisecondsSince(start), .search = 0};
        const HWND search = page.Item(IDC_PAGE_SEARCH);
        for (const char* letter = kTyped; *letter; ++letter) {
            const auto pressed = std::chrono::steady_clock::now();
            ::SendMessageA(search, WM_CHAR, static_cast<WPARAM>(*letter), 0);
            Paint(page.Window());
            times.search = std::max(times.search, MillisecondsSince(pressed));
        }
        const auto found = ::SendMessageA(list, kTreeGetRowCount, 0, 0);
        if (found <= 0 || found >= count / 20) std::exit(2);  // it has not searched
        while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageA(&message);
        return times;
    }

private:
    static void Paint(HWND window) {
        ::RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        ::GdiFlush();
    }

    CFonts m_fonts;
    Language m_language{nullptr};
    NoUserValues m_values;
    HWND m_parent = ::CreateWindowExA(0, "STATIC", "Applications", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0,
                                      816, 600, nullptr, nullptr, ::GetModuleHandleA(nullptr), nullptr);
};

void Print(const char* name, const std::vector<double>& many, const std::vector<double>& few) {
    std::vector<double> ratios;
    for (std::size_t round = 0; round < many.size(); ++round) ratios.push_back(many[round] / few[round]);
    std::printf("%s %.3f\n%s_ratio %.3f\n", name, Median(many), name, Median(ratios));
}

void Run() {
    const std::string many = WriteRules(kManyRules);
    const std::string few = WriteRules(kFewRules);
    Bench bench;
    std::array<std::vector<double>, 4> times;
    for (int round = -1; round < kRounds; ++round) {  // the first round warms up
        const Times large = bench.Measure(many, kManyRules);
        const Times small = bench.Measure(few, kFewRules);
        if (round < 0) continue;
        times[0].push_back(large.open);
        times[1].push_back(small.open);
        times[2].push_back(large.search);
        times[3].push_back(small.search);
    }
    Print("applications_open", times[0], times[1]);
    Print("applications_search", times[2], times[3]);
    std::filesystem::remove(many);
    std::filesystem::remove(few);
}

}  // namespace
}  // namespace brennvar

int main() {
    brennvar::Run();
    return 0;
}
