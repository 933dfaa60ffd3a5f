// How many times a second the queue pipe tells whether a process is one of ours, as a part of what a server on the
// same kind of pipe does that only sends back what it gets: one instance, 8,208 bytes, each client connects, asks,
// reads and goes. Both take turns. Prints "activity_own RATIO" for a process that is there, of which the service is
// asked once, and "activity_own_asked RATIO" for one that nobody can keep hold of, of which it is asked every time:
// that is two exchanges in place of one, on pipes that cost the same.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <vector>

#include "base/SystemClock.h"
#include "ipc/ActivityQueue.h"
#include "ipc/PipeRecords.h"
#include "ipc/Pipe_win.h"
#include "ipc/RecordPipe_win.h"
#include "prompts/ActivityServer.h"
#include "prompts/ActivitySources_win.h"

namespace brennvar {
namespace {

constexpr char kEchoName[] = R"(\\.\pipe\brennvar-bench-echo)";
constexpr char kOursName[] = R"(\\.\pipe\brennvar-bench-ours)";
constexpr int kRounds = 15;
constexpr int kCalls = 300;  // of each in a round

// The plainest server there can be, until the program ends. fill makes the answer of the request.
template <class Record, class Fill>
void ServeForEver(const char* name, Fill fill) {
    // Open to everyone, as the service's are. It is Wine that makes the descriptor needful: a pipe without one has
    // no owner there, and the program believes none that is nobody's.
    SECURITY_DESCRIPTOR descriptor{};
    if (!::InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION) ||
        !::SetSecurityDescriptorDacl(&descriptor, TRUE, nullptr, FALSE)) {
        std::exit(2);
    }
    SECURITY_ATTRIBUTES attributes{
        .nLength = sizeof attributes, .lpSecurityDescriptor = &descriptor, .bInheritHandle = FALSE};
    const UniqueFile pipe(::CreateNamedPipeA(name, PIPE_ACCESS_DUPLEX,
                                             PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE | PIPE_WAIT, 1,
                                             sizeof(Record), sizeof(Record), 0, &attributes));
    for (Record record{};;) {
        DWORD size = 0;
        (void)::ConnectNamedPipe(pipe.Get(), nullptr);
        if (::ReadFile(pipe.Get(), &record, sizeof record, &size, nullptr)) {
            fill(record);
            ::WriteFile(pipe.Get(), &record, sizeof record, &size, nullptr);
        }
        ::DisconnectNamedPipe(pipe.Get());
    }
}

class Nobody final : public ActivityUser {
    ActivityAnswer Ask(const ActivityRequest&) override { return {}; }
    void Trust(const std::string&) override {}
    void BringForward() override {}
    void LeaveProgram() override {}
};

void Call(const char* name, DWORD processId) {
    ActivityQueueMessage request{};
    request.kind = ActivityKind::IsOwnProcess;
    request.processId = processId;
    ActivityQueueMessage answer{};
    DWORD size = 0;
    while (!::CallNamedPipeA(name, &request, sizeof request, &answer, sizeof answer, &size, 1000)) {
        // The instance is between two clients.
    }
    if (size != sizeof answer) std::exit(1);
}

double SecondsOf(const char* name, DWORD processId) {
    const auto start = std::chrono::steady_clock::now();
    for (int call = 0; call < kCalls; ++call) Call(name, processId);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void Measure(const char* label, DWORD processId) {
    std::vector<double> echo, ours;
    for (int round = -1; round < kRounds; ++round) {
        const double first = SecondsOf(kEchoName, processId);
        const double second = SecondsOf(kOursName, processId);
        if (round < 0) continue;  // warms up
        echo.push_back(first);
        ours.push_back(second);
    }
    std::printf("%s %.3f\n", label, Median(echo) / Median(ours));
    std::printf("%s_per_second %.0f of %.0f\n", label, kCalls / Median(ours), kCalls / Median(echo));
}

[[noreturn]] void Run() {
    std::thread([] { ServeForEver<ActivityQueueMessage>(kEchoName, [](ActivityQueueMessage&) {}); }).detach();
    std::thread([] {
        ServeForEver<PidResolveAnswer>(kPidResolvePipeName, [](PidResolveAnswer& answer) {
            answer.status = kServiceAnswerValid;
            PutText(answer.path, R"(C:\Program Files\Aurora\aurora.exe)");
        });
    }).detach();
    const StopSignal stop;
    SystemClock clock(stop);
    WinPipeConnector connector(stop);
    WinRecordPipe pipe(kOursName, sizeof(ActivityQueueMessage));
    WinActivitySources sources("", connector, clock);
    // A service that is not believed would be measured by the pauses between the attempts to reach it.
    if (!sources.ProcessPath(::GetCurrentProcessId())) std::exit(3);
    Nobody user;
    ActivityServer server(pipe, sources, user, clock);
    std::thread([&] { server.Run(); }).detach();
    Measure("activity_own", ::GetCurrentProcessId());
    Measure("activity_own_asked", 0xFFFFFFF0);
    (void)std::fflush(stdout);
    ::TerminateProcess(::GetCurrentProcess(), 0);  // with servers that wait for ever
    std::abort();
}

}  // namespace
}  // namespace brennvar

int main() {
    brennvar::Run();
}
