#include "logs/LogFiles.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <optional>
#include <span>
#include <string_view>
#include <tuple>

#include "base/AsciiCase.h"
#include "base/Calendar.h"
#include "config/Folders.h"
#include "logs/LogFile.h"

namespace brennvar {
namespace {

const char* SuffixOf(LogKind kind) {
    switch (kind) {
        case LogKind::Traffic: return ".log";
        case LogKind::Packet: return "_packet.log";
        case LogKind::Dns: return "_dns.log";
        case LogKind::Mac: return "_mac.log";
    }
    return ".log";
}

std::optional<int> NumberOf(std::string_view digits) {
    int number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [rest, error] = std::from_chars(digits.data(), end, number);
    // A sign is no digit.
    if (error != std::errc() || rest != end || digits.front() == '-') return std::nullopt;
    return number;
}

std::optional<LocalDate> DayOf(std::string_view name, std::string_view suffix) {
    constexpr std::size_t kDateSize = 8;  // YYYYMMDD
    if (name.size() != kDateSize + suffix.size() || !EqualsIgnoringCase(name.substr(kDateSize), suffix)) {
        return std::nullopt;
    }
    const auto year = NumberOf(name.substr(0, 4));
    const auto month = NumberOf(name.substr(4, 2));
    const auto day = NumberOf(name.substr(6, 2));
    if (!year || !month || !day) return std::nullopt;
    const LocalDate date{.year = *year, .month = *month, .day = *day};
    return IsOfCalendar(date) ? std::optional(date) : std::nullopt;
}

std::vector<LocalDate> DaysAmong(const std::vector<std::string>& names, std::span<const LogKind> kinds) {
    std::vector<LocalDate> days;
    for (const std::string& name : names) {
        for (const LogKind kind : kinds) {
            if (const auto day = DayOf(name, SuffixOf(kind))) days.push_back(*day);
        }
    }
    std::sort(days.begin(), days.end(), [](LocalDate a, LocalDate b) {
        return std::tie(a.year, a.month, a.day) > std::tie(b.year, b.month, b.day);
    });
    days.erase(std::unique(days.begin(), days.end()), days.end());
    return days;
}

}  // namespace

std::vector<LocalDate> FindLogDays(const std::string& dataFolder, LogKind kind) {
    return DaysAmong(FileNamesIn(LogFolderPath(dataFolder)), {&kind, 1});
}

std::vector<LocalDate> FindLogDays(const std::string& dataFolder) {
    constexpr LogKind kAll[] = {LogKind::Traffic, LogKind::Packet, LogKind::Dns, LogKind::Mac};
    return DaysAmong(FileNamesIn(LogFolderPath(dataFolder)), kAll);
}

std::string FormatDay(LocalDate day) {
    char text[40];  // three numbers of any size
    (void)std::snprintf(text, sizeof text, "%04d-%02d-%02d", day.year, day.month, day.day);
    return text;
}

std::string TextOfDay(LocalDate day, LocalDate today, const Language& language) {
    return day == today ? language.GetText(1428, "Today") + ", " + FormatDay(day) : FormatDay(day);
}

std::string LogFilePath(const std::string& dataFolder, LogKind kind, LocalDate day) {
    char date[40];  // three numbers of any size
    (void)std::snprintf(date, sizeof date, "%04d%02d%02d", day.year, day.month, day.day);
    return LogFolderPath(dataFolder) + '\\' + date + SuffixOf(kind);
}

}  // namespace brennvar
