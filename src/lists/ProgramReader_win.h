// What lists show of program files beside their paths: icons and what they say of themselves. The
// shell and the disk may take their time, so both are read on a thread of their own, and only when they are asked
// for. Files on other machines are never looked into.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "base/Handles_win.h"
#include "base/TaskThread.h"
#include "base/VersionInfo_win.h"
#include "config/Language.h"
#include "lists/IconCache.h"

namespace brennvar {

struct ProgramDetails {
    enum class Place { Here, Missing, OtherMachine };
    Place place = Place::Here;
    ProgramVersion version;  // empty unless it is here
};

// What is known of the program, in lines that each begin with a line break; empty when it says nothing.
[[nodiscard]] std::string DescribeProgram(const ProgramDetails& details, const Language& language);

class ProgramReader {
public:
    // wake: as for TaskThread; RunCompletions is to be called soon, on the thread that everything here belongs to.
    explicit ProgramReader(std::function<void()> wake) : m_thread(std::move(wake)) {}

    // 16 pixels at 96 per inch, borrowed until the next RunCompletions. Programs without an icon, and those whose
    // icon is not read yet, have the one that stands for them.
    [[nodiscard]] HICON Icon(const std::string& path);
    // The icon of this program has been read; may be empty.
    std::function<void(const std::string& path)> onIcon;

    void ReadDetails(const std::string& path, std::function<void(const ProgramDetails&)> done);

    void RunCompletions() { m_thread.RunCompletions(); }

private:
    void ReadNextIcon();

    // Far more rows than a screen holds; each takes some of the process's 10,000 GDI and USER objects.
    static constexpr std::size_t kMostIcons = 512;
    static constexpr std::size_t kMostWanted = 128;
    IconCache<UniqueIcon> m_icons{kMostIcons, kMostWanted};
    UniqueIcon m_noIcon;  // made when it is first needed
    TaskThread m_thread;  // last: its end is waited for before the rest goes
};

}  // namespace brennvar
