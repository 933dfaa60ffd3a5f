#include "lists/RowOrder.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

using Rows = std::vector<int>;

class Cells final : public ListRows {
public:
    std::vector<std::vector<std::string>> cells;
    std::vector<std::string> searched;  // one for each row, or none
    mutable int asked = 0;

    [[nodiscard]] int RowCount() const override { return static_cast<int>(cells.size()); }
    [[nodiscard]] std::string CellText(int row, int column) const override {
        ++asked;
        return cells[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
    }
    [[nodiscard]] std::optional<std::string_view> SearchedText(int row) const override {
        return searched.empty() ? std::nullopt
                                : std::optional<std::string_view>(searched[static_cast<std::size_t>(row)]);
    }
};

TEST(RowOrderTest, FindsSortsAndKeepsTheOrderOfEqualRows) {
    Cells model;
    model.cells = {{"beta", "10"}, {"Alpha", "9"}, {"ALPHA", "100"}, {"gamma", ""}, {"\xE4lpha", "9"}};
    RowArranger arranger;
    EXPECT_EQ(arranger.Arrange(model, 2, {}), (Rows{0, 1, 2, 3, 4}));
    EXPECT_EQ(model.asked, 0) << "not before they are needed";
    const std::pair<RowOrder, Rows> rows[] = {
        {{.searched = "aLPh"}, {1, 2}},
        {{.searched = "10"}, {0, 2}},  // in every column
        {{.searched = "none"}, {}},
        {{.searched = {}, .column = 0}, {1, 2, 0, 3, 4}},
        {{.searched = {}, .column = 0, .isAscending = false}, {4, 3, 0, 1, 2}},  // equal rows as they were read
        {{.searched = {}, .column = 1, .isNumber = true}, {3, 1, 4, 0, 2}},      // by value, not by digits
        {{.searched = "a", .column = 1, .isAscending = false, .isNumber = true}, {2, 0, 1, 4, 3}}};
    for (const auto& [order, expected] : rows) {
        EXPECT_EQ(arranger.Arrange(model, 2, order), expected) << order.searched << ' ' << order.column;
    }
}

TEST(RowOrderTest, GoesOnFromWhatTheLastKeyHasFound) {
    Cells model;
    model.cells = {{"one"}, {"Two"}, {"three"}, {"two more"}, {"t"}};
    RowArranger arranger;
    const struct {
        std::string searched;
        Rows found;
        int asked;  // for so many cells
    } typed[] = {{"T", {1, 2, 3, 4}, 5}, {"Tw", {1, 3}, 4},        {"tW", {1, 3}, 0}, {"two ", {3}, 2},
                 {"two", {1, 3}, 5},     {"", {0, 1, 2, 3, 4}, 0}, {"re", {2, 3}, 5}};
    for (const auto& key : typed) {
        model.asked = 0;
        EXPECT_EQ(arranger.Arrange(model, 1, {.searched = key.searched}), key.found) << key.searched;
        EXPECT_EQ(model.asked, key.asked) << key.searched;
    }
    model.cells[0] = {"ore"};
    arranger.Forget();
    EXPECT_EQ(arranger.Arrange(model, 1, {.searched = "re"}), (Rows{0, 2, 3})) << "texts have changed";
    model.cells.push_back({"re"});
    EXPECT_EQ(arranger.Arrange(model, 1, {.searched = "re"}), (Rows{0, 2, 3, 5})) << "nobody has told of the row";
    model.searched = {"a", "red", "a", "bare", "a", "a"};
    arranger.Forget();
    EXPECT_EQ(arranger.Arrange(model, 1, {.searched = "RE"}), (Rows{1, 3})) << "what is at hand instead of cells";
}

}  // namespace
}  // namespace brennvar
