#include "logs/LogFiles.h"

#include <cstdio>

#include "config/Folders.h"

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

}  // namespace

std::string LogFilePath(const std::string& dataFolder, LogKind kind, LocalDate day) {
    char date[40];  // three numbers of any size
    (void)std::snprintf(date, sizeof date, "%04d%02d%02d", day.year, day.month, day.day);
    return LogFolderPath(dataFolder) + '\\' + date + SuffixOf(kind);
}

}  // namespace brennvar
