#include "lists/RowOrder.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

using Rows = std::vector<int>;

class Cells final : public ListRows {
public:
    std::vector<std::vector<std::string>> cells;
    mutable int asked = 0;

    [[nodiscard]] int RowCount() const override { return static_cast<int>(cells.size()); }
    [[nodiscard]] std::string CellText(int row, int column) const override {
        ++asked;
        return cells[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
    }
};

TEST(RowOrderTest, FindsSortsAndKeepsTheOrderOfEqualRows) {
    Cells model;
    model.cells = {{"beta", "10"}, {"Alpha", "9"}, {"ALPHA", "100"}, {"gamma", ""}, {"\xE4lpha", "9"}};
    RowArranger arranger;
    const auto arrange = [&](const RowOrder& order) { return arranger.Arrange(model, 2, order); };
    EXPECT_EQ(arrange({}), (Rows{0, 1, 2, 3, 4}));
    EXPECT_EQ(model.asked, 0) << "not before they are needed";
    arranger.Prepare(model, 2);
    EXPECT_EQ(model.asked, 10);
    EXPECT_EQ(arrange({.searched = "aLPh"}), (Rows{1, 2}));
    EXPECT_EQ(arrange({.searched = "10"}), (Rows{0, 2})) << "in every column";
    EXPECT_EQ(arrange({.searched = "none"}), Rows{});
    EXPECT_EQ(arrange({.searched = {}, .column = 0}), (Rows{1, 2, 0, 3, 4}));
    EXPECT_EQ(arrange({.searched = {}, .column = 0, .isAscending = false}), (Rows{4, 3, 0, 1, 2}))
        << "equal rows as they were read";
    EXPECT_EQ(model.asked, 10) << "each text once";
    EXPECT_EQ(arrange({.searched = {}, .column = 1, .isNumber = true}), (Rows{3, 1, 4, 0, 2}))
        << "by value, not by digits";
    EXPECT_EQ(arrange({.searched = "a", .column = 1, .isAscending = false, .isNumber = true}),
              (Rows{2, 0, 1, 4, 3}));
    model.cells.clear();
    EXPECT_EQ(arrange({.searched = "x", .column = 1}), Rows{});
}

}  // namespace
}  // namespace brennvar
