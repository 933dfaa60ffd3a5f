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
        EXPECT_EQ(FindPage(rows[index].command), index) << rows[index].caption;
        const PageInfo& page = PageList()[index];
        EXPECT_EQ(page.caption, rows[index].caption);
        numbers.insert({page.captionNumber, page.lineNumber});
    }
    EXPECT_EQ(numbers.size(), 2 * std::size(rows));  // one text, one number
    for (const int command : {0, 409, 376, 460, 464, -1}) EXPECT_FALSE(FindPage(command)) << command;
}

}  // namespace
}  // namespace brennvar
