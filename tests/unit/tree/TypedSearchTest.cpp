#include "tree/TypedSearch.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

using namespace std::chrono_literals;

TEST(TypedSearchTest, LooksForAllThatWasTypedUntilAPause) {
    struct Row {
        char typed;
        std::chrono::milliseconds at;
        const char* wanted;
        int start;  // when row 5 has the focus
    };
    const Row rows[] = {
        {'s', 5000ms, "s", 6},   {'v', 5999ms, "sv", 5},  // the row that was found may still fit
        {'v', 6100ms, "svv", 5},                          // only a letter alone goes from row to row
        {'s', 7100ms, "s", 6},                            // a pause
        {'s', 7200ms, "s", 6},   {'s', 7300ms, "s", 6},   // again and again
        {'a', 7400ms, "sa", 5},  {'a', 8400ms, "a", 6},
    };
    TypedSearch search;
    for (const Row& row : rows) {
        search.Type(row.typed, row.at);
        EXPECT_EQ(search.Wanted(), row.wanted) << row.at.count();
        EXPECT_EQ(search.StartRow(5), row.start) << row.at.count();
    }
    search.Type('b', 8500ms);
    EXPECT_EQ(search.StartRow(-1), 0);
}

}  // namespace
}  // namespace brennvar
