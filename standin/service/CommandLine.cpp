#include "service/CommandLine.h"

#include "service/Scenario.h"

namespace brennvar::standin {

const std::string_view kUsage =
    R"(Stands in for the firewall service, for development and tests of the interface.

usage: brennvar [options]
  --scenario PATH     carry out this scenario (docs/stand-ins.md describes the language)
  --journal PATH      write what is received to this file (default: journal.txt in the data folder)
  --data-folder PATH  keep the service's files there (default: the data folder of all users)
  --no-driver         do not load brennvarfw.sys
  --slow-ms N         answer on the request pipes only after N milliseconds
  --die-after N       end the process in the middle of the N-th request on the process-path pipe
  --die-after-command N  end the process when the N-th command has been applied
  --wait-for PID      do nothing, and end when that process has ended (what "start-process" starts)
  --stop              end the stand-in that is running, and wait for its end
  --help              show this text

Ends on Ctrl+C, on the scenario's "exit", by --stop, or when the event "BrennvarStandInStop" is set.
)";

std::optional<CommandLine> ParseCommandLine(const std::vector<std::string>& arguments) {
    CommandLine line;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& name = arguments[i];
        if (name == "--help") {
            line.help = true;
            continue;
        }
        if (name == "--stop") {
            line.stop = true;
            continue;
        }
        if (name == "--no-driver") {
            line.loadDriver = false;
            continue;
        }
        if (++i == arguments.size()) return std::nullopt;
        const std::string& value = arguments[i];
        const auto number = ParseNumber32(value);
        if (name == "--scenario") {
            line.scenario = value;
        } else if (name == "--journal") {
            line.journal = value;
        } else if (name == "--data-folder") {
            line.dataFolder = value;
        } else if (name == "--slow-ms" && number) {
            line.slowMilliseconds = *number;
        } else if (name == "--die-after" && number) {
            line.dieAfter = *number;
        } else if (name == "--wait-for" && number) {
            line.waitFor = *number;
        } else if (name == "--die-after-command" && number) {
            line.dieAfterCommand = *number;
        } else {
            return std::nullopt;
        }
    }
    return line;
}

}  // namespace brennvar::standin
