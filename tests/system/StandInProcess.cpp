#include "StandInProcess.h"

#include <algorithm>
#include <sstream>

namespace brennvar::test {
namespace {

// The stand-ins lie in their own folder of the build tree, which is given relative to this program's folder.
std::string StandInFile() {
    std::string path(MAX_PATH, '\0');
    path.resize(::GetModuleFileNameA(nullptr, path.data(), MAX_PATH));
    return path.substr(0, path.rfind('\\')) + "\\" BRENNVAR_STANDIN_FOLDER "\\brennvar.exe";
}

std::string Quoted(const std::string& text) {
    std::string quoted(1, '"');
    quoted += text;
    quoted += '"';
    return quoted;
}

UniqueFile OpenOutput(const std::string& path) {
    SECURITY_ATTRIBUTES inheritable{sizeof(inheritable), nullptr, TRUE};
    return UniqueFile(::CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, &inheritable,
                                    CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
}

}  // namespace

StandInProcess::StandInProcess(const std::vector<std::string>& scenario, const std::string& options) {
    std::string text;
    for (const std::string& line : scenario) text += line + "\n";
    const std::string scenarioFile = m_folder.Write("scenario.txt", text);
    std::string command = Quoted(StandInFile());
    command += " --scenario " + Quoted(scenarioFile) + " --data-folder " + Quoted(m_folder.Path()) + " " + options;

    const UniqueFile output = OpenOutput(m_folder.File("output.txt"));
    STARTUPINFOA startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = output.Get();
    startup.hStdError = output.Get();
    PROCESS_INFORMATION process{};
    if (!::CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW, nullptr, nullptr,
                          &startup, &process))
        return;  // the test fails on its first look at the journal
    m_process.Reset(process.hProcess);
    ::CloseHandle(process.hThread);
    (void)WaitUntil([&] {
        const auto lines = Journal();
        return std::find(lines.begin(), lines.end(), "EVENT started") != lines.end() ||
               ::WaitForSingleObject(m_process.Get(), 0) == WAIT_OBJECT_0;
    });
}

StandInProcess::~StandInProcess() {
    Stop();
}

std::string StandInProcess::Read(std::string_view name) const {
    return m_folder.Read(name);
}

std::vector<std::string> StandInProcess::Journal() const {
    std::vector<std::string> lines;
    std::istringstream text(m_folder.Read("journal.txt"));
    for (std::string line; std::getline(text, line);) lines.push_back(line.substr(line.find(' ') + 1));
    return lines;
}

bool StandInProcess::WaitForJournal(std::string_view line, std::size_t times) const {
    return WaitUntil([&] {
        const auto lines = Journal();
        return static_cast<std::size_t>(std::count(lines.begin(), lines.end(), line)) >= times;
    });
}

bool StandInProcess::WaitForFile(std::string_view name, std::string_view content) const {
    return WaitUntil([&] { return Read(name) == content; });
}

void StandInProcess::Stop() {
    if (!m_process) return;
    const UniqueEvent stop(::OpenEventA(EVENT_MODIFY_STATE, FALSE, "BrennvarStandInStop"));
    if (stop) ::SetEvent(stop.Get());
    if (::WaitForSingleObject(m_process.Get(), kPatienceMilliseconds) != WAIT_OBJECT_0)
        ::TerminateProcess(m_process.Get(), 1);
    m_process.Reset();
}

std::optional<DWORD> StandInProcess::WaitForEnd() const {
    DWORD code = 0;
    if (::WaitForSingleObject(m_process.Get(), kPatienceMilliseconds) != WAIT_OBJECT_0) return std::nullopt;
    if (!::GetExitCodeProcess(m_process.Get(), &code)) return std::nullopt;
    return code;
}

}  // namespace brennvar::test
