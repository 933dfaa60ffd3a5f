#include "rules/RuleImport.h"

#include <gtest/gtest.h>

#include <map>

#include "rules/RestorePoints.h"
#include "support/FailingRuleFiles.h"
#include "support/FakeClock.h"
#include "support/TempFolder.h"
#include "support/ZipBytes.h"

namespace brennvar {
namespace {

namespace fs = std::filesystem;
using test::FailingRuleFiles;
using test::StoredEntry;
using test::ZipBytes;
using Files = std::map<std::string, std::string>;  // path, content

const Files kBefore = {{"rules.conf", "old"}, {"gone.conf", "to go"}, {"other.conf", "stays"}};
const Files kAfter = {
    {"rules.conf", "new"}, {"added.conf", "1"}, {"sub/added.conf", "22"}, {"other.conf", "stays"}};

// As an undo would be planned: all that can happen to a file.
ImportPlan EveryKind() {
    return PlanRestore(ZipBytes(
        {StoredEntry("rules.conf", "new"), StoredEntry("added.conf", "1"), StoredEntry("sub/added.conf", "22")},
        {.comment = RestoreComment({"gone.conf"})}));
}

class RuleImportTest : public testing::Test {
protected:
    test::FakeClock clock;
    FailingRuleFiles files;
    StopSignal stop;

    struct Data {
        explicit Data(const Files& rules) {
            fs::create_directories(folder.File("Rules"));
            for (const auto& [path, content] : rules) folder.Write("Rules/" + path, content);
        }
        [[nodiscard]] Files Under(const std::string& name) const {
            Files found;
            const fs::path root = folder.File(name);
            if (!fs::exists(root)) return found;
            for (const auto& entry : fs::recursive_directory_iterator(root)) {
                if (!entry.is_regular_file()) continue;
                const std::string path = entry.path().lexically_relative(root).generic_string();
                found[path] = folder.Read(name + "/" + path);
            }
            return found;
        }
        [[nodiscard]] Files Rules() const { return Under("Rules"); }
        [[nodiscard]] RuleFolders Folders() const {
            return {.rules = folder.File("Rules"),
                    .import = folder.File("Rules.import"),
                    .restore = folder.File("Rules.restore")};
        }
        test::TempFolder folder;
    };

