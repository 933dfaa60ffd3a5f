// The service stand-in's command line.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brennvar::standin {

struct CommandLine {
    std::string scenario;    // empty: none
    std::string journal;     // empty: journal.txt in the data folder
    std::string dataFolder;  // empty: the all-users one
    std::uint32_t slowMilliseconds = 0;
    std::uint32_t dieAfter = 0;  // 0: never
    std::uint32_t dieAfterCommand = 0;
    bool loadDriver = true;
    std::uint32_t waitFor = 0;  // only wait for this process to end; 0: none
    bool stop = false;          // end the one that runs
    bool help = false;
};

extern const std::string_view kUsage;

// Nothing when an option is unknown or lacks its value; arguments without the program's name.
[[nodiscard]] std::optional<CommandLine> ParseCommandLine(const std::vector<std::string>& arguments);

}  // namespace brennvar::standin
