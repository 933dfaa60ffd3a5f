#include "base/Processes_win.h"

#include "base/AsciiCase.h"
#include "base/Bytes.h"
#include "base/Handles_win.h"
// Needs the types of the header above.
#include <tlhelp32.h>

namespace brennvar {
namespace {

// Calls look with each process of one snapshot.
template <class Look>
void ForEachProcess(Look look) {
    const UniqueFile snapshot(::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    if (!snapshot) return;
    PROCESSENTRY32 entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = ::Process32First(snapshot.Get(), &entry); more;
         more = ::Process32Next(snapshot.Get(), &entry)) {
        look(TextOf(entry.szExeFile), entry.th32ProcessID);
    }
}

}  // namespace

std::vector<std::uint32_t> FindProcessIds(std::initializer_list<std::string_view> imageNames) {
    std::vector<std::uint32_t> ids(imageNames.size(), 0);
    ForEachProcess([&](std::string_view image, DWORD processId) {
        auto id = ids.begin();
        for (const std::string_view name : imageNames) {
            if (*id == 0 && EqualsIgnoringCase(image, name)) *id = processId;
            ++id;
        }
    });
    return ids;
}

std::vector<std::uint32_t> FindAllProcessIds(std::string_view imageName) {
    std::vector<std::uint32_t> ids;
    ForEachProcess([&](std::string_view image, DWORD processId) {
        if (EqualsIgnoringCase(image, imageName)) ids.push_back(processId);
    });
    return ids;
}

std::string ImagePathOf(HANDLE process) {
    constexpr DWORD kLongestPath = 32767;
    for (std::string path(MAX_PATH, '\0');; path.resize(kLongestPath)) {
        auto size = static_cast<DWORD>(path.size());
        if (::QueryFullProcessImageNameA(process, 0, path.data(), &size)) return path.substr(0, size);
        if (path.size() == kLongestPath || ::GetLastError() != ERROR_INSUFFICIENT_BUFFER) return {};
    }
}

bool EnableDebugPrivilege() {
    HANDLE opened = nullptr;
    if (!::OpenProcessToken(::GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &opened)) return false;
    const UniqueToken token(opened);
    TOKEN_PRIVILEGES privileges{};
    privileges.PrivilegeCount = 1;
    privileges.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
    if (!::LookupPrivilegeValueA(nullptr, SE_DEBUG_NAME, &privileges.Privileges[0].Luid)) return false;
    if (!::AdjustTokenPrivileges(token.Get(), FALSE, &privileges, 0, nullptr, nullptr)) return false;
    // The call succeeds without enabling anything when the token lacks the privilege; the error code tells.
    return ::GetLastError() == ERROR_SUCCESS;
}

}  // namespace brennvar
