#include "StandInProcess.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

namespace brennvar::test {
StandInProcess::StandInProcess(const std::vector<std::string>& scenario, const std::string& options,
                               const std::string& dataFolder)
    : m_dataFolder(dataFolder.empty() ? m_ownFolder.Path() : dataFolder),
      m_program(CommandLine(scenario, options), m_ownFolder.File("output.txt")) {
    (void)WaitUntil([&] { return !Journal("EVENT started").empty() || !m_program.IsRunning(); });
}

StandInProcess::~StandInProcess() {
    Stop();
}

std::string StandInProcess::CommandLine(const std::vector<std::string>& scenario,
                                        const std::string& options) const {
    std::string text;
    for (const std::string& line : scenario) text += line + "\n";
    return Quoted(BuiltProgram("standin\\brennvar.exe")) + " --scenario " +
           Quoted(m_ownFolder.Write("scenario.txt", text)) + " --data-folder " + Quoted(m_dataFolder) + " " +
           options;
}

std::string StandInProcess::Read(const std::string& name) const {
    std::ifstream file(m_dataFolder + "\\" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> StandInProcess::Journal(std::string_view word) const {
    std::vector<std::string> lines;
    std::istringstream text(Read("journal.txt"));
    for (std::string line; std::getline(text, line);) {
        line.erase(0, line.find(' ') + 1);
        if (line.compare(0, word.size(), word) == 0) lines.push_back(std::move(line));
    }
    return lines;
}

bool StandInProcess::WaitForJournal(std::string_view line, std::size_t times) const {
    return WaitUntil([&] {
        const auto lines = Journal();
        return static_cast<std::size_t>(std::count(lines.begin(), lines.end(), line)) >= times;
    });
}

void StandInProcess::Stop() {
    if (!m_program.IsRunning()) return;
    const UniqueEvent stop(::OpenEventA(EVENT_MODIFY_STATE, FALSE, "BrennvarStandInStop"));
    if (stop) ::SetEvent(stop.Get());
    (void)m_program.WaitForEnd();  // what still runs then is ended by its owner
}

}  // namespace brennvar::test
