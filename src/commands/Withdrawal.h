// Takes batches back that are on their way: what the user has been told is lost does not arrive later.
#pragma once

#include <chrono>
#include <memory>
#include <utility>

#include "base/StopSignal.h"

namespace brennvar {

class Withdrawal {
public:
    // A service that has not taken a batch by then counts as missing, and the batch as lost.
    static constexpr std::chrono::milliseconds kDeliveryLimit{2000};

    // Goes with every batch that can be taken back (Commander::Send).
    [[nodiscard]] std::shared_ptr<const StopSignal> Signal() const { return m_signal; }
    // What has been sent with the signal and has not found the service yet is not sent any more. What is sent from
    // now on is not meant.
    void Withdraw() { std::exchange(m_signal, std::make_shared<StopSignal>())->Request(); }

private:
    std::shared_ptr<StopSignal> m_signal = std::make_shared<StopSignal>();
};

}  // namespace brennvar
