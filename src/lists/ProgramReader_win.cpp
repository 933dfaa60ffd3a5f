#include "lists/ProgramReader_win.h"

#include <memory>
#include <utility>

#include "base/ComOfThread_win.h"
#include "base/LocalPath_win.h"
#include "ui/ProgramIcon_win.h"

namespace brennvar {
namespace {

ProgramDetails DetailsOf(const std::string& path) {
    if (!IsOnThisMachine(path)) return {.place = ProgramDetails::Place::OtherMachine, .version = {}};
    DWORD oldMode = 0;
    ::SetThreadErrorMode(SEM_FAILCRITICALERRORS, &oldMode);  // no system dialog about a drive without a disk
    const DWORD attributes = ::GetFileAttributesA(path.c_str());
    ProgramDetails details;
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        details.place = ProgramDetails::Place::Missing;
    } else {
        details.version = ReadProgramVersion(path);
    }
    ::SetThreadErrorMode(oldMode, nullptr);
    return details;
}

}  // namespace

std::string DescribeProgram(const ProgramDetails& details, const Language& language) {
    std::string text;
    const auto add = [&text](const std::string& label, const std::string& value) {
        if (!value.empty()) text.append("\n").append(label).append(" ").append(value);
    };
    switch (details.place) {
        case ProgramDetails::Place::Here:
            add(language.GetText(1363, "Description:"), details.version.description);
            add(language.GetText(1364, "Company:"), details.version.company);
            add(language.GetText(1365, "Version:"), details.version.version);
            break;
        case ProgramDetails::Place::Missing:
            text.append("\n").append(language.GetText(1366, "This file does not exist."));
            break;
        case ProgramDetails::Place::OtherMachine:
            text.append("\n").append(
                language.GetText(1367, "This file is on another machine and was not looked into."));
            break;
    }
    return text;
}

HICON ProgramReader::Icon(const std::string& path) {
    if (!m_noIcon) m_noIcon = LoadNoIcon(IconSize::Small);
    if (path.empty()) return m_noIcon.Get();
    const UniqueIcon* const icon = m_icons.Find(path);
    if (!icon) ReadNextIcon();
    return icon && *icon ? icon->Get() : m_noIcon.Get();
}

void ProgramReader::ReadNextIcon() {
    // One at a time: what comes into sight meanwhile goes before what has left it.
    const std::optional<std::string> path = m_icons.NextWanted();
    if (!path) return;
    // Shared, because a task is copied where an icon is not.
    using Loaded = std::shared_ptr<UniqueIcon>;
    m_thread.Ask<Loaded>(
        [path = *path] {
            thread_local const ComOfThread com;
            return std::make_shared<UniqueIcon>(FindIconOfProgram(path, IconSize::Small));
        },
        [this, path = *path](const std::optional<Loaded>& icon) {
            m_icons.Put(icon ? std::move(**icon) : UniqueIcon());
            if (onIcon) onIcon(path);
            ReadNextIcon();
        });
}

void ProgramReader::ReadDetails(const std::string& path, std::function<void(const ProgramDetails&)> done) {
    m_thread.Ask<ProgramDetails>([path] { return DetailsOf(path); },
                                 [done = std::move(done)](const std::optional<ProgramDetails>& details) {
                                     done(details.value_or(ProgramDetails{}));
                                 });
}

}  // namespace brennvar
