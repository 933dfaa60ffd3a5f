#include "views/ProgramNames.h"

#include <gtest/gtest.h>

#include "support/FakeProgramFiles.h"
#include "support/FakeTaskQueue.h"

namespace brennvar {
namespace {

class ProgramNamesTest : public testing::Test {
protected:
    test::FakeTaskQueue queue;
    test::FakeProgramFiles files;
    int changes = 0;
    ProgramNames names{queue, files, [this] { ++changes; }};

    [[nodiscard]] std::string Name(const std::string& path) {
        const auto known = names.Known();
        const auto at = known->find(path);
        return at == known->end() ? "?" : at->second;
    }
};

TEST_F(ProgramNamesTest, ReadsEachProgramOnceAndTellsOfAllTogether) {
    files.stamps["a"] = {.written = 1, .size = 1};
    files.descriptions = {{"a", "Alpha\nBeta"}, {"b", ""}};
    names.Want({"a", "b", "", "a"});
    names.Want({"a"});
    EXPECT_EQ(queue.Waiting(), 2U);
    queue.Run();
    EXPECT_EQ(changes, 0) << "the second one is still being read";
    EXPECT_EQ(Name("a"), "Alpha Beta") << "who looks meanwhile gets what there is, in one line";
    queue.RunAll();
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(files.Looked(), "sa da sb db ");
    EXPECT_EQ(Name("b"), "?");
    const auto known = names.Known();
    names.Want({"a", "b"});
    EXPECT_EQ(queue.Waiting(), 0U);
    EXPECT_EQ(names.Known(), known) << "nothing is new";
}

TEST_F(ProgramNamesTest, LooksIntoAFileAgainOnlyWhenItIsAnotherOne) {
    files.stamps = {{"a", {.written = 1, .size = 1}}, {"b", {.written = 1, .size = 1}}};
    files.descriptions = {{"a", "Alpha"}, {"b", "Beta"}};
    names.Want({"a", "b"});
    queue.RunAll();
    files.stamps["b"].written = 2;
    files.descriptions["b"] = "Gamma";
    (void)files.Looked();
    names.LookAgain();
    names.Want({"a", "b"});
    queue.RunAll();
    EXPECT_EQ(files.Looked(), "sa sb db ");
    EXPECT_EQ(Name("a"), "Alpha");
    EXPECT_EQ(Name("b"), "Gamma");
    EXPECT_EQ(changes, 2);
    names.LookAgain();
    names.Want({"a"});
    queue.RunAll();
    EXPECT_EQ(changes, 2) << "nothing is new";
}

TEST_F(ProgramNamesTest, ForgetsWhatNobodyWantsAndStopsAtItsLimit) {
    std::vector<std::string> many;
    for (std::size_t i = 0; i < ProgramNames::kMostPrograms + 10; ++i) {
        many.push_back("p" + std::to_string(i));
        files.descriptions[many.back()] = "P";
    }
    files.descriptions["late"] = "Late";
    names.Want(many);
    EXPECT_EQ(queue.Waiting(), ProgramNames::kMostPrograms);
    queue.RunAll();
    EXPECT_EQ(names.Known()->size(), ProgramNames::kMostPrograms);
    names.Want({"late"});
    queue.RunAll();
    EXPECT_EQ(*names.Known(), (ProgramNames::Descriptions{{"late", "Late"}}));
}

}  // namespace
}  // namespace brennvar
