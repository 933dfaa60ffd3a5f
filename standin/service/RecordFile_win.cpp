#include "service/RecordFile_win.h"

#include "base/Handles_win.h"

namespace brennvar::standin {
namespace {

constexpr int kOpenAttempts = 6000;      // of one millisecond each
constexpr DWORD kHoldMilliseconds = 10;  // long enough for a reader to meet the lock

UniqueFile OpenPatiently(const std::string& path, DWORD access, DWORD sharing, DWORD disposition) {
    for (int attempt = 0; attempt < kOpenAttempts; ++attempt) {
        UniqueFile file(
            ::CreateFileA(path.c_str(), access, sharing, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (file || ::GetLastError() != ERROR_SHARING_VIOLATION) return file;
        ::Sleep(1);
    }
    return {};
}

bool ReadAll(const UniqueFile& file, std::vector<std::byte>& content) {
    content.resize(::GetFileSize(file.Get(), nullptr));
    DWORD done = 0;
    if (!::ReadFile(file.Get(), content.data(), static_cast<DWORD>(content.size()), &done, nullptr)) return false;
    content.resize(done);
    return true;
}

}  // namespace

std::vector<std::byte> ReadFileBytes(const std::string& path) {
    const UniqueFile file =
        OpenPatiently(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, OPEN_EXISTING);
    std::vector<std::byte> content;
    if (!file || !ReadAll(file, content)) return {};
    return content;
}

bool RewriteFile(const std::string& path, const std::function<void(std::vector<std::byte>& content)>& change) {
    const UniqueFile file = OpenPatiently(path, GENERIC_READ | GENERIC_WRITE, 0, OPEN_ALWAYS);
    std::vector<std::byte> content;
    if (!file || !ReadAll(file, content)) return false;
    change(content);
    DWORD done = 0;
    ::SetFilePointer(file.Get(), 0, nullptr, FILE_BEGIN);
    const bool written =
        ::WriteFile(file.Get(), content.data(), static_cast<DWORD>(content.size()), &done, nullptr) &&
        ::SetEndOfFile(file.Get());
    ::Sleep(kHoldMilliseconds);
    return written && done == content.size();
}

bool AppendToFile(const std::string& path, std::span<const std::byte> bytes) {
    const UniqueFile file(::CreateFileA(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                        OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    return file && ::WriteFile(file.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
           written == bytes.size();
}

}  // namespace brennvar::standin
