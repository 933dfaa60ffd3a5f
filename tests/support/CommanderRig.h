// A commander with a service behind it that takes everything at once and remembers it.
#pragma once

#include <memory>
#include <thread>
#include <vector>

#include "commands/Commander.h"
#include "ipc/ServiceLink.h"
#include "support/FakePassword.h"
#include "support/FakePipe.h"
#include "support/RawBytes.h"

namespace brennvar::test {

class CommanderRig {
public:
    CommanderRig() { commander.GuardWith(password); }

    // Waits until everything that was sent so far has arrived or was given up, and what waits for it has been told.
    void Settle() {
        bool isOver = false;
        link.Ask<bool>([](ServicePipes&) { return true; }, [&](std::optional<bool>) { isOver = true; });
        while (!isOver) {
            link.RunCompletions();
            std::this_thread::yield();
        }
    }
    // The records since the last call, in the order in which they came.
    [[nodiscard]] std::vector<RawBytes> TakeRecords() {
        Settle();
        std::vector<RawBytes> records;
        for (const FakePipe::Message& message : m_pipe->writes) records.push_back(message.bytes);
        m_pipe->writes.clear();
        return records;
    }
    // After Settle, while nothing is sent: the pipe belongs to the link's thread.
    [[nodiscard]] FakePipe& Pipe() { return *m_pipe; }

private:
    FakePipe* m_pipe = nullptr;  // the link's

public:
    FakePassword password;
    Language language{nullptr};
    ServiceLink link{[] {},
                     [this](const StopSignal&) {
                         auto pipe = std::make_unique<FakePipe>();
                         m_pipe = pipe.get();
                         return pipe;
                     }};
    Commander commander{link, language};
};

}  // namespace brennvar::test
