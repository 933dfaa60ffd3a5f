// Where the service's logs lie: one file per kind and local day.
#pragma once

#include <string>
#include <vector>

#include "base/Clock.h"
#include "config/Language.h"

namespace brennvar {

enum class LogKind { Traffic, Packet, Dns, Mac };

[[nodiscard]] std::string LogFilePath(const std::string& dataFolder, LogKind kind, LocalDate day);

// The days that have a log of this kind, as the names of the files say; newest first. What is not named like a log,
// or after no day of the calendar, is none. May wait for the disk.
[[nodiscard]] std::vector<LocalDate> FindLogDays(const std::string& dataFolder, LogKind kind);
// The same of all kinds, each day once.
[[nodiscard]] std::vector<LocalDate> FindLogDays(const std::string& dataFolder);

// "2026-03-09"
[[nodiscard]] std::string FormatDay(LocalDate day);
// The same, with a word before it when it is today: for lists to choose from.
[[nodiscard]] std::string TextOfDay(LocalDate day, LocalDate today, const Language& language);

}  // namespace brennvar
