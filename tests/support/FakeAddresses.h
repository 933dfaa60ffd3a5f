// Addresses of a machine that tests set.
#pragma once

#include <utility>
#include <vector>

#include "base/OwnAddresses.h"

namespace brennvar::test {

class FakeAddresses final : public OwnAddresses {
public:
    std::vector<InterfaceAddress> all;
    bool haveChanged = false;  // to be told once
    int readings = 0;

    [[nodiscard]] std::vector<InterfaceAddress> Read() override {
        ++readings;
        return all;
    }
    [[nodiscard]] bool HaveChanged() override { return std::exchange(haveChanged, false); }
};

}  // namespace brennvar::test
