// Lets a batch of commands be taken back while it waits for the service: what the user was told is lost does not
// arrive later.
#pragma once

#include <memory>
#include <stdexcept>
#include <utility>

#include "base/StopSignal.h"
#include "ipc/Pipe.h"

namespace brennvar {

// Ends the batch that was taken back, like anything else that a task throws.
class BatchWithdrawn final : public std::runtime_error {
public:
    BatchWithdrawn() : std::runtime_error("the batch was withdrawn") {}
};

// Passes everything on to another connector. Once the first command of a batch has found the service, the whole of
// it goes: a change without the command that puts it into force would be worse than a late one. Link thread only;
// the signal may be requested by any.
class WithdrawableConnector final : public PipeConnector {
public:
    // Borrowed; must outlive this one.
    explicit WithdrawableConnector(PipeConnector& inner) : m_inner(inner) {}

    // A batch begins. Requested: it is withdrawn; null: it never is. Throws BatchWithdrawn, as every wait does.
    void BeginBatch(std::shared_ptr<const StopSignal> withdrawn) {
        m_withdrawn = std::move(withdrawn);
        ThrowIfWithdrawn();
    }

    [[nodiscard]] bool WaitForInstance(const std::string& name, std::chrono::milliseconds limit) override {
        ThrowIfWithdrawn();
        const bool found = m_inner.WaitForInstance(name, limit);
        ThrowIfWithdrawn();  // the wait may have been long
        return found;
    }
    [[nodiscard]] OpenedPipe Open(const std::string& name) override {
        OpenedPipe opened = m_inner.Open(name);
        if (opened.connection) m_withdrawn.reset();
        return opened;
    }

private:
    void ThrowIfWithdrawn() const {
        if (m_withdrawn && m_withdrawn->Requested()) throw BatchWithdrawn();
    }

    PipeConnector& m_inner;
    std::shared_ptr<const StopSignal> m_withdrawn;
};

}  // namespace brennvar
