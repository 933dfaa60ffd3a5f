#include "rules/RestorePoints.h"

#include <gtest/gtest.h>

#include "support/FakeClock.h"
#include "support/TempFolder.h"

namespace brennvar {
namespace {

TEST(RestorePointsTest, TheLastTenAreKept) {
    const test::TempFolder folder;
    DiskRuleFiles files;
    test::FakeClock clock;
    for (const char* const other :
         {"2026-03-09 14-05-09.txt", "rules.fxz", "2026-03-09 14-05-0x.fxz", "2026-03-09 14-05-09 mine.fxz"}) {
        folder.Write(other, "");
    }
    std::vector<std::string> names;
    for (int i = 0; i < 12; ++i) {  // all in one second
        names.push_back(NewRestorePointName(files, folder.Path(), clock.UtcNow(), i % 2 == 1));
        folder.Write(names.back(), "");
    }
    folder.Write(names.back() + ".0.tmp", "left behind");
    folder.Write("rules.fxz.0.tmp", "somebody else's");
    PruneRestorePoints(files, folder.Path());
    const auto points = FindRestorePoints(files, folder.Path());
    ASSERT_EQ(points.size(), 10U);
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_EQ(points[i].name, names[11 - i]);
        EXPECT_EQ(points[i].isUndo, i % 2 == 0);
    }
    EXPECT_EQ(files.List(folder.Path()).size(), 15U) << "what is no restore point is left alone";
    folder.Write("2031-03-09 14-05-09 undo.fxz", "");
    EXPECT_EQ(
        FindRestorePoints(files, folder.Path())[0],
        (RestorePoint{.name = "2031-03-09 14-05-09 undo.fxz", .moment = "2031-03-09 14:05:09", .isUndo = true}));
}

TEST(RestorePointsTest, TheOneThatIsMadeLastIsTheLastOneWhateverTheClockSays) {
    const struct {
        const char* newest;  // a clock that has been set back since
        const char* next;
    } rows[] = {{"2031-03-09 14-05-09.fxz", "2031-03-09 14-05-10.fxz"},
                {"2031-12-31 23-59-59 undo.fxz", "2032-01-01 00-00-00.fxz"},
                {"2032-02-28 23-59-59.fxz", "2032-02-29 00-00-00.fxz"}};
    test::FakeClock clock;
    for (const auto& row : rows) {
        const test::TempFolder folder;
        DiskRuleFiles files;
        folder.Write(row.newest, "");
        // No moments, and none of ours: nothing could come after the last one.
        for (const char* const other :
             {"2032-02-30 00-00-00.fxz", "2032-03-01 24-00-00.fxz", "9999-12-31 23-59-59.fxz"}) {
            folder.Write(other, "");
        }
        EXPECT_EQ(NewRestorePointName(files, folder.Path(), clock.UtcNow(), false), row.next);
    }
}

}  // namespace
}  // namespace brennvar
