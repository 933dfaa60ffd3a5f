// config.conf in the data folder of this machine.
#pragma once

#include "base/Clock.h"
#include "config/OptionSource.h"

namespace brennvar {

class OptionFile final : public OptionSource {
public:
    // The clock is borrowed: reading waits with it for a service that holds the file.
    explicit OptionFile(Clock& clock) : m_clock(clock) {}
    [[nodiscard]] std::optional<StoredOptions> Read() const override;
    [[nodiscard]] FileStamp Stamp() const override;

private:
    Clock& m_clock;
};

}  // namespace brennvar
