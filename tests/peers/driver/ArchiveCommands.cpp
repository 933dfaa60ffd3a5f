#include "Commands.h"
#include "rules/RuleArchive.h"
#include "rules/SafeEntryName.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <list>
#include <optional>
#include <string>

namespace brennvar::peers {
namespace {

std::optional<std::string> ReadAll(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(file), {});
}

bool WriteAll(const std::filesystem::path& path, const std::string& bytes) {
    std::error_code ignored;  // the file tells whether the folder is there
    std::filesystem::create_directories(path.parent_path(), ignored);
    std::ofstream file(path, std::ios::binary);
    file << bytes;
    return static_cast<bool>(file.flush());
}

const char* TextOf(ArchiveFault fault) {
    switch (fault) {
        case ArchiveFault::None: return "done";
        case ArchiveFault::NotOpened: return "not opened";
        case ArchiveFault::Damaged: return "damaged";
        case ArchiveFault::Enciphered: return "enciphered";
        case ArchiveFault::UnknownMethod: return "unknown method";
        case ArchiveFault::TooLarge: return "too large";
        case ArchiveFault::SameNameTwice: return "same name twice";
        case ArchiveFault::Empty: return "empty";
    }
    return "?";
}

void Tell(const char* outcome) { (void)std::printf("outcome: %s\n", outcome); }

}  // namespace

void Pack(const Arguments& arguments) {
    const auto names = arguments.All("name");
    const auto files = arguments.All("file");
    std::list<std::string> contents;  // borrowed by the writer until it is closed
    ArchiveWriter writer;
    for (std::size_t index = 0; index < names.size() && index < files.size(); ++index) {
        const auto content = ReadAll(files[index]);
        if (!content) return Tell("a file cannot be read");
        contents.push_back(*content);
        const Packing packing = arguments.Has("stored") ? Packing::Stored : Packing::Deflated;
        if (!writer.AddFile(names[index], contents.back(), packing)) return Tell("an entry was refused");
    }
    if (arguments.Has("comment") && !writer.SetComment(arguments.Text("comment"))) return Tell("comment refused");
    const auto bytes = writer.Close();
    if (!bytes) return Tell("no archive");
    Tell(WriteAll(arguments.Text("archive"), *bytes) ? "done" : "not written");
}

void Unpack(const Arguments& arguments) {
    const auto bytes = ReadAll(arguments.Text("archive"));
    if (!bytes) return Tell("a file cannot be read");
    const ArchiveReader reader(*bytes);
    if (reader.Fault() != ArchiveFault::None) return Tell(TextOf(reader.Fault()));
    (void)std::printf("comment: %s\n", Printable(reader.Comment()).c_str());
    bool isDamaged = false;
    for (std::size_t index = 0; index < reader.Count(); ++index) {
        const ArchiveReader::Entry& entry = reader.Entries()[index];
        const auto content = reader.Extract(index);
        const auto path = EntryPath(entry.name);
        const char* state = TextOf(entry.fault);
        if (entry.fault == ArchiveFault::None && !content) state = "damaged";
        if (!content) isDamaged = true;
        if (content && !path) state = "skipped";
        (void)std::printf("entry: %s: %s\n", Printable(entry.name).c_str(), state);
        if (content && path && !WriteAll(std::filesystem::path(arguments.Text("folder")) / *path, *content)) {
            return Tell("not written");
        }
    }
    Tell(isDamaged ? "some entries cannot be unpacked" : "done");
}

}  // namespace brennvar::peers
