#include "service/StartedProcesses_win.h"

#include <cstdio>
#include <string>
#include <utility>

#include "base/Windows_win.h"

namespace brennvar::standin {

StartedProcesses::~StartedProcesses() {
    for (const auto& [number, started] : m_processes) ::TerminateProcess(started.process.Get(), 0);
}

void StartedProcesses::Start(std::uint32_t number) {
    std::string line(MAX_PATH, '\0');
    line.resize(::GetModuleFileNameA(nullptr, line.data(), MAX_PATH));
    line = '"' + line + "\" --wait-for " + std::to_string(::GetCurrentProcessId());
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION made{};
    if (!::CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &made)) {
        std::fprintf(stderr, "cannot start a process: error %lu\n", ::GetLastError());
        return;
    }
    ::CloseHandle(made.hThread);
    const std::scoped_lock lock(m_lock);
    m_processes.insert_or_assign(number,
                                 Started{.processId = made.dwProcessId, .process = UniqueProcess(made.hProcess)});
}

std::uint32_t StartedProcesses::IdOf(std::uint32_t number) {
    const std::scoped_lock lock(m_lock);
    const auto started = m_processes.find(number);
    return started == m_processes.end() ? number : started->second.processId;
}

bool StartedProcesses::End(std::uint32_t processId) {
    const std::scoped_lock lock(m_lock);
    for (const auto& [number, started] : m_processes) {
        if (started.processId == processId) return ::TerminateProcess(started.process.Get(), 1) != FALSE;
    }
    return false;
}

bool StartedProcesses::WaitFor(std::uint32_t processId) {
    const UniqueProcess process(::OpenProcess(SYNCHRONIZE, FALSE, processId));
    return process && ::WaitForSingleObject(process.Get(), INFINITE) == WAIT_OBJECT_0;
}

}  // namespace brennvar::standin
