// The client side of named pipes through the Windows calls.
#pragma once

#include "base/StopSignal.h"
#include "ipc/Pipe.h"

namespace brennvar {

// May be shared by threads; each connection belongs to one. Every wait, for an instance as for a pending write or
// transaction, ends when the stop is requested: waits for an instance as failed, pending calls as timed out.
class WinPipeConnector final : public PipeConnector {
public:
    // Borrowed; must outlive the connector and its connections.
    explicit WinPipeConnector(const StopSignal& stop) : m_stop(stop) {}

    [[nodiscard]] bool WaitForInstance(const std::string& name, std::chrono::milliseconds limit) override;
    // Believed is a pipe of the system, of the administrators and of this user.
    [[nodiscard]] OpenedPipe Open(const std::string& name) override;

private:
    const StopSignal& m_stop;
};

}  // namespace brennvar
