#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

extern "C" std::uintptr_t __stack_chk_guard;

namespace brennvar {
namespace {

TEST(StackGuard, IsChosenAnewAndStopsTexts) {
    constexpr std::uintptr_t kBuiltIn = 0x9AF1C36B5D2E7800;
    EXPECT_NE(__stack_chk_guard, kBuiltIn) << "nothing has chosen one before the program began";
    unsigned char first = 1;
    std::memcpy(&first, &__stack_chk_guard, 1);
    EXPECT_EQ(first, 0);
}

}  // namespace
}  // namespace brennvar
