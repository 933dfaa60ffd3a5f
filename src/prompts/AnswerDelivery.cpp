#include "prompts/AnswerDelivery.h"

#include "ipc/PipeWriteOnce.h"

namespace brennvar {

void AnswerDelivery::Send(const ConnectionPromptAnswer& answer) {
    m_queue.Post(
        [this, answer] {
            // A service that is not there to take the answer has nothing to decide either; nobody is told.
            (void)PipeWriteOnce(m_connector, m_waits, kConfirmPipeName, RecordBytes(answer));
        },
        [this] { m_isUnderWay = false; });
    m_isUnderWay = true;
}

}  // namespace brennvar
