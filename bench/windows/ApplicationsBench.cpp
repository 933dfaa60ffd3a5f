// The pages of rules with 20,000 of them in a real file: from opening one to its first painted rows, and from a key
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
#include "advanced/AdvancedModel.h"
#include "base/SystemClock.h"
#include "base/TaskThread.h"
#include "config/ResourceIds.h"
#include "config/UserValues.h"
#include "ipc/RecordCipher.h"
#include "lists/ListPage_win.h"
#include "rules/AdvancedRuleFile.h"
#include "rules/ApplicationRules.h"
#include "tree/TreeMessages_win.h"
#include "views/ApplicationsModel.h"

namespace brennvar {
namespace {

constexpr int kRounds = 31;
constexpr int kManyRules = 20'000;
constexpr int kFewRules = 200;
constexpr char kTyped[] = "program199";  // from what all rows hold to what few do

class NoUserValues final : public UserValues {
    [[nodiscard]] bool ReadUserValue(const std::string&, std::uint32_t&) const override { return false; }
    bool WriteUserValue(const std::string&, std::uint32_t) override { return false; }
};

class NoDialogs final : public RuleDialogs {
    std::optional<std::string> AskSavePath(const SaveWish&) override { return std::nullopt; }
    std::optional<std::string> AskOpenPath(const OpenWish&) override { return std::nullopt; }
    bool AskImport(const ImportRows&) override { return false; }
    bool Ask(const std::string&, const std::string&, Otherwise) override { return false; }
    void Tell(const std::string&) override {}
};

class NoEditor final : public RuleEditor {
    std::optional<AdvancedRule> AskNew(const AdvancedRule&) override { return std::nullopt; }
    std::optional<AdvancedRule> AskChange(const AdvancedRule&, RulePlace) override { return std::nullopt; }
};

class NoService final : public PipeConnector {
    bool WaitForInstance(const std::string&, std::chrono::milliseconds) override { return false; }
    OpenedPipe Open(const std::string&) override { return {}; }
};

enum class Kind { Applications, Advanced };

template <class Record>
std::string WriteRecords(const char* name, std::vector<Record> records) {
    const std::span<std::byte> bytes = std::as_writable_bytes(std::span(records));
    CipherRecords(bytes, sizeof(Record));
    std::string path = name + std::to_string(records.size()) + ".conf";
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return path;
}

std::string ProgramOf(int index) {
    return "C:\\Program Files\\Maker " + std::to_string(index % 97) + "\\program" + std::to_string(index) + ".exe";
}

std::string WriteRules(Kind kind, int count) {
    if (kind == Kind::Applications) {
        std::vector<ApplicationRuleRecord> rules(static_cast<std::size_t>(count));
        for (int index = 0; index < count; ++index) {
            ApplicationRuleRecord& rule = rules[static_cast<std::size_t>(index)];
            std::snprintf(rule.path, sizeof rule.path, "%s", ProgramOf(index).c_str());
            rule.action = static_cast<RuleAction>(index % 3);
        }
        return WriteRecords("rules", std::move(rules));
    }
    std::vector<AdvancedRuleRecord> rules;
    for (int index = 0; index < count; ++index) {
        AdvancedRule rule;
        rule.id = static_cast<std::uint32_t>(index + 1);
        rule.protocol = RuleProtocol::Tcp;
        rule.remote = {.kind = RuleEnd::Kind::Ipv4, .address = static_cast<Ipv4>(index * 7919)};
        rule.program = ProgramOf(index);
        rule.description = "Rule " + std::to_string(index);
        rules.push_back(EncodeRule(rule));
    }
    return WriteRecords("advanced", std::move(rules));
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
    double search;  // the slowest of the key strokes and the click into the box before them
};

class Bench {
public:
    Times Measure(Kind kind, const std::string& file, int count) {
        // The page asks for the file as in the program: another thread reads it, this one is woken by a message.
        const DWORD thread = ::GetCurrentThreadId();
        TaskThread reads([thread] { ::PostThreadMessageA(thread, WM_APP, 0, 0); });
        SystemClock clock(reads.Stopping());
        ServiceLink link([] {}, [](const StopSignal&) { return std::make_unique<NoService>(); });
        Commander commander(link, m_language);
        ApplicationChanges changes(commander);
        NoDialogs dialogs;
        NoEditor editor;
        DiskRuleFiles files;
        TaskThread archives([thread] { ::PostThreadMessageA(thread, WM_APP, 0, 0); });
        AdvancedRules rules({.language = m_language,
                             .clock = clock,
                             .reads = reads,
                             .load = [&](std::chrono::milliseconds) { return LoadAdvancedRules(file, clock); },
                             .commander = commander,
                             .editor = editor,
                             .dialogs = dialogs});
        RuleExchange exchange({.language = m_language,
                               .queue = archives,
                               .clock = clock,
                               .commander = commander,
                               .dialogs = dialogs,
                               .advanced = rules,
                               .files = files,
                               .folders = {}});
        std::unique_ptr<ListModel> model;
        if (kind == Kind::Applications) {
            model = std::make_unique<ApplicationsModel>(
                m_language, reads, [&] { return LoadApplicationRules(file, clock); }, changes, link, exchange);
        } else {
            model = std::make_unique<AdvancedModel>(AdvancedModel::Parts{.language = m_language,
                                                                         .rules = rules,
                                                                         .exchange = exchange,
                                                                         .queue = archives,
                                                                         .stop = archives.Stopping()});
        }
        NoOwner owner;
        ListPage page({.fonts = m_fonts, .language = m_language, .userValues = m_values, .owner = owner},
                      {.title = "Rules", .line = "All of them."}, std::move(model));
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
            archives.RunCompletions();
        }
        Paint(list);
        Times times{.open = MillisecondsSince(start), .search = 0};
        // Nobody types within the time that the other thread takes to prepare the search.
        bool isPrepared = false;
        archives.Ask<bool>([] { return true; }, [&](std::optional<bool>) { isPrepared = true; });
        while (!isPrepared) {
            if (::GetMessageA(&message, nullptr, 0, 0) <= 0) std::exit(1);
            message.hwnd ? ::DispatchMessageA(&message) : static_cast<LRESULT>(0);
            reads.RunCompletions();
            archives.RunCompletions();
        }
        Paint(page.Window());
        const HWND search = page.Item(IDC_PAGE_SEARCH);
        const auto focused = std::chrono::steady_clock::now();
        ::SetFocus(search);  // as whoever types there does before
        times.search = MillisecondsSince(focused);
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

void Run(const char* name, Kind kind) {
    const std::string many = WriteRules(kind, kManyRules);
    const std::string few = WriteRules(kind, kFewRules);
    Bench bench;
    std::array<std::vector<double>, 4> times;
    for (int round = -1; round < kRounds; ++round) {  // the first round warms up
        const Times large = bench.Measure(kind, many, kManyRules);
        const Times small = bench.Measure(kind, few, kFewRules);
        if (round < 0) continue;
        times[0].push_back(large.open);
        times[1].push_back(small.open);
        times[2].push_back(large.search);
        times[3].push_back(small.search);
    }
    Print((std::string(name) + "_open").c_str(), times[0], times[1]);
    Print((std::string(name) + "_search").c_str(), times[2], times[3]);
    std::filesystem::remove(many);
    std::filesystem::remove(few);
}

}  // namespace
}  // namespace brennvar

int main() {
    brennvar::Run("applications", brennvar::Kind::Applications);
    brennvar::Run("advanced", brennvar::Kind::Advanced);
    return 0;
}
