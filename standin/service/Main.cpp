// brennvar.exe, the stand-in for the firewall service. Exit codes: 0 ended as asked, 1 could not start, 2 bad
// command line or scenario.
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "ipc/CommandRecord.h"
#include "ipc/PipeRecords.h"
#include "service/CommandLine.h"
#include "service/PipeServer_win.h"
#include "service/ScenarioRunner_win.h"
#include "service/StartedProcesses_win.h"

namespace brennvar::standin {
namespace {

constexpr int kStartFailed = 1;
constexpr int kBadInput = 2;
constexpr DWORD kTickMilliseconds = 1000 / DriverFeeder::kTicksPerSecond;
constexpr DWORD kStopMilliseconds = 30000;
constexpr DWORD kStopPauseMilliseconds = 10;
constexpr char kSingleName[] = "BrennvarStandIn";  // a mutex that exists while a stand-in runs

// For the console's control handler, which gets no context.
const Stop* g_stop = nullptr;

BOOL WINAPI OnConsoleControl(DWORD) {
    g_stop->Request();
    return TRUE;
}

int StopTheOther() {
    const UniqueEvent stop(::OpenEventA(EVENT_MODIFY_STATE, FALSE, kStopEventName));
    if (!stop || !::SetEvent(stop.Get())) {
        std::fprintf(stderr, "no stand-in is running\n");
        return kStartFailed;
    }
    for (DWORD waited = 0; waited < kStopMilliseconds; waited += kStopPauseMilliseconds) {
        if (!UniqueEvent(::OpenMutexA(SYNCHRONIZE, FALSE, kSingleName))) return 0;
        ::Sleep(kStopPauseMilliseconds);
    }
    std::fprintf(stderr, "the stand-in does not end\n");
    return kStartFailed;
}

std::optional<Scenario> LoadScenario(const std::string& path) {
    if (path.empty()) return Scenario{};
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        std::fprintf(stderr, "cannot read %s\n", path.c_str());
        return std::nullopt;
    }
    Scenario scenario = ParseScenario(std::string(std::istreambuf_iterator<char>(file), {}));
    for (const ScenarioFault& fault : scenario.faults)
        std::fprintf(stderr, "%s:%zu: not understood: %s\n", path.c_str(), fault.line, fault.text.c_str());
    if (!scenario.faults.empty()) return std::nullopt;
    return scenario;
}

// The driver lies beside this program.
std::string DriverFile() {
    std::string path(MAX_PATH, '\0');
    path.resize(::GetModuleFileNameA(nullptr, path.data(), MAX_PATH));
    return path.substr(0, path.rfind('\\')) + R"(\brennvarfw.sys)";
}

void LoadDriver(DriverLink& driver, Journal& journal) {
    const DWORD error = driver.Load(DriverFile());
    if (error == ERROR_SUCCESS) {
        journal.Event("driver-loaded");
        return;
    }
    std::fprintf(stderr, "cannot load the driver: error %lu\n", error);
    journal.Event("driver-failed " + std::to_string(error));
}

std::vector<PipeService> PipesOf(Service& service, DWORD slow) {
    using Bytes = Service::Bytes;
    return {
        {kCommandPipeName, Channel::Command, 0, [&](Bytes record) { return service.HandleCommand(record); }},
        {kPidResolvePipeName, Channel::Pid, slow, [&](Bytes record) { return service.HandlePid(record); }},
        {kTrayPipeName, Channel::Tray, slow, [&](Bytes record) { return service.HandleTray(record); }},
        {kFilterQueuePipeName, Channel::Queue, slow, [&](Bytes record) { return service.HandleQueue(record); }},
        {kConfirmPipeName, Channel::Confirm, 0, [&](Bytes record) { return service.HandleConfirm(record); }},
    };
}

int Run(const CommandLine& line, const Scenario& scenario) {
    const UniqueEvent single(::CreateMutexA(nullptr, FALSE, kSingleName));
    if (::GetLastError() == ERROR_ALREADY_EXISTS) {
        std::fprintf(stderr, "another stand-in is running\n");
        return kStartFailed;
    }
    const Stop stop;
    g_stop = &stop;
    ::SetConsoleCtrlHandler(OnConsoleControl, TRUE);

    DataFolder data;
    if (!data.Open(line.dataFolder.empty() ? DataFolder::DefaultPath() : line.dataFolder)) {
        std::fprintf(stderr, "cannot make the data folder\n");
        return kStartFailed;
    }
    Journal journal;
    if (!journal.Open(line.journal.empty() ? data.Path() + R"(\journal.txt)" : line.journal)) {
        std::fprintf(stderr, "cannot write the journal\n");
        return kStartFailed;
    }
    DriverLink driver;
    if (line.loadDriver) LoadDriver(driver, journal);
    DriverFeeder feeder(driver, scenario.scriptsTables, scenario.scriptsTotals);
    feeder.Tick();

    Progress progress;
    StartedProcesses processes;
    Service service(data, feeder, processes, line.dieAfter, line.dieAfterCommand);
    std::vector<std::unique_ptr<PipeServer>> servers;
    for (PipeService& pipe : PipesOf(service, line.slowMilliseconds)) {
        servers.push_back(std::make_unique<PipeServer>(std::move(pipe), PipeWorld{stop, journal, progress}));
        if (servers.back()->Start()) continue;
        std::fprintf(stderr, "cannot make a pipe: does the real service run?\n");
        stop.Request();
        return kStartFailed;
    }
    journal.Event("started");

    std::thread ticker([&] {
        while (!stop.Sleep(kTickMilliseconds)) feeder.Tick();
    });
    ActivityCaller caller(stop, journal, progress);
    ScenarioRunner(stop, journal, progress, data, feeder, processes, service, caller).Run(scenario);
    (void)stop.Sleep(INFINITE);
    ticker.join();
    servers.clear();
    driver.Unload();
    journal.Event("stopped");
    return 0;
}

}  // namespace
}  // namespace brennvar::standin

int main(int count, char** arguments) {
    using namespace brennvar::standin;
    const auto line = ParseCommandLine({arguments + 1, arguments + count});
    if (!line) {
        std::fprintf(stderr, "%s", std::string(kUsage).c_str());
        return kBadInput;
    }
    if (line->help) {
        std::printf("%s", std::string(kUsage).c_str());
        return 0;
    }
    if (line->stop) return StopTheOther();
    if (line->waitFor != 0) return StartedProcesses::WaitFor(line->waitFor) ? 0 : kStartFailed;
    const auto scenario = LoadScenario(line->scenario);
    return scenario ? Run(*line, *scenario) : kBadInput;
}
