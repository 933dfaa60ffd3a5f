#include "base/Hardening_win.h"

#include <cstdint>

#include "base/SystemFunction_win.h"

namespace brennvar {
namespace {

// PROCESS_MITIGATION_POLICY and the bits of its records, which are 32 bits each.
constexpr int kExtensionPointDisablePolicy = 6;
constexpr std::uint32_t kDisableExtensionPoints = 0x1;
constexpr int kImageLoadPolicy = 10;
constexpr std::uint32_t kNoRemoteImages = 0x1, kNoLowLabelImages = 0x2, kPreferSystemImages = 0x4;
// LOAD_LIBRARY_SEARCH_SYSTEM32
constexpr DWORD kSystemFolderOnly = 0x800;

}  // namespace

void HardenProcess() {
    const HMODULE kernel = ::GetModuleHandleA("kernel32.dll");
    // Windows 8, or 7 with an update
    if (const auto setFolders = FindFunction<BOOL WINAPI(DWORD)>(kernel, "SetDefaultDllDirectories")) {
        setFolders(kSystemFolderOnly);
    }
    // Windows 8; each of the policies may be unknown to it.
    const auto setPolicy = FindFunction<BOOL WINAPI(int, void*, SIZE_T)>(kernel, "SetProcessMitigationPolicy");
    if (!setPolicy) return;
    std::uint32_t extensionPoints = kDisableExtensionPoints;
    setPolicy(kExtensionPointDisablePolicy, &extensionPoints, sizeof extensionPoints);
    std::uint32_t images = kNoRemoteImages | kNoLowLabelImages | kPreferSystemImages;
    setPolicy(kImageLoadPolicy, &images, sizeof images);
}

}  // namespace brennvar
