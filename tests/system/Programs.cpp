#include "Programs.h"

// Needs windows.h, which Programs.h brings.
#include <shlobj.h>

#include <filesystem>
#include <stdexcept>
#include <thread>

namespace brennvar::test {
namespace {

// What ends every program that the tests have started, and what those have started, when the tests' process ends in
// whatever way: a program left behind holds the test's output open, for which whoever reads it waits.
HANDLE EndsWithUs() {
    static const HANDLE job = [] {
        const HANDLE made = ::CreateJobObjectA(nullptr, nullptr);
        JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
        limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
        ::SetInformationJobObject(made, JobObjectExtendedLimitInformation, &limits, sizeof limits);
        return made;  // closed by the end of this process
    }();
    return job;
}

}  // namespace

bool WaitUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= end) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return true;
}

void Require(bool holds, Place place) {
    if (holds) return;
    const std::filesystem::path file(place.file_name());
    throw std::runtime_error(file.filename().string() + ":" + std::to_string(place.line()) + ": not so");
}

std::string BuiltProgram(const std::string& relativePath) {
    std::string path(MAX_PATH, '\0');
    path.resize(::GetModuleFileNameA(nullptr, path.data(), MAX_PATH));
    return path.substr(0, path.rfind('\\')) + "\\" BRENNVAR_BUILD_FOLDER "\\" + relativePath;
}

std::string EmptyDataFolder() {
    char common[MAX_PATH] = {};
    if (!::SHGetSpecialFolderPathA(nullptr, common, CSIDL_COMMON_APPDATA, TRUE)) {
        throw std::runtime_error("no folder for common application data");
    }
    std::string folder = std::string(common) + R"(\Quorlan\Brennvar Firewall)";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    return folder;
}

std::string Quoted(const std::string& path) {
    std::string quoted(1, '"');
    quoted += path;
    quoted += '"';
    return quoted;
}

RunningProgram::RunningProgram(std::string commandLine, const std::string& output) {
    SECURITY_ATTRIBUTES inheritable{sizeof(inheritable), nullptr, TRUE};
    const std::string sink = output.empty() ? "NUL" : output;
    const UniqueFile file(::CreateFileA(sink.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE,
                                        &inheritable, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    STARTUPINFOA startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = file.Get();
    startup.hStdError = file.Get();
    PROCESS_INFORMATION process{};
    // Held until it is in the job, so that nothing it starts is outside.
    if (!::CreateProcessA(nullptr, commandLine.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW | CREATE_SUSPENDED,
                          nullptr, nullptr, &startup, &process)) {
        return;
    }
    ::AssignProcessToJobObject(EndsWithUs(), process.hProcess);
    ::ResumeThread(process.hThread);
    ::CloseHandle(process.hThread);
    m_process.Reset(process.hProcess);
    m_id = process.dwProcessId;
}

RunningProgram::~RunningProgram() {
    if (!IsRunning()) return;
    ::TerminateProcess(m_process.Get(), 1);
    ::WaitForSingleObject(m_process.Get(), INFINITE);
}

bool RunningProgram::IsRunning() const {
    return m_process && ::WaitForSingleObject(m_process.Get(), 0) == WAIT_TIMEOUT;
}

long RunningProgram::WaitForEnd(std::chrono::milliseconds limit) const {
    if (::WaitForSingleObject(m_process.Get(), static_cast<DWORD>(limit.count())) != WAIT_OBJECT_0) return -1;
    DWORD code = 0;
    return ::GetExitCodeProcess(m_process.Get(), &code) ? static_cast<long>(code) : -1;
}

}  // namespace brennvar::test
