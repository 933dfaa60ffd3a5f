// One pipe of the service: message mode, one client after the other, open to every user of this machine.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <thread>
#include <vector>

#include "base/Handles_win.h"
#include "service/Journal_win.h"
#include "service/Stop_win.h"

namespace brennvar::standin {

// What all pipe servers share.
struct PipeWorld {
    const Stop& stop;
    Journal& journal;
    Progress& progress;
};

struct PipeService {
    const char* name;
    Channel channel;
    DWORD slowMilliseconds = 0;  // waited before each answer
    // Called on the pipe's thread for each record, after it has been written to the journal. Yields the answer.
    std::function<std::optional<std::vector<std::byte>>(std::span<const std::byte> record)> handle;
};

class PipeServer {
public:
    PipeServer(PipeService service, PipeWorld world);
    PipeServer(const PipeServer&) = delete;
    PipeServer& operator=(const PipeServer&) = delete;
    // The stop has to be requested before.
    ~PipeServer();

    // Makes the pipe and its thread. False when the pipe exists already: another stand-in runs.
    [[nodiscard]] bool Start();

private:
    void Run();
    [[nodiscard]] bool WaitForClient();
    void ServeClient();
    // The bytes moved, or nothing when the client left, was too slow, or the stop was requested.
    [[nodiscard]] std::optional<DWORD> Finish(BOOL done, OVERLAPPED& operation, DWORD patienceMilliseconds);

    PipeService m_service;
    PipeWorld m_world;
    UniqueEvent m_done;
    UniqueFile m_pipe;
    std::thread m_thread;
};

}  // namespace brennvar::standin
