#include "ipc/Device_win.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

TEST(WinDeviceOpenerTest, YieldsNothingForADeviceThatIsNotThere) {
    EXPECT_EQ(WinDeviceOpener().Open(R"(\\.\brennvar_absent)"), nullptr);
}

}  // namespace
}  // namespace brennvar
