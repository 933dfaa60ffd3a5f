#include "base/NewFile.h"

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace brennvar {

WriteResult WriteResultOf(int error) {
    switch (error) {
        case ENOSPC:
        case EFBIG: return WriteResult::DiskFull;
        case EACCES:
        case EPERM:
        case EROFS: return WriteResult::Denied;
        default: return WriteResult::Failed;
    }
}

namespace {

// A file that was not there before: what another program has under this name is left alone. Null: errno says why.
// Not by fopen's "x", which not every C library of Windows knows.
std::FILE* Create(const std::string& path) {
#ifdef _WIN32
    const int file = _open(path.c_str(), _O_CREAT | _O_EXCL | _O_WRONLY | _O_BINARY, _S_IREAD | _S_IWRITE);
    return file < 0 ? nullptr : _fdopen(file, "wb");
#else
    const int file = open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666);
    return file < 0 ? nullptr : fdopen(file, "wb");
#endif
}

bool FlushToDisk(std::FILE* file) {
    if (std::fflush(file) != 0) return false;
#ifdef _WIN32
    return _commit(_fileno(file)) == 0;
#else
    return fsync(fileno(file)) == 0;
#endif
}

}  // namespace

#ifndef _WIN32  // NewFile_win.cpp has it for Windows, whose rename replaces nothing
bool ReplaceByRename(const std::string& from, const std::string& to) {
    return std::rename(from.c_str(), to.c_str()) == 0;
}
#endif

NewFile::NewFile(std::string path) : m_path(std::move(path)) {
    constexpr int kNames = 100;
    for (int i = 0; i < kNames && !m_file; ++i) {
        m_temporary = m_path + '.' + std::to_string(i) + ".tmp";
        errno = 0;
        m_file.reset(Create(m_temporary));
        if (!m_file && errno != EEXIST) break;
    }
    if (m_file) {
        (void)std::setvbuf(m_file.get(), nullptr, _IONBF, 0);  // it is given large pieces
    } else {
        Fail();
        m_temporary.clear();
    }
}

NewFile::~NewFile() {
    m_file.reset();
    if (!m_temporary.empty()) (void)std::remove(m_temporary.c_str());  // not there any more when it is in place
}

void NewFile::Fail() {
    m_result = WriteResultOf(errno);
}

void NewFile::Write(std::string_view bytes) {
    if (m_result != WriteResult::Written || bytes.empty()) return;
    errno = 0;
    if (std::fwrite(bytes.data(), 1, bytes.size(), m_file.get()) != bytes.size()) Fail();
}

WriteResult NewFile::PutInPlace() {
    if (m_result != WriteResult::Written) return m_result;
    errno = 0;
    if (!FlushToDisk(m_file.get()) || std::fclose(m_file.release()) != 0 || !ReplaceByRename(m_temporary, m_path)) {
        Fail();
        return m_result;
    }
    m_temporary.clear();
    return m_result;
}

}  // namespace brennvar
