// Takes the answer to a connection question to the service.
#pragma once

#include "base/Clock.h"
#include "base/TaskQueue.h"
#include "ipc/Pipe.h"
#include "ipc/PipeRecords.h"

namespace brennvar {

class AnswerDelivery {
public:
    // All are borrowed and must outlive the object. connector and waits are used on the queue's thread, of which
    // nothing else makes use: no command holds an answer up.
    AnswerDelivery(TaskQueue& queue, PipeConnector& connector, Clock& waits)
        : m_queue(queue), m_connector(connector), m_waits(waits) {}
    AnswerDelivery(const AnswerDelivery&) = delete;
    AnswerDelivery& operator=(const AnswerDelivery&) = delete;

    // Once, with a single wait for the pipe (kWriteOncePolicy). Not while one is under way.
    void Send(const ConnectionPromptAnswer& answer);
    // From Send until the answer has been delivered or given up, and the queue's completion has run.
    [[nodiscard]] bool IsUnderWay() const { return m_isUnderWay; }

private:
    TaskQueue& m_queue;
    PipeConnector& m_connector;
    Clock& m_waits;
    bool m_isUnderWay = false;
};

}  // namespace brennvar
