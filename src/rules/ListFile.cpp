#include "rules/ListFile.h"

#include <chrono>

namespace brennvar {
namespace {

constexpr int kAttempts = 500;
constexpr std::chrono::milliseconds kPause{1};

}  // namespace

std::optional<ListFile> OpenListFile(const std::string& path, Clock& clock) {
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        if (auto file = RecordFile::OpenReadOnly(path)) return ListFile{.file = std::move(file)};
        if (RecordFile::IsMissing(path)) return ListFile{};
        if (!clock.Sleep(kPause)) break;
    }
    return std::nullopt;
}

}  // namespace brennvar
