#include "base/WhileAlive.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace brennvar {
namespace {

TEST(WhileAliveTest, CallsWithArgumentsUntilItsOwnerHasGone) {
    auto alive = std::make_unique<WhileAlive>();
    std::string told;
    const std::function<void()> plain = alive->Guard([&] { told += 'p'; });
    const std::function<void(bool, std::string)> with =
        alive->Guard([&](bool isThere, std::string text) { told += isThere ? std::move(text) : "-"; });
    plain();
    with(true, "text");
    alive.reset();
    plain();
    with(true, "late");
    EXPECT_EQ(told, "ptext");
}

}  // namespace
}  // namespace brennvar
