#include "rules/ImportPlan.h"

#include <gtest/gtest.h>

#include "support/ZipBytes.h"

namespace brennvar {
namespace {

using test::StoredEntry;
using test::ZipBytes;

TEST(ImportPlanTest, PlansEveryEntryThatCanBeAFile) {
    const ImportPlan plan = PlanImport(ZipBytes({StoredEntry("C:\\x\\..\\rules.conf", "a"), StoredEntry("sub/", ""),
                                                 StoredEntry("NUL", "b"), StoredEntry("other. ", "cd")}));
    ASSERT_EQ(plan.files.size(), 2U);
    EXPECT_EQ(plan.files[0].path + "=" + plan.files[0].content, "rules.conf=a");
    EXPECT_EQ(plan.files[1].path + "=" + plan.files[1].content, "other=cd");
    EXPECT_EQ(plan.files[1].crc, test::CrcByHand("cd"));
    EXPECT_EQ(plan.skipped, 1U);

    auto sealed = StoredEntry("x", "y");
    sealed.flags = 1;
    auto broken = StoredEntry("x", "y");
    broken.crc ^= 1;
    auto large = test::DeflatedEntry("x", "y");
    large.size = 40U << 20;
    large.packedSize = static_cast<std::uint32_t>(large.packed.size());
    const struct {
        std::string bytes;
        ArchiveFault fault;
        std::string entry;
    } rows[] = {
        {"", ArchiveFault::NotOpened, ""},
        {ZipBytes({StoredEntry("NUL", ""), StoredEntry("a/", "")}), ArchiveFault::Empty, ""},
        {ZipBytes({StoredEntry("a", ""), StoredEntry("\\A", "")}), ArchiveFault::SameNameTwice, "\\A"},
        {ZipBytes({StoredEntry("a", ""), sealed}), ArchiveFault::Enciphered, "x"},
        {ZipBytes({StoredEntry("a", ""), broken}), ArchiveFault::Damaged, "x"},
        {ZipBytes({StoredEntry("a", ""), large}), ArchiveFault::TooLarge, "x"},
    };
    for (const auto& row : rows) {
        const ImportPlan refused = PlanImport(row.bytes);
        EXPECT_EQ(refused.fault, row.fault) << row.entry;
        EXPECT_EQ(refused.faultyEntry, row.entry);
        EXPECT_TRUE(refused.files.empty());
    }
    // Each may be so large, both may not.
    auto half = test::DeflatedEntry("1", "y");
    half.packed.resize(210'000);
    half.size = 40U << 20;
    auto other = half;
    other.name = "2";
    EXPECT_EQ(PlanImport(ZipBytes({half, other})).faultyEntry, "2");
    EXPECT_EQ(PlanImport(ZipBytes({half, other})).fault, ArchiveFault::TooLarge);
}

TEST(ImportPlanTest, OnlyARestorePointMakesFilesGo) {
    const std::string bytes = ZipBytes(
        {StoredEntry("rules.conf", "a")},
        {.comment = "Brennvar restore point\nadded new.conf\nadded RULES.CONF\nadded ../x\nother\nadded cut"});
    EXPECT_EQ(PlanImport(bytes).files.size(), 1U);
    const ImportPlan plan = PlanRestore(bytes);
    ASSERT_EQ(plan.files.size(), 2U);
    EXPECT_EQ(plan.files[1].path, "new.conf");
    EXPECT_TRUE(plan.files[1].isRemoved);
    EXPECT_EQ(PlanRestore(ZipBytes({StoredEntry("a", "b")}, {.comment = "added new.conf\n"})).files.size(), 1U);
}

}  // namespace
}  // namespace brennvar
