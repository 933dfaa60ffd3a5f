// The server side of a pipe through the Windows calls: one instance, messages, every user of this machine and
// nobody from another one.
#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "base/Handles_win.h"
#include "ipc/RecordPipe.h"

namespace brennvar {

class WinRecordPipe final : public RecordPipe {
public:
    // A client writes as soon as it has connected, and reads as soon as there is something to be read; the next one
    // does not wait longer for it than this.
    static constexpr std::chrono::milliseconds kPatience{1000};

    WinRecordPipe(std::string name, DWORD bufferSize);
    WinRecordPipe(const WinRecordPipe&) = delete;
    WinRecordPipe& operator=(const WinRecordPipe&) = delete;

    [[nodiscard]] bool Create() override;
    [[nodiscard]] bool Accept() override;
    [[nodiscard]] std::size_t Read(std::span<std::byte> buffer) override;
    bool Write(std::span<const std::byte> record) override;
    void Flush() override;
    void Disconnect() override;

    // Any thread: every wait ends at once, and so do all later ones.
    void Stop() const { ::SetEvent(m_stop.Get()); }

private:
    [[nodiscard]] OVERLAPPED NewOperation() const;
    // How many bytes the operation has moved, with the error that it began with; nothing when it has failed, has
    // taken too long, or the stop was requested.
    [[nodiscard]] std::optional<DWORD> Finish(DWORD error, OVERLAPPED& operation, DWORD patienceMs);

    const std::string m_name;
    const DWORD m_bufferSize;
    const UniqueEvent m_done{::CreateEventA(nullptr, TRUE, FALSE, nullptr)};
    const UniqueEvent m_stop{::CreateEventA(nullptr, TRUE, FALSE, nullptr)};
    UniqueFile m_pipe;
};

}  // namespace brennvar
