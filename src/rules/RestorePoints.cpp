#include "rules/RestorePoints.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <optional>
#include <string_view>

namespace brennvar {
namespace {

using std::chrono::sys_seconds;

// "2026-03-09 14-05-09.fxz", and " undo" before the extension; the names sort by their moments.
constexpr std::string_view kPattern = "0000-00-00 00-00-00";
constexpr std::string_view kUndo = " undo";
constexpr std::string_view kExtension = ".fxz";
// What a program leaves that ends while it writes one (base/NewFile.h): the name, a number, and this.
constexpr std::string_view kUnfinished = ".tmp";

// A moment is local time counted as if it were UTC, so that one second more is always one second later.
std::optional<sys_seconds> ParseMoment(std::string_view text) {
    if (!std::equal(text.begin(), text.end(), kPattern.begin(), kPattern.end(),
                    [](char c, char wanted) { return wanted == '0' ? c >= '0' && c <= '9' : c == wanted; })) {
        return std::nullopt;
    }
    const auto number = [text](std::size_t at, std::size_t length) {
        unsigned value = 0;
        (void)std::from_chars(text.data() + at, text.data() + at + length, value);
        return value;
    };
    const std::chrono::year_month_day date(std::chrono::year(static_cast<int>(number(0, 4))),
                                           std::chrono::month(number(5, 2)), std::chrono::day(number(8, 2)));
    const unsigned hour = number(11, 2);
    const unsigned minute = number(14, 2);
    const unsigned second = number(17, 2);
    // The last year has no moment after it that could be written down.
    constexpr std::chrono::year kLastYear{9999};
    if (!date.ok() || date.year() == kLastYear || hour > 23 || minute > 59 || second > 59) return std::nullopt;
    return std::chrono::sys_days(date) + std::chrono::hours(hour) + std::chrono::minutes(minute) +
           std::chrono::seconds(second);
}

std::string FormatMoment(sys_seconds moment) {
    const auto day = std::chrono::floor<std::chrono::days>(moment);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(moment - day);
    std::array<char, 64> text{};
    (void)std::snprintf(text.data(), text.size(), "%04d-%02u-%02u %02d-%02d-%02d", static_cast<int>(date.year()),
                        static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                        static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                        static_cast<int>(time.seconds().count()));
    return text.data();
}

sys_seconds MomentOf(FileTime utc) {
    constexpr FileTime kUnixEpoch = 11'644'473'600 * kFileTimePerSecond;  // 1970-01-01
    const auto seconds = static_cast<std::time_t>((std::max(utc, kUnixEpoch) - kUnixEpoch) / kFileTimePerSecond);
    const sys_seconds plain{std::chrono::seconds(seconds)};
    std::tm local{};
#ifdef _WIN32
    if (localtime_s(&local, &seconds) != 0) return plain;
#else
    if (localtime_r(&seconds, &local) == nullptr) return plain;
#endif
    std::array<char, 32> text{};
    (void)std::strftime(text.data(), text.size(), "%Y-%m-%d %H-%M-%S", &local);
    return ParseMoment(text.data()).value_or(plain);
}

std::optional<RestorePoint> ParseName(std::string_view name) {
    if (!name.ends_with(kExtension) || !ParseMoment(name.substr(0, kPattern.size()))) return std::nullopt;
    const std::string_view kind = name.substr(kPattern.size(), name.size() - kPattern.size() - kExtension.size());
    if (!kind.empty() && kind != kUndo) return std::nullopt;
    std::string moment(name.substr(0, kPattern.size()));
    moment[13] = moment[16] = ':';
    return RestorePoint{.name = std::string(name), .moment = std::move(moment), .isUndo = !kind.empty()};
}

bool IsUnfinished(std::string_view name) {
    const std::size_t end = name.find(kExtension);
    return end != std::string_view::npos && name.ends_with(kUnfinished) &&
           ParseName(name.substr(0, end + kExtension.size())).has_value();
}

}  // namespace

std::vector<RestorePoint> FindRestorePoints(RuleFiles& files, const std::string& folder) {
    std::vector<RestorePoint> points;
    for (const std::string& name : files.List(folder)) {
        if (auto point = ParseName(name)) points.push_back(*std::move(point));
    }
    std::sort(points.begin(), points.end(), [](const auto& a, const auto& b) { return a.moment > b.moment; });
    return points;
}

std::string NewRestorePointName(RuleFiles& files, const std::string& folder, FileTime now, bool isUndo) {
    const auto points = FindRestorePoints(files, folder);
    sys_seconds moment = MomentOf(now);
    // Two in one second, or a clock that has been set back: the last one is always the one that was made last.
    if (!points.empty()) {
        const auto newest = ParseMoment(std::string_view(points.front().name).substr(0, kPattern.size()));
        if (newest && moment <= *newest) moment = *newest + std::chrono::seconds(1);
    }
    return FormatMoment(moment) + std::string(isUndo ? kUndo : std::string_view()) + std::string(kExtension);
}

void PruneRestorePoints(RuleFiles& files, const std::string& folder) {
    // What cannot be removed is held, and goes another time.
    const auto points = FindRestorePoints(files, folder);
    for (std::size_t i = kMostRestorePoints; i < points.size(); ++i) {
        (void)files.Remove(folder + '/' + points[i].name);
    }
    for (const std::string& name : files.List(folder)) {
        if (IsUnfinished(name)) (void)files.Remove(folder + '/' + name);
    }
}

}  // namespace brennvar
