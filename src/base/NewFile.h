// A file that is written beside the one that it is to become, and takes its place when it is whole: whatever fails,
// the old one stays and no half file is left.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace brennvar {

enum class WriteResult : std::uint8_t {
    Written,
    DiskFull,
    Denied,  // the folder or the file may not be written
    Failed,  // anything else
};
// What errno says after a failed call.
[[nodiscard]] WriteResult WriteResultOf(int error);

// Used on one thread at a time. What has not been put in place is deleted by the destructor.
class NewFile {
public:
    // Makes the file beside the path, under a name of its own.
    explicit NewFile(std::string path);
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile();

    // How all of it has gone so far; after a fault nothing more is written.
    [[nodiscard]] WriteResult Result() const { return m_result; }
    void Write(std::string_view bytes);
    // Everything has been written: on the disk, then in place. Written only when that has been done.
    [[nodiscard]] WriteResult PutInPlace();

private:
    struct Closer {
        void operator()(std::FILE* file) const { (void)std::fclose(file); }  // of a file that is given up
    };
    void Fail();

    const std::string m_path;
    std::string m_temporary;
    std::unique_ptr<std::FILE, Closer> m_file;
    WriteResult m_result = WriteResult::Written;
};

// Puts one file in the place of another, or of none, on the same disk. False: nothing has changed, and errno says
// why.
[[nodiscard]] bool ReplaceByRename(const std::string& from, const std::string& to);

}  // namespace brennvar