    ImportOutcome Apply(const Data& data, const ImportPlan& plan,
                        RuleImport::Kind kind = RuleImport::Kind::Import) {
        return RuleImport(files, clock, data.Folders()).Apply(plan, kind, stop);
    }
    bool Recover(const Data& data) {
        DiskRuleFiles healthy;
        return RuleImport(healthy, clock, data.Folders()).Recover();
    }
    ImportPlan PlanOfRestorePoint(const Data& data, const std::string& name) {
        return PlanRestore(data.folder.Read("Rules.restore/" + name));
    }
};

TEST_F(RuleImportTest, MovesAllFilesInAndCanBeTakenBackByItsRestorePoint) {
    const Data data(kBefore);
    const ImportOutcome outcome = Apply(data, EveryKind());
    EXPECT_EQ(outcome.result, ImportResult::Done);
    EXPECT_EQ(data.Rules(), kAfter);
    EXPECT_TRUE(Recover(data)) << "the service has not been told";
    EXPECT_EQ(data.Rules(), kAfter);
    RuleImport(files, clock, data.Folders()).ServiceKnows();
    EXPECT_FALSE(fs::exists(data.folder.File("Rules.import"))) << "nothing is left of it";
    EXPECT_FALSE(Recover(data));
    const auto points = FindRestorePoints(files, data.Folders().restore);
    ASSERT_EQ(points.size(), 1U);
    EXPECT_EQ(points[0].name, outcome.restorePoint);
    EXPECT_FALSE(points[0].isUndo);

    const ImportOutcome undone =
        Apply(data, PlanOfRestorePoint(data, outcome.restorePoint), RuleImport::Kind::Undo);
    EXPECT_EQ(undone.result, ImportResult::Done);
    EXPECT_EQ(data.Rules(), kBefore);
    // And that again: nothing is ever lost.
    EXPECT_TRUE(FindRestorePoints(files, data.Folders().restore)[0].isUndo);
    EXPECT_EQ(Apply(data, PlanOfRestorePoint(data, undone.restorePoint), RuleImport::Kind::Undo).result,
              ImportResult::Done);
    EXPECT_EQ(data.Rules(), kAfter);
}

TEST_F(RuleImportTest, IsWholeOrNothingWhicheverCallFails) {
    using How = FailingRuleFiles::How;
    for (const How how : {How::Once, How::FromThenOn, How::Dies}) {
        int succeeded = 0;
        for (int failAt = 0;; ++failAt) {
            const std::string where =
                "how " + std::to_string(static_cast<int>(how)) + ", call " + std::to_string(failAt);
            const Data data(kBefore);
            files = FailingRuleFiles();
            files.failAt = failAt;
            files.how = how;
            std::optional<ImportOutcome> outcome;
            try {
                outcome = Apply(data, EveryKind());
            } catch (const FailingRuleFiles::Died&) {
            }
            const bool hasFailed = files.calls > failAt;
            if (how == How::Once && outcome->result != ImportResult::Done) {
                EXPECT_EQ(data.Rules(), kBefore) << where << ": put back at once";
                EXPECT_FALSE(outcome->isHalfway) << where;
            }
            if (how != How::Dies && outcome->result == ImportResult::Done) {
                EXPECT_EQ(data.Rules(), kAfter) << where;
                ++succeeded;
            }
            Recover(data);
            const bool isDone = data.Rules() == kAfter;
            EXPECT_TRUE(isDone || data.Rules() == kBefore) << where;
            EXPECT_TRUE(!outcome || isDone == (outcome->result == ImportResult::Done)) << where;
            EXPECT_EQ(data.Under("Rules.restore").size(), isDone ? 1U : 0U) << where;
            EXPECT_EQ(data.Under("Rules.import"), Files{}) << where;
            if (!hasFailed) break;
            ASSERT_LT(failAt, 100);
        }
        EXPECT_TRUE(how != How::Once || succeeded > 5) << "what only tidies up may fail";
        EXPECT_GT(files.calls, 20) << "every step has had its turn";
    }
}

TEST_F(RuleImportTest, SaysWhatStoodInTheWay) {
    const struct {
        WriteResult call;
        ImportResult result;
    } rows[] = {{WriteResult::DiskFull, ImportResult::DiskFull},
                {WriteResult::Failed, ImportResult::Failed},
                {WriteResult::Denied, ImportResult::Held}};
    for (const auto& row : rows) {
        const Data data(kBefore);
        files.whenReplaced = [&](const std::string& from, const std::string&) {
            return from.ends_with("new.1") ? row.call : WriteResult::Written;
        };
        EXPECT_EQ(Apply(data, EveryKind()).result, row.result);
        EXPECT_EQ(data.Rules(), kBefore);
    }
    EXPECT_EQ(clock.sleeps.size(), 6000U) << "the service has had its time";
    files.whenReplaced = {};
    stop.Request();
    const Data data(kBefore);
    EXPECT_EQ(Apply(data, EveryKind()).result, ImportResult::Stopped);
    EXPECT_EQ(data.Rules(), kBefore);
    const ImportPlan refused = PlanImport("no archive");
    EXPECT_EQ(Apply(data, refused).result, ImportResult::Failed);
}

TEST_F(RuleImportTest, WaitsForAFileThatTheServiceHolds) {
    const Data data(kBefore);
    files.whenReplaced = [&](const std::string&, const std::string& to) {
        return to.ends_with("rules.conf") && clock.sleeps.size() < 5999 ? WriteResult::Denied
                                                                        : WriteResult::Written;
    };
    EXPECT_EQ(Apply(data, EveryKind()).result, ImportResult::Done);
    EXPECT_EQ(data.Rules(), kAfter);
    // When the program ends meanwhile, or the user stops it, what was done is put back.
    for (const bool isUser : {true, false}) {
        const Data other(kBefore);
        files.whenReplaced = [&](const std::string& from, const std::string&) {
            if (!from.ends_with("new.2")) return WriteResult::Written;
            if (isUser) stop.Request();
            clock.stopped = !isUser;
            return WriteResult::Denied;
        };
        StopSignal fresh;
        const auto result = RuleImport(files, clock, other.Folders())
                                .Apply(EveryKind(), RuleImport::Kind::Import, isUser ? stop : fresh)
                                .result;
        EXPECT_EQ(result, isUser ? ImportResult::Stopped : ImportResult::Held);
        EXPECT_EQ(other.Rules(), kBefore);
    }
}

TEST_F(RuleImportTest, RecoveryLeavesWhatTheServiceHasWrittenSince) {
    const Data data(kBefore);
    data.folder.Write("Rules.import/old.0", "old");
    data.folder.Write("Rules.import/old.1", "older");
    data.folder.Write("Rules.import/journal",
                      "Brennvar import 1\n2026-03-09 14-05-09.fxz\n"
                      "1 0 3 " +
                          std::to_string(test::CrcByHand("new")) +
                          " rules.conf\n"
                          "1 0 3 " +
                          std::to_string(test::CrcByHand("NEW")) + " other.conf\nend\n");
    data.folder.Write("Rules/rules.conf", "newer");
    data.folder.Write("Rules/other.conf", "NEW");
    data.folder.Write("Rules.restore/2026-03-09 14-05-09.fxz", "of that import");
    Recover(data);
    Files expected = kBefore;
    expected["rules.conf"] = "newer";
    expected["other.conf"] = "older";
    EXPECT_EQ(data.Rules(), expected);
    EXPECT_EQ(data.Under("Rules.restore"), Files{});
    EXPECT_EQ(data.Under("Rules.import"), Files{});
}

TEST_F(RuleImportTest, RecoveryKeepsTheWayBackWhileAFileCannotBeRead) {
    // Held for a moment only, and for longer than anybody waits.
    for (const std::size_t held : {std::size_t{100}, std::size_t{6001}}) {
        const Data data(kBefore);
        files = FailingRuleFiles();
        files.whenReplaced = [](const std::string& from, const std::string&) -> WriteResult {
            if (from.ends_with("new.2")) throw FailingRuleFiles::Died{};
            return WriteResult::Written;
        };
        EXPECT_THROW((void)Apply(data, EveryKind()), FailingRuleFiles::Died);
        ASSERT_EQ(data.Rules().at("rules.conf"), "new") << "half of it";
        clock.sleeps.clear();
        files.whenReplaced = {};
        files.isHeld = [&](const std::string& path) {
            return path.ends_with("/rules.conf") && clock.sleeps.size() < held;
        };
        EXPECT_TRUE(RuleImport(files, clock, data.Folders()).Recover());
        if (held > 6000) {
            EXPECT_EQ(data.Rules().at("rules.conf"), "new");
            EXPECT_EQ(data.Under("Rules.restore").size(), 1U);
            EXPECT_EQ(data.folder.Read("Rules.import/old.0"), "old");
            EXPECT_TRUE(Recover(data)) << "another time";
        }
        EXPECT_EQ(data.Rules(), kBefore);
        EXPECT_EQ(data.Under("Rules.restore"), Files{});
    }
}

TEST_F(RuleImportTest, WhatIsPutBackLeavesWhatTheServiceHasWrittenMeanwhile) {
    const Data data(kBefore);
    files.whenReplaced = [&](const std::string& from, const std::string&) {
        if (!from.ends_with("new.1")) return WriteResult::Written;
        data.folder.Write("Rules/rules.conf", "newer");
        return WriteResult::Failed;
    };
    const ImportOutcome outcome = Apply(data, EveryKind());
    EXPECT_EQ(outcome.result, ImportResult::Failed);
    EXPECT_FALSE(outcome.isHalfway);
    Files expected = kBefore;
    expected["rules.conf"] = "newer";
    EXPECT_EQ(data.Rules(), expected);
}

TEST_F(RuleImportTest, ImportsNothingThatItsRestorePointCouldNotBringBack) {
    const Data data(kBefore);
    // Each might be kept, both may not.
    fs::resize_file(data.folder.File("Rules/rules.conf"), kMostUnpacked / 2);
    fs::resize_file(data.folder.File("Rules/gone.conf"), kMostUnpacked / 2 + 1);
    EXPECT_EQ(Apply(data, EveryKind()).result, ImportResult::TooLarge);
    EXPECT_EQ(fs::file_size(data.folder.File("Rules/rules.conf")), kMostUnpacked / 2);
    EXPECT_TRUE(fs::exists(data.folder.File("Rules/gone.conf")));
    EXPECT_EQ(data.Under("Rules.restore"), Files{});
}

TEST_F(RuleImportTest, OneProcessAtATime) {
    const Data data(kBefore);
    fs::create_directories(data.Folders().import);
    DiskRuleFiles other;
    const auto lock = other.Lock(data.Folders().import + "/lock");
    ASSERT_TRUE(lock);
    data.folder.Write("Rules.import/new.0", "of the other one");
    EXPECT_EQ(Apply(data, EveryKind()).result, ImportResult::Busy);
    Recover(data);
    EXPECT_EQ(data.Rules(), kBefore);
    EXPECT_EQ(data.folder.Read("Rules.import/new.0"), "of the other one");
}

TEST(ImportJournalTest, IsReadAsItIsWrittenAndNothingElseIs) {
    const ImportJournal journal{.restorePoint = "point.fxz",
                                .entries = {{.path = "a b/c", .size = 5'000'000'000, .crc = 0xFFFFFFFF},
                                            {.path = "d", .wasThere = true, .isRemoved = true}}};
    const std::string text = "Brennvar import 1\npoint.fxz\n0 0 5000000000 4294967295 a b/c\n1 1 0 0 d\nend\n";
    EXPECT_EQ(FormatJournal(journal), text);
    EXPECT_EQ(ParseJournal(text), journal);
    for (std::size_t length = 0; length < text.size(); ++length) {
        EXPECT_EQ(ParseJournal(text.substr(0, length)), std::nullopt) << length;
    }
    for (const char* const bad :
         {"Brennvar import 2\np\nend\n", "Brennvar import 1\n../p\nend\n",
          "Brennvar import 1\np\n0 0 1 2 ../a\nend\n", "Brennvar import 1\np\n0 0 x 2 a\nend\n",
          "Brennvar import 1\np\n0 0 1 4294967296 a\nend\n", "Brennvar import 1\np\n0 0 1 2 \nend\n",
          "Brennvar import 1\np\nend\nmore\n"}) {
        EXPECT_EQ(ParseJournal(bad), std::nullopt) << bad;
    }
}

}  // namespace
}  // namespace brennvar
