// The options, which the service may hold at this moment.
#pragma once

#include "config/OptionSource.h"

namespace brennvar::test {

struct FakeOptions final : OptionSource {
    std::optional<StoredOptions> stored = StoredOptions{};
    [[nodiscard]] std::optional<StoredOptions> Read() const override { return stored; }
    [[nodiscard]] FileStamp Stamp() const override { return {}; }
};

}  // namespace brennvar::test
