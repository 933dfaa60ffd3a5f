#include "commands/ProtectionMode.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

TEST(ProtectionModeTest, UnknownValuesCountAsNormal) {
    EXPECT_EQ(ProtectionModeOf(0), ProtectionMode::Normal);
    EXPECT_EQ(ProtectionModeOf(1), ProtectionMode::AllowAll);
    EXPECT_EQ(ProtectionModeOf(2), ProtectionMode::BlockAll);
    EXPECT_EQ(ProtectionModeOf(3), ProtectionMode::Normal);
    EXPECT_EQ(ProtectionModeOf(0xFFFFFFFF), ProtectionMode::Normal);
}

}  // namespace
}  // namespace brennvar
