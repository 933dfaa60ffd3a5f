#include "rules/RestorePoints.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <functional>

namespace brennvar {
namespace {

// "2026-03-09 14-05-09.fxz", and " undo" before the extension; the names sort by their moments.
constexpr std::string_view kPattern = "0000-00-00 00-00-00";
constexpr std::string_view kUndo = " undo";
constexpr std::string_view kExtension = ".fxz";

bool IsMoment(std::string_view text) {
    return std::equal(text.begin(), text.end(), kPattern.begin(), kPattern.end(),
                      [](char c, char wanted) { return wanted == '0' ? c >= '0' && c <= '9' : c == wanted; });
}

// In local time. Nothing says that it is unique, or that it comes after the last one: clocks are set.
std::string MomentOf(FileTime utc) {
    constexpr FileTime kUnixEpoch = 11'644'473'600 * kFileTimePerSecond;  // 1970-01-01
    const auto seconds = static_cast<std::time_t>((std::max(utc, kUnixEpoch) - kUnixEpoch) / kFileTimePerSecond);
    std::tm local{};
#ifdef _WIN32
    if (localtime_s(&local, &seconds) != 0) return std::string(kPattern);
#else
    if (localtime_r(&seconds, &local) == nullptr) return std::string(kPattern);
#endif
    std::array<char, 32> text{};
    (void)std::strftime(text.data(), text.size(), "%Y-%m-%d %H-%M-%S", &local);
    return text.data();
}

}  // namespace

std::vector<RestorePoint> FindRestorePoints(RuleFiles& files, const std::string& folder) {
    std::vector<RestorePoint> points;
    for (const std::string& name : files.List(folder)) {
        if (!name.ends_with(kExtension) || !IsMoment(std::string_view(name).substr(0, kPattern.size()))) continue;
        const std::string_view kind =
            std::string_view(name).substr(kPattern.size(), name.size() - kPattern.size() - kExtension.size());
        if (!kind.empty() && kind != kUndo) continue;
        std::string moment = name.substr(0, kPattern.size());
        moment[13] = moment[16] = ':';
        points.push_back({.name = name, .moment = std::move(moment), .isUndo = !kind.empty()});
    }
    std::sort(points.begin(), points.end(), [](const auto& a, const auto& b) { return a.moment > b.moment; });
    return points;
}

std::string NewRestorePointName(RuleFiles& files, const std::string& folder, FileTime now, bool isUndo) {
    const auto points = FindRestorePoints(files, folder);
    const std::string newest = points.empty() ? std::string() : points.front().name.substr(0, kPattern.size());
    std::string moment = MomentOf(now);
    // Two in one second, or a clock that has been set back by little. By more: the older one loses its first place,
    // as it would wherever files are sorted by their dates.
    constexpr int kSeconds = 3700;  // an hour of daylight saving, too
    for (int i = 0; i < kSeconds && moment <= newest; ++i) {
        now += kFileTimePerSecond;
        moment = MomentOf(now);
    }
    return moment + std::string(isUndo ? kUndo : std::string_view()) + std::string(kExtension);
}

void PruneRestorePoints(RuleFiles& files, const std::string& folder) {
    const auto points = FindRestorePoints(files, folder);
    for (std::size_t i = kMostRestorePoints; i < points.size(); ++i) {
        (void)files.Remove(folder + '/' + points[i].name);  // another time, when it is held
    }
}

}  // namespace brennvar
