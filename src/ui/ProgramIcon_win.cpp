#include "ui/ProgramIcon_win.h"

#include <shellapi.h>

#include "base/LocalPath_win.h"
#include "ui/ToolkitIds.h"

namespace brennvar {
namespace {

UniqueIcon LoadShellIcon(const std::string& path, IconSize size) {
    // No system dialog about a drive without a disk.
    DWORD oldMode = 0;
    ::SetThreadErrorMode(SEM_FAILCRITICALERRORS, &oldMode);
    SHFILEINFOA info{};
    const UINT flags = SHGFI_ICON | (size == IconSize::Small ? SHGFI_SMALLICON : SHGFI_LARGEICON);
    const DWORD_PTR found = ::SHGetFileInfoA(path.c_str(), 0, &info, sizeof(info), flags);
    ::SetThreadErrorMode(oldMode, nullptr);
    return UniqueIcon(found ? info.hIcon : nullptr);
}

UniqueIcon LoadOwnIconOfSize(int id, IconSize size) {
    const bool isSmall = size == IconSize::Small;
    return LoadOwnIcon(id, ::GetSystemMetrics(isSmall ? SM_CXSMICON : SM_CXICON),
                       ::GetSystemMetrics(isSmall ? SM_CYSMICON : SM_CYICON));
}

}  // namespace

UniqueIcon FindIconOfProgram(const std::string& path, IconSize size) {
    return !path.empty() && IsOnThisMachine(path) ? LoadShellIcon(path, size) : UniqueIcon();
}

UniqueIcon LoadNoIcon(IconSize size) {
    return LoadOwnIconOfSize(IDI_NO_ICON, size);
}

UniqueIcon LoadOwnIcon(int id, int width, int height) {
    return UniqueIcon(static_cast<HICON>(::LoadImageA(::GetModuleHandleA(nullptr), MAKEINTRESOURCEA(id), IMAGE_ICON,
                                                      width, height, LR_DEFAULTCOLOR)));
}

UniqueIcon LoadShield(IconSize size) {
    return LoadOwnIconOfSize(IDI_PROGRAM, size);
}

}  // namespace brennvar
