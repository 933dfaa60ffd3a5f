#include "app/HelperProgram_win.h"

#include "base/Handles_win.h"
#include "base/Processes_win.h"

namespace brennvar {

void EnsureHelperRuns(const std::string& installationFolder) {
    if (FindProcessIds({"brennvarwow64.exe"}).front() != 0) return;
    const std::string program = installationFolder + R"(\BrennvarWow64.exe)";
    std::string commandLine = '"' + program + '"';
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!::CreateProcessA(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr,
                          installationFolder.c_str(), &startup, &process)) {
        return;
    }
    const UniqueProcess helper(process.hProcess);
    ::CloseHandle(process.hThread);
}

}  // namespace brennvar
