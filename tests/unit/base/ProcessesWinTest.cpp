#include "base/Processes_win.h"

#include <gtest/gtest.h>

#include <array>

#include "base/DisplayName.h"
#include "base/Windows_win.h"

namespace brennvar {
namespace {

TEST(ProcessesWinTest, FindsOurOwnProcessInAnyCase) {
    // Test programs run side by side: one of them, not necessarily this one, is the first of the name.
    std::array<char, MAX_PATH> path{};
    ASSERT_NE(::GetModuleFileNameA(nullptr, path.data(), MAX_PATH), 0U);
    const std::string name = FileNameOf(path.data());
    std::string upper = name;
    ::CharUpperA(upper.data());
    ASSERT_NE(upper, name);
    EXPECT_NE(FindProcessId(name), 0U);
    EXPECT_NE(FindProcessId(upper), 0U);
}

TEST(ProcessesWinTest, YieldsZeroForAnAbsentProcess) {
    EXPECT_EQ(FindProcessId("brennvar-absent.exe"), 0U);
    EXPECT_EQ(FindProcessId(""), 0U);
}

TEST(ProcessesWinTest, EnablesThePrivilegeWhereTheUserMayHaveIt) {
    if (!EnableDebugPrivilege()) GTEST_SKIP() << "the user may not debug";
    HANDLE token = nullptr;
    ASSERT_TRUE(::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &token));
    LUID debug{};
    ASSERT_TRUE(::LookupPrivilegeValueA(nullptr, SE_DEBUG_NAME, &debug));
    PRIVILEGE_SET wanted{.PrivilegeCount = 1, .Control = PRIVILEGE_SET_ALL_NECESSARY, .Privilege = {}};
    wanted.Privilege[0].Luid = debug;
    BOOL enabled = FALSE;
    EXPECT_TRUE(::PrivilegeCheck(token, &wanted, &enabled));
    EXPECT_TRUE(enabled);
    ::CloseHandle(token);
}

}  // namespace
}  // namespace brennvar
