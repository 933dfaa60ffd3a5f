#include "app/PageList.h"

#include <gtest/gtest.h>

#include <set>

namespace brennvar {
namespace {

TEST(PageListTest, OpensEachPageByItsTrayCommand) {
    const struct {
        int command;
        std::string_view caption;
    } rows[] = {{461, "Statistics"}, {462, "Connections"},  {429, "Advanced"},
                {437, "Options"},    {439, "Applications"}, {463, "Traffic Log"}};
    ASSERT_EQ(PageList().size(), std::size(rows));
    std::set<int> numbers;
    for (std::size_t index = 0; index < std::size(rows); ++index) {
        const PageInfo& page = PageList()[index];
        EXPECT_EQ(page.command, rows[index].command);
        EXPECT_EQ(page.caption, rows[index].caption);
        numbers.insert({page.captionNumber, page.lineNumber});
    }
    EXPECT_EQ(numbers.size(), 2 * std::size(rows));  // one text, one number
}

}  // namespace
}  // namespace brennvar
