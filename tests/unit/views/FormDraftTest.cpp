#include "views/FormDraft.h"

#include <gtest/gtest.h>

#include "views/OptionFields.h"

namespace brennvar {
namespace {

using Fields = FormDraft::Fields;

TEST(FormDraftTest, KeepsWhatIsTakenBackWhileItIsOnItsWay) {
    FormDraft draft;
    draft.SetStored({{1, "0"}, {2, "0"}});
    draft.Edit(1, "1");
    draft.Edit(2, "1");
    draft.Apply();
    draft.Edit(1, "0");
    EXPECT_TRUE(draft.IsEdited());
    draft.SetStored({{1, "0"}, {2, "0"}});  // not yet
    draft.SetStored({{1, "1"}, {2, "1"}});
    EXPECT_EQ(draft.Shown(), (Fields{{1, "0"}, {2, "1"}}));
    draft.Settle();
    EXPECT_EQ(draft.Shown(), (Fields{{1, "0"}, {2, "1"}}));
    EXPECT_TRUE(draft.IsEdited());
    draft.Apply();
    draft.Edit(1, "1");
    draft.Withdraw();
    EXPECT_FALSE(draft.IsEdited()) << "as it is stored, and nothing is on its way";
}

TEST(OptionFieldsTest, NumbersOfFieldsAreDefaultsWhenEmptyAndNeverTooLarge) {
    struct Row {
        OptionId id;
        std::string_view field;
        std::uint32_t expected;
        std::string_view shown;
    };
    const Row rows[] = {
        {OptionId::BlockSeconds, "", 600, "600"},
        {OptionId::ProxyPort, "", 0, ""},
        {OptionId::ProxyPort, "0", 0, ""},
        {OptionId::LogDays, "0", 0, "0"},
        {OptionId::LogDays, " 12x", 12, "12"},  // pasted
        {OptionId::LogDays, "x", 0, "0"},
        {OptionId::BlockSeconds, "4294967295", 4294967295, "4294967295"},
        {OptionId::BlockSeconds, "4294967296", 4294967295, "4294967295"},
        {OptionId::BlockSeconds, "99999999999999999999999", 4294967295, "4294967295"},
        {OptionId::Dns, "1", 1, "1"},
    };
    for (const Row& row : rows) {
        OptionValues values;
        values.SetNumber(row.id, 77);
        TakeField(row.id, row.field, values);
        EXPECT_EQ(values.Number(row.id), row.expected) << row.field;
        EXPECT_EQ(FieldOf(row.id, values), row.shown) << row.field;
    }
}

}  // namespace
}  // namespace brennvar
