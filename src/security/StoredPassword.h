// The security password as the service keeps it: the text of option 4.
#pragma once

#include <optional>
#include <string>

#include "base/Clock.h"
#include "base/Password.h"

namespace brennvar {

class PasswordSource {
public:
    virtual ~PasswordSource() = default;
    // Empty when none is set. Nothing when that cannot be told: who asks then has to refuse. Any thread.
    [[nodiscard]] virtual std::optional<Password> Read() const = 0;
};

class StoredPassword final : public PasswordSource {
public:
    // The clock is borrowed; waits on it are those for a file that the service holds.
    StoredPassword(const std::string& dataFolder, Clock& clock);

    // None is set when there is no file, or it has no such option. It cannot be told when the file is held, may not
    // be read, or breaks off. Waits for the service as every reader of its files does (RecordFile); what is
    // deciphered on the way is wiped.
    [[nodiscard]] std::optional<Password> Read() const override;

private:
    const std::string m_path;
    Clock& m_clock;
};

}  // namespace brennvar
