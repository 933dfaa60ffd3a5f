#include "base/VersionInfo_win.h"

#include <cstddef>
#include <vector>

#include "base/DisplayName.h"
#include "base/Handles_win.h"
#include "base/LocalPath_win.h"
#include "base/VersionBlock.h"
#include "base/Windows_win.h"

namespace brennvar {
namespace {

// A block cannot describe more than 64 KB of itself; the system reserves about twice that for its conversions.
constexpr DWORD kLargestBlock = 1024 * 1024;

std::vector<std::byte> ReadVersionBlock(const std::string& path) {
    DWORD ignored = 0;
    const DWORD size = ::GetFileVersionInfoSizeA(path.c_str(), &ignored);
    if (size == 0 || size > kLargestBlock) return {};
    std::vector<std::byte> block(size);
    if (!::GetFileVersionInfoA(path.c_str(), 0, size, block.data())) return {};
    return block;
}

// Marks of the writing direction would be lost on the way, or come through where the code page has them.
std::string ToAnsi(const std::u16string& found) {
    const std::u16string text = NameDirections(found);
    // UTF-16 is Windows' own wide text; only the type differs.
    const std::wstring wide(text.begin(), text.end());
    const auto length = static_cast<int>(wide.size());
    const int size = ::WideCharToMultiByte(CP_ACP, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
    if (size <= 0) return {};
    std::string ansi(static_cast<std::size_t>(size), '\0');
    ::WideCharToMultiByte(CP_ACP, 0, wide.data(), length, ansi.data(), size, nullptr, nullptr);
    return ansi;
}

}  // namespace

std::string ReadFileDescription(const std::string& path) {
    return ReadProgramVersion(path).description;
}

ProgramVersion ReadProgramVersion(const std::string& path) {
    return FindProgramVersion(path).value_or(ProgramVersion());
}

std::optional<ProgramVersion> FindProgramVersion(const std::string& path) {
    if (!IsOnThisMachine(path)) return std::nullopt;
    // A file that cannot be read now is not one without a version.
    const UniqueFile file(::CreateFileA(path.c_str(), GENERIC_READ,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                        OPEN_EXISTING, 0, nullptr));
    if (!file) return std::nullopt;
    // The block is searched by our own code: the system's query (VerQueryValue) believes the lengths in it.
    const std::vector<std::byte> block = ReadVersionBlock(path);
    return ProgramVersion{.description = ToAnsi(FindFileDescription(block)),
                          .company = ToAnsi(FindVersionText(block, u"CompanyName")),
                          .version = ToAnsi(FindVersionText(block, u"FileVersion"))};
}

std::string ReadOwnVersion() {
    char path[MAX_PATH] = {};
    if (::GetModuleFileNameA(nullptr, path, MAX_PATH) >= MAX_PATH) return {};
    const std::vector<std::byte> block = ReadVersionBlock(path);
    VS_FIXEDFILEINFO* info = nullptr;
    UINT size = 0;
    // The block is this very program's: the system's query may believe it.
    if (block.empty() || !::VerQueryValueA(block.data(), "\\", reinterpret_cast<void**>(&info), &size)) return {};
    if (size < sizeof(*info)) return {};
    return std::to_string(HIWORD(info->dwFileVersionMS)) + "." + std::to_string(LOWORD(info->dwFileVersionMS)) +
           "." + std::to_string(HIWORD(info->dwFileVersionLS));
}

}  // namespace brennvar
