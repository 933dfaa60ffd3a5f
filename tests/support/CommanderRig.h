// A commander with a service behind it that takes everything at once and remembers it.
#pragma once

#include <future>
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

    // Waits until everything that was sent so far, and because of it, has arrived or was given up, and what waits
    // for it has been told.
    void Settle() {
        // A completion may send more: its batch comes behind the first mark, and is there at the second.
        for (std::size_t seen = m_pipe->writes.size() + 1; seen != m_pipe->writes.size();) {
            Pass();
            seen = m_pipe->writes.size();
            Pass();
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
    // The service takes nothing until this goes; what is sent meanwhile waits.
    class Held {
    public:
        explicit Held(ServiceLink& link) {
            link.Send([gate = m_gate.get_future().share()](CommandPipe&) { gate.wait(); });
        }
        Held(const Held&) = delete;
        Held& operator=(const Held&) = delete;
        ~Held() { m_gate.set_value(); }

    private:
        std::promise<void> m_gate;
    };
    [[nodiscard]] Held Hold() { return Held(link); }
    // After Settle, while nothing is sent: the pipe belongs to the link's thread.
    [[nodiscard]] FakePipe& Pipe() { return *m_pipe; }

private:
    // Everything that was sent before has arrived, and its completions have run.
    void Pass() {
        bool isOver = false;
        link.Ask<bool>([](ServicePipes&) { return true; }, [&](std::optional<bool>) { isOver = true; });
        while (!isOver) {
            link.RunCompletions();
            std::this_thread::yield();
        }
    }

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
